# Box2D fixture construction from scene fixtures, polygon decomposition.
target_sources(plaxcore PRIVATE
  geometry/bayazit.cpp geometry/bayazit.h
  geometry/bayazitpredicates.h
  geometry/box2dpolygon.cpp geometry/box2dpolygon.h
  geometry/convexpiece.cpp geometry/convexpiece.h
  geometry/decomposition.cpp geometry/decomposition.h
  geometry/decompositionsettings.cpp geometry/decompositionsettings.h
  geometry/delaunayinsertion.cpp geometry/delaunayinsertion.h
  geometry/dvec2.h
  geometry/earclipping.cpp geometry/earclipping.h
  geometry/edgequad.cpp geometry/edgequad.h
  geometry/fixturebuilder.cpp geometry/fixturebuilder.h
  geometry/fixturedef.cpp geometry/fixturedef.h
  geometry/geometryconstants.h
  geometry/massguard.cpp geometry/massguard.h
  geometry/segmentgrid.cpp geometry/segmentgrid.h
  geometry/signedarea.cpp geometry/signedarea.h
  geometry/triangulation.cpp geometry/triangulation.h
  geometry/vertexcheck.cpp geometry/vertexcheck.h
)
