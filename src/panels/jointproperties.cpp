#include "panels/propertyrows.h"

#include "api/scriptapisupport.h"
#include "api/scriptjoint.h"
#include "model/metaworld.h"

#include <algorithm>

namespace
{
using namespace PropertyRows;
using Type = PropertyDef::Type;

ScriptJoint handle(const MetaJoint& joint)
{
    return ScriptApi::jointHandle(&joint);
}

// A float row of the joint types in `types`.
PropertyDef jointFloat(const char* label, std::initializer_list<JointType> types, float MetaJoint::*member,
                       void (*setter)(ScriptJoint*, float))
{
    const std::vector<JointType> list(types);
    return only<MetaJoint>(row<MetaJoint>(label, Type::Float,
                                          [member](const MetaJoint& j) { return QVariant(double(j.*member)); },
                                          [setter](const MetaJoint& j, const QVariant& v) {
                                              ScriptJoint h = handle(j);
                                              setter(&h, v.toFloat());
                                          }),
                           [list](const MetaJoint& j) { return std::find(list.begin(), list.end(), j.type) != list.end(); });
}

PropertyDef jointBool(const char* label, std::initializer_list<JointType> types, bool MetaJoint::*member,
                      void (*setter)(ScriptJoint*, bool))
{
    const std::vector<JointType> list(types);
    return only<MetaJoint>(row<MetaJoint>(label, Type::Bool, [member](const MetaJoint& j) { return QVariant(j.*member); },
                                          [setter](const MetaJoint& j, const QVariant& v) {
                                              ScriptJoint h = handle(j);
                                              setter(&h, v.toBool());
                                          }),
                           [list](const MetaJoint& j) { return std::find(list.begin(), list.end(), j.type) != list.end(); });
}

// The x or y of a local anchor.
PropertyDef anchor(const char* label, bool b, bool y)
{
    return row<MetaJoint>(
        label, Type::Float,
        [b, y](const MetaJoint& j) {
            const Vec2 p = b ? j.anchorB : j.anchorA;
            return QVariant(double(y ? p.y : p.x));
        },
        [b, y](const MetaJoint& j, const QVariant& v) {
            ScriptJoint h = handle(j);
            Vec2 p = b ? j.anchorB : j.anchorA;
            (y ? p.y : p.x) = v.toFloat();
            if (b)
                JointApi::setLocalAnchorB(&h, p.x, p.y);
            else
                JointApi::setLocalAnchorA(&h, p.x, p.y);
        });
}

PropertyDef axis(const char* label, bool y)
{
    return only<MetaJoint>(row<MetaJoint>(label, Type::Float,
                                          [y](const MetaJoint& j) { return QVariant(double(y ? j.localAxisA.y : j.localAxisA.x)); },
                                          [y](const MetaJoint& j, const QVariant& v) {
                                              ScriptJoint h = handle(j);
                                              Vec2 a = j.localAxisA;
                                              (y ? a.y : a.x) = v.toFloat();
                                              JointApi::setLocalAxis(&h, a.x, a.y);
                                          }),
                           [](const MetaJoint& j) { return j.type == JointType::Prismatic || j.type == JointType::Wheel; });
}
} // namespace

std::vector<PropertyDef> jointProperties()
{
    std::vector<PropertyDef> rows;
    rows.push_back(row<MetaJoint>("Name", Type::Text, [](const MetaJoint& j) { return QVariant(j.name()); },
                                  [](const MetaJoint& j, const QVariant& v) {
                                      ScriptApi::setName(const_cast<MetaJoint&>(j), v.toString());
                                  }));
    rows.push_back(row<MetaJoint>("Type", Type::Text,
                                  [](const MetaJoint& j) { return QVariant(MetaJoint::typeWord(j.type)); }));
    rows.push_back(row<MetaJoint>("Body A", Type::Text,
                                  [](const MetaJoint& j) { return QVariant(j.bodyA ? j.bodyA->name() : QString()); }));
    rows.push_back(row<MetaJoint>("Body B", Type::Text,
                                  [](const MetaJoint& j) { return QVariant(j.bodyB ? j.bodyB->name() : QString()); }));
    rows.push_back(row<MetaJoint>("Collide connected", Type::Bool,
                                  [](const MetaJoint& j) { return QVariant(j.collideConnected); },
                                  [](const MetaJoint& j, const QVariant& v) {
                                      ScriptJoint h = handle(j);
                                      JointApi::setCollideConnected(&h, v.toBool() ? 1 : 0);
                                  }));
    rows.push_back(anchor("Anchor A x", false, false));
    rows.push_back(anchor("Anchor A y", false, true));
    rows.push_back(anchor("Anchor B x", true, false));
    rows.push_back(anchor("Anchor B y", true, true));
    rows.push_back(axis("Axis x", false));
    rows.push_back(axis("Axis y", true));
    rows.push_back(jointFloat("Reference angle", {JointType::Revolute, JointType::Prismatic, JointType::Weld},
                              &MetaJoint::referenceAngle, &JointApi::setReferenceAngle));
    rows.push_back(jointBool("Limit enabled", {JointType::Revolute, JointType::Prismatic}, &MetaJoint::enableLimit,
                             &JointApi::setEnableLimitB));
    rows.push_back(jointFloat("Lower limit", {JointType::Revolute, JointType::Prismatic}, &MetaJoint::lowerLimit,
                              &JointApi::setLowerLimit));
    rows.push_back(jointFloat("Upper limit", {JointType::Revolute, JointType::Prismatic}, &MetaJoint::upperLimit,
                              &JointApi::setUpperLimit));
    rows.push_back(jointBool("Motor enabled", {JointType::Revolute, JointType::Prismatic, JointType::Wheel}, &MetaJoint::enableMotor,
                             &JointApi::setEnableMotorB));
    rows.push_back(jointFloat("Motor speed", {JointType::Revolute, JointType::Prismatic, JointType::Wheel}, &MetaJoint::motorSpeed,
                              &JointApi::setMotorSpeed));
    rows.push_back(jointFloat("Max motor torque", {JointType::Revolute, JointType::Wheel}, &MetaJoint::maxMotorTorque,
                              &JointApi::setMaxMotorTorque));
    rows.push_back(jointFloat("Max motor force", {JointType::Prismatic}, &MetaJoint::maxMotorForce,
                              &JointApi::setMaxMotorForce));
    rows.push_back(jointFloat("Length", {JointType::Distance}, &MetaJoint::length, &JointApi::setLength));
    rows.push_back(jointFloat("Max length", {JointType::Rope}, &MetaJoint::maxLength, &JointApi::setLength));
    rows.push_back(jointFloat("Frequency", {JointType::Distance, JointType::Weld}, &MetaJoint::frequency, &JointApi::setFrequency));
    rows.push_back(jointFloat("Damping ratio", {JointType::Distance, JointType::Weld}, &MetaJoint::dampingRatio,
                              &JointApi::setDampingRatio));
    rows.push_back(jointFloat("Spring frequency", {JointType::Wheel}, &MetaJoint::springFrequency, &JointApi::setFrequency));
    rows.push_back(jointFloat("Spring damping ratio", {JointType::Wheel}, &MetaJoint::springDampingRatio,
                              &JointApi::setDampingRatio));
    rows.push_back(jointFloat("Correction factor", {JointType::Motor}, &MetaJoint::correctionFactor,
                              &JointApi::setCorrectionFactor));
    return rows;
}
