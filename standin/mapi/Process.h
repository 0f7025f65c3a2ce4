// What belongs to the process as a whole: MAPIInitialize, and the counts of what is alive.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace standin::mapi {

/// MAPIInitialize and MAPIUninitialize. The second may come too often, which real MAPI takes in silence.
HRESULT Initialize();
void Uninitialize();
/// Between the first MAPIInitialize and the last MAPIUninitialize: only then are buffers and the methods of
/// objects to be had.
bool IsInitialized();

/// Counts of live objects and of live buffers, for LiveCount.
std::int64_t& LiveObjects();
std::int64_t& LiveBuffers();

/// Tells the watch that a caller broke a rule which MAPI answers with memory corruption.
void ReportViolation(const std::wstring& text);

} // namespace standin::mapi
