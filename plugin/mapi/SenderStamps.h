// Where the properties of a resolved address go on a message that is sent in that person's name.
#pragma once

#include "Ownership.h"

#include <span>

namespace varden::mapi {

struct SenderStamp {
    ULONG resolvedId;  ///< of a property of the resolved address
    ULONG sender;      ///< the tag of the sender's property
    ULONG represented; ///< the tag of the represented sender's
};

/// Null for a property that isn't stamped.
const SenderStamp* StampFor(const SPropValue& resolved);

/// What a list of one entry holds after it was resolved.
std::span<const SPropValue> ResolvedProperties(const AddressList& list);

/// Stores the value under another tag. Only a value of that tag's type: E_INVALIDARG otherwise.
HRESULT StoreAs(ULONG tag, const SPropValue& value, IMessage* message);

} // namespace varden::mapi
