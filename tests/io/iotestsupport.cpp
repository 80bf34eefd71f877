#include "iotestsupport.h"

#include "base/flags.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <QFile>

#include <bit>
#include <cstdint>
#include <limits>

namespace
{
// Bit pattern of a value as the files keep it: zero of either sign is zero.
std::uint32_t bits(float value)
{
    return value == 0 ? 0u : std::bit_cast<std::uint32_t>(value);
}

#define EXPECT_SAME_FLOAT(a, b) EXPECT_EQ(bits(a), bits(b)) << #b << ": " << (a) << " vs " << (b)
#define EXPECT_SAME_VEC2(a, b)                                                                                         \
    do {                                                                                                               \
        EXPECT_SAME_FLOAT((a).x, (b).x);                                                                               \
        EXPECT_SAME_FLOAT((a).y, (b).y);                                                                               \
    } while (0)

void expectSamePoints(const std::vector<Vec2>& a, const std::vector<Vec2>& b)
{
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i)
        EXPECT_SAME_VEC2(a[i], b[i]);
}

ItemId idOf(const MetaItem* item)
{
    return item ? item->id() : 0;
}

void expectSameItem(const MetaItem& a, const MetaItem& b)
{
    EXPECT_EQ(a.id(), b.id());
    EXPECT_EQ(a.name(), b.name());
    EXPECT_TRUE(a.customProperties == b.customProperties) << "custom properties of " << a.name().toStdString();
}

void expectSameFixture(const MetaFixture& a, const MetaFixture& b)
{
    SCOPED_TRACE("fixture " + a.name().toStdString());
    expectSameItem(a, b);
    EXPECT_SAME_FLOAT(a.friction, b.friction);
    EXPECT_SAME_FLOAT(a.restitution, b.restitution);
    EXPECT_SAME_FLOAT(a.density, b.density);
    EXPECT_EQ(a.sensor, b.sensor);
    EXPECT_EQ(a.filterCategoryBits, b.filterCategoryBits);
    EXPECT_EQ(a.filterMaskBits, b.filterMaskBits);
    EXPECT_EQ(a.filterGroupIndex, b.filterGroupIndex);
    expectSamePoints(a.vertices(), b.vertices());
    ASSERT_EQ(a.shapes().size(), b.shapes().size());
    for (size_t i = 0; i < a.shapes().size(); ++i) {
        EXPECT_EQ(a.shapes()[i].type(), b.shapes()[i].type());
        EXPECT_SAME_FLOAT(a.shapes()[i].radius(), b.shapes()[i].radius());
        EXPECT_EQ(b.shapes()[i].fixture(), &b);
    }
}

void expectSameBody(const MetaBody& a, const MetaBody& b)
{
    SCOPED_TRACE("body " + a.name().toStdString());
    expectSameItem(a, b);
    EXPECT_EQ(a.type, b.type);
    EXPECT_SAME_VEC2(a.position, b.position);
    EXPECT_SAME_FLOAT(a.angle, b.angle);
    EXPECT_SAME_VEC2(a.linearVelocity, b.linearVelocity);
    EXPECT_SAME_FLOAT(a.angularVelocity, b.angularVelocity);
    EXPECT_SAME_FLOAT(a.linearDamping, b.linearDamping);
    EXPECT_SAME_FLOAT(a.angularDamping, b.angularDamping);
    EXPECT_SAME_FLOAT(a.gravityScale, b.gravityScale);
    EXPECT_EQ(a.bullet, b.bullet);
    EXPECT_EQ(a.sleepingAllowed, b.sleepingAllowed);
    EXPECT_EQ(a.awake, b.awake);
    EXPECT_EQ(a.active, b.active);
    EXPECT_EQ(a.fixedRotation, b.fixedRotation);
    EXPECT_SAME_FLOAT(a.massDataMass, b.massDataMass);
    EXPECT_SAME_VEC2(a.massDataCenter, b.massDataCenter);
    EXPECT_SAME_FLOAT(a.massDataI, b.massDataI);
    ASSERT_EQ(a.fixtures().size(), b.fixtures().size());
    for (size_t i = 0; i < a.fixtures().size(); ++i) {
        expectSameFixture(*a.fixtures()[i], *b.fixtures()[i]);
        EXPECT_EQ(b.fixtures()[i]->body(), &b);
    }
}

