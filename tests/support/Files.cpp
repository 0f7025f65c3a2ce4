// Files that tests make and look at, and the MSG files of real mail clients.
#include "Files.h"

#include "ScriptTest.h"

#include "standin/mailbox/Files.h"
#include "standin/mailbox/Platform.h"

namespace varden::tests {

using namespace standin::mailbox;

namespace {

std::vector<std::wstring> NamesIn(const std::wstring& folder) {
    std::vector<FolderEntry> entries;
    ListFolder(LongPath(folder), entries);
    std::vector<std::wstring> names;
    for (const FolderEntry& entry : entries) {
        names.push_back(entry.name);
    }
    return names;
}

} // namespace

TemporaryFolder::TemporaryFolder() {
    wchar_t root[MAX_PATH];
    GetTempPathW(MAX_PATH, root);
    m_path = root + TextOfGuid(NewGuid());
    EXPECT_TRUE(CreateDirectoryW(m_path.c_str(), nullptr));
}

TemporaryFolder::~TemporaryFolder() {
    RemoveTree(LongPath(m_path));
}

std::wstring TemporaryFolder::Add(const std::wstring& name, std::string_view bytes) const {
    const std::span data(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    EXPECT_EQ(ReplaceFile(LongPath(m_path), name, data), S_OK);
    return File(name);
}

std::vector<std::wstring> TemporaryFolder::Names(const std::wstring& folder) const {
    return NamesIn(folder.empty() ? m_path : File(folder));
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string BytesIn(const std::wstring& path) {
    Bytes bytes;
    EXPECT_EQ(ReadWholeFile(LongPath(path), bytes), S_OK) << testing::PrintToString(path);
    return {bytes.begin(), bytes.end()};
}

Content MessageIn(const std::wstring& path, NamedProperties& names) {
    const std::string bytes = BytesIn(path);
    Content content;
    EXPECT_EQ(
        ReadMsgBytes({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, names, content),
        S_OK)
        << testing::PrintToString(path);
    return content;
}

std::vector<std::wstring> RealMsgFiles() {
    const std::wstring folder = RepositoryPath(L"../shared/msg");
    std::vector<std::wstring> paths;
    for (const std::wstring& name : NamesIn(folder)) {
        if (name.ends_with(L".msg")) {
            paths.push_back(folder + L'\\' + name);
        }
    }
    return paths;
}

} // namespace varden::tests
