target_include_directories(plax-bench PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_sources(plax-bench PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/io/scenefile_bench.cpp
)
