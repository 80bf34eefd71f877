#include "engine/recordedcalls.h"

#include "engine/scriptexecution.h"

#include <QByteArray>

#include <cctype>
#include <cstring>
#include <limits>

using namespace AngelScript;

namespace
{
// Room for the item handle a look-up returns (a small plain value).
constexpr int kHandleRoom = 64;

bool isNameStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '_'; }
bool isNameChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// A cursor over one statement's bytes.
class Reader
{
public:
    Reader(const char* at, const char* end) : m_at(at), m_end(end) {}
    const char* at() const { return m_at; }
    bool take(char c)
    {
        if (m_at == m_end || *m_at != c)
            return false;
        ++m_at;
        return true;
    }
    bool name(QByteArray* out)
    {
        const char* start = m_at;
        if (m_at == m_end || !isNameStart(*m_at))
            return false;
        while (m_at != m_end && isNameChar(*m_at))
            ++m_at;
        *out = QByteArray(start, int(m_at - start));
        return true;
    }
    // Digits as the compiler's number token takes them: [-]d+[.d+][(e|E)[+|-]d+].
    bool number(QByteArray* out, bool* decimal)
    {
        const char* start = m_at;
        take('-');
        if (!digits())
            return false;
        *decimal = false;
        if (take('.')) {
            *decimal = true;
            if (!digits())
                return false;
        }
        if (m_at != m_end && (*m_at == 'e' || *m_at == 'E')) {
            *decimal = true;
            ++m_at;
            if (!take('+'))
                take('-');
            if (!digits())
                return false;
        }
        *out = QByteArray(start, int(m_at - start));
        return true;
    }

private:
    bool digits()
    {
        const char* start = m_at;
        while (m_at != m_end && isDigit(*m_at))
            ++m_at;
        return m_at != start;
    }

    const char* m_at;
    const char* m_end;
};

bool isWhole(int typeId)
{
    switch (typeId) {
    case asTYPEID_INT8: case asTYPEID_INT16: case asTYPEID_INT32: case asTYPEID_INT64:
    case asTYPEID_UINT8: case asTYPEID_UINT16: case asTYPEID_UINT32: case asTYPEID_UINT64: return true;
    default: return false;
    }
}

bool isPrimitive(int typeId)
{
    return isWhole(typeId) || typeId == asTYPEID_FLOAT || typeId == asTYPEID_DOUBLE || typeId == asTYPEID_BOOL;
}

// The range of a whole-number type.
void wholeRange(int typeId, std::int64_t* lo, std::int64_t* hi)
{
    switch (typeId) {
    case asTYPEID_INT8: *lo = std::numeric_limits<std::int8_t>::min(); *hi = std::numeric_limits<std::int8_t>::max(); return;
    case asTYPEID_INT16: *lo = std::numeric_limits<std::int16_t>::min(); *hi = std::numeric_limits<std::int16_t>::max(); return;
    case asTYPEID_INT32: *lo = std::numeric_limits<std::int32_t>::min(); *hi = std::numeric_limits<std::int32_t>::max(); return;
    case asTYPEID_UINT8: *lo = 0; *hi = std::numeric_limits<std::uint8_t>::max(); return;
    case asTYPEID_UINT16: *lo = 0; *hi = std::numeric_limits<std::uint16_t>::max(); return;
    case asTYPEID_UINT32: *lo = 0; *hi = std::numeric_limits<std::uint32_t>::max(); return;
    case asTYPEID_UINT64: *lo = 0; *hi = std::numeric_limits<std::int64_t>::max(); return;
    default: *lo = std::numeric_limits<std::int64_t>::min(); *hi = std::numeric_limits<std::int64_t>::max(); return;
    }
}

template <class T>
std::uint64_t bitsOf(T value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof value);
    return bits;
}
} // namespace

