#include "editing/scripttext.h"
#include "model/metabody.h"
#include "model/metaworld.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

TEST(ScriptText, EscapingFollowsItsFourSteps)
{
    EXPECT_EQ(escapeForScriptString("it's"), "it\\'s");
    EXPECT_EQ(escapeForScriptString("a\\b"), "a\\\\b");
    EXPECT_EQ(escapeForScriptString("two\nlines"), "twolines");
    EXPECT_EQ(escapeForScriptString("say \"hi\""), "say \"hi\"") << "double quotes are left alone";
    // A backslash-n pair is removed after the doubling, leaving one backslash.
    EXPECT_EQ(escapeForScriptString("x\\ny"), "x\\y");
}

TEST(ScriptText, ItemExpressions)
{
    MetaWorld world;
    MetaBody* body = world.addBody(std::make_unique<MetaBody>(), 7);
    EXPECT_EQ(scriptToObtainMetaItem(nullptr), "getWorld()");
    EXPECT_EQ(scriptToObtainMetaItem(body), "getBody(7)");
    MetaObject* object = world.addObject(std::make_unique<MetaObject>(), 3);
    LogCapture capture;
    EXPECT_EQ(scriptToObtainMetaItem(object), "getWorld()");
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Error in scriptToObtainMetaItem"));
}

TEST(ScriptText, FloatsReadBackExactlyAndShortValuesMatchTheGeneralFormat)
{
    for (float v : {0.5f, 1.0f, -2.25f, 100.0f, 1e6f, 1e-5f, 0.1f, 123456.0f}) {
        char general[32];
        std::snprintf(general, sizeof general, "%g", double(v));
        EXPECT_EQ(scriptFloat(v), QString::fromLatin1(general)) << v;
    }
    EXPECT_EQ(scriptFloat(0.0f), "0");
    EXPECT_EQ(scriptFloat(-0.0f), "-0.0");

    std::mt19937 random(42);
    std::uniform_int_distribution<std::uint32_t> bits;
    int checked = 0;
    while (checked < 20000) {
        std::uint32_t pattern = bits(random);
        float v;
        std::memcpy(&v, &pattern, sizeof v);
        if (!std::isfinite(v))
            continue;
        ++checked;
        const QByteArray text = scriptFloat(v).toLatin1();
        ASSERT_EQ(float(std::strtod(text.constData(), nullptr)), v) << text.constData();
    }
}
