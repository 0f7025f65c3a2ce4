// The properties of stores that are worked out.
#include "standin/mailbox/ComputedRows.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"

namespace standin::mailbox {
namespace {

const Store* Of(const PropertyObject& object) {
    return &static_cast<const Store&>(object);
}

bool AccessOf(const PropertyObject& object, Value& value) {
    constexpr std::int32_t kAll = MAPI_ACCESS_MODIFY | MAPI_ACCESS_READ | MAPI_ACCESS_DELETE |
                                  MAPI_ACCESS_CREATE_HIERARCHY | MAPI_ACCESS_CREATE_CONTENTS |
                                  MAPI_ACCESS_CREATE_ASSOCIATED;
    return Give(value, Of(object)->IsReadOnly() ? std::int32_t{MAPI_ACCESS_READ} : kAll);
}

bool AccessLevel(const PropertyObject& object, Value& value) {
    return Give(value, std::int32_t{!Of(object)->IsReadOnly()});
}

bool Name(const PropertyObject& object, Value& value) {
    return Give(value, Of(object)->Name());
}

bool IsDefault(const PropertyObject& object, Value& value) {
    return Give(value, Of(object)->IsDefault());
}

bool Provider(const PropertyObject& object, Value& value) {
    return Give(value, ProviderOf(Of(object)->EntryId()));
}

bool SubtreeEntryId(const PropertyObject& object, Value& value) {
    return Give(value, Of(object)->IpmSubtree().EntryId());
}

template <std::int32_t number>
bool SpecialEntryId(const PropertyObject& object, Value& value) {
    const Folder* special = Of(object)->SpecialFolder(number);
    return special && Give(value, special->EntryId());
}

bool ValidFolders(const PropertyObject& object, Value& value) {
    constexpr std::pair<std::int32_t, std::int32_t> kBits[] = {
        {kInbox, FOLDER_IPM_INBOX_VALID},
        {kOutbox, FOLDER_IPM_OUTBOX_VALID},
        {kDeletedItems, FOLDER_IPM_WASTEBASKET_VALID},
        {kSentItems, FOLDER_IPM_SENTMAIL_VALID},
    };
    std::int32_t mask = FOLDER_IPM_SUBTREE_VALID;
    for (const auto& [number, bit] : kBits)
        if (Of(object)->SpecialFolder(number))
            mask |= bit;
    return Give(value, mask);
}

bool PublicSubtreeEntryId(const PropertyObject& object, Value& value) {
    return Of(object)->Kind() == StoreKind::Public && SubtreeEntryId(object, value);
}

/// Whose mailbox the store is; only a mailbox has an owner.
std::shared_ptr<AddressEntry> Owner(const PropertyObject& object) {
    const Store* store = Of(object);
    return store->Kind() == StoreKind::Mailbox
               ? store->Mailbox().Addresses().FindByAddress(L"SMTP", store->SmtpAddress())
               : nullptr;
}

bool OwnerName(const PropertyObject& object, Value& value) {
    if (Of(object)->Kind() != StoreKind::Mailbox)
        return false;
    const auto owner = Owner(object);
    return Give(value, owner ? owner->Name() : Of(object)->Name());
}

bool OwnerEntryId(const PropertyObject& object, Value& value) {
    const auto owner = Owner(object);
    return owner && Give(value, owner->EntryId());
}

/// Who is logged on: the owner of the default store, whichever store is open.
const PropertyObject* UserStore(const PropertyObject& object) {
    return Of(object)->Mailbox().DefaultStore();
}

bool UserName(const PropertyObject& object, Value& value) {
    const PropertyObject* store = UserStore(object);
    return store && OwnerName(*store, value);
}

bool UserEntryId(const PropertyObject& object, Value& value) {
    const PropertyObject* store = UserStore(object);
    return store && OwnerEntryId(*store, value);
}

constexpr ComputedProperty kRows[] = {
    {PR_ACCESS, AccessOf, nullptr},
    {PR_ACCESS_LEVEL, AccessLevel, nullptr},
    {PR_MAPPING_SIGNATURE, MappingSignature<Of>, nullptr},
    {PR_RECORD_KEY, StoreRecordKey<Of>, nullptr},
    {PR_STORE_RECORD_KEY, StoreRecordKey<Of>, nullptr},
    {PR_STORE_ENTRYID, StoreEntryId<Of>, nullptr},
    {PR_OBJECT_TYPE, GiveNumber<MAPI_STORE>, nullptr},
    {PR_ENTRYID, StoreEntryId<Of>, nullptr},
    {PR_DISPLAY_NAME_W, Name, nullptr},
    {PR_DEFAULT_STORE, IsDefault, nullptr},
    {PR_STORE_SUPPORT_MASK, SupportMask<Of>, nullptr},
    {PR_MDB_PROVIDER, Provider, nullptr},
    {PR_VALID_FOLDER_MASK, ValidFolders, nullptr},
    {PR_IPM_SUBTREE_ENTRYID, SubtreeEntryId, nullptr},
    {PR_IPM_OUTBOX_ENTRYID, SpecialEntryId<kOutbox>, nullptr},
    {PR_IPM_WASTEBASKET_ENTRYID, SpecialEntryId<kDeletedItems>, nullptr},
    {PR_IPM_SENTMAIL_ENTRYID, SpecialEntryId<kSentItems>, nullptr},
    {kPrUserEntryId, UserEntryId, nullptr},
    {kPrUserName, UserName, nullptr},
    {kPrMailboxOwnerEntryId, OwnerEntryId, nullptr},
    {kPrMailboxOwnerName, OwnerName, nullptr},
    {kPrIpmPublicFoldersEntryId, PublicSubtreeEntryId, nullptr},
};
static_assert(IsAscending(kRows));

} // namespace

std::span<const ComputedProperty> Store::Computed() const {
    return kRows;
}

} // namespace standin::mailbox
