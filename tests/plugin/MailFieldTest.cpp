// The fields that all kinds of record have in common, and those of a mail, both ways. What a field should
// read comes from the mailbox, and what it wrote is looked up there.
#include "FieldTest.h"

#include "standin/mailbox/Tags.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class MailFieldTest : public FieldTest {
protected:
    MailFieldTest() : FieldTest(L"Inbox") {}

    /// By the one field that does so: the record's own save would send the mail.
    void Save() override { EXPECT_EQ(Set(L"Flag Status", L"None"), L"0"); }
    void NewMail() { New(L"Mail"); }
    /// Makes a mail to these recipients the current record.
    void OpenMailTo(std::vector<PropertyBag> recipients) { Open({}, std::move(recipients)); }
};

TEST_F(MailFieldTest, FieldsThatEveryKindHasComeFromTheMessage) {
    const SysTime sent = Utc(2026, 3, 1, 7, 5), received = Utc(2026, 7, 1, 23, 59);
    const SysTime deferred = Utc(2026, 1, 2, 3, 4), due = Utc(2026, 2, 3, 4, 5);
    ExpectShown({.subject = L"Report"},
                {{L"Sent On", LocalText(sent), {PR_CLIENT_SUBMIT_TIME, sent}},
                 {L"Received Time", LocalText(received), {PR_MESSAGE_DELIVERY_TIME, received}},
                 {L"Deferred Delivery Time", LocalText(deferred), {PR_DEFERRED_DELIVERY_TIME, deferred}},
                 {L"Flag Due By", LocalText(due), {PR_REPLY_TIME, due}},
                 {L"Created", LocalText(sent), {PR_CREATION_TIME, sent}},
                 {L"Creation Time", LocalText(sent)},
                 {L"Modify", LocalText(received), {PR_LAST_MODIFICATION_TIME, received}},
                 {L"Last Modified", LocalText(received)},
                 // No line feeds, and without its last character.
                 {L"Header", L"From: a\rTo: b", {PR_TRANSPORT_MESSAGE_HEADERS_W, L"From: a\r\nTo: b\r\n"}},
                 {L"Received By Entry Name", L"Front Desk", {PR_RECEIVED_BY_NAME_W, L"Front Desk "}},
                 {L"Received By EntryID", L"01ABFF", {PR_RECEIVED_BY_ENTRYID, Bytes{0x01, 0xAB, 0xFF}}},
                 {L"Received On Behalf Of Entry Name", L""}, // missing
                 {L"Received On Behalf Of EntryID", L""},
                 {L"Sender Email Address", L"a@example.com", {PR_SENDER_EMAIL_ADDRESS_W, L"a@example.com "}},
                 // A text read as a blob.
                 {L"Sender Email Type", L"53004D0054005000", {PR_SENDER_ADDRTYPE_W, L"SMTP"}},
                 {L"Sent On Behalf Of", L"Ann", {PR_SENT_REPRESENTING_NAME_W, L"Ann "}},
                 {L"Reminder Time", L""}});
    ExpectShown({.subject = L"x"},
                {{L"Sent On", L""}, {L"Deferred Delivery Time", L""}, {L"Flag Due By", L""}});
}

PropertyBag Recipient(std::int32_t type, const wchar_t* name, const wchar_t* address, const wchar_t* smtp) {
    PropertyBag row;
    row.Set<PR_RECIPIENT_TYPE>(type);
    row.Set<PR_DISPLAY_NAME_W>(name);
    row.Set<PR_ADDRTYPE_W>(smtp && *smtp ? L"EX" : L"SMTP");
    if (address) {
        row.Set<PR_EMAIL_ADDRESS_W>(address);
    }
    if (smtp) {
        row.Set<0x39FE001F>(smtp);
    }
    return row;
}

