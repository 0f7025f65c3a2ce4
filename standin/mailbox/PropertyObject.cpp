// Reading and writing through the table of computed properties.
#include "standin/mailbox/PropertyObject.h"

#include "standin/mailbox/PublishedTypes.h"

#include <algorithm>

namespace standin::mailbox {
namespace {

bool CanBeStored(PropertyType type) {
    return type != PT_ERROR && type != PT_OBJECT && type != PT_NULL;
}

/// Text as stores keep it: clients hand narrow text over in the system's ANSI code page.
Value MakeWide(Value value) {
    const PropertyType type = TypeOf(value);
    if ((type & ~MV_FLAG) != PT_STRING8 || std::holds_alternative<NullPointer>(value))
        return value;
    return *ConvertValue(value, (type & MV_FLAG) | PT_UNICODE, CP_ACP);
}

} // namespace

const ComputedProperty* PropertyObject::Row(PropertyTag tag) const {
    const std::span<const ComputedProperty> rows = Computed();
    const auto row = std::ranges::lower_bound(rows, IdOf(tag), {},
                                              [](const ComputedProperty& each) { return IdOf(each.tag); });
    return row != rows.end() && IdOf(row->tag) == IdOf(tag) ? &*row : nullptr;
}

bool PropertyObject::IsWithheld(PropertyTag tag) const {
    return std::ranges::find(m_withheld, IdOf(tag)) != m_withheld.end();
}

HRESULT PropertyObject::Read(PropertyTag tag, Value& value) const {
    if (IsWithheld(tag))
        return MAPI_E_NOT_FOUND;
    const ComputedProperty* row = Row(tag);
    if (!row || !row->get)
        return Stored().Read(tag, value);
    Value computed;
    if (!row->get(*this, computed))
        return MAPI_E_NOT_FOUND;
    std::optional<Value> converted = ConvertValue(computed, TypeOf(tag), CP_ACP);
    if (!converted)
        return MAPI_E_NOT_FOUND;
    value = std::move(*converted);
    return S_OK;
}

HRESULT PropertyObject::Write(PropertyTag tag, Value value) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    if (!CanBeStored(TypeOf(value)))
        return MAPI_E_INVALID_TYPE;
    if (std::holds_alternative<NullPointer>(value))
        return MAPI_E_INVALID_PARAMETER;
    value = MakeWide(std::move(value));
    if (const HRESULT status = CheckTag(MakeTag(IdOf(tag), TypeOf(value))); FAILED(status))
        return status;
    if (const ComputedProperty* row = Row(tag)) {
        const HRESULT status = row->set(*this, value);
        if (status != S_OK)
            return FAILED(status) ? status : S_OK;
    }
    return Replace(tag, std::move(value));
}

HRESULT PropertyObject::CheckTag(PropertyTag tag) const {
    if (const ComputedProperty* row = Row(tag); row && !row->set)
        return MAPI_E_COMPUTED;
    return NeedsPublishedTypes() && !HasPublishedType(tag) ? MAPI_E_UNEXPECTED_TYPE : S_OK;
}

HRESULT PropertyObject::Erase(PropertyTag tag) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    if (const ComputedProperty* row = Row(tag); row && !row->erasable)
        return MAPI_E_COMPUTED;
    if (IsWithheld(tag) || !Stored().Contains(tag))
        return MAPI_E_NOT_FOUND;
    return Replace(tag, std::nullopt);
}

HRESULT PropertyObject::Replace(PropertyTag tag, std::optional<Value> value) {
    PropertyBag& bag = Edit();
    std::optional<Value> before;
    if (Value* found = bag.Find(tag))
        before = std::move(*found);
    const auto put = [&](std::optional<Value>&& what) {
        if (what)
            bag.Put(tag, std::move(*what));
        else
            bag.Remove(tag);
    };
    put(std::move(value));
    const HRESULT status = Changed();
    if (FAILED(status))
        put(std::move(before));
    return status;
}

std::vector<PropertyTag> PropertyObject::Tags() const {
    std::vector<PropertyTag> tags;
    for (const Property& property : Stored())
        if (const ComputedProperty* row = Row(property.Tag()); !row || !row->get)
            tags.push_back(property.Tag());
    for (const ComputedProperty& row : Computed())
        if (Value value; row.get && row.get(*this, value))
            tags.push_back(MakeTag(IdOf(row.tag), TypeOf(value)));
    std::erase_if(tags, [this](PropertyTag tag) { return IsWithheld(tag); });
    std::ranges::sort(tags);
    return tags;
}

} // namespace standin::mailbox
