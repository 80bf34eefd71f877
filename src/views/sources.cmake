target_sources(plaxgui PRIVATE
  views/documentview.cpp views/documentview.h
  views/editorview.cpp views/editorview.h
  views/hittest.cpp views/hittest.h
  views/labelpainter.cpp views/labelpainter.h
  views/scenegeometry.cpp views/scenegeometry.h
  views/scenerenderer.cpp views/scenerenderer.h
  views/shapegeometry.cpp views/shapegeometry.h
  views/texturecache.cpp views/texturecache.h
  views/viewcamera.cpp views/viewcamera.h
  views/viewcolors.cpp views/viewcolors.h
)
