// The types of custom fields, and their values as text.
#pragma once

#include <windows.h>

#include <comdef.h>
#include <mapidefs.h>

#include <cstdint>
#include <span>
#include <string>

namespace varden {

enum class CustomFieldForm : std::uint8_t { Currency, Date, Integer, Keywords, Number, Text, YesNo };

struct CustomFieldType {
    const wchar_t* word;
    long number; ///< of OlUserPropertyType
    CustomFieldForm form;
};

/// All types, by their words.
std::span<const CustomFieldType> CustomFieldTypes();
/// By the word, without regard to case; null for an unknown word.
const CustomFieldType* FindCustomFieldType(const std::wstring& word);

/// The value for a text. A text that is no date or no currency gives an empty value. False when the array of
/// keywords can't be made.
bool MakeCustomFieldValue(CustomFieldForm form, const std::wstring& text, _variant_t& value);

/// The text of a value by the type under which it is stored; empty for types that no custom field has.
std::wstring CustomFieldText(const SPropValue& value);

} // namespace varden
