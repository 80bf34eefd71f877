target_sources(plax-bench PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/export/export_bench.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/export/process_bench.cpp
)
target_include_directories(plax-bench PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})

# jsoncpp only for the yardstick of the export benchmark.
find_package(PkgConfig REQUIRED)
pkg_check_modules(JSONCPP REQUIRED IMPORTED_TARGET jsoncpp)
add_executable(plax-jsoncpp-parse ${CMAKE_CURRENT_SOURCE_DIR}/export/jsoncpp_parse.cpp)
target_link_libraries(plax-jsoncpp-parse PRIVATE PkgConfig::JSONCPP)
# Peak memory of a program alone, not of the benchmark that starts it.
add_executable(plax-peak-memory ${CMAKE_CURRENT_SOURCE_DIR}/export/peak_memory.cpp)
add_dependencies(plax-bench plax-jsoncpp-parse plax-peak-memory plax)
target_compile_definitions(plax-bench PRIVATE PLAX_BINARY="$<TARGET_FILE:plax>"
  PLAX_JSONCPP_PARSE="$<TARGET_FILE:plax-jsoncpp-parse>"
  PLAX_PEAK_MEMORY="$<TARGET_FILE:plax-peak-memory>")
