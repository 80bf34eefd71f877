target_sources(plaxcore PRIVATE
  sampling/imagesource.cpp sampling/imagesource.h
  sampling/pathfixture.cpp sampling/pathfixture.h
  sampling/samplerframe.cpp sampling/samplerframe.h
)
