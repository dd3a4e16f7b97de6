# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT

# libbacktrace comes with g++, in a directory of the compiler's own. Other compilers find the library there but not the
# header, and must not see the headers beside it; so it gets a directory to itself: DRAVELIN_BACKTRACE_INCLUDE.

set(DRAVELIN_BACKTRACE_INCLUDE ${PROJECT_BINARY_DIR}/backtrace)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
    OUTPUT_VARIABLE libgcc OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
get_filename_component(libgcc_dir "${libgcc}" DIRECTORY)
find_file(DRAVELIN_BACKTRACE_HEADER backtrace.h HINTS ${libgcc_dir}/include REQUIRED)
configure_file(${DRAVELIN_BACKTRACE_HEADER} ${DRAVELIN_BACKTRACE_INCLUDE}/backtrace.h COPYONLY)
