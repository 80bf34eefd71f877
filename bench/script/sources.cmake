target_sources(plax-bench PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/script/scriptlimits_bench.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/script/setter_bench.cpp
)
