target_sources(plaxcore PRIVATE
  io/bodyrecord.cpp io/bodyrecord.h
  io/customrecord.cpp io/customrecord.h
  io/imagerecord.cpp io/imagerecord.h
  io/jointrecord.cpp io/jointrecord.h
  io/jsontext.cpp io/jsontext.h
  io/jsonvalues.cpp io/jsonvalues.h
  io/objectrecord.cpp io/objectrecord.h
  io/rawinfoscene.cpp io/rawinfoscene.h
  io/recordsupport.cpp io/recordsupport.h
  io/recordtext.cpp io/recordtext.h
  io/samplerrecord.cpp io/samplerrecord.h
  io/sceneloader.cpp io/sceneloader.h
  io/scenewriter.cpp io/scenewriter.h
  io/worldrecord.cpp io/worldrecord.h
)