bool RecordedCalls::convert(const Literal& literal, int typeId, Argument* out)
{
    out->typeId = typeId;
    switch (literal.kind) {
    case Literal::Flag:
        if (typeId != asTYPEID_BOOL)
            return false;
        out->bits = literal.flag ? 1 : 0;
        return true;
    case Literal::Decimal:
        // A decimal literal is a double; only floating parameters take it
        // without a lossy conversion the compiler would warn about.
        if (typeId == asTYPEID_DOUBLE)
            out->bits = bitsOf(literal.decimal);
        else if (typeId == asTYPEID_FLOAT)
            out->bits = bitsOf(float(literal.decimal));
        else
            return false;
        return true;
    case Literal::Whole:
        if (typeId == asTYPEID_DOUBLE) {
            out->bits = bitsOf(double(literal.whole));
            return true;
        }
        if (typeId == asTYPEID_FLOAT) {
            out->bits = bitsOf(float(literal.whole));
            return true;
        }
        if (!isWhole(typeId))
            return false;
        std::int64_t lo = 0, hi = 0;
        wholeRange(typeId, &lo, &hi);
        if (literal.whole < lo || literal.whole > hi)
            return false;
        out->bits = std::uint64_t(literal.whole);
        return true;
    }
    return false;
}

asIScriptFunction* RecordedCalls::lookupFunction(const QByteArray& name)
{
    const std::string key = name.toStdString();
    const auto known = m_lookups.find(key);
    if (known != m_lookups.end())
        return known->second;
    // The one overload taking an id and giving a plain value (an item handle).
    asIScriptFunction* found = nullptr;
    int candidates = 0;
    for (asUINT i = 0; i < m_engine->GetGlobalFunctionCount(); ++i) {
        asIScriptFunction* function = m_engine->GetGlobalFunctionByIndex(i);
        if (!function || name != function->GetName() || function->GetParamCount() != 1)
            continue;
        int typeId = 0;
        asDWORD flags = 0;
        function->GetParam(0, &typeId, &flags);
        asITypeInfo* result = m_engine->GetTypeInfoById(function->GetReturnTypeId());
        if (flags != asTM_NONE || (typeId != asTYPEID_INT32 && typeId != asTYPEID_UINT32) || !result ||
            (result->GetFlags() & (asOBJ_VALUE | asOBJ_POD)) != (asOBJ_VALUE | asOBJ_POD) ||
            result->GetSize() > asUINT(kHandleRoom))
            continue;
        found = function;
        ++candidates;
    }
    if (candidates != 1)
        found = nullptr;
    m_lookups.emplace(key, found);
    return found;
}

asIScriptFunction* RecordedCalls::methodOf(asIScriptFunction* lookup, const QByteArray& name,
                                           const std::vector<Literal>& literals)
{
    asITypeInfo* type = m_engine->GetTypeInfoById(lookup->GetReturnTypeId());
    if (!type)
        return nullptr;
    // Exactly one method of that name and count, taking plain values: no
    // overload resolution to second-guess.
    asIScriptFunction* found = nullptr;
    for (asUINT i = 0; i < type->GetMethodCount(); ++i) {
        asIScriptFunction* method = type->GetMethodByIndex(i);
        if (!method || name != method->GetName() || method->GetParamCount() != asUINT(literals.size()))
            continue;
        if (found)
            return nullptr;
        found = method;
    }
    if (!found)
        return nullptr;
    for (asUINT p = 0; p < found->GetParamCount(); ++p) {
        int typeId = 0;
        asDWORD flags = 0;
        found->GetParam(p, &typeId, &flags);
        Argument argument;
        if (flags != asTM_NONE || !isPrimitive(typeId) || !convert(literals[p], typeId, &argument))
            return nullptr;
        m_arguments.push_back(argument);
    }
    return found;
}

