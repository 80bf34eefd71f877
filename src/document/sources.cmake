target_sources(plaxcore PRIVATE
  document/editordocument.cpp document/editordocument.h
)
