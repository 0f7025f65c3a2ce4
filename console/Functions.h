// The functions of calculations that are the language's own.
#pragma once

#include "Externals.h"

#include <span>
#include <string_view>

namespace standin::console {

/// The arguments of a call. Each is worked out when it is asked for, so that `If` leaves out the one that it
/// does not need: ask for each only once.
class Arguments {
public:
    virtual ~Arguments() = default;
    virtual std::size_t Count() const = 0;
    virtual Value At(std::size_t index) const = 0;

    std::wstring Text(std::size_t index) const { return At(index).AsText(); }
    std::int32_t Whole(std::size_t index) const { return At(index).AsNumber().AsLong(); }
};

struct BuiltIn {
    std::wstring_view name;
    ArgumentCount count;
    Value (*function)(const Arguments& arguments);
    /// Instead of two arguments behind the first, any number of pairs may stand: [ a ; b ].
    bool takesPairs = false;
};

/// By name, without regard to case; null when there is none.
const BuiltIn* FindBuiltIn(std::wstring_view name);

} // namespace standin::console
