// Finding the addresses that the names in an address list mean.
#pragma once

#include "standin/mailbox/AddressBook.h"
#include "standin/mapi/Interfaces.h"

namespace standin::mapi {

/// How an entry of an address list fared: MAPI_UNRESOLVED, MAPI_AMBIGUOUS or MAPI_RESOLVED.
struct Resolution {
    ULONG flag = MAPI_UNRESOLVED;
    std::shared_ptr<mailbox::AddressEntry> entry; ///< for MAPI_RESOLVED, where it was resolved just now
};

/// Looks one entry up by its display name. An entry with an entry id is resolved already. E_INVALIDARG: it
/// has neither, or they are of no use.
HRESULT ResolveEntry(const mailbox::AddressBook& book, const ADRENTRY& entry, Resolution& resolution);

/// Puts the properties of an address into an entry: those of the same id are replaced, further ones added,
/// and the others stay. The entry gets a new array, which is a MAPI buffer of its own; the old one is freed,
/// for which it must be that, too.
void FillEntry(ADRENTRY& entry, const mailbox::PropertyBag& properties, bool wide);

/// ResolveName of the address book, without a dialog. All entries are tried. MAPI_E_AMBIGUOUS_RECIP: a name
/// that several entries have. MAPI_E_NOT_FOUND: one that none has. E_INVALIDARG: as ResolveEntry; nothing is
/// changed then.
HRESULT ResolveList(const mailbox::AddressBook& book, bool wide, ADRLIST& list);
/// ResolveNames of a container: what is not MAPI_RESOLVED in `flags` is looked up, and how it fared is noted
/// there. `tags` say which properties an entry gets; null for those of a recipient.
HRESULT ResolveListWithFlags(const mailbox::AddressBook& book, const SPropTagArray* tags, bool wide,
                             ADRLIST& list, FlagList& flags);

} // namespace standin::mapi
