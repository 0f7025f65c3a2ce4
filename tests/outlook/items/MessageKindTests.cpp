// Sharing messages, reports, headers of remote mail.
#include "Stored.h"

#include <mapicode.h>

namespace outlook_tests {
namespace {

namespace mailbox = standin::mailbox;

using MessageKindTest = KindTest;

const std::wstring kProvider = Id(kSharingSet, 0x8A010102), kFlavor = Id(kSharingSet, 0x8A180003),
                   kFolderType = Id(kSharingSet, 0x8A14001F);

TEST_F(MessageKindTest, TheTypeOfASharingMessageIsItsFlavor) {
    const std::pair<int, int> rows[] = {{1, 0x0500}, {2, 0x0310}, {3, 0x0710}, {4, 0x3310}, {5, 0x5100}};
    const Object item = New(L"IPM.Sharing");
    EXPECT_EQ(item.Number(L"Type"), 0);
    for (const auto& [type, flavor] : rows) {
        item.Put(L"Type", type);
        EXPECT_EQ(Stored(item, kFlavor), Value(flavor));
        Store(item, kFlavor, flavor | 0x20000);
        EXPECT_EQ(item.Number(L"Type"), type) << "of a special folder";
        Store(item, kFlavor, flavor);
    }
    Store(item, kFlavor, 0x20500);
    item.Put(L"Type", 2);
    EXPECT_EQ(Stored(item, kFlavor), Value(0x20310)) << "the mark of a special folder stays";
    EXPECT_EQ(item.TryPut(L"Type", 6).Status(), E_INVALIDARG);
}

TEST_F(MessageKindTest, SharingMessagesTellFolderAndProvider) {
    const Object item = New(L"IPM.Sharing");
    Expect(item, {{L"SharingProvider", 0}, {L"SharingProviderGuid", L""}});
    Store(item, kProvider, Bytes({0xAE, 0xF0, 0x06, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46}));
    EXPECT_EQ(item.Number(L"SharingProvider"), 1);
    EXPECT_EQ(item.Text(L"SharingProviderGuid"), L"{0006F0AE-0000-0000-C000-000000000046}");
    const std::pair<const wchar_t*, int> folders[] = {{L"IPF.Appointment", 9}, {L"IPF.Contact", 10},
                                                      {L"IPF.Task.Own", 13},   {L"IPF.StickyNote", 12},
                                                      {L"IPF.Journal", 11},    {L"IPF.Strange", 0}};
    for (const auto& [containerClass, folder] : folders) {
        Store(item, kFolderType, containerClass);
        EXPECT_EQ(item.Number(L"RequestedFolder"), folder) << containerClass;
    }
    Expect(item, {{L"AllowWriteAccess", false}});
    for (const bool allowed : {true, false}) {
        item.Put(L"AllowWriteAccess", allowed);
        Expect(item, {{L"AllowWriteAccess", allowed}});
    }
    const Object contacts = DefaultFolder(kContacts);
    EXPECT_EQ(item.Status(L"OpenSharedFolder"), MAPI_E_NOT_FOUND);
    const std::pair<const wchar_t*, std::uint32_t> texts[] = {
        {L"RemotePath", 0x8A04001F}, {L"RemoteName", 0x8A05001F}, {L"RemoteID", 0x8A06001F}};
    for (const auto& [member, id] : texts) {
        Store(item, Id(kSharingSet, id), contacts.Text(L"EntryID"));
        EXPECT_EQ(item.Text(member), contacts.Text(L"EntryID")) << member;
    }
    EXPECT_EQ(item.Child(L"OpenSharedFolder").Text(L"Name"), L"Contacts");
}

TEST_F(MessageKindTest, SharingRequestsAreAllowedOrDenied) {
    const Object request = New(L"IPM.Sharing");
    PutAll(request, {{L"Subject", L"May I?"}, {L"Type", 2}});
    EXPECT_EQ(request.Status(L"Allow"), E_FAIL) << "an invitation asks for nothing";
    request.Put(L"Type", 1);
    Store(request, kFolderType, L"IPF.Contact");
    request.Put(L"To", L"Front Desk");
    request.Call(L"Send");
    const Object items = Items(kInbox);
    ASSERT_EQ(items.Number(L"Count"), 1);
    const Object received = items.Item(1);
    EXPECT_EQ(received.Number(L"Class"), 104);
    Expect(received.Child(L"Deny"),
           {{L"Class", 104}, {L"Type", 5}, {L"To", L"Front Desk"}, {L"Sent", false}});
    received.Call(L"Allow");
    ASSERT_EQ(items.Number(L"Count"), 2);
    Expect(items.Item(2), {{L"Type", 4}, {L"RequestedFolder", 10}, {L"Subject", L"RE: May I?"}});
    EXPECT_EQ(received.Child(L"Forward").Number(L"Type"), 1) << "a forward is a request too";
}

TEST_F(MessageKindTest, ReportsShowTheServersWordsWithoutABody) {
    const Object report = Received(L"REPORT.IPM.Note.NDR", [](mailbox::PropertyBag& bag) {
        bag.Set<PR_SUBJECT_W>(L"Undeliverable: Hello");
        bag.Set<PR_REPORT_TEXT_W>(L"Nobody is there.");
    });
    Expect(report, {{L"Class", 46}, {L"Subject", L"Undeliverable: Hello"}, {L"Body", L"Nobody is there."}});
    EXPECT_EQ(report.Get(L"RetentionExpirationDate"), Date(kNoDate));
    report.Put(L"Body", L"Own words");
    EXPECT_EQ(Reopened(report).Text(L"Body"), L"Own words");
}

TEST_F(MessageKindTest, RemoteHeadersTellWhatWaitsOnTheServer) {
    const Object item = Received(L"IPM.Remote");
    const std::tuple<const wchar_t*, std::uint32_t, Value> rows[] = {
        {L"HasAttachment", 0x8F07000B, true},
        {L"RemoteMessageClass", 0x8F02001F, L"IPM.Note"},
        {L"TransferSize", 0x8F050003, 4711},
        {L"TransferTime", 0x8F040003, 12}};
    for (const auto& [member, id, value] : rows) {
        EXPECT_EQ(item.TryPut(member, value).Status(), DISP_E_MEMBERNOTFOUND) << member;
        Store(item, Id(kRemoteSet, id), value);
        EXPECT_EQ(item.Get(member), value) << member;
    }
}

} // namespace
} // namespace outlook_tests
