# SPDX-License-Identifier: MIT

# Warnings, hardening and sanitizers, stated once; every target links this.
add_library(dorvanel_options INTERFACE)
target_include_directories(dorvanel_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(
  dorvanel_options
  INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
            -Wformat=2 -Werror=return-type -fstack-protector-strong)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # It sees overlaps in joined strings that cannot be: https://gcc.gnu.org/PR105329, mended in 13.
  target_compile_options(dorvanel_options INTERFACE -Wno-restrict)
endif()
target_compile_definitions(dorvanel_options INTERFACE DORVANEL_VERSION="${PROJECT_VERSION}")
target_link_options(dorvanel_options INTERFACE -Wl,-z,relro,-z,now -Wl,-z,noexecstack)

if(DORVANEL_SANITIZE)
  target_compile_options(dorvanel_options INTERFACE -fsanitize=${DORVANEL_SANITIZE}
                                                    -fno-omit-frame-pointer)
  target_link_options(dorvanel_options INTERFACE -fsanitize=${DORVANEL_SANITIZE})
else()
  target_compile_options(dorvanel_options INTERFACE $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
endif()
# Programs are linked to be loaded anywhere, whatever the compiler does by itself.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# Every object tells the fuzzer which branches it took.
if(DORVANEL_FUZZ)
  target_compile_options(dorvanel_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# dorvanel_library(NAME SOURCES... DEPENDS...): one static library per folder of src.
function(dorvanel_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC dorvanel_options ${ARG_DEPENDS})
endfunction()

# dorvanel_test(NAME [ALONE] [OWN_PROCESSES] [OWN_HEADERS] SOURCES... DEPENDS...
# [ENVIRONMENT NAME=VALUE]): one test program per folder of tests. With ALONE no other test runs
# beside one of its tests; with OWN_PROCESSES its tests see no process that they did not start; with
# OWN_HEADERS it does not share the precompiled headers.
function(dorvanel_test name)
  cmake_parse_arguments(ARG "ALONE;OWN_PROCESSES;OWN_HEADERS" "ENVIRONMENT" "SOURCES;DEPENDS" ${ARGN})
  set(properties TIMEOUT 300 RUN_SERIAL ${ARG_ALONE})
  if(ARG_ENVIRONMENT)
    list(APPEND properties ENVIRONMENT ${ARG_ENVIRONMENT})
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE dorvanel_test_support ${ARG_DEPENDS} GTest::gmock)
  if(ARG_OWN_PROCESSES)
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/OwnProcessesMain.cpp)
  else()
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  # What the tests do by themselves is not what is looked at, and takes half the time to build.
  if(DORVANEL_SANITIZE MATCHES undefined)
    target_compile_options(${name} PRIVATE -fno-sanitize=undefined)
  endif()
  # Of clang they would have to be compiled for each program.
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND NOT ARG_OWN_HEADERS)
    target_precompile_headers(${name} REUSE_FROM dorvanel_test_headers)
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
