#include "objects/objectscenes.h"

#include "support/testfiles.h"

#include <QDir>
#include <QFileInfo>

namespace ObjectScenes
{
QByteArray circleBody(int id, const QString& name, float x, float y, float radius, float angle)
{
    return QStringLiteral(R"({"id":%1,"name":"%2","type":"dynamic","position":{"x":%3,"y":%4},"angle":%5,)"
                          R"("fixture":[{"id":%1,"name":"%2-fix","density":1,)"
                          R"("shapes":[{"type":"circle","radius":%6,"vertices":{"x":[0],"y":[0]}}]}]})")
        .arg(id)
        .arg(name)
        .arg(double(x))
        .arg(double(y))
        .arg(double(angle))
        .arg(double(radius))
        .toUtf8();
}

QByteArray polygonBody(int id, const QString& name, float x, float y, std::initializer_list<float> xy)
{
    QStringList xs, ys;
    bool isX = true;
    for (float v : xy) {
        (isX ? xs : ys).append(QString::number(double(v)));
        isX = !isX;
    }
    return QStringLiteral(R"({"id":%1,"name":"%2","type":"dynamic","position":{"x":%3,"y":%4},)"
                          R"("fixture":[{"id":%1,"name":"%2-fix","density":1,)"
                          R"("shapes":[{"type":"polygon","vertices":{"x":[%5],"y":[%6]}}]}]})")
        .arg(id)
        .arg(name)
        .arg(double(x))
        .arg(double(y))
        .arg(xs.join(','), ys.join(','))
        .toUtf8();
}

QByteArray instance(int id, const QString& name, const QString& file, float x, float y, float angle, float scale,
                    bool flip)
{
    return QStringLiteral(R"({"id":%1,"name":"%2","file":"%3","position":{"x":%4,"y":%5},)"
                          R"("angle":%6,"scale":%7,"flip":%8})")
        .arg(id)
        .arg(name, file)
        .arg(double(x))
        .arg(double(y))
        .arg(double(angle))
        .arg(double(scale))
        .arg(flip ? "true" : "false")
        .toUtf8();
}

QByteArray scene(const QByteArray& bodies, const QByteArray& instances)
{
    return R"({"metaworld":{"gravity":{"x":0,"y":-10},"metabody":[)" + bodies + R"(],"metaobject":[)" + instances +
           "]}}";
}
} // namespace ObjectScenes

QString SceneFolder::write(const QString& name, const QByteArray& content) const
{
    return QFileInfo(TestFiles::write(m_dir.filePath(name), content)).absoluteFilePath();
}
