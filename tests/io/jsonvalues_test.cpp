#include "io/jsontext.h"
#include "io/jsonvalues.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace
{
rapidjson::Document parse(const char* text)
{
    rapidjson::Document document;
    QString error;
    EXPECT_TRUE(parseJson(QByteArray(text), &document, &error)) << error.toStdString();
    return document;
}

std::uint32_t bits(float value)
{
    return std::bit_cast<std::uint32_t>(value);
}

// Writes one value with the style and returns its compact text.
QByteArray floatText(float value, const JsonStyle& style)
{
    rapidjson::Document document;
    const JsonEncoder encoder(document.GetAllocator(), style);
    return jsonToText(encoder.floatValue(value), false);
}

// Reads back a float written as text.
float reread(const QByteArray& text)
{
    rapidjson::Document document;
    EXPECT_TRUE(parseJson(text, &document, nullptr)) << text.toStdString();
    return decodeFloat(&document, -12345.0f);
}

JsonStyle humanReadable()
{
    JsonStyle style;
    style.humanReadableFloats = true;
    return style;
}
} // namespace

TEST(JsonFloat, ReadsEveryEncoding)
{
    rapidjson::Document d = parse(R"({"hex": "3FC00000", "lower": "3fc00000", "one": 1, "big": 7, "real": 0.1,
        "neg": -2, "nul": null, "bad": "3FC0000Z", "long": "3FC000000", "empty": "", "bool": true, "arr": [1]})");
    EXPECT_EQ(readFloat(d, "hex", 0), 1.5f);
    EXPECT_EQ(readFloat(d, "lower", 0), 1.5f);
    EXPECT_EQ(readFloat(d, "one", 0), 1.0f);
    EXPECT_EQ(readFloat(d, "big", 0), 7.0f);
    EXPECT_EQ(readFloat(d, "real", 0), 0.1f);
    EXPECT_EQ(readFloat(d, "neg", 0), -2.0f);
    EXPECT_EQ(readFloat(d, "missing", 4.5f), 4.5f);
    EXPECT_EQ(readFloat(d, "nul", 4.5f), 4.5f);
    EXPECT_EQ(readFloat(d, "bad", 4.5f), 4.5f);
    EXPECT_EQ(readFloat(d, "long", 4.5f), 4.5f);
    EXPECT_EQ(readFloat(d, "empty", 4.5f), 4.5f);
    EXPECT_EQ(readFloat(d, "bool", 4.5f), 4.5f);
    EXPECT_EQ(readFloat(d, "arr", 4.5f), 4.5f);
    // A member of something that is not an object gives the default.
    EXPECT_EQ(readFloat(d["arr"], "x", 2.5f), 2.5f);
}

