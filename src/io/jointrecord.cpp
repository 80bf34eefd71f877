#include "io/jointrecord.h"

#include "base/log.h"
#include "io/customrecord.h"
#include "io/recordsupport.h"
#include "model/metaworld.h"

#include <type_traits>
#include <vector>

namespace
{
using rapidjson::Value;

// Members of each type, in the order they are written. Each entry names a
// member and how it maps onto the joint.
enum class Field
{
    ReferenceAngle,
    EnableLimit,
    LowerLimit,
    UpperLimit,
    EnableMotor,
    MotorSpeed,
    MaxMotorTorque,
    MaxMotorForce,
    LocalAxisA,
    Length,
    Frequency,
    DampingRatio,
    SpringFrequency,
    SpringDampingRatio,
    MaxForce,
    MaxTorque,
    MaxLength,
    CorrectionFactor,
};

std::vector<Field> fieldsOf(JointType type)
{
    using F = Field;
    switch (type) {
    case JointType::Revolute:
        return {F::ReferenceAngle, F::EnableLimit, F::LowerLimit, F::UpperLimit, F::EnableMotor, F::MotorSpeed,
                F::MaxMotorTorque};
    case JointType::Prismatic:
        return {F::LocalAxisA, F::ReferenceAngle, F::EnableLimit, F::LowerLimit, F::UpperLimit, F::EnableMotor,
                F::MaxMotorForce, F::MotorSpeed};
    case JointType::Distance: return {F::Length, F::Frequency, F::DampingRatio};
    case JointType::Wheel:
        return {F::LocalAxisA, F::EnableMotor, F::MotorSpeed, F::MaxMotorTorque, F::SpringFrequency,
                F::SpringDampingRatio};
    case JointType::Weld: return {F::ReferenceAngle, F::Frequency, F::DampingRatio};
    case JointType::Friction: return {F::MaxForce, F::MaxTorque};
    case JointType::Rope: return {F::MaxLength};
    case JointType::Motor: return {F::ReferenceAngle, F::MaxForce, F::MaxTorque, F::CorrectionFactor};
    default: return {};
    }
}

const char* keyOf(Field field)
{
    switch (field) {
    case Field::ReferenceAngle: return "referenceAngle";
    case Field::EnableLimit: return "enableLimit";
    case Field::LowerLimit: return "lowerLimit";
    case Field::UpperLimit: return "upperLimit";
    case Field::EnableMotor: return "enableMotor";
    case Field::MotorSpeed: return "motorSpeed";
    case Field::MaxMotorTorque: return "maxMotorTorque";
    case Field::MaxMotorForce: return "maxMotorForce";
    case Field::LocalAxisA: return "localAxisA";
    case Field::Length: return "length";
    case Field::Frequency: return "frequency";
    case Field::DampingRatio: return "dampingRatio";
    case Field::SpringFrequency: return "springFrequency";
    case Field::SpringDampingRatio: return "springDampingRatio";
    case Field::MaxForce: return "maxForce";
    case Field::MaxTorque: return "maxTorque";
    case Field::MaxLength: return "maxLength";
    case Field::CorrectionFactor: return "correctionFactor";
    }
    return "";
}

// The float member behind a field, or null for the bool and vec2 fields.
template <typename Joint>
std::conditional_t<std::is_const_v<Joint>, const float*, float*> floatOf(Joint& joint, Field field)
{
    switch (field) {
    case Field::ReferenceAngle: return &joint.referenceAngle;
    case Field::LowerLimit: return &joint.lowerLimit;
    case Field::UpperLimit: return &joint.upperLimit;
    case Field::MotorSpeed: return &joint.motorSpeed;
    case Field::MaxMotorTorque: return &joint.maxMotorTorque;
    case Field::MaxMotorForce: return &joint.maxMotorForce;
    case Field::Length: return &joint.length;
    case Field::Frequency: return &joint.frequency;
    case Field::DampingRatio: return &joint.dampingRatio;
    case Field::SpringFrequency: return &joint.springFrequency;
    case Field::SpringDampingRatio: return &joint.springDampingRatio;
    case Field::MaxForce: return &joint.maxForce;
    case Field::MaxTorque: return &joint.maxTorque;
    case Field::MaxLength: return &joint.maxLength;
    case Field::CorrectionFactor: return &joint.correctionFactor;
    default: return nullptr;
    }
}

// The bool member behind a field, or null.
template <typename Joint>
std::conditional_t<std::is_const_v<Joint>, const bool*, bool*> boolOf(Joint& joint, Field field)
{
    switch (field) {
    case Field::EnableLimit: return &joint.enableLimit;
    case Field::EnableMotor: return &joint.enableMotor;
    default: return nullptr;
    }
}

ItemId bodyIdOf(const MetaBody* body)
{
    return body ? body->id() : 0;
}
} // namespace

