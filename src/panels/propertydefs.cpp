#include "panels/propertydefs.h"

#include "model/metaworld.h"
#include "script/scriptapisupport.h"
#include "script/scriptbody.h"
#include "script/scriptfixture.h"

#include <QCoreApplication>

namespace
{
using Type = PropertyDef::Type;

QString tr(const char* text)
{
    return QCoreApplication::translate("PropertiesPanel", text);
}

const MetaBody& asBody(const MetaItem& item)
{
    return static_cast<const MetaBody&>(item);
}

const MetaFixture& asFixture(const MetaItem& item)
{
    return static_cast<const MetaFixture&>(item);
}

ScriptBody bodyHandle(const MetaItem& item)
{
    return ScriptApi::bodyHandle(&asBody(item));
}

ScriptFixture fixtureHandle(const MetaItem& item)
{
    return ScriptApi::fixtureHandle(&asFixture(item));
}

// A float body property with a one-argument setter.
PropertyDef bodyFloat(const char* label, float MetaBody::*member, void (*setter)(ScriptBody*, float))
{
    return {tr(label), Type::Float, {},
            [member](const MetaItem& item) { return QVariant(double(asBody(item).*member)); },
            [setter](const MetaItem& item, const QVariant& value) {
                ScriptBody h = bodyHandle(item);
                setter(&h, value.toFloat());
            }};
}

PropertyDef bodyBool(const char* label, bool MetaBody::*member, void (*setter)(ScriptBody*, int))
{
    return {tr(label), Type::Bool, {}, [member](const MetaItem& item) { return QVariant(asBody(item).*member); },
            [setter](const MetaItem& item, const QVariant& value) {
                ScriptBody h = bodyHandle(item);
                setter(&h, value.toBool() ? 1 : 0);
            }};
}

PropertyDef fixtureFloat(const char* label, float MetaFixture::*member, void (*setter)(ScriptFixture*, float))
{
    return {tr(label), Type::Float, {},
            [member](const MetaItem& item) { return QVariant(double(asFixture(item).*member)); },
            [setter](const MetaItem& item, const QVariant& value) {
                ScriptFixture h = fixtureHandle(item);
                setter(&h, value.toFloat());
            }};
}

PropertyDef fixtureInt(const char* label, int MetaFixture::*member, void (*setter)(ScriptFixture*, int))
{
    return {tr(label), Type::Int, {}, [member](const MetaItem& item) { return QVariant(asFixture(item).*member); },
            [setter](const MetaItem& item, const QVariant& value) {
                ScriptFixture h = fixtureHandle(item);
                setter(&h, value.toInt());
            }};
}

PropertyDef readOnly(const char* label, Type type, std::function<QVariant(const MetaItem&)> get)
{
    return {tr(label), type, {}, std::move(get), {}};
}
} // namespace

std::vector<PropertyDef> bodyProperties()
{
    std::vector<PropertyDef> rows;
    rows.push_back({tr("Name"), Type::Text, {}, [](const MetaItem& item) { return QVariant(item.name()); },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptBody h = bodyHandle(item);
                        BodyApi::setName(&h, value.toString().toStdString());
                    }});
    rows.push_back({tr("Type"), Type::Choice, {tr("Static"), tr("Kinematic"), tr("Dynamic")},
                    [](const MetaItem& item) { return QVariant(int(asBody(item).type)); },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptBody h = bodyHandle(item);
                        BodyApi::setType(&h, value.toInt());
                    }});
    rows.push_back({tr("Position x"), Type::Float, {},
                    [](const MetaItem& item) { return QVariant(double(asBody(item).position.x)); },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptBody h = bodyHandle(item);
                        BodyApi::setPosition(&h, value.toFloat(), asBody(item).position.y);
                    }});
    rows.push_back({tr("Position y"), Type::Float, {},
                    [](const MetaItem& item) { return QVariant(double(asBody(item).position.y)); },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptBody h = bodyHandle(item);
                        BodyApi::setPosition(&h, asBody(item).position.x, value.toFloat());
                    }});
    rows.push_back(bodyFloat("Angle (rad)", &MetaBody::angle, &BodyApi::setAngle));
    rows.push_back({tr("Linear velocity x"), Type::Float, {},
                    [](const MetaItem& item) { return QVariant(double(asBody(item).linearVelocity.x)); },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptBody h = bodyHandle(item);
                        BodyApi::setLinearVelocity(&h, value.toFloat(), asBody(item).linearVelocity.y);
                    }});
    rows.push_back({tr("Linear velocity y"), Type::Float, {},
                    [](const MetaItem& item) { return QVariant(double(asBody(item).linearVelocity.y)); },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptBody h = bodyHandle(item);
                        BodyApi::setLinearVelocity(&h, asBody(item).linearVelocity.x, value.toFloat());
                    }});
    rows.push_back(bodyFloat("Angular velocity", &MetaBody::angularVelocity, &BodyApi::setAngularVelocity));
    rows.push_back(bodyFloat("Linear damping", &MetaBody::linearDamping, &BodyApi::setLinearDamping));
    rows.push_back(bodyFloat("Angular damping", &MetaBody::angularDamping, &BodyApi::setAngularDamping));
    rows.push_back(bodyFloat("Gravity scale", &MetaBody::gravityScale, &BodyApi::setGravityScale));
    rows.push_back(bodyBool("Bullet", &MetaBody::bullet, &BodyApi::setBullet));
    rows.push_back(bodyBool("Fixed rotation", &MetaBody::fixedRotation, &BodyApi::setFixedRotation));
    rows.push_back(bodyBool("Sleeping allowed", &MetaBody::sleepingAllowed, &BodyApi::setSleepingAllowed));
    rows.push_back(bodyBool("Awake", &MetaBody::awake, &BodyApi::setAwake));
    rows.push_back(bodyBool("Active", &MetaBody::active, &BodyApi::setActive));
    return rows;
}

