// Tests of field vocabularies: a message with known properties is made the current record, its fields are
// read, written and read back, each kind from tables of fields and texts.
#pragma once

#include "MailboxTest.h"

#include <utility>
#include <variant>

namespace varden::tests {

/// A value as a message stores it.
using PropertyValue = standin::mailbox::Value;
using Strings = std::vector<std::wstring>;

/// Ticks of a moment in UTC.
standin::mailbox::SysTime Utc(WORD year, WORD month, WORD day, WORD hour = 0, WORD minute = 0);
/// Date and time of a moment as the user's locale writes them.
std::wstring LocalText(const standin::mailbox::SysTime& moment);
/// A date text as fields of the object model show it: read and written by the user's locale.
std::wstring DateAsShown(const wchar_t* date);

/// The property sets of Outlook.
namespace sets {

constexpr GUID Outlook(unsigned long first) {
    return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}
inline constexpr GUID kCommon = Outlook(0x00062008);
inline constexpr GUID kAppointment = Outlook(0x00062002);
inline constexpr GUID kTask = Outlook(0x00062003);
inline constexpr GUID kAddress = Outlook(0x00062004);
inline constexpr GUID kLog = Outlook(0x0006200A);
inline constexpr GUID kNote = Outlook(0x0006200E);
inline constexpr GUID kRemote = Outlook(0x00062014);
inline constexpr GUID kSharing = Outlook(0x00062040);
inline constexpr GUID kMeeting{0x6ED8DA90, 0x450B, 0x101B, {0x98, 0xDA, 0x00, 0xAA, 0x00, 0x3F, 0x13, 0x05}};

} // namespace sets

/// A property of a message, by its tag, or by its number or name in a property set; or none.
struct StoredProperty {
    StoredProperty() = default;
    StoredProperty(standin::mailbox::PropertyTag tag, PropertyValue value)
        : key(tag), value(std::move(value)) {}
    StoredProperty(const GUID& set, std::uint32_t number, PropertyValue value)
        : key(standin::mailbox::PropertyName{set, number}), value(std::move(value)) {}
    StoredProperty(const GUID& set, const wchar_t* name, PropertyValue value)
        : key(standin::mailbox::PropertyName{set, name}), value(std::move(value)) {}

    bool IsThere() const { return key.index() != 0; }

    std::variant<std::monostate, standin::mailbox::PropertyTag, standin::mailbox::PropertyName> key;
    PropertyValue value;
};

struct FieldText {
    const wchar_t* field;
    std::wstring text;
    StoredProperty property = {}; ///< what the text is made of
};
using FieldTexts = std::vector<FieldText>;

struct FieldWrite {
    const wchar_t* field;
    std::wstring data;
    std::wstring read;            ///< what the field reads afterwards
    StoredProperty property = {}; ///< what is stored once the record is saved
};
using FieldWrites = std::vector<FieldWrite>;

using FieldNames = std::vector<const wchar_t*>;

/// What most kinds take in the same words; see ExpectOrdinary.
inline const FieldNames kUsuallyWritten{L"Billing Information", L"Categories", L"Importance", L"Mileage",
                                        L"Sensitivity",         L"Subject"};

/// Data that isn't any value of the field.
struct InvalidData {
    const wchar_t* field;
    Strings data;
};

namespace errors {

inline const LastError kFieldName{-1022, L"Invalid field name passed"};
inline const LastError kFieldValue{-1089, L"Invalid value for field"};
inline const LastError kReadOnly{-1096, L"Field is read-only"};

} // namespace errors

/// What the fields are tested on: one record at a time in one folder.
class FieldTest : public MailboxTest {
protected:
    explicit FieldTest(const wchar_t* folder, const wchar_t* plugin = kShippedPlugin)
        : MailboxTest(plugin), m_folder(folder) {}

    void SetUp() override;

    standin::mailbox::Folder& Home() { return At(m_folder); }

    void Put(MessageToAdd& message, const std::vector<StoredProperty>& properties);
    void Put(MessageToAdd& message, const FieldTexts& fields);
    /// A message of the class with what nearly all kinds of item have, each property with a value of its own.
    MessageToAdd Ordinary(const wchar_t* messageClass);
    /// Makes the message, put into the folder, the current record; gives its entry id.
    std::wstring Open(const MessageToAdd& message,
                      std::vector<standin::mailbox::PropertyBag> recipients = {});
    /// Saves the record, which stays current.
    virtual void Save();
    /// What is stored of the folder's last message.
    const standin::mailbox::Content& Stored();
    /// What it has for a property in a property set; nothing if there is none.
    const PropertyValue* StoredValue(const GUID& set, std::uint32_t number);
    void ExpectStored(const StoredProperty& property);

    void ExpectReads(const FieldTexts& fields);
    /// The message with the properties of the fields becomes the record, and they read their texts.
    std::wstring ExpectShown(MessageToAdd message, const FieldTexts& fields);
    /// Each field by itself, written to a bare message of the class, reads its text and stores its property;
    /// and then as ExpectShown.
    std::wstring ExpectBothWays(const MessageToAdd& message, const FieldTexts& fields);
    /// The ordinary message of the class shows the fields of both lists as every kind shows them; those of
    /// `written` go both ways. It is the record afterwards.
    void ExpectOrdinary(const wchar_t* messageClass, const FieldNames& written, const FieldNames& read = {});
    /// Written in this order to the record.
    void ExpectWrites(const FieldWrites& fields);
    void ExpectUnreadable(const FieldNames& names) {
        ExpectFailures(L"VARD_GetFieldData", names, {}, errors::kFieldName);
    }
    void ExpectUnwritable(const FieldNames& names) {
        ExpectFailures(L"VARD_SetFieldData", names, {L"1"}, errors::kFieldName);
    }
    void ExpectReadOnly(const FieldNames& names) {
        ExpectFailures(L"VARD_SetFieldData", names, {L"1"}, errors::kReadOnly);
    }
    void ExpectInvalid(const std::vector<InvalidData>& fields);
    /// The failure that was planned ends the call as a COM failure does that nobody names.
    void ExpectComError(const wchar_t* function, const Texts& arguments, HRESULT status = E_ACCESSDENIED);

private:
    /// The function fails so with each name and the data, if it takes any.
    void ExpectFailures(const wchar_t* function, const FieldNames& names, const Texts& data,
                        const LastError& error);
    /// The tag of the property in the folder's store.
    standin::mailbox::PropertyTag TagOf(const StoredProperty& property);

    std::wstring m_folder;
};

} // namespace varden::tests
