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
                           [](const MetaJoint& j) { return j.type == JOINT_PRISMATIC || j.type == JOINT_WHEEL; });
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
    rows.push_back(jointFloat("Reference angle", {JOINT_REVOLUTE, JOINT_PRISMATIC, JOINT_WELD},
                              &MetaJoint::referenceAngle, &JointApi::setReferenceAngle));
    rows.push_back(jointBool("Limit enabled", {JOINT_REVOLUTE, JOINT_PRISMATIC}, &MetaJoint::enableLimit,
                             &JointApi::setEnableLimitB));
    rows.push_back(jointFloat("Lower limit", {JOINT_REVOLUTE, JOINT_PRISMATIC}, &MetaJoint::lowerLimit,
                              &JointApi::setLowerLimit));
    rows.push_back(jointFloat("Upper limit", {JOINT_REVOLUTE, JOINT_PRISMATIC}, &MetaJoint::upperLimit,
                              &JointApi::setUpperLimit));
    rows.push_back(jointBool("Motor enabled", {JOINT_REVOLUTE, JOINT_PRISMATIC, JOINT_WHEEL}, &MetaJoint::enableMotor,
                             &JointApi::setEnableMotorB));
    rows.push_back(jointFloat("Motor speed", {JOINT_REVOLUTE, JOINT_PRISMATIC, JOINT_WHEEL}, &MetaJoint::motorSpeed,
                              &JointApi::setMotorSpeed));
    rows.push_back(jointFloat("Max motor torque", {JOINT_REVOLUTE, JOINT_WHEEL}, &MetaJoint::maxMotorTorque,
                              &JointApi::setMaxMotorTorque));
    rows.push_back(jointFloat("Max motor force", {JOINT_PRISMATIC}, &MetaJoint::maxMotorForce,
                              &JointApi::setMaxMotorForce));
    rows.push_back(jointFloat("Length", {JOINT_DISTANCE}, &MetaJoint::length, &JointApi::setLength));
    rows.push_back(jointFloat("Max length", {JOINT_ROPE}, &MetaJoint::maxLength, &JointApi::setLength));
    rows.push_back(jointFloat("Frequency", {JOINT_DISTANCE, JOINT_WELD}, &MetaJoint::frequency, &JointApi::setFrequency));
    rows.push_back(jointFloat("Damping ratio", {JOINT_DISTANCE, JOINT_WELD}, &MetaJoint::dampingRatio,
                              &JointApi::setDampingRatio));
    rows.push_back(jointFloat("Spring frequency", {JOINT_WHEEL}, &MetaJoint::springFrequency, &JointApi::setFrequency));
    rows.push_back(jointFloat("Spring damping ratio", {JOINT_WHEEL}, &MetaJoint::springDampingRatio,
                              &JointApi::setDampingRatio));
    rows.push_back(jointFloat("Correction factor", {JOINT_MOTOR}, &MetaJoint::correctionFactor,
                              &JointApi::setCorrectionFactor));
    return rows;
}
