#include "io/jsontext.h"

#include "io/jsontextwriter.h"

#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>

namespace
{
constexpr unsigned kParseFlags = rapidjson::kParseIterativeFlag;

// Offset of the text after a UTF-8 byte-order mark, or 0.
int bomLength(const QByteArray& text)
{
    return text.startsWith("\xEF\xBB\xBF") ? 3 : 0;
}

QString parseErrorText(const rapidjson::Document& document)
{
    return QStringLiteral("%1 (at offset %2)")
        .arg(QString::fromLatin1(rapidjson::GetParseError_En(document.GetParseError())))
        .arg(document.GetErrorOffset());
}
} // namespace

QByteArray jsonToText(const rapidjson::Value& value, bool pretty)
{
    rapidjson::StringBuffer buffer;
    JsonTextWriter<rapidjson::StringBuffer> writer(buffer, pretty);
    if (!value.Accept(writer))
        return QByteArray();
    writer.finish();
    return QByteArray(buffer.GetString(), qsizetype(buffer.GetSize()));
}

bool parseJson(const QByteArray& text, rapidjson::Document* document, QString* error)
{
    const int skip = bomLength(text);
    document->Parse<kParseFlags>(text.constData() + skip, size_t(text.size() - skip));
    if (document->HasParseError()) {
        if (error)
            *error = parseErrorText(*document);
        return false;
    }
    return true;
}

bool parseJsonInPlace(QByteArray& buffer, rapidjson::Document* document, QString* error)
{
    const int skip = bomLength(buffer);
    // In-place parsing needs a terminated, writable buffer; data() detaches.
    char* start = buffer.data() + skip;
    document->ParseInsitu<kParseFlags>(start);
    if (document->HasParseError()) {
        if (error)
            *error = parseErrorText(*document);
        return false;
    }
    return true;
}
