#pragma once

#include <QString>

/// The engine modules a document compiles its scripts into.
enum class ScriptModuleKind
{
    Live,
    OneShot,
    CustomLabels,
    PropertyExportFilter,
    PropertyDisplayFilter,
};

/// Names, entry points and text preparation shared by every script run.
namespace ScriptModules
{
/// Module name for a document identity, e.g. "(plaxscript live 3)"; the one-shot module has no number.
QString moduleName(ScriptModuleKind kind, int documentIdentity);

/// The section name given to the engine for every text.
inline constexpr const char* kSectionName = "sectionname";
/// Entry point of the live script and of one-shot text that defines main.
inline constexpr const char* kMainDeclaration = "void main()";
/// Entry point of one-shot text without main.
inline constexpr const char* kOneShotDeclaration = "void plaxscript_oneshot()";

/// True when the text defines main: "\b(void)\s+(main)\s*\(\s*\)" matches
/// anywhere, even inside a comment or string.
bool hasMain(const QString& text);
/// A live script without main becomes the body of main.
QString wrapInMain(const QString& text);
/// One-shot text without main becomes the body of plaxscript_oneshot().
QString wrapInOneShot(const QString& text);
} // namespace ScriptModules
