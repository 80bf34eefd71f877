// The Debian package that `make package` builds (CPack): its fields, its
// dependencies and its file list.
#include "app/toolrun.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

namespace
{
// The package's Depends field as package names (each alternative counts).
QStringList dependencyNames(const QString& field)
{
    QStringList names;
    for (const QString& entry : field.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        for (const QString& alternative : entry.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
            const QString name = alternative.trimmed().section(QLatin1Char(' '), 0, 0).section(QLatin1Char(':'), 0, 0);
            if (!name.isEmpty())
                names.append(name);
        }
    }
    return names;
}

bool isInstalledHere(const QString& package)
{
    const ToolRun query = runTool(QStringLiteral("dpkg-query"), {"-W", "-f=${Status}", package});
    return query.exitCode == 0 && query.out.contains("install ok installed");
}

QString field(const QString& deb, const QString& name)
{
    return runTool(QStringLiteral("dpkg-deb"), {"-f", deb, name}).out.trimmed();
}

void checkFields(const QString& deb)
{
    const QString arch = runTool(QStringLiteral("dpkg"), {"--print-architecture"}).out.trimmed();
    EXPECT_EQ(QFileInfo(deb).fileName(), QStringLiteral("plax_1.8.0_%1.deb").arg(arch));
    EXPECT_EQ(field(deb, "Package"), "plax");
    EXPECT_EQ(field(deb, "Version"), "1.8.0");
    EXPECT_EQ(field(deb, "Architecture"), arch);
    EXPECT_FALSE(field(deb, "Maintainer").isEmpty());
    EXPECT_TRUE(field(deb, "Description").startsWith("editor for two-dimensional Box2D physics scenes"));
}

void checkDependencies(const QString& deb)
{
    const QString dependsField = field(deb, "Depends");
    const QStringList depends = dependencyNames(dependsField);
    const QSet<QString> names(depends.begin(), depends.end());
    for (const char* library : {"libc6", "libstdc++6", "libqt6core6", "libqt6gui6", "libqt6widgets6",
                                "libqt6openglwidgets6", "libqt6network6", "libbox2d2", "libangelscript2.35.1",
                                "libangelscript-addon2.35.1", "libqscintilla2-qt6-15", "libpng16-16"}) {
        EXPECT_TRUE(names.contains(QLatin1String(library))) << library << " missing from: " << dependsField.toStdString();
    }
    for (const QString& name : depends) {
        EXPECT_FALSE(name.endsWith("-dev")) << name.toStdString();
        // Every dependency is a real Debian package: this machine has it installed.
        EXPECT_TRUE(isInstalledHere(name)) << name.toStdString();
    }
    EXPECT_TRUE(dependencyNames(field(deb, "Recommends")).contains("qt6-qpa-plugins"));
}

void checkFiles(const QString& deb)
{
    const ToolRun list = runTool(QStringLiteral("dpkg-deb"), {"-c", deb});
    ASSERT_EQ(list.exitCode, 0) << list.err.toStdString();
    QSet<QString> files;
    for (const QString& line : list.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QString path = line.section(QLatin1Char(' '), -1);
        if (!path.endsWith(QLatin1Char('/')))
            files.insert(path);
    }
    for (const char* expected :
         {"./usr/bin/plax", "./usr/share/plax/config/actionMenu/default/layout.json",
          "./usr/share/plax/config/scripts/hello.rs", "./usr/share/plax/examples/demo.plax",
          "./usr/share/applications/org.quoxel2d.plax.desktop", "./usr/share/metainfo/org.quoxel2d.plax.metainfo.xml",
          "./usr/share/mime/packages/org.quoxel2d.plax.xml",
          "./usr/share/icons/hicolor/scalable/apps/org.quoxel2d.plax.svg",
          "./usr/share/icons/hicolor/16x16/apps/org.quoxel2d.plax.png",
          "./usr/share/icons/hicolor/128x128/apps/org.quoxel2d.plax.png",
          "./usr/share/icons/hicolor/scalable/mimetypes/application-x-plax.svg",
          "./usr/share/icons/hicolor/32x32/mimetypes/application-x-plax.png", "./usr/share/man/man1/plax.1.gz",
          "./usr/share/doc/plax/README.md"}) {
        EXPECT_TRUE(files.contains(QLatin1String(expected))) << expected;
    }
    // The program's files only: no tests, tools, libraries or headers of the tree.
    const QRegularExpression allowed(QStringLiteral(
        "^\\./usr/(bin/plax|share/(plax|applications|metainfo|mime/packages|icons/hicolor|man/man1|doc/plax)/.+)$"));
    for (const QString& file : files)
        EXPECT_TRUE(allowed.match(file).hasMatch()) << "unexpected file in the package: " << file.toStdString();
}
} // namespace

// One package build (it takes a while), checked for its fields, its
// dependencies and its file list.
TEST(DebianPackage, IsThePlaxProgramWithItsRunTimeDependenciesAndFiles)
{
    ASSERT_FALSE(findTool("dpkg-deb").isEmpty());
    ASSERT_FALSE(findTool("dpkg-shlibdeps").isEmpty()) << "dpkg-shlibdeps (dpkg-dev) is needed";
    QTemporaryDir dir;
    const ToolRun build = runTool(QStringLiteral(PLAX_CPACK_COMMAND),
                                  {"--config", QStringLiteral(PLAX_BUILD_DIR "/CPackConfig.cmake"), "-B", dir.path()});
    ASSERT_EQ(build.exitCode, 0) << build.out.toStdString() << build.err.toStdString();
    const QStringList debs = QDir(dir.path()).entryList({"*.deb"}, QDir::Files);
    ASSERT_EQ(debs.size(), 1) << build.out.toStdString();
    const QString deb = QDir(dir.path()).filePath(debs.front());
    {
        SCOPED_TRACE("fields");
        checkFields(deb);
    }
    {
        SCOPED_TRACE("dependencies");
        checkDependencies(deb);
    }
    {
        SCOPED_TRACE("files");
        checkFiles(deb);
    }
}
