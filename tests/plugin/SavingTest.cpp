// What VARD_SaveRecord saves, sends and answers, for each kind of record and each option.
#include "MailboxTest.h"

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class SavingTest : public MailboxTest {
protected:
    void New(const wchar_t* module, const std::wstring& subject, const wchar_t* to = L"") {
        LogOn(); // no folder is current: the record is made where its kind belongs
        MailboxTest::New(module);
        ASSERT_EQ(Set(L"Subject", subject), L"0");
        if (*to) {
            ASSERT_EQ(Set(L"To", to), L"0");
        }
    }
    void NewDraft(const std::wstring& subject) {
        LogOn();
        Open(L"/Drafts");
        MailboxTest::New(L"Mail");
        ASSERT_EQ(Set(L"Subject", subject), L"0");
        ASSERT_EQ(Set(L"To", L"Back Office"), L"0");
    }
    bool HasRecord() { return Get(L"Message Class") != kError; }
    std::wstring SubjectAt(const wchar_t* path, const wchar_t* store = L"Front Desk") {
        const auto& messages = At(path, store).Messages();
        return messages.empty() ? L"(none)"
                                : messages.back()->Current().properties.GetOr<PR_SUBJECT_W>(L"(no subject)");
    }
};

TEST_F(SavingTest, ASavedRecordIsInItsFolderUnderTheAnswer) {
    const std::vector<std::pair<const wchar_t*, const wchar_t*>> modules{
        {L"Contacts", L"Contacts"},         {L"Tasks", L"Tasks"},     {L"Post", L"Inbox"},
        {L"Calendar", L"Calendar"},         {L"Journal", L"Journal"}, {L"Task Request", L"Tasks"},
        {L"Distribution List", L"Contacts"}};
    for (const auto& [module, folder] : modules) {
        New(module, module);
        EXPECT_EQ(SubjectAt(folder) == module, false) << "not before";
        const std::wstring id = Call(L"VARD_SaveRecord");
        ASSERT_TRUE(Find(id)) << testing::PrintToString(module);
        EXPECT_EQ(Find(id)->ParentFolder(), &At(folder));
        EXPECT_EQ(SubjectAt(folder), module);
        EXPECT_EQ(LastErrorText(), L"Success");
        EXPECT_TRUE(HasRecord());
        EXPECT_EQ(Set(L"Subject", L"changed"), L"0"); // it goes on
        EXPECT_EQ(Call(L"VARD_SaveRecord", {L""}), id) << "an empty word is none";
        EXPECT_EQ(SubjectAt(folder), L"changed");
    }
    MailboxTest::New(L"Note");
    EXPECT_EQ(Set(L"Body", L"Remember\r\nthe milk"), L"0");
    const std::wstring id = Call(L"VARD_SaveRecord");
    ASSERT_TRUE(Find(id));
    EXPECT_EQ(Find(id)->Current().properties.GetOr<PR_BODY_W>({}), L"Remember\r\nthe milk");
}

TEST_F(SavingTest, AWordThatDoesNotKeepTheRecordLetsGoOfIt) {
    for (const wchar_t* module : {L"Contacts", L"Tasks", L"Post", L"Journal", L"Distribution List"}) {
        for (const wchar_t* word : {L"keep open", L"Keep Open"}) {
            New(module, word);
            EXPECT_NE(Call(L"VARD_SaveRecord", {word}), kError);
            EXPECT_TRUE(HasRecord());
        }
        for (const wchar_t* word : {L"Send", L"DontSend", L"nonsense", L"keep open "}) {
            New(module, word);
            EXPECT_TRUE(Find(Call(L"VARD_SaveRecord", {word}))) << testing::PrintToString(word);
            EXPECT_FALSE(HasRecord());
        }
    }
    for (const wchar_t* messageClass : // messages that aren't mails
         {L"REPORT.IPM.Note.NDR", L"IPM.TaskRequest", L"IPM.Schedule.Meeting.Request"}) {
        const std::wstring id = Add({.messageClass = messageClass, .subject = L"old"});
        OpenRecord(id);
        EXPECT_EQ(Call(L"VARD_SaveRecord", {L"keep open"}), id) << testing::PrintToString(messageClass);
        EXPECT_TRUE(HasRecord());
        EXPECT_EQ(Call(L"VARD_SaveRecord", {L"DontSend"}), id);
        EXPECT_FALSE(HasRecord());
    }
    EXPECT_TRUE(At(L"Sent Items").Messages().empty()); // nothing of it is sent
}

TEST_F(SavingTest, ThereIsNothingToSaveWithoutARecordOfAKindThatIsSaved) {
    ExpectFailure(L"VARD_SaveRecord", {}, errors::kNoRecord);
    for (const wchar_t* messageClass :
         {L"IPM.Remote", L"IPM.Sharing", L"IPM.TaskRequest.Accept", L"IPM.TaskRequest.Decline",
          L"IPM.TaskRequest.Update", L"IPM.Document.txtfile"}) {
        OpenRecord(Add({.messageClass = messageClass}));
        ExpectFailure(L"VARD_SaveRecord", {L"DontSend"}, errors::kNoRecord);
        EXPECT_TRUE(HasRecord());
    }
}

