// What it takes to have a message on a storage.
#pragma once

#include "Ownership.h"

#include <string>

namespace varden::mapi {

/// The class id of MSG files ([MS-OXMSG] 2.2.3).
inline constexpr CLSID kMailMessageClass = {
    0x00020D0B, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

/// A compound file for a message, in place of a file of that name. Nothing of it lasts without a commit.
HRESULT CreateMsgStorage(const std::wstring& path, Pointer<IStorage>& storage);

/// A session for messages on storages; closed at its end, after the messages have gone.
class MsgSession {
public:
    MsgSession() = default;
    ~MsgSession();
    MsgSession(const MsgSession&) = delete;
    MsgSession& operator=(const MsgSession&) = delete;

    HRESULT Open(IMalloc* allocator);
    HRESULT OpenMessage(IMalloc* allocator, IStorage* storage, Pointer<IMessage>& message) const;

private:
    LPMSGSESS m_session = nullptr;
};

} // namespace varden::mapi
