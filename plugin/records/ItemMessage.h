// From an item to its MAPI view.
#pragma once

#include "mapi/InterfaceIds.h"
#include "mapi/Ownership.h"
#include "outlook/Reference.h"

namespace varden {

/// Takes the message behind an item; what `message` held is released. Raises _com_error when the item doesn't
/// give it, otherwise the status of asking for its interface.
inline HRESULT QueryMessage(const outlook::Reference& item, mapi::Pointer<IMessage>& message) {
    return message.Query(outlook::UnknownOf(item.GetProperty(L"MAPIOBJECT")), mapi::kIidMessage);
}

} // namespace varden
