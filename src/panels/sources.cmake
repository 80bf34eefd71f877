target_sources(plaxgui PRIVATE
  panels/bodyproperties.cpp
  panels/customrows.cpp
  panels/itemstree.cpp panels/itemstree.h
  panels/jointproperties.cpp
  panels/placedproperties.cpp
  panels/propertiespanel.cpp panels/propertiespanel.h
  panels/propertydefs.h
  panels/propertyrows.h
)
