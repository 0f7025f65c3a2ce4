// Reads a mailbox from its folder on disk.
#pragma once

#include "standin/mailbox/DiskFiles.h"
#include "standin/mailbox/DiskKeeper.h"
#include "standin/mailbox/MailboxFolder.h"

#include <functional>

namespace standin::mailbox::disk {

/// Thrown for what keeps a mailbox from being opened: file, line and reason.
struct LoadError {
    std::wstring text;
};

/// Why something failed, in words.
std::wstring ReasonText(HRESULT status);

/// Reads first and touches nothing; what is to be put in order on disk comes after everything could be read.
/// All messages are read at once: so the report is complete, and nothing can fail later.
class DiskLoader {
public:
    DiskLoader(std::wstring root, LoadReport& report) : m_places(std::move(root)), m_report(report) {}

    /// Fills the mailbox. Throws LoadError.
    void Read(Mailbox& mailbox);
    /// Takes in what was dropped in, clears left-overs. Throws LoadError.
    std::unique_ptr<DiskKeeper> PutInOrder();

private:
    using Action = std::function<HRESULT(DiskKeeper& keeper)>;

    void ReadProfile(Mailbox& mailbox);
    void ReadStore(Mailbox& mailbox, const std::wstring& place);
    void ReadOwnFolders(Store& store);
    void ReadFolder(Folder& folder);
    void ReadSubfolders(Folder& parent, const std::vector<std::wstring>& places);
    void TakeInSubfolder(Folder& parent, const std::wstring& place, const std::optional<FolderFile>& file,
                         bool hasId);
    void ReadMessages(Folder& folder, const std::vector<std::wstring>& files);
    bool ReadMessage(Folder& folder, const std::wstring& path, Content& content);
    void LookAroundStores();
    void LeaveOut(const std::wstring& path, const std::wstring& reason);

    Places m_places;
    LoadReport& m_report;
    std::vector<std::wstring> m_storePlaces;                     // in order of the profile
    std::vector<std::pair<std::wstring, Action>> m_storesToSave; // before anything gets the ids they reserve
    std::vector<std::pair<std::wstring, Action>> m_toPutInOrder;
    std::vector<std::wstring> m_leftOverFiles;
    std::vector<std::wstring> m_leftOverFolders;
};

} // namespace standin::mailbox::disk
