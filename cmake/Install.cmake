# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT

# What an installation holds: the module where messengers look for plugins, and what the maker of another host builds
# against: the headers of the boundary, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(OKU_PLUGIN_DIR ${CMAKE_INSTALL_LIBDIR}/oku/plugins)
set(OKU_CMAKE_DIR ${CMAKE_INSTALL_DATADIR}/cmake/oku-sdk)

install(TARGETS protoLink LIBRARY DESTINATION ${OKU_PLUGIN_DIR} COMPONENT plugin)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/doap.xml DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT plugin)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/oku/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/oku COMPONENT dev
    FILES_MATCHING PATTERN "*.h")
install(TARGETS oku-sdk EXPORT oku-sdk-targets)
install(EXPORT oku-sdk-targets NAMESPACE oku:: DESTINATION ${OKU_CMAKE_DIR} COMPONENT dev)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/oku-sdk-config.cmake.in
    ${PROJECT_BINARY_DIR}/sdk/oku-sdk-config.cmake
    INSTALL_DESTINATION ${OKU_CMAKE_DIR} PATH_VARS OKU_PLUGIN_DIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/sdk/oku-sdk-config-version.cmake
    COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES ${PROJECT_BINARY_DIR}/sdk/oku-sdk-config.cmake ${PROJECT_BINARY_DIR}/sdk/oku-sdk-config-version.cmake
    DESTINATION ${OKU_CMAKE_DIR} COMPONENT dev)
configure_file(${CMAKE_CURRENT_LIST_DIR}/oku-plugin-sdk.pc.in ${PROJECT_BINARY_DIR}/sdk/oku-plugin-sdk.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/sdk/oku-plugin-sdk.pc
    DESTINATION ${CMAKE_INSTALL_DATADIR}/pkgconfig COMPONENT dev)
