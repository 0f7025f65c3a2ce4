// The process-wide objects. All of them are made at Init and destroyed at Shutdown, and used on the host's
// thread only.
#pragma once

#include "LastError.h"

#include <windows.h>

#include <memory>

namespace varden {

class COutlookFuncs;

struct ProcessObjects {
    std::unique_ptr<COutlookFuncs> m_objFuncs; ///< the engine
    std::unique_ptr<LastErrorRecord> lastError;
};

/// They are never destroyed with the library: a host that ends without a Shutdown message has no apartment
/// left in which Outlook objects could be released.
ProcessObjects& Process();

/// Whether there is an engine: from Init to Shutdown.
bool IsStarted();
/// The engine. Only between Init and Shutdown.
COutlookFuncs& Engine();
/// The last error. Only between Init and Shutdown.
LastErrorRecord& LastError();

/// The library's own module.
HMODULE ModuleHandle();

} // namespace varden
