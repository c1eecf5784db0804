# Compiler settings that every target shares.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# Programs too: else the linker copies variables of the C library into them, and a module, which asks its own libraries
# first, would see the originals that nobody changes.
set(CMAKE_CXX_COMPILE_OPTIONS_PIE -fPIC)
include(GNUInstallDirs)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

find_program(VISTREL_CCACHE ccache)
if(VISTREL_CCACHE)
  # With precompiled headers, ccache takes part only when it is told not to look for __TIME__ and macros in them.
  set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros "${VISTREL_CCACHE}")
endif()

add_library(vistrel-settings INTERFACE)
target_include_directories(vistrel-settings INTERFACE "${CMAKE_SOURCE_DIR}")
target_compile_options(vistrel-settings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                                  -Woverloaded-virtual -Werror -pthread)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(vistrel-settings INTERFACE -Wno-unused-command-line-argument)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # What ccache needs to see which precompiled header a source was compiled with.
  target_compile_options(vistrel-settings INTERFACE -fpch-preprocess)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False alarms of GCC 12 about "literal" + std::string.
  target_compile_options(vistrel-settings INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
# A test is compiled more often than it is run.
set(VISTREL_TEST_OPTIONS -O0)
# Package descriptions name more libraries than a program uses, and each is read at its start.
add_link_options(LINKER:--as-needed)
if(VISTREL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VISTREL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
