# Precompiled headers of the compiler and of the system. The project's own headers are not among them: a change to one of
# those rebuilds what includes it and nothing else. Every source still includes what it uses, which tools/tidy checks: it
# reads the sources without any of this.
set(VISTREL_STANDARD_HEADERS
    <algorithm> <array> <charconv> <chrono> <cmath> <cstdint> <cstdio> <cstdlib> <cstring> <filesystem> <functional> <map>
    <memory> <optional> <span> <string> <string_view> <utility> <vector>)

# vistrel_precompiled(<name> HEADERS <headers>... [OPTIONS <options>...] [USES <targets>...])
function(vistrel_precompiled name)
  cmake_parse_arguments(ARG "" "" "HEADERS;OPTIONS;USES" ${ARGN})
  file(WRITE "${CMAKE_BINARY_DIR}/precompiled/${name}.cpp" "")
  add_library(precompiled-${name} OBJECT "${CMAKE_BINARY_DIR}/precompiled/${name}.cpp")
  target_link_libraries(precompiled-${name} PRIVATE vistrel-settings ${ARG_USES})
  target_compile_options(precompiled-${name} PRIVATE ${ARG_OPTIONS})
  target_precompile_headers(precompiled-${name} PRIVATE ${ARG_HEADERS})
endfunction()

find_package(PkgConfig REQUIRED)
vistrel_precompiled(standard HEADERS ${VISTREL_STANDARD_HEADERS})
if(NOT VISTREL_FUZZ)
  pkg_check_modules(GTK4 REQUIRED IMPORTED_TARGET gtk4)
  vistrel_precompiled(gtk HEADERS ${VISTREL_STANDARD_HEADERS} <gtk/gtk.h> USES PkgConfig::GTK4)
  if(VISTREL_TESTS OR VISTREL_BENCH)
    find_package(GTest REQUIRED)
    vistrel_precompiled(tests HEADERS ${VISTREL_STANDARD_HEADERS} <gmock/gmock.h> <gtest/gtest.h>
                        OPTIONS ${VISTREL_TEST_OPTIONS} USES GTest::gmock GTest::gtest)
  endif()
endif()

# vistrel_precompile(<target> standard|gtk|tests|none): uses those headers in a target. GCC takes them only when they were
# compiled with the same macros: "none" is for a library whose package description defines more.
function(vistrel_precompile target name)
  if(name STREQUAL none)
    return()
  endif()
  if(name STREQUAL tests)
    target_compile_options(${target} PRIVATE ${VISTREL_TEST_OPTIONS})
  endif()
  target_precompile_headers(${target} REUSE_FROM precompiled-${name})
endfunction()
