// Property values of any type as automation values, and back.
#pragma once

#include "standin/mailbox/Property.h"
#include "standin/outlook/automation/Variants.h"

#include <span>

namespace standin::outlook {

/// The value; times in UTC, binary as an array of bytes, multiple values as an array of them. VT_EMPTY for
/// types that automation hasn't got.
_variant_t VariantOf(const mailbox::Value& value);
/// The value as a property of this type. Nothing if it doesn't convert.
std::optional<mailbox::Value> ValueOf(const VARIANT& value, mailbox::PropertyType type);

/// Whether it has the type in which automation has properties of this type, without conversion.
bool IsOfType(const VARIANT& value, mailbox::PropertyType type);

/// Bytes as an array of VT_UI1, and back; nothing for another array.
_variant_t ByteArray(std::span<const std::uint8_t> bytes);
std::optional<mailbox::Bytes> BytesOfArray(const VARIANT& value);

/// An array of variants, and the elements of an array of whatever type; none for what is no array.
_variant_t ArrayOf(std::vector<_variant_t> elements);
std::vector<_variant_t> ElementsOf(const VARIANT& value);
/// The elements of an array of texts, or a text's keywords. Nothing for anything else.
std::optional<std::vector<std::wstring>> TextsOfArray(const VARIANT& value);

} // namespace standin::outlook
