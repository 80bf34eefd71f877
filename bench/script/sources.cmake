target_sources(plax-bench PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/script/scriptlimits_bench.cpp
)
