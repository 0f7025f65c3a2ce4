// One field of an item: its value, its type, what validates it.
#include "standin/outlook/objects/ItemFields.h"

#include "standin/mailbox/Platform.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"
#include "standin/outlook/objects/PropertyValues.h"

#include <algorithm>

namespace standin::outlook {
namespace {

/// OlUserPropertyType.
constexpr std::int32_t kOutlookInternal = 0, kText = 1, kNumber = 3, kDateTime = 5, kYesNo = 6,
                       kKeywordsType = 11, kEnumeration = 21;

struct MemberType {
    VARTYPE variant;
    std::int32_t type;
};

constexpr MemberType kMemberTypes[] = {
    {VT_BSTR, kText}, {VT_DATE, kDateTime}, {VT_BOOL, kYesNo}, {VT_I4, kNumber}};

std::int32_t TypeOfMember(const Member& member, const Row* row) {
    if (row && row->stored.conversion == &kKeywords)
        return kKeywordsType;
    if (!member.type.of.empty() && member.type.type == VT_I4)
        return kEnumeration;
    const auto type = std::ranges::find(kMemberTypes, member.type.type, &MemberType::variant);
    return type == std::end(kMemberTypes) ? kOutlookInternal : type->type;
}

const Row& RowFor(const FieldObject& field) {
    const Row* row = field.Item().RowOf(*field.Field().member);
    if (!row || !row->get)
        throw NotBuilt(field.Field().member->name);
    return *row;
}

std::wstring Name(FieldObject& field) {
    return field.Field().name;
}

std::int32_t Type(FieldObject& field) {
    const Member* member = field.Field().member;
    return member ? TypeOfMember(*member, field.Item().RowOf(*member)) : field.Definition().kind->number;
}

bool IsUserProperty(FieldObject& field) {
    return !field.Field().member;
}

/// Where the value of a user-defined field is.
StoredProperty PlaceOf(const FieldObject& field, const FieldKind& kind) {
    if (!kind.property)
        throw NotBuilt(L"values of formulas");
    return {.tag = kind.property, .set = &kPsPublicStrings, .name = field.Field().name.c_str()};
}

/// What a field shows that has no value: nothing, zero, No or no date.
_variant_t EmptyValue(const FieldKind& kind) {
    if (kind.variant == VT_DATE)
        return Result(kNoDate);
    if (kind.property == PT_MV_UNICODE)
        return {};
    _variant_t zero(0L);
    zero.ChangeType(kind.variant == VT_BSTR ? VARTYPE{VT_I4} : kind.variant);
    return kind.variant == VT_BSTR ? Result(L"") : zero;
}

_variant_t UserValue(FieldObject& field) {
    const FieldKind& kind = *field.Definition().kind;
    const std::optional<mailbox::Value> value = ReadValue(field.Item().Message(), PlaceOf(field, kind));
    if (!value)
        return EmptyValue(kind);
    const auto* time = std::get_if<mailbox::SysTime>(&*value);
    return time ? Result(LocalDate(*time)) : VariantOf(*value);
}

/// An empty value takes the stored one away.
void SetUserValue(FieldObject& field, const VARIANT& variant) {
    const FieldKind& kind = *field.Definition().kind;
    const StoredProperty place = PlaceOf(field, kind);
    if (variant.vt == VT_EMPTY || variant.vt == VT_NULL)
        return RemoveValue(field.Item().Message(), place);
    std::optional<mailbox::Value> value = ValueOf(variant, kind.property);
    if (!value)
        throw Failure(DISP_E_TYPEMISMATCH, L"Cannot convert value to the requested data type.");
    if (const auto* time = std::get_if<mailbox::SysTime>(&*value))
        value = TimeOfLocal(CheckedDate(UtcDate(*time)));
    WriteValue(field.Item().Message(), place, std::move(*value));
}

_variant_t Value(FieldObject& field) {
    const Member* member = field.Field().member;
    if (!member)
        return UserValue(field);
    const Row& row = RowFor(field);
    return row.get(field.Item(), {*member, row, Arguments()});
}

void SetMemberValue(FieldObject& field, const VARIANT& variant) {
    const Member& member = *field.Field().member;
    const Row& row = RowFor(field);
    if (member.access != Access::GetPut || !row.put)
        throw Failure(E_ACCESSDENIED);
    VARIANTARG argument = variant;
    DISPID putName = DISPID_PROPERTYPUT;
    const DISPPARAMS parameters{&argument, &putName, 1, 1};
    Arguments arguments;
    Check(arguments.ReadValue(member, parameters, LOCALE_USER_DEFAULT, nullptr));
    row.put(field.Item(), {member, row, arguments});
}

void SetValue(FieldObject& field, const Arguments& value) {
    if (field.Field().member)
        SetMemberValue(field, value[0]);
    else
        SetUserValue(field, value[0]);
}

void Delete(FieldObject& field) {
    if (field.Field().member)
        throw Failure(E_ACCESSDENIED);
    RemoveField(field.Item(), field.Field().name);
}

/// Fields of the kind have no formulas.
template <std::wstring FieldDefinition::*text>
std::wstring Text(FieldObject& field) {
    return field.Field().member ? std::wstring() : field.Definition().*text;
}

template <std::wstring FieldDefinition::*text>
void SetText(FieldObject& field, const Arguments& value) {
    if (field.Field().member)
        throw Failure(E_ACCESSDENIED);
    mailbox::OpenMessage& message = field.Item().Message();
    FieldDefinitions definitions = ReadDefinitions(message);
    for (FieldDefinition& each : definitions)
        if (each.name == field.Field().name)
            each.*text = value.Text(0);
    WriteDefinitions(message, definitions);
}

template <std::wstring FieldDefinition::*text>
constexpr Row TextRow(const wchar_t* name) {
    return {name, Get<Text<text>>, Put<SetText<text>>};
}

constexpr Row kRows[] = {
    TextRow<&FieldDefinition::formula>(L"Formula"),
    TextRow<&FieldDefinition::validationFormula>(L"ValidationFormula"),
    TextRow<&FieldDefinition::validationText>(L"ValidationText"),
    {L"Delete", Get<Delete>},
    {L"IsUserProperty", Get<IsUserProperty>},
    {L"Name", Get<Name>},
    {L"Type", Get<Type>},
    {L"Value", Get<Value>, Put<SetValue>},
};

constexpr Kind kUserPropertyKind{L"UserProperty", 0x00063042, 39, kRows};
constexpr Kind kItemPropertyKind{L"ItemProperty", 0x000630A7, 99, kRows};

} // namespace

FieldObject::FieldObject(const Kind& kind, ComPtr<ItemObject> item, FieldName field)
    : Object(kind), m_item(std::move(item)), m_field(std::move(field)) {
}

FieldDefinition FieldObject::Definition() const {
    for (FieldDefinition& each : ReadDefinitions(m_item->Message()))
        if (each.name == m_field.name)
            return std::move(each);
    throw Failure(MAPI_E_NOT_FOUND);
}

UserPropertyObject::UserPropertyObject(ComPtr<ItemObject> item, FieldName field)
    : FieldObject(kUserPropertyKind, std::move(item), std::move(field)) {
}

ItemPropertyObject::ItemPropertyObject(ComPtr<ItemObject> item, FieldName field)
    : FieldObject(kItemPropertyKind, std::move(item), std::move(field)) {
}

} // namespace standin::outlook
