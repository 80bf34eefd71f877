// Reading a JSON file a piece at a time: the chosen array's elements are
// handed over one by one and left out of the document, everything else is
// the document parseJson would give, and bad text fails with parseJson's
// message and offset.
#include "io/jsonstream.h"
#include "io/jsontext.h"
#include "iotestsupport.h"
#include "support/testfiles.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{
struct Streamed
{
    bool ok = false;
    QString error;
    std::vector<QByteArray> elements;
    QByteArray rest;
};

Streamed stream(const QByteArray& text)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("file.json");
    TestFiles::write(path, text);
    Streamed s;
    rapidjson::Document rest;
    s.ok = streamJsonFile(
        path, "metaworld", "metabody", [&](const rapidjson::Value& v) { s.elements.push_back(jsonToText(v, false)); },
        &rest, &s.error);
    if (s.ok)
        s.rest = jsonToText(rest, false);
    return s;
}
} // namespace

TEST(JsonStream, TheChosenArraysElementsAreHandedOverOneByOneAndTheRestIsKept)
{
    // A byte-order mark, the array after other members, a second array of
    // the same name (ignored, as the first member of a name is the one read)
    // and the same key elsewhere, which is not the chosen one.
    const QByteArray text = "\xEF\xBB\xBF{\"version\": 2, \"metabody\": [9], \"metaworld\": {\"gravity\": {\"x\": 0, "
                            "\"y\": -10}, \"metabody\": [{\"id\": 1, \"name\": \"a\\u00e9\", \"fixture\": [{\"id\": 4}]}, "
                            "7, {\"id\": 2, \"x\": [1.5, true, null]}], \"metajoint\": [{\"id\": 3}], \"metabody\": "
                            "[{\"id\": 99}]}}";
    const Streamed s = stream(text);
    ASSERT_TRUE(s.ok) << s.error.toStdString();
    ASSERT_EQ(s.elements.size(), 3u);
    EXPECT_EQ(s.elements[0], QByteArray("{\"id\":1,\"name\":\"a\xC3\xA9\",\"fixture\":[{\"id\":4}]}"));
    EXPECT_EQ(s.elements[1], QByteArray("7"));
    EXPECT_EQ(s.elements[2], QByteArray("{\"id\":2,\"x\":[1.5,true,null]}"));
    EXPECT_EQ(s.rest, QByteArray("{\"version\":2,\"metabody\":[9],\"metaworld\":{\"gravity\":{\"x\":0,\"y\":-10},"
                                 "\"metabody\":[],\"metajoint\":[{\"id\":3}],\"metabody\":[{\"id\":99}]}}"));
}

TEST(JsonStream, BadTextFailsWithTheMessageAndOffsetOfAWholeParse)
{
    for (const QByteArray& text : {QByteArray("{\"metaworld\": {\"metabody\": [{\"id\": 1}, {\"id\": ]}}"),
                                   QByteArray("\xEF\xBB\xBF[1, 2,"), QByteArray("{\"a\": 1} x"), QByteArray(""),
                                   QByteArray("{\"a\": \"\\q\"}")}) {
        const Streamed s = stream(text);
        rapidjson::Document whole;
        QString expected;
        EXPECT_FALSE(parseJson(text, &whole, &expected));
        EXPECT_FALSE(s.ok);
        EXPECT_EQ(s.error, expected) << text.toStdString();
    }
    // Text after a zero byte is not read, as a parse in place stops there.
    const QByteArray zero("{\"a\": 1}\0garbage", 16);
    EXPECT_TRUE(stream(zero).ok);
}

TEST(JsonStream, ManyElementsComeWholeAndInOrderWhateverTheirNumber)
{
    // Past a few dozen elements they are handed over in batches from
    // another thread while the parser reads on: every count around the
    // batch size, and one far past it, gives the elements of a whole parse.
    for (int count : {0, 1, 31, 32, 33, 64, 65, 127, 128, 129, 1000}) {
        QByteArray text = "{\"metaworld\": {\"before\": [1], \"metabody\": [";
        for (int i = 0; i < count; ++i) {
            if (i > 0)
                text += ", ";
            // Elements of different sizes and kinds, with strings that live in the batch's allocator.
            if (i % 5 == 4)
                text += QByteArray::number(i);
            else
                text += "{\"id\": " + QByteArray::number(i) + ", \"name\": \"body " + QByteArray::number(i) +
                        "\", \"fixture\": [" + QByteArray(i % 7, '[').append("\"deep\"").append(QByteArray(i % 7, ']')) +
                        "]}";
        }
        text += "], \"after\": {\"name\": \"kept\"}}}";
        const Streamed s = stream(text);
        ASSERT_TRUE(s.ok) << count << ": " << s.error.toStdString();
        rapidjson::Document whole;
        QString error;
        ASSERT_TRUE(parseJson(text, &whole, &error)) << error.toStdString();
        const rapidjson::Value& bodies = whole["metaworld"]["metabody"];
        ASSERT_EQ(s.elements.size(), size_t(count));
        for (int i = 0; i < count; ++i)
            ASSERT_EQ(s.elements[size_t(i)], jsonToText(bodies[rapidjson::SizeType(i)], false)) << count << " " << i;
        EXPECT_EQ(s.rest, QByteArray("{\"metaworld\":{\"before\":[1],\"metabody\":[],\"after\":{\"name\":\"kept\"}}}"));
    }
}

TEST(JsonStream, ElementsReadBeforeAnErrorAreAllHandedOver)
{
    QByteArray text = "{\"metaworld\": {\"metabody\": [";
    for (int i = 0; i < 100; ++i)
        text += "{\"id\": " + QByteArray::number(i) + "}, ";
    text += "{\"id\": 100, ]}}";
    QTemporaryDir dir;
    const QString path = dir.filePath("file.json");
    TestFiles::write(path, text);
    std::vector<int> ids;
    rapidjson::Document rest;
    QString error;
    EXPECT_FALSE(streamJsonFile(
        path, "metaworld", "metabody", [&](const rapidjson::Value& v) { ids.push_back(v["id"].GetInt()); }, &rest,
        &error));
    EXPECT_FALSE(error.isEmpty());
    ASSERT_EQ(ids.size(), 100u) << "the broken 101st is not handed over";
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(ids[size_t(i)], i);
}
