// Files that items come from and go into.
#include "Client.h"

#include <filesystem>
#include <fstream>

namespace outlook_tests {
namespace {

namespace fs = std::filesystem;

/// A folder of its own, the current one while a test runs.
class FileTest : public OutlookTest {
protected:
    FileTest() : m_before(fs::current_path()) {
        fs::create_directory(m_folder);
        fs::current_path(m_folder);
    }
    ~FileTest() override {
        fs::current_path(m_before);
        fs::remove_all(m_folder);
    }
    std::wstring In(const wchar_t* name) const { return (m_folder / name).wstring(); }

private:
    fs::path m_folder =
        fs::temp_directory_path() / (L"outlook-file-tests-" + std::to_wstring(GetCurrentProcessId()));
    fs::path m_before;
};

/// Outlook runs in another folder than its client.
TEST_F(FileTest, PathsAreAbsolute) {
    const Object item = AddItem(DefaultFolder(kInbox), L"Letter");
    const Object contact = Items(kContacts).Child(L"Add");
    const Object attachments = item.Child(L"Attachments");
    std::ofstream(fs::path(In(L"a.gif"))) << "GIF89a";
    const auto answers = [&](const std::wstring& picture, const std::wstring& saved) {
        std::vector<HRESULT> statuses;
        statuses.push_back(attachments.Status(L"Add", {picture}));
        statuses.push_back(attachments.Status(L"Add", {picture, 4}));
        statuses.push_back(contact.Status(L"AddPicture", {picture}));
        statuses.push_back(item.Status(L"SaveAs", {saved}));
        statuses.push_back(Application().Status(L"CreateItemFromTemplate", {saved}));
        statuses.push_back(attachments.Status(L"Add", {saved, 5}));
        return statuses;
    };
    EXPECT_EQ(answers(In(L"a.gif"), In(L"a.msg")), std::vector<HRESULT>(6, S_OK));
    const std::wstring drive = In(L"").substr(0, 2);
    for (const std::wstring& beginning : {std::wstring(), std::wstring(L".\\"), drive})
        EXPECT_EQ(answers(beginning + L"a.gif", beginning + L"a.msg"),
                  std::vector<HRESULT>(6, HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)))
            << beginning;
    const Object attachment = attachments.Item(1);
    EXPECT_EQ(attachment.Status(L"SaveAsFile", {L"b.gif"}), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_FALSE(fs::exists(In(L"b.gif")));
}

/// The name that a message brings along says nothing about the place.
TEST_F(FileTest, TemporaryFilesAreInAFolderOfTheirOwn) {
    std::ofstream(fs::path(In(L"a.gif"))) << "GIF89a";
    const Object attachments = AddItem(DefaultFolder(kInbox), L"Letter").Child(L"Attachments");
    const Object attachment = attachments.Child(L"Add", {In(L"a.gif")});
    for (const wchar_t* name : {L"..\\..\\b.gif", L"C:\\b.gif", L"b.gif", L"c/b.gif"}) {
        attachment.Child(L"PropertyAccessor")
            .Call(L"SetProperty", {L"http://schemas.microsoft.com/mapi/proptag/0x3707001F", name});
        const _variant_t given = attachment.Call(L"GetTemporaryFilePath");
        const fs::path path(std::wstring(given.bstrVal, SysStringLen(given.bstrVal)));
        EXPECT_EQ(path.filename().wstring(), L"b.gif") << name;
        EXPECT_EQ(path.parent_path().parent_path() / L"", fs::temp_directory_path() / L"") << name;
        EXPECT_EQ(fs::file_size(path), 6u);
        fs::remove_all(path.parent_path());
    }
}

} // namespace
} // namespace outlook_tests
