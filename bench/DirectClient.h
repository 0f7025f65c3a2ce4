// The limit: a program that makes just the Outlook and MAPI calls that the jobs need.
#pragma once

#include "Automation.h"

#include <string>

namespace varden::bench {

/// A session of Outlook's, logged on to the sample profile. Each job gives how many records it has worked
/// on, and raises std::runtime_error for a call that failed.
class DirectClient {
public:
    DirectClient();
    ~DirectClient();
    DirectClient(const DirectClient&) = delete;
    DirectClient& operator=(const DirectClient&) = delete;

    /// Reads five fields of the first mails in the Inbox, of all where there are no more.
    int WalkInbox(int most);
    /// Sends mails with one attachment.
    int SendMails(int count, const std::wstring& attachment);
    /// Copies the first attachment of the first draft into a file.
    int SaveAttachment(const std::string& target);
    /// Makes and saves contacts: of the contact fields, and of custom fields.
    int WriteContacts(int count);
    int WriteCustomFields(int count);
    /// Opens the pattern of the first appointment, reads its fields and walks its exceptions.
    int ReadPattern(int rounds);

private:
    /// A folder by its OlDefaultFolders number.
    Held<IDispatch> DefaultFolder(long number);
    Held<IDispatch> ItemsOf(long folder);
    /// The first item of a folder, as one of the kinds.
    Held<IDispatch> FirstItem(long folder, const GUID& kind);
    /// A new item of the folder's, as one of the kinds, with its message.
    Held<IDispatch> NewItem(long folder, long type, const GUID& kind, Member& mapiObject);

    Held<IDispatch> m_application, m_nameSpace;
    Held<IMAPISession> m_session;
    Held<IMsgStore> m_store;
};

} // namespace varden::bench