void expectSameJoint(const MetaJoint& a, const MetaJoint& b)
{
    SCOPED_TRACE("joint " + a.name().toStdString());
    expectSameItem(a, b);
    EXPECT_EQ(a.type, b.type);
    EXPECT_EQ(idOf(a.bodyA), idOf(b.bodyA));
    EXPECT_EQ(idOf(a.bodyB), idOf(b.bodyB));
    EXPECT_SAME_VEC2(a.anchorA, b.anchorA);
    EXPECT_SAME_VEC2(a.anchorB, b.anchorB);
    EXPECT_EQ(a.collideConnected, b.collideConnected);
    EXPECT_SAME_FLOAT(a.referenceAngle, b.referenceAngle);
    EXPECT_EQ(a.enableLimit, b.enableLimit);
    EXPECT_SAME_FLOAT(a.lowerLimit, b.lowerLimit);
    EXPECT_SAME_FLOAT(a.upperLimit, b.upperLimit);
    EXPECT_EQ(a.enableMotor, b.enableMotor);
    EXPECT_SAME_FLOAT(a.motorSpeed, b.motorSpeed);
    EXPECT_SAME_FLOAT(a.maxMotorTorque, b.maxMotorTorque);
    EXPECT_SAME_FLOAT(a.maxMotorForce, b.maxMotorForce);
    EXPECT_SAME_VEC2(a.localAxisA, b.localAxisA);
    EXPECT_SAME_FLOAT(a.length, b.length);
    EXPECT_SAME_FLOAT(a.frequency, b.frequency);
    EXPECT_SAME_FLOAT(a.dampingRatio, b.dampingRatio);
    EXPECT_SAME_FLOAT(a.springFrequency, b.springFrequency);
    EXPECT_SAME_FLOAT(a.springDampingRatio, b.springDampingRatio);
    EXPECT_SAME_FLOAT(a.maxForce, b.maxForce);
    EXPECT_SAME_FLOAT(a.maxTorque, b.maxTorque);
    EXPECT_SAME_FLOAT(a.maxLength, b.maxLength);
    EXPECT_SAME_FLOAT(a.correctionFactor, b.correctionFactor);
}

void expectSameImage(const MetaImage& a, const MetaImage& b)
{
    SCOPED_TRACE("image " + a.name().toStdString());
    expectSameItem(a, b);
    EXPECT_EQ(idOf(a.body), idOf(b.body));
    EXPECT_EQ(a.file, b.file);
    EXPECT_SAME_VEC2(a.center, b.center);
    EXPECT_SAME_FLOAT(a.angle, b.angle);
    EXPECT_SAME_FLOAT(a.scale, b.scale);
    EXPECT_SAME_FLOAT(a.aspectScale, b.aspectScale);
    EXPECT_SAME_FLOAT(a.opacity, b.opacity);
    EXPECT_EQ(a.colorTint, b.colorTint);
    EXPECT_EQ(a.flip, b.flip);
    EXPECT_EQ(a.filter, b.filter);
    EXPECT_SAME_FLOAT(a.renderOrder, b.renderOrder);
}

void expectSameSampler(const MetaSampler& a, const MetaSampler& b)
{
    SCOPED_TRACE("sampler " + a.name().toStdString());
    expectSameItem(a, b);
    EXPECT_EQ(idOf(a.body), idOf(b.body));
    EXPECT_EQ(a.file, b.file);
    EXPECT_SAME_VEC2(a.center, b.center);
    EXPECT_EQ(a.outputWidth, b.outputWidth);
    EXPECT_EQ(a.outputHeight, b.outputHeight);
    EXPECT_SAME_FLOAT(a.angle, b.angle);
    EXPECT_SAME_FLOAT(a.height, b.height);
    EXPECT_SAME_FLOAT(a.opacity, b.opacity);
    EXPECT_SAME_FLOAT(a.alphaEdgeThreshold, b.alphaEdgeThreshold);
    EXPECT_EQ(a.colorTint, b.colorTint);
    EXPECT_EQ(a.flip, b.flip);
    EXPECT_EQ(a.autoUpdate, b.autoUpdate);
    EXPECT_EQ(a.useColor, b.useColor);
    ASSERT_EQ(a.paths.size(), b.paths.size());
    for (size_t i = 0; i < a.paths.size(); ++i) {
        EXPECT_EQ(a.paths[i].type, b.paths[i].type);
        EXPECT_SAME_FLOAT(a.paths[i].radius, b.paths[i].radius);
        EXPECT_EQ(a.paths[i].maxPoints, b.paths[i].maxPoints);
        EXPECT_EQ(a.paths[i].minAngle, b.paths[i].minAngle);
        expectSamePoints(a.paths[i].controlPoints, b.paths[i].controlPoints);
    }
}

