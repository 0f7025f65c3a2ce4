// Logging on and off: each way in which it fails, and that a failure leaves nothing half open.
#include "ScriptTest.h"

#include <functional>

namespace varden::tests {
namespace {

using standin::outlook::Control;
using standin::outlook::Registration;

class SessionTest : public ScriptTest {
protected:
    void ExpectNoSession() {
        EXPECT_EQ(Call(L"VARD_OpenFolder", {L"/Inbox"}), kError);
        EXPECT_EQ(LastErrorCode(), -1001);
    }
    void ExpectWorkingSession() {
        EXPECT_EQ(Call(L"VARD_Authenticate", {L"Outlook"}), L"0");
        EXPECT_EQ(Call(L"VARD_OpenFolder", {L"/Inbox"}), L"0");
    }
};

TEST_F(SessionTest, ALogonNeedsTheDefaultProfileOnlyAndOpensTheDefaultStoresRootFolder) {
    const std::vector<Texts> logons{{}, {L"Outlook"}, {L"Outlook", L"any password"}};
    for (const Texts& arguments : logons) {
        EXPECT_EQ(Call(L"VARD_Authenticate", arguments), L"0");
        EXPECT_EQ(LastErrorText(), L"Success");
        EXPECT_EQ(LastErrorCode(), 0);
        EXPECT_EQ(Call(L"VARD_OutlookVersion"), L"16.0.17328.20004");
        EXPECT_EQ(Call(L"VARD_OpenFolder", {L"/Inbox"}), L"0");
        EXPECT_EQ(Call(L"VARD_GetDefaultFolderName", {L"root"}), L"Front Desk");
    }
}

TEST_F(SessionTest, ASecondLogonReplacesTheSessionAndLeavesTheFirstStanding) {
    LogOn();
    Call(L"VARD_OpenFolder", {L"/Inbox"});
    Varden().Watch().KeepLines(true);
    LogOn();
    Varden().Watch().KeepLines(false);
    for (const std::wstring& line : Varden().Watch().Lines()) {
        EXPECT_EQ(line.find(L"NameSpace::Logoff"), std::wstring::npos);
    }
    ExpectFailure(L"VARD_GetFolderType", {}, -1026, L"Must navigate to a folder before operation");
    EXPECT_EQ(Call(L"VARD_OpenFolder", {L"/Inbox"}), L"0");
}

TEST_F(SessionTest, OutlookVersionsUpTo16AreSupported) {
    for (const wchar_t* version : {L"16.0.17328.20004", L"16", L"15.0.1.2", L"14.0", L"12.0.6", L"11.0.1"}) {
        Outlook().SetVersionText(version);
        EXPECT_EQ(Call(L"VARD_Authenticate", {L"Outlook"}), L"0") << testing::PrintToString(version);
    }
    for (const wchar_t* version : {L"17.0.1", L"17", L"20.1", L"160.0"}) {
        Outlook().SetVersionText(version);
        ExpectFailure(L"VARD_Authenticate", {L"Outlook"}, -1002,
                      L"This Version of Outlook is not supported.");
        ExpectNoSession();
    }
}

std::function<void(Plugin&)> Failing(const wchar_t* member, HRESULT status) {
    return [=](Plugin& plugin) { plugin.Watch().FailMember(member, status); };
}

std::function<void(Plugin&)> Switching(void (Control::*switchOn)(bool)) {
    return [=](Plugin& plugin) { (plugin.Outlook().*switchOn)(true); };
}

TEST_F(SessionTest, ALogonThatFailsIsToldAndLeavesNoSession) {
    struct LogonFailure {
        std::function<void(Plugin&)> arrange;
        int code;
        const wchar_t* text;
    };
    const LogonFailure failures[]{
        {Switching(&Control::WithholdNamespace), -200, L"Library failed to load\rMAPI Load Failed"},
        {[](Plugin& plugin) { plugin.Outlook().RefuseLogon(MAPI_E_LOGON_FAILED); }, -1000,
         L"Outlook Logon Failed\r-1001 UNABLE TO Logon 0x80040111"},
        {Failing(L"MAPI32::MAPIInitialize", MAPI_E_VERSION), -1000,
         L"Outlook Logon Failed\rError: 80040110\rMAPI_E_VERSION"},
        {Switching(&Control::WithholdMapiObject), -1000, L"Outlook Logon Failed\rError creating IUnknown"},
        {Failing(L"IMAPISession::QueryInterface", E_NOINTERFACE), -1000,
         L"Outlook Logon Failed\rError: 80004002\rMAPI_E_INTERFACE_NOT_SUPPORTED"},
        {Failing(L"IMAPISession::GetMsgStoresTable", E_ACCESSDENIED), -1000,
         L"Outlook Logon Failed\rUnable to get message stores table"},
        {Failing(L"NameSpace::GetDefaultFolder", MAPI_E_NOT_FOUND), -1000,
         L"Outlook Logon Failed\rError: 8004010F\rUnable to open Inbox"},
    };
    for (const auto& [arrange, code, text] : failures) {
        SCOPED_TRACE(testing::PrintToString(text));
        arrange(Varden());
        ExpectFailure(L"VARD_Authenticate", {L"Outlook"}, code, text);
        const auto live = Outlook().Live();
        EXPECT_EQ(live.outlookObjects, 0);
        EXPECT_EQ(live.mapiObjects, 0);
        EXPECT_EQ(live.mapiBuffers, 0);
        ExpectNoSession();
        Outlook().Reset();
        Varden().Watch().Reset();
        ExpectWorkingSession();
    }
}

TEST_F(SessionTest, NeitherTheDefaultStoreNorPublicFoldersAreNeeded) {
    for (const wchar_t* member :
         {L"IMAPISession::OpenMsgStore", L"IMAPITable::SetColumns", L"MAPI32::HrQueryAllRows"}) {
        Varden().Watch().FailMember(member, E_FAIL);
        EXPECT_EQ(Call(L"VARD_Authenticate", {L"Outlook"}), L"0");
        EXPECT_TRUE(Varden().Watch().HasFailed()) << testing::PrintToString(member);
    }
    World().DefaultStore()->SetRowWithoutEntryId(true);
    EXPECT_EQ(Call(L"VARD_Authenticate", {L"Outlook"}), L"0");
    constexpr std::uint64_t forPublicFolders = 2;
    Varden().Watch().FailMember(L"NameSpace::GetDefaultFolder", MAPI_E_NOT_FOUND, forPublicFolders);
    EXPECT_EQ(Call(L"VARD_Authenticate", {L"Outlook"}), L"0");
    EXPECT_TRUE(Varden().Watch().HasFailed());
}

TEST_F(SessionTest, AComFailureInTheMiddleLeavesNoSession) {
    for (const wchar_t* member :
         {L"Application::Version", L"Application::GetNamespace", L"NameSpace::MAPIOBJECT"}) {
        Varden().Watch().FailMember(member, E_ACCESSDENIED);
        EXPECT_EQ(Call(L"VARD_Authenticate", {L"Outlook"}), kError);
        EXPECT_EQ(LastErrorCode(), 0);
        EXPECT_TRUE(LastErrorText().starts_with(L"Error: 80070005\nMessage:"));
        EXPECT_NE(LastErrorText().find(L"\nSource:Microsoft Outlook\nDesc:"), std::wstring::npos)
            << testing::PrintToString(LastErrorText());
        ExpectNoSession();
    }
    ExpectWorkingSession();
}

/// Machines with other Outlooks, or none. Each needs the registry to itself.
class MachineTest : public testing::Test {
protected:
    std::wstring LogOnWith(std::vector<std::wstring> programIds, std::wstring* failure = nullptr) {
        const Registration registration(std::move(programIds));
        Plugin plugin;
        std::wstring answer = plugin.Call(L"VARD_Authenticate", {L"Outlook"});
        if (failure) {
            *failure = plugin.LastErrorText();
            EXPECT_EQ(plugin.LastErrorCode(), -200);
        }
        plugin.End();
        return answer;
    }
};

TEST_F(MachineTest, AnyOfTheProgramIdsWillDo) {
    for (const wchar_t* id : {L"Outlook.Application.16", L"Outlook.Application.15", L"Outlook.Application.14",
                              L"Outlook.Application.12", L"Outlook.Application.11", L"Outlook.Application"}) {
        EXPECT_EQ(LogOnWith({id}), L"0") << testing::PrintToString(id);
    }
}

TEST_F(MachineTest, WithoutOutlookTheLastAttemptsStatusIsTold) {
    std::wstring failure;
    EXPECT_EQ(LogOnWith({}, &failure), kError);
    EXPECT_EQ(failure, L"Library failed to load\rError 0x800401f3");
}

} // namespace
} // namespace varden::tests
