// Writing an array's elements on two threads: the text is the one written
// element by element, in either layout, wherever the array sits and
// whatever its elements are; a refused value is still told; sinks that keep
// no text, and exports whose filter calls out, are written on one thread.
#include "iotestsupport.h"

#include "io/arrayelements.h"
#include "io/b2djson.h"
#include "io/exportfilter.h"
#include "io/jsontext.h"
#include "io/jsontextwriter.h"
#include "io/rawinfoexport.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>

#include <cmath>
#include <mutex>
#include <set>
#include <string>
#include <thread>

namespace
{
// One element of a kind chosen by the test: objects with nested arrays and
// strings of varying length, or plain numbers (arrays on one line).
void element(JsonSink& sink, size_t i, bool plain, size_t refused = SIZE_MAX)
{
    if (plain) {
        if (i == refused)
            sink.real(NAN);
        else
            sink.integer(int(i));
        return;
    }
    sink.startObject();
    const std::string name(i % 13, char('a' + i % 26));
    sink.key("name", 4);
    sink.string(name.data(), name.size());
    sink.key("points", 6);
    sink.startArray();
    for (size_t k = 0; k < i % 4; ++k)
        sink.real(double(i) + 0.25 * double(k));
    sink.endArray();
    sink.key("parts", 5);
    sink.startArray();
    for (size_t k = 0; k < i % 3; ++k) {
        sink.startObject();
        sink.key("k", 1);
        sink.real(i == refused && k == 0 ? NAN : double(k));
        sink.endObject();
    }
    sink.endArray();
    sink.endObject();
}

struct Case
{
    size_t count;
    size_t run;
    size_t before; // elements written one by one first
    bool plain;
};

// The document around the array: a member before, the array in an object
// in an array, members after; `together` writes the array's elements with
// writeArrayElements, else one by one.
std::string document(bool pretty, const Case& c, bool together, bool* ok, size_t refused = SIZE_MAX)
{
    rapidjson::StringBuffer buffer;
    JsonTextWriter<rapidjson::StringBuffer> writer(buffer, pretty);
    HandlerSink<JsonTextWriter<rapidjson::StringBuffer>> sink(writer);
    sink.startObject();
    sink.key("first", 5);
    sink.boolean(true);
    sink.key("outer", 5);
    sink.startArray();
    sink.startObject();
    sink.key("items", 5);
    sink.startArray();
    for (size_t i = 0; i < c.before; ++i)
        element(sink, i, c.plain, refused);
    const auto write = [&](JsonSink& to, size_t i) { element(to, c.before + i, c.plain, refused); };
    if (together) {
        writeArrayElements(sink, c.count, write, c.run);
    } else {
        for (size_t i = 0; i < c.count; ++i)
            write(sink, i);
    }
    sink.endArray();
    sink.key("after", 5);
    sink.string("end", 3);
    sink.endObject();
    sink.endArray();
    sink.endObject();
    writer.finish();
    *ok = sink.ok();
    return buffer.GetString();
}

std::unique_ptr<MetaWorld> manyBodies(int count)
{
    auto scene = std::make_unique<MetaWorld>();
    for (int i = 0; i < count; ++i) {
        auto body = std::make_unique<MetaBody>();
        body->type = i % 3 ? BodyType::Dynamic : BodyType::Static;
        body->position = {float(i) * 0.5f, float(i % 11)};
        MetaBody* added = scene->addBody(std::move(body), 0, i % 4 ? QString() : scene->uniqueName(ItemKind::Body));
        auto fixture = std::make_unique<MetaFixture>();
        fixture->setVertices({{0, 0}, {1, 0}, {0.5f, float(1 + i % 5)}});
        fixture->addShape(ShapeType::Polygon, 0);
        scene->addFixture(added, std::move(fixture), 0, QStringLiteral("f"));
    }
    return scene;
}
} // namespace

