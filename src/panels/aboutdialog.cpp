#include "panels/aboutdialog.h"

#include "base/version.h"

#include <angelscript.h>
#include <rapidjson/rapidjson.h>
#include <Qsci/qsciglobal.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

QString AboutDialog::versionText()
{
    QStringList lines;
    lines << QStringLiteral("P.L.A.X %1.%2.%3").arg(Version::kMajor).arg(Version::kMinor).arg(Version::kPatch)
          << tr("An editor for Box2D scenes.")
          << tr("Built %1").arg(QString::fromLatin1(Version::buildTimestamp())) << QString()
          << tr("Libraries in use:")
          << QStringLiteral("Qt %1 (built with %2)").arg(QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR))
          << QStringLiteral("Box2D %1").arg(QString::fromLatin1(Version::box2dVersion()))
          << QStringLiteral("AngelScript %1").arg(QString::fromLatin1(AngelScript::asGetLibraryVersion()))
          << QStringLiteral("QScintilla %1").arg(QStringLiteral(QSCINTILLA_VERSION_STR))
          << QStringLiteral("RapidJSON %1").arg(QStringLiteral(RAPIDJSON_VERSION_STRING));
    if (Version::kTrial)
        lines << QString() << tr("This is the trial version: some features are not available.");
    return lines.join(QLatin1Char('\n'));
}

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("AboutDialog"));
    setAccessibleName(tr("About P.L.A.X"));
    setWindowTitle(tr("About P.L.A.X"));
    auto* label = new QLabel(versionText(), this);
    label->setObjectName(QStringLiteral("AboutText"));
    label->setAccessibleName(tr("Versions"));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setObjectName(QStringLiteral("AboutButtons"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(buttons);
}
