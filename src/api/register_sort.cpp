#include "api/scriptapisupport.h"
#include "api/scripthandles.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "base/log.h"

#include <angelscript/scriptarray.h>

#include <string>
#include <vector>

using namespace AngelScript;

// sort<Kinds>(array, compare) and filter<Kinds>(array, keep) with script
// callbacks. The callbacks run nested in the calling script's context, so
// the time and stack limits of the run cover them; a callback that throws
// ends the sorting or filtering and the input comes back unchanged.
namespace
{
template <class Handle>
struct Names;
template <> struct Names<ScriptBody> { static constexpr const char* type = "body"; static constexpr const char* plural = "Bodies"; };
template <> struct Names<ScriptFixture> { static constexpr const char* type = "fixture"; static constexpr const char* plural = "Fixtures"; };
template <> struct Names<ScriptJoint> { static constexpr const char* type = "joint"; static constexpr const char* plural = "Joints"; };
template <> struct Names<ScriptImage> { static constexpr const char* type = "image"; static constexpr const char* plural = "Images"; };
template <> struct Names<ScriptSampler> { static constexpr const char* type = "sampler"; static constexpr const char* plural = "Samplers"; };
template <> struct Names<ScriptObject> { static constexpr const char* type = "object"; static constexpr const char* plural = "Objects"; };
template <> struct Names<ScriptVertex> { static constexpr const char* type = "vertex"; static constexpr const char* plural = "Vertices"; };

// Calls a predicate on one or two handles; false in `ok` when it did not return.
class Caller
{
public:
    explicit Caller(asIScriptFunction* function) : m_function(function) {}
    ~Caller()
    {
        if (m_function)
            m_function->Release();
    }
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

    bool ok() const { return m_ok; }

    bool call(void* a, void* b = nullptr)
    {
        if (!m_ok || !m_function)
            return m_ok = false;
        asIScriptContext* context = asGetActiveContext();
        if (!context || context->PushState() < 0)
            return m_ok = false;
        int r = context->Prepare(m_function);
        if (r >= 0)
            r = context->SetArgObject(0, a);
        if (r >= 0 && b)
            r = context->SetArgObject(1, b);
        if (r >= 0)
            r = context->Execute();
        const bool result = r == asEXECUTION_FINISHED && context->GetReturnByte() != 0;
        if (r != asEXECUTION_FINISHED) {
            m_ok = false;
            if (r == asEXECUTION_EXCEPTION)
                plaxLog(LOG_ERROR, "%s", context->GetExceptionString() ? context->GetExceptionString() : "");
        }
        context->PopState();
        if (r == asEXECUTION_ABORTED)
            context->Abort();
        return result;
    }

private:
    asIScriptFunction* m_function;
    bool m_ok = true;
};

template <class Handle>
std::vector<Handle> copyOf(const CScriptArray& array)
{
    std::vector<Handle> handles;
    for (asUINT i = 0; i < array.GetSize(); ++i)
        handles.push_back(*static_cast<const Handle*>(array.At(i)));
    return handles;
}

template <class Handle>
CScriptArray* arrayOf(const CScriptArray& like, const std::vector<Handle>& handles)
{
    CScriptArray* result = CScriptArray::Create(like.GetArrayObjectType());
    for (Handle h : handles)
        ScriptApi::appendToArray(*result, &h);
    return result;
}

// A merge sort of our own: a script comparison need not be consistent, and
// the standard sorts may then read past the ends.
template <class Handle>
void mergeSort(std::vector<Handle>& items, Caller& less)
{
    if (items.size() < 2)
        return;
    std::vector<Handle> left(items.begin(), items.begin() + std::ptrdiff_t(items.size() / 2));
    std::vector<Handle> right(items.begin() + std::ptrdiff_t(items.size() / 2), items.end());
    mergeSort(left, less);
    mergeSort(right, less);
    size_t i = 0, j = 0, k = 0;
    while (i < left.size() && j < right.size())
        items[k++] = less.ok() && less.call(&right[j], &left[i]) ? right[j++] : left[i++];
    while (i < left.size())
        items[k++] = left[i++];
    while (j < right.size())
        items[k++] = right[j++];
}

template <class Handle>
CScriptArray* sortHandles(const CScriptArray& input, asIScriptFunction* compare)
{
    Caller less(compare);
    std::vector<Handle> items = copyOf<Handle>(input);
    mergeSort(items, less);
    return arrayOf(input, less.ok() ? items : copyOf<Handle>(input));
}

template <class Handle>
CScriptArray* filterHandles(const CScriptArray& input, asIScriptFunction* keep)
{
    Caller predicate(keep);
    std::vector<Handle> kept;
    for (Handle h : copyOf<Handle>(input))
        if (predicate.call(&h))
            kept.push_back(h);
    return arrayOf(input, predicate.ok() ? kept : copyOf<Handle>(input));
}

template <class Handle>
void registerFor(ScriptRegistrar& reg)
{
    using N = Names<Handle>;
    auto decl = [](const char* pattern) {
        return QString::fromLatin1(pattern)
            .replace(QLatin1String("%T"), QLatin1String(N::type))
            .replace(QLatin1String("%P"), QLatin1String(N::plural))
            .toStdString();
    };
    reg.check(reg.engine()->RegisterFuncdef(decl("bool %TSortFunc(%T, %T)").c_str()), "sort funcdef");
    reg.check(reg.engine()->RegisterFuncdef(decl("bool %TFilterFunc(%T)").c_str()), "filter funcdef");
    reg.global(decl("%T[]@ sort%P(const %T[] &in, %TSortFunc@)").c_str(), asFUNCTION(sortHandles<Handle>), asCALL_CDECL);
    reg.global(decl("%T[]@ filter%P(const %T[] &in, %TFilterFunc@)").c_str(), asFUNCTION(filterHandles<Handle>),
               asCALL_CDECL);
}
} // namespace

void registerSortFunctions(ScriptRegistrar& reg)
{
    registerFor<ScriptBody>(reg);
    registerFor<ScriptFixture>(reg);
    registerFor<ScriptJoint>(reg);
    registerFor<ScriptImage>(reg);
    registerFor<ScriptSampler>(reg);
    registerFor<ScriptObject>(reg);
    registerFor<ScriptVertex>(reg);
}
