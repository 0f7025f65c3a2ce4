// IMessage and IAttach: recipients, attachments, submission.
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/Tags.h"
#include "tests/mapi/Client.h"

using namespace standin;

namespace mapi_tests {
namespace {

class MessageTest : public MapiTest {
protected:
    static Ref<IMAPITable> RecipientTable(IMessage* message) {
        return Table(message, &IMessage::GetRecipientTable);
    }
    static Texts Recipients(IMessage* message) { return Column(RecipientTable(message), PR_DISPLAY_NAME_W); }
    static Texts Attachments(IMessage* message) {
        return Column(Table(message, &IMessage::GetAttachmentTable), PR_ATTACH_LONG_FILENAME_W);
    }
    void AddRecipient(IMessage* message, const wchar_t* name, LONG type = MAPI_TO) {
        AddressList list{{Text(PR_DISPLAY_NAME_W, name), Long(PR_RECIPIENT_TYPE, type)}};
        EXPECT_EQ(OpenAddressBook()->ResolveName(0, MAPI_UNICODE, nullptr, list), S_OK);
        EXPECT_EQ(message->ModifyRecipients(MODRECIP_ADD, list), S_OK);
    }
};

TEST_F(MessageTest, RecipientsAreAddedReplacedAndRemoved) {
    const Ref<IMessage> message = NewMessage();
    AddressList three{{Text(PR_DISPLAY_NAME_W, L"Ann"), Long(PR_RECIPIENT_TYPE, MAPI_TO)},
                      {Text(PR_DISPLAY_NAME_W, L"Bob"), Long(PR_RECIPIENT_TYPE, MAPI_CC)},
                      {Text(PR_DISPLAY_NAME_W, L"Cid"), Long(PR_RECIPIENT_TYPE, MAPI_TO)}};
    ASSERT_EQ(message->ModifyRecipients(MODRECIP_ADD, three), S_OK);
    EXPECT_EQ(Recipients(message), (Texts{L"Ann", L"Bob", L"Cid"}));
    EXPECT_EQ(GetText(message, PR_DISPLAY_TO_W), L"") << "before they are saved";
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(GetText(message, PR_DISPLAY_TO_W), L"Ann; Cid");
    EXPECT_EQ(GetText(message, PR_DISPLAY_CC_W), L"Bob");

    const Ref<IMAPITable> table = RecipientTable(message);
    const LONG bob = Rows(table, {PR_ROWID}).At(1, 0).Value.l;
    AddressList changed{
        {Text(PR_DISPLAY_NAME_W, L"Bobby"), Long(PR_ROWID, bob), Long(PR_RECIPIENT_TYPE, MAPI_BCC)}};
    ASSERT_EQ(message->ModifyRecipients(MODRECIP_MODIFY, changed), S_OK);
    EXPECT_EQ(Recipients(message), (Texts{L"Ann", L"Bobby", L"Cid"}));
    EXPECT_EQ(GetText(message, PR_DISPLAY_CC_W), L"Bob") << "until they are saved";
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(GetText(message, PR_DISPLAY_CC_W), L"");
    table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr);
    EXPECT_EQ(Column(table, PR_DISPLAY_NAME_W), (Texts{L"Ann", L"Bobby", L"Cid"})) << "in an open table too";
    ASSERT_EQ(message->ModifyRecipients(MODRECIP_REMOVE, changed), S_OK);
    EXPECT_EQ(message->ModifyRecipients(MODRECIP_REMOVE, changed), MAPI_E_NOT_FOUND);
    EXPECT_EQ(Recipients(message), (Texts{L"Ann", L"Cid"}));
    AddressList other{{Text(PR_DISPLAY_NAME_W, L"Dora"), Long(PR_RECIPIENT_TYPE, MAPI_TO)}};
    ASSERT_EQ(message->ModifyRecipients(0, other), S_OK);
    EXPECT_EQ(Recipients(message), Texts{L"Dora"});
}

TEST_F(MessageTest, RecipientListsThatCantBeChangeNothing) {
    const Ref<IMessage> message = NewMessage();
    AddRecipient(message, L"Warehouse");
    AddressList noRow{{Text(PR_DISPLAY_NAME_W, L"x"), Long(PR_RECIPIENT_TYPE, MAPI_TO)}};
    AddressList noType{{Text(PR_DISPLAY_NAME_W, L"x")}};
    AddressList noName{{Long(PR_RECIPIENT_TYPE, MAPI_TO)}};
    AddressList nullText{{Text(PR_DISPLAY_NAME_W, L"good")}, {Text(PR_DISPLAY_NAME_W, nullptr)}};
    AddressList object{{Long(PR_MESSAGE_RECIPIENTS, 0)}};
    EXPECT_EQ(message->ModifyRecipients(MODRECIP_ADD, nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(message->ModifyRecipients(MODRECIP_MODIFY, noRow), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(message->ModifyRecipients(MODRECIP_REMOVE, noRow), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(message->ModifyRecipients(0, nullText), MAPI_E_INVALID_PARAMETER);
    for (const ULONG flags : {ULONG{0}, ULONG{MODRECIP_ADD}}) {
        EXPECT_EQ(message->ModifyRecipients(flags, noType), MAPI_E_INVALID_PARAMETER);
        EXPECT_EQ(message->ModifyRecipients(flags, noName), MAPI_E_INVALID_PARAMETER);
    }
    EXPECT_EQ(message->ModifyRecipients(MODRECIP_ADD, object), MAPI_E_INVALID_TYPE);
    EXPECT_EQ(message->ModifyRecipients(MODRECIP_ADD | MODRECIP_REMOVE, noRow), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(Recipients(message), Texts{L"Warehouse"});
}

TEST_F(MessageTest, RowsOfTheTableGoBackAsAnAddressList) {
    const Ref<IMessage> message = NewMessage();
    AddressList names{{Text(PR_DISPLAY_NAME_W, L"Service North"), Long(PR_RECIPIENT_TYPE, MAPI_CC)},
                      {Text(PR_DISPLAY_NAME_W, L"new@example.org"), Long(PR_RECIPIENT_TYPE, MAPI_TO),
                       Long(PROP_TAG(PT_LONG, 0x6700), 5)}};
    ASSERT_EQ(message->ModifyRecipients(MODRECIP_ADD, names), S_OK);
    const Ref<IMAPITable> table = RecipientTable(message);
    Block<SPropTagArray> columns;
    ASSERT_EQ(table->QueryColumns(TBL_ALL_COLUMNS, &columns), S_OK);
    ASSERT_EQ(table->SetColumns(columns.Get(), 0), S_OK);
    Rows rows;
    ASSERT_EQ(table->QueryRows(10, 0, &rows), S_OK);
    // A row set and an address list have one layout.
    auto* list = reinterpret_cast<ADRLIST*>(rows.Release());
    EXPECT_EQ(OpenAddressBook()->ResolveName(0, MAPI_UNICODE, nullptr, list), S_OK);
    EXPECT_EQ(message->ModifyRecipients(MODRECIP_MODIFY, list), S_OK);
    FreePadrlist(list);

    EXPECT_EQ(Recipients(message), (Texts{L"Service North", L"new@example.org"}));
    EXPECT_EQ(Column(RecipientTable(message), PR_ADDRTYPE_W), (Texts{L"EX", L"SMTP"}));
    EXPECT_EQ(Column(RecipientTable(message), mailbox::kPrSmtpAddress),
              (Texts{L"service.north@example.com", L"-"}))
        << "one-offs are in no directory";
    EXPECT_EQ(Column(RecipientTable(message), PR_EMAIL_ADDRESS_W).back(), L"new@example.org");
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(GetText(message, PR_DISPLAY_CC_W), L"Service North");
}

TEST_F(MessageTest, AttachmentsShowOnceTheyAreSaved) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    Ref<IAttach> attach = NewAttach(message, L"a.txt");
    ASSERT_EQ(Set(attach, Binary(PR_ATTACH_DATA_BIN, BytesOf("data"))), S_OK);
    ASSERT_EQ(Set(attach, Long(PR_ATTACH_METHOD, ATTACH_BY_VALUE)), S_OK);
    EXPECT_EQ(Attachments(message), Texts());
    ASSERT_EQ(attach->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(Attachments(message), Texts{L"a.txt"});
    EXPECT_EQ(Attachments(Reopen(message)), Texts()) << "not before the message is saved";
    ASSERT_EQ(NewAttach(message, L"b.txt")->SaveChanges(0), S_OK);
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);

    const Ref<IMessage> reopened = Reopen(message);
    EXPECT_EQ(Attachments(reopened), (Texts{L"a.txt", L"b.txt"}));
    const Rows rows(Table(reopened, &IMessage::GetAttachmentTable),
                    {PR_ATTACH_NUM, PR_ENTRYID, PR_ATTACH_DATA_BIN, PR_ATTACH_SIZE});
    EXPECT_EQ(rows.At(1, 0).Value.l, 1);
    EXPECT_EQ(PROP_TYPE(rows.At(0, 1).ulPropTag), PT_ERROR);
    EXPECT_EQ(PROP_TYPE(rows.At(0, 2).ulPropTag), PT_ERROR) << "tables don't carry data";
    ASSERT_EQ(reopened->OpenAttach(0, nullptr, MAPI_BEST_ACCESS, &attach), S_OK);
    EXPECT_EQ(GetLong(attach, PR_ATTACH_SIZE), rows.At(0, 3).Value.l);
    EXPECT_EQ(GetBinary(attach, PR_ATTACH_DATA_BIN), BytesOf("data"));
}

TEST_F(MessageTest, OpeningAndDeletingAttachmentsTellWhyNot) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    ASSERT_EQ(NewAttach(message, L"a")->SaveChanges(0), S_OK);
    ASSERT_EQ(NewAttach(message, L"b")->SaveChanges(0), S_OK);
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    const Ref<IMessage> readOnly = Reopen(message);
    const struct {
        IMessage* message;
        ULONG number;
        const IID* iid;
        ULONG flags;
        HRESULT status;
    } cases[] = {
        {message, 1, &mapi::kIidAttach, MAPI_MODIFY, S_OK},
        {message, 2, nullptr, 0, MAPI_E_NOT_FOUND},
        {message, static_cast<ULONG>(-1), nullptr, 0, MAPI_E_NOT_FOUND},
        {message, 0, &mapi::kIidMessage, 0, MAPI_E_INTERFACE_NOT_SUPPORTED},
        {message, 0, nullptr, 0x100, MAPI_E_UNKNOWN_FLAGS},
        {readOnly, 0, nullptr, MAPI_MODIFY, E_ACCESSDENIED},
        {readOnly, 0, nullptr, MAPI_BEST_ACCESS, S_OK},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(&row - cases);
        Ref<IAttach> attach;
        EXPECT_EQ(row.message->OpenAttach(row.number, row.iid, row.flags, &attach), row.status);
        if (attach && row.message == readOnly) {
            EXPECT_EQ(Set(attach, Text(PR_ATTACH_LONG_FILENAME_W, L"c")), E_ACCESSDENIED);
        }
    }
    EXPECT_EQ(message->DeleteAttach(5, 0, nullptr, 0), MAPI_E_NOT_FOUND);
    ASSERT_EQ(message->DeleteAttach(0, 0, nullptr, ATTACH_DIALOG), S_OK);
    Ref<IAttach> attach;
    EXPECT_EQ(message->OpenAttach(0, nullptr, 0, &attach), MAPI_E_NOT_FOUND);
    ASSERT_EQ(message->OpenAttach(1, nullptr, 0, &attach), S_OK) << "the others keep their numbers";
    EXPECT_EQ(GetText(attach, PR_ATTACH_LONG_FILENAME_W), L"b");
    ASSERT_EQ(message->OpenAttach(1, nullptr, MAPI_MODIFY, &attach), S_OK);
    ASSERT_EQ(message->DeleteAttach(1, 0, nullptr, 0), S_OK);
    EXPECT_EQ(attach->SaveChanges(KEEP_OPEN_READWRITE), MAPI_E_OBJECT_DELETED) << "it doesn't come back";
    EXPECT_EQ(Attachments(message), Texts());
}

TEST_F(MessageTest, AMessageIsEmbeddedInThreeSaves) {
    const Ref<IMessage> message = NewMessage(L"Outer");
    Ref<IAttach> attach = NewAttach(message, L"mail");
    Ref<IMessage> inner;
    const auto open = [&](ULONG flags) {
        return attach->OpenProperty(PR_ATTACH_DATA_OBJ, &mapi::kIidMessage, 0, flags, inner.Unknown());
    };
    EXPECT_EQ(open(MAPI_CREATE | MAPI_MODIFY), MAPI_E_INTERFACE_NOT_SUPPORTED) << "by its method";
    ASSERT_EQ(Set(attach, Long(PR_ATTACH_METHOD, ATTACH_EMBEDDED_MSG)), S_OK);
    EXPECT_EQ(open(0), MAPI_E_NOT_FOUND);
    ASSERT_EQ(open(MAPI_CREATE | MAPI_MODIFY), S_OK);
    const Ref<IMessage> source = NewMessage(L"Inner");
    AddRecipient(source, L"Warehouse");
    ASSERT_EQ(source->CopyTo(0, nullptr, Tags{PR_ENTRYID}, 0, nullptr, &mapi::kIidMessage, inner, 0, nullptr),
              S_OK);
    ASSERT_EQ(inner->SaveChanges(FORCE_SAVE), S_OK);
    ASSERT_EQ(attach->SaveChanges(FORCE_SAVE), S_OK);
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);

    const Ref<IMessage> reopened = Reopen(message);
    ASSERT_EQ(reopened->OpenAttach(0, nullptr, 0, &attach), S_OK);
    EXPECT_EQ(open(MAPI_MODIFY), E_ACCESSDENIED);
    ASSERT_EQ(open(0), S_OK);
    EXPECT_EQ(GetText(inner, PR_SUBJECT_W), L"Inner");
    EXPECT_EQ(Recipients(inner), Texts{L"Warehouse"});
    EXPECT_EQ(Set(inner, Text(PR_SUBJECT_W, L"x")), E_ACCESSDENIED);
    EXPECT_EQ(inner->SubmitMessage(0), E_ACCESSDENIED);
    Ref<IUnknown> other;
    EXPECT_EQ(attach->OpenProperty(PR_ATTACH_DATA_OBJ, &mapi::kIidStorage, 0, 0, &other),
              MAPI_E_INTERFACE_NOT_SUPPORTED);

    const Ref<IMessage> second = NewMessage(L"Second");
    const Ref<IAttach> copy = NewAttach(second, L"copy");
    ASSERT_EQ(attach->CopyTo(0, nullptr, nullptr, 0, nullptr, &mapi::kIidAttach, copy, 0, nullptr), S_OK);
    ASSERT_EQ(copy->OpenProperty(PR_ATTACH_DATA_OBJ, &mapi::kIidMessage, 0, 0, inner.Unknown()), S_OK);
    EXPECT_EQ(GetText(inner, PR_SUBJECT_W), L"Inner");
}

TEST_F(MessageTest, AnOleObjectIsAStorageAndAFile) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    Ref<IAttach> attach = NewAttach(message, L"ole");
    Ref<IStorage> storage;
    const auto open = [&](ULONG flags) {
        return attach->OpenProperty(PR_ATTACH_DATA_OBJ, &mapi::kIidStorage, 0, flags, storage.Unknown());
    };
    EXPECT_EQ(open(MAPI_CREATE | MAPI_MODIFY), MAPI_E_INTERFACE_NOT_SUPPORTED) << "by its method";
    ASSERT_EQ(Set(attach, Long(PR_ATTACH_METHOD, ATTACH_OLE)), S_OK);
    EXPECT_EQ(open(0), MAPI_E_NOT_FOUND);
    ASSERT_EQ(open(MAPI_CREATE | MAPI_MODIFY), S_OK);
    constexpr DWORD kExclusive = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
    Ref<IStream> stream;
    ASSERT_EQ(storage->CreateStream(L"CONTENTS", STGM_CREATE | kExclusive, 0, 0, &stream), S_OK);
    WriteAll(stream, BytesOf("drawing"));
    stream.Clear();
    ASSERT_EQ(storage->Commit(STGC_DEFAULT), S_OK);
    storage.Clear();
    ASSERT_EQ(attach->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);

    ASSERT_EQ(Reopen(message)->OpenAttach(0, nullptr, 0, &attach), S_OK);
    ASSERT_EQ(open(0), S_OK);
    ASSERT_EQ(storage->OpenStream(L"CONTENTS", nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream), S_OK);
    EXPECT_EQ(ReadAll(stream), BytesOf("drawing"));
    stream.Clear();
    EXPECT_EQ(storage->CreateStream(L"MORE", STGM_CREATE | kExclusive, 0, 0, &stream), STG_E_ACCESSDENIED);
    EXPECT_EQ(storage->OpenStream(L"CONTENTS", nullptr, kExclusive, 0, &stream), STG_E_ACCESSDENIED);
    EXPECT_EQ(storage->DestroyElement(L"CONTENTS"), STG_E_ACCESSDENIED);
    for (const ULONG tag : {PR_ATTACH_DATA_OBJ, PR_ATTACH_DATA_BIN}) {
        ASSERT_EQ(attach->OpenProperty(tag, &mapi::kIidStreamDocfile, 0, 0, stream.Unknown()), S_OK);
        const Bytes file = ReadAll(stream);
        ASSERT_GT(file.size(), 512u);
        EXPECT_EQ(file[0], 0xD0) << "the bytes of a compound file";
    }
    EXPECT_EQ(OpenStream(attach, PR_ATTACH_DATA_BIN, 0, stream), MAPI_E_NOT_FOUND);
}

TEST_F(MessageTest, TheReadMarkTakesEffectAtOnce) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IMessage> readOnly = Reopen(message);
    const auto isRead = [&] { return (GetLong(Reopen(message), PR_MESSAGE_FLAGS) & MSGFLAG_READ) != 0; };
    ASSERT_EQ(readOnly->SetReadFlag(CLEAR_READ_FLAG), S_OK);
    EXPECT_FALSE(isRead());
    EXPECT_EQ(GetLong(readOnly, PR_MESSAGE_FLAGS) & MSGFLAG_READ, 0);
    ASSERT_EQ(message->SetReadFlag(0), S_OK);
    EXPECT_TRUE(isRead());
    for (const ULONG receipts : {SUPPRESS_RECEIPT, GENERATE_RECEIPT_ONLY})
        EXPECT_EQ(message->SetReadFlag(receipts | CLEAR_READ_FLAG), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(message->SetReadFlag(0x8000), MAPI_E_UNKNOWN_FLAGS);
    ASSERT_EQ(Set(message, Text(PR_SUBJECT_W, L"Changed")), S_OK);
    ASSERT_EQ(message->SetReadFlag(CLEAR_READ_FLAG), S_OK);
    EXPECT_EQ(GetText(message, PR_SUBJECT_W), L"Changed") << "what isn't saved yet stays";
    EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_FALSE(isRead());
}

TEST_F(MessageTest, ASubmittedMessageArrivesAndIsGone) {
    const Ref<IMessage> message = NewMessageIn(L"Outbox");
    ASSERT_EQ(Set(message, Text(PR_SUBJECT_W, L"To myself")), S_OK);
    EXPECT_EQ(message->SubmitMessage(0), MAPI_E_NO_RECIPIENTS);
    AddRecipient(message, L"Front Desk");
    ASSERT_EQ(Set(message, Binary(PR_SENTMAIL_ENTRYID, Folder(L"Sent Items").EntryId())), S_OK);
    EXPECT_EQ(message->SubmitMessage(0x10), MAPI_E_UNKNOWN_FLAGS);
    ASSERT_EQ(message->SubmitMessage(0), S_OK);
    EXPECT_EQ(message->SubmitMessage(0), MAPI_E_SUBMITTED);
    EXPECT_EQ(Set(message, Text(PR_SUBJECT_W, L"x")), MAPI_E_SUBMITTED);
    EXPECT_EQ(Folder(L"Outbox").Messages().size(), 0u);
    EXPECT_EQ(Folder(L"Sent Items").Messages().size(), 1u);
    ASSERT_EQ(Folder(L"Inbox").Messages().size(), 1u);
    EXPECT_EQ(*Folder(L"Inbox").Messages()[0]->Get<PR_SUBJECT_W>(), L"To myself");

    const Ref<IMessage> elsewhere = NewMessage(L"In the Inbox");
    AddRecipient(elsewhere, L"Front Desk");
    EXPECT_EQ(elsewhere->SubmitMessage(0), MAPI_E_NO_SUPPORT);
}

TEST_F(MessageTest, WhatWaitsInTheOutboxIsLockedForEveryone) {
    const Ref<IMessage> message = NewMessageIn(L"Outbox");
    AddRecipient(message, L"Back Office");
    ASSERT_EQ(message->SubmitMessage(0), S_OK);
    ASSERT_EQ(Folder(L"Outbox").Messages().size(), 1u);
    Bytes id = Folder(L"Outbox").Messages()[0]->EntryId();
    Ref<IMessage> anew;
    ASSERT_EQ(OpenEntry(Session(), id, MAPI_BEST_ACCESS, anew), S_OK);
    EXPECT_EQ(Set(anew, Text(PR_SUBJECT_W, L"x")), MAPI_E_SUBMITTED);
    EXPECT_EQ(anew->SaveChanges(KEEP_OPEN_READWRITE), MAPI_E_SUBMITTED);
    EXPECT_EQ(anew->SubmitMessage(0), MAPI_E_SUBMITTED);
    SBinary entry{Size(id), id.data()};
    ENTRYLIST list{1, &entry};
    const Ref<IMAPIFolder> outbox = OpenFolder(L"Outbox"), inbox = OpenFolder(L"Inbox");
    EXPECT_EQ(outbox->DeleteMessages(&list, 0, nullptr, 0), MAPI_W_PARTIAL_COMPLETION);
    EXPECT_EQ(outbox->CopyMessages(&list, nullptr, inbox, 0, nullptr, MESSAGE_MOVE),
              MAPI_W_PARTIAL_COMPLETION);
    EXPECT_EQ(Folder(L"Outbox").Messages().size(), 1u);
}

TEST_F(MessageTest, WhatWaitsForItsTimeCanBeTakenBack) {
    mailbox::Content waiting;
    waiting.properties.Set<PR_MESSAGE_FLAGS>(std::int32_t{MSGFLAG_SUBMIT | MSGFLAG_UNSENT});
    std::shared_ptr<mailbox::Message> later, sooner;
    ASSERT_EQ(Folder(L"Outbox").Receive(waiting, false, later), S_OK);
    ASSERT_EQ(Folder(L"Outbox").Receive({}, false, sooner), S_OK);
    const Ref<IMAPIFolder> outbox = OpenFolder(L"Outbox");
    EXPECT_EQ(outbox->EmptyFolder(0, nullptr, 0), MAPI_W_PARTIAL_COMPLETION);
    ASSERT_EQ(Folder(L"Outbox").Messages(), std::vector{later.get()}) << "the others go all the same";
    const Bytes id = later->EntryId();
    Ref<IMessage> message;
    ASSERT_EQ(OpenEntry(Session(), id, MAPI_BEST_ACCESS, message), S_OK);
    EXPECT_EQ(Set(message, Text(PR_SUBJECT_W, L"x")), MAPI_E_SUBMITTED);
    const Ref<IMsgStore> store(mapi::MakeStore(Store(), mailbox::Access::Modify));
    EXPECT_EQ(store->AbortSubmit(Size(id), Id(id), 1), MAPI_E_UNKNOWN_FLAGS);
    ASSERT_EQ(store->AbortSubmit(Size(id), Id(id), 0), S_OK);
    EXPECT_EQ(store->AbortSubmit(Size(id), Id(id), 0), MAPI_E_NOT_IN_QUEUE);
    ASSERT_EQ(Set(message, Text(PR_SUBJECT_W, L"x")), S_OK);
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(GetLong(message, PR_MESSAGE_FLAGS) & MSGFLAG_SUBMIT, 0);
    EXPECT_EQ(outbox->EmptyFolder(0, nullptr, 0), S_OK);
}

TEST_F(MessageTest, AMessageThatCantBeSavedIsNotSubmitted) {
    const Ref<IMessage> message = NewMessageIn(L"Outbox");
    AddRecipient(message, L"Front Desk");
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    const Ref<IMessage> other = Reopen(message, MAPI_MODIFY);
    ASSERT_EQ(Set(other, Text(PR_SUBJECT_W, L"Theirs")), S_OK);
    ASSERT_EQ(other->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    for (int attempt = 0; attempt < 2; ++attempt)
        EXPECT_EQ(message->SubmitMessage(0), MAPI_E_OBJECT_CHANGED);
    EXPECT_EQ(GetLong(message, PR_MESSAGE_FLAGS) & MSGFLAG_SUBMIT, 0);
    EXPECT_EQ(Folder(L"Inbox").Messages().size(), 0u);
}

TEST_F(MessageTest, BothViewsOfAnOpenMessageAreOne) {
    const auto open = MakeMessage();
    const Ref<IMessage> one(mapi::MakeMessage(open)), two(mapi::MakeMessage(open));
    ASSERT_EQ(Set(one, Text(PR_SUBJECT_W, L"Shared")), S_OK);
    EXPECT_EQ(GetText(two, PR_SUBJECT_W), L"Shared");
    EXPECT_EQ(*open->Get<PR_SUBJECT_W>(), L"Shared");
    open->Write(PR_SUBJECT_W, std::wstring(L"Back"));
    EXPECT_EQ(GetText(one, PR_SUBJECT_W), L"Back");
    ASSERT_EQ(one->SaveChanges(KEEP_OPEN_READONLY), S_OK);
    EXPECT_EQ(Set(two, Text(PR_SUBJECT_W, L"x")), E_ACCESSDENIED);
    const auto again = MakeMessage();
    const Ref<IMessage> three(mapi::MakeMessage(again));
    ASSERT_EQ(Set(three, Text(PR_SUBJECT_W, L"Ended")), S_OK);
    ASSERT_EQ(three->SaveChanges(0), S_OK);
    const Ref<IMessage> four(mapi::MakeMessage(again));
    EXPECT_EQ(ReadStatus(three, PR_SUBJECT_W), MAPI_E_INVALID_OBJECT);
    EXPECT_EQ(ReadStatus(four, PR_SUBJECT_W), MAPI_E_INVALID_OBJECT) << "whichever object";
    EXPECT_EQ(*again->Get<PR_SUBJECT_W>(), L"Ended") << "the clients' end, not the message's";
}

} // namespace
} // namespace mapi_tests
