#include "runtimetesting.h"

#include "support/plaxrun.h"

#include <QDir>
#include <QFile>
#include <QMutex>
#include <QTemporaryDir>

#include <cstring>
#include <sstream>

QString exportWithPlax(const PlaxSandbox& sandbox, const QString& scenePath, const QString& outName,
                       std::string* failure)
{
    const QString out = sandbox.path(outName);
    const PlaxRun run = sandbox.run({QStringLiteral("-q"), QStringLiteral("-i"), scenePath, QStringLiteral("-e"), out});
    if (run.exitCode != 0 || !QFile::exists(out)) {
        if (failure)
            *failure = "plax -e failed (" + std::to_string(run.exitCode) + "): " + run.err.toStdString() +
                       run.log.toStdString();
        return QString();
    }
    return out;
}

std::string worldDump(b2World& world)
{
    // Box2D writes the dump into "box2d_dump.inl" in the working directory.
    static QMutex mutex;
    QMutexLocker lock(&mutex);
    QTemporaryDir scratch;
    const QString previous = QDir::currentPath();
    if (!scratch.isValid() || !QDir::setCurrent(scratch.path()))
        return std::string();
    world.Dump();
    QDir::setCurrent(previous);
    QFile dump(QDir(scratch.path()).filePath(QStringLiteral("box2d_dump.inl")));
    if (!dump.open(QIODevice::ReadOnly))
        return std::string();
    return dump.readAll().toStdString();
}

bool BodyState::operator==(const BodyState& o) const
{
    return std::memcmp(this, &o, sizeof *this) == 0;
}

BodyState stateOf(const b2Body* body)
{
    return {body->GetPosition().x,       body->GetPosition().y,       body->GetAngle(),
            body->GetLinearVelocity().x, body->GetLinearVelocity().y, body->GetAngularVelocity()};
}

std::string describe(const BodyState& s)
{
    std::ostringstream text;
    text.precision(9);
    text << "(" << s.x << ", " << s.y << ") angle " << s.angle << " velocity (" << s.vx << ", " << s.vy << ") spin "
         << s.spin;
    return text.str();
}
