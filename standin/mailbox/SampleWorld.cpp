// The world that there is without a mailbox folder.
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"

namespace standin::mailbox {
namespace {

struct FolderRow {
    const wchar_t* name;
    std::int32_t defaultItemType; // OlItemType
    std::int32_t special;         // OlDefaultFolders
};

constexpr FolderRow kFrontDesk[] = {
    {L"Deleted Items", 0, kDeletedItems},
    {L"Inbox", 0, kInbox},
    {L"Outbox", 0, kOutbox},
    {L"Sent Items", 0, kSentItems},
    {L"Calendar", 1, kCalendar},
    {L"Contacts", 2, kContacts},
    {L"Journal", 4, kJournal},
    {L"Notes", 5, kNotes},
    {L"Tasks", 3, kTasks},
    {L"Drafts", 0, kDrafts},
    {L"Junk E-mail", 0, kJunk},
};
constexpr FolderRow kArchive[] = {{L"Inbox", 0, kInbox}, {L"Deleted Items", 0, kDeletedItems}};
constexpr FolderRow kPublicFolders[] = {{L"All Public Folders", 0, kAllPublicFolders}};
constexpr FolderRow kBackOffice[] = {
    {L"Inbox", 0, kInbox}, {L"Calendar", 1, kCalendar}, {L"Contacts", 2, kContacts}};

struct StoreRow {
    const wchar_t* name;
    StoreKind kind;
    const wchar_t* smtpAddress;
    bool isDefault;
    bool isInProfile;
    std::span<const FolderRow> folders;
};

constexpr StoreRow kStores[] = {
    {L"Front Desk", StoreKind::Mailbox, L"front.desk@example.com", true, true, kFrontDesk},
    {L"Archive", StoreKind::Archive, L"", false, true, kArchive},
    {L"Public Folders", StoreKind::Public, L"", false, true, kPublicFolders},
    {L"Back Office", StoreKind::Mailbox, L"back.office@example.com", false, false, kBackOffice},
};

struct EntryRow {
    const wchar_t* name;
    const wchar_t* alias;
    const wchar_t* smtpAddress;
};

constexpr EntryRow kPeople[] = {
    {L"Front Desk", L"front.desk", L"front.desk@example.com"},
    {L"Back Office", L"back.office", L"back.office@example.com"},
    {L"Service North", L"service.north", L"service.north@example.com"},
    {L"Service South", L"service.south", L"service.south@example.com"},
    {L"Warehouse", L"warehouse", L"warehouse@example.com"},
};
constexpr EntryRow kEveryone{L"All Hands", L"all.hands", L"all.hands@example.com"};

constexpr std::pair<PropertyTag, const wchar_t*> kWarehouse[] = {
    {PR_COMMENT_W, L"Goods in and goods out; the bell is at the side door."},
    {PR_GIVEN_NAME_W, L"Willa"},
    {PR_BUSINESS_TELEPHONE_NUMBER_W, L"+1 425 555 0150"},
    {PR_SURNAME_W, L"House"},
    {PR_COMPANY_NAME_W, L"Example Trading"},
    {PR_TITLE_W, L"Warehouse Manager"},
    {PR_DEPARTMENT_NAME_W, L"Logistics"},
    {PR_OFFICE_LOCATION_W, L"Building 4"},
    {PR_MOBILE_TELEPHONE_NUMBER_W, L"+1 425 555 0151"},
    {PR_COUNTRY_W, L"United States"},
    {PR_LOCALITY_W, L"Redmond"},
    {PR_STATE_OR_PROVINCE_W, L"WA"},
    {PR_STREET_ADDRESS_W, L"4 Dock Street"},
    {PR_POSTAL_CODE_W, L"98052"},
    {PR_ASSISTANT_W, L"Service North"},
    {kPrYomiFirstName, L"u-i-ra"},
    {kPrYomiLastName, L"ha-u-su"},
    {kPrYomiDepartment, L"ro-ji-su-ti-ku-su"},
    {kPrYomiCompanyName, L"i-gu-za-n-pu-ru"},
    {kPrYomiDisplayName, L"u-e-a-ha-u-su"},
};

void AddPeople(AddressBook& addresses) {
    std::vector<std::shared_ptr<AddressEntry>> people;
    for (const EntryRow& row : kPeople) {
        AddressEntryDescription description{row.name, row.alias, row.smtpAddress, false, {}};
        if (description.name == L"Warehouse")
            for (const auto& [tag, text] : kWarehouse)
                description.more.Put(tag, std::wstring(text));
        people.push_back(addresses.Add(description));
    }
    addresses.Add({kEveryone.name, kEveryone.alias, kEveryone.smtpAddress, true, {}})
        ->SetMembers(std::move(people));
}

HRESULT AddSpecialFolder(Store& store, const FolderRow& row) {
    std::shared_ptr<Folder> made;
    Folder* folder = store.IpmSubtree().FindSubfolder(row.name);
    if (!folder) {
        const HRESULT status = store.IpmSubtree().CreateSubfolder({row.name, row.defaultItemType, {}}, made);
        if (FAILED(status))
            return status;
        folder = made.get();
    }
    return store.SetSpecialFolder(row.special, folder);
}

HRESULT AddStore(Mailbox& mailbox, const StoreRow& row) {
    Store* store = nullptr;
    const StoreDescription description{row.name, row.kind, row.smtpAddress, row.isDefault, row.isInProfile};
    if (const HRESULT status = mailbox.AddStore(description, store); FAILED(status))
        return status;
    for (const FolderRow& folder : row.folders)
        if (const HRESULT status = AddSpecialFolder(*store, folder); FAILED(status))
            return status;
    return S_OK;
}

} // namespace

HRESULT FillWithSampleWorld(Mailbox& mailbox) {
    mailbox.SetProfileName(L"Outlook");
    AddPeople(mailbox.Addresses());
    for (const StoreRow& row : kStores)
        if (const HRESULT status = AddStore(mailbox, row); FAILED(status))
            return status;
    return S_OK;
}

HRESULT MakeMissingFolders(Store& store) {
    for (const FolderRow& row : kFrontDesk)
        if (!store.SpecialFolder(row.special))
            if (const HRESULT status = AddSpecialFolder(store, row); FAILED(status))
                return status;
    return S_OK;
}

std::unique_ptr<Mailbox> MakeSampleWorld() {
    auto mailbox = std::make_unique<Mailbox>();
    FillWithSampleWorld(*mailbox);
    return mailbox;
}

} // namespace standin::mailbox
