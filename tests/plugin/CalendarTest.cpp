// Appointments for tests, and the named properties behind their fields.
#include "CalendarTest.h"

namespace varden::tests {

using namespace standin::mailbox;

std::optional<StoredValue> Named(const PropertyObject& object, const GUID& set, std::uint32_t number) {
    StoredValue value;
    const PropertyId id = object.Names().Id({set, number});
    if (!id || FAILED(object.Read(MakeTag(id, PT_UNSPECIFIED), value))) {
        return std::nullopt;
    }
    return value;
}

void PutNamed(PropertyBag& bag, NamedProperties& names, const NamedValue& named) {
    bag.Put(MakeTag(names.Id({*named.set, named.number}, true), TypeOf(named.value)), named.value);
}

void CalendarTest::SetUp() {
    LogOn();
    Open(L"/Calendar");
}

void CalendarTest::NewAppointment(const std::wstring& subject, const std::wstring& start) {
    New(L"Calendar");
    EXPECT_EQ(Set(L"Subject", subject), L"0");
    EXPECT_EQ(Set(L"Start", start), L"0");
    EXPECT_EQ(Set(L"Duration", L"30"), L"0");
}

std::wstring CalendarTest::Save() {
    const std::wstring id = Call(L"VARD_SaveRecord");
    EXPECT_NE(id, kError) << testing::PrintToString(LastErrorText());
    return id;
}

void CalendarTest::OpenAppointment(MessageToAdd appointment, std::vector<NamedValue> named,
                                   std::vector<PropertyBag> recipients) {
    Content content;
    content.properties = std::move(appointment.more);
    content.properties.Set<PR_MESSAGE_CLASS_W>(L"IPM.Appointment");
    content.properties.Set<PR_SUBJECT_W>(appointment.subject);
    if (!appointment.body.empty()) {
        content.properties.Set<PR_BODY_W>(appointment.body);
    }
    for (const NamedValue& each : named) {
        PutNamed(content.properties, Calendar().Names(), each);
    }
    content.recipients = std::move(recipients);
    std::shared_ptr<Message> message;
    ASSERT_EQ(Calendar().Receive(std::move(content), false, message), S_OK);
    OpenRecord(ToHex(message->EntryId()));
}

} // namespace varden::tests
