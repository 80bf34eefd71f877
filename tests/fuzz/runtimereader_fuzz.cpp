// The runtime library's reader and Box2D worlds on any input: a read either
// fails with an error naming the member (a JSON pointer) or the text, or
// gives a description that builds into a world or fails the same way;
// a built world steps. Nothing may crash or trip Box2D's assertions.
#include <plax/box2d/box2dscene.h>
#include <plax/rawinforeader.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace
{
[[noreturn]] void failure(const char* what, const std::string& error)
{
    std::fprintf(stderr, "property failed: %s (%s)\n", what, error.c_str());
    std::abort();
}

bool namesAMember(const std::string& error)
{
    return !error.empty() && (error[0] == '/' || error.rfind("not JSON", 0) == 0);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    plax::SceneDescription scene;
    std::string error;
    if (!plax::readRawInfo(text, scene, &error)) {
        if (!namesAMember(error))
            failure("a failed read names the member or the text", error);
        if (!scene.bodies.empty() || !scene.joints.empty())
            failure("a failed read leaves the scene empty", error);
        return 0;
    }
    if (!error.empty())
        failure("a read that succeeds reports no error", error);

    // The same text read in place gives the same scene.
    std::string copy(text);
    plax::SceneDescription again;
    if (!plax::readRawInfoInPlace(copy.data(), again, &error) || again.bodies.size() != scene.bodies.size() ||
        again.joints.size() != scene.joints.size() || again.images.size() != scene.images.size())
        failure("reading in place reads the same", error);

    const size_t bodies = scene.bodies.size();
    std::unique_ptr<plax::Box2DScene> world = plax::Box2DScene::create(std::move(scene), &error);
    if (!world) {
        if (error.empty() || error[0] != '/')
            failure("a record Box2D cannot take is named", error);
        return 0;
    }
    if (world->bodies().size() != bodies)
        failure("every body record becomes a body", error);
    for (int i = 0; i < 3; ++i)
        world->world().Step(1.0f / 60.0f, 8, 3);
    return 0;
}
