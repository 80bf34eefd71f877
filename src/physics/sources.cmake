target_sources(plaxcore PRIVATE
  physics/jointbuilder.cpp physics/jointbuilder.h
  physics/placeditems.cpp physics/placeditems.h
  physics/placement.cpp physics/placement.h
  physics/worldbuild.cpp physics/worldbuild.h
)
