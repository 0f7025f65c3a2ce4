// The clients that do the same jobs: the plug-in as a script uses it, and a program that makes just the calls
// that the jobs need.
#pragma once

#include "standin/filemaker/Host.h"
#include "standin/watch/Watch.h"

#include <initializer_list>
#include <memory>
#include <string>

namespace varden::bench {

/// A job's work, done by one client. Raises std::runtime_error for a call that failed.
class Client {
public:
    virtual ~Client() = default;
    /// Reads five fields of every mail in the Inbox; gives how many mails there were.
    virtual int WalkInbox() = 0;
};

/// Calls the script functions of the plug-in.
class PluginClient final : public Client {
public:
    /// Loads the plug-in beside this program.
    explicit PluginClient(standin::Recorder& watch);

    int WalkInbox() override;

    standin::filemaker::Host& Host() { return m_host; }
    std::wstring Call(const wchar_t* function, std::initializer_list<std::wstring> arguments = {});
    void LogOn();

private:
    standin::filemaker::Host m_host;
};

/// Calls Outlook and MAPI itself, as the plug-in has to, with every DISPID kept. The limit.
class DirectClient final : public Client {
public:
    DirectClient();
    ~DirectClient() override;

    int WalkInbox() override;

private:
    class Session;
    std::unique_ptr<Session> m_session;
};

} // namespace varden::bench
