// Loads the raw info given on the command line with the installed runtime
// library and prints the first body's name and height after one second.
#include <plax/runtime.h>

#include <cstdio>

int main(int argc, char* argv[])
{
    if (argc != 2)
        return 2;
    std::string error;
    auto scene = plax::loadBox2DScene(argv[1], &error);
    if (!scene) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    for (int i = 0; i < 60; ++i)
        scene->step();
    b2Body* ball = scene->body("ball");
    if (!ball)
        return 1;
    std::printf("ball %.2f %d\n", double(ball->GetPosition().y), scene->properties(ball).getInt("lives"));
    return 0;
}
