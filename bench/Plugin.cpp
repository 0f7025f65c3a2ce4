// The plug-in's side of the jobs.
#include "Clients.h"

#include <array>
#include <stdexcept>

namespace varden::bench {

namespace {

constexpr std::array kFields{L"Subject", L"From", L"Received Time", L"Importance", L"Body"};

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
        throw std::runtime_error("a script function failed");
    }
    return answer;
}

void PluginClient::LogOn() {
    Call(L"VARD_Authenticate", {L"Outlook"});
}

int PluginClient::WalkInbox() {
    Call(L"VARD_OpenFolder", {L"/Inbox"});
    int count = 0;
    for (std::wstring id = Call(L"VARD_GetFirstRecord"); id != L"End"; id = Call(L"VARD_GetNextRecord")) {
        for (const wchar_t* field : kFields) {
            Call(L"VARD_GetFieldData", {field});
        }
        ++count;
    }
    return count;
}

int PluginClient::WriteContacts(int count) {
    Call(L"VARD_OpenFolder", {L"/Contacts"});
    for (int i = 0; i < count; ++i) {
        Call(L"VARD_NewRecord", {L"Contacts"});
        for (const ContactField& field : kContactFields) {
            Call(L"VARD_SetFieldData", {field.name, L"Some text"});
        }
        Call(L"VARD_SaveRecord");
    }
    return count;
}

} // namespace varden::bench
