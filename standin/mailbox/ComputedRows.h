// What the tables of computed properties have in common.
#pragma once

#include "standin/mailbox/Platform.h"
#include "standin/mailbox/PropertyObject.h"
#include "standin/mailbox/Store.h"
#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace standin::mailbox {

/// Rows must stand in ascending order of id: they are searched by halves.
constexpr bool IsAscending(std::span<const ComputedProperty> rows) {
    return std::ranges::adjacent_find(rows, [](const ComputedProperty& row, const ComputedProperty& next) {
               return IdOf(row.tag) >= IdOf(next.tag);
           }) == rows.end();
}

/// For the end of a get handler: hands the value over.
template <class T>
bool Give(Value& value, T what) {
    value = std::move(what);
    return true;
}

/// A property that is the same number for all objects of a kind.
template <std::int32_t number>
bool GiveNumber(const PropertyObject&, Value& value) {
    return Give(value, number);
}

/// A property behind which there is an object to be opened.
inline bool GiveObject(const PropertyObject&, Value& value) {
    return Give(value, ObjectMark{});
}

// What objects have from their store. `storeOf` gives it for an object, or null.

template <auto storeOf>
bool MappingSignature(const PropertyObject& object, Value& value) {
    const Store* store = storeOf(object);
    return store && Give(value, BytesOf(store->Key().database));
}

template <auto storeOf>
bool StoreRecordKey(const PropertyObject& object, Value& value) {
    const Store* store = storeOf(object);
    return store && Give(value, BytesOf(store->Key().provider));
}

template <auto storeOf>
bool StoreEntryId(const PropertyObject& object, Value& value) {
    const Store* store = storeOf(object);
    return store && Give(value, store->EntryId());
}

template <auto storeOf>
bool SupportMask(const PropertyObject& object, Value& value) {
    const Store* store = storeOf(object);
    return Give(value, store ? store->SupportMask() : std::int32_t{kStoreUnicodeOk});
}

} // namespace standin::mailbox
