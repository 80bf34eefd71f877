target_sources(plax-bench PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/runtime/runtime_bench.cpp
)
target_link_libraries(plax-bench PRIVATE Plax::runtime)
