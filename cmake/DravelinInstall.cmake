# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT

# Two components: Runtime, the library that applications load, and Development, what compiling against it takes. What is
# below tools/ has components of its own: Tools, and Designer for the plugin.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Dravelin)
set(generated ${PROJECT_BINARY_DIR}/cmake)

install(TARGETS Dravelin EXPORT DravelinTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/LICENSES/MIT.txt RENAME copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libdravelin${PROJECT_VERSION_MAJOR} COMPONENT Runtime)

get_property(headers GLOBAL PROPERTY DRAVELIN_PUBLIC_HEADERS)
foreach(header IN LISTS headers)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${PROJECT_SOURCE_DIR}/include/dravelin/${header}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/dravelin/${folder} COMPONENT Development)
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/include/dravelin/version.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/dravelin COMPONENT Development)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/DravelinConfig.cmake.in ${generated}/DravelinConfig.cmake
    INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${generated}/DravelinConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${generated}/DravelinConfig.cmake ${generated}/DravelinConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT Development)
install(EXPORT DravelinTargets NAMESPACE Dravelin:: DESTINATION ${package_dir} COMPONENT Development)

# Everything is found from the file's own place, so that the tree may be moved.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH libdir_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH includedir_from_prefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(${PROJECT_SOURCE_DIR}/cmake/dravelin.pc.in ${generated}/dravelin.pc @ONLY)
install(FILES ${generated}/dravelin.pc DESTINATION ${pkgconfig_dir} COMPONENT Development)

if(PROJECT_IS_TOP_LEVEL)
    include(${PROJECT_SOURCE_DIR}/packaging/Packages.cmake)
endif()
