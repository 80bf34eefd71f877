#include "plax/jointvalues.h"

#include <cstring>

namespace plax
{
namespace
{
struct TypeWord
{
    JointType type;
    const char* word;
};

constexpr TypeWord kWords[] = {
    {JointType::Revolute, "revolute"}, {JointType::Prismatic, "prismatic"}, {JointType::Distance, "distance"},
    {JointType::Pulley, "pulley"},     {JointType::Mouse, "mouse"},         {JointType::Gear, "gear"},
    {JointType::Wheel, "wheel"},       {JointType::Weld, "weld"},           {JointType::Friction, "friction"},
    {JointType::Rope, "rope"},         {JointType::Motor, "motor"},
};
} // namespace

const char* jointTypeWord(JointType type)
{
    for (const TypeWord& t : kWords) {
        if (t.type == type)
            return t.word;
    }
    return "unknown";
}

JointType jointTypeFromWord(const char* word)
{
    for (const TypeWord& t : kWords) {
        if (std::strcmp(t.word, word) == 0)
            return t.type;
    }
    return JointType::Unknown;
}
} // namespace plax