TEST(ArrayElements, TwoThreadsWriteTheTextOfOneByOne)
{
    const Case cases[] = {
        {0, 4, 0, false},   {1, 4, 0, false},   {4, 4, 0, false},  {5, 4, 0, false},   {9, 4, 0, false},
        {200, 1, 0, false}, {200, 7, 0, false}, {203, 7, 3, false}, {1000, 64, 0, false}, {130, 64, 2, false},
        {50, 3, 0, true},   {50, 3, 2, true},   {700, 16, 0, true},
    };
    for (bool pretty : {true, false}) {
        for (const Case& c : cases) {
            bool okOne = false, okTogether = false;
            const std::string one = document(pretty, c, false, &okOne);
            const std::string together = document(pretty, c, true, &okTogether);
            EXPECT_TRUE(okOne && okTogether);
            ASSERT_EQ(together, one) << "pretty " << pretty << ", " << c.count << " elements in runs of " << c.run
                                     << " after " << c.before << (c.plain ? ", plain" : "");
        }
    }
}

TEST(ArrayElements, AValueRefusedInAnyRunFailsTheSink)
{
    // Refused in the first run, in a middle one and in the last, which of
    // the two threads writes them (objects refuse a value in their parts).
    for (size_t refused : {size_t(2), size_t(77), size_t(151), size_t(199)}) {
        for (bool plain : {false, true}) {
            bool ok = true;
            document(true, {200, 8, 0, plain}, true, &ok, refused);
            EXPECT_FALSE(ok) << "refused element " << refused;
        }
    }
}

TEST(ArrayElements, ADomIsBuiltOnThisThreadAlone)
{
    rapidjson::Document dom;
    std::set<std::thread::id> threads;
    auto generate = [&](rapidjson::Document& handler) {
        HandlerSink<rapidjson::Document> sink(handler);
        sink.startArray();
        writeArrayElements(sink, 500, [&](JsonSink& to, size_t i) {
            threads.insert(std::this_thread::get_id());
            to.integer(int(i));
        }, 4);
        sink.endArray();
        return sink.ok();
    };
    dom.Populate(generate);
    ASSERT_TRUE(dom.IsArray());
    ASSERT_EQ(dom.Size(), 500u);
    EXPECT_EQ(dom[499].GetInt(), 499);
    EXPECT_EQ(threads, std::set<std::thread::id>{std::this_thread::get_id()});
}

TEST(ArrayElements, ABigExportIsTheTextOfItsDomAndAFilterThatCallsOutIsAskedOnOneThread)
{
    const std::unique_ptr<MetaWorld> scene = manyBodies(900);
    scene->exportOptions.usePrettyPrint = true;
    WorldBuild build(*scene);
    build.addScene(*scene);
    const ExportPropertyFilter plain(QStringList{QStringLiteral("/world/body/angularDamping")});
    ASSERT_TRUE(plain.isSelfContained());
    const QByteArray text = rawInfoText(build, *scene, plain);
    const rapidjson::Document dom = b2dJson(exportStyle(*scene), plain).write(build, *scene);
    EXPECT_EQ(jsonToText(dom, true), text);
    EXPECT_FALSE(text.contains("angularDamping"));
    EXPECT_TRUE(text.contains("linearDamping"));

    // A predicate (here a counting probe; in the editor it may be a
    // script) is never asked from two threads.
    std::mutex mutex;
    std::set<std::thread::id> threads;
    ExportPropertyFilter probe(QStringList{QStringLiteral("/world/body/angularDamping")});
    probe.setPredicate([&](const QString&) {
        std::lock_guard lock(mutex);
        threads.insert(std::this_thread::get_id());
        return true;
    });
    EXPECT_FALSE(probe.isSelfContained());
    EXPECT_EQ(rawInfoText(build, *scene, probe), text);
    EXPECT_EQ(threads, std::set<std::thread::id>{std::this_thread::get_id()});
}
