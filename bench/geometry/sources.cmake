# Geometry benchmarks: polygon decomposition and the self-intersection check.
target_sources(plax-bench PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/geometry/decomposition_bench.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/geometry/bigring_bench.cpp
)
