#include "model/customproperties.h"

#include <algorithm>
#include <array>

namespace
{
const std::array<const char*, 6> kTypeWords = {"int", "float", "string", "vec2", "bool", "color"};
}

QString customPropertyTypeWord(CustomPropertyType type)
{
    return QString::fromLatin1(kTypeWords[static_cast<size_t>(type)]);
}

bool customPropertyTypeFromWord(const QString& word, CustomPropertyType* type)
{
    for (size_t i = 0; i < kTypeWords.size(); ++i) {
        if (word == QLatin1String(kTypeWords[i])) {
            *type = static_cast<CustomPropertyType>(i);
            return true;
        }
    }
    return false;
}

const CustomProperty* CustomProperties::find(const QString& name) const
{
    auto it = std::find_if(m_values.begin(), m_values.end(), [&](const CustomProperty& p) { return p.name == name; });
    return it == m_values.end() ? nullptr : &*it;
}

void CustomProperties::set(const QString& name, CustomValue value)
{
    for (CustomProperty& p : m_values) {
        if (p.name == name) {
            p.value = std::move(value);
            return;
        }
    }
    m_values.push_back({name, std::move(value)});
}

bool CustomProperties::remove(const QString& name)
{
    auto it = std::find_if(m_values.begin(), m_values.end(), [&](const CustomProperty& p) { return p.name == name; });
    if (it == m_values.end())
        return false;
    m_values.erase(it);
    return true;
}
