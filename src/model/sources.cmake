target_sources(plaxcore PRIVATE
  model/customproperties.cpp model/customproperties.h
  model/itemkind.cpp model/itemkind.h
  model/itemregistry.cpp model/itemregistry.h
  model/metabody.cpp model/metabody.h
  model/metafixture.cpp model/metafixture.h
  model/metaimage.h
  model/metaitem.cpp model/metaitem.h
  model/metajoint.cpp model/metajoint.h
  model/metaobject.h
  model/metaplaceditem.h
  model/metasampler.h
  model/metashape.cpp model/metashape.h
  model/metaworld.cpp model/metaworld.h
  model/ringcheck.cpp model/ringcheck.h
  model/worldsettings.h
)
