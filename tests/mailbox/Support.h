// What the mailbox tests share: files, folders that vanish, short ways to say what is looked at.
#pragma once

#include "standin/mailbox/Mailbox.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace standin::mailbox::test {

/// The folder with MSG files of real mail clients; empty, with a line that says so, where there is none.
std::filesystem::path MsgFolder();

Bytes ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, std::span<const std::uint8_t> bytes);
void WriteFile(const std::filesystem::path& path, std::string_view text);

/// A fresh folder for one test, gone with all that is in it at its end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

/// Narrow text for messages of failing tests.
std::string Utf8(std::wstring_view text);

/// A property that has to be there.
template <class Object>
Value Read(const Object& object, PropertyTag tag) {
    Value value;
    EXPECT_EQ(object.Read(tag, value), S_OK) << std::hex << tag;
    return value;
}

/// A folder of the default store by its name.
Folder& FolderNamed(Mailbox& mailbox, std::wstring_view name);
/// A new message with this subject, saved.
std::shared_ptr<OpenMessage> SaveMessage(Folder& folder, const std::wstring& subject);
void AddRecipient(OpenMessage& message, std::wstring_view nameOrAddress, std::int32_t type = MAPI_TO);

} // namespace standin::mailbox::test
