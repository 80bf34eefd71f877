target_sources(plaxgui PRIVATE
  panels/itemstree.cpp panels/itemstree.h
  panels/propertiespanel.cpp panels/propertiespanel.h
  panels/propertydefs.cpp panels/propertydefs.h
)
