# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# Made by the build, in folders like those of the sources.
set(DJ_GENERATED ${CMAKE_BINARY_DIR}/generated)
set(languages ${CMAKE_SOURCE_DIR}/support/languages.txt)
set(words_tool ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/words.py)

# add_words(TARGET TABLES dir INTO dir)
#
# The tables TABLES/*.txt become headers that are included from INTO, one a name before the first "-", and a source
# of the target. See tools/words.py.
function(add_words target)
  cmake_parse_arguments(WORDS "" "TABLES;INTO" "" ${ARGN})
  file(GLOB tables CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${WORDS_TABLES}/*.txt)
  set(names Words)
  foreach(table IN LISTS tables)
    get_filename_component(name ${table} NAME_WE)
    string(REGEX REPLACE "-.*" "" name ${name})
    list(APPEND names ${name})
  endforeach()
  list(REMOVE_DUPLICATES names)
  list(TRANSFORM names PREPEND ${DJ_GENERATED}/${WORDS_INTO}/)
  list(TRANSFORM names APPEND .h)
  set(source ${DJ_GENERATED}/${WORDS_INTO}/Words.cpp)
  add_custom_command(OUTPUT ${names} ${source}
    COMMAND ${words_tool} ${languages} ${DJ_GENERATED} ${WORDS_INTO} ${tables}
    DEPENDS ${languages} ${CMAKE_SOURCE_DIR}/tools/words.py ${tables}
    COMMENT "Words of ${WORDS_TABLES}" VERBATIM)
  target_sources(${target} PRIVATE ${source} ${names})
  set_source_files_properties(${source} ${names} PROPERTIES SKIP_AUTOMOC ON SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# The languages themselves, which every table is read with.
function(add_languages target)
  set(header ${DJ_GENERATED}/support/Languages.h)
  add_custom_command(OUTPUT ${header}
    COMMAND ${words_tool} ${languages} ${DJ_GENERATED} support
    DEPENDS ${languages} ${CMAKE_SOURCE_DIR}/tools/words.py
    COMMENT "Languages" VERBATIM)
  target_sources(${target} PRIVATE ${header})
endfunction()
