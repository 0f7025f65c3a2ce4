// Collections of folders.
#pragma once

#include "standin/outlook/automation/Collection.h"
#include "standin/outlook/folders/Folder.h"

namespace standin::outlook {

/// The subfolders of a folder, or the top folders of the profile's stores. Live.
class FoldersObject final : public Collection {
public:
    /// Null: the top folders.
    explicit FoldersObject(std::shared_ptr<mailbox::Folder> parent);

    /// Null for the top folders.
    mailbox::Folder* ParentFolder() const { return m_parent.get(); }
    ComPtr<Object> Parent() override;
    std::int32_t Count() override;
    _variant_t At(std::int32_t place) override;
    _variant_t Named(const std::wstring& name) override;
    mailbox::Folder& FolderAt(std::int32_t place) const;

private:
    std::shared_ptr<mailbox::Folder> m_parent;
};

} // namespace standin::outlook
