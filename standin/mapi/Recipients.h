// Address lists: taken apart into rows of properties, and ModifyRecipients.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/mapi/Interfaces.h"

namespace standin::mapi {

/// The properties of an entry of an address list, text as Unicode. What has no value (PT_ERROR, PT_NULL) is
/// left out, so that rows of a table can be handed on as they are. E_INVALIDARG: a null pointer.
/// MAPI_E_INVALID_TYPE: a property that no recipient can have.
HRESULT TakeAddressEntry(const ADRENTRY& entry, mailbox::PropertyBag& row);

/// ModifyRecipients: 0 for a whole new list, or one of MODRECIP_ADD, _MODIFY, _REMOVE. Rows are known by
/// their PR_ROWID, which MODRECIP_MODIFY and _REMOVE need (E_INVALIDARG); MODRECIP_MODIFY adds a row that
/// there isn't, MODRECIP_REMOVE answers MAPI_E_NOT_FOUND. A list that can't be taken changes nothing.
HRESULT ChangeRecipients(mailbox::OpenMessage& message, ULONG flags, const ADRLIST* changes);

} // namespace standin::mapi
