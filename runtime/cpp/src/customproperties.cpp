#include "plax/customproperties.h"

namespace plax
{
void CustomProperties::add(std::string name, CustomValue value)
{
    m_properties.push_back({std::move(name), std::move(value)});
}

const CustomProperty* CustomProperties::find(std::string_view name) const
{
    for (const CustomProperty& p : m_properties) {
        if (p.name == name)
            return &p;
    }
    return nullptr;
}

bool CustomProperties::has(std::string_view name, CustomPropertyType type) const
{
    for (const CustomProperty& p : m_properties) {
        if (p.name == name && p.type() == type)
            return true;
    }
    return false;
}

template <typename T>
const T* CustomProperties::get(std::string_view name) const
{
    for (const CustomProperty& p : m_properties) {
        if (p.name == name) {
            if (const T* value = std::get_if<T>(&p.value))
                return value;
        }
    }
    return nullptr;
}

int CustomProperties::getInt(std::string_view name, int defaultValue) const
{
    const int* v = get<int>(name);
    return v ? *v : defaultValue;
}

float CustomProperties::getFloat(std::string_view name, float defaultValue) const
{
    const float* v = get<float>(name);
    return v ? *v : defaultValue;
}

std::string CustomProperties::getString(std::string_view name, const std::string& defaultValue) const
{
    const std::string* v = get<std::string>(name);
    return v ? *v : defaultValue;
}

Vec2 CustomProperties::getVec2(std::string_view name, Vec2 defaultValue) const
{
    const Vec2* v = get<Vec2>(name);
    return v ? *v : defaultValue;
}

bool CustomProperties::getBool(std::string_view name, bool defaultValue) const
{
    const bool* v = get<bool>(name);
    return v ? *v : defaultValue;
}

Color CustomProperties::getColor(std::string_view name, Color defaultValue) const
{
    const Color* v = get<Color>(name);
    return v ? *v : defaultValue;
}
} // namespace plax
