#include "itemscene.h"

#include "support/testfiles.h"

#include <QColor>
#include <QDir>
#include <QImage>
#include <QPainter>

namespace
{
const char* const kScene = R"({"metaworld":{
"gravity":{"x":0,"y":-10},
"metabody":[
 {"id":1,"name":"base","type":"static","position":0,"fixture":[{"id":1,"name":"ground","density":1,
   "shapes":[{"type":"polygon","vertices":{"x":[-5,5,5,-5],"y":[-1,-1,0,0]}}]}]},
 {"id":2,"name":"arm","type":"dynamic","position":{"x":1,"y":2},"angle":0.5,"fixture":[{"id":2,"name":"armbox","density":1,
   "shapes":[{"type":"polygon","vertices":{"x":[-1,1,1,-1],"y":[-0.25,-0.25,0.25,0.25]}}]}]},
 {"id":3,"name":"wheel","type":"dynamic","position":{"x":3,"y":2},"fixture":[{"id":3,"name":"tyre","density":1,
   "shapes":[{"type":"circle","radius":0.5,"vertices":{"x":[0],"y":[0]}}]}]}
],
"metajoint":[
 {"id":1,"name":"hinge","type":"revolute","bodyA":1,"bodyB":2,"anchorA":{"x":1,"y":2},"anchorB":0,
  "referenceAngle":0.25,"enableLimit":true,"lowerLimit":-1,"upperLimit":1,"enableMotor":true,"motorSpeed":2,"maxMotorTorque":10},
 {"id":2,"name":"slider","type":"prismatic","bodyA":2,"bodyB":3,"anchorA":0,"anchorB":0,"localAxisA":{"x":0,"y":1},
  "referenceAngle":0,"enableLimit":false,"lowerLimit":0,"upperLimit":2,"enableMotor":false,"maxMotorForce":5,"motorSpeed":1},
 {"id":3,"name":"spring","type":"distance","bodyA":2,"bodyB":3,"anchorA":0,"anchorB":0,"length":2,"frequency":3,"dampingRatio":0.5},
 {"id":4,"name":"axle","type":"wheel","bodyA":2,"bodyB":3,"anchorA":0,"anchorB":0,"localAxisA":{"x":0,"y":1},
  "enableMotor":true,"motorSpeed":-4,"maxMotorTorque":20,"springFrequency":4,"springDampingRatio":0.7},
 {"id":5,"name":"glue","type":"weld","bodyA":2,"bodyB":3,"anchorA":0,"anchorB":0,"referenceAngle":0.1,"frequency":5,"dampingRatio":0.2},
 {"id":6,"name":"drag","type":"friction","bodyA":2,"bodyB":3,"anchorA":0,"anchorB":0,"maxForce":7,"maxTorque":8},
 {"id":7,"name":"tether","type":"rope","bodyA":2,"bodyB":3,"anchorA":0,"anchorB":0,"maxLength":4},
 {"id":8,"name":"servo","type":"motor","bodyA":2,"bodyB":3,"anchorA":0,"anchorB":0,"referenceAngle":0.3,"maxForce":9,
  "maxTorque":11,"correctionFactor":0.4}
],
"metaimage":[
 {"id":1,"name":"sprite","body":1,"file":"sprite.png","center":{"x":1,"y":2},"angle":0.5,"scale":2,"aspectScale":1,
  "opacity":0.75,"colorTint":[255,128,0,255],"flip":false,"filter":1,"renderOrder":3}
],
"metasampler":[
 {"id":1,"name":"tracer","body":2,"file":"sprite.png","center":{"x":0,"y":1},"outputWidth":64,"outputHeight":32,
  "angle":0,"height":2,"opacity":1,"alphaEdgeThreshold":0.5,"colorTint":[255,255,255,255],"flip":false,
  "autoUpdate":false,"useColor":false,"paths":[
   {"type":"polygon","radius":0,"maxPoints":20,"minAngle":5,"controlPoints":{"x":[0,1,1,0],"y":[0,0,1,1]}},
   {"type":"line","radius":0.5,"maxPoints":0,"minAngle":0,"controlPoints":{"x":[-1,1],"y":[0,0]}}]}
],
"metaobject":[
 {"id":1,"name":"crate","file":"object.plax","position":{"x":5,"y":5},"angle":0,"scale":1,"flip":false}
]
}})";

const char* const kObject = R"({"metaworld":{"metabody":[{"id":1,"name":"box","type":"dynamic","position":0,
"fixture":[{"id":1,"name":"side","density":1,"shapes":[{"type":"polygon","vertices":{"x":[0,1,1,0],"y":[0,0,1,1]}}]}]}]}})";
} // namespace

QString writeItemScene(const QString& folder)
{
    QDir().mkpath(folder);
    QImage sprite(40, 20, QImage::Format_ARGB32);
    sprite.fill(Qt::transparent);
    {
        QPainter painter(&sprite);
        painter.fillRect(5, 5, 30, 10, QColor(200, 40, 40));
    }
    sprite.save(QDir(folder).filePath("sprite.png"));
    TestFiles::write(QDir(folder).filePath("object.plax"), kObject);
    const QString scene = QDir(folder).filePath("scene.plax");
    TestFiles::write(scene, kScene);
    return scene;
}
