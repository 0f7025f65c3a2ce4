// Sharing messages, reports, headers of remote mail, documents, storage items.
#include "Stored.h"

#include "standin/mailbox/SpecialFolders.h"

#include <mapicode.h>

namespace outlook_tests {
namespace {

namespace mailbox = standin::mailbox;

class MessageKindTest : public KindTest {
protected:
    /// A message that came in.
    Object Received(const wchar_t* messageClass, void (*fill)(mailbox::PropertyBag&) = nullptr) {
        mailbox::Content content;
        content.properties.Set<PR_MESSAGE_CLASS_W>(messageClass);
        if (fill)
            fill(content.properties);
        std::shared_ptr<mailbox::Message> message;
        mailbox::Folder* inbox = World().DefaultStore()->SpecialFolder(mailbox::kInbox);
        EXPECT_EQ(inbox->Receive(std::move(content), false, message), S_OK);
        const Object items = DefaultFolder(kInbox).Child(L"Items");
        return items.Child(L"Item", {Value(items.Number(L"Count"))});
    }
};

const std::wstring kProvider = Id(kSharingSet, 0x8A010102), kFlavor = Id(kSharingSet, 0x8A180003),
                   kFolderType = Id(kSharingSet, 0x8A14001F);

TEST_F(MessageKindTest, TheTypeOfASharingMessageIsItsFlavor) {
    const std::pair<int, int> rows[] = {{1, 0x0500}, {2, 0x0310}, {3, 0x0710}, {4, 0x3310}, {5, 0x5100}};
    const Object item = New(Value(L"IPM.Sharing"));
    EXPECT_EQ(item.Number(L"Type"), 0);
    for (const auto& [type, flavor] : rows) {
        item.Put(L"Type", Value(type));
        EXPECT_EQ(Stored(item, kFlavor), Value(flavor));
        Store(item, kFlavor, Value(flavor | 0x20000));
        EXPECT_EQ(item.Number(L"Type"), type) << "of a special folder";
        Store(item, kFlavor, Value(flavor));
    }
    Store(item, kFlavor, Value(0x20500));
    item.Put(L"Type", Value(2));
    EXPECT_EQ(Stored(item, kFlavor), Value(0x20310)) << "the mark of a special folder stays";
    EXPECT_EQ(item.TryPut(L"Type", Value(6)).Status(), E_INVALIDARG);
}

TEST_F(MessageKindTest, SharingMessagesTellFolderAndProvider) {
    const Object item = New(Value(L"IPM.Sharing"));
    EXPECT_EQ(item.Number(L"SharingProvider"), 0);
    EXPECT_EQ(item.Text(L"SharingProviderGuid"), L"");
    Store(item, kProvider, Bytes({0xAE, 0xF0, 0x06, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46}));
    EXPECT_EQ(item.Number(L"SharingProvider"), 1);
    EXPECT_EQ(item.Text(L"SharingProviderGuid"), L"{0006F0AE-0000-0000-C000-000000000046}");
    const std::pair<const wchar_t*, int> folders[] = {{L"IPF.Appointment", 9}, {L"IPF.Contact", 10},
                                                      {L"IPF.Task.Own", 13},   {L"IPF.StickyNote", 12},
                                                      {L"IPF.Journal", 11},    {L"IPF.Strange", 0}};
    for (const auto& [containerClass, folder] : folders) {
        Store(item, kFolderType, Value(containerClass));
        EXPECT_EQ(item.Number(L"RequestedFolder"), folder) << containerClass;
    }
    EXPECT_EQ(item.Get(L"AllowWriteAccess"), Value(false));
    item.Put(L"AllowWriteAccess", Value(true));
    EXPECT_EQ(item.Get(L"AllowWriteAccess"), Value(true));
    item.Put(L"AllowWriteAccess", Value(false));
    EXPECT_EQ(item.Get(L"AllowWriteAccess"), Value(false));

    const Object contacts = DefaultFolder(kContacts);
    EXPECT_EQ(item.TryCall(L"OpenSharedFolder").Status(), MAPI_E_NOT_FOUND);
    const std::pair<const wchar_t*, std::uint32_t> texts[] = {
        {L"RemotePath", 0x8A04001F}, {L"RemoteName", 0x8A05001F}, {L"RemoteID", 0x8A06001F}};
    for (const auto& [member, id] : texts) {
        Store(item, Id(kSharingSet, id), Value(contacts.Text(L"EntryID")));
        EXPECT_EQ(item.Text(member), contacts.Text(L"EntryID")) << member;
    }
    EXPECT_EQ(item.Child(L"OpenSharedFolder").Text(L"Name"), L"Contacts");
}

TEST_F(MessageKindTest, SharingRequestsAreAllowedOrDenied) {
    const Object request = New(Value(L"IPM.Sharing"));
    request.Put(L"Subject", Value(L"May I?"));
    request.Put(L"Type", Value(2));
    EXPECT_EQ(request.TryCall(L"Allow").Status(), E_FAIL) << "an invitation asks for nothing";
    request.Put(L"Type", Value(1));
    Store(request, kFolderType, Value(L"IPF.Contact"));
    request.Put(L"To", Value(L"Front Desk"));
    request.Call(L"Send");
    const Object items = DefaultFolder(kInbox).Child(L"Items");
    ASSERT_EQ(items.Number(L"Count"), 1);
    const Object received = items.Child(L"Item", {Value(1)});
    EXPECT_EQ(received.Number(L"Class"), 104);

    const Object denial = received.Child(L"Deny");
    EXPECT_EQ(denial.Number(L"Class"), 104);
    EXPECT_EQ(denial.Number(L"Type"), 5);
    EXPECT_EQ(denial.Text(L"To"), L"Front Desk");
    EXPECT_EQ(denial.Get(L"Sent"), Value(false));
    received.Call(L"Allow");
    ASSERT_EQ(items.Number(L"Count"), 2);
    const Object answer = items.Child(L"Item", {Value(2)});
    EXPECT_EQ(answer.Number(L"Type"), 4);
    EXPECT_EQ(answer.Number(L"RequestedFolder"), 10);
    EXPECT_EQ(answer.Text(L"Subject"), L"RE: May I?");
    EXPECT_EQ(received.Child(L"Forward").Number(L"Type"), 1) << "a forward is a request too";
}

TEST_F(MessageKindTest, ReportsShowTheServersWordsWithoutABody) {
    const Object report = Received(L"REPORT.IPM.Note.NDR", [](mailbox::PropertyBag& bag) {
        bag.Set<PR_SUBJECT_W>(L"Undeliverable: Hello");
        bag.Set<PR_REPORT_TEXT_W>(L"Nobody is there.");
    });
    EXPECT_EQ(report.Number(L"Class"), 46);
    EXPECT_EQ(report.Text(L"Subject"), L"Undeliverable: Hello");
    EXPECT_EQ(report.Text(L"Body"), L"Nobody is there.");
    EXPECT_EQ(report.Get(L"RetentionExpirationDate"), Date(949998));
    report.Put(L"Body", Value(L"Own words"));
    EXPECT_EQ(Reopened(report).Text(L"Body"), L"Own words");
}

TEST_F(MessageKindTest, RemoteHeadersTellWhatWaitsOnTheServer) {
    const Object item = Received(L"IPM.Remote");
    const std::tuple<const wchar_t*, std::uint32_t, _variant_t> rows[] = {
        {L"HasAttachment", 0x8F07000B, Value(true)},
        {L"RemoteMessageClass", 0x8F02001F, Value(L"IPM.Note")},
        {L"TransferSize", 0x8F050003, Value(4711)},
        {L"TransferTime", 0x8F040003, Value(12)}};
    for (const auto& [member, id, value] : rows) {
        EXPECT_EQ(item.TryPut(member, value).Status(), DISP_E_MEMBERNOTFOUND) << member;
        Store(item, Id(kRemoteSet, id), value);
        EXPECT_EQ(item.Get(member), value) << member;
    }
}

TEST_F(MessageKindTest, StorageItemsHaveACreatorAndNoMessageBehind) {
    const Object storage =
        DefaultFolder(kInbox).Child(L"GetStorage", {Value(L"Settings of a solution"), Value(0)});
    storage.Put(L"Creator", Value(L"A solution"));
    storage.Put(L"Body", Value(L"kept"));
    storage.Call(L"Save");
    const Object again =
        DefaultFolder(kInbox).Child(L"GetStorage", {Value(L"Settings of a solution"), Value(0)});
    EXPECT_EQ(again.Text(L"Creator"), L"A solution");
    EXPECT_EQ(again.Text(L"Body"), L"kept");
    EXPECT_EQ(again.IdOf(L"MAPIOBJECT"), DISPID_UNKNOWN);
    EXPECT_EQ(DefaultFolder(kInbox).Child(L"Items").Number(L"Count"), 0);
}

} // namespace
} // namespace outlook_tests
