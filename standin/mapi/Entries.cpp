// From entry ids to objects.
#include "standin/mapi/Entries.h"

#include "standin/mapi/Object.h"
#include "standin/mapi/Values.h"
#include "standin/mapi/Views.h"

#include "standin/mailbox/Platform.h"

#include <algorithm>

namespace standin::mapi {
namespace {

using mailbox::Access;
using mailbox::Store;
using EntryId = std::span<const std::uint8_t>;

// Newer than the platform's headers.
constexpr ULONG kNoCache = 0x0200;
constexpr ULONG kCacheOnly = 0x4000;

constexpr std::size_t kShortestEntryId = 4 + sizeof(MAPIUID);
// A length beyond this is no length: a caller has read it from a property that isn't there.
constexpr ULONG kLongestEntryId = 64 * 1024;

// [MS-OXCDATA] 2.2.4.3: the provider of every store's entry id.
constexpr MAPIUID kWrappedStoreProvider{
    {0x38, 0xA1, 0xBB, 0x10, 0x05, 0xE5, 0x10, 0x1A, 0xA1, 0xBB, 0x08, 0x00, 0x2B, 0x2A, 0x56, 0xC2}};

/// What to say of an id whose form is known to nobody here.
HRESULT UnknownForm(EntryId entryId) {
    return entryId.size() < kShortestEntryId ? MAPI_E_INVALID_ENTRYID : MAPI_E_UNKNOWN_ENTRYID;
}

const Store* StoreOf(const mailbox::Mailbox& mailbox, const mailbox::ObjectEntryId& id) {
    const auto found = std::ranges::find_if(mailbox.AllStores(), [&](const auto& store) {
        return store->Key().provider == id.provider && store->Key().database == id.database;
    });
    return found == mailbox.AllStores().end() ? nullptr : found->get();
}

HRESULT Give(IUnknown* object, ULONG type, const EntryRequest& request) {
    *request.object = object;
    if (request.objectType)
        *request.objectType = type;
    return S_OK;
}

bool CanModify(const Store& store, const EntryRequest& request) {
    return request.storeIsWritable && !store.IsReadOnly();
}

HRESULT OpenFolder(mailbox::Folder* folder, const EntryRequest& request) {
    if (!folder)
        return MAPI_E_NOT_FOUND;
    if (!Offers<IMAPIFolder>(request.iid))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    Access access{};
    if (const HRESULT status = AccessFrom(request.flags, CanModify(folder->Store(), request), access);
        FAILED(status))
        return status;
    return Give(MakeFolder(folder->shared_from_this(), access, request.storeIsWritable), MAPI_FOLDER,
                request);
}

HRESULT OpenMessage(const std::shared_ptr<mailbox::Message>& message, const EntryRequest& request) {
    if (!message || !message->ParentFolder())
        return MAPI_E_NOT_FOUND;
    if (!Offers<IMessage>(request.iid))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    mailbox::Folder& folder = *message->ParentFolder();
    Access access{};
    if (const HRESULT status = AccessFrom(request.flags, CanModify(folder.Store(), request), access);
        FAILED(status))
        return status;
    std::shared_ptr<mailbox::OpenMessage> open;
    if (const HRESULT status = folder.OpenMessage(*message, access, open); FAILED(status))
        return status;
    return Give(MakeMessage(std::move(open)), MAPI_MESSAGE, request);
}

bool SameBytes(EntryId left, EntryId right) {
    return std::ranges::equal(left, right);
}

bool IsStoreEntryId(EntryId id) {
    return id.size() > kShortestEntryId &&
           SameBytes(id.subspan(4, sizeof(MAPIUID)), kWrappedStoreProvider.ab);
}

bool IsKnownForm(EntryId id) {
    return mailbox::ParseObjectEntryId(id) || mailbox::ParseAddressBookEntryId(id) ||
           mailbox::ParseOneOffEntryId(id) || IsStoreEntryId(id);
}

/// Ids that differ in bytes may still name one object: addresses don't care for letter case, or for the width
/// of their text.
bool NameOneObject(EntryId left, EntryId right) {
    if (SameBytes(left, right))
        return true;
    const auto address1 = mailbox::ParseAddressBookEntryId(left);
    const auto address2 = mailbox::ParseAddressBookEntryId(right);
    if (address1 && address2)
        return mailbox::SameIgnoringCase(mailbox::Widen(address1->dn, 1252),
                                         mailbox::Widen(address2->dn, 1252));
    const auto oneOff1 = mailbox::ParseOneOffEntryId(left);
    const auto oneOff2 = mailbox::ParseOneOffEntryId(right);
    return oneOff1 && oneOff2 && oneOff1->name == oneOff2->name &&
           mailbox::SameIgnoringCase(oneOff1->addressType, oneOff2->addressType) &&
           mailbox::SameIgnoringCase(oneOff1->address, oneOff2->address);
}

} // namespace

HRESULT TakeEntryRequest(ULONG size, const ENTRYID* entryId, const IID* iid, ULONG flags, ULONG* objectType,
                         IUnknown** object, EntryRequest& request) {
    if (!object || (size > 0 && !entryId))
        return MAPI_E_INVALID_PARAMETER;
    if (size > kLongestEntryId)
        return MAPI_E_INVALID_ENTRYID;
    if (flags & ~(MAPI_MODIFY | MAPI_BEST_ACCESS | MAPI_DEFERRED_ERRORS | kNoCache | kCacheOnly))
        return MAPI_E_UNKNOWN_FLAGS;
    request = {.entryId = BytesAt(size, entryId),
               .iid = iid,
               .flags = flags,
               .objectType = objectType,
               .object = object};
    return S_OK;
}

HRESULT AccessFrom(ULONG flags, bool canModify, Access& access) {
    const bool best = (flags & MAPI_BEST_ACCESS) != 0;
    if ((flags & MAPI_MODIFY) && !best && !canModify)
        return E_ACCESSDENIED;
    access = canModify && (flags & (MAPI_MODIFY | MAPI_BEST_ACCESS)) ? Access::Modify : Access::Read;
    return S_OK;
}

HRESULT OpenStoreEntry(mailbox::Mailbox& mailbox, const Store* store, const EntryRequest& request) {
    const auto id = mailbox::ParseObjectEntryId(request.entryId);
    if (!id)
        return UnknownForm(request.entryId);
    const Store* found = StoreOf(mailbox, *id);
    if (!found || (store && found != store))
        return MAPI_E_UNKNOWN_ENTRYID;
    return id->message == 0 ? OpenFolder(mailbox.FindFolder(request.entryId), request)
                            : OpenMessage(mailbox.FindMessage(request.entryId), request);
}

HRESULT WhyNoStore(EntryId entryId) {
    return IsStoreEntryId(entryId) ? MAPI_E_NOT_FOUND : UnknownForm(entryId);
}

HRESULT OpenAddressContainer(mailbox::AddressBook& book, bool isRoot, const EntryRequest& request) {
    if (!Offers<IABContainer>(request.iid))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    if ((request.flags & MAPI_MODIFY) && !(request.flags & MAPI_BEST_ACCESS))
        return E_ACCESSDENIED;
    return Give(isRoot ? MakeAddressRoot(book) : MakeAddressList(book), MAPI_ABCONT, request);
}

HRESULT OpenAddressBookEntry(mailbox::AddressBook& book, const EntryRequest& request) {
    if (SameBytes(book.EntryId(), request.entryId))
        return OpenAddressContainer(book, false, request);
    std::shared_ptr<mailbox::AddressEntry> entry;
    const HRESULT status = book.Open(request.entryId, entry);
    if (status == MAPI_E_INVALID_ENTRYID)
        return UnknownForm(request.entryId);
    if (FAILED(status))
        return status;
    const bool isList = entry->IsDistributionList();
    if (!(isList ? Offers<IDistList>(request.iid) : Offers<IMailUser>(request.iid)))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    Access access{};
    if (const HRESULT refused = AccessFrom(request.flags, false, access); FAILED(refused))
        return refused;
    return Give(MakeAddressEntry(book, std::move(entry)), isList ? MAPI_DISTLIST : MAPI_MAILUSER, request);
}

HRESULT CompareEntryIds(ULONG size1, const ENTRYID* entryId1, ULONG size2, const ENTRYID* entryId2,
                        ULONG flags, ULONG* result) {
    if (!entryId1 || !entryId2 || !result || size1 > kLongestEntryId || size2 > kLongestEntryId)
        return MAPI_E_INVALID_PARAMETER;
    if (flags != 0)
        return MAPI_E_UNKNOWN_FLAGS;
    const EntryId left = BytesAt(size1, entryId1);
    const EntryId right = BytesAt(size2, entryId2);
    if (!IsKnownForm(left) || !IsKnownForm(right))
        return MAPI_E_UNKNOWN_ENTRYID;
    *result = NameOneObject(left, right);
    return S_OK;
}

} // namespace standin::mapi
