#pragma once

#include <QDialog>
#include <QString>

#include <array>

class EditorDocument;
class QCheckBox;
class QLineEdit;

/// The scene's settings that name scripts and commands: the custom labels,
/// property export filter and property display filter script files (each
/// with a browse button and "Initialize new script" to start one from a
/// template), and the system command run after each export with its
/// working folder. The command and folder fields show their resolved form
/// as tooltips ("Resolved command: %1", "Resolved directory: %1"). OK
/// changes what differs through the script API as one undo step.
class SceneScriptsDialog : public QDialog
{
    Q_OBJECT

public:
    /// A dialog over `document`'s settings; `exportPath` is the file the
    /// resolved tooltips are worked out for (the last export, or a guess).
    SceneScriptsDialog(EditorDocument& document, const QString& exportPath, QWidget* parent = nullptr);

    /// The field of a script file (0 labels, 1 export filter, 2 display filter).
    QLineEdit* scriptField(int index) const { return m_files[size_t(index)]; }
    /// The command field.
    QLineEdit* commandField() const { return m_command; }
    /// The working folder field.
    QLineEdit* directoryField() const { return m_directory; }
    /// The switch that runs the command.
    QCheckBox* enabledBox() const { return m_enabled; }

    /// Writes the template of script `index` into `path` and puts the path
    /// into its field; false when the file could not be written.
    bool initializeScript(int index, const QString& path);
    /// Applies what changed, then closes.
    void accept() override;

private:
    void updateTooltips();

    EditorDocument& m_document;
    QString m_exportPath;
    std::array<QLineEdit*, 3> m_files{};
    QLineEdit* m_command;
    QLineEdit* m_directory;
    QCheckBox* m_enabled;
};