TEST_F(MailFieldTest, RecipientsAreReadAsAddresses) {
    OpenMailTo({Recipient(MAPI_TO, L"A", L"/o=x/cn=a", L"a@example.com"),
                Recipient(MAPI_CC, L"C", L"c@example.com", nullptr),
                Recipient(MAPI_TO, L"B", L"/o=x/cn=b", nullptr),
                Recipient(MAPI_TO, L"Nobody", nullptr, nullptr),
                Recipient(MAPI_BCC, L"D", L"d@example.com", nullptr),
                Recipient(MAPI_TO, L"E", L"e@example.com", nullptr)});
    ExpectReads({{L"To", L"a@example.com, /o=x/cn=b, e@example.com"},
                 {L"Cc", L"c@example.com"},
                 {L"Bcc", L"d@example.com"}});
    // All rows but the first two are asked for once: what isn't given then isn't told.
    Varden().Watch().Deviate().mostRowsAtOnce = 2;
    ExpectReads({{L"To", L"a@example.com, /o=x/cn=b"}});
    Varden().Watch().Deviate() = {};
    ExpectUnreadable({L"to"});
}

TEST_F(MailFieldTest, ACopyToSomebodyWithoutAnAddressEndsTheList) {
    OpenMailTo({Recipient(MAPI_CC, L"A", L"a@example.com", nullptr),
                Recipient(MAPI_CC, L"B", nullptr, nullptr),
                Recipient(MAPI_CC, L"C", L"c@example.com", nullptr)});
    EXPECT_EQ(Get(L"Cc"), L"a@example.com"); // what was built stays
    EXPECT_EQ(LastErrorCode(), -1097);
    EXPECT_EQ(LastErrorText(), L"MAPI Subsystem error\rInvalid SMTP address in record");
}

TEST_F(MailFieldTest, EachStepOfReadingRecipientsThatMapiRefusesIsTold) {
    OpenMailTo({Recipient(MAPI_TO, L"A", L"a@example.com", nullptr)});
    const std::vector<std::pair<const wchar_t*, const wchar_t*>> steps{
        {L"IMessage::GetRecipientTable", L"Unable to get recipients table"},
        {L"IMAPITable::SetColumns", L"Unable to set recipients columns"},
        {L"IMAPITable::GetRowCount", L"Unable to get recipient count"},
        {L"IMAPITable::SeekRow", L"Unable to seek row"},
        {L"IMAPITable::QueryRows", L"Unable to Query  row"},
    };
    for (const auto& [member, text] : steps) {
        Fail(member);
        EXPECT_EQ(Get(L"To"), L"");
        EXPECT_EQ(LastErrorText(), errors::Denied(text).text);
    }
    EXPECT_EQ(Get(L"To"), L"a@example.com");
}

TEST_F(MailFieldTest, TheSenderIsLookedUpInTheAddressBook) {
    const Bytes known = World().Addresses().Entries()[2]->EntryId();
    const Bytes stranger = MakeOneOffEntryId(L"A", L"SMTP", L"a@elsewhere.example");
    ExpectShown({}, {{L"From", L"service.north@example.com", {PR_SENDER_ENTRYID, known}},
                     {L"From1", L"service.north@example.com"},
                     {L"From2", L"service.north@example.com"}});
    Fail(L"IAddrBook::OpenEntry", E_FAIL);
    ExpectReads({{L"From", L""}}); // no error
    ExpectShown({}, {{L"From", L"a@elsewhere.example", {PR_SENDER_ENTRYID, stranger}}});
}

