// The properties of messages that are worked out or guarded.
#include "standin/mailbox/ComputedRows.h"
#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Message.h"
#include "standin/mailbox/Subject.h"
#include "standin/mailbox/Tags.h"

namespace standin::mailbox {
namespace {

constexpr std::int32_t kHasAttachment = MSGFLAG_HASATTACH;
constexpr std::int32_t kWorkedOutFlags = MSGFLAG_HASATTACH | MSGFLAG_ASSOCIATED;

const MessageProperties& Of(const PropertyObject& object) {
    return static_cast<const MessageProperties&>(object);
}

const Store* StoreOf(const PropertyObject& object) {
    const Folder* folder = Of(object).ParentFolder();
    return folder ? &folder->Store() : nullptr;
}

/// Names of the recipients of one type; what came with a message that has no recipient rows, otherwise.
template <PropertyTag tag, std::int32_t type>
std::wstring NamesIn(const Content& content) {
    constexpr std::int32_t kTypeWithoutMarks = 0x0F; // MAPI_P1 and MAPI_SUBMITTED are marks on the type
    if (content.recipients.empty())
        return content.properties.GetOr<tag>(L"");
    std::wstring names;
    for (const PropertyBag& row : content.recipients) {
        if ((row.GetOr<PR_RECIPIENT_TYPE>(MAPI_TO) & kTypeWithoutMarks) != type)
            continue;
        if (!names.empty())
            names += L"; ";
        const std::wstring* name = row.Get<PR_DISPLAY_NAME_W>();
        names += name ? *name : row.GetOr<PR_EMAIL_ADDRESS_W>(L"");
    }
    return names;
}

template <PropertyTag tag, std::int32_t type>
bool DisplayNames(const PropertyObject& object, Value& value) {
    return Give(value, NamesIn<tag, type>(Of(object).Current()));
}

std::optional<SubjectParts> SubjectOf(const PropertyBag& stored) {
    const std::wstring* subject = stored.Get<PR_SUBJECT_W>();
    if (!subject)
        return std::nullopt;
    const std::wstring* stated = stored.Get<PR_SUBJECT_PREFIX_W>();
    return SplitSubject(*subject, stated ? std::wstring_view(*stated) : std::wstring_view());
}

bool SubjectPrefix(const PropertyObject& object, Value& value) {
    const auto parts = SubjectOf(object.Stored());
    if (parts)
        return Give(value, std::wstring(parts->prefix));
    const std::wstring* stated = object.Stored().Get<PR_SUBJECT_PREFIX_W>();
    return stated && Give(value, *stated);
}

bool NormalizedSubject(const PropertyObject& object, Value& value) {
    const auto parts = SubjectOf(object.Stored());
    return parts && Give(value, std::wstring(parts->normalized));
}

std::int32_t FlagsOf(const Content& content) {
    const std::int32_t flags = content.properties.GetOr<PR_MESSAGE_FLAGS>(0) & ~kHasAttachment;
    return content.attachments.empty() ? flags : flags | kHasAttachment;
}

bool Flags(const PropertyObject& object, Value& value) {
    return Give(value, FlagsOf(Of(object).Current()));
}

/// Flags are free until a store has saved the message for the first time.
HRESULT SetFlags(PropertyObject& object, Value& value) {
    auto* flags = std::get_if<std::int32_t>(&value);
    if (!flags)
        return MAPI_E_INVALID_TYPE;
    if (Of(object).IsInStore() && Of(object).SavedMessage())
        return MAPI_E_COMPUTED;
    const std::int32_t kept = object.Stored().GetOr<PR_MESSAGE_FLAGS>(0) & kWorkedOutFlags;
    *flags = (*flags & ~kWorkedOutFlags) | kept;
    return S_OK;
}

HRESULT SetOutsideStores(PropertyObject& object, Value&) {
    return Of(object).IsInStore() ? MAPI_E_COMPUTED : S_OK;
}

HRESULT SetText(PropertyObject&, Value& value) {
    return std::holds_alternative<std::wstring>(value) ? S_OK : MAPI_E_INVALID_TYPE;
}

bool Size(const PropertyObject& object, Value& value) {
    return Give(value, static_cast<std::int32_t>(SizeOf(Of(object).Current())));
}

bool HasAttachments(const PropertyObject& object, Value& value) {
    return Give(value, !Of(object).Current().attachments.empty());
}

bool ParentEntryId(const PropertyObject& object, Value& value) {
    const Folder* folder = Of(object).ParentFolder();
    return folder && Give(value, folder->EntryId());
}

bool EntryIdOf(const PropertyObject& object, Value& value) {
    const Message* saved = Of(object).SavedMessage();
    return saved && Give(value, saved->EntryId());
}

bool RecordKey(const PropertyObject& object, Value& value) {
    const Message* saved = Of(object).SavedMessage();
    const Store* store = StoreOf(object);
    return saved && store && Give(value, MakeRecordKey(store->Key(), saved->Id()));
}

bool ChangeKey(const PropertyObject& object, Value& value) {
    const Message* saved = Of(object).SavedMessage();
    const Store* store = StoreOf(object);
    return saved && store &&
           Give(value, MakeRecordKey(store->Key(), saved->Id() << 16 | saved->ChangeNumber()));
}

bool InstanceKey(const PropertyObject& object, Value& value) {
    const Message* saved = Of(object).SavedMessage();
    return saved && Give(value, MakeInstanceKey(saved->Id()));
}

bool AccessOf(const PropertyObject& object, Value& value) {
    const Store* store = StoreOf(object);
    const bool readOnly = store ? store->IsReadOnly() : !Of(object).IsWritable();
    constexpr std::int32_t kAll = MAPI_ACCESS_READ | MAPI_ACCESS_MODIFY | MAPI_ACCESS_DELETE;
    return Give(value, readOnly ? std::int32_t{MAPI_ACCESS_READ} : kAll);
}

bool AccessLevel(const PropertyObject& object, Value& value) {
    return Give(value, std::int32_t{Of(object).IsWritable()});
}

constexpr ComputedProperty kRows[] = {
    {PR_SUBJECT_PREFIX_W, SubjectPrefix, SetText, true},
    {PR_DISPLAY_BCC_W, DisplayNames<PR_DISPLAY_BCC_W, MAPI_BCC>, nullptr},
    {PR_DISPLAY_CC_W, DisplayNames<PR_DISPLAY_CC_W, MAPI_CC>, nullptr},
    {PR_DISPLAY_TO_W, DisplayNames<PR_DISPLAY_TO_W, MAPI_TO>, nullptr},
    {PR_MESSAGE_FLAGS, Flags, SetFlags},
    {PR_MESSAGE_SIZE, Size, nullptr},
    {PR_PARENT_ENTRYID, ParentEntryId, nullptr},
    {PR_MESSAGE_RECIPIENTS, GiveObject, nullptr},
    {PR_MESSAGE_ATTACHMENTS, GiveObject, nullptr},
    {PR_HASATTACH, HasAttachments, nullptr},
    {PR_NORMALIZED_SUBJECT_W, NormalizedSubject, nullptr},
    {PR_ACCESS, AccessOf, nullptr},
    {PR_INSTANCE_KEY, InstanceKey, nullptr},
    {PR_ACCESS_LEVEL, AccessLevel, nullptr},
    {PR_MAPPING_SIGNATURE, MappingSignature<StoreOf>, nullptr},
    {PR_RECORD_KEY, RecordKey, nullptr},
    {PR_STORE_RECORD_KEY, StoreRecordKey<StoreOf>, nullptr},
    {PR_STORE_ENTRYID, StoreEntryId<StoreOf>, nullptr},
    {PR_OBJECT_TYPE, GiveNumber<MAPI_MESSAGE>, nullptr},
    {PR_ENTRYID, EntryIdOf, nullptr},
    {PR_CREATION_TIME, nullptr, SetOutsideStores},
    {PR_LAST_MODIFICATION_TIME, nullptr, SetOutsideStores},
    {PR_STORE_SUPPORT_MASK, SupportMask<StoreOf>, nullptr},
    {kPrCreatorName, nullptr, SetOutsideStores},
    {kPrCreatorEntryId, nullptr, SetOutsideStores},
    {kPrLastModifierName, nullptr, SetOutsideStores},
    {kPrLastModifierEntryId, nullptr, SetOutsideStores},
    {kPrChangeKey, ChangeKey, nullptr},
};
static_assert(IsAscending(kRows));

} // namespace

PropertyBag WorkedOutForFile(const Content& content) {
    PropertyBag bag;
    bag.Set<PR_DISPLAY_BCC_W>(NamesIn<PR_DISPLAY_BCC_W, MAPI_BCC>(content));
    bag.Set<PR_DISPLAY_CC_W>(NamesIn<PR_DISPLAY_CC_W, MAPI_CC>(content));
    bag.Set<PR_DISPLAY_TO_W>(NamesIn<PR_DISPLAY_TO_W, MAPI_TO>(content));
    if (content.properties.Contains(PR_MESSAGE_FLAGS))
        bag.Set<PR_MESSAGE_FLAGS>(FlagsOf(content));
    bag.Set<PR_HASATTACH>(!content.attachments.empty());
    if (const auto parts = SubjectOf(content.properties)) {
        if (!content.properties.Contains(PR_SUBJECT_PREFIX_W))
            bag.Set<PR_SUBJECT_PREFIX_W>(std::wstring(parts->prefix));
        bag.Set<PR_NORMALIZED_SUBJECT_W>(std::wstring(parts->normalized));
    }
    return bag;
}

void DropWorkedOut(Content& content) {
    PropertyBag& bag = content.properties;
    // Names without rows are all that is left of recipients.
    for (const PropertyTag names : {PR_DISPLAY_BCC_W, PR_DISPLAY_CC_W, PR_DISPLAY_TO_W})
        if (const Value* value = bag.Find(names);
            value && (!content.recipients.empty() || *value == Value(std::wstring())))
            bag.Remove(names);
    bag.Remove(PR_HASATTACH);
    if (const std::int32_t* flags = bag.Get<PR_MESSAGE_FLAGS>())
        bag.Set<PR_MESSAGE_FLAGS>(*flags & ~kHasAttachment);
    const std::wstring* subject = bag.Get<PR_SUBJECT_W>();
    if (!subject)
        return;
    const std::wstring* prefix = bag.Get<PR_SUBJECT_PREFIX_W>();
    if (prefix && *prefix == SplitSubject(*subject, {}).prefix)
        bag.Remove(PR_SUBJECT_PREFIX_W);
    bag.Remove(PR_NORMALIZED_SUBJECT_W);
}

std::span<const ComputedProperty> MessageProperties::Computed() const {
    return kRows;
}

} // namespace standin::mailbox
