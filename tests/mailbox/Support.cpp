// Files, folders that vanish, messages to work with.
#include "tests/mailbox/Support.h"

#include "standin/mailbox/Platform.h"

#include <fstream>
#include <iostream>
#include <iterator>

namespace standin::mailbox::test {

std::filesystem::path MsgFolder() {
    const std::filesystem::path folder = VARDEN_MSG_FOLDER;
    if (std::filesystem::exists(folder / "facts.jsonl"))
        return folder;
    std::cout << "The MSG files of real mail clients are missing: " << folder.string() << '\n';
    return {};
}

Bytes ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

void WriteFile(const std::filesystem::path& path, std::span<const std::uint8_t> bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

void WriteFile(const std::filesystem::path& path, std::string_view text) {
    WriteFile(path, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

TemporaryFolder::TemporaryFolder() : m_path(std::filesystem::temp_directory_path() / TextOfGuid(NewGuid())) {
    std::filesystem::create_directories(m_path);
}

/// What was copied from a read-only file is read-only too, and would stay.
TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(m_path, ignored)) {
        std::filesystem::permissions(entry, std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add, ignored);
    }
    std::filesystem::remove_all(m_path, ignored);
}

std::string Utf8(std::wstring_view text) {
    return Narrow(text, CP_UTF8);
}

Folder& FolderNamed(Mailbox& mailbox, std::wstring_view name) {
    Folder* folder = mailbox.DefaultStore()->IpmSubtree().FindSubfolder(name);
    if (!folder)
        throw std::runtime_error("no folder " + Utf8(name));
    return *folder;
}

std::shared_ptr<OpenMessage> SaveMessage(Folder& folder, const std::wstring& subject) {
    std::shared_ptr<OpenMessage> message;
    EXPECT_EQ(folder.CreateMessage(false, message), S_OK);
    EXPECT_EQ(message->Write(PR_SUBJECT_W, subject), S_OK);
    EXPECT_EQ(message->Save(), S_OK);
    return message;
}

void AddRecipient(OpenMessage& message, std::wstring_view nameOrAddress, std::int32_t type) {
    std::shared_ptr<AddressEntry> entry;
    const Mailbox& mailbox = message.ParentFolder()->Store().Mailbox();
    ASSERT_EQ(mailbox.Addresses().Resolve(nameOrAddress, entry), S_OK);
    PropertyBag row = entry->RecipientProperties();
    row.Set<PR_RECIPIENT_TYPE>(type);
    ASSERT_EQ(message.AddRecipient(std::move(row)), S_OK);
}

} // namespace standin::mailbox::test