TEST_F(SavingTest, AMailGoesOutUnlessToldNotTo) {
    const std::vector<Texts> options{{}, {L"Send"}, {L"keep open"}, {L"nonsense"}};
    for (const Texts& option : options) {
        const std::wstring subject = option.empty() ? L"no word" : option[0].AsText();
        NewDraft(subject);
        Set(L"Cc", L"warehouse@example.com");
        const std::wstring id = Call(L"VARD_SaveRecord", option);
        const auto parts = ParseObjectEntryId(FromHex(id).value_or(Bytes()));
        ASSERT_TRUE(parts) << testing::PrintToString(LastErrorText());
        EXPECT_EQ(parts->folder, At(L"Outbox").Id()); // from where it has gone out
        EXPECT_EQ(SubjectAt(L"Sent Items"), subject);
        EXPECT_EQ(SubjectAt(L"Inbox", L"Back Office"), subject);
        EXPECT_TRUE(At(L"Drafts").Messages().empty());
        EXPECT_TRUE(At(L"Outbox").Messages().empty());
        EXPECT_FALSE(HasRecord()); // whatever the word
        EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Drafts");
    }
    EXPECT_EQ(At(L"Inbox", L"Back Office").Messages().size(), options.size());
    const Message& delivered = *At(L"Inbox", L"Back Office").Messages().back();
    EXPECT_EQ(delivered.Current().properties.GetOr<PR_SENDER_NAME_W>({}), L"Front Desk");
    EXPECT_EQ(delivered.Current().recipients.size(), 2u);
}

TEST_F(SavingTest, AMailThatIsNotToBeSentStaysInItsFolder) {
    for (const wchar_t* word : {L"DontSend", L"Dont Send", L"dontsend", L"DONT SEND"}) {
        NewDraft(word);
        const std::wstring id = Call(L"VARD_SaveRecord", {word});
        ASSERT_TRUE(Find(id));
        EXPECT_EQ(Find(id)->ParentFolder(), &At(L"Drafts"));
        EXPECT_FALSE(HasRecord());
        // Opened anew, it can still be sent.
        OpenRecord(id);
        EXPECT_NE(Call(L"VARD_SaveRecord"), kError);
        EXPECT_EQ(SubjectAt(L"Inbox", L"Back Office"), word);
        EXPECT_FALSE(Find(id)); // it has moved on
    }
    EXPECT_TRUE(At(L"Drafts").Messages().empty());
}

TEST_F(SavingTest, AMailThatCannotGoOutStaysInTheOutbox) {
    for (const wchar_t* to : {L"", L"Service", L"Nobody Here"}) { // none, ambiguous, unknown
        const std::size_t before = At(L"Outbox").Messages().size();
        New(L"Mail", L"stays", to);
        ExpectFailure(L"VARD_SaveRecord", {}, errors::kNotSaved);
        EXPECT_EQ(At(L"Outbox").Messages().size(), before + 1);
        EXPECT_FALSE(HasRecord());
    }
    New(L"Mail", L"no message", L"Back Office");
    ExpectFaults(L"VARD_SaveRecord", {},
                 {{L"IMessage::SubmitMessage", errors::kNotSaved, MAPI_E_NO_SUPPORT}});
    EXPECT_TRUE(At(L"Inbox", L"Back Office").Messages().empty());
}

TEST_F(SavingTest, WhatOutlookRefusesIsToldAndLeavesTheRecord) {
    New(L"Contacts", L"Ann");
    Fail(L"ContactItem::Save");
    ExpectFailureLike(L"VARD_SaveRecord", {L"DontSend"}, {999, L"\rError: 80070005\nMessage:"});
    EXPECT_TRUE(HasRecord());
    EXPECT_NE(Call(L"VARD_SaveRecord", {L"DontSend"}), kError);
    New(L"Contacts", L"Bob");
    ExpectFaults(L"VARD_SaveRecord", {L"DontSend"}, // saved, it has no id to tell
                 {{L"ContactItem::EntryID", errors::kNotSaved, S_FALSE}});
    // A mail whose message can't be had in the Outbox isn't sent.
    for (const auto& [member, status] :
         {std::pair{L"MailItem::MAPIOBJECT", S_FALSE}, {L"IMessage::QueryInterface", E_NOINTERFACE}}) {
        New(L"Mail", L"unsent", L"Back Office");
        ExpectFaults(L"VARD_SaveRecord", {}, {{member, errors::kNotSaved, status}});
    }
    EXPECT_TRUE(At(L"Inbox", L"Back Office").Messages().empty());
    // A store that takes no writing refuses by itself.
    New(L"Tasks", L"Rest");
    World().DefaultStore()->SetReadOnly(true);
    ExpectFailureLike(L"VARD_SaveRecord", {}, {999, L"\rError: "});
    EXPECT_TRUE(HasRecord());
}

TEST_F(SavingTest, AnAppointmentTakesOnlyItsOwnWords) {
    New(L"Calendar", L"Lunch");
    for (const wchar_t* word : {L"keep open", L"DontSend", L"Sent", L"ApptResponse "}) {
        ExpectFailure(L"VARD_SaveRecord", {word}, -1098, std::wstring(L"Invalid parameter \r") + word);
        EXPECT_TRUE(HasRecord());
    }
    EXPECT_TRUE(At(L"Calendar").Messages().empty()); // nothing was saved
    EXPECT_TRUE(Find(Call(L"VARD_SaveRecord")));
    EXPECT_TRUE(HasRecord());
}

TEST_F(SavingTest, AMeetingThatCannotBeSentIsTold) {
    const std::wstring id = Add({.messageClass = L"IPM.Schedule.Meeting.Request"});
    for (const wchar_t* word : {L"Send", L"appointment"}) {
        OpenRecord(id);
        ExpectFaults(L"VARD_SaveRecord", {word},
                     {{L"IMsgStore::GetProps", errors::Mapi(L"Failed to send meeting"), E_FAIL}});
        EXPECT_TRUE(HasRecord());
    }
}

} // namespace
} // namespace varden::tests
