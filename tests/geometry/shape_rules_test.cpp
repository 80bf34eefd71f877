// Shape type and radius rules, and the load-time repair of shape types.
#include "support/logcapture.h"

#include "base/flags.h"
#include "base/notify.h"
#include "model/metafixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
struct Box
{
    UserNotifier::Kind kind;
    QString title;
    QString text;
};

// A fixture with n vertices and one shape, plus a recorder for message boxes.
class ShapeRules : public ::testing::Test
{
protected:
    void SetUp() override
    {
        AppFlags::setSuppressRefusalDialogs(false);
        AppFlags::setInvalidSettingsFlag(false);
        UserNotifier::setHandlers({}, {});
    }
    void TearDown() override
    {
        UserNotifier::setHandlers({}, {});
        AppFlags::setSuppressRefusalDialogs(false);
        AppFlags::setInvalidSettingsFlag(false);
    }

    MetaShape& shapeWith(int vertexCount, ShapeType type, float radius)
    {
        std::vector<Vec2> vertices;
        for (int i = 0; i < vertexCount; ++i)
            vertices.push_back({static_cast<float>(i), static_cast<float>(i * i % 3)});
        m_fixture.setVertices(vertices);
        m_fixture.clearShapes();
        return m_fixture.addShape(type, radius);
    }

    void beInteractive()
    {
        UserNotifier::setHandlers([this](UserNotifier::Kind k, const QString& t, const QString& x) { boxes.push_back({k, t, x}); },
                                  [](const QString&, const QString&) { return true; });
    }

    MetaFixture m_fixture;
    std::vector<Box> boxes;
};

const QString kCircleRefusal = "Please set a radius value greater than 0.005 to create a circle shape.";
const QString kPolygonRefusal = "You need at least three vertices in the fixture to create a polygon. The edges of "
                                "the polygon should not cross over each other.";
const QString kLoopRefusal = "You need at least three vertices in the fixture to create a loop.";
const QString kNegativeRadius =
    "Please set a radius value of zero or greater.\nTo create a circle shape, please set a radius value greater than 0.005";
const QString kTakenAsZero = "Radius values of less than 0.005 for non-circle shapes will be taken as zero.";
const QString kCircleRadius = "Circle shapes should have a radius value greater than 0.005";
} // namespace

TEST_F(ShapeRules, SetTypeToSameTypeReturnsFalseSilently)
{
    MetaShape& shape = shapeWith(4, ShapeType::Polygon, 0);
    LogCapture log;
    EXPECT_FALSE(shape.setType(ShapeType::Polygon));
    EXPECT_EQ(shape.type(), ShapeType::Polygon);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ShapeRules, CircleNeedsRadiusOfAtLeastMinimum)
{
    MetaShape& shape = shapeWith(3, ShapeType::Polygon, 0.004f);
    LogCapture log;
    EXPECT_FALSE(shape.setType(ShapeType::Circle));
    EXPECT_EQ(shape.type(), ShapeType::Polygon);
    EXPECT_EQ(log.texts(LOG_ERROR), QStringList{kCircleRefusal});

    shape.assign(ShapeType::Polygon, 0.005f);
    EXPECT_TRUE(shape.setType(ShapeType::Circle));
    EXPECT_EQ(shape.type(), ShapeType::Circle);
}

TEST_F(ShapeRules, PolygonAndLoopNeedThreeVertices)
{
    MetaShape& two = shapeWith(2, ShapeType::Line, 0);
    LogCapture log;
    EXPECT_FALSE(two.setType(ShapeType::Polygon));
    EXPECT_FALSE(two.setType(ShapeType::Loop));
    EXPECT_EQ(two.type(), ShapeType::Line);
    EXPECT_EQ(log.texts(LOG_ERROR), (QStringList{kPolygonRefusal, kLoopRefusal}));

    MetaShape& three = shapeWith(3, ShapeType::Line, 0);
    EXPECT_TRUE(three.setType(ShapeType::Polygon));
    EXPECT_TRUE(three.setType(ShapeType::Loop));
    EXPECT_EQ(three.type(), ShapeType::Loop);
}

