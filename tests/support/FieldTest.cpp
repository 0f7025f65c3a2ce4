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
    MailboxTest::Open(L"/" + m_folder);
}

PropertyTag FieldTest::TagOf(const StoredProperty& property) {
    if (const auto* name = std::get_if<PropertyName>(&property.key)) {
        return MakeTag(Home().Names().Id(*name, true), TypeOf(property.value));
    }
    return std::get<PropertyTag>(property.key);
}

void FieldTest::Put(MessageToAdd& message, const std::vector<StoredProperty>& properties) {
    for (const StoredProperty& each : properties) {
        message.more.Put(TagOf(each), each.value);
    }
}

void FieldTest::Put(MessageToAdd& message, const FieldTexts& fields) {
    for (const FieldText& each : fields) {
        if (each.property.IsThere()) {
            message.more.Put(TagOf(each.property), each.property.value);
        }
    }
}

std::wstring FieldTest::Open(const MessageToAdd& message, std::vector<PropertyBag> recipients) {
    auto added = AddMessage(Home(), message);
    if (!recipients.empty()) {
        Content content = added->Current();
        content.recipients = std::move(recipients);
        EXPECT_EQ(Home().Receive(std::move(content), false, added), S_OK);
    }
    const std::wstring entryId = ToHex(added->EntryId());
    OpenRecord(entryId);
    return entryId;
}

void FieldTest::Save() {
    EXPECT_NE(Call(L"VARD_SaveRecord"), kError) << testing::PrintToString(LastErrorText());
}

const Content& FieldTest::Stored() {
    if (Home().Messages().empty()) {
        throw std::runtime_error("nothing is stored");
    }
    return Home().Messages().back()->Current();
}

const PropertyValue* FieldTest::StoredValue(const GUID& set, std::uint32_t number) {
    return Stored().properties.Find(MakeTag(Home().Names().Id({set, number}, true), PT_UNSPECIFIED));
}

void FieldTest::ExpectStored(const StoredProperty& property) {
    const PropertyValue* value = Stored().properties.Find(TagOf(property));
    EXPECT_TRUE(value && *value == property.value) << "another value is stored, or none";
}

void FieldTest::ExpectReads(const FieldTexts& fields) {
    for (const FieldText& each : fields) {
        EXPECT_EQ(Get(each.field), each.text) << testing::PrintToString(each.field);
        EXPECT_EQ(LastErrorText(), L"Success") << testing::PrintToString(each.field);
    }
}

std::wstring FieldTest::ExpectShown(MessageToAdd message, const FieldTexts& fields) {
    Put(message, fields);
    const std::wstring entryId = Open(message);
    ExpectReads(fields);
    return entryId;
}

std::wstring FieldTest::ExpectBothWays(const MessageToAdd& message, const FieldTexts& fields) {
    for (const FieldText& each : fields) {
        Open({.messageClass = message.messageClass});
        ExpectWrites({{each.field, each.text, each.text, each.property}});
        EXPECT_EQ(Call(L"VARD_VerifyFieldData", {each.field, each.text}), L"0")
            << testing::PrintToString(each.field);
    }
    return ExpectShown(message, fields);
}

void FieldTest::ExpectWrites(const FieldWrites& fields) {
    for (const FieldWrite& each : fields) {
        SCOPED_TRACE(testing::PrintToString(each.field) + testing::PrintToString(each.data));
        EXPECT_EQ(Set(each.field, each.data), L"0");
        EXPECT_EQ(LastErrorText(), L"Success");
        EXPECT_EQ(Get(each.field), each.read);
        if (each.property.IsThere()) {
            Save();
            ExpectStored(each.property);
        }
    }
}

void FieldTest::ExpectFailures(const wchar_t* function, const FieldNames& names, const Texts& data,
                               const LastError& error) {
    for (const wchar_t* name : names) {
        SCOPED_TRACE(testing::PrintToString(name));
        Texts arguments = data;
        arguments.insert(arguments.begin(), name);
        ExpectFailure(function, arguments, error);
    }
}

