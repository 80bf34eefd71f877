#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class EditorDocument;
class MetaBody;

/// Helpers shared by the panel tests.
namespace PanelsTesting
{
/// Writes a UTF-8 text file, creating its folder.
void writeText(const QString& path, const QString& text);
/// Reads a UTF-8 text file (empty when missing).
QString readText(const QString& path);
/// A document holding the example scene (not in batch mode).
std::unique_ptr<EditorDocument> exampleDocument();
/// The document's bodies in scene order.
QList<MetaBody*> bodies(EditorDocument& document);
/// Selects exactly these bodies (through the selection edits).
void selectBodies(EditorDocument& document, const QList<MetaBody*>& bodies);
} // namespace PanelsTesting
