// Files that tests make and look at, and the MSG files of real mail clients.
#pragma once

#include "standin/mailbox/Msg.h"

#include <string>
#include <string_view>
#include <vector>

namespace varden::tests {

/// A fresh folder for one test, gone with all that is in it at its end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::wstring& Path() const { return m_path; }
    std::wstring File(const std::wstring& name) const { return m_path + L"\\" + name; }
    /// Makes a file with these bytes; gives its path.
    std::wstring Add(const std::wstring& name, std::string_view bytes) const;
    /// The names of what is in it, or in the folder of this name in it.
    std::vector<std::wstring> Names(const std::wstring& folder = {}) const;

private:
    std::wstring m_path;
};

bool Exists(const std::wstring& path);
/// The bytes of the file; fails the test when it can't be read.
std::string BytesIn(const std::wstring& path);
/// What an MSG file holds; fails the test when it can't be read.
standin::mailbox::Content MessageIn(const std::wstring& path, standin::mailbox::NamedProperties& names);

/// The paths of the MSG files of real mail clients; none where their folder is missing.
std::vector<std::wstring> RealMsgFiles();

} // namespace varden::tests
