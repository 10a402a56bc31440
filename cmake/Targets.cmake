# Functions for the kinds of target in this tree.
include(GoogleTest)

# The target all_verify_interface_header_sets compiles each public header alone.
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)

# vornalite_sources(target HEADERS ... SOURCES ...): adds files of the current folder to a target, which may be defined
# in another folder. Headers are included by their path from the top of the tree.
function(vornalite_sources target)
  cmake_parse_arguments(ARG "" "" "HEADERS;SOURCES" ${ARGN})
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "INTERFACE_LIBRARY")
    set(scope INTERFACE)
  else()
    set(scope PUBLIC)
  endif()
  if(ARG_HEADERS)
    list(TRANSFORM ARG_HEADERS PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    target_sources(${target} ${scope} FILE_SET HEADERS BASE_DIRS "${CMAKE_SOURCE_DIR}" FILES ${ARG_HEADERS})
  endif()
  if(ARG_SOURCES)
    target_sources(${target} PRIVATE ${ARG_SOURCES})
  endif()
endfunction()

# vornalite_library(name HEADERS ... SOURCES ...): a static library of files of the current folder.
function(vornalite_library name)
  add_library(${name} STATIC)
  vornalite_sources(${name} ${ARGN})
endfunction()

# vornalite_arithmetic(name HEADERS ... SOURCES ...): a library of plain functions over values and pictures; it does not
# link the widgets.
function(vornalite_arithmetic name)
  vornalite_library(${name} ${ARGN})
  target_link_libraries(${name} PUBLIC platform_pictures)
endfunction()

# vornalite_windows(HEADERS ... SOURCES ...): windows and commands of the current folder. They depend on one another, so
# those of all folders form one library.
function(vornalite_windows)
  vornalite_sources(windows ${ARGN})
endfunction()

# What tests of windows need in their environment: the offscreen platform, with a screen that holds every window whole.
set(VORNALITE_TEST_PLATFORM "QT_QPA_PLATFORM=offscreen:configfile=${CMAKE_SOURCE_DIR}/tests/support/screen.json")

# vornalite_test(name SOURCES ... LIBRARIES ...): a GoogleTest program; each of its tests is a CTest test. None should
# take longer than about a second; the limit stops a test that hangs or has become quadratic.
function(vornalite_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE VORNALITE_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 ENVIRONMENT "${VORNALITE_TEST_PLATFORM}")
endfunction()

# vornalite_windows_test(sources...): tests in the current folder that drive the real windows.
function(vornalite_windows_test)
  target_sources(windows_test PRIVATE ${ARGN})
endfunction()

# vornalite_bench(name SOURCES ... LIBRARIES ...): a Google Benchmark program.
function(vornalite_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} benchmark::benchmark_main)
endfunction()
