// Sending mail: who gets it, what it says of its way, and when it is refused.
#include "standin/mailbox/Keeper.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "tests/mailbox/Support.h"

namespace standin::mailbox::test {
namespace {

/// Keeps nothing, and fails where it is told to.
class FailingKeeper final : public Keeper {
public:
    HRESULT submitted = S_OK;
    HRESULT moved = S_OK;
    int submissions = 0;            ///< kept
    const Folder* broken = nullptr; ///< takes no messages

    HRESULT SaveMessage(const Folder& folder, std::uint64_t, const Content&) override {
        return &folder == broken ? MAPI_E_NOT_ENOUGH_DISK : S_OK;
    }
    HRESULT MoveMessage(const Folder&, std::uint64_t, const Folder&, std::uint64_t) override { return moved; }
    HRESULT RemoveMessage(const Folder&, std::uint64_t) override { return S_OK; }
    HRESULT AddFolder(const Folder&) override { return S_OK; }
    HRESULT SaveFolder(const Folder&) override { return S_OK; }
    HRESULT MoveFolder(const Folder&, const Folder&, const std::wstring&) override { return S_OK; }
    HRESULT RemoveFolder(const Folder&) override { return S_OK; }
    HRESULT SaveStore(const Store&) override { return S_OK; }
    HRESULT SaveProfile(const Mailbox&) override { return S_OK; }
    HRESULT SaveSubmitted(const Store&, std::uint64_t, const Content&) override {
        submissions += SUCCEEDED(submitted);
        return submitted;
    }
};

class Submission : public ::testing::Test {
protected:
    std::unique_ptr<Mailbox> m_mailbox = MakeSampleWorld();
    Folder& m_inbox = FolderNamed(*m_mailbox, L"Inbox");
    Folder& m_outbox = FolderNamed(*m_mailbox, L"Outbox");
    Folder& m_sent = FolderNamed(*m_mailbox, L"Sent Items");
    Folder& m_backOffice = *m_mailbox->FindMailbox(L"Back Office")->SpecialFolder(kInbox);

