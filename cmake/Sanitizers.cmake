# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT

# Sanitizers go into every object, or into none: a half instrumented program reports nonsense.
if(PROTOLINK_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=address,undefined)
endif()
# A search follows which code its inputs reach, in every object.
if(PROTOLINK_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
