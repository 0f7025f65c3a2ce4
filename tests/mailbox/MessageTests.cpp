// Messages and their working copies: who sees what when, what can't be written, what is worked out.
#include "standin/mailbox/Tags.h"
#include "tests/mailbox/Support.h"

namespace standin::mailbox::test {
namespace {

class Messages : public ::testing::Test {
protected:
    std::unique_ptr<Mailbox> m_mailbox = MakeSampleWorld();
    Folder& m_inbox = FolderNamed(*m_mailbox, L"Inbox");

    std::shared_ptr<OpenMessage> Open(const OpenMessage& message, Access access = Access::Modify) {
        std::shared_ptr<OpenMessage> open;
        EXPECT_EQ(m_inbox.OpenMessage(*message.Saved(), access, open), S_OK);
        return open;
    }
};

TEST_F(Messages, AreInTheirFolderFromTheFirstSaveOn) {
    std::shared_ptr<OpenMessage> message;
    ASSERT_EQ(m_inbox.CreateMessage(false, message), S_OK);
    EXPECT_EQ(message->Get<PR_MESSAGE_CLASS_W>(), L"IPM.Note");
    EXPECT_FALSE(message->Get<PR_ENTRYID>());
    EXPECT_TRUE(m_inbox.Messages().empty());
    ASSERT_EQ(message->Save(), S_OK);
    ASSERT_EQ(m_inbox.Messages().size(), 1u);
    const auto entryId = message->Get<PR_ENTRYID>();
    ASSERT_TRUE(entryId);
    EXPECT_EQ(m_mailbox->FindMessage(*entryId), message->Saved());
    EXPECT_EQ(message->Get<PR_PARENT_ENTRYID>(), m_inbox.EntryId());
    EXPECT_EQ(message->Get<kPrLastModifierName>(), L"Front Desk");
}

TEST_F(Messages, ShowChangesToOthersOnlyWhenSavedAndTellOfTwoWhoSaved) {
    const auto first = SaveMessage(m_inbox, L"before");
    const auto second = Open(*first);
    ASSERT_EQ(first->Write(PR_SUBJECT_W, std::wstring(L"after")), S_OK);
    EXPECT_EQ(second->Get<PR_SUBJECT_W>(), L"before");
    EXPECT_EQ(Open(*first)->Get<PR_SUBJECT_W>(), L"before");
    const std::uint64_t version = m_inbox.ContentsVersion();
    ASSERT_EQ(first->Save(), S_OK);
    EXPECT_NE(m_inbox.ContentsVersion(), version);
    EXPECT_EQ(second->Get<PR_SUBJECT_W>(), L"before") << "what is open stays as it was opened";
    EXPECT_EQ(Open(*first)->Get<PR_SUBJECT_W>(), L"after");
    EXPECT_EQ(m_inbox.Messages()[0]->Get<PR_SUBJECT_W>(), L"after");
    EXPECT_EQ(second->Save(), S_OK) << "nothing changed, nothing to save";
    ASSERT_EQ(second->Write(PR_SUBJECT_W, std::wstring(L"second")), S_OK);
    EXPECT_EQ(second->Save(), MAPI_E_OBJECT_CHANGED);
    EXPECT_EQ(second->Save(true), S_OK);
    EXPECT_EQ(Open(*first)->Get<PR_SUBJECT_W>(), L"second");
    second->Discard();
    EXPECT_FALSE(second->IsChanged());
}

TEST_F(Messages, CanBeMarkedReadWhileSomebodyChangesThem) {
    const auto message = SaveMessage(m_inbox, L"x");
    ASSERT_EQ(message->Saved()->SetRead(false), S_OK);
    EXPECT_EQ(m_inbox.UnreadCount(), 1u);
    const auto other = Open(*message);
    ASSERT_EQ(other->Write(PR_BODY_W, std::wstring(L"text")), S_OK);
    ASSERT_EQ(message->Saved()->SetRead(true), S_OK);
    EXPECT_EQ(other->Save(), S_OK);
    EXPECT_EQ(m_inbox.UnreadCount(), 0u) << "the mark that was set meanwhile stays";
    ASSERT_EQ(other->SetRead(false), S_OK);
    EXPECT_EQ(m_inbox.UnreadCount(), 0u);
    ASSERT_EQ(other->Save(), S_OK);
    EXPECT_EQ(m_inbox.UnreadCount(), 1u);
}

TEST_F(Messages, AnswerDeletedWhenTheyAreGone) {
    const auto message = SaveMessage(m_inbox, L"x");
    const auto saved = message->Saved();
    const Bytes entryId = saved->EntryId();
    ASSERT_EQ(message->Write(PR_BODY_W, std::wstring(L"late")), S_OK);
    ASSERT_EQ(m_inbox.RemoveMessage(*saved), S_OK);
    EXPECT_EQ(message->Save(), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(message->Write(PR_BODY_W, std::wstring(L"later")), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(saved->SetRead(true), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(message->Get<PR_SUBJECT_W>(), L"x") << "what is in memory can still be read";
    EXPECT_EQ(message->Get<PR_ENTRYID>(), entryId);
}

TEST_F(Messages, OpenedForReadingRefuseToBeWritten) {
    const auto message = SaveMessage(m_inbox, L"x");
    const auto open = Open(*message, Access::Read);
    std::shared_ptr<OpenAttachment> attachment;
    EXPECT_EQ(open->Write(PR_BODY_W, std::wstring(L"x")), E_ACCESSDENIED);
    EXPECT_EQ(open->Erase(PR_SUBJECT_W), E_ACCESSDENIED);
    EXPECT_EQ(open->AddRecipient({}), E_ACCESSDENIED);
    EXPECT_EQ(open->CreateAttachment(attachment), E_ACCESSDENIED);
    EXPECT_EQ(open->Save(), E_ACCESSDENIED);
    EXPECT_EQ(open->Get<PR_ACCESS_LEVEL>(), 0);
    m_inbox.Store().SetReadOnly(true);
    std::shared_ptr<OpenMessage> refused;
    EXPECT_EQ(m_inbox.OpenMessage(*message->Saved(), Access::Modify, refused), E_ACCESSDENIED);
    EXPECT_EQ(m_inbox.CreateMessage(false, refused), E_ACCESSDENIED);
    EXPECT_EQ(message->Saved()->SetRead(false), E_ACCESSDENIED);
    EXPECT_EQ(m_inbox.RemoveMessage(*message->Saved()), E_ACCESSDENIED);
    ASSERT_EQ(message->Write(PR_BODY_W, std::wstring(L"x")), S_OK);
    EXPECT_EQ(message->Save(), E_ACCESSDENIED);
}

TEST_F(Messages, RefuseWhatTheStoreWorksOut) {
    const std::pair<PropertyTag, Value> refused[] = {
        {PR_ENTRYID, Bytes{1}},
        {PR_PARENT_ENTRYID, Bytes{1}},
        {PR_STORE_ENTRYID, Bytes{1}},
        {PR_STORE_RECORD_KEY, Bytes{1}},
        {PR_RECORD_KEY, Bytes{1}},
        {PR_MAPPING_SIGNATURE, Bytes{1}},
        {PR_OBJECT_TYPE, 5},
        {PR_ACCESS, 7},
        {PR_ACCESS_LEVEL, 1},
        {PR_MESSAGE_SIZE, 1},
        {PR_HASATTACH, true},
        {PR_DISPLAY_TO_W, std::wstring(L"x")},
        {PR_DISPLAY_CC_W, std::wstring(L"x")},
        {PR_DISPLAY_BCC_W, std::wstring(L"x")},
        {PR_NORMALIZED_SUBJECT_W, std::wstring(L"x")},
        {PR_CREATION_TIME, SysTime{1}},
        {PR_LAST_MODIFICATION_TIME, SysTime{1}},
    };
    const auto message = SaveMessage(m_inbox, L"x");
    for (const auto& [tag, value] : refused) {
        EXPECT_EQ(message->Write(tag, value), MAPI_E_COMPUTED) << std::hex << tag;
        EXPECT_EQ(message->Erase(tag), MAPI_E_COMPUTED) << std::hex << tag;
    }
    EXPECT_FALSE(message->IsChanged());
    EXPECT_EQ(message->Write(PR_BODY_W, ErrorValue{}), MAPI_E_INVALID_TYPE);
    EXPECT_EQ(message->Erase(PR_BODY_W), MAPI_E_NOT_FOUND);
    EXPECT_EQ(message->Write(PR_SUBJECT_A, std::string("caf\xE9")), S_OK);
    EXPECT_EQ(message->Get<PR_SUBJECT_W>(), L"café");
}

TEST_F(Messages, TakeFlagsOnlyBeforeTheirFirstSave) {
    std::shared_ptr<OpenMessage> message;
    ASSERT_EQ(m_inbox.CreateMessage(false, message), S_OK);
    EXPECT_EQ(message->Get<PR_MESSAGE_FLAGS>(), static_cast<std::int32_t>(MSGFLAG_READ | MSGFLAG_UNSENT));
    const auto wanted = static_cast<std::int32_t>(MSGFLAG_RESEND | MSGFLAG_HASATTACH | MSGFLAG_ASSOCIATED);
    EXPECT_EQ(message->Write(PR_MESSAGE_FLAGS, wanted), S_OK);
    EXPECT_EQ(message->Get<PR_MESSAGE_FLAGS>(), static_cast<std::int32_t>(MSGFLAG_RESEND));
    EXPECT_EQ(message->Write(PR_MESSAGE_FLAGS, std::wstring(L"1")), MAPI_E_UNEXPECTED_TYPE);
    ASSERT_EQ(message->Save(), S_OK);
    EXPECT_EQ(message->Write(PR_MESSAGE_FLAGS, std::int32_t{0}), MAPI_E_COMPUTED);
}

TEST_F(Messages, SplitTheirSubject) {
    // What is written as subject and, where there is any, as prefix; what is read as prefix and as the rest.
    const wchar_t* const cases[][4] = {
        {L"RE: Lunch", L"", L"RE: ", L"Lunch"},
        {L"Lunch", L"", L"", L"Lunch"},
        {L"AW: RE: Lunch", L"", L"AW: ", L"RE: Lunch"},
        {L"Note: Lunch", L"", L"", L"Note: Lunch"},
        {L"R2: Lunch", L"", L"", L"R2: Lunch"},
        {L"A B: Lunch", L"", L"", L"A B: Lunch"},
        {L": Lunch", L"", L"", L": Lunch"},
        {L"RE:Lunch", L"", L"", L"RE:Lunch"},
        {L"", L"", L"", L""},
        {L"Updated: Lunch", L"Updated:", L"Updated:", L"Lunch"},
        {L"RE: Lunch", L"Updated:", L"RE: ", L"Lunch"},
    };
    for (const auto& [subject, stated, prefix, normalized] : cases) {
        SCOPED_TRACE(Utf8(subject));
        std::shared_ptr<OpenMessage> message;
        ASSERT_EQ(m_inbox.CreateMessage(false, message), S_OK);
        ASSERT_EQ(message->Write(PR_SUBJECT_W, std::wstring(subject)), S_OK);
        if (*stated) {
            ASSERT_EQ(message->Write(PR_SUBJECT_PREFIX_W, std::wstring(stated)), S_OK);
        }
        EXPECT_EQ(message->Get<PR_SUBJECT_PREFIX_W>(), prefix);
        EXPECT_EQ(message->Get<PR_NORMALIZED_SUBJECT_W>(), normalized);
    }
}

TEST_F(Messages, NameTheirRecipientsByType) {
    const auto message = SaveMessage(m_inbox, L"x");
    EXPECT_EQ(message->Get<PR_DISPLAY_TO_W>(), L"");
    AddRecipient(*message, L"Front Desk");
    AddRecipient(*message, L"Warehouse", MAPI_CC);
    AddRecipient(*message, L"somebody@example.org");
    AddRecipient(*message, L"Back Office", MAPI_BCC);
    EXPECT_EQ(message->Get<PR_DISPLAY_TO_W>(), L"Front Desk; somebody@example.org");
    EXPECT_EQ(message->Get<PR_DISPLAY_CC_W>(), L"Warehouse");
    EXPECT_EQ(message->Get<PR_DISPLAY_BCC_W>(), L"Back Office");
    ASSERT_EQ(message->RemoveRecipient(1), S_OK);
    EXPECT_EQ(message->RemoveRecipient(1), MAPI_E_NOT_FOUND);
    std::uint32_t rowId = 0;
    ASSERT_EQ(message->AddRecipient({}, &rowId), S_OK);
    EXPECT_EQ(rowId, 4u) << "row ids aren't used again";
    PropertyBag row;
    row.Set<PR_DISPLAY_NAME_W>(L"Reception");
    ASSERT_EQ(message->ReplaceRecipient(0, row), S_OK);
    EXPECT_EQ(message->Recipients()[0].GetOr<PR_ROWID>(-1), 0);
    EXPECT_TRUE(message->Get<PR_DISPLAY_TO_W>()->starts_with(L"Reception; "));
}

TEST_F(Messages, KeepTheDisplayNamesThatCameWithAFileWithoutRecipients) {
    Content content;
    content.properties.Set<PR_DISPLAY_TO_W>(L"from the file");
    std::shared_ptr<Message> message;
    ASSERT_EQ(m_inbox.Receive(std::move(content), false, message), S_OK);
    EXPECT_EQ(message->Get<PR_DISPLAY_TO_W>(), L"from the file");
}

TEST_F(Messages, GetAttachmentsOnceTheseAreSaved) {
    const auto message = SaveMessage(m_inbox, L"x");
    std::shared_ptr<OpenAttachment> attachment;
    ASSERT_EQ(message->CreateAttachment(attachment), S_OK);
    ASSERT_EQ(attachment->Write(PR_ATTACH_DATA_BIN, Bytes{1, 2, 3}), S_OK);
    EXPECT_EQ(attachment->Write(PR_ATTACH_NUM, 7), MAPI_E_COMPUTED);
    EXPECT_EQ(message->Get<PR_HASATTACH>(), false);
    ASSERT_EQ(attachment->Save(), S_OK);
    EXPECT_EQ(message->Get<PR_HASATTACH>(), true);
    EXPECT_TRUE(*message->Get<PR_MESSAGE_FLAGS>() & static_cast<std::int32_t>(MSGFLAG_HASATTACH));
    EXPECT_EQ(Open(*message)->Get<PR_HASATTACH>(), false) << "not before the message is saved";
    std::shared_ptr<OpenAttachment> second;
    ASSERT_EQ(message->CreateAttachment(second), S_OK);
    ASSERT_EQ(second->Save(), S_OK);
    ASSERT_EQ(message->RemoveAttachment(0), S_OK);
    EXPECT_EQ(message->RemoveAttachment(0), MAPI_E_NOT_FOUND);
    EXPECT_EQ(message->OpenAttachmentNumber(1, Access::Read, second), S_OK) << "numbers stay";
    EXPECT_EQ(second->Save(), E_ACCESSDENIED);
    ASSERT_EQ(message->Save(), S_OK);
    EXPECT_EQ(Open(*message)->Attachments().size(), 1u);
}

TEST_F(Messages, HoldMessagesInAttachments) {
    const auto message = SaveMessage(m_inbox, L"outer");
    std::shared_ptr<OpenAttachment> attachment;
    std::shared_ptr<OpenMessage> inner;
    ASSERT_EQ(message->CreateAttachment(attachment), S_OK);
    EXPECT_EQ(attachment->Embedded(false, Access::Read, inner), MAPI_E_NOT_FOUND);
    ASSERT_EQ(attachment->Embedded(true, Access::Modify, inner), S_OK);
    ASSERT_EQ(inner->Write(PR_SUBJECT_W, std::wstring(L"inner")), S_OK);
    EXPECT_EQ(inner->Write(PR_CREATION_TIME, SysTime{99}), S_OK) << "no store guards it";
    ASSERT_EQ(inner->Save(), S_OK);
    ASSERT_EQ(attachment->Save(), S_OK);
    ASSERT_EQ(message->Save(), S_OK);
    const auto again = Open(*message, Access::Read);
    ASSERT_EQ(again->OpenAttachmentNumber(0, Access::Read, attachment), S_OK);
    ASSERT_EQ(attachment->Embedded(false, Access::Read, inner), S_OK);
    EXPECT_EQ(inner->Get<PR_SUBJECT_W>(), L"inner");
    EXPECT_EQ(inner->Get<PR_CREATION_TIME>(), SysTime{99});
    EXPECT_FALSE(inner->Get<PR_ENTRYID>());
    EXPECT_EQ(inner->Write(PR_SUBJECT_W, std::wstring(L"x")), E_ACCESSDENIED);
    ASSERT_EQ(message->OpenAttachmentNumber(0, Access::Modify, attachment), S_OK);
    ASSERT_EQ(attachment->Write(PR_ATTACH_DATA_BIN, Bytes{1}), S_OK);
    EXPECT_EQ(attachment->Embedded(false, Access::Read, inner), MAPI_E_NOT_FOUND) << "bytes took its place";
}

} // namespace
} // namespace standin::mailbox::test