    std::shared_ptr<OpenMessage> Compose(const std::wstring& subject = L"Lunch") {
        auto message = SaveMessage(m_outbox, subject);
        EXPECT_EQ(message->Write(PR_SENTMAIL_ENTRYID, m_sent.EntryId()), S_OK);
        return message;
    }
    std::shared_ptr<OpenMessage> Open(Message& saved, Access access = Access::Modify) {
        std::shared_ptr<OpenMessage> message;
        EXPECT_EQ(m_outbox.OpenMessage(saved, access, message), S_OK);
        return message;
    }
};

TEST_F(Submission, DeliversToMailboxesHereAndFilesTheSendersCopy) {
    const auto message = Compose();
    AddRecipient(*message, L"Front Desk");
    AddRecipient(*message, L"back.office@example.com", MAPI_CC);
    AddRecipient(*message, L"Warehouse");
    ASSERT_EQ(m_mailbox->Submit(*message), S_OK);
    EXPECT_TRUE(m_outbox.Messages().empty());
    ASSERT_EQ(m_sent.Messages().size(), 1u);
    const auto sentFlags = m_sent.Messages()[0]->Get<PR_MESSAGE_FLAGS>();
    EXPECT_EQ(sentFlags, static_cast<std::int32_t>(MSGFLAG_READ));
    ASSERT_EQ(m_inbox.Messages().size(), 1u);
    ASSERT_EQ(m_backOffice.Messages().size(), 1u);
    const Message& arrived = *m_backOffice.Messages()[0];
    EXPECT_EQ(m_backOffice.UnreadCount(), 1u);
    EXPECT_EQ(arrived.Get<PR_MESSAGE_FLAGS>(), 0);
    EXPECT_EQ(arrived.Get<PR_SENDER_NAME_W>(), L"Front Desk");
    EXPECT_EQ(arrived.Get<PR_SENDER_ADDRTYPE_W>(), L"EX");
    EXPECT_EQ(arrived.Get<PR_SENT_REPRESENTING_NAME_W>(), L"Front Desk");
    EXPECT_EQ(arrived.Get<PR_RECEIVED_BY_NAME_W>(), L"Back Office");
    EXPECT_EQ(arrived.Get<PR_DISPLAY_TO_W>(), L"Front Desk; Warehouse");
    EXPECT_EQ(arrived.Get<PR_MESSAGE_CC_ME>(), true);
    EXPECT_EQ(arrived.Get<PR_MESSAGE_TO_ME>(), false);
    EXPECT_TRUE(arrived.Get<PR_MESSAGE_DELIVERY_TIME>());
    EXPECT_TRUE(arrived.Get<PR_CLIENT_SUBMIT_TIME>());
    EXPECT_TRUE(*m_inbox.Messages()[0]->Get<PR_MESSAGE_FLAGS>() & static_cast<std::int32_t>(MSGFLAG_FROMME));
    EXPECT_NE(arrived.Get<PR_SEARCH_KEY>(), m_sent.Messages()[0]->Get<PR_SEARCH_KEY>());
}

TEST_F(Submission, WritesTheHeaderOfItsWay) {
    const auto message = Compose(L"Grüße");
    AddRecipient(*message, L"Front Desk");
    AddRecipient(*message, L"Back Office", MAPI_BCC);
    PropertyBag odd;
    odd.Set<PR_DISPLAY_NAME_W>(L"Smith, \"Bob\"");
    odd.Set<PR_ADDRTYPE_W>(L"SMTP");
    odd.Set<PR_EMAIL_ADDRESS_W>(L"bob@example.org");
    ASSERT_EQ(message->AddRecipient(odd), S_OK);
    ASSERT_EQ(m_mailbox->Submit(*message), S_OK);
    ASSERT_EQ(m_backOffice.Messages().size(), 1u);
    const std::wstring headers = *m_backOffice.Messages()[0]->Get<PR_TRANSPORT_MESSAGE_HEADERS_W>();
    EXPECT_EQ(headers.find(L"Back Office"), std::wstring::npos) << "blind copies stay blind";
    EXPECT_NE(headers.find(L"\r\nFrom: Front Desk <front.desk@example.com>\r\n"), std::wstring::npos);
    EXPECT_NE(
        headers.find(
            L"\r\nTo: Front Desk <front.desk@example.com>,\r\n \"Smith, \\\"Bob\\\"\" <bob@example.org>\r\n"),
        std::wstring::npos);
    EXPECT_NE(headers.find(L"\r\nSubject: =?utf-8?B?R3LDvMOfZQ==?=\r\n"), std::wstring::npos);
    EXPECT_NE(headers.find(L"\r\nMessage-ID: <"), std::wstring::npos);
    EXPECT_TRUE(headers.ends_with(L"\r\n\r\n"));
    EXPECT_EQ(m_backOffice.Messages()[0]->Current().recipients.size(), 2u);
}

TEST_F(Submission, ReachesTheMembersOfAListOnceEach) {
    const auto message = Compose();
    AddRecipient(*message, L"All Hands");
    AddRecipient(*message, L"Back Office");
    ASSERT_EQ(m_mailbox->Submit(*message), S_OK);
    EXPECT_EQ(m_inbox.Messages().size(), 1u);
    EXPECT_EQ(m_backOffice.Messages().size(), 1u);
}

TEST_F(Submission, CarriesNamedPropertiesAndTheSenderInWhoseNameItGoes) {
    m_backOffice.Names().Id({kPsPublicStrings, L"in the way"}, true);
    const PropertyName name{kPsPublicStrings, L"Case"};
    const auto message = Compose();
    AddRecipient(*message, L"Back Office");
    ASSERT_EQ(message->Write(MakeTag(message->Names().Id(name, true), PT_LONG), std::int32_t{4711}), S_OK);
    ASSERT_EQ(message->Write(PR_SENT_REPRESENTING_NAME_W, std::wstring(L"The Boss")), S_OK);
    ASSERT_EQ(m_mailbox->Submit(*message), S_OK);
    const Message& arrived = *m_backOffice.Messages().at(0);
    EXPECT_EQ(Read(arrived, MakeTag(arrived.Names().Id(name), PT_LONG)), Value(std::int32_t{4711}));
    EXPECT_EQ(arrived.Get<PR_SENT_REPRESENTING_NAME_W>(), L"The Boss");
    EXPECT_EQ(arrived.Get<PR_SENDER_NAME_W>(), L"Front Desk");
}

TEST_F(Submission, IsRefusedAsMapiDoesIt) {
    const auto elsewhere = SaveMessage(m_inbox, L"x");
    AddRecipient(*elsewhere, L"Front Desk");
    EXPECT_EQ(m_mailbox->Submit(*elsewhere), MAPI_E_NO_SUPPORT);
    const auto message = Compose();
    EXPECT_EQ(m_mailbox->Submit(*message), MAPI_E_NO_RECIPIENTS);
    AddRecipient(*message, L"Front Desk");
    ASSERT_EQ(message->Save(), S_OK);
    EXPECT_EQ(m_mailbox->Submit(*Open(*message->Saved(), Access::Read)), E_ACCESSDENIED);
    ASSERT_EQ(m_mailbox->Submit(*message), S_OK);
    EXPECT_EQ(m_mailbox->Submit(*message), MAPI_E_SUBMITTED);
    EXPECT_EQ(message->Write(PR_BODY_W, std::wstring(L"late")), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(m_inbox.Messages().size(), 2u) << "one saved here, one delivered";
}

TEST_F(Submission, ReportsRecipientsWhoAreNobody) {
    const auto message = Compose();
    AddRecipient(*message, L"Back Office");
    PropertyBag nobody;
    nobody.Set<PR_DISPLAY_NAME_W>(L"Nobody");
    nobody.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
    ASSERT_EQ(message->AddRecipient(nobody), S_OK);
    ASSERT_EQ(m_mailbox->Submit(*message), S_OK);
    EXPECT_EQ(m_backOffice.Messages().size(), 1u);
    ASSERT_EQ(m_inbox.Messages().size(), 1u);
    const Message& report = *m_inbox.Messages()[0];
    EXPECT_EQ(report.Get<PR_MESSAGE_CLASS_W>(), L"REPORT.IPM.Note.NDR");
    EXPECT_EQ(report.Get<PR_SUBJECT_W>(), L"Undeliverable: Lunch");
    EXPECT_EQ(report.Get<PR_NORMALIZED_SUBJECT_W>(), L"Lunch");
    EXPECT_EQ(report.Get<PR_DISPLAY_TO_W>(), L"Nobody");
    EXPECT_NE(report.Get<PR_REPORT_TEXT_W>()->find(L"Nobody"), std::wstring::npos);
    EXPECT_EQ(m_inbox.UnreadCount(), 1u);
}

TEST_F(Submission, ThatFailsLateCanBeTriedAgain) {
    auto owned = std::make_unique<FailingKeeper>();
    FailingKeeper& keeper = *owned;
    m_mailbox->SetKeeper(std::move(owned));
    const auto message = Compose();
    AddRecipient(*message, L"Front Desk");
    AddRecipient(*message, L"Back Office");
    const auto before = message->Get<PR_MESSAGE_FLAGS>();
    const auto expectUnsent = [&] {
        EXPECT_EQ(m_mailbox->Submit(*message), MAPI_E_NOT_ENOUGH_DISK);
        EXPECT_FALSE(message->IsSubmitted());
        EXPECT_EQ(message->Get<PR_MESSAGE_FLAGS>(), before);
        EXPECT_TRUE(m_inbox.Messages().empty());
        EXPECT_TRUE(m_backOffice.Messages().empty());
        EXPECT_EQ(keeper.submissions, 0);
    };
    keeper.submitted = MAPI_E_NOT_ENOUGH_DISK;
    expectUnsent();
    keeper.submitted = S_OK;
    keeper.broken = &m_backOffice;
    expectUnsent();
    keeper.broken = nullptr;
    keeper.moved = MAPI_E_NOT_ENOUGH_DISK;
    ASSERT_EQ(m_mailbox->Submit(*message), S_OK) << "it has gone out, though the copy can't be filed";
    EXPECT_EQ(keeper.submissions, 1);
    ASSERT_EQ(m_outbox.Messages().size(), 1u);
    EXPECT_EQ(m_mailbox->Submit(*Open(*m_outbox.Messages()[0])), MAPI_E_SUBMITTED);
    EXPECT_EQ(m_inbox.Messages().size(), 1u);
    EXPECT_EQ(m_backOffice.Messages().size(), 1u);
}

TEST_F(Submission, LeavesTheCopyInTheOutboxOrDropsIt) {
    const auto stays = SaveMessage(m_outbox, L"stays");
    AddRecipient(*stays, L"Back Office");
    ASSERT_EQ(m_mailbox->Submit(*stays), S_OK);
    ASSERT_EQ(m_outbox.Messages().size(), 1u);
    const auto again = Open(*m_outbox.Messages()[0]);
    EXPECT_EQ(m_mailbox->Submit(*again), MAPI_E_SUBMITTED);
    EXPECT_EQ(again->Write(PR_SUBJECT_W, std::wstring(L"x")), MAPI_E_SUBMITTED);
    EXPECT_EQ(m_outbox.RemoveMessage(*m_outbox.Messages()[0]), MAPI_E_SUBMITTED);
    EXPECT_EQ(m_outbox.MoveMessage(*m_outbox.Messages()[0], m_sent, nullptr), MAPI_E_SUBMITTED);
    const auto goes = Compose();
    AddRecipient(*goes, L"Back Office");
    ASSERT_EQ(goes->Write(PR_DELETE_AFTER_SUBMIT, true), S_OK);
    ASSERT_EQ(m_mailbox->Submit(*goes), S_OK);
    EXPECT_EQ(m_outbox.Messages().size(), 1u);
    EXPECT_TRUE(m_sent.Messages().empty());
    EXPECT_EQ(m_backOffice.Messages().size(), 2u);
}

} // namespace
} // namespace standin::mailbox::test
