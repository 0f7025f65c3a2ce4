// Keeps a mailbox in a folder on disk: each change is written as it happens.
#pragma once

#include "standin/mailbox/DiskLayout.h"
#include "standin/mailbox/Ini.h"
#include "standin/mailbox/Keeper.h"

namespace standin::mailbox::disk {

class DiskKeeper final : public Keeper {
public:
    explicit DiskKeeper(Places places) : m_places(std::move(places)) {}

    HRESULT SaveMessage(const Folder& folder, std::uint64_t id, const Content& content) override;
    HRESULT MoveMessage(const Folder& from, std::uint64_t id, const Folder& to, std::uint64_t newId) override;
    HRESULT RemoveMessage(const Folder& folder, std::uint64_t id) override;
    HRESULT AddFolder(const Folder& folder) override;
    HRESULT SaveFolder(const Folder& folder) override;
    HRESULT MoveFolder(const Folder& folder, const Folder& newParent, const std::wstring& newName) override;
    HRESULT RemoveFolder(const Folder& folder) override;
    HRESULT SaveStore(const Store& store) override;
    HRESULT SaveProfile(const Mailbox& mailbox) override;
    HRESULT SaveSubmitted(const Store& store, std::uint64_t id, const Content& content) override;

private:
    HRESULT WriteFolderFile(const Folder& folder, const std::wstring& name);

    Places m_places;
};

} // namespace standin::mailbox::disk
