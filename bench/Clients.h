// The clients that do the same jobs: the plug-in as a script uses it, and a program that makes just the calls
// that the jobs need.
#pragma once

#include "standin/filemaker/Host.h"
#include "standin/watch/Watch.h"

#include <array>
#include <initializer_list>
#include <memory>
#include <string>

namespace varden::bench {

/// A text field of contacts, as scripts and as Outlook name it.
struct ContactField {
    const wchar_t* name;
    const wchar_t* member;
};
inline constexpr std::array kContactFields{
    ContactField{L"First Name", L"FirstName"},
    ContactField{L"Last Name", L"LastName"},
    ContactField{L"Company", L"CompanyName"},
    ContactField{L"Department", L"Department"},
    ContactField{L"Job Title", L"JobTitle"},
    ContactField{L"Business Address Street", L"BusinessAddressStreet"},
    ContactField{L"Business Address City", L"BusinessAddressCity"},
    ContactField{L"Business Address State", L"BusinessAddressState"},
    ContactField{L"Business Address Postal Code", L"BusinessAddressPostalCode"},
    ContactField{L"Business Phone", L"BusinessTelephoneNumber"},
    ContactField{L"Home Phone", L"HomeTelephoneNumber"},
    ContactField{L"Mobile Phone", L"MobileTelephoneNumber"},
    ContactField{L"Pager", L"PagerNumber"},
    ContactField{L"Assistant's Name", L"AssistantName"},
    ContactField{L"Spouse", L"Spouse"},
    ContactField{L"Nickname", L"NickName"},
    ContactField{L"Profession", L"Profession"},
    ContactField{L"Manager's Name", L"ManagerName"},
    ContactField{L"Office Location", L"OfficeLocation"},
    ContactField{L"Web Page", L"WebPage"},
};

/// A job's work, done by one client. Raises std::runtime_error for a call that failed.
class Client {
public:
    virtual ~Client() = default;
    /// Reads five fields of every mail in the Inbox; gives how many mails there were.
    virtual int WalkInbox() = 0;
    /// Makes and saves contacts of twenty fields each; gives how many.
    virtual int WriteContacts(int count) = 0;
};

/// Calls the script functions of the plug-in.
class PluginClient final : public Client {
public:
    /// Loads the plug-in beside this program.
    explicit PluginClient(standin::Recorder& watch);

    int WalkInbox() override;
    int WriteContacts(int count) override;

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
    int WriteContacts(int count) override;

private:
    class Session;
    std::unique_ptr<Session> m_session;
};

} // namespace varden::bench