std::vector<PropertyDef> fixtureProperties()
{
    std::vector<PropertyDef> rows;
    rows.push_back({tr("Name"), Type::Text, {}, [](const MetaItem& item) { return QVariant(item.name()); },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptFixture h = fixtureHandle(item);
                        FixtureApi::setName(&h, value.toString().toStdString());
                    }});
    rows.push_back(fixtureFloat("Friction", &MetaFixture::friction, &FixtureApi::setFriction));
    rows.push_back(fixtureFloat("Restitution", &MetaFixture::restitution, &FixtureApi::setRestitution));
    rows.push_back(fixtureFloat("Density", &MetaFixture::density, &FixtureApi::setDensity));
    rows.push_back({tr("Sensor"), Type::Bool, {}, [](const MetaItem& item) { return QVariant(asFixture(item).sensor); },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptFixture h = fixtureHandle(item);
                        FixtureApi::setSensor(&h, value.toBool() ? 1 : 0);
                    }});
    rows.push_back(fixtureInt("Category bits", &MetaFixture::filterCategoryBits, &FixtureApi::setFilterCategoryBits));
    rows.push_back(fixtureInt("Mask bits", &MetaFixture::filterMaskBits, &FixtureApi::setFilterMaskBits));
    rows.push_back(fixtureInt("Group index", &MetaFixture::filterGroupIndex, &FixtureApi::setFilterGroupIndex));
    rows.push_back({tr("Shape type"), Type::Choice, {tr("Circle"), tr("Polygon"), tr("Line"), tr("Loop")},
                    [](const MetaItem& item) {
                        const auto& shapes = asFixture(item).shapes();
                        return shapes.empty() ? QVariant() : QVariant(shapes.front().type());
                    },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptShape h = ScriptApi::shapeHandle(&asFixture(item), 0);
                        ShapeApi::setType(&h, value.toInt());
                    }});
    rows.push_back({tr("Shape radius"), Type::Float, {},
                    [](const MetaItem& item) {
                        const auto& shapes = asFixture(item).shapes();
                        return shapes.empty() ? QVariant() : QVariant(double(shapes.front().radius()));
                    },
                    [](const MetaItem& item, const QVariant& value) {
                        ScriptShape h = ScriptApi::shapeHandle(&asFixture(item), 0);
                        ShapeApi::setRadius(&h, value.toFloat());
                    }});
    return rows;
}

std::vector<PropertyDef> jointProperties()
{
    const auto joint = [](const MetaItem& item) -> const MetaJoint& { return static_cast<const MetaJoint&>(item); };
    std::vector<PropertyDef> rows;
    rows.push_back(readOnly("Name", Type::Text, [](const MetaItem& item) { return QVariant(item.name()); }));
    rows.push_back(readOnly("Type", Type::Text,
                            [joint](const MetaItem& item) { return QVariant(MetaJoint::typeWord(joint(item).type)); }));
    rows.push_back(readOnly("Body A", Type::Text, [joint](const MetaItem& item) {
        return QVariant(joint(item).bodyA ? joint(item).bodyA->name() : QString());
    }));
    rows.push_back(readOnly("Body B", Type::Text, [joint](const MetaItem& item) {
        return QVariant(joint(item).bodyB ? joint(item).bodyB->name() : QString());
    }));
    rows.push_back(readOnly("Collide connected", Type::Bool,
                            [joint](const MetaItem& item) { return QVariant(joint(item).collideConnected); }));
    return rows;
}

std::vector<PropertyDef> imageProperties()
{
    const auto image = [](const MetaItem& item) -> const MetaImage& { return static_cast<const MetaImage&>(item); };
    std::vector<PropertyDef> rows;
    rows.push_back(readOnly("Name", Type::Text, [](const MetaItem& item) { return QVariant(item.name()); }));
    rows.push_back(readOnly("File", Type::Text, [image](const MetaItem& item) { return QVariant(image(item).file); }));
    rows.push_back(readOnly("Scale", Type::Float,
                            [image](const MetaItem& item) { return QVariant(double(image(item).scale)); }));
    rows.push_back(readOnly("Angle (rad)", Type::Float,
                            [image](const MetaItem& item) { return QVariant(double(image(item).angle)); }));
    rows.push_back(readOnly("Opacity", Type::Float,
                            [image](const MetaItem& item) { return QVariant(double(image(item).opacity)); }));
    return rows;
}
