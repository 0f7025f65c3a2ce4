// The place where a mailbox is kept, as the model sees it. Without one it lives in memory only.
#pragma once

#include "standin/mailbox/Content.h"

#include <string>

namespace standin::mailbox {

class Folder;
class Store;

/// Told of each change before it takes place in memory: a failure stops the change.
class Keeper {
public:
    virtual ~Keeper() = default;

    virtual HRESULT SaveMessage(const Folder& folder, std::uint64_t id, const Content& content) = 0;
    virtual HRESULT RemoveMessage(const Folder& folder, std::uint64_t id) = 0;

    /// The folder is in its parent's list already, as are its properties in it.
    virtual HRESULT AddFolder(const Folder& folder) = 0;
    virtual HRESULT SaveFolder(const Folder& folder) = 0;
    /// A new name, a new parent, or both.
    virtual HRESULT MoveFolder(const Folder& folder, const Folder& newParent,
                               const std::wstring& newName) = 0;
    virtual HRESULT RemoveFolder(const Folder& folder) = 0;

    virtual HRESULT SaveStore(const Store& store) = 0;
    /// A copy of a message that went out.
    virtual HRESULT SaveSubmitted(const Store& store, const Content& content) = 0;
};

} // namespace standin::mailbox
