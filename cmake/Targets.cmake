# Short forms for the kinds of target in this tree.
include(GoogleTest)

# A library of plain functions over values; it sees platform_values and nothing of the widgets.
function(vornalite_arithmetic name)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC platform_values)
  set_property(TARGET ${name} PROPERTY VORNALITE_ARITHMETIC ON)
endfunction()

# vornalite_test(name SOURCES ... LIBRARIES ...): a GoogleTest program; each of its tests is a CTest test. None takes
# longer than about a second; the limit is the only thing that stops one that hangs or has become quadratic.
function(vornalite_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE VORNALITE_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 20 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

# vornalite_bench(name SOURCES ... LIBRARIES ...): a Google Benchmark program.
function(vornalite_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} benchmark::benchmark_main)
endfunction()