TEST_F(ShapeRules, LineAndUnknownTypesAlwaysAccepted)
{
    MetaShape& shape = shapeWith(1, ShapeType::Circle, 1);
    EXPECT_TRUE(shape.setType(ShapeType::Line));
    EXPECT_TRUE(shape.setType(ShapeType(42)));
    EXPECT_EQ(shape.type(), ShapeType(42));
    EXPECT_EQ(MetaShape::typeName(ShapeType(42)), "Unknown shape type");
    EXPECT_EQ(MetaShape::typeWord(ShapeType(42)), "unknown");
}

TEST_F(ShapeRules, TypeNamesAndWords)
{
    const char* names[] = {"Circle", "Polygon", "Line", "Loop"};
    const char* words[] = {"circle", "polygon", "line", "loop"};
    for (int t = 0; t < 4; ++t) {
        EXPECT_EQ(MetaShape::typeName(ShapeType(t)), names[t]);
        EXPECT_EQ(MetaShape::typeWord(ShapeType(t)), words[t]);
        EXPECT_EQ(MetaShape::typeFromWord(words[t]), ShapeType(t));
    }
    EXPECT_EQ(MetaShape::typeFromWord("unknown"), ShapeType(-1));
}

TEST_F(ShapeRules, RefusalShowsInvalidSettingsBoxWhenInteractive)
{
    beInteractive();
    MetaShape& shape = shapeWith(2, ShapeType::Line, 0);
    EXPECT_FALSE(shape.setType(ShapeType::Loop));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].kind, UserNotifier::Kind::Warning);
    EXPECT_EQ(boxes[0].title, "Invalid settings");
    EXPECT_EQ(boxes[0].text, kLoopRefusal);

    AppFlags::setSuppressRefusalDialogs(true);
    EXPECT_FALSE(shape.setType(ShapeType::Polygon));
    EXPECT_EQ(boxes.size(), 1u);
}

TEST_F(ShapeRules, NegativeRadiusRefused)
{
    beInteractive();
    MetaShape& shape = shapeWith(3, ShapeType::Polygon, 0.3f);
    LogCapture log;
    EXPECT_FALSE(shape.setRadius(-0.1f));
    EXPECT_FLOAT_EQ(shape.radius(), 0.3f);
    EXPECT_EQ(log.texts(LOG_ERROR), QStringList{kNegativeRadius});
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, kNegativeRadius);
}

