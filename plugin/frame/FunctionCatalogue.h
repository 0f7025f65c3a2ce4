// Every function that the plug-in can offer to scripts, and which of them it registers.
#pragma once

#include "CallShell.h"

#include <span>

namespace varden {

/// All functions: first those that are registered, in the order in which the host shows them, then those that
/// stand ready without being registered.
std::span<const FunctionRow> AllFunctions();
inline constexpr std::size_t kPublishedFunctionCount = 56;

/// What Init registers, in this order. Defined apart from the catalogue, so that a build with another list
/// differs in that one source.
std::span<const FunctionRow> RegisteredFunctions();

/// The function pointer of a row of AllFunctions().
host::ExternalFunction HandlerOf(const FunctionRow& row);

} // namespace varden
