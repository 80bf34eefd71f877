#include "model/metajoint.h"

#include <array>
#include <utility>

namespace
{
const std::array<std::pair<JointType, const char*>, 8> kSceneJointWords = {{
    {JointType::Revolute, "revolute"},
    {JointType::Prismatic, "prismatic"},
    {JointType::Distance, "distance"},
    {JointType::Wheel, "wheel"},
    {JointType::Rope, "rope"},
    {JointType::Weld, "weld"},
    {JointType::Friction, "friction"},
    {JointType::Motor, "motor"},
}};
}

QString MetaJoint::typeWord(JointType type)
{
    for (const auto& [t, word] : kSceneJointWords) {
        if (t == type)
            return QString::fromLatin1(word);
    }
    return QString();
}

JointType MetaJoint::typeFromWord(const QString& word)
{
    for (const auto& [t, w] : kSceneJointWords) {
        if (word == QLatin1String(w))
            return t;
    }
    return JointType::Unknown;
}
