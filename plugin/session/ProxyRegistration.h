// The COM registration without which Outlook's MAPI session can't be had, mended at start-up.
#pragma once

namespace varden {

/// Looks for the class that marshals MAPI's interfaces and for two of the interfaces. If one of the three is
/// missing, the whole registration is written anew under HKEY_CLASSES_ROOT, as far as the user's rights go.
void CheckMapiProxyRegistration();

} // namespace varden
