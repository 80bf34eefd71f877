#include "physics/placeditems.h"

#include "model/metafixture.h"
#include "model/metaimage.h"
#include "model/metajoint.h"

#include <algorithm>
#include <cmath>

std::unique_ptr<MetaFixture> placedFixture(const MetaFixture& fixture, const Placement& placement)
{
    auto copy = std::make_unique<MetaFixture>();
    copy->friction = fixture.friction;
    copy->restitution = fixture.restitution;
    copy->density = fixture.density;
    copy->sensor = fixture.sensor;
    copy->filterCategoryBits = fixture.filterCategoryBits;
    copy->filterMaskBits = fixture.filterMaskBits;
    copy->filterGroupIndex = fixture.filterGroupIndex;

    std::vector<Vec2> vertices;
    vertices.reserve(fixture.vertices().size());
    for (Vec2 v : fixture.vertices())
        vertices.push_back(placement.applyToLocalPoint(v));
    if (placement.flip)
        std::reverse(vertices.begin(), vertices.end());
    copy->setVertices(std::move(vertices));

    const float factor = std::fabs(placement.scale);
    for (const MetaShape& shape : fixture.shapes()) {
        MetaShape& placed = copy->addShape(shape.type(), shape.radius());
        if (factor != 1 && shape.radius() != 0 && !placed.setRadius(shape.radius() * factor))
            copy->removeLastShape();
    }
    return copy;
}

std::unique_ptr<MetaJoint> placedJoint(const MetaJoint& joint, const Placement& p)
{
    auto copy = std::make_unique<MetaJoint>();
    copy->type = joint.type;
    copy->bodyA = joint.bodyA;
    copy->bodyB = joint.bodyB;
    copy->collideConnected = joint.collideConnected;
    copy->anchorA = p.applyToLocalPoint(joint.anchorA);
    copy->anchorB = p.applyToLocalPoint(joint.anchorB);
    copy->localAxisA = p.applyToLocalPoint(joint.localAxisA);
    const float s = std::fabs(p.scale);
    copy->referenceAngle = p.applyToRelativeAngle(joint.referenceAngle);
    copy->enableLimit = joint.enableLimit;
    if (joint.type == JointType::Revolute && p.flip) {
        copy->lowerLimit = -joint.upperLimit;
        copy->upperLimit = -joint.lowerLimit;
        copy->motorSpeed = -joint.motorSpeed;
    } else if (joint.type == JointType::Prismatic) {
        copy->lowerLimit = joint.lowerLimit * s;
        copy->upperLimit = joint.upperLimit * s;
        copy->motorSpeed = joint.motorSpeed;
    } else {
        copy->lowerLimit = joint.lowerLimit;
        copy->upperLimit = joint.upperLimit;
        copy->motorSpeed = p.flip && joint.type == JointType::Wheel ? -joint.motorSpeed : joint.motorSpeed;
    }
    copy->enableMotor = joint.enableMotor;
    copy->maxMotorTorque = joint.maxMotorTorque;
    copy->maxMotorForce = joint.maxMotorForce;
    copy->length = joint.length * s;
    copy->maxLength = joint.maxLength * s;
    copy->frequency = joint.frequency;
    copy->dampingRatio = joint.dampingRatio;
    copy->springFrequency = joint.springFrequency;
    copy->springDampingRatio = joint.springDampingRatio;
    copy->maxForce = joint.maxForce;
    copy->maxTorque = joint.maxTorque;
    copy->correctionFactor = joint.correctionFactor;
    copy->customProperties = joint.customProperties;
    return copy;
}

std::unique_ptr<MetaImage> placedImage(const MetaImage& image, const Placement& p, bool onBody)
{
    auto copy = std::make_unique<MetaImage>();
    copy->body = image.body;
    copy->file = image.file;
    copy->center = onBody ? p.applyToLocalPoint(image.center) : p.applyToPoint(image.center);
    copy->angle = onBody ? p.applyToRelativeAngle(image.angle) : p.applyToAngle(image.angle);
    copy->scale = image.scale * std::fabs(p.scale);
    copy->aspectScale = image.aspectScale;
    copy->opacity = image.opacity;
    copy->colorTint = image.colorTint;
    copy->flip = image.flip != p.flip;
    copy->filter = image.filter;
    copy->renderOrder = image.renderOrder;
    copy->pixelWidth = image.pixelWidth;
    copy->pixelHeight = image.pixelHeight;
    copy->customProperties = image.customProperties;
    return copy;
}