TEST(JsonFloat, OutOfRangeDoublesDoNotOverflow)
{
    rapidjson::Document d = parse(R"({"huge": 1e300, "tiny": -1e300, "max": 3.4028235e38, "sub": 1e-300})");
    EXPECT_EQ(readFloat(d, "huge", 0), std::numeric_limits<float>::infinity());
    EXPECT_EQ(readFloat(d, "tiny", 0), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(readFloat(d, "max", 0), std::numeric_limits<float>::max());
    EXPECT_EQ(readFloat(d, "sub", 1), 0.0f);
    EXPECT_TRUE(std::isnan(floatFromDouble(std::nan(""))));
}

TEST(JsonFloat, WritesCompactHexAndNonFinite)
{
    const JsonStyle hex;
    EXPECT_EQ(floatText(1.5f, hex), "\"3FC00000\"");
    EXPECT_EQ(floatText(0.0f, hex), "0");
    EXPECT_EQ(floatText(1.0f, hex), "1");
    EXPECT_EQ(floatText(-0.0f, hex), "0") << "zero of either sign is zero";
    EXPECT_EQ(floatText(-1.0f, hex), "\"BF800000\"");
    EXPECT_EQ(floatText(std::numeric_limits<float>::infinity(), humanReadable()), "\"7F800000\"");
    EXPECT_EQ(floatText(std::numeric_limits<float>::quiet_NaN(), humanReadable()), "\"7FC00000\"");

    JsonStyle loose;
    loose.compactCommonFloats = false;
    EXPECT_EQ(floatText(0.0f, loose), "\"00000000\"");
    EXPECT_EQ(floatText(1.0f, loose), "\"3F800000\"");
    loose.humanReadableFloats = true;
    EXPECT_EQ(floatText(1.0f, loose), "1.0");
}

TEST(JsonFloat, HumanReadableIsShortestText)
{
    EXPECT_EQ(floatText(0.1f, humanReadable()), "0.1");
    EXPECT_EQ(floatText(-2.75f, humanReadable()), "-2.75");
    EXPECT_EQ(floatText(1.0f / 3.0f, humanReadable()), "0.33333334");
    EXPECT_EQ(floatText(16777216.0f, humanReadable()), "16777216.0");
    EXPECT_EQ(floatToShortestText(0.1f), "0.1");
    EXPECT_TRUE(floatToShortestText(std::numeric_limits<float>::infinity()).isEmpty());
}

TEST(JsonFloat, EveryEncodingRoundTripsExactly)
{
    std::mt19937 random(42);
    std::uniform_int_distribution<std::uint32_t> pattern;
    std::vector<float> values = {std::numeric_limits<float>::max(), std::numeric_limits<float>::min(),
                                 std::numeric_limits<float>::denorm_min(), -std::numeric_limits<float>::max(),
                                 0.1f, 1e-7f, 123456.789f};
    while (values.size() < 20000) {
        const float value = std::bit_cast<float>(pattern(random));
        if (std::isfinite(value))
            values.push_back(value);
    }
    for (const JsonStyle& style : {JsonStyle{}, humanReadable()}) {
        for (float value : values) {
            const QByteArray text = floatText(value, style);
            ASSERT_EQ(bits(reread(text)), bits(value)) << text.toStdString();
        }
    }
}

TEST(JsonHex, MalformedPatternsAreRefused)
{
    float value = 7;
    EXPECT_FALSE(floatFromHex("", 0, &value));
    EXPECT_FALSE(floatFromHex("123456789", 9, &value));
    EXPECT_FALSE(floatFromHex("-1", 2, &value));
    EXPECT_FALSE(floatFromHex("0x10", 4, &value));
    EXPECT_EQ(value, 7);
    EXPECT_TRUE(floatFromHex("40490FDB", 8, &value));
    EXPECT_EQ(value, 3.14159274f);
    EXPECT_EQ(floatToHex(3.14159274f), "40490FDB");
}

TEST(JsonVec2, ZeroIsAnIntegerAndReadsBack)
{
    rapidjson::Document document;
    const JsonEncoder encoder(document.GetAllocator(), JsonStyle{});
    EXPECT_EQ(jsonToText(encoder.vec2Value({0, 0}), false), "0");
    EXPECT_EQ(jsonToText(encoder.vec2Value({1.5f, 0}), false), R"({"x":"3FC00000","y":0})");
    JsonStyle loose;
    loose.compactZeroVecs = false;
    const JsonEncoder looseEncoder(document.GetAllocator(), loose);
    EXPECT_EQ(jsonToText(looseEncoder.vec2Value({0, 0}), false), R"({"x":0,"y":0})");

    rapidjson::Document d = parse(R"({"zero": 0, "v": {"x": 1, "y": "C0000000"}, "half": {"y": 2},
        "str": "0", "arr": [1, 2]})");
    EXPECT_EQ(readVec2(d, "zero", {5, 5}), (Vec2{0, 0}));
    EXPECT_EQ(readVec2(d, "v", {}), (Vec2{1, -2}));
    EXPECT_EQ(readVec2(d, "half", {7, 8}), (Vec2{7, 2}));
    EXPECT_EQ(readVec2(d, "str", {5, 5}), (Vec2{5, 5}));
    EXPECT_EQ(readVec2(d, "arr", {5, 5}), (Vec2{5, 5}));
    EXPECT_EQ(readVec2(d, "missing", {5, 5}), (Vec2{5, 5}));
}

