// A running plug-in, and what tests put into its mailbox.
#include "ScriptTest.h"

#include <sstream>
#include <stdexcept>

namespace varden::tests {

using namespace standin;

std::wstring FileBeside(const std::wstring& name) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program = path;
    return program.substr(0, program.rfind(L'\\') + 1) + name;
}

std::wstring RepositoryPath(const std::wstring& path) {
    std::wstring full = L"Z:" VARDEN_SOURCE_DIR L"/" + path;
    for (wchar_t& c : full) {
        c = c == L'/' ? L'\\' : c;
    }
    return full;
}

Plugin::Plugin(const wchar_t* file) : m_host(std::make_unique<filemaker::Host>(m_recorder)) {
    const std::wstring path = FileBeside(file);
    if (const std::wstring failure = m_host->Load(path); !failure.empty()) {
        throw std::runtime_error("the plug-in can't be loaded");
    }
    m_module = GetModuleHandleW(path.c_str());
    m_hooks.emplace(m_module);
    if (m_host->Outlook()) {
        m_host->Outlook()->Reset();
        m_host->Outlook()->CloseWindowsAtOnce(true);
    }
    m_host->Init();
}

Plugin::~Plugin() = default;

std::wstring Plugin::Call(const wchar_t* function, const Texts& arguments) {
    const filemaker::Answer answer = m_host->CallUnchecked(function, arguments);
    EXPECT_EQ(answer.error, 0) << "of " << function;
    return answer.text;
}

int Plugin::LastErrorCode() {
    return std::stoi(Call(L"VARD_GetLastError", {L"code"}));
}

std::wstring Plugin::LastErrorText() {
    return Call(L"VARD_GetLastError");
}

void Plugin::End() {
    if (!m_host) {
        return;
    }
    m_host->Shutdown();
    EXPECT_EQ(m_host->LiveObjects(), 0u);
    EXPECT_EQ(HookSpy::Held(), 0);
    if (m_host->Outlook()) {
        const outlook::LiveCounts live = m_host->Outlook()->Live();
        EXPECT_EQ(live.outlookObjects, 0);
        EXPECT_EQ(live.mapiObjects, 0);
        EXPECT_EQ(live.mapiBuffers, 0);
    }
    for (const std::wstring& violation : m_recorder.Violations()) {
        ADD_FAILURE() << testing::PrintToString(violation);
    }
    m_host.reset();
}

void ScriptTest::LogOn() {
    ASSERT_EQ(Call(L"VARD_Authenticate", {L"Outlook"}), L"0") << testing::PrintToString(LastErrorText());
}

void ScriptTest::ExpectFailure(const wchar_t* function, const Texts& arguments, int code,
                               const std::wstring& text) {
    EXPECT_EQ(Call(function, arguments), kError);
    EXPECT_EQ(LastErrorCode(), code);
    EXPECT_EQ(LastErrorText(), text);
}

std::shared_ptr<mailbox::Message> AddMessage(mailbox::Folder& folder, const MessageToAdd& message) {
    mailbox::Content content;
    content.properties = message.more;
    content.properties.Set<PR_MESSAGE_CLASS_W>(message.messageClass);
    if (!message.subject.empty()) {
        content.properties.Set<PR_SUBJECT_W>(message.subject);
    }
    if (!message.body.empty()) {
        content.properties.Set<PR_BODY_W>(message.body);
    }
    std::shared_ptr<mailbox::Message> added;
    EXPECT_EQ(folder.Receive(std::move(content), false, added), S_OK);
    return added;
}

mailbox::Folder& FolderAt(mailbox::Mailbox& world, const std::wstring& store, const std::wstring& path) {
    for (const auto& candidate : world.AllStores()) {
        if (candidate->Name() != store) {
            continue;
        }
        mailbox::Folder* folder = &candidate->IpmSubtree();
        std::wistringstream elements(path);
        for (std::wstring name; folder && std::getline(elements, name, L'/');) {
            folder = folder->FindSubfolder(name);
        }
        if (folder) {
            return *folder;
        }
    }
    throw std::runtime_error("no such folder in the world");
}

} // namespace varden::tests
