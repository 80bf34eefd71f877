# The rendering benchmark needs the interface library and a display, so it is
# a program of its own (run under xvfb-run by `make bench` without a display).
add_executable(plax-render-bench
  ${CMAKE_CURRENT_SOURCE_DIR}/render/render_bench.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/render/frametime.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/render/player_frames.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/render/vertex_drag.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/largescene.cpp)
target_include_directories(plax-render-bench PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(plax-render-bench PRIVATE plaxgui Qt6::Test)
