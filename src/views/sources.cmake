target_sources(plaxgui PRIVATE
  views/documentview.cpp views/documentview.h
  views/drawtool.cpp views/drawtool.h
  views/editorview.cpp views/editorview.h
  views/hittest.cpp views/hittest.h
  views/labelpainter.cpp views/labelpainter.h
  views/playergeometry.cpp views/playergeometry.h
  views/playerview.cpp views/playerview.h
  views/ringfill.cpp views/ringfill.h
  views/scenepicker.cpp views/scenepicker.h
  views/scenegeometry.cpp views/scenegeometry.h
  views/scenegeometryupdate.cpp views/scenegeometryupdate.h
  views/scenerenderer.cpp views/scenerenderer.h
  views/vertexbricks.cpp views/vertexbricks.h
  views/selecttool.cpp views/selecttool.h
  views/shapegeometry.cpp views/shapegeometry.h
  views/snapping.cpp views/snapping.h
  views/texturecache.cpp views/texturecache.h
  views/transformtool.cpp views/transformtool.h
  views/viewcamera.cpp views/viewcamera.h
  views/viewcolors.cpp views/viewcolors.h
  views/viewtool.h
)
