// Where the properties of a resolved address go on a message that is sent in that person's name.
#pragma once

#include "Ownership.h"

#include <span>

namespace varden::mapi {

/// The words for an address book that can't be had, and for a name that it can't resolve.
inline constexpr const wchar_t* kNoAddressBookForSender =
    L"Unable to set Sent On Behalf - unable to open Address Book.";
inline constexpr const wchar_t* kSenderNotResolved = L"Unable to set Sent On Behalf - Failed to resolve";

struct SenderStamp {
    ULONG resolvedId;  ///< of a property of the resolved address
    ULONG sender;      ///< the tag of the sender's property
    ULONG represented; ///< the tag of the represented sender's
};

/// Where a property of a resolved address goes. Null for one that isn't stamped, and for a value that hasn't
/// the type of its stamps.
const SenderStamp* StampFor(const SPropValue& resolved);

/// What a list of one entry holds after it was resolved.
std::span<const SPropValue> ResolvedProperties(const AddressList& list);

/// Stores the value under another tag of its type.
HRESULT StoreAs(ULONG tag, const SPropValue& value, IMessage* message);

} // namespace varden::mapi