void FieldTest::ExpectInvalid(const std::vector<InvalidData>& fields) {
    for (const auto& [field, invalid] : fields) {
        for (const std::wstring& data : invalid) {
            SCOPED_TRACE(testing::PrintToString(field) + testing::PrintToString(data));
            ExpectFailure(L"VARD_SetFieldData", {field, data}, errors::kFieldValue);
        }
    }
}

void FieldTest::ExpectComError(const wchar_t* function, const Texts& arguments, HRESULT status) {
    EXPECT_EQ(Call(function, arguments), kError);
    EXPECT_TRUE(Varden().Watch().HasFailed());
    EXPECT_EQ(LastErrorCode(), 0);
    wchar_t start[32];
    swprintf_s(start, L"Error: %08lX\nMessage:", static_cast<unsigned long>(status));
    EXPECT_TRUE(LastErrorText().starts_with(start)) << testing::PrintToString(LastErrorText());
}

namespace {

const FieldTexts kOrdinaryFields{
    {L"Auto Resolved Winner", L""},
    {L"Billing Information", L"4711", {sets::kCommon, 0x8535, L"4711"}},
    {L"Body", L"one\rtw", {PR_BODY_W, L"one\r\ntwo"}}, // no line feed, and without its last character
    {L"Categories", L"Red, Green", {kPsPublicStrings, L"Keywords", Strings{L"Red", L"Green"}}},
    {L"Companies", L"Example Trading", {sets::kCommon, 0x8539, Strings{L"Example Trading"}}},
    {L"Company", L"Example Trading", {sets::kCommon, 0x8539, Strings{L"Example Trading"}}},
    {L"Conversation Index", L"01D0", {PR_CONVERSATION_INDEX, Bytes{0x01, 0xD0}}},
    {L"Conversation Topic", L"Order", {PR_CONVERSATION_TOPIC_W, L"Order"}},
    {L"Download State", L"Full Item"},
    {L"Importance", L"High", {PR_IMPORTANCE, 2}},
    {L"Is Conflict", L"False"},
    {L"Mark for Download", L"copy", {sets::kCommon, 0x8511, 3}},
    {L"Mark For Download", L"copy", {sets::kCommon, 0x8511, 3}},
    {L"Mileage", L"12 km", {sets::kCommon, 0x8534, L"12 km"}},
    {L"No Aging", L"True", {sets::kCommon, 0x850E, true}},
    {L"Saved", L"True"},
    {L"Sensitivity", L"Personal", {PR_SENSITIVITY, 1}},
    {L"Subject", L"Order 12", {PR_SUBJECT_W, L"Order 12"}},
    {L"Unread", L"True"},
};

FieldTexts Chosen(const FieldTexts& all, const FieldNames& names) {
    FieldTexts fields;
    for (const std::wstring name : names) {
        const auto found = std::ranges::find(all, name, &FieldText::field);
        if (found == all.end()) {
            throw std::runtime_error("no ordinary field of this name");
        }
        fields.push_back(*found);
    }
    return fields;
}

} // namespace

MessageToAdd FieldTest::Ordinary(const wchar_t* messageClass) {
    MessageToAdd message{.messageClass = messageClass};
    Put(message, kOrdinaryFields);
    return message;
}

void FieldTest::ExpectOrdinary(const wchar_t* messageClass, const FieldNames& written,
                               const FieldNames& read) {
    const std::wstring entryId = ExpectBothWays(Ordinary(messageClass), Chosen(kOrdinaryFields, written));
    FieldTexts all = kOrdinaryFields;
    for (const wchar_t* name : {L"ID", L"Entry ID", L"EntryID"}) {
        all.push_back({name, entryId});
    }
    for (const wchar_t* name : {L"Form Name", L"Message Class"}) {
        all.push_back({name, messageClass});
    }
    for (const wchar_t* name : {L"In Folder", L"Parent"}) {
        all.push_back({name, m_folder});
    }
    all.push_back({L"Size", std::to_wstring(Home().Messages().back()->Get<PR_MESSAGE_SIZE>().value_or(0))});
    ExpectReads(Chosen(all, read));
}

} // namespace varden::tests
