# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT

# cmake -DBUILD=... -DHERE=... -DWORK=... -DLIBDIR=... -DSANITIZE=... -D{C,CXX}_COMPILER=... -P check.cmake
set(prefix ${WORK}/prefix)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${WORK} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        string(JOIN " " command ${ARGN})
        message(FATAL_ERROR "${command}\nended with ${result}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

set(wanted ${LIBDIR}/oku/plugins/protoLink.module include/oku/table.h include/oku/netlib.h
    share/cmake/oku-sdk/oku-sdk-config.cmake share/pkgconfig/oku-plugin-sdk.pc
    share/doc/protoLink/LICENSE share/doc/protoLink/doap.xml)
foreach(file ${wanted})
    if(NOT EXISTS ${prefix}/${file})
        message(FATAL_ERROR "not installed: ${file}")
    endif()
endforeach()
file(GLOB_RECURSE foreign RELATIVE ${prefix} ${prefix}/*.a ${prefix}/include/*.cpp ${prefix}/include/gtest*)
if(foreign)
    message(FATAL_ERROR "installed, but belongs to nobody's business: ${foreign}")
endif()

# By the CMake package: a host in C++ that loads the module and unloads it.
set(flags "")
if(SANITIZE)
    set(flags -fsanitize=address,undefined)
endif()
run(${CMAKE_COMMAND} -S ${HERE}/consumer -B ${WORK}/consumer -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${CXX_COMPILER} "-DCMAKE_CXX_FLAGS=${flags}")
run(${CMAKE_COMMAND} --build ${WORK}/consumer)
run(${WORK}/consumer/tiny-host)
message(STATUS "${output}")

# By pkg-config: a reader of the description, in C.
set(ENV{PKG_CONFIG_PATH} ${prefix}/share/pkgconfig)
run(pkg-config --cflags oku-plugin-sdk)
string(STRIP "${output}" cflags)
separate_arguments(cflags)
run(pkg-config --variable=plugindir oku-plugin-sdk)
string(STRIP "${output}" plugindir)
run(${C_COMPILER} -std=c11 -Wall -Wextra -Wpedantic -Werror ${flags} ${cflags} ${HERE}/consumer/describe.c
    -o ${WORK}/describe -ldl)
run(${WORK}/describe ${plugindir}/protoLink.module)
message(STATUS "${output}")
