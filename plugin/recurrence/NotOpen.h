// What recurrence operations say when something that must be open first isn't.
#pragma once

namespace varden {

inline constexpr const wchar_t* kPatternNotOpen = L"Must open the recurrence pattern first";
inline constexpr const wchar_t* kExceptionNotOpen = L"Must open recurrence pattern exception first";

} // namespace varden
