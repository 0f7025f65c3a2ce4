// World, switches and logon state of the one Outlook of this process.
#include "standin/outlook/session/Session.h"

#include "standin/mailbox/MailboxFolder.h"
#include "standin/mailbox/Platform.h"
#include "standin/mapi/Views.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/items/KnownNames.h"
#include "standin/watch/Watch.h"

#include <cstdio>
#include <set>

namespace standin::outlook {
namespace {

struct State {
    Switches switches;
    std::unique_ptr<mailbox::Mailbox> world;
    bool hosted = false;
    bool loggedOn = false;
    std::set<const mailbox::Store*> openStores;
};

State& TheState() {
    static State state;
    return state;
}

std::wstring EnvironmentText(const wchar_t* name) {
    const DWORD size = GetEnvironmentVariableW(name, nullptr, 0);
    std::wstring text(size, L'\0');
    text.resize(size ? GetEnvironmentVariableW(name, text.data(), size) : 0);
    return text;
}

/// Watches the calls of a client that is no host of these libraries, a script engine say, as it asks for by
/// the environment. At the end of the process the counts go into a file.
class EnvironmentWatch {
public:
    EnvironmentWatch() : m_countsFile(EnvironmentText(L"VARDEN_COUNTS")) {
        m_recorder.SetRoundTrip(_wtof(EnvironmentText(L"VARDEN_ROUND_TRIP").c_str()));
        SetCurrentWatch(&m_recorder);
    }
    ~EnvironmentWatch() {
        SetCurrentWatch(nullptr);
        if (std::FILE* file = m_countsFile.empty() ? nullptr : _wfopen(m_countsFile.c_str(), L"w")) {
            std::fprintf(file, "%llu\n", m_recorder.Calls(Side::Outlook) + m_recorder.Calls(Side::Mapi));
            std::fclose(file);
        }
    }
    EnvironmentWatch(const EnvironmentWatch&) = delete;
    EnvironmentWatch& operator=(const EnvironmentWatch&) = delete;

private:
    std::wstring m_countsFile;
    Recorder m_recorder;
};

std::unique_ptr<mailbox::Mailbox> WorldOfEnvironment() {
    static const EnvironmentWatch watch;

    const std::wstring folder = EnvironmentText(L"VARDEN_MAILBOX");
    if (folder.empty())
        return mailbox::MakeSampleWorld();
    mailbox::LoadReport report;
    std::unique_ptr<mailbox::Mailbox> world = mailbox::OpenMailboxFolder(folder, report);
    for (const std::wstring& leftOut : report.leftOut)
        std::fwprintf(stderr, L"%ls\n", leftOut.c_str());
    if (world)
        return world;
    std::fwprintf(stderr, L"%ls\n", report.error.c_str());
    throw Failure(CO_E_SERVER_EXEC_FAILURE);
}

} // namespace

Switches& TheSwitches() {
    return TheState().switches;
}

int MajorVersion() {
    return _wtoi(TheState().switches.versionText.c_str());
}

mailbox::Mailbox& World() {
    State& state = TheState();
    if (!state.world)
        SetWorld(state.hosted ? mailbox::MakeSampleWorld() : WorldOfEnvironment());
    return *state.world;
}

void SetWorld(std::unique_ptr<mailbox::Mailbox> world) {
    State& state = TheState();
    state.loggedOn = false;
    state.openStores.clear();
    state.world = std::move(world);
    mapi::SetMailbox(state.world.get());
}

void HostedByControl() {
    TheState().hosted = true;
}

void LogOn(const std::wstring& profile) {
    State& state = TheState();
    Check(state.switches.logonRefusal);
    if (state.loggedOn)
        return;
    if (!profile.empty() && !World().HasProfile(profile))
        throw Failure(MAPI_E_FAILONEPROVIDER);
    Check(World().UseProfile(profile));
    for (mailbox::Store* store : World().ProfileStores())
        OpenStore(*store);
    state.loggedOn = true;
}

void LogOff() {
    State& state = TheState();
    state.loggedOn = false;
    state.openStores.clear();
    if (state.world)
        Check(state.world->UseProfile({}));
}

void OpenStore(mailbox::Store& store) {
    if (TheState().openStores.insert(&store).second)
        EnterKnownNames(store.Names());
}

bool IsOpen(const mailbox::Store& store) {
    return TheState().openStores.contains(&store);
}

mailbox::Mailbox& LoggedOnWorld() {
    if (!TheState().loggedOn)
        LogOn({});
    return World();
}

void LastObjectGone() {
    LogOff();
}

} // namespace standin::outlook