TEST(JsonPointList, ParallelArraysAndMismatchedLengths)
{
    rapidjson::Document document;
    const JsonEncoder encoder(document.GetAllocator(), JsonStyle{});
    const std::vector<Vec2> points = {{0, 1}, {1.5f, -2}};
    const QByteArray text = jsonToText(encoder.pointListValue(points), false);
    EXPECT_EQ(text, R"({"x":[0,"3FC00000"],"y":[1,"C0000000"]})");
    rapidjson::Document back;
    ASSERT_TRUE(parseJson(text, &back, nullptr));
    EXPECT_EQ(decodePointList(&back), points);

    rapidjson::Document d = parse(R"({"short": {"x": [1, 2, 3], "y": [4]}, "noy": {"x": [1]},
        "list": [{"x": 1, "y": 2}, 0], "junk": {"x": "a", "y": [1]}, "mixed": {"x": [true, 1], "y": [1, null]}})");
    EXPECT_EQ(readPointList(d, "short"), (std::vector<Vec2>{{1, 4}}));
    EXPECT_TRUE(readPointList(d, "noy").empty());
    EXPECT_EQ(readPointList(d, "list"), (std::vector<Vec2>{{1, 2}, {0, 0}}));
    EXPECT_TRUE(readPointList(d, "junk").empty());
    EXPECT_EQ(readPointList(d, "mixed"), (std::vector<Vec2>{{0, 1}, {1, 0}}));
}

TEST(JsonColor, ClampsAndKeepsDefaultsForMissingChannels)
{
    rapidjson::Document document;
    const JsonEncoder encoder(document.GetAllocator(), JsonStyle{});
    EXPECT_EQ(jsonToText(encoder.colorValue({300, -4, 128, 255}), false), "[255,0,128,255]");

    rapidjson::Document d = parse(R"({"c": [1, 2, 3, 4], "wild": [999, -5, "a", 1e30, 7], "short": [9],
        "obj": {"r": 1}})");
    const Color fallback{10, 20, 30, 40};
    EXPECT_EQ(readColor(d, "c", fallback), (Color{1, 2, 3, 4}));
    EXPECT_EQ(readColor(d, "wild", fallback), (Color{255, 0, 30, 255}));
    EXPECT_EQ(readColor(d, "short", fallback), (Color{9, 20, 30, 40}));
    EXPECT_EQ(readColor(d, "obj", fallback), fallback);
}

TEST(JsonScalars, TypeChecksAndOverflow)
{
    rapidjson::Document d = parse(R"({"i": -12, "big": 1e20, "neg": -1e20, "u64": 18446744073709551615,
        "i64": -9223372036854775808, "frac": 2.9, "s": "5", "b": true, "n": 0, "id": 4294967295, "negid": -1,
        "bigid": 4294967296, "text": "h\u00e9llo", "list": ["a", 1, "b"]})");
    EXPECT_EQ(readInt(d, "i", 0), -12);
    EXPECT_EQ(readInt(d, "big", 0), std::numeric_limits<int>::max());
    EXPECT_EQ(readInt(d, "neg", 0), std::numeric_limits<int>::min());
    EXPECT_EQ(readInt(d, "u64", 0), std::numeric_limits<int>::max());
    EXPECT_EQ(readInt(d, "i64", 0), std::numeric_limits<int>::min());
    EXPECT_EQ(readInt(d, "frac", 0), 2);
    EXPECT_EQ(readInt(d, "s", 3), 3);
    EXPECT_EQ(readBool(d, "b", false), true);
    EXPECT_EQ(readBool(d, "n", true), false);
    EXPECT_EQ(readBool(d, "s", true), true);
    EXPECT_EQ(readUint(d, "id", 0), 4294967295u);
    EXPECT_EQ(readUint(d, "negid", 9), 9u);
    EXPECT_EQ(readUint(d, "bigid", 9), 9u);
    EXPECT_EQ(readString(d, "text"), QStringLiteral("h\u00e9llo"));
    EXPECT_EQ(readString(d, "i", QStringLiteral("dflt")), QStringLiteral("dflt"));
    EXPECT_EQ(readStringList(d, "list"), (QStringList{QStringLiteral("a"), QString(), QStringLiteral("b")}));
}