Value writeJointRecord(const MetaJoint& joint, const JsonEncoder& encoder)
{
    Value record(rapidjson::kObjectType);
    encoder.addUint(record, "id", joint.id());
    encoder.addString(record, "name", joint.name());
    encoder.addString(record, "type", MetaJoint::typeWord(joint.type));
    encoder.addUint(record, "bodyA", bodyIdOf(joint.bodyA));
    encoder.addUint(record, "bodyB", bodyIdOf(joint.bodyB));
    encoder.addVec2(record, "anchorA", joint.anchorA);
    encoder.addVec2(record, "anchorB", joint.anchorB);
    encoder.addBool(record, "collideConnected", joint.collideConnected);
    for (Field field : fieldsOf(joint.type)) {
        if (field == Field::LocalAxisA)
            encoder.addVec2(record, keyOf(field), joint.localAxisA);
        else if (const bool* flag = boolOf(joint, field))
            encoder.addBool(record, keyOf(field), *flag);
        else if (const float* number = floatOf(joint, field))
            encoder.addFloat(record, keyOf(field), *number);
    }
    encoder.add(record, "customProperties", writeCustomProperties(joint.customProperties, encoder));
    return record;
}

MetaJoint* readJointRecord(MetaWorld& world, const Value& record, ItemId id, bool copy)
{
    auto joint = std::make_unique<MetaJoint>();
    const Value* typeValue = jsonMember(record, "type");
    joint->type = MetaJoint::typeFromWord(decodeString(typeValue));
    if (joint->type == JointType::Unknown) {
        plaxLog(LOG_WARNING, QStringLiteral("Unknown joint type %1. Setting joint type to revolute")
                                 .arg(describeJsonValue(typeValue)));
        joint->type = JointType::Revolute;
    }

    ItemId bodyIdA = 0;
    ItemId bodyIdB = 0;
    joint->bodyA = readBodyReference(world, record, "bodyA", copy, &bodyIdA);
    joint->bodyB = readBodyReference(world, record, "bodyB", copy, &bodyIdB);
    if (!joint->bodyA)
        plaxLog(LOG_WARNING, QStringLiteral("Could not find body A for joint (body id %1)").arg(bodyIdA));
    if (!joint->bodyB)
        plaxLog(LOG_WARNING, QStringLiteral("Could not find body B for joint (body id %1)").arg(bodyIdB));
    if (!joint->bodyA || !joint->bodyB)
        return nullptr;
    if (joint->bodyA == joint->bodyB) {
        plaxLog(LOG_WARNING, "Ignoring addJoint (both bodies are the same)");
        return nullptr;
    }

    joint->anchorA = readVec2(record, "anchorA", joint->anchorA);
    joint->anchorB = readVec2(record, "anchorB", joint->anchorB);
    joint->collideConnected = readBool(record, "collideConnected", joint->collideConnected);
    for (Field field : fieldsOf(joint->type)) {
        if (field == Field::LocalAxisA)
            joint->localAxisA = readVec2(record, keyOf(field), joint->localAxisA);
        else if (bool* flag = boolOf(*joint, field))
            *flag = readBool(record, keyOf(field), *flag);
        else if (float* number = floatOf(*joint, field))
            *number = readFloat(record, keyOf(field), *number);
    }
    readCustomProperties(jsonMember(record, "customProperties"), &joint->customProperties);

    const ItemId jointId = resolveRecordId(world, ItemKind::Joint, id);
    if (jointId == 0)
        return nullptr;
    return world.addJoint(std::move(joint), jointId, readString(record, "name"));
}
