#pragma once

#include "support/testfiles.h"

#include <QString>
#include <QStringList>

#include <memory>

class EditorDocument;
class MetaBody;

/// Helpers shared by the panel tests.
namespace PanelsTesting
{
using TestFiles::readText;
using TestFiles::writeText;
/// A document holding the example scene (not in batch mode).
std::unique_ptr<EditorDocument> exampleDocument();
/// The document's bodies in scene order.
QList<MetaBody*> bodies(EditorDocument& document);
/// Selects exactly these bodies (through the selection edits).
void selectBodies(EditorDocument& document, const QList<MetaBody*>& bodies);
} // namespace PanelsTesting
