// Folders, the messages that move between them, stores, the address book.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "tests/mailbox/Support.h"

#include <algorithm>

namespace standin::mailbox::test {
namespace {

class Folders : public ::testing::Test {
protected:
    std::unique_ptr<Mailbox> m_mailbox = MakeSampleWorld();
    Folder& m_top = m_mailbox->DefaultStore()->IpmSubtree();
    Folder& m_inbox = FolderNamed(*m_mailbox, L"Inbox");

    Folder& Create(Folder& parent, const std::wstring& name) {
        std::shared_ptr<Folder> folder;
        EXPECT_EQ(parent.CreateSubfolder({name, 0, {}}, folder), S_OK);
        return *folder;
    }
    std::vector<std::wstring> Subjects(const Folder& folder) {
        std::vector<std::wstring> subjects;
        for (const Message* message : folder.Messages())
            subjects.push_back(message->Get<PR_SUBJECT_W>().value_or(L""));
        return subjects;
    }
};

TEST_F(Folders, HaveNamesThatDifferInMoreThanCase) {
    std::shared_ptr<Folder> folder;
    EXPECT_EQ(m_top.CreateSubfolder({L"INBOX", 0, {}}, folder), MAPI_E_COLLISION);
    EXPECT_EQ(m_top.CreateSubfolder({L"", 0, {}}, folder), MAPI_E_INVALID_PARAMETER);
    ASSERT_EQ(m_top.CreateSubfolder({L"Übung", 1, {}}, folder), S_OK);
    EXPECT_EQ(m_top.FindSubfolder(L"üBUNG"), folder.get());
    EXPECT_EQ(folder->Get<PR_CONTAINER_CLASS_W>(), L"IPF.Appointment");
    Folder& other = Create(m_top, L"Other");
    EXPECT_EQ(other.Rename(L"übung"), MAPI_E_COLLISION);
    EXPECT_EQ(other.Rename(L"OTHER"), S_OK);
    EXPECT_EQ(other.Write(PR_DISPLAY_NAME_W, std::wstring(L"Third")), S_OK);
    EXPECT_EQ(m_top.FindSubfolder(L"other"), nullptr);
    EXPECT_EQ(m_top.FindSubfolder(L"third"), &other);
    EXPECT_EQ(m_mailbox->FindFolder(other.EntryId()), &other);
}

TEST_F(Folders, GoWithAllThatIsInThem) {
    Folder& parent = Create(m_top, L"Parent");
    Folder& child = Create(parent, L"Child");
    const auto heldChild = child.shared_from_this();
    const auto message = SaveMessage(child, L"x");
    const Bytes childId = child.EntryId();
    const Bytes messageId = message->Saved()->EntryId();
    ASSERT_EQ(parent.Delete(), S_OK);
    EXPECT_TRUE(heldChild->IsDeleted());
    EXPECT_TRUE(message->Saved()->IsRemoved());
    EXPECT_EQ(m_mailbox->FindFolder(childId), nullptr);
    EXPECT_EQ(m_mailbox->FindMessage(messageId), nullptr);
    EXPECT_EQ(heldChild->Write(PR_COMMENT_W, std::wstring(L"x")), MAPI_E_OBJECT_DELETED);
    std::shared_ptr<Folder> late;
    EXPECT_EQ(heldChild->CreateSubfolder({L"Late", 0, {}}, late), MAPI_E_OBJECT_DELETED);
}

TEST_F(Folders, MoveButNotIntoThemselvesAndNotTheSpecialOnes) {
    Folder& parent = Create(m_top, L"Parent");
    Folder& child = Create(parent, L"Child");
    const auto message = SaveMessage(child, L"x");
    EXPECT_EQ(parent.MoveTo(child), MAPI_E_FOLDER_CYCLE);
    EXPECT_EQ(parent.MoveTo(parent), MAPI_E_FOLDER_CYCLE);
    EXPECT_EQ(m_inbox.MoveTo(parent), E_ACCESSDENIED);
    EXPECT_EQ(m_inbox.Delete(), E_ACCESSDENIED);
    EXPECT_EQ(m_inbox.Rename(L"In"), E_ACCESSDENIED);
    EXPECT_EQ(m_top.Delete(), E_ACCESSDENIED);
    Store& archive = *m_mailbox->ProfileStores()[1];
    EXPECT_EQ(child.MoveTo(archive.IpmSubtree()), MAPI_E_NO_SUPPORT);
    ASSERT_EQ(child.MoveTo(m_inbox, L"Moved"), S_OK);
    EXPECT_EQ(m_inbox.FindSubfolder(L"Moved"), &child);
    EXPECT_TRUE(parent.Subfolders().empty());
    EXPECT_EQ(m_mailbox->FindMessage(message->Saved()->EntryId()), message->Saved());
}

TEST_F(Folders, AreCopiedToAnyStoreWithNamedPropertiesUnderItsIds) {
    Folder& source = Create(m_top, L"Source");
    Folder& below = Create(source, L"Below");
    ASSERT_EQ(source.SetUserFields({{L"Hours", 3}}), S_OK);
    Store& archive = *m_mailbox->ProfileStores()[1];
    archive.Names().Id({kPsPublicStrings, L"in the way"}, true);
    const PropertyName name{kPsPublicStrings, L"Hours"};
    const PropertyTag tag = MakeTag(source.Names().Id(name, true), PT_DOUBLE);
    const auto message = SaveMessage(below, L"x");
    ASSERT_EQ(message->Write(tag, 7.5), S_OK);
    ASSERT_EQ(message->Save(), S_OK);
    std::shared_ptr<Folder> copy;
    ASSERT_EQ(source.CopyTo(archive.IpmSubtree(), L"Copy", copy), S_OK);
    EXPECT_EQ(copy->UserFields(), source.UserFields());
    const Folder* belowCopy = copy->FindSubfolder(L"Below");
    ASSERT_NE(belowCopy, nullptr);
    const PropertyTag there = MakeTag(archive.Names().Id(name), PT_DOUBLE);
    EXPECT_NE(there, tag);
    EXPECT_EQ(Read(*belowCopy->Messages().at(0), there), Value(7.5));
    EXPECT_EQ(source.CopyTo(below, {}, copy), MAPI_E_FOLDER_CYCLE);
}

TEST_F(Folders, KeepMessagesInOrderOfArrivalThroughMovesAndRemovals) {
    std::vector<std::shared_ptr<Message>> messages;
    for (const wchar_t* subject : {L"a", L"b", L"c", L"d", L"e"})
        messages.push_back(SaveMessage(m_inbox, subject)->Saved());
    Folder& target = Create(m_top, L"Target");
    const Bytes oldId = messages[3]->EntryId();
    std::shared_ptr<Message> moved;
    ASSERT_EQ(m_inbox.RemoveMessage(*messages[1]), S_OK);
    ASSERT_EQ(m_inbox.MoveMessage(*messages[3], target, &moved), S_OK);
    ASSERT_EQ(m_inbox.CopyMessage(*messages[0], target, nullptr), S_OK);
    EXPECT_EQ(Subjects(m_inbox), (std::vector<std::wstring>{L"a", L"c", L"e"}));
    EXPECT_EQ(Subjects(target), (std::vector<std::wstring>{L"d", L"a"}));
    EXPECT_TRUE(messages[3]->IsRemoved());
    EXPECT_EQ(m_mailbox->FindMessage(oldId), nullptr);
    EXPECT_EQ(m_mailbox->FindMessage(moved->EntryId()), moved);
    EXPECT_EQ(m_inbox.RemoveMessage(*moved), MAPI_E_NOT_FOUND);
    EXPECT_EQ(target.Get<PR_CONTENT_COUNT>(), 2);
}

TEST_F(Folders, KeepAssociatedMessagesApart) {
    std::shared_ptr<OpenMessage> hidden;
    ASSERT_EQ(m_inbox.CreateMessage(true, hidden), S_OK);
    ASSERT_EQ(hidden->Save(), S_OK);
    SaveMessage(m_inbox, L"plain");
    EXPECT_EQ(m_inbox.Messages().size(), 1u);
    ASSERT_EQ(m_inbox.AssociatedMessages().size(), 1u);
    EXPECT_EQ(m_inbox.AssociatedMessages()[0], hidden->Saved().get());
    EXPECT_EQ(m_inbox.Get<PR_ASSOC_CONTENT_COUNT>(), 1);
    EXPECT_TRUE(*hidden->Get<PR_MESSAGE_FLAGS>() & static_cast<std::int32_t>(MSGFLAG_ASSOCIATED));
    Folder& target = Create(m_top, L"Target");
    ASSERT_EQ(m_inbox.MoveMessage(*hidden->Saved(), target, nullptr), S_OK);
    EXPECT_EQ(target.AssociatedMessages().size(), 1u);
}

TEST_F(Folders, TellWhereTheSpecialOnesAre) {
    Store& store = *m_mailbox->DefaultStore();
    const auto outbox = store.Get<PR_IPM_OUTBOX_ENTRYID>();
    ASSERT_TRUE(outbox);
    EXPECT_EQ(m_mailbox->FindFolder(*outbox), &FolderNamed(*m_mailbox, L"Outbox"));
    EXPECT_EQ(m_inbox.Get<kPrIpmAppointmentEntryId>(), FolderNamed(*m_mailbox, L"Calendar").EntryId());
    EXPECT_EQ(m_inbox.Get<kPrAdditionalRenEntryIds>()->at(4),
              FolderNamed(*m_mailbox, L"Junk E-mail").EntryId());
    EXPECT_FALSE(FolderNamed(*m_mailbox, L"Notes").Get<kPrIpmAppointmentEntryId>());
    ASSERT_EQ(store.SetSpecialFolder(kOutbox, nullptr), S_OK);
    EXPECT_FALSE(store.Get<PR_IPM_OUTBOX_ENTRYID>());
    store.Withhold(PR_IPM_SENTMAIL_ENTRYID);
    EXPECT_FALSE(store.Get<PR_IPM_SENTMAIL_ENTRYID>());
    const std::vector<PropertyTag> tags = store.Tags();
    EXPECT_EQ(std::ranges::count(tags, PropertyTag{PR_IPM_SENTMAIL_ENTRYID}), 0);
    EXPECT_EQ(std::ranges::count(tags, PropertyTag{PR_IPM_WASTEBASKET_ENTRYID}), 1);
    EXPECT_EQ(m_mailbox->FindStore(store.EntryId()), &store);
    EXPECT_EQ(store.Get<kPrMailboxOwnerName>(), L"Front Desk");
}

TEST(SampleWorld, IsAsUsersAreTold) {
    const auto mailbox = MakeSampleWorld();
    std::wstring world;
    for (const auto& store : mailbox->AllStores()) {
        world +=
            store->Name() + (store->IsDefault() ? L"*" : L"") + (store->IsInProfile() ? L":" : L"(shared):");
        for (const auto& folder : store->IpmSubtree().Subfolders())
            world += L" " + folder->Name() + L"/" + std::to_wstring(folder->DefaultItemType());
        world += L"\n";
    }
    EXPECT_EQ(Utf8(world),
              "Front Desk*: Deleted Items/0 Inbox/0 Outbox/0 Sent Items/0 Calendar/1 Contacts/2 Journal/4 "
              "Notes/5 Tasks/3 Drafts/0 Junk E-mail/0\n"
              "Archive: Inbox/0 Deleted Items/0\n"
              "Public Folders: All Public Folders/0\n"
              "Back Office(shared): Inbox/0 Calendar/1 Contacts/2\n");
    EXPECT_EQ(mailbox->ProfileName(), L"Outlook");
    EXPECT_EQ(mailbox->FindMailbox(L"back.office@example.com")->Name(), L"Back Office");
    EXPECT_EQ(mailbox->FindMailbox(L"Warehouse"), nullptr);
}

TEST(AddressBook, ResolvesNames) {
    const auto mailbox = MakeSampleWorld();
    const std::tuple<const wchar_t*, HRESULT, const wchar_t*> cases[] = {
        {L"Warehouse", S_OK, L"Warehouse"},
        {L"  ware ", S_OK, L"Warehouse"},
        {L"service.south", S_OK, L"Service South"},
        {L"SERVICE.NORTH@EXAMPLE.COM", S_OK, L"Service North"},
        {L"Service", MAPI_E_AMBIGUOUS_RECIP, nullptr},
        {L"service n", S_OK, L"Service North"},
        {L"All", S_OK, L"All Hands"},
        {L"South", MAPI_E_NOT_FOUND, nullptr},
        {L"", MAPI_E_NOT_FOUND, nullptr},
        {L"a@b.example", S_OK, L"a@b.example"},
    };
    for (const auto& [text, status, name] : cases) {
        SCOPED_TRACE(Utf8(text));
        std::shared_ptr<AddressEntry> entry;
        EXPECT_EQ(mailbox->Addresses().Resolve(text, entry), status);
        ASSERT_EQ(entry != nullptr, name != nullptr);
        if (!entry)
            continue;
        EXPECT_EQ(entry->Name(), name);
        std::shared_ptr<AddressEntry> opened;
        ASSERT_EQ(mailbox->Addresses().Open(entry->EntryId(), opened), S_OK);
        EXPECT_EQ(opened->Stored(), entry->Stored());
    }
    std::shared_ptr<AddressEntry> entry;
    EXPECT_EQ(mailbox->Addresses().Open(Bytes{1, 2, 3}, entry), MAPI_E_INVALID_ENTRYID);
    const Bytes gone = MakeAddressBookEntryId(DT_MAILUSER, "/o=Example/cn=gone");
    EXPECT_EQ(mailbox->Addresses().Open(gone, entry), MAPI_E_NOT_FOUND);
    EXPECT_TRUE(mailbox->Addresses().Entries()[5]->IsDistributionList());
}

} // namespace
} // namespace standin::mailbox::test
