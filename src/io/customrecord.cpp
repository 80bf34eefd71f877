#include "io/customrecord.h"

#include <array>
#include <type_traits>

namespace
{
using rapidjson::Value;

// Typed member keys, in the order of CustomValue's alternatives.
constexpr std::array<const char*, 6> kTypeKeys = {"int", "float", "string", "vec2", "bool", "color"};

Value typedValue(const CustomValue& value, const JsonEncoder& encoder)
{
    return std::visit(
        [&](const auto& v) -> Value {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, int>)
                return Value(v);
            else if constexpr (std::is_same_v<T, float>)
                return encoder.floatValue(v);
            else if constexpr (std::is_same_v<T, QString>)
                return encoder.stringValue(v);
            else if constexpr (std::is_same_v<T, Vec2>)
                return encoder.vec2Value(v);
            else if constexpr (std::is_same_v<T, bool>)
                return Value(v);
            else
                return encoder.colorValue(v);
        },
        value);
}

// Decodes the member of one type; false when it does not hold that type.
bool decodeTyped(size_t typeIndex, const Value& member, CustomValue* value)
{
    switch (static_cast<CustomPropertyType>(typeIndex)) {
    case CustomPropertyType::Int:
        if (!member.IsNumber())
            return false;
        *value = decodeInt(&member, 0);
        return true;
    case CustomPropertyType::Float:
        if (!member.IsNumber() && !member.IsString())
            return false;
        *value = decodeFloat(&member, 0);
        return true;
    case CustomPropertyType::String:
        if (!member.IsString())
            return false;
        *value = decodeString(&member);
        return true;
    case CustomPropertyType::Vec2:
        if (!member.IsNumber() && !member.IsObject())
            return false;
        *value = decodeVec2(&member, Vec2{});
        return true;
    case CustomPropertyType::Bool:
        if (!member.IsBool() && !member.IsNumber())
            return false;
        *value = decodeBool(&member, false);
        return true;
    case CustomPropertyType::Color:
        if (!member.IsArray())
            return false;
        *value = decodeColor(&member, Color{});
        return true;
    }
    return false;
}
} // namespace

Value writeCustomProperties(const CustomProperties& properties, const JsonEncoder& encoder)
{
    Value array(rapidjson::kArrayType);
    array.Reserve(rapidjson::SizeType(properties.values().size()), encoder.allocator());
    for (const CustomProperty& property : properties.values()) {
        Value entry(rapidjson::kObjectType);
        encoder.addString(entry, "name", property.name);
        encoder.add(entry, kTypeKeys[property.value.index()], typedValue(property.value, encoder));
        array.PushBack(entry, encoder.allocator());
    }
    return array;
}

void emitCustomProperties(const CustomProperties& properties, const JsonEmitter& emitter)
{
    JsonSink& sink = emitter.sink();
    sink.startArray();
    for (const CustomProperty& property : properties.values()) {
        sink.startObject();
        emitter.key("name");
        emitter.stringValue(property.name);
        emitter.key(kTypeKeys[property.value.index()]);
        std::visit(
            [&](const auto& v) {
                using T = std::decay_t<decltype(v)>;
                if constexpr (std::is_same_v<T, int>)
                    emitter.intValue(v);
                else if constexpr (std::is_same_v<T, float>)
                    emitter.floatValue(v);
                else if constexpr (std::is_same_v<T, QString>)
                    emitter.stringValue(v);
                else if constexpr (std::is_same_v<T, Vec2>)
                    emitter.vec2Value(v);
                else if constexpr (std::is_same_v<T, bool>)
                    emitter.boolValue(v);
                else
                    emitter.colorValue(v);
            },
            property.value);
        sink.endObject();
    }
    sink.endArray();
}

void readCustomProperties(const Value* array, CustomProperties* properties)
{
    if (!array || !array->IsArray())
        return;
    for (const Value& entry : array->GetArray()) {
        const Value* nameValue = jsonMember(entry, "name");
        if (!nameValue || !nameValue->IsString())
            continue;
        for (size_t i = 0; i < kTypeKeys.size(); ++i) {
            const Value* member = jsonMember(entry, kTypeKeys[i]);
            CustomValue value;
            if (member && decodeTyped(i, *member, &value)) {
                properties->set(decodeString(nameValue), std::move(value));
                break;
            }
        }
    }
}

Value writeCustomPropertyDefs(const std::vector<CustomPropertyDef>& defs, const JsonEncoder& encoder)
{
    Value array(rapidjson::kArrayType);
    array.Reserve(rapidjson::SizeType(defs.size()), encoder.allocator());
    for (const CustomPropertyDef& def : defs) {
        Value entry(rapidjson::kObjectType);
        encoder.addString(entry, "class", def.itemClass);
        encoder.addString(entry, "name", def.name);
        encoder.addString(entry, "displayName", def.displayName);
        encoder.addString(entry, "type", def.type);
        if (!def.comboboxEntries.isEmpty()) {
            Value entries(rapidjson::kArrayType);
            for (const QString& text : def.comboboxEntries) {
                Value choice(rapidjson::kObjectType);
                encoder.addString(choice, "entry", text);
                entries.PushBack(choice, encoder.allocator());
            }
            encoder.add(entry, "comboboxEntries", std::move(entries));
        }
        array.PushBack(entry, encoder.allocator());
    }
    return array;
}

std::vector<CustomPropertyDef> readCustomPropertyDefs(const Value* array)
{
    std::vector<CustomPropertyDef> defs;
    if (!array || !array->IsArray())
        return defs;
    for (const Value& entry : array->GetArray()) {
        if (!entry.IsObject())
            continue;
        CustomPropertyDef def;
        def.itemClass = readString(entry, "class");
        def.name = readString(entry, "name");
        def.displayName = readString(entry, "displayName");
        def.type = readString(entry, "type");
        if (const Value* entries = jsonMember(entry, "comboboxEntries"); entries && entries->IsArray()) {
            for (const Value& choice : entries->GetArray()) {
                if (const Value* text = jsonMember(choice, "entry"); text && text->IsString())
                    def.comboboxEntries.append(decodeString(text));
            }
        }
        defs.push_back(std::move(def));
    }
    return defs;
}
