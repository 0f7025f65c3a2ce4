// Distribution lists: their name, and their members in their published form.
#include "Stored.h"

#include <mapicode.h>

namespace outlook_tests {
namespace {

class DistListTest : public KindTest {
protected:
    static constexpr int kDistListItem = 7;

    Object Recipient(const wchar_t* name) const {
        Object recipient = NameSpace().Child(L"CreateRecipient", {name});
        recipient.Call(L"Resolve");
        return recipient;
    }

    static void Change(const Object& list, const wchar_t* method, const Object& recipient) {
        list.Call(method, {recipient});
    }

    static std::wstring Members(const Object& list) {
        std::wstring names;
        for (int i = 1; i <= list.Number(L"MemberCount"); ++i)
            names += list.Child(L"GetMember", {i}).Text(L"Name") + L";";
        return names;
    }
};

const std::wstring kMembers = Id(kAddressSet, 0x80551102), kOneOffs = Id(kAddressSet, 0x80541102);

TEST_F(DistListTest, AListHasOneName) {
    const Object list = New(kDistListItem);
    list.Put(L"DLName", L"Team: One");
    EXPECT_EQ(list.Text(L"Subject"), L"Team: One");
    ExpectStored(list, {{Tag(0x3001001F), L"Team: One"}, {Id(kAddressSet, 0x8005001F), L"Team: One"}});
    list.Put(L"Subject", L"Two");
    EXPECT_EQ(list.Text(L"DLName"), L"Two");
    EXPECT_EQ(StoredText(list, Id(kAddressSet, 0x8053001F)), L"Two");
    EXPECT_EQ(Reopened(list).Text(L"ConversationTopic"), L"Two");
}

TEST_F(DistListTest, MembersComeAndGo) {
    const Object list = New(kDistListItem);
    EXPECT_EQ(list.Number(L"MemberCount"), 0);
    for (const wchar_t* name : {L"Warehouse", L"ann@example.com", L"All Hands", L"Warehouse"})
        Change(list, L"AddMember", Recipient(name));
    EXPECT_EQ(Members(list), L"Warehouse;ann@example.com;All Hands;") << "nobody twice";
    const Object saved = Reopened(list);
    EXPECT_EQ(Members(saved), L"Warehouse;ann@example.com;All Hands;");
    EXPECT_EQ(saved.Child(L"GetMember", {2}).Text(L"Address"), L"ann@example.com");
    EXPECT_EQ(saved.Child(L"GetMember", {1}).Get(L"Resolved"), Value(true));
    for (const int place : {0, 4, -1})
        EXPECT_TRUE(IsOutOfBounds(saved.TryCall(L"GetMember", {place})));

    Change(saved, L"RemoveMember", Recipient(L"ann@example.com"));
    EXPECT_EQ(Members(saved), L"Warehouse;All Hands;");
    EXPECT_EQ(saved.Status(L"RemoveMember", {Recipient(L"Back Office")}), MAPI_E_NOT_FOUND);
    EXPECT_EQ(saved.Status(L"AddMember", {Recipient(L"Service")}), E_FAIL);
    EXPECT_EQ(saved.Status(L"AddMember", {saved}), E_INVALIDARG);
    Change(saved, L"RemoveMember", Recipient(L"Warehouse"));
    Change(saved, L"RemoveMember", Recipient(L"All Hands"));
    EXPECT_EQ(saved.Number(L"MemberCount"), 0);
    EXPECT_EQ(Stored(saved, kMembers).vt, VT_EMPTY);
}

TEST_F(DistListTest, SeveralMembersAreAllTakenOrNone) {
    const Object list = New(kDistListItem), mail = New(kMailItem);
    const Object recipients = mail.Child(L"Recipients");
    for (const wchar_t* name : {L"Warehouse", L"Back Office"})
        recipients.Call(L"Add", {name});
    Change(list, L"AddMembers", recipients);
    EXPECT_EQ(Members(list), L"Warehouse;Back Office;");
    Change(list, L"RemoveMember", Recipient(L"Warehouse"));
    EXPECT_EQ(list.Status(L"RemoveMembers", {recipients}), MAPI_E_NOT_FOUND);
    EXPECT_EQ(Members(list), L"Back Office;");
    recipients.Call(L"Add", {L"Nobody"});
    EXPECT_EQ(list.Status(L"AddMembers", {recipients}), E_FAIL);
    EXPECT_EQ(Members(list), L"Back Office;");
}

/// One-offs in both lists, entries of the address book wrapped up in the first.
TEST_F(DistListTest, MembersAreStoredInTheirPublishedForm) {
    const Object list = New(kDistListItem);
    for (const wchar_t* name : {L"a@b.c", L"Warehouse", L"All Hands"})
        Change(list, L"AddMember", Recipient(name));
    std::wstring members = StoredText(list, kMembers), oneOffs = StoredText(list, kOneOffs);
    const auto take = [](std::wstring& text) {
        const std::size_t end = std::min(text.find(L" | "), text.size());
        std::wstring part = text.substr(0, end);
        text.erase(0, end + 3);
        return part;
    };
    const std::wstring oneOff = take(members);
    EXPECT_EQ(take(oneOffs), oneOff);
    EXPECT_EQ(oneOff.substr(0, 44), L"00000000812B1FA4BEA310199D6E00DD010F54020000");
    EXPECT_EQ(oneOff.substr(48), L"6100400062002E0063000000" // a@b.c
                                 L"53004D00540050000000"     // SMTP
                                 L"6100400062002E0063000000");
    const std::wstring wrapper = L"00000000C091ADD3519DCF11A4A900AA0047FAA4";
    EXPECT_EQ(take(members), wrapper + L"B5" + Recipient(L"Warehouse").Text(L"EntryID"));
    EXPECT_EQ(take(members), wrapper + L"B6" + Recipient(L"All Hands").Text(L"EntryID"));
    EXPECT_EQ(take(oneOffs).substr(0, 40), oneOff.substr(0, 40));
}

/// The check value of CRC-32 with neither inversion.
TEST_F(DistListTest, OtherProgramsMayWriteMembers) {
    const Object list = New(kDistListItem);
    Change(list, L"AddMember", Recipient(L"Warehouse"));
    const Object other = New(kDistListItem);
    other.Put(L"Members", list.Get(L"Members"));
    EXPECT_EQ(Members(other), L"Warehouse;");
    EXPECT_EQ(other.Get(L"OneOffMembers").vt, VT_EMPTY);
    const Object saved = Reopened(other);
    EXPECT_EQ(StoredText(saved, kOneOffs), StoredText(list, kOneOffs));
    EXPECT_EQ(saved.Number(L"CheckSum"), list.Number(L"CheckSum"));
    EXPECT_NE(saved.Number(L"CheckSum"), 0);
    EXPECT_EQ(saved.TryPut(L"Members", L"x").Status(), E_INVALIDARG);

    _variant_t one, digits = Bytes({'1', '2', '3', '4', '5', '6', '7', '8', '9'});
    one.parray = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    one.vt = VT_ARRAY | VT_VARIANT;
    LONG place = 0;
    SafeArrayPutElement(one.parray, &place, &digits);
    const Object odd = New(kDistListItem);
    odd.Put(L"Members", one);
    EXPECT_EQ(Reopened(odd).Number(L"CheckSum"), 0x2DFD2D88);
    EXPECT_EQ(odd.Child(L"GetMember", {1}).Text(L"Name"), L"") << "leads nowhere";
}

/// Clients that ask for ids without making any find those of Outlook's own properties before an item has
/// them.
TEST_F(DistListTest, TheNamesOfMembersAreThereBeforeTheFirstMember) {
    using standin::mailbox::PropertyName;
    const GUID address{kAddressSet, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    NameSpace();
    for (standin::mailbox::Store* store : World().ProfileStores()) {
        for (const std::uint32_t number : {0x8055u, 0x8054u, 0x8083u, 0x80DEu})
            EXPECT_NE(store->Names().Id(PropertyName{address, number}), 0) << number;
        EXPECT_EQ(store->Names().Id(PropertyName{address, 0x7FFFu}), 0);
    }
}

} // namespace
} // namespace outlook_tests
