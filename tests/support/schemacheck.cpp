#include "support/schemacheck.h"

#include <QFile>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>

#include <memory>
#include <mutex>

namespace
{
const rapidjson::SchemaDocument& schemaDocument(FileSchema schema)
{
    static std::unique_ptr<rapidjson::SchemaDocument> documents[2];
    static std::once_flag loaded[2];
    const int i = schema == FileSchema::Scene ? 0 : 1;
    std::call_once(loaded[i], [&] {
        const QString path = QStringLiteral(PLAX_SOURCE_DIR "/docs/schema/") +
                             (schema == FileSchema::Scene ? QStringLiteral("plax.schema.json")
                                                          : QStringLiteral("rawinfo.schema.json"));
        QFile file(path);
        QByteArray text;
        if (file.open(QIODevice::ReadOnly))
            text = file.readAll();
        rapidjson::Document document;
        document.Parse(text.constData(), size_t(text.size()));
        // A missing or broken schema file accepts nothing: its own check says why.
        if (document.HasParseError() || !document.IsObject())
            document.Parse(R"({"not": {}})");
        documents[i] = std::make_unique<rapidjson::SchemaDocument>(document);
    });
    return *documents[i];
}

QString pointerText(const rapidjson::Pointer& pointer)
{
    rapidjson::StringBuffer buffer;
    pointer.StringifyUriFragment(buffer);
    return QString::fromUtf8(buffer.GetString());
}
} // namespace

QString schemaViolation(FileSchema schema, const QByteArray& json)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag>(json.constData(), size_t(json.size()));
    if (document.HasParseError())
        return QStringLiteral("not JSON: %1 (at offset %2)")
            .arg(QString::fromLatin1(rapidjson::GetParseError_En(document.GetParseError())))
            .arg(document.GetErrorOffset());
    rapidjson::SchemaValidator validator(schemaDocument(schema));
    if (document.Accept(validator))
        return QString();
    return QStringLiteral("%1: %2 at %3")
        .arg(pointerText(validator.GetInvalidDocumentPointer()),
             QString::fromUtf8(validator.GetInvalidSchemaKeyword()), pointerText(validator.GetInvalidSchemaPointer()));
}

QString fileSchemaViolation(FileSchema schema, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot read '%1'").arg(path);
    const QString problem = schemaViolation(schema, file.readAll());
    return problem.isEmpty() ? problem : QStringLiteral("'%1' %2").arg(path, problem);
}
