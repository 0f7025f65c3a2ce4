// OpenIMsgOnIStg: a message in a storage, the content of an MSG file.
#pragma once

#include <windows.h>

#include <mapix.h>

#include <objidl.h>

namespace standin::mapi {

/// A group of messages on storages that ends together. Give it back to EndMessageSession.
struct MessageSession;
MessageSession* NewMessageSession();
/// Ends a session: its messages answer MAPI_E_INVALID_OBJECT from now on. One that isn't alive is a
/// violation.
void EndMessageSession(MessageSession* session);

/// Called when the last reference to a message goes.
using MessageReleased = void(WINAPI*)(ULONG callerData, IMessage* message);

/// Parameters of OpenIMsgOnIStg that matter here.
struct StorageMessageRequest {
    MessageSession* session; ///< null for none
    IStorage* storage;
    MessageReleased released; ///< null for none
    ULONG callerData;
    bool commits; ///< whether SaveChanges commits the storage
};

/// Opens the message in a storage; in one that has none, a new message. SaveChanges writes it there; what
/// else is in the storage stays. A storage that is open for reading gives a message for reading.
/// MAPI_E_CORRUPT_DATA: what is there is no whole message.
HRESULT OpenMessageOnStorage(const StorageMessageRequest& request, IMessage** message);

} // namespace standin::mapi
