// Dates, stored properties and files for the tests of calendar and tasks.
#include "Calendar.h"

#include "standin/mailbox/Msg.h"

#include <cwchar>
#include <filesystem>
#include <fstream>
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

std::wstring ShownTime(const mailbox::Value& value) {
    const auto* time = std::get_if<mailbox::SysTime>(&value);
    if (!time)
        return L"no time";
    const FILETIME file{static_cast<DWORD>(time->ticks), static_cast<DWORD>(time->ticks >> 32)};
    SYSTEMTIME utc{};
    double days = 0;
    FileTimeToSystemTime(&file, &utc);
    SystemTimeToVariantTime(&utc, &days);
    return Shown(Date(days));
}

Person::Person(const Object& application, const wchar_t* profile)
    : m_nameSpace(application.Child(L"GetNamespace", {Value(L"MAPI")})) {
    m_nameSpace.Call(L"Logon", {Value(profile)});
}

Person::~Person() {
    m_nameSpace.Call(L"Logoff");
}

Object CalendarTest::NewItem(int itemType) const {
    NameSpace();
    return Application().Child(L"CreateItem", {Value(itemType)});
}

Object CalendarTest::NewAppointment(const _variant_t& start, int minutes) const {
    const Object item = NewItem(kAppointmentItem);
    item.Put(L"Start", start);
    item.Put(L"Duration", Value(minutes));
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

Object CalendarTest::OpenReal(const char* file, int folder) {
    const std::filesystem::path path = std::filesystem::path(VARDEN_MSG_FOLDER) / file;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return {};
    const mailbox::Bytes bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    mailbox::Content content;
    std::shared_ptr<mailbox::Message> message;
    EXPECT_EQ(mailbox::ReadMsgBytes(bytes, Folder(folder).Names(), content), S_OK) << file;
    EXPECT_EQ(Folder(folder).Receive(std::move(content), false, message), S_OK);
    return DefaultFolder(folder).Child(L"Items").Child(L"GetLast");
}

std::optional<mailbox::Value> Named(const mailbox::PropertyObject& message, const GUID& set, unsigned number,
                                    unsigned type) {
    const mailbox::PropertyId id = message.Names().Id({set, number});
    mailbox::Value value;
    if (!id || FAILED(message.Read(mailbox::MakeTag(id, static_cast<mailbox::PropertyType>(type)), value)))
        return std::nullopt;
    return value;
}

} // namespace outlook_tests
