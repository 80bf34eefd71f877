target_sources(plax-bench PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/export/export_bench.cpp
)
