#pragma once

#include "base/types.h"

#include <QDialog>

class QDoubleSpinBox;
class QLabel;
class QLineEdit;

/// "queryNumericValue": a prompt and a number.
class ScriptQueryNumericValueDialog : public QDialog
{
    Q_OBJECT

public:
    /// A dialog showing `prompt` with `initial` in the field.
    ScriptQueryNumericValueDialog(const QString& prompt, float initial, QWidget* parent = nullptr);
    /// The number entered.
    float value() const;
    /// The field.
    QDoubleSpinBox* field() const { return m_value; }

private:
    QDoubleSpinBox* m_value;
};

/// "queryVectorValue": a prompt and two numbers.
class ScriptQueryVectorValueDialog : public QDialog
{
    Q_OBJECT

public:
    /// A dialog showing `prompt` with `initial` in the fields.
    ScriptQueryVectorValueDialog(const QString& prompt, Vec2 initial, QWidget* parent = nullptr);
    /// The vector entered.
    Vec2 value() const;
    /// The fields.
    QDoubleSpinBox* xField() const { return m_x; }
    QDoubleSpinBox* yField() const { return m_y; }

private:
    QDoubleSpinBox* m_x;
    QDoubleSpinBox* m_y;
};

/// "queryStringValue": a prompt and a line of text.
class ScriptQueryStringValueDialog : public QDialog
{
    Q_OBJECT

public:
    /// A dialog showing `prompt` with `initial` in the field.
    ScriptQueryStringValueDialog(const QString& prompt, const QString& initial, QWidget* parent = nullptr);
    /// The text entered.
    QString value() const;
    /// The field.
    QLineEdit* field() const { return m_value; }

private:
    QLineEdit* m_value;
};

/// "queryYesNo": a question answered yes or no.
class ScriptQueryYesNoDialog : public QDialog
{
    Q_OBJECT

public:
    /// A dialog asking `prompt`; Yes accepts, No rejects.
    explicit ScriptQueryYesNoDialog(const QString& prompt, QWidget* parent = nullptr);
};

/// Installs the dialogs above (and a file dialog for queryOpenFile) as the
/// script query hooks, parented to `parent`. A cancelled dialog gives the
/// script the default answer.
void installScriptQueryDialogs(QWidget* parent);
