// What is stored behind the members of items, as clients that know properties and not members see it.
#pragma once

#include "Client.h"

namespace outlook_tests {

/// A property by its tag, and a named one by its set's first 32 bits and its number with the type in the low
/// half: 0x8083001F.
std::wstring Tag(std::uint32_t tag);
std::wstring Id(std::uint32_t set, std::uint32_t idAndType);

inline constexpr std::uint32_t kAppointmentSet = 0x00062002, kTaskSet = 0x00062003, kAddressSet = 0x00062004,
                               kCommonSet = 0x00062008, kLogSet = 0x0006200A, kNoteSet = 0x0006200E,
                               kRemoteSet = 0x00062014, kSharingSet = 0x00062040;

/// The value; empty if the item hasn't got the property in its type.
_variant_t Stored(const Object& item, const std::wstring& property);
std::wstring StoredText(const Object& item, const std::wstring& property);
/// As Expect does it, with properties in place of members.
void ExpectStored(const Object& item, const Facts& facts, Where where = Where::current());
void Store(const Object& item, const std::wstring& property, const Value& value);

_variant_t Bytes(const std::vector<unsigned char>& bytes);

/// An item in a fresh world.
class KindTest : public OutlookTest {
protected:
    /// A new item, unsaved, of an OlItemType or of a message class.
    Object New(const Value& type, int folder = kInbox) const;
    /// Saves it and opens it anew.
    Object Reopened(const Object& item) const;
    /// What a file of a real mail client holds, unsaved. Nothing where the files are missing.
    Object OpenReal(const wchar_t* file) const;
};

} // namespace outlook_tests
