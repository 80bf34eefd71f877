#include "model/metajoint.h"

#include <array>
#include <utility>

namespace
{
const std::array<std::pair<JointType, const char*>, 8> kSceneJointWords = {{
    {JOINT_REVOLUTE, "revolute"},
    {JOINT_PRISMATIC, "prismatic"},
    {JOINT_DISTANCE, "distance"},
    {JOINT_WHEEL, "wheel"},
    {JOINT_ROPE, "rope"},
    {JOINT_WELD, "weld"},
    {JOINT_FRICTION, "friction"},
    {JOINT_MOTOR, "motor"},
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
    return JOINT_UNKNOWN;
}