void expectSameObject(const MetaObject& a, const MetaObject& b)
{
    SCOPED_TRACE("object " + a.name().toStdString());
    expectSameItem(a, b);
    EXPECT_EQ(a.file, b.file);
    EXPECT_SAME_VEC2(a.position, b.position);
    EXPECT_SAME_FLOAT(a.angle, b.angle);
    EXPECT_SAME_FLOAT(a.scale, b.scale);
    EXPECT_EQ(a.flip, b.flip);
}

template <typename Item, typename Compare>
void expectSameItems(const std::vector<std::unique_ptr<Item>>& a, const std::vector<std::unique_ptr<Item>>& b,
                     Compare compare)
{
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i)
        compare(*a[i], *b[i]);
}

CustomProperties allTypes(int seed)
{
    CustomProperties p;
    p.set(QStringLiteral("count"), seed);
    p.set(QStringLiteral("ratio"), 0.1f * float(seed));
    p.set(QStringLiteral("label"), QStringLiteral("t\u00e9xt \"%1\"\n").arg(seed));
    p.set(QStringLiteral("offset"), Vec2{1.5f, -float(seed)});
    p.set(QStringLiteral("enabled"), seed % 2 == 0);
    p.set(QStringLiteral("tint"), Color{seed % 256, 20, 30, 40});
    return p;
}

MetaBody* addBody(MetaWorld& world, ItemId id, const QString& name, BodyType type)
{
    auto body = std::make_unique<MetaBody>();
    body->type = type;
    return world.addBody(std::move(body), id, name);
}

MetaFixture* addFixture(MetaWorld& world, MetaBody* body, const QString& name, std::vector<Vec2> vertices)
{
    auto fixture = std::make_unique<MetaFixture>();
    fixture->setVertices(std::move(vertices));
    return world.addFixture(body, std::move(fixture), 0, name);
}

MetaJoint* addJoint(MetaWorld& world, JointType type, MetaBody* a, MetaBody* b)
{
    auto joint = std::make_unique<MetaJoint>();
    joint->type = type;
    joint->bodyA = a;
    joint->bodyB = b;
    joint->anchorA = {0.25f, -0.5f};
    joint->anchorB = {0, 0};
    joint->collideConnected = int(type) % 2 == 0;
    return world.addJoint(std::move(joint), 0, QStringLiteral("joint-%1").arg(MetaJoint::typeWord(type)));
}
} // namespace

FlagScope::FlagScope(bool batch, bool verbose) : m_batch(AppFlags::isBatchMode()), m_verbose(AppFlags::isVerbose())
{
    AppFlags::setBatchMode(batch);
    AppFlags::setVerbose(verbose);
}

FlagScope::~FlagScope()
{
    AppFlags::setBatchMode(m_batch);
    AppFlags::setVerbose(m_verbose);
}

