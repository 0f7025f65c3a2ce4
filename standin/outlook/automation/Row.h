// Members as rows of tables: a name of the object model, and the functions that carry the member out.
#pragma once

#include "standin/outlook/automation/Arguments.h"

#include <span>
#include <type_traits>

namespace standin::outlook {

class Object;
struct Conversion;
struct Row;

/// A member under way.
struct Call {
    const Member& member;
    const Row& row;
    const Arguments& arguments;
};

/// Reads a property or carries out a method.
using Getter = _variant_t (*)(Object& object, const Call& call);
/// Writes a property; the value is the first argument.
using Setter = void (*)(Object& object, const Call& call);

/// The property of the mailbox model that a property of an item shows, see items/ItemRows.h. Empty in all
/// other rows.
struct StoredProperty {
    const Conversion* conversion = nullptr;
    std::uint32_t tag = 0;     ///< of a named property only its type
    const GUID* set = nullptr; ///< null for a property without a name
    std::uint32_t number = 0;  ///< the name, if it is a number
    const wchar_t* name = nullptr;
    std::int32_t fallback = 0; ///< what a number is when the item doesn't have it

    bool operator==(const StoredProperty&) const = default;
};

/// One member. A table may have rows that an interface hasn't: they are left out there.
struct Row {
    const wchar_t* name = nullptr;
    Getter get = nullptr;
    Setter put = nullptr;
    StoredProperty stored = {};
};

/// One sort of automation object.
struct Kind {
    const wchar_t* name;              ///< its interface in the object model
    std::uint32_t interfaceId;        ///< the first 32 bits, see InterfaceId; 0 for an interface without one
    std::int32_t objectClass;         ///< OlObjectClass; the Class of most of its objects
    std::span<const Row> rows;        ///< its own members; each must be in the object model
    std::span<const Row> shared = {}; ///< members that it has in common with other kinds, where it has them
    std::span<const std::span<const Row>* const> topics = {}; ///< further tables of such members
};

/// The published interface ids of Outlook differ in their first 32 bits only.
constexpr GUID InterfaceId(std::uint32_t first) {
    return {first, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
}

namespace detail {

template <class R, class T, class... Rest>
_variant_t Give(R (*function)(T&, Rest...), Object& object, const Rest&... rest) {
    T& self = static_cast<T&>(object);
    if constexpr (std::is_void_v<R>) {
        function(self, rest...);
        return {};
    } else if constexpr (std::is_same_v<R, _variant_t>) {
        return function(self, rest...);
    } else {
        return Result(function(self, rest...));
    }
}

template <class R, class T>
_variant_t Run(R (*function)(T&), Object& object, const Call&) {
    return Give<R, T>(function, object);
}
template <class R, class T>
_variant_t Run(R (*function)(T&, const Arguments&), Object& object, const Call& call) {
    return Give<R, T, const Arguments&>(function, object, call.arguments);
}
template <class R, class T>
_variant_t Run(R (*function)(T&, const Call&), Object& object, const Call& call) {
    return Give<R, T, const Call&>(function, object, call);
}

} // namespace detail

// Rows take plain functions of the object's own class, whose result is any type that Result() takes, or none:
//
//     std::wstring Name(FolderObject& folder);
//     void SetName(FolderObject& folder, const Arguments& value);
//     ComPtr<FolderObject> Add(FoldersObject& folders, const Arguments& arguments);
//
//     constexpr Row kFolderRows[] = {{L"Name", Get<Name>, Put<SetName>}, ...};

template <auto function>
_variant_t Get(Object& object, const Call& call) {
    return detail::Run(function, object, call);
}

template <auto function>
void Put(Object& object, const Call& call) {
    detail::Run(function, object, call);
}

/// A property or method whose result is always the same.
template <auto value>
_variant_t Always(Object&, const Call&) {
    return Result(value);
}

} // namespace standin::outlook
