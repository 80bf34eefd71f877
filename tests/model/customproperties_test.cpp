#include "model/customproperties.h"

#include <gtest/gtest.h>

TEST(CustomProperties, SetReplacesByNameWhateverTheType)
{
    CustomProperties props;
    props.set("speed", 3);
    props.set("label", QStringLiteral("x"));
    props.set("speed", 2.5f);
    ASSERT_EQ(props.values().size(), 2u);
    EXPECT_EQ(props.values()[0].name, "speed") << "order of first setting is kept";
    EXPECT_EQ(props.find("speed")->type(), CustomPropertyType::Float);
    EXPECT_EQ(std::get<float>(props.find("speed")->value), 2.5f);
    EXPECT_TRUE(props.remove("speed"));
    EXPECT_FALSE(props.remove("speed"));
    EXPECT_EQ(props.find("speed"), nullptr);
}

TEST(CustomProperties, TypeWordsRoundTrip)
{
    for (int i = 0; i < 6; ++i) {
        auto type = static_cast<CustomPropertyType>(i);
        CustomPropertyType back{};
        ASSERT_TRUE(customPropertyTypeFromWord(customPropertyTypeWord(type), &back));
        EXPECT_EQ(back, type);
    }
    CustomPropertyType unused{};
    EXPECT_FALSE(customPropertyTypeFromWord("double", &unused));
    // The variant's alternatives are in the order of the type enumeration.
    EXPECT_EQ(CustomProperty({"c", Color{1, 2, 3, 4}}).type(), CustomPropertyType::Color);
    EXPECT_EQ(CustomProperty({"v", Vec2{1, 2}}).type(), CustomPropertyType::Vec2);
    EXPECT_EQ(CustomProperty({"b", true}).type(), CustomPropertyType::Bool);
}
