target_sources(plaxcore PRIVATE
  document/editordocument.cpp document/editordocument.h
  document/imagedata.cpp document/imagedata.h
)
