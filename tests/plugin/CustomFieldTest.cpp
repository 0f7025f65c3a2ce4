// Custom fields: entered in a folder's list, written through the item, read back as named properties.
#include "FieldTest.h"
#include "ItemClasses.h"

#include "standin/mailbox/Tags.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class CustomFieldTest : public FieldTest {
protected:
    CustomFieldTest() : FieldTest(L"Inbox") {}

    std::wstring SetCustom(const std::wstring& field, const std::wstring& data, const wchar_t* type) {
        return Call(L"VARD_SetCustomFieldData", {field, data, type});
    }
    std::wstring GetCustom(const std::wstring& field) { return Call(L"VARD_GetCustomFieldData", {field}); }
    std::wstring Create(const wchar_t* field, const wchar_t* type) {
        return Call(L"VARD_CreateCustomField", {field, type});
    }
    /// The type of a field of the folder's list; 0 for none of the name.
    std::int32_t TypeOfField(const std::wstring& name) {
        for (const UserField& field : Home().UserFields()) {
            if (field.name == name) {
                return field.type;
            }
        }
        return 0;
    }
};

struct CustomWrite {
    const wchar_t* type;
    std::int32_t number; ///< OlUserPropertyType
    const wchar_t* data;
    std::wstring read;
};

TEST_F(CustomFieldTest, EveryTypeOfFieldIsWrittenAndReadBack) {
    const std::vector<CustomWrite> writes{
        {L"Currency", 14, L"12.5", L"12.5"},
        {L"currency", 14, L"-0.0625", L"-0.0625"},
        {L"Date", 5, L"3/1/2026", DateAsShown(L"3/1/2026")},
        {L"Time", 5, L"3/1/2026 2:30 PM", DateAsShown(L"3/1/2026 2:30 PM")},
        {L"DATETIME", 5, L"3/1/2026 2:30 PM", DateAsShown(L"3/1/2026 2:30 PM")},
        {L"Duration", 7, L"90 minutes", L"90"},
        {L"Duration", 7, L"long", L"0"},
        {L"Keywords", 11, L"one", L"one"},
        {L"Keywords", 11, L"one\rtwo words\rthree", L"one\rtwo words\rthree"},
        {L"Keywords", 11, L"a\r\rb", L"a\r\rb"}, // empty ones keep their place
        {L"Keywords", 11, L"a\r", L"a\r"},
        {L"Keywords", 11, L"\ra\rb", L"a\rb"}, // but not in front of the first return
        {L"Keywords", 11, L"\r\ra", L"\ra"},
        {L"Number", 3, L"1.5", L"1.500000"},
        {L"Number", 3, L"none", L"0.000000"},
        {L"Percent", 12, L"0.25", L"0.250000"},
        {L"Text", 1, L"Zürich \r 2", L"Zürich \r 2"},
        {L"Text", 1, L"", L""},
        {L"YesNo", 6, L"yes", L"True"},
        {L"yesno", 6, L"TRUE", L"True"},
        {L"YesNo", 6, L"1", L"False"},
        {L"YesNo", 6, L"No", L"False"},
    };
    New(L"Mail");
    int place = 0;
    for (const CustomWrite& each : writes) {
        SCOPED_TRACE(testing::PrintToString(each.type) + testing::PrintToString(each.data));
        const std::wstring field = L"Field " + std::to_wstring(++place);
        EXPECT_EQ(SetCustom(field, each.data, each.type), L"0") << testing::PrintToString(LastErrorText());
        EXPECT_EQ(GetCustom(field), each.read);
        EXPECT_EQ(LastErrorText(), L"Success");
    }
    EXPECT_EQ(Call(L"VARD_SetCustomFieldData", {L"Plain", L"12"}), L"0"); // Text without a type
    EXPECT_EQ(GetCustom(L"Plain"), L"12");
}

TEST_F(CustomFieldTest, DataThatDoesNotConvertIsWrittenAsNothing) {
    New(L"Mail");
    EXPECT_EQ(SetCustom(L"When", L"3/1/2026", L"Date"), L"0");
    EXPECT_EQ(SetCustom(L"When", L"soon", L"Date"), L"0") << testing::PrintToString(LastErrorText());
    EXPECT_EQ(GetCustom(L"When"), L"");
    EXPECT_EQ(SetCustom(L"Price", L"cheap", L"Currency"), L"0") << testing::PrintToString(LastErrorText());
    EXPECT_EQ(LastErrorCode(), 0);
}

