// Storages handed to clients: the platform's own, behind the form of MAPI's calls.
#pragma once

#include "standin/mailbox/Property.h"
#include "standin/mapi/Object.h"

#include <functional>

namespace standin::mapi {

/// Takes the bytes of a storage that was committed.
using ByteKeeper = std::function<HRESULT(const mailbox::Bytes&)>;

/// A compound file's bytes as an IStorage; none give an empty storage. With a keeper it can be written to,
/// and the keeper gets the bytes at each Commit; without, writing to it answers STG_E_ACCESSDENIED.
HRESULT OpenBytesAsStorage(const mailbox::Bytes& bytes, ByteKeeper keep, IUnknown** storage);

} // namespace standin::mapi
