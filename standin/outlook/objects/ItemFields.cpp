// The fields of an item as collections; adding and removing user-defined ones.
#include "standin/outlook/objects/ItemFields.h"

#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Platform.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"

#include <algorithm>
#include <optional>

namespace standin::outlook {
namespace {

const FieldDefinition* FindDefinition(const FieldDefinitions& definitions, const std::wstring& name) {
    const auto found = std::ranges::find_if(
        definitions, [&](const FieldDefinition& each) { return mailbox::SameIgnoringCase(each.name, name); });
    return found == definitions.end() ? nullptr : &*found;
}

/// A field of the item's kind, by its name with or without blanks; null for none.
const Member* FindMember(const ItemObject& item, std::wstring name) {
    std::erase(name, L' ');
    const Member* member = item.Model().Find(name);
    return member && member->access != Access::Method ? member : nullptr;
}

/// The field of this name that the item's folder has.
std::optional<mailbox::UserField> FindInFolder(const ItemObject& item, const std::wstring& name) {
    const mailbox::Folder* folder = item.Message().ParentFolder();
    const auto fields = folder ? folder->UserFields() : std::vector<mailbox::UserField>();
    const auto found = std::ranges::find_if(
        fields, [&](const mailbox::UserField& each) { return mailbox::SameIgnoringCase(each.name, name); });
    return found == fields.end() ? std::nullopt : std::optional(*found);
}

void EnterInFolder(ItemObject& item, const FieldDefinition& definition) {
    mailbox::Folder* folder = item.Message().ParentFolder();
    if (!folder || FindInFolder(item, definition.name))
        return;
    std::vector<mailbox::UserField> fields = folder->UserFields();
    fields.push_back({definition.name, definition.kind->number});
    Check(folder->SetUserFields(std::move(fields)));
}

template <class T, class Collection>
ComPtr<T> Add(Collection& fields, const Arguments& arguments) {
    constexpr std::size_t kName = 0, kType = 1, kAddToFolder = 2;
    FieldName field = AddField(fields.Item(), arguments.Text(kName), arguments.Number(kType),
                               arguments.Flag(kAddToFolder, true));
    return Make<T>(ComPtr<ItemObject>(&fields.Item()), std::move(field));
}

/// Nothing where there is none. Not only among the user-defined fields, if so asked.
ComPtr<UserPropertyObject> Find(UserPropertiesObject& fields, const Arguments& arguments) {
    constexpr std::size_t kName = 0, kCustom = 1;
    const std::wstring name = arguments.Text(kName);
    ItemObject& item = fields.Item();
    if (!arguments.Flag(kCustom, true))
        if (const Member* member = FindMember(item, name))
            return Make<UserPropertyObject>(ComPtr<ItemObject>(&item), FieldName{member->name, member});
    const FieldDefinitions definitions = ReadDefinitions(item.Message());
    const FieldDefinition* found = FindDefinition(definitions, name);
    return found ? Make<UserPropertyObject>(ComPtr<ItemObject>(&item), FieldName{found->name}) : nullptr;
}

void Remove(UserPropertiesObject& fields, const Arguments& arguments) {
    const std::int32_t place = arguments.Number(0);
    if (place < 1 || place > fields.Count())
        throw IndexOutOfBounds();
    const FieldDefinitions definitions = ReadDefinitions(fields.Item().Message());
    RemoveField(fields.Item(), definitions[static_cast<std::size_t>(place - 1)].name);
}

_variant_t ItemFromZero(ItemPropertiesObject& fields, const Arguments& arguments) {
    if (arguments[0].vt == VT_BSTR)
        return fields.Named(arguments.Text(0));
    return fields.Collection::Item(arguments.Number(0, -1) + 1);
}

void RemoveFromZero(ItemPropertiesObject& fields, const Arguments& arguments) {
    const ComPtr<Object> field = OwnObject(fields.Collection::Item(arguments.Number(0) + 1));
    const FieldName& name = static_cast<ItemPropertyObject&>(*field.Get()).Field();
    if (name.member)
        throw Failure(E_ACCESSDENIED);
    RemoveField(fields.Item(), name.name);
}

constexpr Row kUserRows[] = {
    {L"Add", Get<Add<UserPropertyObject, UserPropertiesObject>>},
    {L"Find", Get<Find>},
    {L"Remove", Get<Remove>},
};

constexpr Row kItemRows[] = {
    {L"Add", Get<Add<ItemPropertyObject, ItemPropertiesObject>>},
    {L"Item", Get<ItemFromZero>},
    {L"Remove", Get<RemoveFromZero>},
};

const Kind kUserPropertiesKind{L"UserProperties", 0x0006303D, 38, kUserRows, kCollectionRows};
const Kind kItemPropertiesKind{L"ItemProperties", 0x000630A8, 98, kItemRows, kCollectionRows};

} // namespace

FieldName AddField(ItemObject& item, const std::wstring& name, std::int32_t type, bool addToFolder) {
    const FieldKind* kind = FindFieldKind(type);
    if (!kind || name.empty() || name.find_first_of(L"[]_#") != name.npos || FindMember(item, name))
        throw InvalidValue();
    FieldDefinitions definitions = ReadDefinitions(item.Message());
    if (const FieldDefinition* found = FindDefinition(definitions, name)) {
        if (found->kind != kind)
            throw InvalidValue();
        return {found->name};
    }
    const std::optional<mailbox::UserField> inFolder = FindInFolder(item, name);
    if (inFolder && inFolder->type != type)
        throw InvalidValue();
    definitions.push_back({.name = name, .kind = kind});
    WriteDefinitions(item.Message(), definitions);
    if (addToFolder)
        EnterInFolder(item, definitions.back());
    return {name};
}

void RemoveField(ItemObject& item, const std::wstring& name) {
    FieldDefinitions definitions = ReadDefinitions(item.Message());
    const FieldDefinition* found = FindDefinition(definitions, name);
    if (!found)
        throw Failure(MAPI_E_NOT_FOUND);
    if (found->kind->property)
        RemoveValue(item.Message(),
                    {.tag = found->kind->property, .set = &kPsPublicStrings, .name = found->name.c_str()});
    definitions.erase(definitions.begin() + (found - definitions.data()));
    WriteDefinitions(item.Message(), definitions);
}

UserPropertiesObject::UserPropertiesObject(ComPtr<ItemObject> item)
    : Collection(kUserPropertiesKind), m_item(std::move(item)) {
}

std::int32_t UserPropertiesObject::Count() {
    return static_cast<std::int32_t>(ReadDefinitions(m_item->Message()).size());
}

_variant_t UserPropertiesObject::At(std::int32_t place) {
    FieldDefinitions definitions = ReadDefinitions(m_item->Message());
    return Result(
        Make<UserPropertyObject>(m_item, FieldName{definitions[static_cast<std::size_t>(place - 1)].name}));
}

_variant_t UserPropertiesObject::Named(const std::wstring& name) {
    const FieldDefinitions definitions = ReadDefinitions(m_item->Message());
    const FieldDefinition* found = FindDefinition(definitions, name);
    if (!found)
        throw Failure(MAPI_E_NOT_FOUND);
    return Result(Make<UserPropertyObject>(m_item, FieldName{found->name}));
}

ItemPropertiesObject::ItemPropertiesObject(ComPtr<ItemObject> item)
    : Collection(kItemPropertiesKind), m_item(std::move(item)) {
}

std::vector<FieldName> ItemPropertiesObject::Fields() const {
    std::vector<FieldName> fields;
    for (const Member& member : m_item->Model().Members())
        if (member.access != Access::Method)
            fields.push_back({member.name, &member});
    for (const FieldDefinition& definition : ReadDefinitions(m_item->Message()))
        fields.push_back({definition.name});
    return fields;
}

std::int32_t ItemPropertiesObject::Count() {
    return static_cast<std::int32_t>(Fields().size());
}

_variant_t ItemPropertiesObject::At(std::int32_t place) {
    return Result(Make<ItemPropertyObject>(m_item, Fields()[static_cast<std::size_t>(place - 1)]));
}

_variant_t ItemPropertiesObject::Named(const std::wstring& name) {
    const std::vector<FieldName> fields = Fields();
    const auto found = std::ranges::find_if(
        fields, [&](const FieldName& each) { return mailbox::SameIgnoringCase(each.name, name); });
    if (found == fields.end())
        throw Failure(MAPI_E_NOT_FOUND);
    return Result(Make<ItemPropertyObject>(m_item, *found));
}

} // namespace standin::outlook
