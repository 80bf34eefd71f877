// Helper of the JavaScript runtime's tests, which compare planck.js worlds
// with the C++ runtime's Box2D worlds:
//   plax-runtime-testtool write-scenes <folder> <count>
//       writes generated-<seed>.plax, the scenes of RuntimeScenes::everyShapeAndJoint;
//   plax-runtime-testtool positions <raw-info.json> <steps>
//       loads the file with the C++ runtime, steps it and prints every body's
//       name, position and angle as JSON.
#include "runtimescenes.h"

#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <plax/box2d/box2dscene.h>

#include <QCoreApplication>
#include <QDir>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{
std::string jsonString(const std::string& text)
{
    std::string out = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        if (static_cast<unsigned char>(c) < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
            out += escaped;
            continue;
        }
        out += c;
    }
    return out + "\"";
}

int writeScenes(const QString& folder, int count)
{
    QDir().mkpath(folder);
    for (int seed = 1; seed <= count; ++seed) {
        const QString path = QDir(folder).filePath(QStringLiteral("generated-%1.plax").arg(seed));
        if (!saveSceneFile(*RuntimeScenes::everyShapeAndJoint(unsigned(seed)), path)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}

int positions(const char* path, int steps)
{
    std::string error;
    const std::unique_ptr<plax::Box2DScene> scene = plax::loadBox2DScene(path, &error);
    if (!scene) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    for (int i = 0; i < steps; ++i)
        scene->step();
    std::printf("[");
    for (size_t i = 0; i < scene->bodies().size(); ++i) {
        const b2Body* body = scene->bodies()[i];
        std::printf("%s\n {\"name\": %s, \"x\": %.9g, \"y\": %.9g, \"angle\": %.9g, \"awake\": %s}", i ? "," : "",
                    jsonString(scene->name(body)).c_str(), double(body->GetPosition().x),
                    double(body->GetPosition().y), double(body->GetAngle()), body->IsAwake() ? "true" : "false");
    }
    std::printf("\n]\n");
    return 0;
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const std::string command = argc > 1 ? argv[1] : "";
    if (command == "write-scenes" && argc == 4)
        return writeScenes(QString::fromLocal8Bit(argv[2]), std::atoi(argv[3]));
    if (command == "positions" && argc == 4)
        return positions(argv[2], std::atoi(argv[3]));
    std::fprintf(stderr, "usage: %s write-scenes <folder> <count> | positions <raw-info.json> <steps>\n", argv[0]);
    return 2;
}
