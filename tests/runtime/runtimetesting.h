#pragma once

// Helpers of the runtime tests: exporting with the real plax, Box2D's dump of
// a world, and body states compared bit for bit.

#include <box2d/box2d.h>

#include <QByteArray>
#include <QString>

#include <string>
#include <vector>

class PlaxSandbox;

/// Runs `plax -i scene -e <out>` in the sandbox; returns the export's path,
/// or an empty string (with plax's output in `failure`) when it failed.
QString exportWithPlax(const PlaxSandbox& sandbox, const QString& scenePath, const QString& outName,
                       std::string* failure);

/// Box2D's C++ dump of a world: every body, fixture and joint with all their
/// parameters, floats written with nine significant digits (exact).
std::string worldDump(b2World& world);

/// Where a body is and how it moves, compared bit for bit.
struct BodyState
{
    float x, y, angle, vx, vy, spin;
    bool operator==(const BodyState& o) const;
};

/// The state of a body now.
BodyState stateOf(const b2Body* body);
/// Text for messages.
std::string describe(const BodyState& state);
