// Tests that speak the script's language: a plug-in file loaded and started, its functions called by name
// with texts, the answers, the last error and the mailbox looked at.
#pragma once

#include "ImportSpy.h"
#include "standin/filemaker/Host.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/outlook/Control.h"
#include "standin/outlook/registration/Registration.h"
#include "standin/watch/Watch.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace varden::tests {

using standin::filemaker::Value;
using Texts = std::vector<Value>;

/// The file that ships, and the one with every function registered.
inline constexpr const wchar_t* kShippedPlugin = L"VardenBridge.fmx64";
inline constexpr const wchar_t* kFullPlugin = L"VardenBridgeAll.fmx64";

inline constexpr const wchar_t* kError = L"!!ERROR!!";

/// A file that stands beside the test program.
std::wstring FileBeside(const std::wstring& name);
/// A file or folder of the repository, as Wine sees it; `path` with slashes.
std::wstring RepositoryPath(const std::wstring& path);

/// A running plug-in on a mailbox of its own. At its end nothing may be left alive: no host object, no
/// Outlook or MAPI reference, no MAPI buffer, no hook.
class Plugin {
public:
    explicit Plugin(const wchar_t* file = kShippedPlugin);
    ~Plugin();

    std::wstring Call(const wchar_t* function, const Texts& arguments = {});
    /// VARD_GetLastError in its two forms.
    int LastErrorCode();
    std::wstring LastErrorText();

    /// Ends the plug-in and tests that nothing is left alive.
    void End();

    standin::Recorder& Watch() { return m_recorder; }
    standin::filemaker::Host& Host() { return *m_host; }
    standin::outlook::Control& Outlook() { return *m_host->Outlook(); }
    standin::mailbox::Mailbox& World() { return Outlook().World(); }
    HMODULE Module() const { return m_module; }

private:
    standin::Recorder m_recorder;
    std::unique_ptr<standin::filemaker::Host> m_host;
    HMODULE m_module = nullptr;
    std::optional<HookSpy> m_hooks;
};

/// A test with the shipped plug-in on the sample world.
class ScriptTest : public testing::Test {
protected:
    explicit ScriptTest(const wchar_t* file = kShippedPlugin) : m_plugin(std::in_place, file) {}

    void TearDown() override { m_plugin->End(); }

    Plugin& Varden() { return *m_plugin; }
    std::wstring Call(const wchar_t* function, const Texts& arguments = {}) {
        return m_plugin->Call(function, arguments);
    }
    int LastErrorCode() { return m_plugin->LastErrorCode(); }
    std::wstring LastErrorText() { return m_plugin->LastErrorText(); }
    standin::outlook::Control& Outlook() { return m_plugin->Outlook(); }
    standin::mailbox::Mailbox& World() { return m_plugin->World(); }

    /// Logs on to the sample profile; a failure is a failure of the test.
    void LogOn();
    /// Calls the function and expects "!!ERROR!!" with this last error. The text is that of
    /// VARD_GetLastError.
    void ExpectFailure(const wchar_t* function, const Texts& arguments, int code, const std::wstring& text);

private:
    standin::outlook::Registration m_registration;
    std::optional<Plugin> m_plugin;
};

/// A message to be put into a folder.
struct MessageToAdd {
    std::wstring messageClass = L"IPM.Note";
    std::wstring subject = {};
    std::wstring body = {};
    standin::mailbox::PropertyBag more = {};
};

/// Puts a message into a folder as if it had arrived.
std::shared_ptr<standin::mailbox::Message> AddMessage(standin::mailbox::Folder& folder,
                                                      const MessageToAdd& message);

/// A folder of a store of the world by its path below the store, "Inbox/Sub"; fails the test when there is
/// none.
standin::mailbox::Folder& FolderAt(standin::mailbox::Mailbox& world, const std::wstring& store,
                                   const std::wstring& path);

} // namespace varden::tests