bool RecordedCalls::parse(const QString& text)
{
    m_calls.clear();
    m_arguments.clear();
    if (!m_engine)
        return false;
    const QByteArray bytes = text.toUtf8();
    const char* at = bytes.constData();
    const char* end = at + bytes.size();
    std::vector<Literal> literals;
    QByteArray lookupName, methodName, number;
    while (true) {
        while (at != end && std::isspace(static_cast<unsigned char>(*at)))
            ++at;
        if (at == end)
            break;
        Reader reader(at, end);
        // lookup(id).method(literal, ...);
        bool decimal = false;
        if (!reader.name(&lookupName) || !reader.take('(') || !reader.number(&number, &decimal) || decimal ||
            !reader.take(')') || !reader.take('.') || !reader.name(&methodName) || !reader.take('(')) {
            m_calls.clear();
            return false;
        }
        bool ok = false;
        const qlonglong id = number.toLongLong(&ok);
        asIScriptFunction* lookup = ok ? lookupFunction(lookupName) : nullptr;
        if (!lookup || id < 0 || id > std::numeric_limits<std::int32_t>::max()) {
            m_calls.clear();
            return false;
        }
        literals.clear();
        if (!reader.take(')')) {
            do {
                Literal literal;
                QByteArray word;
                if (reader.name(&word)) {
                    if (word != "true" && word != "false") {
                        m_calls.clear();
                        return false;
                    }
                    literal.kind = Literal::Flag;
                    literal.flag = word == "true";
                } else if (reader.number(&number, &decimal)) {
                    literal.kind = decimal ? Literal::Decimal : Literal::Whole;
                    if (decimal)
                        literal.decimal = number.toDouble(&ok);
                    else
                        literal.whole = number.toLongLong(&ok);
                    if (!ok) {
                        m_calls.clear();
                        return false;
                    }
                } else {
                    m_calls.clear();
                    return false;
                }
                literals.push_back(literal);
            } while (reader.take(','));
            if (!reader.take(')')) {
                m_calls.clear();
                return false;
            }
        }
        if (!reader.take(';')) {
            m_calls.clear();
            return false;
        }
        Call call;
        call.lookup = lookup;
        call.id = int(id);
        call.firstArgument = m_arguments.size();
        call.method = methodOf(lookup, methodName, literals);
        if (!call.method) {
            m_calls.clear();
            m_arguments.clear();
            return false;
        }
        m_calls.push_back(call);
        at = reader.at();
    }
    return !m_calls.empty();
}

bool RecordedCalls::run(ScriptDocument* document, const QString& macroText)
{
    asIScriptContext* context = m_engine->RequestContext();
    if (!context)
        return false;
    alignas(16) unsigned char handle[kHandleRoom];
    const bool finished = executeScriptCalls(context, document, macroText, [&]() -> int {
        for (const Call& call : m_calls) {
            if (context->Prepare(call.lookup) < 0 || context->SetArgDWord(0, asDWORD(call.id)) < 0)
                return asEXECUTION_ERROR;
            int result = context->Execute();
            if (result != asEXECUTION_FINISHED)
                return result;
            const asITypeInfo* type = m_engine->GetTypeInfoById(call.lookup->GetReturnTypeId());
            std::memcpy(handle, context->GetReturnObject(), type->GetSize());
            if (context->Prepare(call.method) < 0 || context->SetObject(handle) < 0)
                return asEXECUTION_ERROR;
            for (asUINT p = 0; p < call.method->GetParamCount(); ++p) {
                const Argument& argument = m_arguments[call.firstArgument + p];
                int set = 0;
                switch (argument.typeId) {
                case asTYPEID_BOOL: case asTYPEID_INT8: case asTYPEID_UINT8:
                    set = context->SetArgByte(p, asBYTE(argument.bits));
                    break;
                case asTYPEID_INT16: case asTYPEID_UINT16: set = context->SetArgWord(p, asWORD(argument.bits)); break;
                case asTYPEID_INT32: case asTYPEID_UINT32: set = context->SetArgDWord(p, asDWORD(argument.bits)); break;
                case asTYPEID_FLOAT: {
                    float value = 0;
                    std::memcpy(&value, &argument.bits, sizeof value);
                    set = context->SetArgFloat(p, value);
                    break;
                }
                case asTYPEID_DOUBLE: {
                    double value = 0;
                    std::memcpy(&value, &argument.bits, sizeof value);
                    set = context->SetArgDouble(p, value);
                    break;
                }
                default: set = context->SetArgQWord(p, asQWORD(argument.bits)); break;
                }
                if (set < 0)
                    return asEXECUTION_ERROR;
            }
            result = context->Execute();
            if (result != asEXECUTION_FINISHED)
                return result;
        }
        return asEXECUTION_FINISHED;
    });
    m_engine->ReturnContext(context);
    return finished;
}