TEST_F(MailFieldTest, WhatIsWrittenIsReadBackInTheFieldsOwnWords) {
    const std::wstring html = L"<html><body><p>Hi</p></body></html>", subject = L"\u00dcber\u2026 \U0001F4E7";
    ExpectOrdinary(L"IPM.Note", kUsuallyWritten,
                   {L"ID", L"In Folder", L"Unread", L"Conversation Topic", L"Conversation Index", L"Size"});
    ExpectReads({{L"Body Format", L"Plain Text"}});
    NewMail();
    ExpectWrites({{L"Subject", subject, subject},
                  {L"Importance", L"Nonsense that begins so", L"Normal"},
                  {L"Importance", L"Low", L"Low"},
                  {L"Sensitivity", L"Confidential", L"Confidential"},
                  {L"Sensitivity", L"Private", L"Private"},
                  {L"Sensitivity", L"N", L"Normal"},
                  {L"Auto Forwarded", L"True", L"True"},
                  {L"Auto Forwarded", L"true", L"False"},
                  {L"Receipt Requested", L"T", L"True"},
                  {L"Receipt Requested", L"Yes", L"False"},
                  {L"Originator Delivery Requested", L"True", L"True"},
                  {L"Form Name", L"IPM.Note.Order", L"IPM.Note.Order"},
                  {L"Remote Status", L"Marked For Copy", L"Marked For Copy"},
                  {L"Remote Status", L"Unmarked", L"Unmarked"},
                  {L"Expires", L"none", L"None"},
                  {L"Expires", L"11/15/2026 3:45 PM", DateAsShown(L"11/15/2026 3:45 PM")},
                  {L"Defer Until", L"", L"None"},
                  {L"HTML Body", html, html}});
    EXPECT_EQ(Get(L"Message Class"), L"IPM.Note.Order");
    EXPECT_EQ(Call(L"VARD_VerifyFieldData", {L"Importance", L"low"}), L"1"); // with case
}

TEST_F(MailFieldTest, ValuesThatDoNotConvertAreRefusedAndChangeNothing) {
    NewMail();
    Set(L"Importance", L"High");
    Set(L"Expires", L"11/15/2026 3:45 PM");
    ExpectInvalid({{L"Importance", {L"high", L"", L"Very"}},
                   {L"Sensitivity", {L"private", L"P"}},
                   {L"Flag Status", {L"Yes"}},
                   {L"Remote Status", {L"unmarked", L"M"}},
                   {L"Mark As Task", {L"someday"}},
                   {L"Expires", {L"someday"}},
                   {L"Header", {L"x"}},
                   {L"Received Time", {L"x"}},
                   {L"RTF Body", {L"x"}},
                   {L"Sent On", {L"1/1/2026"}}});
    ExpectReads({{L"Importance", L"High"}, {L"Expires", DateAsShown(L"11/15/2026 3:45 PM")}});
}

TEST_F(MailFieldTest, NamesAreExactAndEachSideKnowsItsOwn) {
    NewMail();
    ExpectUnreadable({L"subject", L"Subject ", L"Form name", L"Send On Behalf Of", L"Mark As Task",
                      L"No Such", L"Attachments", L"E-mail"});
    ExpectUnwritable({L"", L"subject", L"Message Class", L"Is Marked As Task", L"Task Completed Date",
                      L"From1", L"Sent On Behalf Of", L"Contacts", L"Creator Name"});
    EXPECT_EQ(Call(L"VARD_VerifyFieldData", {L"No Such", L"x"}), L"1"); // a failing read isn't told apart
    EXPECT_EQ(LastErrorCode(), -1022);
}

TEST_F(MailFieldTest, ReadOnlyNamesAreRefusedForEveryRecordAndWithoutOne) {
    for (const wchar_t* kind :
         {L"", L"Mail", L"Contacts", L"Tasks", L"Calendar", L"Journal", L"Distribution List"}) {
        SCOPED_TRACE(testing::PrintToString(kind));
        if (*kind) {
            New(kind);
        }
        ExpectReadOnly({L"ID", L"In Folder", L"Is Conflict", L"Modify", L"Size", L"Unread", L"Class",
                        L"Created", L"Conversation Index", L"Conversation Topic", L"IsRecurring",
                        L"Organizer"});
    }
}

TEST_F(MailFieldTest, WithoutARecordThereAreNoFields) {
    ExpectNoCurrentRecord();
    ExpectFailure(L"VARD_SetFieldData", {L"Subject", L"x"}, errors::kNoRecord);
}

