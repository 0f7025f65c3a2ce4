// The jobs in script functions.
#include "PluginClient.h"

#include "Fields.h"

#include <stdexcept>

namespace varden::bench {

namespace {

std::wstring FileBeside(const wchar_t* name) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program = path;
    return program.substr(0, program.rfind(L'\\') + 1) + name;
}

} // namespace

PluginClient::PluginClient(standin::Recorder& watch) : m_host(watch) {
    if (!m_host.Load(FileBeside(L"VardenBridge.fmx64")).empty()) {
        throw std::runtime_error("the plug-in can't be loaded");
    }
    m_host.Init();
}

std::wstring PluginClient::Call(const wchar_t* function, std::initializer_list<std::wstring> arguments) {
    std::wstring answer = m_host.Call(function, {arguments.begin(), arguments.end()}).text;
    if (answer == L"!!ERROR!!") {
        const std::wstring reason =
            std::wstring(function) + L" failed: " + m_host.Call(L"VARD_GetLastError", {}).text;
        throw std::runtime_error(std::string(reason.begin(), reason.end()));
    }
    return answer;
}

void PluginClient::LogOn() {
    Call(L"VARD_Authenticate", {L"Outlook"});
}

int PluginClient::WalkInbox(int most) {
    Call(L"VARD_OpenFolder", {L"/Inbox"});
    int count = 0;
    for (std::wstring id = Call(L"VARD_GetFirstRecord"); id != L"End" && count < most;
         id = Call(L"VARD_GetNextRecord")) {
        for (const wchar_t* field : {L"Subject", L"From", L"Received Time", L"Importance", L"Body"}) {
            Call(L"VARD_GetFieldData", {field});
        }
        ++count;
    }
    return count;
}

int PluginClient::SendMails(int count, const std::wstring& attachment) {
    for (int i = 0; i < count; ++i) {
        Call(L"VARD_SendMail", {kAddressee, L"", L"", kSomeText, kSomeText, attachment});
    }
    return count;
}

int PluginClient::WriteContacts(int count) {
    Call(L"VARD_OpenFolder", {L"/Contacts"});
    for (int i = 0; i < count; ++i) {
        Call(L"VARD_NewRecord", {L"Contacts"});
        for (const Field& field : kContactFields) {
            Call(L"VARD_SetFieldData", {field.name, kSomeText});
        }
        Call(L"VARD_SaveRecord");
    }
    return count;
}

int PluginClient::WriteCustomFields(int count) {
    Call(L"VARD_OpenFolder", {L"/Contacts"});
    for (int i = 0; i < count; ++i) {
        Call(L"VARD_NewRecord", {L"Contacts"});
        for (int field = 0; field < kCustomFields; ++field) {
            Call(L"VARD_SetCustomFieldData", {CustomFieldName(field), kSomeText});
        }
        Call(L"VARD_SaveRecord");
    }
    return count;
}

int PluginClient::ReadPattern(int rounds) {
    for (int i = 0; i < rounds; ++i) {
        Call(L"VARD_RPOpenRecurrencePattern");
        for (const Field& field : kPatternFields) {
            Call(L"VARD_GetFieldData", {field.name});
        }
        std::wstring answer = Call(L"VARD_RPOpenFirstException");
        while (answer != L"End") {
            answer = Call(L"VARD_RPOpenNextException");
        }
        Call(L"VARD_RPCloseRecurrencePattern");
    }
    return rounds;
}

} // namespace varden::bench
