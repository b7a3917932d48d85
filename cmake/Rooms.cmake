# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later

# add_room(NAME [FOLDER dir] [PARTS folders...] [DEPENDS rooms...] [LIBRARIES libs...] [TEST_LIBRARIES libs...])
#
# One folder is one target: NAME from the folder's *.cpp, NAME_testing from testing/*.cpp (fakes that other
# rooms' tests may link), and the test program NAME_tests from tests/*.cpp. A large room keeps its sources in
# PARTS, folders of one namespace. A room without sources yet, or with headers alone, is an interface target, so
# that its arrows stand from the first day. Sources are found by pattern, so a new file needs no line here.
function(add_room name)
  cmake_parse_arguments(ROOM "" "FOLDER" "PARTS;DEPENDS;LIBRARIES;TEST_LIBRARIES" ${ARGN})
  if(NOT ROOM_FOLDER)
    set(ROOM_FOLDER ${CMAKE_SOURCE_DIR}/${name})
  endif()
  set(patterns ${ROOM_FOLDER}/*.cpp ${ROOM_FOLDER}/ports/*.cpp)
  foreach(part IN LISTS ROOM_PARTS)
    list(APPEND patterns ${ROOM_FOLDER}/${part}/*.cpp)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC dj_options ${ROOM_DEPENDS} PRIVATE ${ROOM_LIBRARIES})
    if(DJ_PCH)
      target_precompile_headers(${name} PRIVATE <algorithm> <array> <atomic> <chrono> <cmath> <filesystem>
                                <functional> <memory> <optional> <span> <string> <string_view> <vector>)
    endif()
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE dj_options ${ROOM_DEPENDS} ${ROOM_LIBRARIES})
  endif()
  if(NOT DJ_BUILD_TESTS AND NOT DJ_BUILD_BENCH AND NOT DJ_BUILD_FUZZERS)
    return()
  endif()
  file(GLOB fakes CONFIGURE_DEPENDS ${ROOM_FOLDER}/testing/*.cpp)
  if(fakes)
    add_library(${name}_testing STATIC ${fakes})
    target_link_libraries(${name}_testing PUBLIC ${name} PRIVATE ${ROOM_LIBRARIES})
  else()
    add_library(${name}_testing INTERFACE)
    target_link_libraries(${name}_testing INTERFACE ${name})
  endif()
  file(GLOB tests CONFIGURE_DEPENDS ${ROOM_FOLDER}/tests/*.cpp)
  if(tests AND DJ_BUILD_TESTS)
    add_test_program(${name}_tests SOURCES ${tests}
                     LIBRARIES ${name} ${name}_testing ${ROOM_LIBRARIES} ${ROOM_TEST_LIBRARIES})
  endif()
endfunction()

# add_test_program(NAME SOURCES files... LIBRARIES libs... [LABELS labels...] [TIMEOUT seconds]
#                  [SHARDS n] [ENVIRONMENT settings...] [NO_MAIN])
#
# A GoogleTest program that ctest runs whole, or as tests NAME_1 to NAME_n beside each other, each a share of its
# cases; ./test reads the cases out of the XML reports.
function(add_test_program name)
  cmake_parse_arguments(TEST "NO_MAIN" "TIMEOUT;SHARDS" "SOURCES;LIBRARIES;LABELS;ENVIRONMENT" ${ARGN})
  if(NOT TARGET GTest::gtest)
    find_package(GTest REQUIRED)
  endif()
  add_executable(${name} ${TEST_SOURCES})
  if(TEST_NO_MAIN)
    set(main GTest::gtest)
  else()
    set(main GTest::gtest_main)
  endif()
  target_link_libraries(${name} PRIVATE dj_options ${TEST_LIBRARIES} ${main} GTest::gmock)
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 300)
  endif()
  set(reports ${CMAKE_BINARY_DIR}/reports)
  if(WIN32 AND CMAKE_CROSSCOMPILING)
    set(reports Z:${reports})  # as wine calls our root
  endif()
  if(NOT TEST_SHARDS)
    set(TEST_SHARDS 1)
  endif()
  foreach(shard RANGE 1 ${TEST_SHARDS})
    set(test ${name})
    set(environment ${TEST_ENVIRONMENT})
    if(TEST_SHARDS GREATER 1)
      set(test ${name}_${shard})
      math(EXPR index "${shard} - 1")
      list(APPEND environment GTEST_TOTAL_SHARDS=${TEST_SHARDS} GTEST_SHARD_INDEX=${index})
    endif()
    add_test(NAME ${test} COMMAND ${name} --gtest_output=xml:${reports}/${test}.xml)
    set_tests_properties(${test} PROPERTIES TIMEOUT ${TEST_TIMEOUT} LABELS "${TEST_LABELS}"
                                            ENVIRONMENT "${environment}")
  endforeach()
endfunction()
