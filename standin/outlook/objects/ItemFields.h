// The fields of an item as objects: those of its kind, and those that users defined.
#pragma once

#include "standin/outlook/automation/Collection.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/objects/FieldDefinitions.h"

namespace standin::outlook {

/// A field: a member of the item's interface, or (null) the user-defined one with the name.
struct FieldName {
    std::wstring name;
    const Member* member = nullptr;
};

/// UserProperty and ItemProperty: two interfaces over the same.
class FieldObject : public Object {
public:
    ItemObject& Item() const { return *m_item.Get(); }
    ComPtr<Object> Parent() override { return m_item; }
    const FieldName& Field() const { return m_field; }
    /// Of a user-defined field. Raises MAPI_E_NOT_FOUND once it was removed.
    FieldDefinition Definition() const;

protected:
    FieldObject(const Kind& kind, ComPtr<ItemObject> item, FieldName field);

private:
    ComPtr<ItemObject> m_item;
    FieldName m_field;
};

class UserPropertyObject final : public FieldObject {
public:
    UserPropertyObject(ComPtr<ItemObject> item, FieldName field);
};

class ItemPropertyObject final : public FieldObject {
public:
    ItemPropertyObject(ComPtr<ItemObject> item, FieldName field);
};

/// UserProperties: the user-defined fields of an item. Live.
class UserPropertiesObject final : public Collection {
public:
    explicit UserPropertiesObject(ComPtr<ItemObject> item);

    ItemObject& Item() const { return *m_item.Get(); }
    ComPtr<Object> Parent() override { return m_item; }
    std::int32_t Count() override;
    _variant_t At(std::int32_t place) override;
    _variant_t Named(const std::wstring& name) override;

private:
    ComPtr<ItemObject> m_item;
};

/// ItemProperties: the fields of the item's kind, and behind them the user-defined ones. Scripts count from 0
/// here.
class ItemPropertiesObject final : public Collection {
public:
    explicit ItemPropertiesObject(ComPtr<ItemObject> item);

    ItemObject& Item() const { return *m_item.Get(); }
    ComPtr<Object> Parent() override { return m_item; }
    std::int32_t Count() override;
    _variant_t At(std::int32_t place) override;
    _variant_t Named(const std::wstring& name) override;

private:
    std::vector<FieldName> Fields() const;

    ComPtr<ItemObject> m_item;
};

// User-defined fields of an item, for both collections.

/// Raises E_INVALIDARG for a type of which there are no fields, a name that can't be one or that one of the
/// kind's own fields has, and a field that the item or its folder has with another type. One that the item
/// has with this type stays as it is.
FieldName AddField(ItemObject& item, const std::wstring& name, std::int32_t type, bool addToFolder);
/// With its value.
void RemoveField(ItemObject& item, const std::wstring& name);

} // namespace standin::outlook
