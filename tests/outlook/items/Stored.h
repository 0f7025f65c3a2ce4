// What is stored behind the members of items, as clients that know properties and not members see it.
#pragma once

#include "tests/outlook/Client.h"

namespace outlook_tests {

/// A property by its tag, and a named one by its set's first 32 bits and its number with the type in the low
/// half: 0x8083001F.
std::wstring Tag(std::uint32_t tag);
std::wstring Id(std::uint32_t set, std::uint32_t idAndType);

inline constexpr std::uint32_t kAddressSet = 0x00062004, kCommonSet = 0x00062008, kLogSet = 0x0006200A,
                               kNoteSet = 0x0006200E, kRemoteSet = 0x00062014, kSharingSet = 0x00062040;

/// The value; empty if the item hasn't got the property in its type.
_variant_t Stored(const Object& item, const std::wstring& property);
std::wstring StoredText(const Object& item, const std::wstring& property);
void Store(const Object& item, const std::wstring& property, const _variant_t& value);

/// Bytes as a value, as hexadecimal text, and back.
_variant_t Bytes(std::initializer_list<unsigned char> bytes);
std::wstring Hex(const _variant_t& bytes);

/// Whatever a value is, as text: for messages, and for comparing.
std::wstring Shown(const _variant_t& value);

/// An item in a fresh world.
class KindTest : public OutlookTest {
protected:
    /// A new item, unsaved, of an OlItemType or of a message class.
    Object New(const _variant_t& type, int folder = kInbox) const;
    /// Saves it and opens it anew.
    Object Reopened(const Object& item) const;
};

} // namespace outlook_tests
