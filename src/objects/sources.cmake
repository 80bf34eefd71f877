# Object files: the shared cache, attaching documents to instances, and the
# expansion of instances into a built world.
target_sources(plaxcore PRIVATE
  objects/documentexport.cpp objects/documentexport.h
  objects/expansionplan.cpp objects/expansionplan.h
  objects/instanceattach.cpp objects/instanceattach.h
  objects/objectexpansion.cpp objects/objectexpansion.h
  objects/objectmanager.cpp objects/objectmanager.h
)
