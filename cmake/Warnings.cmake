# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT

# The warnings that every target of the project is built with, all of them errors.
add_library(protolink-warnings INTERFACE)
target_compile_options(protolink-warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Werror
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast>)
