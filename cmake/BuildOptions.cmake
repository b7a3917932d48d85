# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
option(DJ_BUILD_WINDOW "Build the Qt window and the program" ON)
option(DJ_BUILD_TESTS "Build the test programs" ON)
option(DJ_BUILD_BENCH "Build the measuring programs" ON)
option(DJ_BUILD_FUZZERS "Build the fuzz targets (clang)" OFF)
option(DJ_PCH "Precompile the standard and Qt headers" OFF)
set(DJ_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
find_package(Threads REQUIRED)
enable_testing()

# Every target of ours links this: warnings are errors in our code only.
add_library(dj_options INTERFACE)
# What the build makes is included like what stands in the repository.
target_include_directories(dj_options INTERFACE ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR}/generated)
target_compile_options(dj_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  target_compile_options(dj_options INTERFACE -Wthread-safety)
endif()
target_link_libraries(dj_options INTERFACE Threads::Threads)
if(DJ_SANITIZE)
  target_compile_options(dj_options INTERFACE -fsanitize=${DJ_SANITIZE} -fno-sanitize-recover=all
                                              -fno-omit-frame-pointer)
  target_link_options(dj_options INTERFACE -fsanitize=${DJ_SANITIZE})
endif()

if(CMAKE_CROSSCOMPILING AND DJ_BUILD_TESTS)
  # Debian has GoogleTest for its own system alone, and its source for all others.
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endif()
