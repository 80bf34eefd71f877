target_sources(plaxcore PRIVATE
  sampling/imagesource.cpp sampling/imagesource.h
  sampling/outlinetracer.cpp sampling/outlinetracer.h
  sampling/pathfixture.cpp sampling/pathfixture.h
  sampling/pathsimplify.cpp sampling/pathsimplify.h
  sampling/pngscaledreader.cpp sampling/pngscaledreader.h
  sampling/sampleranalysis.cpp sampling/sampleranalysis.h
  sampling/samplerframe.cpp sampling/samplerframe.h
  sampling/samplerpixels.cpp sampling/samplerpixels.h
  sampling/tracedpaths.cpp sampling/tracedpaths.h
)
