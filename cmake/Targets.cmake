# One target per folder, from the sources that stand in it.

# Adds a folder of the house when it has a CMakeLists.txt.
function(add_folder folder)
  if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt")
    add_subdirectory(${folder})
  endif()
endfunction()

# vistrel_folder(<target> [RECURSE] [USES <targets below>...] [PRIVATE_USES <targets>...])
# A static library of all *.cpp of the current folder (and, with RECURSE, of those under it).
function(vistrel_folder target)
  cmake_parse_arguments(ARG "RECURSE" "" "USES;PRIVATE_USES" ${ARGN})
  if(ARG_RECURSE)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  else()
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  endif()
  if(sources)
    add_library(${target} STATIC ${sources})
    target_link_libraries(${target} PUBLIC vistrel-settings ${ARG_USES} PRIVATE ${ARG_PRIVATE_USES})
  else()
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE vistrel-settings ${ARG_USES})
  endif()
endfunction()

# vistrel_module(<name> SOURCES <files>... USES <targets>...)
# A part of the program in modules/<name>.so, opened when it is first needed: nothing links with it.
function(vistrel_module name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_library(${name} MODULE ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE vistrel-settings ${ARG_USES})
  set_target_properties(
    ${name} PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN OFF
                       LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/modules")
  set_property(GLOBAL APPEND PROPERTY VISTREL_MODULES ${name})
endfunction()

# vistrel_tests(<name> [JOURNEY] [LABEL <label>] USES <targets>...)
# One test program of all *.cpp of the current folder. Logic tests carry the label "logic" unless
# another is given; journeys (real window, page engine, players) the label "journey", and they run
# one at a time. The target logic-tests builds the logic tests alone.
function(vistrel_tests name)
  cmake_parse_arguments(ARG "JOURNEY" "LABEL" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE vistrel-settings ${ARG_USES} GTest::gmock GTest::gtest GTest::gtest_main)
  if(ARG_JOURNEY)
    add_test(NAME ${name} COMMAND "${CMAKE_SOURCE_DIR}/tests/journeys/in-display" $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES LABELS journey RUN_SERIAL ON TIMEOUT 600)
  else()
    add_test(NAME ${name} COMMAND ${name})
    set(label logic)
    if(ARG_LABEL)
      set(label ${ARG_LABEL})
    endif()
    set_tests_properties(${name} PROPERTIES LABELS ${label} TIMEOUT 120)
    if(NOT TARGET ${label}-tests)
      add_custom_target(${label}-tests)
    endif()
    add_dependencies(${label}-tests ${name})
  endif()
endfunction()
