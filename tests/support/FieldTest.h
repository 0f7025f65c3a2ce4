// Tests of field vocabularies: a message with known properties is made the current record, its fields are
// read, written and read back, each kind from tables of fields and texts.
#pragma once

#include "ScriptTest.h"

#include <utility>

namespace varden::tests {

/// A value as a message stores it.
using PropertyValue = standin::mailbox::Value;

/// Ticks of a moment in UTC.
standin::mailbox::SysTime Utc(WORD year, WORD month, WORD day, WORD hour = 0, WORD minute = 0);
/// Date and time of a moment as the user's locale writes them.
std::wstring LocalText(const standin::mailbox::SysTime& moment);
/// A date text as fields of the object model show it: read and written by the user's locale.
std::wstring DateAsShown(const wchar_t* date);

struct FieldText {
    const wchar_t* field;
    std::wstring text;
};
using FieldTexts = std::vector<FieldText>;

struct FieldWrite {
    const wchar_t* field;
    std::wstring data;
    std::wstring read; ///< what the field reads afterwards
};
using FieldWrites = std::vector<FieldWrite>;

using FieldNames = std::vector<const wchar_t*>;

/// A property of a property set by its number.
struct NumberedProperty {
    GUID set;
    std::uint32_t number;
    standin::mailbox::PropertyType type;
    PropertyValue value;
};

/// The property sets of Outlook.
namespace sets {

constexpr GUID Outlook(unsigned long first) {
    return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}
inline constexpr GUID kCommon = Outlook(0x00062008);
inline constexpr GUID kTask = Outlook(0x00062003);
inline constexpr GUID kAddress = Outlook(0x00062004);
inline constexpr GUID kLog = Outlook(0x0006200A);
inline constexpr GUID kNote = Outlook(0x0006200E);
inline constexpr GUID kRemote = Outlook(0x00062014);
inline constexpr GUID kSharing = Outlook(0x00062040);

} // namespace sets

/// What the fields are tested on: one record at a time in one folder.
class FieldTest : public ScriptTest {
protected:
    explicit FieldTest(const wchar_t* folder, const wchar_t* plugin = kShippedPlugin)
        : ScriptTest(plugin), m_folder(folder) {}

    void SetUp() override;

    standin::mailbox::Folder& Home() { return FolderAt(World(), L"Front Desk", m_folder); }
    std::wstring Get(const wchar_t* field) { return Call(L"VARD_GetFieldData", {field}); }
    std::wstring Set(const wchar_t* field, const std::wstring& data) {
        return Call(L"VARD_SetFieldData", {field, data});
    }

    /// The tag of a named property in the folder's store.
    standin::mailbox::PropertyTag TagOf(const GUID& set, std::uint32_t number,
                                        standin::mailbox::PropertyType type);
    void Put(MessageToAdd& message, const std::vector<NumberedProperty>& values);
    /// A message of the class with what nearly all kinds of item have, each property with a value of its own.
    MessageToAdd Ordinary(const wchar_t* messageClass);
    /// Makes the message, put into the folder, the current record; gives its entry id.
    std::wstring Open(const MessageToAdd& message);
    /// Makes a new item the current record.
    void New(const wchar_t* kind) { ASSERT_EQ(Call(L"VARD_NewRecord", {kind}), L"0"); }
    /// What is stored of the folder's last message.
    const standin::mailbox::Content& Stored();

    void ExpectReads(const FieldTexts& fields);
    void ExpectWrites(const FieldWrites& fields);
    void ExpectUnreadable(const FieldNames& names);
    void ExpectUnwritable(const FieldNames& names);
    /// Every one is refused with this code, without an added text.
    void ExpectRefusals(const FieldTexts& fields, int code, const std::wstring& text);

private:
    std::wstring m_folder;
};
/// What the fields of `names` read on an ordinary message.
FieldTexts OrdinaryTexts(const FieldNames& names);

} // namespace varden::tests
