// Folders by their role: default folders by a word, other users' folders.
#include "MailboxTest.h"

#include <algorithm>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class RoleFolderTest : public MailboxTest {};

TEST_F(RoleFolderTest, EachWordNamesTheDefaultFolderForItsPurpose) {
    const std::vector<std::pair<const wchar_t*, const wchar_t*>> words{
        {L"Deleted Items", L"Deleted Items"},
        {L"Outbox", L"Outbox"},
        {L"Sent Mail", L"Sent Items"},
        {L"Inbox", L"Inbox"},
        {L"Calendar", L"Calendar"},
        {L"Contacts", L"Contacts"},
        {L"Journal", L"Journal"},
        {L"Notes", L"Notes"},
        {L"Tasks", L"Tasks"},
        {L"Drafts", L"Drafts"},
        {L"All Public Folders", L"All Public Folders"},
        {L"Junk", L"Junk E-mail"},
        {L"Root", L"Front Desk"}};
    EXPECT_EQ(Call(L"VARD_OpenRootFolder", {L"Archive"}), L"0"); // makes no difference
    for (const auto& [word, name] : words) {
        EXPECT_EQ(Call(L"VARD_GetDefaultFolderName", {word}), name);
        std::wstring upper = word;
        std::transform(upper.begin(), upper.end(), upper.begin(), towupper);
        EXPECT_EQ(Call(L"VARD_GetDefaultFolderName", {upper}), name);
    }
    for (const wchar_t* word : {L"Sent Items", L"", L"Inbox ", L"6"}) {
        ExpectFailure(L"VARD_GetDefaultFolderName", {word}, -1088, L"Invalid folder type");
    }
    ExpectFailure(L"VARD_GetFolderID", {}, errors::kNoFolder); // none
}

TEST_F(RoleFolderTest, ADefaultFolderThatIsNotReachedIsToldAndEndsTheRecord) {
    New(L"Mail");
    ExpectFaults(L"VARD_GetDefaultFolderName", {L"Junk"},
                 {{L"NameSpace::GetDefaultFolder", errors::NotFound(), MAPI_E_NOT_FOUND}});
    ExpectNoCurrentRecord();
    Fail(L"NameSpace::GetDefaultFolder", MAPI_E_NOT_FOUND);
    EXPECT_EQ(Call(L"VARD_GetDefaultFolderName", {L"root"}), L"Front Desk"); // isn't asked for
}

TEST_F(RoleFolderTest, AnotherUsersFolderBecomesTheCurrentOne) {
    Folder& contacts = At(L"Contacts", L"Back Office");
    for (const wchar_t* name : {L"Ann", L"Bob"}) {
        AddMessage(contacts, {.messageClass = L"IPM.Contact", .subject = name});
    }
    std::shared_ptr<Folder> sub;
    ASSERT_EQ(contacts.CreateSubfolder({L"Customers", 2, {}}, sub), S_OK);
    Open(L"/Contacts");
    ASSERT_EQ(Call(L"VARD_FilterByFilterString", {L"[Subject] = 'Nobody'"}), L"0");
    constexpr std::int32_t olFolderContacts = 10;
    for (const wchar_t* name : {L"Back Office", L"back.office@example.com"}) {
        ExpectSuccess(L"VARD_OpenSharedFolder", {name, olFolderContacts});
        EXPECT_EQ(Call(L"VARD_GetFolderID"), ToHex(contacts.EntryId()));
        EXPECT_EQ(Call(L"VARD_GetFolderType"), L"Contacts");
        EXPECT_EQ(Call(L"VARD_GetRecordCount"), L"2"); // without the filter
        Call(L"VARD_GetFirstRecord");
        EXPECT_EQ(Get(L"Subject"), L"Ann");
    }
    Open(L"Customers"); // below the shared folder
    EXPECT_EQ(Call(L"VARD_GetFolderID"), ToHex(sub->EntryId()));
    Open(L"/Inbox"); // below the user's own root
    EXPECT_EQ(Call(L"VARD_GetFolderID"), ToHex(At(L"Inbox").EntryId()));
}

TEST_F(RoleFolderTest, ASharedFolderThatIsNotReachedIsTold) {
    Open(L"/Drafts");
    const LastError noAccess{-1100, L"Error accessing shared folder"};
    const std::vector<std::pair<const wchar_t*, std::int32_t>> unreachable{
        {L"Nobody Here", 10}, {L"Service", 10},   {L"Warehouse", 9}, {L"", 9},
        {L"Back Office", 99}, {L"Back Office", 0}};
    for (const auto& [name, folder] : unreachable) {
        ExpectFailure(L"VARD_OpenSharedFolder", {name, folder}, noAccess);
        EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Drafts");
    }
    constexpr std::int32_t olFolderCalendar = 9;
    ExpectFaults(L"VARD_OpenSharedFolder", {L"Back Office", olFolderCalendar},
                 {{L"NameSpace::CreateRecipient", noAccess, E_FAIL},
                  {L"NameSpace::GetSharedDefaultFolder", noAccess, E_FAIL},
                  {L"MAPIFolder::Items", noAccess, E_FAIL}});
    EXPECT_EQ(Call(L"VARD_GetCurrentFolderName"), L"Calendar"); // the folder is taken, its records aren't
}

} // namespace
} // namespace varden::tests
