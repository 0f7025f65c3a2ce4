// What the script language asks of the plug-in whose functions it can call.
#pragma once

#include "standin/filemaker/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standin::console {

using filemaker::FixedPoint;
using filemaker::Value;

/// How many arguments a function takes; a maximum of -1 is none.
struct ArgumentCount {
    int minimum = 0;
    int maximum = 0;

    bool Allows(std::size_t count) const {
        const auto given = static_cast<std::ptrdiff_t>(count);
        return given >= minimum && (maximum < 0 || given <= maximum);
    }
};

struct ExternalFunction {
    std::int16_t id = 0;
    std::wstring name;
    ArgumentCount count;
};

class Externals {
public:
    virtual ~Externals() = default;
    /// By name, without regard to case.
    virtual std::optional<ExternalFunction> Find(std::wstring_view name) const = 0;
    /// Raises Mistake when the function throws.
    virtual Value Call(const ExternalFunction& function, const std::vector<Value>& arguments) = 0;
};

} // namespace standin::console
