// The properties of folders that are worked out or guarded.
#include "standin/mailbox/ComputedRows.h"
#include "standin/mailbox/Folder.h"
#include "standin/mailbox/ItemTypes.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"

namespace standin::mailbox {
namespace {

const Folder& Of(const PropertyObject& object) {
    return static_cast<const Folder&>(object);
}

const Store* StoreOf(const PropertyObject& object) {
    return &Of(object).Store();
}

bool EntryIdOf(const PropertyObject& object, Value& value) {
    return Give(value, Of(object).EntryId());
}

/// The root is its own parent.
bool ParentEntryId(const PropertyObject& object, Value& value) {
    const Folder* parent = Of(object).Parent();
    return Give(value, parent ? parent->EntryId() : Of(object).EntryId());
}

bool RecordKey(const PropertyObject& object, Value& value) {
    return Give(value, MakeRecordKey(StoreOf(object)->Key(), Of(object).Id()));
}

bool InstanceKey(const PropertyObject& object, Value& value) {
    return Give(value, MakeInstanceKey(Of(object).Id()));
}

bool AccessOf(const PropertyObject& object, Value& value) {
    constexpr std::int32_t kAll = MAPI_ACCESS_MODIFY | MAPI_ACCESS_READ | MAPI_ACCESS_DELETE |
                                  MAPI_ACCESS_CREATE_HIERARCHY | MAPI_ACCESS_CREATE_CONTENTS |
                                  MAPI_ACCESS_CREATE_ASSOCIATED;
    return Give(value, StoreOf(object)->IsReadOnly() ? std::int32_t{MAPI_ACCESS_READ} : kAll);
}

bool AccessLevel(const PropertyObject& object, Value& value) {
    return Give(value, std::int32_t{!StoreOf(object)->IsReadOnly()});
}

bool Name(const PropertyObject& object, Value& value) {
    return Give(value, Of(object).Name());
}

HRESULT SetName(PropertyObject& object, Value& value) {
    const auto* name = std::get_if<std::wstring>(&value);
    if (!name)
        return MAPI_E_INVALID_TYPE;
    const HRESULT status = static_cast<Folder&>(object).Rename(*name);
    return FAILED(status) ? status : S_FALSE;
}

bool FolderType(const PropertyObject& object, Value& value) {
    return Give(value, Of(object).Parent() ? std::int32_t{FOLDER_GENERIC} : std::int32_t{FOLDER_ROOT});
}

bool ContentCount(const PropertyObject& object, Value& value) {
    return Give(value, static_cast<std::int32_t>(Of(object).Messages().size()));
}

bool AssociatedCount(const PropertyObject& object, Value& value) {
    return Give(value, static_cast<std::int32_t>(Of(object).AssociatedMessages().size()));
}

bool UnreadCount(const PropertyObject& object, Value& value) {
    return Give(value, static_cast<std::int32_t>(Of(object).UnreadCount()));
}

bool HasSubfolders(const PropertyObject& object, Value& value) {
    return Give(value, !Of(object).Subfolders().empty());
}

bool ContainerClass(const PropertyObject& object, Value& value) {
    return Of(object).Parent() && Give(value, Of(object).ContainerClass());
}

HRESULT SetContainerClass(PropertyObject& object, Value& value) {
    const auto* containerClass = std::get_if<std::wstring>(&value);
    if (!containerClass)
        return MAPI_E_INVALID_TYPE;
    const std::int32_t type = ItemTypeByContainerClass(*containerClass).number;
    const HRESULT status = static_cast<Folder&>(object).SetDefaultItemType(type, *containerClass);
    return FAILED(status) ? status : S_FALSE;
}

bool DefaultMessageClass(const PropertyObject& object, Value& value) {
    const std::wstring_view messageClass = ItemTypeByNumber(Of(object).DefaultItemType()).messageClass;
    return Of(object).Parent() && Give(value, std::wstring(messageClass));
}

/// The root and the Inbox tell where the special folders are that have no property of the store.
bool TellsSpecialFolders(const Folder& folder) {
    return !folder.Parent() || &folder == folder.Store().SpecialFolder(kInbox);
}

template <std::int32_t number>
bool SpecialEntryId(const PropertyObject& object, Value& value) {
    const Folder* special = StoreOf(object)->SpecialFolder(number);
    return TellsSpecialFolders(Of(object)) && special && Give(value, special->EntryId());
}

/// [MS-OXOSFLD] 2.2.4: by position, an empty entry for a folder that there isn't.
bool AdditionalEntryIds(const PropertyObject& object, Value& value) {
    constexpr std::int32_t kOrder[] = {kConflicts, kSyncIssues, kLocalFailures, kServerFailures, kJunk};
    if (!TellsSpecialFolders(Of(object)))
        return false;
    std::vector<Bytes> ids;
    for (const std::int32_t number : kOrder) {
        const Folder* special = StoreOf(object)->SpecialFolder(number);
        ids.push_back(special ? special->EntryId() : Bytes());
    }
    return Give(value, std::move(ids));
}

constexpr ComputedProperty kRows[] = {
    {PR_PARENT_ENTRYID, ParentEntryId, nullptr},
    {PR_ACCESS, AccessOf, nullptr},
    {PR_INSTANCE_KEY, InstanceKey, nullptr},
    {PR_ACCESS_LEVEL, AccessLevel, nullptr},
    {PR_MAPPING_SIGNATURE, MappingSignature<StoreOf>, nullptr},
    {PR_RECORD_KEY, RecordKey, nullptr},
    {PR_STORE_RECORD_KEY, StoreRecordKey<StoreOf>, nullptr},
    {PR_STORE_ENTRYID, StoreEntryId<StoreOf>, nullptr},
    {PR_OBJECT_TYPE, GiveNumber<MAPI_FOLDER>, nullptr},
    {PR_ENTRYID, EntryIdOf, nullptr},
    {PR_DISPLAY_NAME_W, Name, SetName},
    {PR_CREATION_TIME, nullptr, nullptr},
    {PR_LAST_MODIFICATION_TIME, nullptr, nullptr},
    {PR_STORE_SUPPORT_MASK, SupportMask<StoreOf>, nullptr},
    {PR_FOLDER_TYPE, FolderType, nullptr},
    {PR_CONTENT_COUNT, ContentCount, nullptr},
    {PR_CONTENT_UNREAD, UnreadCount, nullptr},
    {PR_SUBFOLDERS, HasSubfolders, nullptr},
    {PR_CONTAINER_HIERARCHY, GiveObject, nullptr},
    {PR_CONTAINER_CONTENTS, GiveObject, nullptr},
    {PR_FOLDER_ASSOCIATED_CONTENTS, GiveObject, nullptr},
    {PR_CONTAINER_CLASS_W, ContainerClass, SetContainerClass},
    {PR_ASSOC_CONTENT_COUNT, AssociatedCount, nullptr},
    {kPrIpmAppointmentEntryId, SpecialEntryId<kCalendar>, nullptr},
    {kPrIpmContactEntryId, SpecialEntryId<kContacts>, nullptr},
    {kPrIpmJournalEntryId, SpecialEntryId<kJournal>, nullptr},
    {kPrIpmNoteEntryId, SpecialEntryId<kNotes>, nullptr},
    {kPrIpmTaskEntryId, SpecialEntryId<kTasks>, nullptr},
    {kPrIpmDraftsEntryId, SpecialEntryId<kDrafts>, nullptr},
    {kPrAdditionalRenEntryIds, AdditionalEntryIds, nullptr},
    {kPrDefaultMessageClass, DefaultMessageClass, nullptr},
};
static_assert(IsAscending(kRows));

} // namespace

std::span<const ComputedProperty> Folder::Computed() const {
    return kRows;
}

} // namespace standin::mailbox
