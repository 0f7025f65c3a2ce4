// The properties that filters and sorting know.
#include "standin/outlook/filter/Fields.h"

#include "standin/mailbox/Platform.h"
#include "standin/outlook/automation/Binding.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/objects/PropertyValues.h"
#include "standin/outlook/objects/SchemaNames.h"

#include <algorithm>

namespace standin::outlook {
namespace {

/// Properties of items that Outlook doesn't filter by (its documentation of Items.Restrict and Items.Find).
constexpr std::wstring_view kUnfilterable[] = {
    L"AutoResolvedWinner",
    L"Body",
    L"BodyFormat",
    L"BusinessCardLayoutXml",
    L"BusinessCardType",
    L"Children",
    L"Class",
    L"Companies",
    L"CompanyLastFirstNoSpace",
    L"CompanyLastFirstSpaceOnly",
    L"ContactNames",
    L"Contacts",
    L"ConversationIndex",
    L"DLName",
    L"DownloadState",
    L"Email1EntryID",
    L"Email2EntryID",
    L"Email3EntryID",
    L"EntryID",
    L"HTMLBody",
    L"InternetCodepage",
    L"IsConflict",
    L"IsMarkedAsTask",
    L"LastFirstAndSuffix",
    L"LastFirstNoSpace",
    L"LastFirstNoSpaceAndSuffix",
    L"LastFirstNoSpaceCompany",
    L"LastFirstSpaceOnly",
    L"LastFirstSpaceOnlyCompany",
    L"MeetingWorkspaceURL",
    L"MemberCount",
    L"NetMeetingAlias",
    L"NetMeetingAutoStart",
    L"NetMeetingOrganizerAlias",
    L"NetMeetingServer",
    L"NetMeetingType",
    L"Permission",
    L"PermissionService",
    L"ReceivedByEntryID",
    L"ReceivedOnBehalfOfEntryID",
    L"RecurrenceState",
    L"ReplyRecipients",
    L"ResponseState",
    L"Saved",
    L"Sent",
    L"Submitted",
    L"VotingOptions",
    L"VotingResponse",
};

struct TypeRow {
    VARTYPE variant;
    FieldType type;
};

constexpr TypeRow kMemberTypes[] = {
    {VT_BSTR, FieldType::Text},
    {VT_I4, FieldType::Number},
    {VT_BOOL, FieldType::Flag},
    {VT_DATE, FieldType::Date},
};

struct UserFieldType {
    std::int32_t number; ///< OlUserPropertyType
    mailbox::PropertyType property;
    FieldType type;
};

constexpr UserFieldType kUserFieldTypes[] = {
    {1, PT_UNICODE, FieldType::Text},   {3, PT_DOUBLE, FieldType::Number},
    {5, PT_SYSTIME, FieldType::Date},   {6, PT_BOOLEAN, FieldType::Flag},
    {7, PT_LONG, FieldType::Number},    {11, PT_MV_UNICODE, FieldType::Keywords},
    {12, PT_DOUBLE, FieldType::Number}, {14, PT_CURRENCY, FieldType::Number},
    {20, PT_LONG, FieldType::Number},
};

struct TagType {
    mailbox::PropertyType property;
    FieldType type;
};

constexpr TagType kTagTypes[] = {
    {PT_UNICODE, FieldType::Text},    {PT_STRING8, FieldType::Text},        {PT_LONG, FieldType::Number},
    {PT_I2, FieldType::Number},       {PT_DOUBLE, FieldType::Number},       {PT_R4, FieldType::Number},
    {PT_CURRENCY, FieldType::Number}, {PT_BOOLEAN, FieldType::Flag},        {PT_SYSTIME, FieldType::Date},
    {PT_APPTIME, FieldType::Date},    {PT_MV_UNICODE, FieldType::Keywords},
};

std::wstring WithoutBlanks(std::wstring_view name) {
    std::wstring text(name);
    std::erase(text, L' ');
    return text;
}

/// A member of item kinds: which row shows it in which kind. Most show the same in all. Where kinds have it
/// in several types, that of the first that keeps it counts.
struct ItemField {
    const Member* member = nullptr;
    std::vector<std::pair<const ItemKind*, const Row*>> rows;

