// Folders as automation objects.
#pragma once

#include "standin/mailbox/Mailbox.h"
#include "standin/outlook/automation/Object.h"

namespace standin::outlook {

/// MAPIFolder. Every request for a folder gives an object of its own.
class FolderObject final : public Object {
public:
    explicit FolderObject(std::shared_ptr<mailbox::Folder> folder);

    /// Raises MAPI_E_OBJECT_DELETED for a folder that is gone.
    mailbox::Folder& Folder() const;
    const std::shared_ptr<mailbox::Folder>& Shared() const { return m_folder; }
    ComPtr<Object> Parent() override;

private:
    std::shared_ptr<mailbox::Folder> m_folder;
};

ComPtr<FolderObject> FolderFor(mailbox::Folder& folder);
/// Nothing for null.
ComPtr<FolderObject> FolderFor(mailbox::Folder* folder);

/// Whether a folder is the top of what Outlook shows of its store. Outlook gives it the store's name.
bool IsTopFolder(const mailbox::Folder& folder);
std::wstring ShownName(const mailbox::Folder& folder);
/// "\\Front Desk\Inbox"; a percent sign and a backslash within a name are written %25 and %5C.
std::wstring PathOf(const mailbox::Folder& folder);

/// Deletes as users do: into the Deleted Items of the store, or for good if it is in there already.
void DeleteFolder(mailbox::Folder& folder);

} // namespace standin::outlook