std::unique_ptr<MetaWorld> makeFullScene()
{
    auto world = std::make_unique<MetaWorld>();
    world->settings.gravity = {0.5f, -9.81f};
    world->settings.allowSleep = false;
    world->settings.autoClearForces = false;
    world->settings.warmStarting = false;
    world->settings.continuousPhysics = false;
    world->settings.subStepping = true;
    world->settings.positionIterations = 7;
    world->settings.velocityIterations = 11;
    world->settings.stepsPerSecond = 30.5f;

    ExportOptions& e = world->exportOptions;
    e.useGsonFormat = true;
    e.usePrettyPrint = false;
    e.compactCommonFloats = false;
    e.compactZeroVecs = false;
    e.saveFullPathForImages = true;
    e.saveFullPathForObjects = true;
    e.saveFullPathForSamplerOutput = true;
    e.saveImagePathsRelativeToPLAXFile = false;
    e.saveObjectPathsRelativeToPLAXFile = false;
    e.saveSamplerOutputPathsRelativeToPLAXFile = false;
    e.extraImagePathRelative = QStringLiteral("../images");
    e.extraObjectPathRelative = QStringLiteral("../objects");
    e.propertyExportFilterScriptFile = QStringLiteral("filter.rs");
    world->displayOptions.customLabelsScriptFile = QStringLiteral("labels.rs");
    world->displayOptions.propertyDisplayFilterScriptFile = QStringLiteral("display.rs");

    world->customPropertyDefs.push_back({QStringLiteral("body"), QStringLiteral("count"), QStringLiteral("Count"),
                                         QStringLiteral("int"), {}});
    world->customPropertyDefs.push_back({QStringLiteral("fixture"), QStringLiteral("material"),
                                         QStringLiteral("Material"), QStringLiteral("string"),
                                         {QStringLiteral("wood"), QStringLiteral("steel"), QStringLiteral("ice")}});
    world->customProperties = allTypes(1);
    world->collisionBitplaneNames = {QStringLiteral("ground"), QStringLiteral("player"), QString(),
                                     QStringLiteral("enemy")};
    world->afterExportHook = {QStringLiteral("/tmp/out"), true, QStringLiteral("cp %{EXPORTFILE} .")};
    world->excludedJsonExportProperties = {QStringLiteral("/world/body/fixture/name"),
                                           QStringLiteral("/world/image/glVertexPointer")};
    world->activeScript = QStringLiteral("void main() {\n\tprint('hi \\u00e9');\n}\n");

    MetaBody* ground = addBody(*world, 3, QStringLiteral("ground"), BodyType::Static);
    MetaBody* mover = addBody(*world, 7, QStringLiteral("m\u00f6ver"), BodyType::Kinematic);
    MetaBody* ball = addBody(*world, 8, QString(), BodyType::Dynamic);
    mover->position = {1.5f, -2.25f};
    mover->angle = 0.1f;
    mover->linearVelocity = {-3, 4};
    mover->angularVelocity = -0.75f;
    mover->linearDamping = 0.2f;
    mover->angularDamping = 1e-40f;                      // subnormal
    mover->gravityScale = -0.0f;                          // negative zero, written as 0
    mover->bullet = true;
    mover->sleepingAllowed = false;
    mover->awake = false;
    mover->active = false;
    mover->fixedRotation = true;
    mover->massDataMass = std::numeric_limits<float>::max();
    mover->massDataCenter = {0.125f, 0};
    mover->massDataI = std::numeric_limits<float>::quiet_NaN();
    mover->customProperties = allTypes(2);
    ball->angle = std::numeric_limits<float>::infinity();
    ball->customProperties = allTypes(3);

    MetaFixture* box = addFixture(*world, ground, QStringLiteral("box"), {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}});
    box->addShape(ShapeType::Polygon, 0);
    box->addShape(ShapeType::Loop, 0.25f);
    box->friction = 0.9f;
    box->restitution = 0.3f;
    box->density = 2.5f;
    box->sensor = true;
    box->filterCategoryBits = 0x0004;
    box->filterMaskBits = 0x00F0;
    box->filterGroupIndex = -3;
    box->customProperties = allTypes(4);
    addFixture(*world, mover, QStringLiteral("wheel"), {{0.5f, 0.5f}})->addShape(ShapeType::Circle, 0.75f);
    addFixture(*world, mover, QStringLiteral("rope"), {{0, 0}, {1, 2}, {3, -1}})->addShape(ShapeType::Line, 0.01f);
    addFixture(*world, ball, QStringLiteral("odd"), {{0, 0}, {1, 0}, {1, 1}})->addShape(ShapeType(-1), 0);
    addFixture(*world, ball, QStringLiteral("empty"), {});

    const std::vector<JointType> types = {JointType::Revolute, JointType::Prismatic, JointType::Distance, JointType::Wheel,
                                          JointType::Rope,     JointType::Weld,      JointType::Friction, JointType::Motor};
    for (JointType type : types) {
        MetaJoint* j = addJoint(*world, type, int(type) % 2 ? ground : mover, ball);
        j->customProperties = allTypes(int(type) + 10);
        switch (type) {
        case JointType::Revolute:
            j->referenceAngle = 0.5f;
            j->enableLimit = true;
            j->lowerLimit = -1.25f;
            j->upperLimit = 1.75f;
            j->enableMotor = true;
            j->motorSpeed = 3.5f;
            j->maxMotorTorque = 100;
            break;
        case JointType::Prismatic:
            j->localAxisA = {0, 1};
            j->referenceAngle = -0.5f;
            j->enableLimit = true;
            j->lowerLimit = -2;
            j->upperLimit = 2;
            j->enableMotor = true;
            j->maxMotorForce = 55;
            j->motorSpeed = -1;
            break;
        case JointType::Distance:
            j->length = 4.5f;
            j->frequency = 2;
            j->dampingRatio = 0.7f;
            break;
        case JointType::Wheel:
            j->localAxisA = {0.6f, 0.8f};
            j->enableMotor = true;
            j->motorSpeed = 9;
            j->maxMotorTorque = 12;
            j->springFrequency = 4;
            j->springDampingRatio = 0.6f;
            break;
        case JointType::Rope: j->maxLength = 6.25f; break;
        case JointType::Weld:
            j->referenceAngle = 0.3f;
            j->frequency = 5;
            j->dampingRatio = 0.2f;
            break;
        case JointType::Friction:
            j->maxForce = 10;
            j->maxTorque = 20;
            break;
        case JointType::Motor:
            j->referenceAngle = 1.1f;
            j->maxForce = 30;
            j->maxTorque = 40;
            j->correctionFactor = 0.45f;
            break;
        default: break;
        }
    }

    auto image = std::make_unique<MetaImage>();
    image->body = mover;
    image->file = QStringLiteral("images/wheel.png");
    image->center = {0.5f, 0.25f};
    image->angle = 0.2f;
    image->scale = 2;
    image->aspectScale = 0.5f;
    image->opacity = 0.8f;
    image->colorTint = {10, 20, 30, 200};
    image->flip = true;
    image->filter = 0;
    image->renderOrder = -1;
    image->customProperties = allTypes(30);
    world->addImage(std::move(image), 4, QStringLiteral("wheelImage"));
    world->addImage(std::make_unique<MetaImage>(), 9, QStringLiteral("loose"));

    auto sampler = std::make_unique<MetaSampler>();
    sampler->body = ground;
    sampler->file = QStringLiteral("terrain.png");
    sampler->center = {-4, 2};
    sampler->outputWidth = 256;
    sampler->outputHeight = 128;
    sampler->angle = 0.4f;
    sampler->height = 3;
    sampler->opacity = 0.5f;
    sampler->alphaEdgeThreshold = 0.25f;
    sampler->colorTint = {1, 2, 3, 4};
    sampler->flip = true;
    sampler->autoUpdate = true;
    sampler->useColor = true;
    sampler->paths.push_back({ShapeType::Loop, 0.1f, 64, 15, {{0, 0}, {1, 0}, {1, 1}}});
    sampler->paths.push_back({ShapeType(-1), 0, 0, 0, {}});
    sampler->customProperties = allTypes(40);
    world->addSampler(std::move(sampler), 2, QStringLiteral("terrain"));

    auto object = std::make_unique<MetaObject>();
    object->file = QStringLiteral("objects/car.plax");
    object->position = {10, -5};
    object->angle = -0.3f;
    object->scale = 1.5f;
    object->flip = true;
    object->customProperties = allTypes(50);
    world->addObject(std::move(object), 6, QStringLiteral("car"));
    return world;
}