TEST_F(CustomFieldTest, AFieldThatIsThereKeepsItsType) {
    Open({.subject = L"Order"});
    EXPECT_EQ(SetCustom(L"Price", L"10", L"Number"), L"0");
    EXPECT_EQ(SetCustom(L"price", L"11", L"Text"), L"0"); // found without regard to case
    EXPECT_EQ(GetCustom(L"Price"), L"11.000000");
    ExpectFailure(L"VARD_SetCustomFieldData", {L"Price", L"eleven", L"Text"}, -1097,
                  L"MAPI Subsystem error\rError: 80020005\r\r" // no name of MAPI's
                  L"Failed to set Custom Field Value");
    EXPECT_EQ(GetCustom(L"Price"), L"11.000000");
    EXPECT_EQ(Stored().properties.Find(PROP_TAG(PT_DOUBLE, Home().Names().Id({kPsPublicStrings, L"Price"}))),
              nullptr); // the record isn't saved
}

TEST_F(CustomFieldTest, WhateverTypeAPropertyHasIsReadAsText) {
    const std::vector<std::tuple<const wchar_t*, PropertyValue, const wchar_t*>> properties{
        {L"Narrow", std::string("abc"), L"abc"},
        {L"Wide", L"\u00fc\u4e2d", L"\u00fc\u4e2d"},
        {L"Short", std::int16_t{5}, L""},
        {L"Blob", Bytes{1, 2}, L""},
        {L"Long", -7, L"-7"},
        {L"List", Strings{L"a", L"", L"c"}, L"a\r\rc"},
        {L"Empty list", Strings{}, L""},
        {L"Numbers", std::vector<std::int32_t>{1, 2}, L""},
        {L"No date", Utc(4501, 1, 1), L""},
        {L"Late", SysTime{~0ull}, L""},
    };
    MessageToAdd order{.subject = L"Order"};
    for (const auto& [name, value, text] : properties) {
        Put(order, {StoredProperty(kPsPublicStrings, name, value)});
    }
    Home().Names().Id({kPsPublicStrings, L"Known"}, true);
    Put(order, {StoredProperty(kPsPublicStrings, L"Early", SysTime{0})});
    Open(order);
    for (const auto& [name, value, text] : properties) {
        EXPECT_EQ(GetCustom(name), text) << testing::PrintToString(name);
        EXPECT_EQ(LastErrorCode(), 0);
    }
    EXPECT_EQ(GetCustom(L"Known"), L"");
    EXPECT_NE(GetCustom(L"Early"), kError);
}

TEST_F(CustomFieldTest, AFieldThatCannotBeReadIsMissing) {
    const std::wstring missing = L"Custom field does not exist";
    ExpectFailure(L"VARD_GetCustomFieldData", {L""}, -1011, L"Missing Field Name Parameter");
    ExpectFailure(L"VARD_GetCustomFieldData", {L"Price"}, errors::kUnhandled); // a folder, but no record
    Open({.subject = L"Order"});
    ExpectFailure(L"VARD_GetCustomFieldData", {L"Nobody has it"}, -1019,
                  missing + L"\rField does not have an ID");
    SetCustom(L"Price", L"10", L"Number");
    ExpectFaults(
        L"VARD_GetCustomFieldData", {L"Price"},
        {{L"IMessage::GetIDsFromNames", {-1019, missing}},
         {L"IMessage::GetProps", {-1019, missing + L"\rError: 80070005\rError getting custom filed value"}}});
}

TEST_F(CustomFieldTest, WritesThatFailAreToldStepByStep) {
    ExpectFailure(L"VARD_SetCustomFieldData", {L"Price", L"10", L"Number"}, errors::kNoRecord);
    Open({.subject = L"Order"});
    ExpectFailure(L"VARD_SetCustomFieldData", {L"", L"10", L"Number"}, -1011,
                  L"Missing Field Name Parameter");
    ExpectFailure(L"VARD_SetCustomFieldData", {L"Price", L"10", L"Money"}, -1094,
                  L"Invalid type for custom field");
    Fail(L"UserProperties::Add"); // left to the function around it
    ExpectComError(L"VARD_SetCustomFieldData", {L"Price", L"10", L"Number"});
    ExpectFaults(L"VARD_SetCustomFieldData", {L"Price", L"10", L"Number"},
                 {Denied(L"UserProperties::Find", L"Unable to access user properties field"),
                  // Successes that give nothing.
                  {L"UserProperties::Add", errors::Mapi(L"Unable to create custom field"), S_FALSE},
                  {L"MailItem::UserProperties", {-1093, L"User properties unavailable for item"}, S_FALSE},
                  Denied(L"UserProperty::put_Value", L"Failed to set Custom Field Value")});
    EXPECT_EQ(SetCustom(L"Price", L"10", L"Number"), L"0");
}