TEST_F(MailFieldTest, ABodysLineEndsAreLineFeeds) {
    ExpectShown({.body = L"one\r\ntwo\rthree\nfour\r\n\r\n"}, {{L"Body", L"one\ntwo\nthree\nfour\n\n"}});
    // Too long for one property: through a stream, which costs the last character.
    ExpectShown({.body = std::wstring(200000, L'x')}, {{L"Body", std::wstring(199999, L'x')}});
    NewMail();
    ExpectWrites({{L"Body", L"Hello", L"Hello"}});
    ExpectReads({{L"Body Format", L"Plain Text"}});
}

TEST_F(MailFieldTest, BodyFormatsDependOnOutlooksVersion) {
    NewMail();
    for (const wchar_t* data : {L"Plain Text", L"Rich Text", L"nonsense"}) {
        ExpectWrites({{L"Body Format", data, L"HTML"}}); // not even looked at
    }
    Outlook().SetVersionText(L"10.0.6");
    ExpectWrites({{L"Body Format", L"HTML", L"HTML"}});
    ExpectInvalid({{L"Body Format", {L"html"}}});
    ExpectWrites({{L"Body", L"text", L"text"}});
    ExpectReads({{L"Body Format", L"Rich Text"}});
}

TEST_F(MailFieldTest, TheRtfBodyIsDecompressed) {
    // "{\rtf1\ansi\ansicpg1252\pard hello world}" as [MS-OXRTFCP] 3.2.1 compresses it.
    const Bytes compressed{0x2d, 0x00, 0x00, 0x00, 0x2b, 0x00, 0x00, 0x00, 0x4c, 0x5a, 0x46, 0x75, 0xf1,
                           0xc5, 0xc7, 0xa7, 0x03, 0x00, 0x0a, 0x00, 0x72, 0x63, 0x70, 0x67, 0x31, 0x32,
                           0x35, 0x42, 0x32, 0x0a, 0xf3, 0x20, 0x68, 0x65, 0x6c, 0x09, 0x00, 0x20, 0x62,
                           0x77, 0x05, 0xb0, 0x6c, 0x64, 0x7d, 0x0a, 0x80, 0x0f, 0xa0};
    const std::wstring text = L"{\\rtf1\\ansi\\ansicpg1252\\pard hello world}\r\n";
    ExpectShown({}, {{L"RTF Body", text, {PR_RTF_COMPRESSED, compressed}}});
    MessageToAdd damaged;
    damaged.more.Set<PR_RTF_COMPRESSED>(Bytes(8, 0x01));
    Open(damaged);
    EXPECT_NE(Get(L"RTF Body"), kError); // the reason stands for the text, without an error
    EXPECT_EQ(LastErrorCode(), 0);
}

TEST_F(MailFieldTest, FlagsAreWrittenAsLettersAndSavedAtOnce) {
    NewMail();
    ExpectReads({{L"Flag Icon", L"None"}, {L"Flag Status", L"None"}});
    const std::vector<std::pair<const wchar_t*, const wchar_t*>> icons{
        {L"Purple", L"1"}, {L"Orange", L"2"}, {L"Green", L"3"}, {L"Yellow", L"4"},
        {L"Blue", L"5"},   {L"Red", L"6"},    {L"Clear", L""},  {L"red", L""}};
    for (const auto& [word, number] : icons) {
        ExpectWrites({{L"Flag Icon", word, number}});
        EXPECT_EQ(Get(L"Flag Status"), L"Marked");
    }
    ASSERT_EQ(Home().Messages().size(), 1u);
    for (const auto& [status, icon] : std::vector<std::pair<const wchar_t*, const wchar_t*>>{
             {L"Complete", L"1"}, {L"None", L""}, {L"Marked", L"6"}}) {
        ExpectWrites({{L"Flag Status", status, status}});
        EXPECT_EQ(Get(L"Flag Icon"), icon);
    }
    ExpectStored({kPrFlagStatus, 2});
}

