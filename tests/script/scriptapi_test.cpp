#include "scripttesting.h"

#include "api/scriptapi.h"
#include "api/scriptapidump.h"
#include "api/scriptregistrar.h"
#include "base/log.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"

#include <gtest/gtest.h>


using namespace AngelScript;

TEST(ScriptApi, EveryRegistrationSucceedsAndTwiceIsRefused)
{
    asIScriptEngine* engine = asCreateScriptEngine(ANGELSCRIPT_VERSION);
    ASSERT_NE(engine, nullptr);
    EXPECT_TRUE(registerScriptApi(engine));
    {
        LogCapture capture;
        // Registering a second time clashes with every declaration and must be reported.
        engine->SetMessageCallback(asFUNCTION(+[](const asSMessageInfo*, void*) {}), nullptr, asCALL_CDECL);
        ScriptRegistrar reg(engine);
        auto registerAgain = [&reg] {
            reg.global("vec2 mv(float, float)", asFUNCTION(+[](float, float) {}), asCALL_CDECL);
        };
#ifdef QT_NO_DEBUG
        registerAgain();
        EXPECT_EQ(reg.failures(), 1);
        EXPECT_TRUE(capture.hasLineStartingWith(LOG_FATAL, "Script registration failed"));
#else
        EXPECT_DEATH(registerAgain(), "r >= 0");
#endif
    }
    engine->ShutDownAndRelease();
}

TEST(ScriptApi, AddOnsAreAvailable)
{
    EditorDocument document;
    bool ok = false;
    QStringList prints = runAndCollectPrints(document, R"(
int[] values = {3, 1, 2};
values.sortAsc();
print(values[0]); print(values.length());
dictionary d; d.set('k', 5); int k = 0; d.get('k', k); print(k);
print(sqrt(16.0f)); print(abs(-2.5f));
string s = "a,b,c"; print(s.split(',').length()); print(s.substr(2, 1));
)",
                                             &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(prints, QStringList({"1", "3", "5", "4", "2.5", "3", "b"}));
}

TEST(ScriptApi, LongArraysFromTheApiHoldEveryElementInOrder)
{
    // Built by doubling their room: lengths around the points where it grows.
    EditorDocument document;
    bool ok = false;
    QStringList prints = runAndCollectPrints(document, R"(
for (int n = 3; n <= 1100; n = n * 2 + 1) {
  vec2[] points;
  for (int i = 0; i < n; i++) points.insertLast(mv(cos(6.2831853 * i / n), sin(6.2831853 * i / n)));
  body b = addBody(0, '{}');
  fixture f = b.addFixture(0, '{"shapes": [{"type": "polygon"}]}');
  f.setVertices(points);
  vertex[]@ all = f.getVertices();
  bool inOrder = true;
  for (uint i = 0; i < all.length(); i++) inOrder = inOrder && all[i].index == i;
  print(all.length() + (inOrder ? ' in order' : ' mixed'));
}
)",
                                             &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(prints, QStringList({"3 in order", "7 in order", "15 in order", "31 in order", "63 in order",
                                   "127 in order", "255 in order", "511 in order", "1023 in order"}));
}
