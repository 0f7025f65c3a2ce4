// The MAPI name space: logon, folders and items by id, the address book.
#include "standin/outlook/session/NameSpace.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mapi/Views.h"
#include "standin/outlook/folders/Folders.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/objects/AddressLists.h"
#include "standin/outlook/objects/Recipient.h"
#include "standin/outlook/session/Session.h"

#include <algorithm>

namespace standin::outlook {
namespace {

NameSpaceObject* g_nameSpace = nullptr;

void Logon(NameSpaceObject&, const Arguments& arguments) {
    constexpr std::size_t kProfile = 0; // any password is accepted; no dialog is shown
    LogOn(arguments.Text(kProfile, L""));
}

void Logoff(NameSpaceObject&) {
    LogOff();
}

/// The bytes of an entry id in text. Raises MAPI_E_INVALID_ENTRYID for text that is none.
mailbox::Bytes EntryIdOf(const std::wstring& text) {
    std::optional<mailbox::Bytes> id = mailbox::FromHex(text);
    if (!id || id->empty())
        throw Failure(MAPI_E_INVALID_ENTRYID);
    return std::move(*id);
}

/// A folder or message by its entry id.
struct Asked {
    mailbox::Bytes id;
    mailbox::Store* store = nullptr; ///< in which it must be; null: in any that is open
};

/// The first argument, and the store in the second where it is given, which is opened if there is one.
Asked AskedFor(const Arguments& arguments) {
    constexpr std::size_t kId = 0, kStore = 1;
    Asked asked{EntryIdOf(arguments.Text(kId))};
    if (!mailbox::ParseObjectEntryId(asked.id))
        throw Failure(MAPI_E_INVALID_ENTRYID);
    if (!arguments.IsGiven(kStore))
        return asked;
    asked.store = LoggedOnWorld().FindStore(EntryIdOf(arguments.Text(kStore, L"")));
    if (!asked.store)
        throw Failure(MAPI_E_NOT_FOUND);
    OpenStore(*asked.store);
    return asked;
}

/// Raises MAPI_E_NOT_FOUND for an object of a store where nobody looks.
void CheckPlace(const Asked& asked, const mailbox::Folder* folder) {
    if (!folder || (asked.store ? asked.store != &folder->Store() : !IsOpen(folder->Store())))
        throw Failure(MAPI_E_NOT_FOUND);
}

ComPtr<FolderObject> GetFolderFromId(NameSpaceObject&, const Arguments& arguments) {
    mailbox::Mailbox& world = LoggedOnWorld();
    const Asked asked = AskedFor(arguments);
    mailbox::Folder* folder = world.FindFolder(asked.id);
    CheckPlace(asked, folder);
    return FolderFor(*folder);
}

ComPtr<ItemObject> GetItemFromId(NameSpaceObject&, const Arguments& arguments) {
    mailbox::Mailbox& world = LoggedOnWorld();
    const Asked asked = AskedFor(arguments);
    const std::shared_ptr<mailbox::Message> message = world.FindMessage(asked.id);
    CheckPlace(asked, message ? message->ParentFolder() : nullptr);
    return OpenItem(*message);
}

/// Raises E_INVALIDARG for a number that isn't OlDefaultFolders', MAPI_E_NOT_FOUND where the store has none.
ComPtr<FolderObject> SpecialFolder(const mailbox::Store* store, std::int32_t number) {
    if (!ObjectModel::Get().HasValue(L"OlDefaultFolders", number))
        throw InvalidValue();
    mailbox::Folder* folder = store ? store->SpecialFolder(number) : nullptr;
    if (!folder)
        throw Failure(MAPI_E_NOT_FOUND);
    return FolderFor(*folder);
}

/// The public folders stand in a store of their own.
ComPtr<FolderObject> GetDefaultFolder(NameSpaceObject&, const Arguments& arguments) {
    const std::int32_t number = arguments.Number(0);
    const std::vector<mailbox::Store*> stores = LoggedOnWorld().ProfileStores();
    const auto isPublic = [](const mailbox::Store* each) {
        return each->Kind() == mailbox::StoreKind::Public;
    };
    if (number != mailbox::kAllPublicFolders)
        return SpecialFolder(LoggedOnWorld().DefaultStore(), number);
    const auto store = std::ranges::find_if(stores, isPublic);
    return SpecialFolder(store == stores.end() ? nullptr : *store, number);
}

/// The folders that users can share by their role.
constexpr std::int32_t kSharedFolders[] = {mailbox::kInbox,   mailbox::kCalendar, mailbox::kContacts,
                                           mailbox::kJournal, mailbox::kNotes,    mailbox::kTasks,
                                           mailbox::kDrafts};

/// A recipient that isn't resolved is resolved first.
ComPtr<FolderObject> GetSharedDefaultFolder(NameSpaceObject&, const Arguments& arguments) {
    constexpr std::size_t kRecipient = 0, kFolder = 1;
    const ComPtr<RecipientObject> recipient = arguments.As<RecipientObject>(kRecipient);
    const std::int32_t number = arguments.Number(kFolder);
    if (std::ranges::find(kSharedFolders, number) == std::end(kSharedFolders))
        throw InvalidValue();
    if (!recipient->Resolve())
        throw Failure(MAPI_E_NOT_FOUND);
    mailbox::Store* store = LoggedOnWorld().FindMailbox(*recipient->Entry());
    if (store)
        OpenStore(*store);
    return SpecialFolder(store, number);
}

ComPtr<FoldersObject> TopFolders(NameSpaceObject&) {
    LoggedOnWorld();
    return Make<FoldersObject>(nullptr);
}

ComPtr<RecipientObject> CreateRecipient(NameSpaceObject&, const Arguments& arguments) {
    const std::wstring name = arguments.Text(0);
    if (name.empty())
        throw InvalidValue();
    return Make<RecipientObject>(UnresolvedRecipient(name));
}

ComPtr<RecipientObject> RecipientOf(const mailbox::AddressEntry& entry) {
    auto recipient = Make<RecipientObject>(UnresolvedRecipient(entry.Name()));
    recipient->SetEntry(entry);
    return recipient;
}

ComPtr<RecipientObject> CurrentUser(NameSpaceObject&) {
    mailbox::Mailbox& world = LoggedOnWorld();
    const mailbox::Store* store = world.DefaultStore();
    if (!store)
        throw Failure(MAPI_E_NOT_FOUND);
    const EntryPtr owner = world.Addresses().FindByAddress(L"SMTP", store->SmtpAddress());
    return RecipientOf(owner ? *owner
                             : *world.Addresses().MakeOneOff(store->Name(), L"SMTP", store->SmtpAddress()));
}

EntryPtr EntryFromId(const Arguments& arguments) {
    EntryPtr entry;
    Check(LoggedOnWorld().Addresses().Open(EntryIdOf(arguments.Text(0)), entry));
    return entry;
}

ComPtr<RecipientObject> GetRecipientFromId(NameSpaceObject&, const Arguments& arguments) {
    return RecipientOf(*EntryFromId(arguments));
}

ComPtr<AddressEntryObject> GetAddressEntryFromId(NameSpaceObject&, const Arguments& arguments) {
    return Make<AddressEntryObject>(EntryFromId(arguments));
}

ComPtr<AddressListObject> GetGlobalAddressList(NameSpaceObject&) {
    LoggedOnWorld();
    return Make<AddressListObject>();
}

ComPtr<AddressListsObject> AddressLists(NameSpaceObject&) {
    LoggedOnWorld();
    return Make<AddressListsObject>();
}

bool CompareEntryIds(NameSpaceObject&, const Arguments& arguments) {
    return EntryIdOf(arguments.Text(0)) == EntryIdOf(arguments.Text(1));
}

std::wstring CurrentProfileName(NameSpaceObject&) {
    return LoggedOnWorld().ProfileName();
}

std::wstring Type(NameSpaceObject&) {
    return L"MAPI";
}

ComPtr<IUnknown> MapiObject(NameSpaceObject& nameSpace) {
    LoggedOnWorld();
    return TheSwitches().withholdMapiObject ? nullptr : nameSpace.MapiSession();
}

/// Mail goes out and comes in at once: there is never anything left to fetch.
void SendAndReceive(NameSpaceObject&) {
    LoggedOnWorld();
}

constexpr Row kRows[] = {
    {L"AddressLists", Get<AddressLists>},
    {L"CompareEntryIDs", Get<CompareEntryIds>},
    {L"CreateRecipient", Get<CreateRecipient>},
    {L"CurrentProfileName", Get<CurrentProfileName>},
    {L"CurrentUser", Get<CurrentUser>},
    {L"Folders", Get<TopFolders>},
    {L"GetAddressEntryFromID", Get<GetAddressEntryFromId>},
    {L"GetDefaultFolder", Get<GetDefaultFolder>},
    {L"GetFolderFromID", Get<GetFolderFromId>},
    {L"GetGlobalAddressList", Get<GetGlobalAddressList>},
    {L"GetItemFromID", Get<GetItemFromId>},
    {L"GetRecipientFromID", Get<GetRecipientFromId>},
    {L"GetSharedDefaultFolder", Get<GetSharedDefaultFolder>},
    {L"Logoff", Get<Logoff>},
    {L"Logon", Get<Logon>},
    {L"MAPIOBJECT", Get<MapiObject>},
    {L"Offline", Always<false>},
    {L"SendAndReceive", Get<SendAndReceive>},
    {L"Type", Get<Type>},
};

constexpr Kind kKind{L"NameSpace", 0x00063002, 1, kRows};

} // namespace

NameSpaceObject::NameSpaceObject() : Object(kKind) {
    g_nameSpace = this;
}

NameSpaceObject::~NameSpaceObject() {
    g_nameSpace = nullptr;
}

ComPtr<Object> NameSpaceObject::Parent() {
    return TheApplication();
}

const ComPtr<IUnknown>& NameSpaceObject::MapiSession() {
    if (!m_mapiSession)
        m_mapiSession = ComPtr<IUnknown>::Adopt(mapi::MakeSession());
    return m_mapiSession;
}

ComPtr<Object> TheNameSpace() {
    return g_nameSpace ? ComPtr<Object>(g_nameSpace) : ComPtr<Object>(Make<NameSpaceObject>());
}

} // namespace standin::outlook