TEST(JsonText, CompactPrettyAndParseErrors)
{
    rapidjson::Document document(rapidjson::kObjectType);
    const JsonEncoder encoder(document.GetAllocator(), JsonStyle{});
    encoder.addString(document, "zeta", QStringLiteral("\u00fc"));
    encoder.addInt(document, "alpha", 2);
    EXPECT_EQ(jsonToText(document, false), "{\"zeta\":\"\xC3\xBC\",\"alpha\":2}");
    EXPECT_EQ(jsonToText(document, true), "{\n   \"zeta\": \"\xC3\xBC\",\n   \"alpha\": 2\n}\n");

    rapidjson::Document arrays = parse(R"({"list": [1, "a", 2.5], "records": [{"c": []}], "none": {}})");
    EXPECT_EQ(jsonToText(arrays, true), "{\n   \"list\": [1, \"a\", 2.5],\n   \"records\": [\n      {\n"
                                        "         \"c\": []\n      }\n   ],\n   \"none\": {}\n}\n");

    rapidjson::Document bad;
    QString error;
    EXPECT_FALSE(parseJson("{\"a\": }", &bad, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("offset 6"))) << error.toStdString();
    EXPECT_TRUE(parseJson("\xEF\xBB\xBF{\"a\": 1}", &bad, &error));
    QByteArray deep(200000, '[');
    EXPECT_FALSE(parseJson(deep, &bad, &error));
    QByteArray buffer("{\"k\": \"v\"}");
    EXPECT_TRUE(parseJsonInPlace(buffer, &bad, &error));
    EXPECT_EQ(readString(bad, "k"), QStringLiteral("v"));
}

TEST(JsonFloat, NegativeZeroIsZeroInEveryEncoding)
{
    rapidjson::Document document;
    JsonStyle hexLoose;
    hexLoose.compactCommonFloats = false;
    hexLoose.compactZeroVecs = false;
    JsonStyle readableLoose = humanReadable();
    readableLoose.compactCommonFloats = false;
    EXPECT_EQ(floatText(-0.0f, JsonStyle{}), "0");
    EXPECT_EQ(floatText(-0.0f, humanReadable()), "0");
    EXPECT_EQ(floatText(-0.0f, hexLoose), "\"00000000\"");
    EXPECT_EQ(floatText(-0.0f, readableLoose), floatText(0.0f, readableLoose));
    EXPECT_FALSE(floatText(-0.0f, readableLoose).contains('-'));

    const JsonEncoder compact(document.GetAllocator(), JsonStyle{});
    EXPECT_EQ(jsonToText(compact.vec2Value({-0.0f, 0.0f}), false), "0");
    EXPECT_EQ(jsonToText(compact.vec2Value({-0.0f, -0.0f}), false), "0");
    const JsonEncoder loose(document.GetAllocator(), hexLoose);
    EXPECT_EQ(jsonToText(loose.vec2Value({-0.0f, 2.0f}), false), R"({"x":"00000000","y":"40000000"})");
    // A NaN is not zero, whatever its sign.
    EXPECT_EQ(floatText(-std::numeric_limits<float>::quiet_NaN(), JsonStyle{}), "\"FFC00000\"");
}
