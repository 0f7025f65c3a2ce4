// Reading one kind of value as another.
#include "Value.h"

namespace standin::filemaker {

NativeType Value::Type() const {
    if (std::holds_alternative<std::wstring>(m_content)) {
        return NativeType::Text;
    }
    return std::holds_alternative<bool>(m_content) ? NativeType::Boolean : NativeType::Number;
}

std::wstring Value::AsText() const {
    const auto* text = std::get_if<std::wstring>(&m_content);
    return text ? *text : AsNumber().AsText();
}

FixedPoint Value::AsNumber() const {
    if (const auto* text = std::get_if<std::wstring>(&m_content)) {
        return FixedPoint::FindIn(*text).value_or(FixedPoint());
    }
    const auto* truth = std::get_if<bool>(&m_content);
    return truth ? FixedPoint(*truth) : std::get<FixedPoint>(m_content);
}

bool Value::AsBoolean() const {
    return !AsNumber().IsZero();
}

} // namespace standin::filemaker
