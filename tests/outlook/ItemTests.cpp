// Items: their kinds, their common members, and the lists that hold them.
#include "Client.h"

#include "standin/mailbox/Tags.h"

#include <algorithm>
#include <filesystem>
#include <limits>

namespace outlook_tests {
namespace {

using ItemTest = OutlookTest;
namespace mailbox = standin::mailbox;

/// First 32 bits of the ids of all eighteen kinds.
constexpr std::uint32_t kKinds[] = {0x00063033, 0x00063021, 0x00063081, 0x00063020, 0x00063022, 0x00063034,
                                    0x00063062, 0x00063025, 0x00063024, 0x00063023, 0x00063026, 0x0006302F,
                                    0x000630CB, 0x00063035, 0x00063038, 0x00063039, 0x00063036, 0x00063037};

/// The kinds that an object says it is.
std::vector<std::uint32_t> KindsOf(const Object& object) {
    std::vector<std::uint32_t> kinds;
    std::ranges::copy_if(kKinds, std::back_inserter(kinds),
                         [&](std::uint32_t kind) { return object.IsA(kind); });
    return kinds;
}

TEST_F(ItemTest, TheMessageClassTellsTheKind) {
    using Classes = std::vector<std::pair<const wchar_t*, int>>; // and what their items say of their class
    const std::pair<std::uint32_t, Classes> rows[] = {
        {0x00063034, {{L"IPM.Note", 43}, {L"IPM.Note.SMIME.MultipartSigned", 43}, {L"", 43}}},
        {0x00063034, {{L"IPM.Appointments", 43}, {L"IPM.Machine.Reading", 43}}},
        {0x00063033, {{L"IPM.Appointment", 26}, {L"ipm.appointment.Training", 26}}},
        {0x00063033, {{L"IPM.OLE.CLASS.{00061055-0000-0000-C000-000000000046}", 26}}},
        {0x00063062, {{L"IPM.Schedule.Meeting.Request", 53}, {L"IPM.Schedule.Meeting.Canceled", 54}}},
        {0x00063062, {{L"IPM.Schedule.Meeting.Resp.Neg", 55}, {L"IPM.Schedule.Meeting.Resp.Pos", 56}}},
        {0x00063062, {{L"IPM.Schedule.Meeting.Resp.Tent", 57}}},
        {0x00063021, {{L"IPM.Contact", 40}}},
        {0x00063081, {{L"IPM.DistList", 69}}},
        {0x00063020, {{L"IPM.Document.txtfile", 41}}},
        {0x00063022, {{L"IPM.Activity", 42}}},
        {0x00063025, {{L"IPM.StickyNote", 44}}},
        {0x00063024, {{L"IPM.Post", 45}, {L"IPM.Post.Rss", 45}}},
        {0x00063023, {{L"IPM.Remote", 47}}},
        {0x00063026, {{L"REPORT.IPM.Note.NDR", 46}}},
        {0x0006302F, {{L"IPM.Sharing", 104}}},
        {0x00063035, {{L"IPM.Task", 48}}},
        {0x00063036, {{L"IPM.TaskRequest", 49}}},
        {0x00063038, {{L"IPM.TaskRequest.Accept", 51}}},
        {0x00063039, {{L"IPM.TaskRequest.Decline", 52}}},
        {0x00063037, {{L"IPM.TaskRequest.Update", 50}}},
    };
    for (const auto& [kind, classes] : rows)
        for (const auto& [messageClass, objectClass] : classes) {
            const Object item = Received(messageClass);
            EXPECT_EQ(KindsOf(item), std::vector{kind}) << messageClass;
            Expect(item, {{L"Class", objectClass}, {L"MessageClass", messageClass}});
        }
}

TEST_F(ItemTest, HostsCanHaveAClassOfNoKind) {
    Outlook().SetUnknownClass(L"IPM.Strange");
    const Object item = Received(L"IPM.Strange.Thing");
    EXPECT_TRUE(KindsOf(item).empty());
    EXPECT_EQ(item.Text(L"MessageClass"), L"IPM.Strange.Thing");
}

TEST_F(ItemTest, NewItemsAreMadeByTypeAndByClass) {
    const std::pair<Value, const wchar_t*> rows[] = {
        {Missing(), L"IPM.Contact"},
        {_variant_t(short{1}), L"IPM.Appointment"},
        {0, L"IPM.Note"},
        {3, L"IPM.Task"},
        {4, L"IPM.Activity"},
        {5, L"IPM.StickyNote"},
        {6, L"IPM.Post"},
        {7, L"IPM.DistList"},
        {L"IPM.Contact.Customer", L"IPM.Contact.Customer"},
    };
    const auto folderOf = [](const Object& item) { return item.Child(L"Parent").Text(L"Name"); };
    const Object items = Items(kContacts);
    for (const auto& [type, messageClass] : rows) {
        const Object item = items.Child(L"Add", {type});
        EXPECT_EQ(item.Text(L"MessageClass"), messageClass);
        EXPECT_EQ(folderOf(item), L"Contacts");
    }
    for (const Value& type : Values{8, -1, L"Contact", L""})
        EXPECT_EQ(items.Status(L"Add", {type}), E_INVALIDARG) << AsText(type);
    EXPECT_EQ(items.Number(L"Count"), 0) << "nothing is there before it is saved";
    EXPECT_EQ(folderOf(Application().Child(L"CreateItem", {2})), L"Contacts");
    EXPECT_EQ(folderOf(Application().Child(L"CreateItem", {0})), L"Drafts");
    EXPECT_EQ(Application().Status(L"CreateItem", {9}), E_INVALIDARG);
}

TEST_F(ItemTest, UnsavedItemsHaveNoIdNoDatesAndNoSize) {
    const Object item = Items(kInbox).Child(L"Add");
    item.Put(L"Subject", L"New");
    Expect(item,
           {{L"EntryID", L""}, {L"CreationTime", Date(kNoDate)}, {L"LastModificationTime", Date(kNoDate)}});
    Expect(item, {{L"Size", 0}, {L"Saved", false}});
    item.Call(L"Save");
    EXPECT_EQ(item.Text(L"EntryID").size(), 140u);
    EXPECT_GT(item.Number(L"Size"), 0);
    EXPECT_EQ(item.Get(L"Saved"), Value(true));
    SYSTEMTIME now{};
    GetLocalTime(&now);
    double local = 0;
    SystemTimeToVariantTime(&now, &local);
    EXPECT_NEAR(item.Get(L"CreationTime").date, local, 60.0 / 86400) << "local time";
}

TEST_F(ItemTest, NobodySeesWhatIsNotSaved) {
    const Object inbox = DefaultFolder(kInbox);
    const Object item = AddItem(inbox, L"Before");
    PutAll(item, {{L"Subject", L"After"}, {L"Categories", L"Red;  Blue ,"}});
    const Object other = Items(kInbox).Item(1);
    EXPECT_EQ(other.Text(L"Subject"), L"Before");
    item.Call(L"Save");
    EXPECT_EQ(other.Text(L"Subject"), L"Before") << "a working copy of its own";
    EXPECT_EQ(Items(kInbox).Item(1).Text(L"Subject"), L"After");
    EXPECT_EQ(item.Text(L"Categories"), L"Red, Blue");

    other.Put(L"Subject", L"Too late");
    EXPECT_EQ(other.Status(L"Save"), MAPI_E_OBJECT_CHANGED);
    other.Call(L"Close", {1});
    EXPECT_EQ(other.Text(L"Subject"), L"After") << "discarded";
    item.Put(L"Subject", L"Closed");
    item.Call(L"Close", {0});
    EXPECT_EQ(Items(kInbox).Item(1).Text(L"Subject"), L"Closed");
    EXPECT_EQ(item.Status(L"Close", {7}), E_INVALIDARG);
}

TEST_F(ItemTest, DeletedItemsGoToDeletedItemsFirst) {
    const Object inbox = DefaultFolder(kInbox), items = Items(kInbox), deleted = Items(kDeletedItems);
    const Object item = AddItem(inbox, L"Old");
    const std::wstring id = item.Text(L"EntryID");
    item.Call(L"Delete");
    EXPECT_EQ(item.Text(L"EntryID"), id) << "what it was";
    EXPECT_EQ(item.Text(L"Subject"), L"Old") << "in memory";
    for (const wchar_t* method : {L"Save", L"Delete"})
        EXPECT_EQ(item.Status(method), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(items.Number(L"Count"), 0);
    ASSERT_EQ(deleted.Number(L"Count"), 1);
    deleted.Child(L"GetFirst").Call(L"Delete");
    EXPECT_EQ(deleted.Number(L"Count"), 0);

    AddItem(inbox, L"Removed");
    items.Call(L"Remove", {1});
    EXPECT_EQ(deleted.Number(L"Count"), 0) << "Remove is for good";
    EXPECT_TRUE(IsOutOfBounds(items.TryCall(L"Remove", {1})));
    const Object unsaved = items.Child(L"Add");
    unsaved.Call(L"Delete");
    EXPECT_EQ(unsaved.Status(L"Save"), MAPI_E_OBJECT_DELETED);
}

TEST_F(ItemTest, ItemsAreMovedAndCopied) {
    const Object inbox = DefaultFolder(kInbox);
    const Object item = AddItem(inbox, L"Letter");
    const std::wstring id = item.Text(L"EntryID");
    item.Put(L"Categories", L"Red");
    const Object copy = item.Child(L"Copy");
    EXPECT_EQ(copy.Text(L"Categories"), L"Red");
    EXPECT_NE(copy.Text(L"EntryID"), id);
    EXPECT_EQ(inbox.Child(L"Items").Number(L"Count"), 2);

    const Object archive = Archive().Child(L"Folders", {L"Inbox"});
    const Object moved = item.Child(L"Move", {archive});
    EXPECT_EQ(moved.Text(L"Categories"), L"Red") << "named properties have other ids in another store";
    EXPECT_EQ(moved.Child(L"Parent").Text(L"FolderPath"), L"\\\\Archive\\Inbox");
    EXPECT_NE(moved.Text(L"EntryID"), id);
    EXPECT_EQ(item.TryGet(L"Subject").Status(), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(NameSpace().Status(L"GetItemFromID", {id}), MAPI_E_NOT_FOUND);
    EXPECT_EQ(copy.Status(L"Move", {copy}), E_INVALIDARG);
    EXPECT_EQ(copy.Child(L"Move", {inbox}).Text(L"EntryID"), copy.Text(L"EntryID"));
}

TEST_F(ItemTest, AReadOnlyStoreIsRead) {
    const Object inbox = DefaultFolder(kInbox);
    AddItem(inbox, L"Kept");
    World().DefaultStore()->SetReadOnly(true);
    const Object item = inbox.Child(L"Items").Item(1);
    EXPECT_EQ(item.Text(L"Subject"), L"Kept");
    EXPECT_EQ(item.TryPut(L"Subject", L"x").Status(), E_ACCESSDENIED);
    EXPECT_EQ(item.Status(L"Delete"), E_ACCESSDENIED);
    EXPECT_EQ(inbox.Child(L"Items").Status(L"Add"), E_ACCESSDENIED);
    EXPECT_EQ(item.Text(L"Subject"), L"Kept") << "alive after the refusal";
}

TEST_F(ItemTest, ListsFollowTheirFolder) {
    const Object inbox = DefaultFolder(kInbox);
    for (const wchar_t* subject : {L"b", L"a", L"c"})
        AddItem(inbox, subject);
    const Object items = inbox.Child(L"Items");
    const Object some = items.Child(L"Restrict", {L"[Subject] > 'a'"});
    items.Call(L"Sort", {L"[Subject]", true});
    const auto subjects = [](const Object& list) {
        std::wstring all;
        for (Object item = list.Child(L"GetFirst"); item; item = list.Child(L"GetNext"))
            all += item.Text(L"Subject");
        return all;
    };
    EXPECT_EQ(subjects(items), L"cba");
    EXPECT_EQ(subjects(some), L"bc");
    AddItem(inbox, L"bb");
    EXPECT_EQ(subjects(items), L"cbbba");
    EXPECT_EQ(subjects(some), L"bcbb");
    const Object item = some.Item(1);
    item.Put(L"Subject", L"A");
    item.Call(L"Save");
    EXPECT_EQ(subjects(some), L"cbb");
    some.Call(L"Remove", {1});
    EXPECT_EQ(subjects(items), L"bbAa") << "equal ones in order of arrival";
    EXPECT_EQ(some.Child(L"Restrict", {L"[Subject] < 'c'"}).Number(L"Count"), 1);
    EXPECT_EQ(some.Child(L"Parent").Text(L"Name"), L"Inbox");
    for (const wchar_t* field : {L"[Colour]", L"[Categories]"})
        EXPECT_EQ(items.Status(L"Sort", {field}), E_INVALIDARG) << field;
    EXPECT_EQ(items.Status(L"SetColumns", {L"Subject, Body"}), E_INVALIDARG);
    EXPECT_EQ(items.Status(L"SetColumns", {L"Subject, Size"}), S_OK);
    EXPECT_EQ(items.TryPut(L"IncludeRecurrences", false).Status(), S_OK);
    EXPECT_EQ(items.TryPut(L"IncludeRecurrences", true).Status(), E_NOTIMPL);
}

TEST_F(ItemTest, ItemsAreReachedByPlaceAndBySubject) {
    const Object inbox = DefaultFolder(kInbox);
    AddItem(inbox, L"First");
    AddItem(inbox, L"Second");
    const Object items = inbox.Child(L"Items");
    EXPECT_EQ(items.Item(L"second").Text(L"Subject"), L"Second");
    EXPECT_EQ(items.Status(L"Item", {L"third"}), MAPI_E_NOT_FOUND);
    for (const int place : {0, -1, 3})
        EXPECT_TRUE(IsOutOfBounds(items.TryCall(L"Item", {place}))) << place;
    EXPECT_EQ(items.Child(L"Find", {L"[Size] > 0"}).Text(L"Subject"), L"First");
    EXPECT_EQ(items.Child(L"FindNext").Text(L"Subject"), L"Second");
    EXPECT_FALSE(items.Child(L"FindNext"));
    EXPECT_FALSE(items.Child(L"Find", {L"[Size] < 0"}));
}

TEST_F(ItemTest, TemplatesMakeUnsavedItems) {
    const std::wstring path = (std::filesystem::temp_directory_path() / L"outlook-tests.msg").wstring();
    const Object inbox = DefaultFolder(kInbox);
    const Object item = inbox.Child(L"Items").Child(L"Add", {kContactItem});
    PutAll(item, {{L"Subject", L"Käthe"}, {L"Categories", L"Friends"}});
    item.Call(L"SaveAs", {path});
    const Object copy = Application().Child(L"CreateItemFromTemplate", {path});
    Expect(copy, {{L"MessageClass", L"IPM.Contact"}, {L"Subject", L"Käthe"}, {L"Categories", L"Friends"}});
    Expect(copy, {{L"EntryID", L""}});
    EXPECT_EQ(copy.Child(L"Parent").Text(L"Name"), L"Contacts");
    copy.Call(L"Save");
    EXPECT_EQ(Items(kContacts).Number(L"Count"), 1);
    const Object there = Application().Child(L"CreateItemFromTemplate", {path, inbox});
    EXPECT_EQ(there.Child(L"Parent").Text(L"Name"), L"Inbox");
    EXPECT_EQ(item.Status(L"SaveAs", {path, 99}), E_INVALIDARG);
    EXPECT_EQ(item.Status(L"SaveAs", {path, 5}), E_NOTIMPL);
    std::filesystem::remove(path);
    const Answer missing = Application().TryCall(L"CreateItemFromTemplate", {path});
    EXPECT_EQ(missing.Status(), STG_E_FILENOTFOUND);
    EXPECT_TRUE(missing.description.starts_with(L"Cannot open file: " + path));
}

TEST_F(ItemTest, DatesOutsideOfOutlooksTimeAreRefused) {
    constexpr double kFirst = -109115, kLast = 949875, kNone = 949998; // 1 April 1601, 31 August 4500
    const std::pair<int, const wchar_t*> rows[] = {
        {0, L"DeferredDeliveryTime"}, {1, L"Start"}, {2, L"Birthday"}, {3, L"DueDate"}, {4, L"End"}};
    for (const auto& [itemType, member] : rows) {
        const Object item = Items(kInbox).Child(L"Add", {itemType});
        item.Put(member, Date(kLast));
        for (const double bad : {kFirst - 1, kLast + 1, kNone - 0.5, kNone + 1, 1e300, -1e300,
                                 std::numeric_limits<double>::quiet_NaN()})
            EXPECT_EQ(item.TryPut(member, Date(bad)).Status(), E_INVALIDARG) << member << " " << bad;
        EXPECT_EQ(item.Get(member), Date(kLast)) << member;
    }
    const Object task = Items(kTasks).Child(L"Add");
    for (const double good : {kFirst, kNone}) {
        task.Put(L"DueDate", Date(good));
        EXPECT_EQ(task.Get(L"DueDate"), Date(good));
    }
}

TEST_F(ItemTest, WhatIsSentForLaterCanBeTakenBack) {
    constexpr int kDrafts = 16, kOutbox = 4;
    constexpr double kInTheYear2400 = 182622;
    const Object waiting = Items(kOutbox), drafts = DefaultFolder(kDrafts);
    for (int i = 0; i < 2; ++i) {
        const Object mail = Items(kInbox).Child(L"Add", {kMailItem});
        PutAll(mail, {{L"To", L"Back Office"}, {L"DeferredDeliveryTime", Date(kInTheYear2400)}});
        mail.Call(L"Send");
    }
    ASSERT_EQ(waiting.Number(L"Count"), 2);
    const Object mail = waiting.Item(1);
    EXPECT_EQ(mail.Get(L"Submitted"), Value(true));
    mail.Put(L"Subject", L"Changed");
    EXPECT_EQ(waiting.Item(1).Get(L"Submitted"), Value(true)) << "until it is saved";
    mail.Call(L"Save");
    EXPECT_EQ(waiting.Item(1).Get(L"Submitted"), Value(false));
    mail.Call(L"Send");
    ASSERT_EQ(waiting.Number(L"Count"), 2);
    EXPECT_EQ(waiting.Item(1).Get(L"Submitted"), Value(true)) << "sent once more";
    EXPECT_EQ(waiting.Item(1).Child(L"Move", {drafts}).Get(L"Submitted"), Value(false));
    waiting.Item(1).Call(L"Delete");
    EXPECT_EQ(waiting.Number(L"Count"), 0);
    EXPECT_EQ(Items(kDeletedItems).Item(1).Get(L"Submitted"), Value(false));
}

TEST_F(ItemTest, AFieldHasOneTypeInItsFolder) {
    mailbox::Folder& folder = *World().DefaultStore()->SpecialFolder(kInbox);
    ASSERT_EQ(folder.SetUserFields({{L"Colour", 1}}), S_OK);
    const Object fields = AddItem(DefaultFolder(kInbox), L"Painted").Child(L"UserProperties");
    EXPECT_EQ(fields.Status(L"Add", {L"colour", 3}), E_INVALIDARG);
    EXPECT_EQ(fields.Number(L"Count"), 0);
    fields.Call(L"Add", {L"colour", 1});
    EXPECT_EQ(fields.Number(L"Count"), 1);
    EXPECT_EQ(folder.UserFields().size(), 1u);
}

TEST_F(ItemTest, WindowsCanBeClosedAtOnce) {
    Outlook().CloseWindowsAtOnce(true);
    const Object item = AddItem(DefaultFolder(kInbox), L"Shown");
    item.Call(L"Display", {true});
    item.Call(L"Display");
}

TEST_F(ItemTest, PropertiesAreReachedBySchemaName) {
    const Object item = AddItem(DefaultFolder(kInbox), L"Schema");
    const Object accessor = item.Child(L"PropertyAccessor");
    const auto get = [&](const std::wstring& name) { return accessor.Call(L"GetProperty", {name}); };
    const std::wstring subject = L"http://schemas.microsoft.com/mapi/proptag/0x0037001F";
    const std::wstring colour =
        L"http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/Colour";
    EXPECT_EQ(get(subject), Value(L"Schema"));
    EXPECT_EQ(get(L"urn:schemas:httpmail:subject"), Value(L"Schema"));
    EXPECT_EQ(accessor.Status(L"GetProperty", {colour}), MAPI_E_NOT_FOUND);
    accessor.Call(L"SetProperty", {colour, L"red"});
    EXPECT_EQ(get(colour), Value(L"red"));
    accessor.Call(L"DeleteProperty", {colour});
    EXPECT_EQ(accessor.Status(L"DeleteProperty", {colour}), MAPI_E_NOT_FOUND);
    EXPECT_EQ(accessor.Status(L"GetProperty", {L"Subject"}), E_INVALIDARG);
    EXPECT_EQ(accessor.Status(L"SetProperty", {subject, 12}), DISP_E_TYPEMISMATCH) << "nothing is converted";
    EXPECT_EQ(accessor.Status(L"SetProperty", {colour + L"/0x00000040", Date(-200000)}), DISP_E_TYPEMISMATCH)
        << "before time began";
    const std::wstring billing =
        L"http://schemas.microsoft.com/mapi/id/{00062008-0000-0000-C000-000000000046}/8535001F";
    accessor.Call(L"SetProperty", {billing, L"x"});
    for (const std::wstring& builtIn : {subject, billing})
        EXPECT_EQ(accessor.Status(L"DeleteProperty", {builtIn}), E_ACCESSDENIED) << builtIn;
    const _variant_t id = get(L"http://schemas.microsoft.com/mapi/proptag/0x0FFF0102");
    EXPECT_EQ(accessor.Call(L"BinaryToString", {id}), Value(item.Text(L"EntryID")));
    EXPECT_EQ(accessor.Call(L"UTCToLocalTime", {accessor.Call(L"LocalTimeToUTC", {Date(45000.25)})}),
              Date(45000.25));
}

TEST_F(ItemTest, ForEachWalksAListThatChanges) {
    const Object inbox = DefaultFolder(kInbox);
    for (int i = 0; i < 4; ++i)
        AddItem(inbox, std::to_wstring(i));
    const Object items = inbox.Child(L"Items");
    const Answer answer = items.Invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET, {});
    ASSERT_EQ(answer.value.vt, VT_UNKNOWN);
    _com_ptr_t<_com_IIID<IEnumVARIANT, &IID_IEnumVARIANT>> enumerator(answer.value.punkVal);
    std::wstring seen;
    for (_variant_t value; enumerator->Next(1, &value, nullptr) == S_OK; value.Clear()) {
        seen += Object(value).Text(L"Subject");
        Object(value).Call(L"Delete");
    }
    EXPECT_EQ(seen, L"02") << "each deletion moves the others up";
    EXPECT_EQ(enumerator->Skip(1), S_FALSE);
    enumerator->Reset();
    EXPECT_EQ(enumerator->Skip(2), S_OK);
    EXPECT_EQ(inbox.Invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET, {}).status, DISP_E_MEMBERNOTFOUND);
}

} // namespace
} // namespace outlook_tests
