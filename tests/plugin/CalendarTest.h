// What the tests of the calendar have in common: a plug-in that stands in the Calendar, appointments, and the
// named properties behind their fields.
#pragma once

#include "MailboxTest.h"

namespace varden::tests {

inline constexpr GUID kAppointmentSet{0x00062002, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID kCommonSet{0x00062008, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID kMeetingSet{
    0x6ED8DA90, 0x450B, 0x101B, {0x98, 0xDA, 0x00, 0xAA, 0x00, 0x3F, 0x13, 0x05}};
inline constexpr GUID kAssistantSet{
    0x11000E07, 0xB51B, 0x40D6, {0xAF, 0xD1, 0xCA, 0xA8, 0x5E, 0xDA, 0xB1, 0xD0}};

/// What a property holds in the mailbox.
using StoredValue = standin::mailbox::Value;

/// A named property, and one of its values.
struct NamedValue {
    const GUID* set;
    std::uint32_t number;
    StoredValue value;
};

/// Nothing where the object hasn't got it.
std::optional<StoredValue> Named(const standin::mailbox::PropertyObject& object, const GUID& set,
                                 std::uint32_t number);
void PutNamed(standin::mailbox::PropertyBag& bag, standin::mailbox::NamedProperties& names,
              const NamedValue& named);

class CalendarTest : public MailboxTest {
protected:
    explicit CalendarTest(const wchar_t* file = kShippedPlugin) : MailboxTest(file) {}

    void SetUp() override;

    standin::mailbox::Folder& Calendar() { return At(L"Calendar"); }
    /// A new appointment of half an hour, not yet saved.
    void NewAppointment(const std::wstring& subject, const std::wstring& start);
    /// Saves it and leaves it current; gives its entry id.
    std::wstring Save();
    /// The appointment that was saved last.
    standin::mailbox::Message& Stored() { return *Calendar().Messages().back(); }
    /// Puts an appointment with these properties into the Calendar and makes it current.
    void OpenAppointment(MessageToAdd appointment, std::vector<NamedValue> named = {},
                         std::vector<standin::mailbox::PropertyBag> recipients = {});
};

} // namespace varden::tests
