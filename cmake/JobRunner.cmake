# Targets by folder. Sources are found by name: <folder>/**/*.cpp, without the folders of the other system; every
# *_test.cpp goes into the test program of its folder.

set(JOBRUNNER_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest")

if(WIN32)
  # The drawing library is a target of its own.
  set(JOBRUNNER_FOREIGN_FOLDERS "/(posix|terminal|drawing)/")
else()
  set(JOBRUNNER_FOREIGN_FOLDERS "/(win32|drawing)/")
endif()

set(JOBRUNNER_COMPILE_OPTIONS -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(JOBRUNNER_WARNINGS_AS_ERRORS)
  list(APPEND JOBRUNNER_COMPILE_OPTIONS -Werror)
endif()
if(JOBRUNNER_SANITIZE)
  add_compile_options(-fsanitize=${JOBRUNNER_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${JOBRUNNER_SANITIZE})
endif()
if(JOBRUNNER_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(WIN32)
  # Windows 7 is the oldest supported system. SSE keeps the arithmetic the same as on the native build.
  add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX WINVER=0x0601 _WIN32_WINNT=0x0601)
  add_compile_options(-msse2 -mfpmath=sse)
endif()

# Every target sees the folders that it uses through a folder of links, so that any other include does not compile.
function(jobrunner_floor target folder name)
  set(floor ${CMAKE_BINARY_DIR}/floors/${target})
  file(MAKE_DIRECTORY ${floor})
  file(CREATE_LINK ${folder} ${floor}/${name} SYMBOLIC)
  target_include_directories(${target} ${ARGN} ${floor})
endfunction()

function(jobrunner_sources out folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "${JOBRUNNER_FOREIGN_FOLDERS}")
  list(FILTER sources EXCLUDE REGEX "(_test|/entry_point)\\.cpp$")
  set(${out} ${sources} PARENT_SCOPE)
endfunction()

function(jobrunner_test_sources out folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*_test.cpp)
  list(FILTER sources EXCLUDE REGEX "${JOBRUNNER_FOREIGN_FOLDERS}")
  set(${out} ${sources} PARENT_SCOPE)
endfunction()

# A test program; the names of the tests are known to CTest when it is run.
function(jobrunner_test target)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_executable(${target} ${ARG_SOURCES})
  # What tests say themselves runs briefly and is most of what is compiled: it is not optimised in any build.
  target_compile_options(${target} PRIVATE ${JOBRUNNER_COMPILE_OPTIONS} -O0)
  if(JOBRUNNER_SANITIZE MATCHES undefined)
    # Checking what they expect for undefined behaviour takes a quarter of the time to compile it.
    target_compile_options(${target} PRIVATE -fno-sanitize=undefined)
  endif()
  target_precompile_headers(${target} PRIVATE <gtest/gtest.h> <algorithm> <filesystem> <fstream> <functional> <memory>
                                              <optional> <string> <thread> <vector>)
  target_link_libraries(${target} PRIVATE ${ARG_USES} gtest gtest_main)
  if(WIN32)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:program_resources>)
    target_link_libraries(${target} PRIVATE -Wl,--no-undefined)
  endif()
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${target} COMMAND ${target})
endfunction()

# One folder of src/ as a library, with the tests beside its sources.
function(jobrunner_library name)
  cmake_parse_arguments(ARG "HEADERS" "" "USES" ${ARGN})
  set(folder ${CMAKE_SOURCE_DIR}/src/${name})
  if(ARG_HEADERS)
    add_library(${name} INTERFACE)
    jobrunner_floor(${name} ${folder} ${name} INTERFACE)
  else()
    jobrunner_sources(sources ${folder})
    add_library(${name} STATIC ${sources})
    target_compile_options(${name} PRIVATE ${JOBRUNNER_COMPILE_OPTIONS})
    jobrunner_floor(${name} ${folder} ${name} PUBLIC)
    target_link_libraries(${name} PUBLIC ${ARG_USES})
  endif()
  jobrunner_test_sources(tests ${folder})
  if(tests)
    jobrunner_test(${name}_test SOURCES ${tests} USES ${name} fakes)
  endif()
endfunction()
