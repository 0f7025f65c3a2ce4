// What the tests of field vocabularies share.
#include "FieldTest.h"

#include "standin/mailbox/Tags.h"

#include <oleauto.h>

#include <algorithm>
#include <stdexcept>

namespace varden::tests {

using namespace standin::mailbox;

SysTime Utc(WORD year, WORD month, WORD day, WORD hour, WORD minute) {
    const SYSTEMTIME time{year, month, 0, day, hour, minute, 0, 0};
    FILETIME ticks;
    SystemTimeToFileTime(&time, &ticks);
    return {(static_cast<std::uint64_t>(ticks.dwHighDateTime) << 32) | ticks.dwLowDateTime};
}

std::wstring LocalText(const SysTime& moment) {
    const FILETIME ticks{static_cast<DWORD>(moment.ticks), static_cast<DWORD>(moment.ticks >> 32)};
    SYSTEMTIME utc, local;
    FileTimeToSystemTime(&ticks, &utc);
    SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
    wchar_t date[80], time[80];
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &local, nullptr, date, 80);
    GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &local, nullptr, time, 80);
    return std::wstring(date) + L" " + time;
}

std::wstring DateAsShown(const wchar_t* date) {
    DATE days = 0;
    BSTR text = nullptr;
    EXPECT_EQ(VarDateFromStr(const_cast<LPOLESTR>(date), LOCALE_USER_DEFAULT, 0, &days), S_OK);
    EXPECT_EQ(VarBstrFromDate(days, LOCALE_USER_DEFAULT, 0, &text), S_OK);
    const std::wstring shown(text, SysStringLen(text));
    SysFreeString(text);
    return shown;
}

void FieldTest::SetUp() {
    LogOn();
    ASSERT_EQ(Call(L"VARD_OpenFolder", {L"/" + m_folder}), L"0");
}

PropertyTag FieldTest::TagOf(const GUID& set, std::uint32_t number, PropertyType type) {
    return PROP_TAG(type, Home().Names().Id({set, number}, true));
}

void FieldTest::Put(MessageToAdd& message, const std::vector<NumberedProperty>& values) {
    for (const NumberedProperty& each : values) {
        message.more.Put(TagOf(each.set, each.number, each.type), each.value);
    }
}

std::wstring FieldTest::Open(const MessageToAdd& message) {
    const std::wstring entryId = ToHex(AddMessage(Home(), message)->EntryId());
    EXPECT_EQ(Call(L"VARD_OpenRecord", {entryId}), L"0") << testing::PrintToString(LastErrorText());
    return entryId;
}

const Content& FieldTest::Stored() {
    if (Home().Messages().empty()) {
        throw std::runtime_error("nothing is stored");
    }
    return Home().Messages().back()->Current();
}

void FieldTest::ExpectReads(const FieldTexts& fields) {
    for (const FieldText& each : fields) {
        EXPECT_EQ(Get(each.field), each.text)
            << testing::PrintToString(each.field) << testing::PrintToString(LastErrorText());
    }
    EXPECT_EQ(LastErrorText(), L"Success");
}

void FieldTest::ExpectWrites(const FieldWrites& fields) {
    for (const FieldWrite& each : fields) {
        EXPECT_EQ(Set(each.field, each.data), L"0")
            << testing::PrintToString(each.field) << testing::PrintToString(LastErrorText());
        EXPECT_EQ(Get(each.field), each.read) << testing::PrintToString(each.field);
    }
}

void FieldTest::ExpectUnreadable(const FieldNames& names) {
    for (const wchar_t* name : names) {
        SCOPED_TRACE(testing::PrintToString(name));
        ExpectFailure(L"VARD_GetFieldData", {name}, -1022, L"Invalid field name passed");
    }
}

void FieldTest::ExpectUnwritable(const FieldNames& names) {
    for (const wchar_t* name : names) {
        SCOPED_TRACE(testing::PrintToString(name));
        ExpectFailure(L"VARD_SetFieldData", {name, L"1"}, -1022, L"Invalid field name passed");
    }
}

void FieldTest::ExpectRefusals(const FieldTexts& fields, int code, const std::wstring& text) {
    for (const FieldText& each : fields) {
        SCOPED_TRACE(testing::PrintToString(each.field));
        ExpectFailure(L"VARD_SetFieldData", {each.field, each.text}, code, text);
    }
}

MessageToAdd FieldTest::Ordinary(const wchar_t* messageClass) {
    MessageToAdd message{.messageClass = messageClass, .subject = L"Order 12", .body = L"one\r\ntwo"};
    message.more.Set<PR_IMPORTANCE>(2);
    message.more.Set<PR_SENSITIVITY>(1);
    message.more.Set<PR_CONVERSATION_TOPIC_W>(L"Order");
    message.more.Set<PR_CONVERSATION_INDEX>(Bytes{0x01, 0xD0});
    Put(message, {{sets::kCommon, 0x8534, PT_UNICODE, L"12 km"},
                  {sets::kCommon, 0x8535, PT_UNICODE, L"4711"},
                  {sets::kCommon, 0x8539, PT_MV_UNICODE, std::vector<std::wstring>{L"Example Trading"}},
                  {sets::kCommon, 0x850E, PT_BOOLEAN, true},
                  {sets::kCommon, 0x8511, PT_LONG, std::int32_t{3}}});
    const PropertyId keywords = Home().Names().Id({kPsPublicStrings, L"Keywords"}, true);
    message.more.Put(PROP_TAG(PT_MV_UNICODE, keywords), std::vector<std::wstring>{L"Red", L"Green"});
    return message;
}

FieldTexts OrdinaryTexts(const FieldNames& names) {
    const FieldTexts all{
        {L"Auto Resolved Winner", L""},
        {L"Conversation Index", L"01D0"},
        {L"Conversation Topic", L"Order"},
        {L"Billing Information", L"4711"},
        {L"Categories", L"Red, Green"},
        {L"Companies", L"Example Trading"},
        {L"Company", L"Example Trading"},
        {L"Download State", L"Full Item"},
        {L"Importance", L"High"},
        {L"Is Conflict", L"False"},
        {L"Mark for Download", L"copy"},
        {L"Mark For Download", L"copy"},
        {L"Mileage", L"12 km"},
        {L"No Aging", L"True"},
        {L"Saved", L"True"},
        {L"Sensitivity", L"Personal"},
        {L"Subject", L"Order 12"},
        {L"Unread", L"True"},
    };
    FieldTexts chosen;
    std::ranges::copy_if(all, std::back_inserter(chosen), [&](const FieldText& known) {
        return std::ranges::any_of(names,
                                   [&](const wchar_t* name) { return std::wstring(name) == known.field; });
    });
    EXPECT_EQ(chosen.size(), names.size());
    return chosen;
}

} // namespace varden::tests
