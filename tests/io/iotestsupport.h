#pragma once

#include "base/log.h"
#include "support/logcapture.h"
#include "support/testfiles.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

class MetaWorld;

/// Sets the batch and verbose flags for a scope and restores them after.
class FlagScope
{
public:
    FlagScope(bool batch, bool verbose);
    ~FlagScope();

private:
    bool m_batch;
    bool m_verbose;
};

/// A scene holding every member and record type with non-default values.
std::unique_ptr<MetaWorld> makeFullScene();

/// Expects two worlds to hold the same decoded values (floats compared bit for bit).
void expectSameWorld(const MetaWorld& expected, const MetaWorld& actual);

/// Wraps the members text into {"metaworld": {...}} scene text.
QByteArray sceneText(const QByteArray& metaworldMembers);
