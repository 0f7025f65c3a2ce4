// Items: their kinds, their common members, and the lists that hold them.
#include "Client.h"

#include "standin/mailbox/Tags.h"

#include <filesystem>
#include <limits>

namespace outlook_tests {
namespace {

using ItemTest = OutlookTest;
namespace mailbox = standin::mailbox;

constexpr std::uint32_t kMail = 0x00063034, kAppointment = 0x00063033, kReport = 0x00063026;

/// First 32 bits of the ids of all eighteen kinds.
constexpr std::uint32_t kKinds[] = {0x00063033, 0x00063021, 0x00063081, 0x00063020, 0x00063022, 0x00063034,
                                    0x00063062, 0x00063025, 0x00063024, 0x00063023, 0x00063026, 0x0006302F,
                                    0x000630CB, 0x00063035, 0x00063038, 0x00063039, 0x00063036, 0x00063037};

/// The kinds that an object says it is.
std::vector<std::uint32_t> KindsOf(const Object& object) {
    std::vector<std::uint32_t> kinds;
    for (const std::uint32_t kind : kKinds) {
        const IID iid{kind, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
        IUnknown* answer = nullptr;
        if (SUCCEEDED(object.Raw()->QueryInterface(iid, reinterpret_cast<void**>(&answer)))) {
            kinds.push_back(kind);
            answer->Release();
        }
    }
    return kinds;
}

/// A message of a class, put into the Inbox.
void Put(mailbox::Mailbox& world, const std::wstring& messageClass, const std::wstring& subject = L"") {
    mailbox::Content content;
    content.properties.Set<PR_MESSAGE_CLASS_W>(messageClass);
    content.properties.Set<PR_SUBJECT_W>(subject);
    std::shared_ptr<mailbox::Message> message;
    ASSERT_EQ(world.DefaultStore()->SpecialFolder(kInbox)->Receive(std::move(content), false, message), S_OK);
}

TEST_F(ItemTest, TheMessageClassTellsTheKind) {
    struct Row {
        const wchar_t* messageClass;
        std::uint32_t kind;
        int objectClass;
    };
    const Row rows[] = {
        {L"IPM.Note", kMail, 43},
        {L"IPM.Note.SMIME.MultipartSigned", kMail, 43},
        {L"IPM.Appointment", kAppointment, 26},
        {L"ipm.appointment.Training", kAppointment, 26},
        {L"IPM.OLE.CLASS.{00061055-0000-0000-C000-000000000046}", kAppointment, 26},
        {L"IPM.Appointments", kMail, 43},
        {L"IPM.Schedule.Meeting.Request", 0x00063062, 53},
        {L"IPM.Schedule.Meeting.Canceled", 0x00063062, 54},
        {L"IPM.Schedule.Meeting.Resp.Neg", 0x00063062, 55},
        {L"IPM.Schedule.Meeting.Resp.Pos", 0x00063062, 56},
        {L"IPM.Schedule.Meeting.Resp.Tent", 0x00063062, 57},
        {L"IPM.Contact", 0x00063021, 40},
        {L"IPM.DistList", 0x00063081, 69},
        {L"IPM.Document.txtfile", 0x00063020, 41},
        {L"IPM.Activity", 0x00063022, 42},
        {L"IPM.StickyNote", 0x00063025, 44},
        {L"IPM.Post", 0x00063024, 45},
        {L"IPM.Post.Rss", 0x00063024, 45},
        {L"IPM.Remote", 0x00063023, 47},
        {L"REPORT.IPM.Note.NDR", kReport, 46},
        {L"IPM.Sharing", 0x0006302F, 104},
        {L"IPM.Task", 0x00063035, 48},
        {L"IPM.TaskRequest", 0x00063036, 49},
        {L"IPM.TaskRequest.Accept", 0x00063038, 51},
        {L"IPM.TaskRequest.Decline", 0x00063039, 52},
        {L"IPM.TaskRequest.Update", 0x00063037, 50},
        {L"IPM.Machine.Reading", kMail, 43},
        {L"", kMail, 43},
    };
    for (const Row& row : rows)
        Put(World(), row.messageClass);
    const Object items = DefaultFolder(kInbox).Child(L"Items");
    for (int i = 0; i < static_cast<int>(std::size(rows)); ++i) {
        const Object item = items.Child(L"Item", {Value(i + 1)});
        EXPECT_EQ(KindsOf(item), std::vector{rows[i].kind}) << rows[i].messageClass;
        EXPECT_EQ(item.Number(L"Class"), rows[i].objectClass) << rows[i].messageClass;
        EXPECT_EQ(item.Text(L"MessageClass"), rows[i].messageClass);
    }
}

TEST_F(ItemTest, HostsCanHaveAClassOfNoKind) {
    Put(World(), L"IPM.Strange.Thing", L"Odd");
    Outlook().SetUnknownClass(L"IPM.Strange");
    const Object item = DefaultFolder(kInbox).Child(L"Items").Child(L"Item", {Value(1)});
    EXPECT_TRUE(KindsOf(item).empty());
    EXPECT_EQ(item.Text(L"Subject"), L"Odd");
}

TEST_F(ItemTest, NewItemsAreMadeByTypeAndByClass) {
    struct Row {
        _variant_t type;
        HRESULT status;
        const wchar_t* messageClass;
    };
    const Row rows[] = {
        {Missing(), S_OK, L"IPM.Contact"},
        {Value(0), S_OK, L"IPM.Note"},
        {_variant_t(short{1}), S_OK, L"IPM.Appointment"},
        {Value(3), S_OK, L"IPM.Task"},
        {Value(4), S_OK, L"IPM.Activity"},
        {Value(5), S_OK, L"IPM.StickyNote"},
        {Value(6), S_OK, L"IPM.Post"},
        {Value(7), S_OK, L"IPM.DistList"},
        {Value(L"IPM.Contact.Customer"), S_OK, L"IPM.Contact.Customer"},
        {Value(8), E_INVALIDARG, L""},
        {Value(-1), E_INVALIDARG, L""},
        {Value(L"Contact"), E_INVALIDARG, L""},
        {Value(L""), E_INVALIDARG, L""},
    };
    const Object items = DefaultFolder(kContacts).Child(L"Items");
    for (const Row& row : rows) {
        const Answer answer = items.TryCall(L"Add", {row.type});
        EXPECT_EQ(answer.Status(), row.status);
        if (FAILED(row.status))
            continue;
        const Object item(answer.value);
        EXPECT_EQ(item.Text(L"MessageClass"), row.messageClass);
        EXPECT_EQ(item.Child(L"Parent").Text(L"Name"), L"Contacts");
    }
    EXPECT_EQ(items.Number(L"Count"), 0) << "nothing is there before it is saved";
    EXPECT_EQ(Application().Child(L"CreateItem", {Value(2)}).Child(L"Parent").Text(L"Name"), L"Contacts");
    EXPECT_EQ(Application().Child(L"CreateItem", {Value(0)}).Child(L"Parent").Text(L"Name"), L"Drafts");
    EXPECT_EQ(Application().TryCall(L"CreateItem", {Value(9)}).Status(), E_INVALIDARG);
}

TEST_F(ItemTest, UnsavedItemsHaveNoIdNoDatesAndNoSize) {
    constexpr double kNoDate = 949998;
    const Object items = DefaultFolder(kInbox).Child(L"Items");
    const Object item = items.Child(L"Add");
    item.Put(L"Subject", Value(L"New"));
    EXPECT_EQ(item.Text(L"EntryID"), L"");
    EXPECT_EQ(item.Get(L"CreationTime"), Date(kNoDate));
    EXPECT_EQ(item.Get(L"LastModificationTime"), Date(kNoDate));
    EXPECT_EQ(item.Number(L"Size"), 0);
    EXPECT_EQ(item.Get(L"Saved"), Value(false));
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
    item.Put(L"Subject", Value(L"After"));
    item.Put(L"Categories", Value(L"Red;  Blue ,"));
    const Object other = inbox.Child(L"Items").Child(L"Item", {Value(1)});
    EXPECT_EQ(other.Text(L"Subject"), L"Before");
    item.Call(L"Save");
    EXPECT_EQ(other.Text(L"Subject"), L"Before") << "a working copy of its own";
    EXPECT_EQ(inbox.Child(L"Items").Child(L"Item", {Value(1)}).Text(L"Subject"), L"After");
    EXPECT_EQ(item.Text(L"Categories"), L"Red, Blue");

    other.Put(L"Subject", Value(L"Too late"));
    EXPECT_EQ(other.TryCall(L"Save").Status(), MAPI_E_OBJECT_CHANGED);
    other.Call(L"Close", {Value(1)});
    EXPECT_EQ(other.Text(L"Subject"), L"After") << "discarded";
    item.Put(L"Subject", Value(L"Closed"));
    item.Call(L"Close", {Value(0)});
    EXPECT_EQ(inbox.Child(L"Items").Child(L"Item", {Value(1)}).Text(L"Subject"), L"Closed");
    EXPECT_EQ(item.TryCall(L"Close", {Value(7)}).Status(), E_INVALIDARG);
}

TEST_F(ItemTest, DeletedItemsGoToDeletedItemsFirst) {
    const Object inbox = DefaultFolder(kInbox);
    const Object deleted = DefaultFolder(kDeletedItems);
    const Object item = AddItem(inbox, L"Old");
    const std::wstring id = item.Text(L"EntryID");
    item.Call(L"Delete");
    EXPECT_EQ(item.Text(L"EntryID"), id) << "what it was";
    EXPECT_EQ(item.Text(L"Subject"), L"Old") << "in memory";
    for (const wchar_t* method : {L"Save", L"Delete"})
        EXPECT_EQ(item.TryCall(method).Status(), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(inbox.Child(L"Items").Number(L"Count"), 0);
    ASSERT_EQ(deleted.Child(L"Items").Number(L"Count"), 1);
    deleted.Child(L"Items").Child(L"GetFirst").Call(L"Delete");
    EXPECT_EQ(deleted.Child(L"Items").Number(L"Count"), 0);

    AddItem(inbox, L"Removed");
    inbox.Child(L"Items").Call(L"Remove", {Value(1)});
    EXPECT_EQ(deleted.Child(L"Items").Number(L"Count"), 0) << "Remove is for good";
    EXPECT_EQ(inbox.Child(L"Items").TryCall(L"Remove", {Value(1)}).description,
              L"Array index out of bounds.");
    const Object unsaved = inbox.Child(L"Items").Child(L"Add");
    unsaved.Call(L"Delete");
    EXPECT_EQ(unsaved.TryCall(L"Save").Status(), MAPI_E_OBJECT_DELETED);
}

TEST_F(ItemTest, ItemsAreMovedAndCopied) {
    const Object inbox = DefaultFolder(kInbox);
    const Object item = AddItem(inbox, L"Letter");
    const std::wstring id = item.Text(L"EntryID");
    item.Put(L"Categories", Value(L"Red"));
    const Object copy = item.Child(L"Copy");
    EXPECT_EQ(copy.Text(L"Categories"), L"Red");
    EXPECT_NE(copy.Text(L"EntryID"), id);
    EXPECT_EQ(inbox.Child(L"Items").Number(L"Count"), 2);

    const Object archive =
        NameSpace().Child(L"Folders", {Value(L"Archive")}).Child(L"Folders", {Value(L"Inbox")});
    const Object moved = item.Child(L"Move", {_variant_t(archive.Raw())});
    EXPECT_EQ(moved.Text(L"Categories"), L"Red") << "named properties have other ids in another store";
    EXPECT_EQ(moved.Child(L"Parent").Text(L"FolderPath"), L"\\\\Archive\\Inbox");
    EXPECT_NE(moved.Text(L"EntryID"), id);
    EXPECT_EQ(item.TryGet(L"Subject").Status(), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(NameSpace().TryCall(L"GetItemFromID", {Value(id)}).Status(), MAPI_E_NOT_FOUND);
    EXPECT_EQ(copy.TryCall(L"Move", {_variant_t(copy.Raw())}).Status(), E_INVALIDARG);
    EXPECT_EQ(copy.Child(L"Move", {_variant_t(inbox.Raw())}).Text(L"EntryID"), copy.Text(L"EntryID"));
}

TEST_F(ItemTest, AReadOnlyStoreIsRead) {
    const Object inbox = DefaultFolder(kInbox);
    AddItem(inbox, L"Kept");
    World().DefaultStore()->SetReadOnly(true);
    const Object item = inbox.Child(L"Items").Child(L"Item", {Value(1)});
    EXPECT_EQ(item.Text(L"Subject"), L"Kept");
    EXPECT_EQ(item.TryPut(L"Subject", Value(L"x")).Status(), E_ACCESSDENIED);
    EXPECT_EQ(item.TryCall(L"Delete").Status(), E_ACCESSDENIED);
    EXPECT_EQ(inbox.Child(L"Items").TryCall(L"Add").Status(), E_ACCESSDENIED);
    EXPECT_EQ(item.Text(L"Subject"), L"Kept") << "alive after the refusal";
}

TEST_F(ItemTest, ListsFollowTheirFolder) {
    const Object inbox = DefaultFolder(kInbox);
    for (const wchar_t* subject : {L"b", L"a", L"c"})
        AddItem(inbox, subject);
    const Object items = inbox.Child(L"Items");
    const Object some = items.Child(L"Restrict", {Value(L"[Subject] > 'a'")});
    items.Call(L"Sort", {Value(L"[Subject]"), Value(true)});
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
    const Object item = some.Child(L"Item", {Value(1)});
    item.Put(L"Subject", Value(L"A"));
    item.Call(L"Save");
    EXPECT_EQ(subjects(some), L"cbb");
    some.Call(L"Remove", {Value(1)});
    EXPECT_EQ(subjects(items), L"bbAa") << "equal ones in order of arrival";
    const Object fewer = some.Child(L"Restrict", {Value(L"[Subject] < 'c'")});
    EXPECT_EQ(fewer.Number(L"Count"), 1);
    EXPECT_EQ(some.Child(L"Parent").Text(L"Name"), L"Inbox");
    EXPECT_EQ(items.TryCall(L"Sort", {Value(L"[Colour]")}).Status(), E_INVALIDARG);
    EXPECT_EQ(items.TryCall(L"Sort", {Value(L"[Categories]")}).Status(), E_INVALIDARG);
    EXPECT_EQ(items.TryCall(L"SetColumns", {Value(L"Subject, Body")}).Status(), E_INVALIDARG);
    EXPECT_EQ(items.TryCall(L"SetColumns", {Value(L"Subject, Size")}).Status(), S_OK);
    EXPECT_EQ(items.TryPut(L"IncludeRecurrences", Value(false)).Status(), S_OK);
    EXPECT_EQ(items.TryPut(L"IncludeRecurrences", Value(true)).Status(), E_NOTIMPL);
}

TEST_F(ItemTest, ItemsAreReachedByPlaceAndBySubject) {
    const Object inbox = DefaultFolder(kInbox);
    AddItem(inbox, L"First");
    AddItem(inbox, L"Second");
    const Object items = inbox.Child(L"Items");
    EXPECT_EQ(items.Child(L"Item", {Value(L"second")}).Text(L"Subject"), L"Second");
    EXPECT_EQ(items.TryCall(L"Item", {Value(L"third")}).Status(), MAPI_E_NOT_FOUND);
    for (const int place : {0, -1, 3})
        EXPECT_EQ(items.TryCall(L"Item", {Value(place)}).description, L"Array index out of bounds.") << place;
    EXPECT_EQ(items.Child(L"Find", {Value(L"[Size] > 0")}).Text(L"Subject"), L"First");
    EXPECT_EQ(items.Child(L"FindNext").Text(L"Subject"), L"Second");
    EXPECT_FALSE(items.Child(L"FindNext"));
    EXPECT_FALSE(items.Child(L"Find", {Value(L"[Size] < 0")}));
}

TEST_F(ItemTest, TemplatesMakeUnsavedItems) {
    const std::wstring path = (std::filesystem::temp_directory_path() / L"outlook-tests.msg").wstring();
    const Object inbox = DefaultFolder(kInbox);
    const Object item = inbox.Child(L"Items").Child(L"Add", {Value(kContactItem)});
    item.Put(L"Subject", Value(L"Käthe"));
    item.Put(L"Categories", Value(L"Friends"));
    item.Call(L"SaveAs", {Value(path)});
    const Object copy = Application().Child(L"CreateItemFromTemplate", {Value(path)});
    EXPECT_EQ(copy.Text(L"MessageClass"), L"IPM.Contact");
    EXPECT_EQ(copy.Text(L"Subject"), L"Käthe");
    EXPECT_EQ(copy.Text(L"Categories"), L"Friends");
    EXPECT_EQ(copy.Text(L"EntryID"), L"");
    EXPECT_EQ(copy.Child(L"Parent").Text(L"Name"), L"Contacts");
    copy.Call(L"Save");
    EXPECT_EQ(DefaultFolder(kContacts).Child(L"Items").Number(L"Count"), 1);
    const Object there =
        Application().Child(L"CreateItemFromTemplate", {Value(path), _variant_t(inbox.Raw())});
    EXPECT_EQ(there.Child(L"Parent").Text(L"Name"), L"Inbox");
    EXPECT_EQ(item.TryCall(L"SaveAs", {Value(path), Value(99)}).Status(), E_INVALIDARG);
    EXPECT_EQ(item.TryCall(L"SaveAs", {Value(path), Value(5)}).Status(), E_NOTIMPL);
    std::filesystem::remove(path);
    const Answer missing = Application().TryCall(L"CreateItemFromTemplate", {Value(path)});
    EXPECT_EQ(missing.Status(), STG_E_FILENOTFOUND);
    EXPECT_TRUE(missing.description.starts_with(L"Cannot open file: " + path));
}

TEST_F(ItemTest, DatesOutsideOfOutlooksTimeAreRefused) {
    constexpr double kFirst = -109115, kLast = 949875, kNone = 949998; // 1 April 1601, 31 August 4500
    struct Row {
        int itemType;
        const wchar_t* member;
    };
    const Row rows[] = {
        {0, L"DeferredDeliveryTime"}, {1, L"Start"}, {2, L"Birthday"}, {3, L"DueDate"}, {4, L"End"}};
    for (const Row& row : rows) {
        const Object item = DefaultFolder(kInbox).Child(L"Items").Child(L"Add", {Value(row.itemType)});
        item.Put(row.member, Date(kLast));
        for (const double bad : {kFirst - 1, kLast + 1, kNone - 0.5, kNone + 1, 1e300, -1e300,
                                 std::numeric_limits<double>::quiet_NaN()})
            EXPECT_EQ(item.TryPut(row.member, Date(bad)).Status(), E_INVALIDARG) << row.member << " " << bad;
        EXPECT_EQ(item.Get(row.member), Date(kLast)) << row.member;
    }
    const Object task = DefaultFolder(kTasks).Child(L"Items").Child(L"Add");
    task.Put(L"DueDate", Date(kFirst));
    EXPECT_EQ(task.Get(L"DueDate"), Date(kFirst));
    task.Put(L"DueDate", Date(kNone));
    EXPECT_EQ(task.Get(L"DueDate"), Date(kNone));
}

TEST_F(ItemTest, WhatIsSentForLaterCanBeTakenBack) {
    constexpr int kDrafts = 16, kOutbox = 4;
    constexpr double kInTheYear2400 = 182622;
    const Object waiting = DefaultFolder(kOutbox).Child(L"Items"), drafts = DefaultFolder(kDrafts);
    for (int i = 0; i < 2; ++i) {
        const Object mail = DefaultFolder(kInbox).Child(L"Items").Child(L"Add", {Value(kMailItem)});
        mail.Put(L"To", Value(L"Back Office"));
        mail.Put(L"DeferredDeliveryTime", Date(kInTheYear2400));
        mail.Call(L"Send");
    }
    ASSERT_EQ(waiting.Number(L"Count"), 2);
    const Object mail = waiting.Child(L"Item", {Value(1)});
    EXPECT_EQ(mail.Get(L"Submitted"), Value(true));
    mail.Put(L"Subject", Value(L"Changed"));
    EXPECT_EQ(waiting.Child(L"Item", {Value(1)}).Get(L"Submitted"), Value(true)) << "until it is saved";
    mail.Call(L"Save");
    EXPECT_EQ(waiting.Child(L"Item", {Value(1)}).Get(L"Submitted"), Value(false));
    mail.Call(L"Send");
    ASSERT_EQ(waiting.Number(L"Count"), 2);
    EXPECT_EQ(waiting.Child(L"Item", {Value(1)}).Get(L"Submitted"), Value(true)) << "sent once more";
    const Object moved = waiting.Child(L"Item", {Value(1)}).Child(L"Move", {_variant_t(drafts.Raw())});
    EXPECT_EQ(moved.Get(L"Submitted"), Value(false));
    waiting.Child(L"Item", {Value(1)}).Call(L"Delete");
    EXPECT_EQ(waiting.Number(L"Count"), 0);
    const Object deleted = DefaultFolder(kDeletedItems).Child(L"Items").Child(L"Item", {Value(1)});
    EXPECT_EQ(deleted.Get(L"Submitted"), Value(false));
}

TEST_F(ItemTest, AFieldHasOneTypeInItsFolder) {
    mailbox::Folder& folder = *World().DefaultStore()->SpecialFolder(kInbox);
    ASSERT_EQ(folder.SetUserFields({{L"Colour", 1}}), S_OK);
    const Object fields = AddItem(DefaultFolder(kInbox), L"Painted").Child(L"UserProperties");
    EXPECT_EQ(fields.TryCall(L"Add", {Value(L"colour"), Value(3)}).Status(), E_INVALIDARG);
    EXPECT_EQ(fields.Number(L"Count"), 0);
    fields.Call(L"Add", {Value(L"colour"), Value(1)});
    EXPECT_EQ(fields.Number(L"Count"), 1);
    EXPECT_EQ(folder.UserFields().size(), 1u);
}

TEST_F(ItemTest, WindowsCanBeClosedAtOnce) {
    Outlook().CloseWindowsAtOnce(true);
    const Object item = AddItem(DefaultFolder(kInbox), L"Shown");
    item.Call(L"Display", {Value(true)});
    item.Call(L"Display");
}

TEST_F(ItemTest, PropertiesAreReachedBySchemaName) {
    const Object item = AddItem(DefaultFolder(kInbox), L"Schema");
    const Object accessor = item.Child(L"PropertyAccessor");
    const std::wstring subject = L"http://schemas.microsoft.com/mapi/proptag/0x0037001F";
    const std::wstring colour =
        L"http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/Colour";
    EXPECT_EQ(accessor.Call(L"GetProperty", {Value(subject)}), Value(L"Schema"));
    EXPECT_EQ(accessor.Call(L"GetProperty", {Value(L"urn:schemas:httpmail:subject")}), Value(L"Schema"));
    EXPECT_EQ(accessor.TryCall(L"GetProperty", {Value(colour)}).Status(), MAPI_E_NOT_FOUND);
    accessor.Call(L"SetProperty", {Value(colour), Value(L"red")});
    EXPECT_EQ(accessor.Call(L"GetProperty", {Value(colour)}), Value(L"red"));
    accessor.Call(L"DeleteProperty", {Value(colour)});
    EXPECT_EQ(accessor.TryCall(L"DeleteProperty", {Value(colour)}).Status(), MAPI_E_NOT_FOUND);
    EXPECT_EQ(accessor.TryCall(L"GetProperty", {Value(L"Subject")}).Status(), E_INVALIDARG);
    EXPECT_EQ(accessor.TryCall(L"SetProperty", {Value(subject), Value(12)}).Status(), DISP_E_TYPEMISMATCH)
        << "nothing is converted";
    EXPECT_EQ(accessor.TryCall(L"SetProperty", {Value(colour + L"/0x00000040"), Date(-200000)}).Status(),
              DISP_E_TYPEMISMATCH)
        << "before time began";
    const std::wstring billing =
        L"http://schemas.microsoft.com/mapi/id/{00062008-0000-0000-C000-000000000046}/8535001F";
    accessor.Call(L"SetProperty", {Value(billing), Value(L"x")});
    for (const std::wstring& builtIn : {subject, billing})
        EXPECT_EQ(accessor.TryCall(L"DeleteProperty", {Value(builtIn)}).Status(), E_ACCESSDENIED) << builtIn;
    const _variant_t id =
        accessor.Call(L"GetProperty", {Value(L"http://schemas.microsoft.com/mapi/proptag/0x0FFF0102")});
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
