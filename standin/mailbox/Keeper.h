// The place where a mailbox is kept, as the model sees it. Without one it lives in memory only.
#pragma once

#include "standin/mailbox/Content.h"

#include <string>

namespace standin::mailbox {

class Folder;
class Mailbox;
class Store;

/// Told of each change. A failure stops the change, or takes it back.
class Keeper {
public:
    virtual ~Keeper() = default;

    virtual HRESULT SaveMessage(const Folder& folder, std::uint64_t id, const Content& content) = 0;
    virtual HRESULT MoveMessage(const Folder& from, std::uint64_t id, const Folder& to,
                                std::uint64_t newId) = 0;
    virtual HRESULT RemoveMessage(const Folder& folder, std::uint64_t id) = 0;

    /// The folder knows its parent, but isn't in its parent's list yet.
    virtual HRESULT AddFolder(const Folder& folder) = 0;
    /// What belongs to the folder itself changed: properties, item type, fields.
    virtual HRESULT SaveFolder(const Folder& folder) = 0;
    /// Before it gets a new name, a new parent, or both.
    virtual HRESULT MoveFolder(const Folder& folder, const Folder& newParent,
                               const std::wstring& newName) = 0;
    virtual HRESULT RemoveFolder(const Folder& folder) = 0;

    /// What belongs to the store itself changed.
    virtual HRESULT SaveStore(const Store& store) = 0;
    /// The list of stores or the address book changed.
    virtual HRESULT SaveProfile(const Mailbox& mailbox) = 0;
    /// A copy of a message that goes out from this store; `id` is new.
    virtual HRESULT SaveSubmitted(const Store& store, std::uint64_t id, const Content& content) = 0;
};

} // namespace standin::mailbox
