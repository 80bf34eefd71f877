// Loads a raw-info file exported by P.L.A.X, runs it for one simulated second
// and prints where every body is:
//
//     plax -i examples/demo.plax -e demo.json
//     plax-runtime-example demo.json
//
// Each line is "<name> <x> <y> <angle>"; unnamed bodies are shown by their
// position in the file as "#<index>".
#include <plax/runtime.h>

#include <cmath>
#include <cstdio>
#include <string>

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <raw-info.json>\n", argv[0]);
        return 2;
    }
    std::string error;
    std::unique_ptr<plax::Box2DScene> scene = plax::loadBox2DScene(argv[1], &error);
    if (!scene) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    // One second at the rate the scene was made for.
    const int steps = int(std::lround(std::max(1.0f, scene->settings().stepsPerSecond)));
    for (int i = 0; i < steps; ++i)
        scene->step();

    std::printf("after %d steps:\n", steps);
    for (size_t i = 0; i < scene->bodies().size(); ++i) {
        const b2Body* body = scene->bodies()[i];
        const std::string& name = scene->name(body);
        const std::string label = name.empty() ? "#" + std::to_string(i) : name;
        std::printf("%s %.4f %.4f %.4f\n", label.c_str(), double(body->GetPosition().x), double(body->GetPosition().y),
                    double(body->GetAngle()));
    }
    return 0;
}