TEST_F(ShapeRules, NonFiniteRadiusRefused)
{
    MetaShape& shape = shapeWith(3, ShapeType::Polygon, 0.3f);
    EXPECT_FALSE(shape.setRadius(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_FALSE(shape.setRadius(std::numeric_limits<float>::infinity()));
    EXPECT_FLOAT_EQ(shape.radius(), 0.3f);
}

TEST_F(ShapeRules, SmallRadiusOnNonCircleIsStoredWithWarning)
{
    MetaShape& shape = shapeWith(3, ShapeType::Polygon, 0);
    LogCapture log;
    EXPECT_TRUE(shape.setRadius(0.003f));
    EXPECT_FLOAT_EQ(shape.radius(), 0.003f);
    EXPECT_FALSE(shape.isRounded());
    EXPECT_EQ(log.texts(LOG_WARNING), QStringList{kTakenAsZero});

    log.clear();
    EXPECT_TRUE(shape.setRadius(0));
    EXPECT_EQ(shape.radius(), 0);
    EXPECT_TRUE(log.lines().empty());

    EXPECT_TRUE(shape.setRadius(0.005f));
    EXPECT_TRUE(shape.isRounded());
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ShapeRules, SmallRadiusOnCircleRefusedAndRecordedWithoutWindow)
{
    MetaShape& shape = shapeWith(1, ShapeType::Circle, 0.5f);
    LogCapture log;
    EXPECT_FALSE(shape.setRadius(0.004f));
    EXPECT_FLOAT_EQ(shape.radius(), 0.5f);
    EXPECT_EQ(log.texts(LOG_ERROR), QStringList{kCircleRadius});
    EXPECT_TRUE(AppFlags::invalidSettingsFlag());
}

TEST_F(ShapeRules, SmallRadiusOnCircleShowsBoxOrSetsFlagWhenSuppressed)
{
    beInteractive();
    MetaShape& shape = shapeWith(1, ShapeType::Circle, 0.5f);
    EXPECT_FALSE(shape.setRadius(0));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, "Invalid settings");
    EXPECT_EQ(boxes[0].text, kCircleRadius);
    EXPECT_FALSE(AppFlags::invalidSettingsFlag());

    AppFlags::setSuppressRefusalDialogs(true);
    EXPECT_FALSE(shape.setRadius(0.001f));
    EXPECT_EQ(boxes.size(), 1u);
    EXPECT_TRUE(AppFlags::invalidSettingsFlag());
}

TEST_F(ShapeRules, ConformOneVertexZeroRadiusBecomesHalfRadiusCircle)
{
    for (ShapeType type : {ShapeType::Polygon, ShapeType::Line, ShapeType::Loop}) {
        MetaShape& shape = shapeWith(1, type, 0);
        LogCapture log;
        shape.conformToVertexCount("body/fix", 2);
        EXPECT_EQ(shape.type(), ShapeType::Circle);
        EXPECT_FLOAT_EQ(shape.radius(), 0.5f);
        EXPECT_EQ(log.texts(LOG_WARNING),
                  (QStringList{"Shape radius set to 0.5: body/fix:2 (This happens when a shape has a radius of zero "
                               "and only one vertex, to avoid having a zero radius circle.)",
                               "Shape type forced to circle: body/fix:2"}));
    }
}

TEST_F(ShapeRules, ConformOneVertexKeepsNonZeroOrNaNRadius)
{
    MetaShape& shape = shapeWith(1, ShapeType::Polygon, 0.2f);
    LogCapture log;
    shape.conformToVertexCount("f", 0);
    EXPECT_EQ(shape.type(), ShapeType::Circle);
    EXPECT_FLOAT_EQ(shape.radius(), 0.2f);
    EXPECT_EQ(log.texts(LOG_WARNING), QStringList{"Shape type forced to circle: f:0"});

    MetaShape& nan = shapeWith(1, ShapeType::Line, std::numeric_limits<float>::quiet_NaN());
    log.clear();
    nan.conformToVertexCount("f", 1);
    EXPECT_EQ(nan.type(), ShapeType::Circle);
    EXPECT_TRUE(std::isnan(nan.radius()));
    EXPECT_EQ(log.texts(LOG_WARNING), QStringList{"Shape type forced to circle: f:1"});
}

TEST_F(ShapeRules, ConformTwoVertexPolygonOrLoopBecomesLine)
{
    for (ShapeType type : {ShapeType::Polygon, ShapeType::Loop}) {
        MetaShape& shape = shapeWith(2, type, 0);
        LogCapture log;
        shape.conformToVertexCount("b/f", 3);
        EXPECT_EQ(shape.type(), ShapeType::Line);
        EXPECT_EQ(log.texts(LOG_WARNING), QStringList{"Shape type forced to line: b/f:3"});
    }
}

TEST_F(ShapeRules, ConformLeavesOtherCombinationsAlone)
{
    struct Case
    {
        int vertices;
        ShapeType type;
    } cases[] = {{5, ShapeType::Circle}, {1, ShapeType::Circle}, {2, ShapeType::Line}, {3, ShapeType::Loop}, {3, ShapeType::Polygon}, {0, ShapeType::Line}};
    for (const Case& c : cases) {
        MetaShape& shape = shapeWith(c.vertices, c.type, 0);
        LogCapture log;
        shape.conformToVertexCount("x", 0);
        EXPECT_EQ(shape.type(), c.type) << c.vertices;
        EXPECT_EQ(shape.radius(), 0);
        EXPECT_TRUE(log.lines().empty());
    }
}

TEST_F(ShapeRules, ConformDescriptionIsSubstitutedLiterally)
{
    // A description that itself contains a placeholder must not swallow the index.
    MetaShape& shape = shapeWith(2, ShapeType::Loop, 0);
    LogCapture log;
    shape.conformToVertexCount("100%1 body", 7);
    EXPECT_EQ(log.texts(LOG_WARNING), QStringList{"Shape type forced to line: 100%1 body:7"});
}
