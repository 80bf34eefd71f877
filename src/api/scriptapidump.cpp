#include "api/scriptapidump.h"

using namespace AngelScript;

namespace
{
QString text(const char* s)
{
    return QString::fromUtf8(s ? s : "");
}

void describeType(asITypeInfo* type, QStringList& lines)
{
    const QString name = text(type->GetName());
    lines << QStringLiteral("type %1").arg(name);
    for (asUINT i = 0; i < type->GetBehaviourCount(); ++i) {
        asEBehaviours behaviour;
        asIScriptFunction* function = type->GetBehaviourByIndex(i, &behaviour);
        if (function)
            lines << QStringLiteral("%1 behaviour %2: %3")
                         .arg(name)
                         .arg(int(behaviour))
                         .arg(text(function->GetDeclaration(true, false, true)));
    }
    for (asUINT i = 0; i < type->GetFactoryCount(); ++i)
        lines << QStringLiteral("%1 factory: %2").arg(name, text(type->GetFactoryByIndex(i)->GetDeclaration(true, false, true)));
    for (asUINT i = 0; i < type->GetPropertyCount(); ++i)
        lines << QStringLiteral("%1 property: %2").arg(name, text(type->GetPropertyDeclaration(i)));
    for (asUINT i = 0; i < type->GetMethodCount(); ++i)
        lines << QStringLiteral("%1 method: %2").arg(name, text(type->GetMethodByIndex(i)->GetDeclaration(true, false, true)));
}
} // namespace

QStringList describeScriptApi(asIScriptEngine* engine)
{
    QStringList lines;
    if (!engine)
        return lines;
    for (asUINT i = 0; i < engine->GetObjectTypeCount(); ++i)
        describeType(engine->GetObjectTypeByIndex(i), lines);
    for (asUINT i = 0; i < engine->GetGlobalFunctionCount(); ++i)
        lines << QStringLiteral("function: %1").arg(text(engine->GetGlobalFunctionByIndex(i)->GetDeclaration(true, true, true)));
    for (asUINT i = 0; i < engine->GetFuncdefCount(); ++i)
        lines << QStringLiteral("funcdef: %1").arg(text(engine->GetFuncdefByIndex(i)->GetFuncdefSignature()->GetDeclaration(true, true, true)));
    for (asUINT i = 0; i < engine->GetEnumCount(); ++i) {
        asITypeInfo* e = engine->GetEnumByIndex(i);
        for (asUINT v = 0; v < e->GetEnumValueCount(); ++v) {
            int value = 0;
            const char* valueName = e->GetEnumValueByIndex(v, &value);
            lines << QStringLiteral("enum %1: %2 = %3").arg(text(e->GetName()), text(valueName)).arg(value);
        }
    }
    for (asUINT i = 0; i < engine->GetGlobalPropertyCount(); ++i) {
        const char* name = nullptr;
        int typeId = 0;
        bool isConst = false;
        engine->GetGlobalPropertyByIndex(i, &name, nullptr, &typeId, &isConst);
        lines << QStringLiteral("property: %1%2 %3")
                     .arg(isConst ? QStringLiteral("const ") : QString(), text(engine->GetTypeDeclaration(typeId, true)), text(name));
    }
    lines.sort();
    return lines;
}
