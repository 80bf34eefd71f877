#include "panels/scenescriptsdialog.h"

#include "api/scriptdocumentsettings.h"
#include "docscripts/documentscripts.h"
#include "docscripts/scripttemplates.h"
#include "document/editordocument.h"
#include "editing/scriptcommand.h"
#include "engine/documentscripting.h"
#include "engine/scriptdocument.h"
#include "hooks/systemcommand.h"
#include "model/metaworld.h"

#include <QCheckBox>
#include <QDir>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
using Script = DocumentScripts::Script;
constexpr Script kScripts[] = {Script::CustomLabels, Script::ExportFilter, Script::DisplayFilter};
const char* const kLabels[] = {QT_TRANSLATE_NOOP("SceneScriptsDialog", "Custom labels script file"),
                               QT_TRANSLATE_NOOP("SceneScriptsDialog", "Property export filter script file"),
                               QT_TRANSLATE_NOOP("SceneScriptsDialog", "Property display filter script file")};
const char* const kNames[] = {"CustomLabelsScriptFile", "PropertyExportFilterScriptFile",
                              "PropertyDisplayFilterScriptFile"};
} // namespace

SceneScriptsDialog::SceneScriptsDialog(EditorDocument& document, const QString& exportPath, QWidget* parent)
    : QDialog(parent), m_document(document), m_exportPath(exportPath)
{
    setObjectName(QStringLiteral("SceneScriptsDialog"));
    setWindowTitle(tr("Scene scripts and export command"));
    const DocumentScripts& scripts = document.documentScripts();

    auto* files = new QGroupBox(tr("Document scripts"), this);
    auto* fileForm = new QFormLayout(files);
    for (int i = 0; i < 3; ++i) {
        auto* field = new QLineEdit(scripts.setting(kScripts[i]), files);
        field->setObjectName(QLatin1String(kNames[i]));
        field->setToolTip(tr("(relative paths start from .plax file location)"));
        auto* browse = new QPushButton(tr("Browse..."), files);
        browse->setObjectName(QLatin1String(kNames[i]) + QStringLiteral("Browse"));
        auto* init = new QPushButton(tr("Initialize new script"), files);
        init->setObjectName(QLatin1String(kNames[i]) + QStringLiteral("Initialize"));
        connect(browse, &QPushButton::clicked, this, [this, i, field] {
            const QString path = QFileDialog::getOpenFileName(this, tr(kLabels[i]), field->text(),
                                                              tr("Script files (*.rs *.inc);;All files (*.*)"));
            if (!path.isEmpty())
                field->setText(path);
        });
        connect(init, &QPushButton::clicked, this, [this, i] {
            const QString path = QFileDialog::getSaveFileName(this, tr("Initialize new script"), QString(),
                                                              tr("Script files (*.rs);;All files(*)"));
            if (!path.isEmpty())
                initializeScript(i, path);
        });
        auto* row = new QHBoxLayout;
        row->addWidget(field, 1);
        row->addWidget(browse);
        row->addWidget(init);
        fileForm->addRow(tr(kLabels[i]), row);
        m_files[size_t(i)] = field;
    }

    const SystemHook& hook = document.world().afterExportHook;
    auto* command = new QGroupBox(tr("System command after export"), this);
    auto* commandForm = new QFormLayout(command);
    m_enabled = new QCheckBox(tr("Run after each export"), command);
    m_enabled->setObjectName(QStringLiteral("AfterExportEnabled"));
    m_enabled->setChecked(hook.enabled);
    m_command = new QLineEdit(hook.command, command);
    m_command->setObjectName(QStringLiteral("AfterExportCommand"));
    m_directory = new QLineEdit(hook.directory, command);
    m_directory->setObjectName(QStringLiteral("AfterExportDirectory"));
    commandForm->addRow(m_enabled);
    commandForm->addRow(tr("Command"), m_command);
    commandForm->addRow(tr("Working directory"), m_directory);
    QString legend;
    for (const QString& name : SystemCommand::placeholderNames())
        legend += QStringLiteral("%1: %2\n").arg(name, SystemCommand::placeholderLabel(name));
    auto* placeholders = new QLabel(legend.trimmed(), command);
    placeholders->setObjectName(QStringLiteral("PlaceholderLegend"));
    commandForm->addRow(placeholders);
    connect(m_command, &QLineEdit::textChanged, this, &SceneScriptsDialog::updateTooltips);
    connect(m_directory, &QLineEdit::textChanged, this, &SceneScriptsDialog::updateTooltips);

    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(box, &QDialogButtonBox::accepted, this, &SceneScriptsDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &SceneScriptsDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(files);
    layout->addWidget(command);
    layout->addWidget(box);
    updateTooltips();
}

void SceneScriptsDialog::updateTooltips()
{
    const PlaceholderValues values = PlaceholderValues::of(m_document.filePath(), m_exportPath);
    const ResolvedSystemCommand resolved =
        SystemCommand::prepare(m_command->text(), m_directory->text(), values, true);
    m_command->setToolTip(tr("Resolved command: %1").arg(resolved.display));
    m_directory->setToolTip(tr("Resolved directory: %1").arg(QDir::toNativeSeparators(resolved.workingDirectory)) +
                            QLatin1Char('\n') + tr("(relative paths start from exported file location)"));
}

bool SceneScriptsDialog::initializeScript(int index, const QString& path)
{
    if (index < 0 || index > 2 || !ScriptTemplates::write(kScripts[index], path))
        return false;
    m_files[size_t(index)]->setText(path);
    return true;
}

void SceneScriptsDialog::accept()
{
    DocumentScripts& scripts = m_document.documentScripts();
    const SystemHook& hook = m_document.world().afterExportHook;
    bool changed = false;
    {
        ScriptDocumentScope scope(&m_document);
        UndoMacroScope macro(m_document.undoStack(), tr("change scene scripts"));
        using namespace DocumentSettingsApi;
        void (*const setters[])(const std::string&) = {setCustomLabelsScriptFile, setPropertyExportFilterScriptFile,
                                                       setPropertyDisplayFilterScriptFile};
        for (int i = 0; i < 3; ++i) {
            const QString file = m_files[size_t(i)]->text().trimmed();
            if (file != scripts.setting(kScripts[i])) {
                setters[i](file.toStdString());
                changed = true;
            }
        }
        if (m_command->text() != hook.command || m_directory->text() != hook.directory ||
            m_enabled->isChecked() != hook.enabled) {
            setAfterExportSystemHook(m_command->text().toStdString(), m_directory->text().toStdString(),
                                     m_enabled->isChecked());
            changed = true;
        }
    }
    // What the user set runs; a refused scene asks again about the whole list.
    if (changed)
        scripts.prepare();
    QDialog::accept();
}
