// Rows of bodies and fixtures.
#include "panels/propertyrows.h"

#include "api/scriptapisupport.h"
#include "api/scriptbody.h"
#include "api/scriptfixture.h"
#include "model/metaworld.h"

namespace
{
using namespace PropertyRows;
using Type = PropertyDef::Type;

ScriptBody handle(const MetaBody& body)
{
    return ScriptApi::bodyHandle(&body);
}

ScriptFixture handle(const MetaFixture& fixture)
{
    return ScriptApi::fixtureHandle(&fixture);
}

// A float member with a one-argument setter.
template <class Item, class Handle>
PropertyDef floatRow(const char* label, float Item::*member, void (*setter)(Handle*, float))
{
    return row<Item>(label, Type::Float, [member](const Item& i) { return QVariant(double(i.*member)); },
                     [setter](const Item& i, const QVariant& v) {
                         Handle h = handle(i);
                         setter(&h, v.toFloat());
                     });
}

template <class Item, class Handle>
PropertyDef boolRow(const char* label, bool Item::*member, void (*setter)(Handle*, int))
{
    return row<Item>(label, Type::Bool, [member](const Item& i) { return QVariant(i.*member); },
                     [setter](const Item& i, const QVariant& v) {
                         Handle h = handle(i);
                         setter(&h, v.toBool() ? 1 : 0);
                     });
}

template <class Item, class Handle>
PropertyDef intRow(const char* label, int Item::*member, void (*setter)(Handle*, int))
{
    return row<Item>(label, Type::Int, [member](const Item& i) { return QVariant(i.*member); },
                     [setter](const Item& i, const QVariant& v) {
                         Handle h = handle(i);
                         setter(&h, v.toInt());
                     });
}

// The x or y of a vector member set through a two-float setter.
PropertyDef bodyVector(const char* label, Vec2 MetaBody::*member, bool y, void (*setter)(ScriptBody*, float, float))
{
    return row<MetaBody>(label, Type::Float,
                         [member, y](const MetaBody& b) { return QVariant(double(y ? (b.*member).y : (b.*member).x)); },
                         [member, y, setter](const MetaBody& b, const QVariant& v) {
                             ScriptBody h = handle(b);
                             Vec2 p = b.*member;
                             (y ? p.y : p.x) = v.toFloat();
                             setter(&h, p.x, p.y);
                         });
}
} // namespace

std::vector<PropertyDef> bodyProperties()
{
    std::vector<PropertyDef> rows;
    rows.push_back(row<MetaBody>("Name", Type::Text, [](const MetaBody& b) { return QVariant(b.name()); },
                                 [](const MetaBody& b, const QVariant& v) {
                                     ScriptBody h = handle(b);
                                     BodyApi::setName(&h, v.toString().toStdString());
                                 }));
    rows.push_back(row<MetaBody>("Type", Type::Choice, [](const MetaBody& b) { return QVariant(int(b.type)); },
                                 [](const MetaBody& b, const QVariant& v) {
                                     ScriptBody h = handle(b);
                                     BodyApi::setType(&h, v.toInt());
                                 },
                                 {tr("Static"), tr("Kinematic"), tr("Dynamic")}));
    rows.push_back(bodyVector("Position x", &MetaBody::position, false, &BodyApi::setPosition));
    rows.push_back(bodyVector("Position y", &MetaBody::position, true, &BodyApi::setPosition));
    rows.push_back(floatRow("Angle (rad)", &MetaBody::angle, &BodyApi::setAngle));
    rows.push_back(bodyVector("Linear velocity x", &MetaBody::linearVelocity, false, &BodyApi::setLinearVelocity));
    rows.push_back(bodyVector("Linear velocity y", &MetaBody::linearVelocity, true, &BodyApi::setLinearVelocity));
    rows.push_back(floatRow("Angular velocity", &MetaBody::angularVelocity, &BodyApi::setAngularVelocity));
    rows.push_back(floatRow("Linear damping", &MetaBody::linearDamping, &BodyApi::setLinearDamping));
    rows.push_back(floatRow("Angular damping", &MetaBody::angularDamping, &BodyApi::setAngularDamping));
    rows.push_back(floatRow("Gravity scale", &MetaBody::gravityScale, &BodyApi::setGravityScale));
    rows.push_back(boolRow("Bullet", &MetaBody::bullet, &BodyApi::setBullet));
    rows.push_back(boolRow("Fixed rotation", &MetaBody::fixedRotation, &BodyApi::setFixedRotation));
    rows.push_back(boolRow("Sleeping allowed", &MetaBody::sleepingAllowed, &BodyApi::setSleepingAllowed));
    rows.push_back(boolRow("Awake", &MetaBody::awake, &BodyApi::setAwake));
    rows.push_back(boolRow("Active", &MetaBody::active, &BodyApi::setActive));
    return rows;
}

std::vector<PropertyDef> fixtureProperties()
{
    std::vector<PropertyDef> rows;
    rows.push_back(row<MetaFixture>("Name", Type::Text, [](const MetaFixture& f) { return QVariant(f.name()); },
                                    [](const MetaFixture& f, const QVariant& v) {
                                        ScriptFixture h = handle(f);
                                        FixtureApi::setName(&h, v.toString().toStdString());
                                    }));
    rows.push_back(floatRow("Friction", &MetaFixture::friction, &FixtureApi::setFriction));
    rows.push_back(floatRow("Restitution", &MetaFixture::restitution, &FixtureApi::setRestitution));
    rows.push_back(floatRow("Density", &MetaFixture::density, &FixtureApi::setDensity));
    rows.push_back(boolRow("Sensor", &MetaFixture::sensor, &FixtureApi::setSensor));
    rows.push_back(intRow("Category bits", &MetaFixture::filterCategoryBits, &FixtureApi::setFilterCategoryBits));
    rows.push_back(intRow("Mask bits", &MetaFixture::filterMaskBits, &FixtureApi::setFilterMaskBits));
    rows.push_back(intRow("Group index", &MetaFixture::filterGroupIndex, &FixtureApi::setFilterGroupIndex));
    rows.push_back(row<MetaFixture>("Shape type", Type::Choice,
                                    [](const MetaFixture& f) {
                                        return f.shapes().empty() ? QVariant() : QVariant(int(f.shapes().front().type()));
                                    },
                                    [](const MetaFixture& f, const QVariant& v) {
                                        ScriptShape h = ScriptApi::shapeHandle(&f, 0);
                                        ShapeApi::setType(&h, v.toInt());
                                    },
                                    {tr("Circle"), tr("Polygon"), tr("Line"), tr("Loop")}));
    rows.push_back(row<MetaFixture>("Shape radius", Type::Float,
                                    [](const MetaFixture& f) {
                                        return f.shapes().empty() ? QVariant() : QVariant(double(f.shapes().front().radius()));
                                    },
                                    [](const MetaFixture& f, const QVariant& v) {
                                        ScriptShape h = ScriptApi::shapeHandle(&f, 0);
                                        ShapeApi::setRadius(&h, v.toFloat());
                                    }));
    return rows;
}
