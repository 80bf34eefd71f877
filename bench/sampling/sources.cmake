target_sources(plax-bench PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/sampling/sampling_bench.cpp
)
