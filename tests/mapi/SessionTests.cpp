// Sessions and stores: the stores table, entry ids, what may be opened and how.
#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/SpecialFolders.h"
#include "tests/mapi/Client.h"

using namespace standin;

namespace mapi_tests {
namespace {

class SessionTest : public MapiTest {
protected:
    HRESULT Open(const Bytes& id, ULONG flags = 0, const IID* iid = nullptr) {
        Ref<IUnknown> object;
        m_type = 0;
        return Session()->OpenEntry(Size(id), Id(id), iid, flags, &m_type, &object);
    }
    HRESULT OpenStoreId(const Bytes& id, ULONG flags, const IID* iid = nullptr) {
        Ref<IMsgStore> store;
        return Session()->OpenMsgStore(0, Size(id), Id(id), iid, flags, &store);
    }
    ULONG m_type = 0;
};

TEST_F(SessionTest, TheStoresTableHasTheStoresOfTheProfile) {
    const Ref<IMAPITable> table = Table(Session(), &IMAPISession::GetMsgStoresTable);
    EXPECT_EQ(Column(table, PR_DISPLAY_NAME_W), (Texts{L"Front Desk", L"Archive", L"Public Folders"}));

    SPropValue isTrue = Truth(PR_DEFAULT_STORE, true);
    SRestriction both[] = {Exist(PR_DEFAULT_STORE), Property(RELOP_EQ, isTrue)}, all = List(RES_AND, both);
    Rows rows;
    ASSERT_EQ(HrQueryAllRows(table, Tags{PR_DEFAULT_STORE, PR_ENTRYID}, &all, nullptr, 1, &rows), S_OK);
    ASSERT_EQ(rows.Count(), 1u);
    const SBinary id = rows.At(0, 1).Value.bin;
    Ref<IMsgStore> store;
    ASSERT_EQ(Session()->OpenMsgStore(0, id.cb, reinterpret_cast<ENTRYID*>(id.lpb), nullptr,
                                      MAPI_BEST_ACCESS | MDB_NO_DIALOG | 0x100, &store),
              S_OK);
    EXPECT_EQ(GetText(store, PR_DISPLAY_NAME_W), L"Front Desk");
    EXPECT_EQ(GetText(store, PROP_TAG(PT_UNICODE, 0x661C)), L"Front Desk");
}

TEST_F(SessionTest, ARowCanLackItsEntryId) {
    Store().SetRowWithoutEntryId(true);
    const Rows rows(Table(Session(), &IMAPISession::GetMsgStoresTable), {PR_ENTRYID});
    EXPECT_EQ(PROP_TYPE(rows.At(0, 0).ulPropTag), PT_ERROR);
    EXPECT_EQ(PROP_TYPE(rows.At(1, 0).ulPropTag), PT_BINARY);
    const SBinary id = rows.At(0, 0).Value.bin; // as a client takes it that doesn't look
    Ref<IMsgStore> store;
    EXPECT_TRUE(FAILED(Session()->OpenMsgStore(0, id.cb, reinterpret_cast<ENTRYID*>(id.lpb), nullptr,
                                               MAPI_BEST_ACCESS, &store)));
}

TEST_F(SessionTest, OpeningAStoreTellsWhyNot) {
    const Bytes id = Store().EntryId();
    Bytes unknown = id;
    unknown.back() ^= 1;
    unknown[unknown.size() - 5] ^= 1;
    EXPECT_EQ(OpenStoreId(id, MDB_WRITE), S_OK);
    EXPECT_EQ(OpenStoreId(id, MAPI_BEST_ACCESS, &mapi::kIidMsgStore), S_OK);
    EXPECT_EQ(OpenStoreId(id, MAPI_BEST_ACCESS, &mapi::kIidFolder), MAPI_E_INTERFACE_NOT_SUPPORTED);
    EXPECT_EQ(OpenStoreId(id, 0x1000), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(OpenStoreId(unknown, MAPI_BEST_ACCESS), MAPI_E_NOT_FOUND);
    EXPECT_EQ(OpenStoreId({}, MAPI_BEST_ACCESS), MAPI_E_INVALID_ENTRYID);
    EXPECT_EQ(OpenStoreId(Bytes(10, 7), MAPI_BEST_ACCESS), MAPI_E_INVALID_ENTRYID);
    EXPECT_EQ(OpenStoreId(Folder(L"Inbox").EntryId(), MAPI_BEST_ACCESS), MAPI_E_UNKNOWN_ENTRYID);
    Ref<IMsgStore> store;
    EXPECT_EQ(Session()->OpenMsgStore(0, 10, nullptr, nullptr, 0, &store), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(Session()->OpenMsgStore(0, 10, Id(id), nullptr, 0, nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(OpenStoreId(Store(3).EntryId(), MAPI_BEST_ACCESS), S_OK) << "another's mailbox, by its id";

    Store().SetReadOnly(true);
    EXPECT_EQ(OpenStoreId(id, MDB_WRITE), E_ACCESSDENIED);
    EXPECT_EQ(OpenStoreId(id, MAPI_BEST_ACCESS), S_OK);
    EXPECT_EQ(Open(Folder(L"Inbox").EntryId(), MAPI_MODIFY), E_ACCESSDENIED);
    EXPECT_EQ(Set(OpenFolder(L"Inbox"), Text(PR_COMMENT_W, L"x")), E_ACCESSDENIED);
}

TEST_F(SessionTest, NothingInAStoreIsWrittenUnlessItIsOpenedForIt) {
    const Bytes inboxId = Folder(L"Inbox").EntryId();
    const Bytes messageId = GetBinary(NewMessage(L"Hello"), PR_ENTRYID);
    const struct {
        ULONG store, flags;
        HRESULT storeWritten, opened, written;
    } cases[] = {
        {0, MAPI_MODIFY, E_ACCESSDENIED, E_ACCESSDENIED, 0},
        {0, MAPI_BEST_ACCESS, E_ACCESSDENIED, S_OK, E_ACCESSDENIED},
        {0, 0, E_ACCESSDENIED, S_OK, E_ACCESSDENIED},
        {MDB_WRITE, 0, S_OK, S_OK, E_ACCESSDENIED},
        {MDB_WRITE, MAPI_MODIFY, S_OK, S_OK, S_OK},
        {MAPI_BEST_ACCESS, MAPI_MODIFY, S_OK, S_OK, S_OK},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(&row - cases);
        const Ref<IMsgStore> store = OpenStore(0, row.store);
        EXPECT_EQ(Set(store, Text(PR_COMMENT_W, L"x")), row.storeWritten);
        Ref<IMAPIFolder> folder, reader;
        Ref<IMessage> message;
        ASSERT_EQ(OpenEntry(store, inboxId, 0, reader), S_OK);
        EXPECT_EQ(OpenEntry(store, inboxId, row.flags, folder), row.opened);
        EXPECT_EQ(OpenEntry(reader, messageId, row.flags, message), row.opened) << "through a folder too";
        if (folder && message) {
            EXPECT_EQ(Set(folder, Text(PR_COMMENT_W, L"x")), row.written);
            EXPECT_EQ(Set(message, Text(PR_SUBJECT_W, L"x")), row.written);
        }
    }
    EXPECT_EQ(GetText(OpenStore(0, 0), PR_COMMENT_W), L"x");
}

TEST_F(SessionTest, EntryIdsOpenWhatTheyName) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Bytes messageId = GetBinary(message, PR_ENTRYID);
    Bytes goneId = messageId;
    goneId[goneId.size() - 3] ^= 0x40;
    Bytes foreignId = messageId;
    foreignId[4] ^= 1;
    const auto gal = World().Addresses().Entries();
    const Bytes oneOff = mailbox::MakeOneOffEntryId(L"Ann", L"SMTP", L"ann@example.org");
    const struct {
        Bytes id;
        ULONG flags;
        const IID* iid;
        HRESULT status;
        ULONG type;
    } cases[] = {
        {Store().EntryId(), 0, nullptr, S_OK, MAPI_STORE},
        {Folder(L"Inbox").EntryId(), MAPI_MODIFY, nullptr, S_OK, MAPI_FOLDER},
        {Folder(L"Inbox").EntryId(), 0, &mapi::kIidContainer, S_OK, MAPI_FOLDER},
        {Folder(L"Inbox").EntryId(), 0, &mapi::kIidMessage, MAPI_E_INTERFACE_NOT_SUPPORTED, 0},
        {messageId, MAPI_BEST_ACCESS, &mapi::kIidProp, S_OK, MAPI_MESSAGE},
        {messageId, 0x8000, nullptr, MAPI_E_UNKNOWN_FLAGS, 0},
        {gal.front()->EntryId(), MAPI_BEST_ACCESS, nullptr, S_OK, MAPI_MAILUSER},
        {gal.front()->EntryId(), MAPI_MODIFY, nullptr, E_ACCESSDENIED, 0},
        {gal.back()->EntryId(), 0, nullptr, S_OK, MAPI_DISTLIST},
        {oneOff, 0, &mapi::kIidMailUser, S_OK, MAPI_MAILUSER},
        {World().Addresses().EntryId(), 0, nullptr, S_OK, MAPI_ABCONT},
        {goneId, 0, nullptr, MAPI_E_NOT_FOUND, 0},
        {foreignId, 0, nullptr, MAPI_E_UNKNOWN_ENTRYID, 0},
        {Bytes(40, 7), 0, nullptr, MAPI_E_UNKNOWN_ENTRYID, 0},
        {Bytes(10, 7), 0, nullptr, MAPI_E_INVALID_ENTRYID, 0},
        {{}, 0, nullptr, MAPI_E_INVALID_ENTRYID, 0},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(Open(row.id, row.flags, row.iid), row.status) << "row " << &row - cases;
        EXPECT_EQ(m_type, row.type) << "row " << &row - cases;
    }
}

TEST_F(SessionTest, AStoreOpensItsOwnEntriesOnly) {
    const Ref<IMsgStore> store = OpenStore();
    Ref<IMAPIFolder> folder;
    EXPECT_EQ(OpenEntry(store, Folder(L"Inbox").EntryId(), 0, folder), S_OK);
    EXPECT_EQ(OpenEntry(store, Store(1).IpmSubtree().EntryId(), 0, folder), MAPI_E_UNKNOWN_ENTRYID);
    ASSERT_EQ(OpenEntry(store, {}, 0, folder), S_OK);
    EXPECT_EQ(GetBinary(folder, PR_ENTRYID), Store().Root().EntryId());
    EXPECT_EQ(GetBinary(store, PR_IPM_SENTMAIL_ENTRYID), Folder(L"Sent Items").EntryId());
    ULONG size = 0;
    Block<ENTRYID> received;
    ASSERT_EQ(store->GetReceiveFolder(nullptr, 0, &size, &received, nullptr), S_OK);
    EXPECT_EQ(BytesOf(size, received), Folder(L"Inbox").EntryId());
    EXPECT_EQ(store->AbortSubmit(0, nullptr, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(store->Advise(0, nullptr, 0, nullptr, &size), MAPI_E_NO_SUPPORT);
}

TEST_F(SessionTest, EntryIdsAreComparedByWhatTheyName) {
    const Bytes inbox = Folder(L"Inbox").EntryId(), drafts = Folder(L"Drafts").EntryId(), junk(40, 7);
    const Bytes wide = mailbox::MakeOneOffEntryId(L"Ann", L"SMTP", L"ann@example.org");
    const Bytes narrow = mailbox::MakeOneOffEntryId(L"Ann", L"smtp", L"Ann@example.org", false);
    ULONG result = 0;
    const auto compare = [&](const Bytes& left, const Bytes& right) {
        return Session()->CompareEntryIDs(Size(left), Id(left), Size(right), Id(right), 0, &result);
    };
    const std::tuple<const Bytes&, const Bytes&, ULONG> cases[] = {
        {inbox, inbox, 1}, {inbox, drafts, 0}, {wide, narrow, 1}, {wide, inbox, 0}};
    for (const auto& [left, right, expected] : cases) {
        result = 7;
        ASSERT_EQ(compare(left, right), S_OK);
        EXPECT_EQ(result, expected);
    }
    EXPECT_EQ(compare(inbox, junk), MAPI_E_UNKNOWN_ENTRYID);
    EXPECT_EQ(Session()->CompareEntryIDs(46, nullptr, 46, Id(inbox), 0, &result), MAPI_E_INVALID_PARAMETER);
}

TEST_F(SessionTest, TheUserIsTheOwnerOfTheDefaultStore) {
    ULONG size = 0;
    Block<ENTRYID> user;
    ASSERT_EQ(Session()->QueryIdentity(&size, &user), S_OK);
    EXPECT_EQ(BytesOf(size, user), World().Addresses().Entries().front()->EntryId());
    ULONG count = 0;
    Block<LPTSTR> types;
    ASSERT_EQ(Session()->EnumAdrTypes(MAPI_UNICODE, &count, &types), S_OK);
    ASSERT_EQ(count, 2u);
    EXPECT_STREQ(types[1], L"SMTP");
}

TEST_F(SessionTest, ALoggedOffSessionIsAtAnEnd) {
    const Ref<IMAPIFolder> inbox = OpenFolder(L"Inbox");
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IStream> stream = OpenStream(message, PR_SUBJECT_W);
    Ref<IMAPISession> other(mapi::MakeSession());
    ASSERT_EQ(Session()->Logoff(0, 0, 0), S_OK);
    Ref<IMAPITable> table;
    EXPECT_EQ(Session()->GetMsgStoresTable(0, &table), MAPI_E_END_OF_SESSION);
    EXPECT_EQ(inbox->GetContentsTable(0, &table), MAPI_E_END_OF_SESSION) << "with all that came from it";
    EXPECT_EQ(Set(message, Text(PR_SUBJECT_W, L"x")), MAPI_E_END_OF_SESSION);
    EXPECT_EQ(stream->Commit(0), MAPI_E_END_OF_SESSION);
    EXPECT_EQ(other->GetMsgStoresTable(0, &table), S_OK);
}

using FolderTest = SessionTest;

TEST_F(FolderTest, TheHierarchyIsListedToTheDepthWanted) {
    const Ref<IMAPIFolder> inbox = OpenFolder(L"Inbox");
    Ref<IMAPIFolder> sub, deep;
    const auto create = [](IMAPIFolder* in, const void* name, ULONG flags, Ref<IMAPIFolder>& folder) {
        const auto text = static_cast<LPTSTR>(const_cast<void*>(name));
        return in->CreateFolder(FOLDER_GENERIC, text, nullptr, nullptr, flags, &folder);
    };
    ASSERT_EQ(create(inbox, L"Sub", MAPI_UNICODE, sub), S_OK);
    ASSERT_EQ(create(sub, "Deep", 0, deep), S_OK);
    EXPECT_EQ(Column(Table(inbox, &IMAPIContainer::GetHierarchyTable), PR_DISPLAY_NAME_W), Texts{L"Sub"});
    const auto table = Table(inbox, &IMAPIContainer::GetHierarchyTable, MAPI_UNICODE | CONVENIENT_DEPTH);
    EXPECT_EQ(Column(table, PR_DISPLAY_NAME_W), (Texts{L"Sub", L"Deep"}));
    const Rows rows(table, {PR_DEPTH});
    EXPECT_EQ(rows.At(0, 0).Value.l, 1);
    EXPECT_EQ(rows.At(1, 0).Value.l, 2);
    ASSERT_EQ(Set(deep, Text(PR_DISPLAY_NAME_W, L"Renamed")), S_OK);
    table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr);
    EXPECT_EQ(Column(table, PR_DISPLAY_NAME_W), (Texts{L"Sub", L"Renamed"}));
}

TEST_F(FolderTest, CreatingAFolderTellsWhyNot) {
    const Ref<IMAPIFolder> inbox = OpenFolder(L"Inbox");
    const auto create = [](IMAPIFolder* in, const wchar_t* name, ULONG type, ULONG flags) {
        Ref<IMAPIFolder> folder;
        return in->CreateFolder(type, const_cast<wchar_t*>(name), nullptr, nullptr, flags | MAPI_UNICODE,
                                &folder);
    };
    EXPECT_EQ(create(inbox, L"Sub", FOLDER_GENERIC, 0), S_OK);
    EXPECT_EQ(create(inbox, L"SUB", FOLDER_GENERIC, 0), MAPI_E_COLLISION);
    EXPECT_EQ(create(inbox, L"sub", FOLDER_GENERIC, OPEN_IF_EXISTS), S_OK);
    EXPECT_EQ(create(inbox, L"", FOLDER_GENERIC, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(create(inbox, nullptr, FOLDER_GENERIC, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(create(inbox, L"New", FOLDER_SEARCH, 0), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(create(inbox, L"New", 9, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(create(inbox, L"New", FOLDER_GENERIC, 0x4000), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(create(OpenFolder(L"Inbox", 0), L"New", FOLDER_GENERIC, 0), E_ACCESSDENIED);
    EXPECT_EQ(Folder(L"Inbox").Subfolders().size(), 1u);
}

TEST_F(FolderTest, FoldersAreDeletedMovedAndCopied) {
    const Ref<IMAPIFolder> inbox = OpenFolder(L"Inbox"), drafts = OpenFolder(L"Drafts");
    std::shared_ptr<mailbox::Folder> sub, inner;
    ASSERT_EQ(Folder(L"Inbox").CreateSubfolder({L"Sub", 0, L""}, sub), S_OK);
    ASSERT_EQ(sub->CreateSubfolder({L"Inner", 0, L""}, inner), S_OK);
    const Ref<IMAPIFolder> innerView(mapi::MakeFolder(inner));
    std::shared_ptr<mailbox::Message> received;
    ASSERT_EQ(inner->Receive({}, false, received), S_OK);
    const Bytes id = sub->EntryId();
    const auto remove = [](IMAPIFolder* from, const Bytes& which, ULONG flags) {
        return from->DeleteFolder(Size(which), Id(which), 0, nullptr, flags);
    };
    const auto copy = [&](IMAPIFolder* to, const wchar_t* name, ULONG flags) {
        return inbox->CopyFolder(Size(id), Id(id), nullptr, to, const_cast<wchar_t*>(name), 0, nullptr,
                                 flags | MAPI_UNICODE);
    };
    EXPECT_EQ(remove(inbox, inner->EntryId(), 0), MAPI_E_NOT_FOUND) << "not right below";
    EXPECT_EQ(remove(inbox, id, DEL_MESSAGES), MAPI_E_HAS_FOLDERS);
    ASSERT_EQ(copy(drafts, L"Copy", COPY_SUBFOLDERS), S_OK);
    const mailbox::Folder* copied = Folder(L"Drafts").FindSubfolder(L"Copy");
    ASSERT_TRUE(copied && copied->FindSubfolder(L"Inner"));
    EXPECT_EQ(copied->FindSubfolder(L"Inner")->Messages().size(), 1u);
    ASSERT_EQ(copy(drafts, L"Flat", 0), S_OK);
    EXPECT_TRUE(Folder(L"Drafts").FindSubfolder(L"Flat")->Subfolders().empty());
    EXPECT_EQ(copy(drafts, nullptr, FOLDER_MOVE | 0x8000), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(copy(innerView, nullptr, FOLDER_MOVE), MAPI_E_FOLDER_CYCLE);
    ASSERT_EQ(copy(drafts, nullptr, FOLDER_MOVE), S_OK);
    EXPECT_TRUE(Folder(L"Drafts").FindSubfolder(L"Sub"));
    ASSERT_EQ(remove(drafts, id, DEL_FOLDERS | DEL_MESSAGES), S_OK);
    ULONG count = 0;
    Block<SPropValue> values;
    EXPECT_EQ(innerView->GetProps(nullptr, 0, &count, &values), MAPI_E_OBJECT_DELETED);
}

TEST_F(FolderTest, MessagesAreCopiedMovedMarkedAndDeletedByTheirIds) {
    const Ref<IMAPIFolder> inbox = OpenFolder(L"Inbox"), drafts = OpenFolder(L"Drafts");
    const Bytes one = GetBinary(NewMessage(L"one"), PR_ENTRYID);
    const Bytes two = GetBinary(NewMessage(L"two"), PR_ENTRYID);
    Bytes gone = two;
    gone[gone.size() - 3] ^= 0x40;
    const auto entry = [](const Bytes& id) { return SBinary{Size(id), const_cast<BYTE*>(id.data())}; };
    SBinary both[] = {entry(one), entry(two)}, partly[] = {entry(gone), entry(two)};
    ENTRYLIST all{2, both}, some{2, partly}, bad{2, nullptr};
    const auto count = [this](const wchar_t* name) { return Folder(name).Messages().size(); };

    ASSERT_EQ(inbox->CopyMessages(&all, nullptr, drafts, 0, nullptr, 0), S_OK);
    EXPECT_EQ(count(L"Inbox"), 2u);
    EXPECT_EQ(count(L"Drafts"), 2u);
    EXPECT_EQ(drafts->DeleteMessages(&all, 0, nullptr, 0), MAPI_W_PARTIAL_COMPLETION) << "they are elsewhere";
    EXPECT_EQ(count(L"Drafts"), 2u);
    ASSERT_EQ(inbox->SetReadFlags(&all, 0, nullptr, CLEAR_READ_FLAG), S_OK);
    EXPECT_EQ(GetLong(inbox, PR_CONTENT_UNREAD), 2);
    for (const ULONG receipts : {GENERATE_RECEIPT_ONLY, CLEAR_RN_PENDING, CLEAR_NRN_PENDING}) {
        EXPECT_EQ(inbox->SetReadFlags(&all, 0, nullptr, receipts), S_OK);
        EXPECT_EQ(GetLong(inbox, PR_CONTENT_UNREAD), 2) << "receipts are not the mark";
    }
    for (const ULONG receipts : {SUPPRESS_RECEIPT, GENERATE_RECEIPT_ONLY})
        EXPECT_EQ(inbox->SetReadFlags(&all, 0, nullptr, receipts | CLEAR_READ_FLAG),
                  MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(inbox->SetReadFlags(&bad, 0, nullptr, GENERATE_RECEIPT_ONLY), MAPI_E_INVALID_PARAMETER);
    ASSERT_EQ(inbox->SetReadFlags(nullptr, 0, nullptr, 0), S_OK);
    EXPECT_EQ(GetLong(inbox, PR_CONTENT_UNREAD), 0);
    EXPECT_EQ(inbox->CopyMessages(&some, nullptr, drafts, 0, nullptr, MESSAGE_MOVE),
              MAPI_W_PARTIAL_COMPLETION);
    EXPECT_EQ(count(L"Inbox"), 1u);
    EXPECT_EQ(count(L"Drafts"), 3u);
    EXPECT_EQ(inbox->DeleteMessages(&bad, 0, nullptr, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(inbox->CopyMessages(&all, nullptr, nullptr, 0, nullptr, 0), MAPI_E_INVALID_PARAMETER);
    ENTRYLIST first{1, both};
    EXPECT_EQ(OpenFolder(L"Inbox", 0)->DeleteMessages(&first, 0, nullptr, 0), E_ACCESSDENIED);
    ASSERT_EQ(inbox->DeleteMessages(&first, 0, nullptr, 0), S_OK);
    EXPECT_EQ(count(L"Inbox"), 0u);
    ASSERT_EQ(drafts->EmptyFolder(0, nullptr, 0), S_OK);
    EXPECT_EQ(count(L"Drafts"), 0u);
}

TEST_F(FolderTest, AssociatedMessagesStandApart) {
    const Ref<IMAPIFolder> inbox = OpenFolder(L"Inbox");
    Ref<IMessage> message;
    ASSERT_EQ(inbox->CreateMessage(nullptr, MAPI_ASSOCIATED, &message), S_OK);
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(RowCount(Table(inbox, &IMAPIContainer::GetContentsTable, 0)), 0u);
    EXPECT_EQ(RowCount(Table(inbox, &IMAPIContainer::GetContentsTable, MAPI_ASSOCIATED)), 1u);
    Ref<IMAPITable> opened;
    ASSERT_EQ(inbox->OpenProperty(PR_FOLDER_ASSOCIATED_CONTENTS, &mapi::kIidTable, 0, 0, opened.Unknown()),
              S_OK);
    EXPECT_EQ(RowCount(opened), 1u);
}

TEST_F(FolderTest, ACopyOfAFolderHasItsMessagesAndSubfolders) {
    NewMessage(L"one");
    std::shared_ptr<mailbox::Folder> sub, target;
    ASSERT_EQ(Folder(L"Inbox").CreateSubfolder({L"Sub", 0, L""}, sub), S_OK);
    ASSERT_EQ(Folder(L"Drafts").CreateSubfolder({L"Target", 0, L""}, target), S_OK);
    const Ref<IMAPIFolder> inbox = OpenFolder(L"Inbox"), to(mapi::MakeFolder(target));
    const auto copyBut = [&](Tags excluded) {
        return inbox->CopyTo(0, nullptr, excluded, 0, nullptr, &mapi::kIidFolder, to, 0, nullptr);
    };
    ASSERT_EQ(copyBut({PR_CONTAINER_HIERARCHY}), S_OK);
    EXPECT_EQ(target->Messages().size(), 1u);
    EXPECT_TRUE(target->Subfolders().empty());
    ASSERT_EQ(copyBut({PR_CONTAINER_CONTENTS}), S_OK);
    EXPECT_TRUE(target->FindSubfolder(L"Sub"));
    EXPECT_EQ(target->Messages().size(), 1u);
}

TEST_F(FolderTest, WhatMakesNoSenseHereIsRefused) {
    const Ref<IMAPIFolder> inbox = OpenFolder(L"Inbox");
    ULONG number = 0;
    EXPECT_EQ(inbox->SetSearchCriteria(nullptr, nullptr, 0), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(inbox->GetMessageStatus(0, nullptr, 0, &number), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(inbox->SaveContentsSort(nullptr, 0), MAPI_E_NO_SUPPORT);
    Ref<IMessage> message;
    EXPECT_EQ(inbox->CreateMessage(&mapi::kIidFolder, 0, &message), MAPI_E_INTERFACE_NOT_SUPPORTED);
    EXPECT_EQ(inbox->CreateMessage(nullptr, 0x100, &message), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(OpenFolder(L"Inbox", 0)->CreateMessage(nullptr, 0, &message), E_ACCESSDENIED);
}

} // namespace
} // namespace mapi_tests