TEST_F(MailFieldTest, RecipientsAreWrittenWithCommasOrSemicolons) {
    NewMail();
    EXPECT_EQ(Set(L"To", L"Back Office, warehouse@example.com"), L"0");
    EXPECT_EQ(Set(L"Cc", L"Warehouse"), L"0");
    EXPECT_EQ(Set(L"Bcc", L"a@example.com;b@example.com"), L"0");
    Save();
    EXPECT_EQ(Stored().recipients.size(), 5u);
}

TEST_F(MailFieldTest, ANameThatResolvesBecomesTheSender) {
    NewMail();
    EXPECT_EQ(Set(L"From", L"Service North"), L"0");
    EXPECT_EQ(Set(L"Send On Behalf Of", L"warehouse"), L"0");
    Save();
    const AddressEntry& sender = *World().Addresses().Entries()[2];
    const AddressEntry& represented = *World().Addresses().Entries()[4];
    const Bytes searchKey = AddressSearchKey(L"EX", sender.Address());
    for (const StoredProperty& property :
         std::vector<StoredProperty>{{PR_SENDER_ENTRYID, sender.EntryId()},
                                     {PR_SENDER_NAME_W, L"Service North"},
                                     {PR_SENDER_EMAIL_ADDRESS_W, sender.Address()},
                                     {PR_SENDER_SEARCH_KEY, searchKey},
                                     {PR_SENT_REPRESENTING_ENTRYID, represented.EntryId()},
                                     {PR_SENT_REPRESENTING_NAME_W, L"Warehouse"},
                                     {PR_SENT_REPRESENTING_ADDRTYPE_W, L"EX"},
                                     {PR_SENT_REPRESENTING_EMAIL_ADDRESS_W, represented.Address()},
                                     // The represented sender's key stays that of the first.
                                     {PR_SENT_REPRESENTING_SEARCH_KEY, searchKey}}) {
        ExpectStored(property);
    }
}

TEST_F(MailFieldTest, ASenderThatDoesNotResolveIsRefused) {
    NewMail();
    for (const wchar_t* field : {L"From", L"Send On Behalf Of"}) {
        ExpectFailure(L"VARD_SetFieldData", {field, L"Nobody"},
                      errors::NotFound(L"Unable to set Sent On Behalf - Failed to resolve"));
        ExpectFailure(L"VARD_SetFieldData", {field, L"Service"},
                      errors::Mapi(L"Error: 80040700\rMAPI_E_AMBIGUOUS_RECIP\r"
                                   L"Unable to set Sent On Behalf - Failed to resolve"));
        ExpectFaults(L"VARD_SetFieldData", {field, L"Warehouse"},
                     {Denied(L"IMAPISession::OpenAddressBook",
                             L"Unable to set Sent On Behalf - unable to open Address Book.")});
    }
    Save();
    EXPECT_FALSE(Stored().properties.Contains(PR_SENT_REPRESENTING_NAME_W));
}

