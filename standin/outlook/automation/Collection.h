// Objects that hold others in an order: what Count, Item, For Each and the walk by GetFirst and GetNext have
// in common.
#pragma once

#include "standin/outlook/automation/Object.h"

namespace standin::outlook {

/// A collection. Places are 1-based.
class Collection : public Object {
public:
    virtual std::int32_t Count() = 0;
    /// The element at a place that exists.
    virtual _variant_t At(std::int32_t place) = 0;
    /// The element with this name. Raises MAPI_E_NOT_FOUND.
    virtual _variant_t Named(const std::wstring& name);

    /// The element at any place; raises "Array index out of bounds".
    _variant_t Item(std::int32_t place);
    /// By place or, if it is text, by name.
    _variant_t Item(const VARIANT& index);

    /// The walk: each gives the element that it comes to, Nothing beyond the ends.
    _variant_t First() { return StepTo(1); }
    _variant_t Last() { return StepTo(Count()); }
    _variant_t Next() { return StepTo(m_place + 1); }
    _variant_t Previous() { return StepTo(m_place - 1); }

protected:
    using Object::Object;
    _variant_t Enumerate() override;
    /// An element before the walk's place went away.
    void StepBack() { --m_place; }

private:
    _variant_t StepTo(std::int32_t place);

    std::int32_t m_place = 0;
};

/// Count, Item, GetFirst, GetNext, GetPrevious, GetLast.
extern const std::span<const Row> kCollectionRows;

} // namespace standin::outlook