void expectSameWorld(const MetaWorld& a, const MetaWorld& b)
{
    EXPECT_TRUE(a.settings == b.settings);
    EXPECT_TRUE(a.exportOptions == b.exportOptions);
    EXPECT_TRUE(a.displayOptions == b.displayOptions);
    EXPECT_TRUE(a.customPropertyDefs == b.customPropertyDefs);
    EXPECT_TRUE(a.customProperties == b.customProperties);
    EXPECT_EQ(a.collisionBitplaneNames, b.collisionBitplaneNames);
    EXPECT_TRUE(a.afterExportHook == b.afterExportHook);
    EXPECT_EQ(a.excludedJsonExportProperties, b.excludedJsonExportProperties);
    EXPECT_EQ(a.activeScript, b.activeScript);
    expectSameItems(a.bodies(), b.bodies(), expectSameBody);
    expectSameItems(a.joints(), b.joints(), expectSameJoint);
    expectSameItems(a.images(), b.images(), expectSameImage);
    expectSameItems(a.samplers(), b.samplers(), expectSameSampler);
    expectSameItems(a.objects(), b.objects(), expectSameObject);
    EXPECT_EQ(a.fixtureCount(), b.fixtureCount());
}

QByteArray sceneText(const QByteArray& metaworldMembers)
{
    return "{\"metaworld\": {" + metaworldMembers + "}}";
}
