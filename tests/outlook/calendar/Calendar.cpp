// Dates, people and new items for the tests of calendar and tasks.
#include "Calendar.h"

#include <cwchar>
#include <iterator>

namespace outlook_tests {

namespace mailbox = standin::mailbox;

_variant_t At(int year, int month, int day, int hour, int minute) {
    SYSTEMTIME time{.wYear = static_cast<WORD>(year),
                    .wMonth = static_cast<WORD>(month),
                    .wDay = static_cast<WORD>(day),
                    .wHour = static_cast<WORD>(hour),
                    .wMinute = static_cast<WORD>(minute)};
    double days = 0;
    EXPECT_TRUE(SystemTimeToVariantTime(&time, &days));
    return Date(days);
}

_variant_t TimeOfDay(int hour, int minute) {
    return Date((hour * 60 + minute) / 1440.0);
}

std::wstring Shown(const _variant_t& date) {
    SYSTEMTIME time{};
    wchar_t text[32] = L"none";
    if (date.vt != VT_DATE || (date.date != kNoDate && !VariantTimeToSystemTime(date.date, &time)))
        return L"no date at all";
    if (date.date != kNoDate)
        std::swprintf(text, std::size(text), L"%04d-%02d-%02d %02d:%02d", time.wYear, time.wMonth, time.wDay,
                      time.wHour, time.wMinute);
    return text;
}

Person::Person(const Object& application, const wchar_t* profile)
    : m_nameSpace(application.Child(L"GetNamespace", {L"MAPI"})) {
    m_nameSpace.Call(L"Logon", {profile});
}

Person::~Person() {
    m_nameSpace.Call(L"Logoff");
}

Object CalendarTest::NewItem(int itemType) const {
    NameSpace();
    return Application().Child(L"CreateItem", {itemType});
}

Object CalendarTest::NewAppointment(const _variant_t& start, int minutes) const {
    const Object item = NewItem(kAppointmentItem);
    PutAll(item, {{L"Start", start}, {L"Duration", minutes}});
    return item;
}

mailbox::Folder& CalendarTest::Folder(int number) {
    return *World().DefaultStore()->SpecialFolder(number);
}

std::shared_ptr<mailbox::Message> CalendarTest::Find(int folder, const std::wstring& subject) {
    std::shared_ptr<mailbox::Message> found;
    for (const mailbox::Message* each : Folder(folder).Messages()) {
        if (each->Get<PR_SUBJECT_W>().value_or(L"") != subject)
            continue;
        if (found)
            return nullptr;
        found = Folder(folder).FindMessage(each->Id());
    }
    return found;
}

} // namespace outlook_tests