TEST_F(CustomFieldTest, EveryKindButNotesHasCustomFields) {
    for (const std::wstring messageClass : kItemClasses) {
        SCOPED_TRACE(testing::PrintToString(messageClass));
        Open({.messageClass = messageClass, .subject = L"Order"});
        if (messageClass == L"IPM.StickyNote") {
            ExpectFailure(L"VARD_SetCustomFieldData", {L"Price", L"10", L"Number"}, -1092,
                          L"Item does not support custom fields");
            continue;
        }
        EXPECT_EQ(SetCustom(L"Price", L"10", L"Number"), L"0") << testing::PrintToString(LastErrorText());
        EXPECT_EQ(GetCustom(L"Price"), L"10.000000");
    }
    Open({.messageClass = L"IPM.Storage"});
    EXPECT_EQ(SetCustom(L"Price", L"10", L"Number"), L"0");
    EXPECT_EQ(GetCustom(L"Price"), L""); // Outlook gives no MAPI view of an open storage item
}

TEST_F(CustomFieldTest, AFieldIsEnteredInTheFolderWithoutAnItemOfItsOwn) {
    EXPECT_EQ(Create(L"Price", L"currency"), L"0") << testing::PrintToString(LastErrorText());
    EXPECT_TRUE(Home().Messages().empty());
    EXPECT_EQ(TypeOfField(L"Price"), 14);
    AddMessage(Home(), {.subject = L"Order"});
    MailboxTest::Open(L"/Inbox");
    Call(L"VARD_GetFirstRecord");
    const std::vector<std::pair<const wchar_t*, std::int32_t>> types{
        {L"Date", 5},   {L"Time", 5},     {L"DateTime", 5}, {L"Duration", 7}, {L"Keywords", 11},
        {L"Number", 3}, {L"Percent", 12}, {L"Text", 1},     {L"YesNo", 6}};
    for (const auto& [type, number] : types) {
        const std::wstring name = std::wstring(L"My ") + type;
        EXPECT_EQ(Create(name.c_str(), type), L"0") << testing::PrintToString(LastErrorText());
        EXPECT_EQ(TypeOfField(name), number) << testing::PrintToString(type);
    }
    EXPECT_EQ(Home().Messages().size(), 1u);
    // Answers to a task request have them like the request itself.
    for (const wchar_t* messageClass : {L"IPM.TaskRequest.Accept", L"IPM.TaskRequest.Decline"}) {
        ASSERT_EQ(Home().RemoveMessage(*Home().Messages().front()), S_OK);
        AddMessage(Home(), {.messageClass = messageClass});
        MailboxTest::Open(L"/Inbox");
        EXPECT_EQ(Create(messageClass, L"Number"), L"0") << testing::PrintToString(LastErrorText());
        EXPECT_EQ(TypeOfField(messageClass), 3);
    }
    ExpectNoCurrentRecord(); // the record was let go
}

TEST_F(CustomFieldTest, FieldsThatCannotBeEnteredAreToldStepByStep) {
    ExpectFailure(L"VARD_CreateCustomField", {L"", L"Text"}, -1011, L"Missing Field Name Parameter");
    ExpectFailure(L"VARD_CreateCustomField", {L"Price", L"Money"}, -1090,
                  L"Unable to access field or invalid custom field type");
    ExpectFailure(L"VARD_CreateCustomField", {L"Price", L""}, -1090, // no type without a word
                  L"Unable to access field or invalid custom field type");
    for (const wchar_t* member : {L"Items::Add", L"MailItem::UserProperties", L"UserProperties::Add"}) {
        SCOPED_TRACE(testing::PrintToString(member));
        Fail(member);
        ExpectFailureLike(L"VARD_CreateCustomField", {L"Price", L"Text"},
                          {999, L"\rError: 80070005\nMessage:"});
    }
    const std::wstring unavailable = L"User properties unavailable for item";
    ExpectFaults(
        L"VARD_CreateCustomField", {L"Price", L"Text"},
        {{L"MailItem::UserProperties", {-1093, unavailable}, S_FALSE},
         {L"UserProperties::Add", {-1093, unavailable + L"\rUnable to create custom property"}, S_FALSE}});
    for (const wchar_t* messageClass : {L"IPM.Document.txtfile", L"IPM.StickyNote", L"IPM.Sharing"}) {
        AddMessage(Home(), {.messageClass = messageClass});
        MailboxTest::Open(L"/Inbox");
        ExpectFailure(L"VARD_CreateCustomField", {L"Price", L"Text"}, errors::kUnknownKind);
        ASSERT_EQ(Home().RemoveMessage(*Home().Messages().front()), S_OK);
    }
    EXPECT_TRUE(Home().UserFields().empty());
}

class CustomFieldSessionTest : public MailboxTest {};

TEST_F(CustomFieldSessionTest, CustomFieldsNeedAFolder) {
    ExpectFailure(L"VARD_GetCustomFieldData", {L""}, errors::kNoFolder);
    ExpectFailure(L"VARD_CreateCustomField", {L"", L"Money"}, errors::kNoFolder);
    OpenRecord(Add({.subject = L"Order"})); // a folder, but no list of items
    ExpectFailureLike(L"VARD_CreateCustomField", {L"Price", L"Text"}, {999, L"\rError: 80004003\nMessage:"});
}

} // namespace
} // namespace varden::tests
