# Compiler options of every target of ours, gathered in the interface target mlv_flags.

option(MLV_TESTS "Build the tests" OFF)
option(MLV_BENCH "Build the measurements" OFF)
option(MLV_FUZZ "Build the fuzzers; needs clang" OFF)
option(MLV_WERROR "Warnings are errors" OFF)
option(MLV_COVERAGE "Count executed lines" OFF)
set(MLV_SANITIZE "" CACHE STRING "Sanitizers, comma separated, as -fsanitize= takes them")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(MLV_CCACHE ccache)
if(MLV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Without this sloppiness ccache refuses everything that uses a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${MLV_CCACHE})
endif()

add_library(mlv_flags INTERFACE)
target_compile_options(mlv_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-qual -fpch-preprocess)
if(MLV_WERROR)
    target_compile_options(mlv_flags INTERFACE -Werror)
endif()
if(MLV_SANITIZE)
    target_compile_options(mlv_flags INTERFACE
        -fsanitize=${MLV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(mlv_flags INTERFACE -fsanitize=${MLV_SANITIZE})
endif()
if(MLV_FUZZ)
    target_compile_options(mlv_flags INTERFACE -fsanitize=fuzzer-no-link -O1)
endif()
if(MLV_COVERAGE)
    target_compile_options(mlv_flags INTERFACE --coverage)
    target_link_options(mlv_flags INTERFACE --coverage)
endif()
# Programs read files, tags and messages of others: addresses differ from start to start, and what
# the loader has filled in cannot be written any more.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
target_link_options(mlv_flags INTERFACE -Wl,-z,relro -Wl,-z,now)
# The C library checks only where the compiler optimises, and beside a sanitizer nothing is to.
if(NOT MLV_SANITIZE)
    target_compile_options(mlv_flags INTERFACE
        $<$<CONFIG:Release>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong>)
endif()
find_program(MLV_MOLD mold)
if(MLV_MOLD)
    target_link_options(mlv_flags INTERFACE -fuse-ld=mold)
endif()
target_compile_definitions(mlv_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400
    MLV_VERSION_MAJOR=${PROJECT_VERSION_MAJOR} MLV_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    MLV_VERSION_REVISION=${PROJECT_VERSION_PATCH})
target_include_directories(mlv_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
