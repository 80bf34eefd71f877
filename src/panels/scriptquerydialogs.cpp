#include "panels/scriptquerydialogs.h"

#include "api/scriptqueries.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include <cfloat>

namespace
{
QDoubleSpinBox* numberBox(QWidget* parent, double value, const char* name)
{
    auto* box = new QDoubleSpinBox(parent);
    box->setObjectName(QLatin1String(name));
    box->setRange(-FLT_MAX, FLT_MAX);
    box->setDecimals(6);
    box->setValue(value);
    return box;
}

// The prompt above, the fields, then OK and Cancel (or Yes and No).
void layOut(QDialog* dialog, const QString& prompt, QLayout* fields, QDialogButtonBox::StandardButtons buttons)
{
    dialog->setWindowTitle(QObject::tr("Script question"));
    auto* label = new QLabel(prompt, dialog);
    label->setObjectName(QStringLiteral("ScriptQueryPrompt"));
    label->setWordWrap(true);
    auto* box = new QDialogButtonBox(buttons, dialog);
    box->setObjectName(QStringLiteral("ScriptQueryButtons"));
    QObject::connect(box, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(box, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(label);
    if (fields)
        layout->addLayout(fields);
    layout->addWidget(box);
}
} // namespace

ScriptQueryNumericValueDialog::ScriptQueryNumericValueDialog(const QString& prompt, float initial, QWidget* parent)
    : QDialog(parent), m_value(numberBox(this, initial, "ScriptQueryNumber"))
{
    setObjectName(QStringLiteral("ScriptQueryNumericValueDialog"));
    setAccessibleName(prompt);
    m_value->setAccessibleName(prompt);
    auto* fields = new QVBoxLayout;
    fields->addWidget(m_value);
    layOut(this, prompt, fields, QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_value->selectAll();
}

float ScriptQueryNumericValueDialog::value() const
{
    return float(m_value->value());
}

ScriptQueryVectorValueDialog::ScriptQueryVectorValueDialog(const QString& prompt, Vec2 initial, QWidget* parent)
    : QDialog(parent), m_x(numberBox(this, initial.x, "ScriptQueryX")), m_y(numberBox(this, initial.y, "ScriptQueryY"))
{
    setObjectName(QStringLiteral("ScriptQueryVectorValueDialog"));
    setAccessibleName(prompt);
    m_x->setAccessibleName(tr("x"));
    m_y->setAccessibleName(tr("y"));
    auto* fields = new QFormLayout;
    fields->addRow(tr("x:"), m_x);
    fields->addRow(tr("y:"), m_y);
    layOut(this, prompt, fields, QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

Vec2 ScriptQueryVectorValueDialog::value() const
{
    return Vec2{float(m_x->value()), float(m_y->value())};
}

ScriptQueryStringValueDialog::ScriptQueryStringValueDialog(const QString& prompt, const QString& initial, QWidget* parent)
    : QDialog(parent), m_value(new QLineEdit(initial, this))
{
    setObjectName(QStringLiteral("ScriptQueryStringValueDialog"));
    setAccessibleName(prompt);
    m_value->setObjectName(QStringLiteral("ScriptQueryText"));
    m_value->setAccessibleName(prompt);
    auto* fields = new QVBoxLayout;
    fields->addWidget(m_value);
    layOut(this, prompt, fields, QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

QString ScriptQueryStringValueDialog::value() const
{
    return m_value->text();
}

ScriptQueryYesNoDialog::ScriptQueryYesNoDialog(const QString& prompt, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("ScriptQueryYesNoDialog"));
    setAccessibleName(prompt);
    layOut(this, prompt, nullptr, QDialogButtonBox::Yes | QDialogButtonBox::No);
}

void installScriptQueryDialogs(QWidget* parent)
{
    QPointer<QWidget> owner(parent);
    ScriptQueryHooks hooks;
    hooks.openFile = [owner](const QString& prompt) -> std::optional<QString> {
        const QString path = QFileDialog::getOpenFileName(owner, prompt);
        return path.isEmpty() ? std::nullopt : std::optional<QString>(path);
    };
    hooks.numericValue = [owner](const QString& prompt, float initial) -> std::optional<float> {
        ScriptQueryNumericValueDialog dialog(prompt, initial, owner);
        return dialog.exec() == QDialog::Accepted ? std::optional<float>(dialog.value()) : std::nullopt;
    };
    hooks.vectorValue = [owner](const QString& prompt, Vec2 initial) -> std::optional<Vec2> {
        ScriptQueryVectorValueDialog dialog(prompt, initial, owner);
        return dialog.exec() == QDialog::Accepted ? std::optional<Vec2>(dialog.value()) : std::nullopt;
    };
    hooks.stringValue = [owner](const QString& prompt, const QString& initial) -> std::optional<QString> {
        ScriptQueryStringValueDialog dialog(prompt, initial, owner);
        return dialog.exec() == QDialog::Accepted ? std::optional<QString>(dialog.value()) : std::nullopt;
    };
    hooks.yesNo = [owner](const QString& prompt) -> std::optional<bool> {
        ScriptQueryYesNoDialog dialog(prompt, owner);
        return dialog.exec() == QDialog::Accepted;
    };
    ScriptQueryHooks::install(std::move(hooks));
}
