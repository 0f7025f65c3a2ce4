// MSG files ([MS-OXMSG]): between storages and message content. No state, no store: pure functions.
#pragma once

#include "standin/mailbox/Content.h"

#include <objidl.h>

#include <span>

namespace standin::mailbox {

/// Reads a message from an open storage. Ids of named properties in `content` are those of `names`, where
/// names that are new are entered. Text of ANSI files is made Unicode by the file's code page.
/// MAPI_E_CORRUPT_DATA: not the layout of a message. Other failures: what the storage answered, as MAPI has
/// it.
HRESULT ReadMsg(IStorage* storage, NamedProperties& names, Content& content);
/// What WriteMsg does to the storage besides.
struct MsgWriting {
    bool setClass = true; ///< gives it the class id of messages
    bool commit = true;   ///< commits it
};
/// Writes a message into an open storage, as Unicode, in place of a message that it may hold. PT_ERROR,
/// PT_NULL and PT_OBJECT properties, null pointers, and ids from 0x8000 on that have no name are left out.
/// MAPI_E_TOO_COMPLEX: messages in messages, deeper than any client goes.
HRESULT WriteMsg(const Content& content, const NamedProperties& names, IStorage* storage,
                 MsgWriting writing = {});

/// The same from and to the bytes of a compound file.
HRESULT ReadMsgBytes(std::span<const std::uint8_t> file, NamedProperties& names, Content& content);
HRESULT WriteMsgBytes(const Content& content, const NamedProperties& names, Bytes& file);

/// The status that MAPI gives for a failure of the platform's storage or file functions.
HRESULT StatusFromStorage(HRESULT status);

/// A storage in memory, for OLE objects: from the bytes of a compound file (empty: a new one), and back. The
/// caller owns one reference to each.
HRESULT OpenStorageBytes(std::span<const std::uint8_t> bytes, ILockBytes** memory, IStorage** storage);
HRESULT BytesOfStorage(ILockBytes* memory, Bytes& bytes);

} // namespace standin::mailbox
