// The plug-in's side of the jobs: the script functions that a script would call.
#pragma once

#include "standin/filemaker/Host.h"
#include "standin/watch/Watch.h"

#include <initializer_list>
#include <string>

namespace varden::bench {

/// A running plug-in. Each job gives how many records it has worked on, and raises std::runtime_error for a
/// function that answered "!!ERROR!!".
class PluginClient {
public:
    /// Loads the plug-in beside this program.
    explicit PluginClient(standin::Recorder& watch);

    /// Reads five fields of the first mails in the Inbox, of all where there are no more.
    int WalkInbox(int most);
    int SendMails(int count, const std::wstring& attachment);
    int WriteContacts(int count);
    int WriteCustomFields(int count);
    /// Of the current record, an appointment.
    int ReadPattern(int rounds);

    standin::filemaker::Host& Host() { return m_host; }
    std::wstring Call(const wchar_t* function, std::initializer_list<std::wstring> arguments = {});
    void LogOn();

private:
    standin::filemaker::Host m_host;
};

} // namespace varden::bench
