// What a call to another process costs on this machine: Outlook is one.
#pragma once

#include <string>
#include <vector>

namespace varden::bench {

/// Microseconds that an automation call to an object of another process takes here, marshalled by COM: the
/// mean over a thousand calls. Raises std::runtime_error where no such process can be started.
double MeasureRoundTrip();

/// How long each call into Outlook and MAPI is at least, and over how many records a job runs so.
struct Pace {
    double microseconds;
    int records;
};

/// The paces of a job of this many records: a tenth of them at what a call to another process takes here,
/// where hooks, too, cost what they cost here; all at a hundred microseconds, more than a call takes on
/// Windows, which shows more of what the clients do themselves.
std::vector<Pace> PacesOf(int records);
/// The heading of a pace's rows.
void PrintPace(const Pace& pace);

/// The other process's part: offers an object by a file with its marshalled reference, until the file is
/// gone.
void ServeObject(const std::wstring& file);

} // namespace varden::bench