TEST_F(MailFieldTest, TheTaskFlagIsSetByAWordAndOnlyThenItsFields) {
    NewMail();
    ExpectReads({{L"Is Marked As Task", L"False"}, {L"Task Due Date", L"None"}});
    for (const wchar_t* field : {L"Task Subject", L"Task Due Date", L"to do task ordinal"}) {
        ExpectFailure(L"VARD_SetFieldData", {field, L"1/1/2027"}, -1023,
                      L"Item operation called without opening/creating a record\r"
                      L"Setting items task field without marking as a task");
    }
    for (const wchar_t* word : {L"This Week", L"none", L"TODAY", L"tomorrow", L"next week"}) {
        EXPECT_EQ(Set(L"Mark As Task", word), L"0");
        ExpectReads({{L"Is Marked As Task", L"True"}});
    }
    EXPECT_EQ(Set(L"task subject", L"Call back"), L"0");
    EXPECT_EQ(Set(L"Task Due Date", L"11/15/2026"), L"0");
    for (const wchar_t* clearing : {L"None", L"", L"soon"}) {
        ExpectFailure(L"VARD_SetFieldData", {L"Task Due Date", clearing}, -1089,
                      L"Invalid value for field\rcannot parse date");
    }
    ExpectReads({{L"Task Subject", L"Call back"}, {L"Task Due Date", L"11/15/2026"}});
    EXPECT_EQ(Set(L"Mark As Task", L"Clear"), L"0");
    ExpectReads({{L"Is Marked As Task", L"False"}});
    Outlook().SetVersionText(L"11.0.8");
    const std::wstring tooOld =
        L"This Version of Outlook is not supported.\rField is not supported for this OL version";
    ExpectFailure(L"VARD_GetFieldData", {L"Task Subject"}, -1002, tooOld);
    ExpectFailure(L"VARD_SetFieldData", {L"Mark As Task", L"today"}, -1002, tooOld);
}

TEST_F(MailFieldTest, TextsAndBlobsThatCannotBeOpenedAreErrorsWithTheirReason) {
    ExpectShown({}, {{L"Header", L"From: a", {PR_TRANSPORT_MESSAGE_HEADERS_W, L"From: a\r\n"}},
                     {L"Received By EntryID", L"010203", {PR_RECEIVED_BY_ENTRYID, Bytes{1, 2, 3}}}});
    const wchar_t* const denied = L"The caller has insufficient permissions to access the property.";
    const wchar_t* const noInterface = L"Interface not supported";
    const wchar_t* const noSupport =
        L"The object cannot provide access to this property through the requested interface.";
    const wchar_t* const unspecified = L"The property type in the tag is set to PT_UNSPECIFIED.";
    const std::vector<std::tuple<HRESULT, const wchar_t*, const wchar_t*>> reasons{
        {E_ACCESSDENIED, denied, denied},
        {E_NOINTERFACE, noInterface, noInterface},
        {MAPI_E_NO_SUPPORT, noSupport, noSupport},
        {E_INVALIDARG, unspecified, unspecified},
        {E_FAIL, L"Unknown Error", L"ERROR: 80004005 MAPI CALL FAILED"},
        {static_cast<HRESULT>(0x80001234), L"Unknown Error", L"ERROR: 80001234  UNKNOWN MAPI ERROR"},
    };
    for (const auto& [status, text, blob] : reasons) {
        ExpectFaults(L"VARD_GetFieldData", {L"Header"},
                     {{L"IMessage::OpenProperty", errors::Mapi(text), status}});
        ExpectFaults(L"VARD_GetFieldData", {L"Received By EntryID"},
                     {{L"IMessage::OpenProperty", errors::Mapi(blob), status}});
    }
    Fail(L"IMessage::OpenProperty", MAPI_E_NOT_FOUND);
    ExpectReads({{L"Header", L""}});
}

TEST_F(MailFieldTest, AWriteThatTheStoreRefusesIsToldByTheLastErrorAlone) {
    NewMail();
    for (const HRESULT status : {E_ACCESSDENIED, E_INVALIDARG, MAPI_E_COMPUTED}) {
        Fail(L"MAPI32::HrSetOneProp", status);
        EXPECT_EQ(Set(L"Flag Icon", L"Red"), L"0");
        EXPECT_EQ(LastErrorCode(), -1097);
    }
    Fail(L"IMessage::SaveChanges", MAPI_E_NOT_ENOUGH_DISK);
    EXPECT_EQ(Set(L"Flag Icon", L"Red"), L"0");
    EXPECT_EQ(LastErrorText(), L"MAPI Subsystem error\rError: 8004010D\rMAPI_E_NOT_ENOUGH_DISK");
}

} // namespace
} // namespace varden::tests
