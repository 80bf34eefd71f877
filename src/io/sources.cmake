target_sources(plaxcore PRIVATE
  io/arrayelements.cpp io/arrayelements.h
  io/b2djson.cpp io/b2djson.h
  io/b2djsonimage.cpp io/b2djsonimage.h
  io/b2djsonobject.cpp io/b2djsonobject.h
  io/bodyrecord.cpp io/bodyrecord.h
  io/bufferedfileoutput.cpp io/bufferedfileoutput.h
  io/chaincallrepair.cpp io/chaincallrepair.h
  io/customrecord.cpp io/customrecord.h
  io/exportfilter.cpp io/exportfilter.h
  io/filereferences.cpp io/filereferences.h
  io/imagequad.cpp io/imagequad.h
  io/imagerecord.cpp io/imagerecord.h
  io/jointrecord.cpp io/jointrecord.h
  io/jsonemitter.cpp io/jsonemitter.h
  io/jsonstream.cpp io/jsonstream.h
  io/jsonsink.h
  io/jsontext.cpp io/jsontext.h
  io/jsontextlayout.h
  io/jsontextwriter.h
  io/jsonvalues.cpp io/jsonvalues.h
  io/objectrecord.cpp io/objectrecord.h
  io/placedrecord.cpp io/placedrecord.h
  io/rawinfoexport.cpp io/rawinfoexport.h
  io/rawinfomembers.cpp io/rawinfomembers.h
  io/rawinfoscene.cpp io/rawinfoscene.h
  io/recordsupport.cpp io/recordsupport.h
  io/recordtext.cpp io/recordtext.h
  io/samplerrecord.cpp io/samplerrecord.h
  io/sceneloader.cpp io/sceneloader.h
  io/scenewriter.cpp io/scenewriter.h
  io/worldrecord.cpp io/worldrecord.h
)