    bool IsOneForAll() const {
        return std::ranges::all_of(
            rows, [&](const auto& each) { return each.second->stored == rows.front().second->stored; });
    }
};

ItemField FindItemField(const std::wstring& name) {
    ItemField field;
    for (const ItemKind* kind : AllItemKinds()) {
        const Binding& binding = Binding::Of(kind->kind);
        const Member* member = binding.Model().Find(name);
        if (!member || member->access == Access::Method)
            continue;
        const Row* row = binding.RowOf(*member);
        const bool isStored = row && row->stored.conversion;
        if (!field.member || (isStored && field.rows.empty()))
            field.member = member;
        if (isStored)
            field.rows.emplace_back(kind, row);
    }
    return field;
}

Comparable ReadRow(const mailbox::MessageProperties& message, const Row& row, FieldType type) {
    return ComparableOf(row.stored.conversion->read(message, row.stored), type);
}

bool IsAssociated(const mailbox::MessageProperties& message) {
    constexpr std::int32_t kAssociated = MSGFLAG_ASSOCIATED;
    return message.Stored().GetOr<PR_MESSAGE_FLAGS>(0) & kAssociated;
}

Field FieldOf(const ItemField& item, FieldType type) {
    if (item.IsOneForAll()) {
        const Row& row = *item.rows.front().second;
        return {type, [&row, type](const auto& message) { return ReadRow(message, row, type); }};
    }
    return {type, [rows = item.rows, type](const mailbox::MessageProperties& message) {
                const ItemKind& kind = KindOf(message, IsAssociated(message));
                const auto row = std::ranges::find(rows, &kind, [](const auto& each) { return each.first; });
                return row == rows.end() ? Comparable() : ReadRow(message, *row->second, type);
            }};
}

std::optional<Field> FindMember(const std::wstring& name) {
    const ItemField item = FindItemField(name);
    if (!item.member || std::ranges::find(kUnfilterable, item.member->name) != std::end(kUnfilterable))
        return std::nullopt;
    const auto row = std::ranges::find(kMemberTypes, item.member->type.type, &TypeRow::variant);
    if (row == std::end(kMemberTypes))
        return std::nullopt;
    if (item.rows.empty())
        throw NotBuilt(L"filters by " + item.member->name);
    const bool isKeywords = item.rows.front().second->stored.conversion == &kKeywords;
    return FieldOf(item, isKeywords ? FieldType::Keywords : row->type);
}

/// A field that an item hasn't got counts as empty, zero, No or no date.
Comparable Fallback(FieldType type) {
    switch (type) {
    case FieldType::Text:
        return {std::wstring()};
    case FieldType::Number:
        return {0.0};
    case FieldType::Flag:
        return {false};
    case FieldType::Date:
        return {MinutesOf(kNoDate.days)};
    case FieldType::Keywords:
        return {std::vector<std::wstring>()};
    }
    return {};
}

Comparable ReadUserField(const mailbox::MessageProperties& message, const mailbox::PropertyName& name,
                         const UserFieldType& row) {
    const mailbox::PropertyId id = message.Names().Id(name);
    mailbox::Value value;
    if (!id || FAILED(message.Read(mailbox::MakeTag(id, row.property), value)))
        return Fallback(row.type);
    if (const auto* time = std::get_if<mailbox::SysTime>(&value))
        return {MinutesOf(LocalDate(*time).days)};
    if (const auto* keywords = std::get_if<std::vector<std::wstring>>(&value))
        return {*keywords};
    return ComparableOf(VariantOf(value), row.type);
}

std::optional<Field> FindUserField(std::wstring_view name, const mailbox::Folder& folder) {
    for (const mailbox::UserField& field : folder.UserFields()) {
        if (!mailbox::SameIgnoringCase(field.name, name))
            continue;
        const auto row = std::ranges::find(kUserFieldTypes, field.type, &UserFieldType::number);
        if (row == std::end(kUserFieldTypes))
            return std::nullopt;
        const mailbox::PropertyName propertyName{kPsPublicStrings, field.name};
        return Field{row->type, [propertyName, row](const auto& message) {
                         return ReadUserField(message, propertyName, *row);
                     }};
    }
    return std::nullopt;
}

} // namespace

std::optional<Field> FindField(std::wstring_view name, const mailbox::Folder& folder) {
    if (std::optional<Field> field = FindMember(WithoutBlanks(name)))
        return field;
    return FindUserField(name, folder);
}

std::optional<Field> FindSortField(std::wstring_view name, const mailbox::Folder& folder) {
    std::optional<Field> field = FindField(name, folder);
    return field && field->type != FieldType::Keywords ? field : std::nullopt;
}

std::optional<Field> FindSchemaField(std::wstring_view name) {
    const std::shared_ptr<const SchemaProperty> property = ParseSchemaName(name);
    const auto row =
        property ? std::ranges::find(kTagTypes, mailbox::TypeOf(property->stored.tag), &TagType::property)
                 : std::end(kTagTypes);
    if (row == std::end(kTagTypes))
        return std::nullopt;
    return Field{row->type,
                 [property, type = row->type](const mailbox::MessageProperties& message) -> Comparable {
                     const std::optional<mailbox::Value> value = ReadValue(message, property->stored);
                     if (!value)
                         return {};
                     if (const auto* keywords = std::get_if<std::vector<std::wstring>>(&*value))
                         return {*keywords};
                     return ComparableOf(VariantOf(*value), type);
                 }};
}

} // namespace standin::outlook
