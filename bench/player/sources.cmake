target_sources(plax-bench PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/player/player_bench.cpp
)
