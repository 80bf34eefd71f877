#include "io/jsontext.h"

#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>

namespace
{
constexpr unsigned kParseFlags = rapidjson::kParseIterativeFlag;

// Offset of the text after a UTF-8 byte-order mark, or 0.
int bomLength(const QByteArray& text)
{
    return text.startsWith("\xEF\xBB\xBF") ? 3 : 0;
}

bool isScalar(const rapidjson::Value& value)
{
    return !value.IsObject() && !value.IsArray();
}

void newline(rapidjson::StringBuffer& out, int depth)
{
    out.Put('\n');
    for (int i = 0; i < depth * 3; ++i)
        out.Put(' ');
}

// Pretty printing with three-space indentation; arrays of scalars stay on one
// line ("[0, 1.5, 2]"), which keeps point lists readable and files small.
bool writePretty(const rapidjson::Value& value, rapidjson::StringBuffer& out, int depth)
{
    if (value.IsObject()) {
        if (value.ObjectEmpty()) {
            out.Put('{');
            out.Put('}');
            return true;
        }
        out.Put('{');
        bool first = true;
        for (const auto& member : value.GetObject()) {
            if (!first)
                out.Put(',');
            first = false;
            newline(out, depth + 1);
            rapidjson::Writer<rapidjson::StringBuffer> key(out);
            member.name.Accept(key);
            out.Put(':');
            out.Put(' ');
            if (!writePretty(member.value, out, depth + 1))
                return false;
        }
        newline(out, depth);
        out.Put('}');
        return true;
    }
    if (value.IsArray()) {
        const bool singleLine =
            std::all_of(value.Begin(), value.End(), [](const rapidjson::Value& v) { return isScalar(v); });
        out.Put('[');
        bool first = true;
        for (const rapidjson::Value& element : value.GetArray()) {
            if (!first)
                out.Put(',');
            if (singleLine && !first)
                out.Put(' ');
            first = false;
            if (!singleLine)
                newline(out, depth + 1);
            if (!writePretty(element, out, depth + 1))
                return false;
        }
        if (!singleLine && !value.Empty())
            newline(out, depth);
        out.Put(']');
        return true;
    }
    rapidjson::Writer<rapidjson::StringBuffer> scalar(out);
    return value.Accept(scalar);
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
    bool ok = false;
    if (pretty) {
        ok = writePretty(value, buffer, 0);
    } else {
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        ok = value.Accept(writer);
    }
    if (!ok)
        return QByteArray();
    QByteArray text(buffer.GetString(), qsizetype(buffer.GetSize()));
    if (pretty)
        text.append('\n');
    return text;
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
