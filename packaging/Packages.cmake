# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT

# Debian packages of an installable build, one per component: cd build/release && cpack -G DEB

set(CPACK_PACKAGE_NAME dravelin)
set(CPACK_PACKAGE_CONTACT "Dravelin contributors <maintainers@dravelin.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL Runtime Development)
if(DRAVELIN_BUILD_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL Tools)
endif()
if(DRAVELIN_BUILD_DESIGNER_PLUGIN)
    list(APPEND CPACK_COMPONENTS_ALL Designer)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}) # the library that the others need
# From these the packages of applications learn that they depend on the library.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libdravelin${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libdravelin-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qt6-base-dev (>= 6.4), zlib1g-dev")
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME dravelin-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_NAME dravelin-designer)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SECTION libdevel)

include(CPack)
cpack_add_component(Runtime DESCRIPTION "The shared library.")
cpack_add_component(Development DEPENDS Runtime DESCRIPTION "Headers, and what CMake and pkg-config find the library by.")
cpack_add_component(Tools DEPENDS Runtime DESCRIPTION "The command dravelin-filter, which applies chains of filters to pictures.")
cpack_add_component(Designer DEPENDS Runtime DESCRIPTION "The library's widgets in Qt Designer.")
