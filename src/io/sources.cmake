target_sources(plaxcore PRIVATE
  io/sceneloader.cpp io/sceneloader.h
  io/scenewriter.cpp io/scenewriter.h
)
