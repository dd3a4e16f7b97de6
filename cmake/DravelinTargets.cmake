# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT

# The library target, to which every folder adds its sources, and the settings that all of Dravelin's targets share.

add_library(Dravelin SHARED)
add_library(Dravelin::Dravelin ALIAS Dravelin)

function(dravelin_target_defaults target)
    set_target_properties(${target} PROPERTIES
        AUTOMOC ON
        CXX_STANDARD 20
        CXX_STANDARD_REQUIRED ON
        CXX_EXTENSIONS OFF
        UNITY_BUILD OFF # files have local functions of the same names
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_JAVA_STYLE_ITERATORS)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
        -Woverloaded-virtual $<$<BOOL:${DRAVELIN_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()

dravelin_target_defaults(Dravelin)
target_compile_features(Dravelin PUBLIC cxx_std_20)
target_compile_definitions(Dravelin PRIVATE DRAVELIN_BUILD)
set_target_properties(Dravelin PROPERTIES
    OUTPUT_NAME dravelin
    EXPORT_NAME Dravelin
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
# The sanitizers' run-time shares symbols of its own between libraries.
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    target_link_options(Dravelin PRIVATE LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
    set_target_properties(Dravelin PROPERTIES LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
endif()
target_include_directories(Dravelin
    PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
    PRIVATE ${PROJECT_SOURCE_DIR})

configure_file(${PROJECT_SOURCE_DIR}/cmake/version.h.in ${PROJECT_BINARY_DIR}/include/dravelin/version.h @ONLY)

# Builds without it, such as the one of the tests, show that every source includes what it needs.
function(dravelin_precompile_headers target)
    if(DRAVELIN_PRECOMPILED_HEADERS)
        target_precompile_headers(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:${PROJECT_SOURCE_DIR}/cmake/precompiled.h>)
    endif()
endfunction()

dravelin_precompile_headers(Dravelin)

# dravelin_sources(HEADERS relative to include/dravelin ... SOURCES relative to the calling folder ...)
# The public headers go through moc with the library and are installed with it.
function(dravelin_sources)
    cmake_parse_arguments(ARG "" "" "HEADERS;SOURCES" ${ARGN})
    foreach(header IN LISTS ARG_HEADERS)
        target_sources(Dravelin PRIVATE ${PROJECT_SOURCE_DIR}/include/dravelin/${header})
        set_property(GLOBAL APPEND PROPERTY DRAVELIN_PUBLIC_HEADERS ${header})
    endforeach()
    foreach(source IN LISTS ARG_SOURCES)
        target_sources(Dravelin PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/${source})
    endforeach()
endfunction()

# dravelin_vector_sources(sources ...): sources of the calling folder that use Highway. They are optimised in every build:
# without that Highway's choice of a processor's code is shared between sources that were compiled for different ones.
function(dravelin_vector_sources)
    set_property(SOURCE ${ARGN} TARGET_DIRECTORY Dravelin APPEND PROPERTY
        COMPILE_OPTIONS $<$<NOT:$<CONFIG:Release,RelWithDebInfo,MinSizeRel>>:-O2>)
    set_property(SOURCE ${ARGN} TARGET_DIRECTORY Dravelin PROPERTY SKIP_PRECOMPILE_HEADERS ON) # other options than those
endfunction()
