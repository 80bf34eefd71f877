#pragma once

/// The P.L.A.X runtime for C++: reads raw-info files exported by the editor
/// and builds them into Box2D 2.4.1 worlds.
///
///     std::string error;
///     auto scene = plax::loadBox2DScene("level.json", &error);
///     if (!scene) { std::fprintf(stderr, "%s\n", error.c_str()); return 1; }
///     b2Body* hero = scene->body("hero");
///     int lives = scene->properties(hero).getInt("lives", 3);
///     for (;;) scene->step();
///
/// The reader (rawinforeader.h) turns a file into a plain SceneDescription
/// (scene.h) that knows nothing of Box2D; Box2DScene (box2d/box2dscene.h)
/// turns a description into bodies, fixtures and joints.

#include "plax/box2d/box2dscene.h"
#include "plax/box2d/jointmapping.h"
#include "plax/customproperties.h"
#include "plax/rawinforeader.h"
#include "plax/scene.h"
