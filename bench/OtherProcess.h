// What a call to another process costs on this machine: Outlook is one.
#pragma once

#include <string>

namespace varden::bench {

/// Microseconds that an automation call to an object of another process takes, marshalled by COM: the mean
/// over a thousand calls, but at most a hundred, which is more than it takes on Windows. Where it is slower,
/// what the clients do themselves would hardly show. Raises std::runtime_error where no such process can be
/// started.
double MeasureRoundTrip();

/// The other process's part: offers an object by a file with its marshalled reference, until the file is
/// gone.
void ServeObject(const std::wstring& file);

} // namespace varden::bench
