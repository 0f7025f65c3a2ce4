// The COM message filter of the host's thread: calls into Outlook never raise a "server busy" dialog.
#pragma once

namespace varden {

/// Makes a filter, or takes the one that an earlier Init made, and registers it for the thread.
void InstallMessageFilter();

/// Revokes the filter and destroys it.
void RemoveMessageFilter();

} // namespace varden
