// The outer form of every function: counts, arguments, answers, hooks, the last error.
#include "ScriptTest.h"

#include <algorithm>

namespace varden::tests {
namespace {

class CallTest : public ScriptTest {
protected:
    /// The host operations of one call, without their statuses.
    std::vector<std::wstring> Operations(const wchar_t* function, const Texts& arguments) {
        Varden().Watch().Reset();
        Varden().Watch().KeepLines(true);
        Call(function, arguments);
        Varden().Watch().KeepLines(false);
        return Varden().Watch().Lines();
    }
};

TEST_F(CallTest, AWrongCountOfArgumentsFetchesNothingAndSetsNoHook) {
    const std::vector<std::pair<const wchar_t*, Texts>> calls{
        {L"VARD_SetFieldData", {L"Subject"}},
        {L"VARD_SetFieldData", {L"Subject", L"x", L"y"}},
        {L"VARD_GetFirstRecord", {L"x"}},
        {L"VARD_OpenFolder", {}},
        {L"VARD_AddAttachment", {L"C:\\file.txt"}}, // the host lets these two through
        {L"VARD_SaveAttachment", {L"C:\\file.txt"}},
        {L"VARD_SendMail", {L"a", L"b", L"c", L"d", L"e"}},
        {L"VARD_GetLastError", {L"Text", L"more"}},
    };
    for (const auto& [function, arguments] : calls) {
        const int hooks = HookSpy::Set();
        const auto operations = Operations(function, arguments);
        EXPECT_TRUE(std::ranges::none_of(operations, [](const std::wstring& line) {
            return line.find(L"AtAs") != std::wstring::npos;
        })) << testing::PrintToString(operations);
        EXPECT_EQ(HookSpy::Set(), hooks);
        ExpectFailure(function, arguments, -3, L"Invalid Number of Parameters");
    }
}

TEST_F(CallTest, TheAnswerIsATextInTheLocaleOfTheHostsResult) {
    Varden().Host().SetLocale(0x0407);
    const auto answer = Varden().Host().Call(L"VARD_Version", {L"short"});
    EXPECT_EQ(answer.text, L"7.0.0.0");
    EXPECT_EQ(answer.nativeType, 1);
    EXPECT_EQ(answer.locale, 0x0407u);
    EXPECT_EQ(answer.error, 0);
}

TEST_F(CallTest, VersionAnswersWithoutASession) {
    EXPECT_EQ(Call(L"VARD_Version"), L"Varden 7.0.0.0 64 bit");
    EXPECT_EQ(Call(L"VARD_Version", {L"Short"}), L"7.0.0.0");
    EXPECT_EQ(Call(L"VARD_Version", {L"shorter"}), L"Varden 7.0.0.0 64 bit");
    for (const wchar_t* yes : {L"TRUE", L"1", L"yes", L"oN", L"y"}) {
        EXPECT_EQ(Call(L"VARD_Version", {L"SHORT", yes}), L"007.000.000.000") << testing::PrintToString(yes);
        EXPECT_EQ(Call(L"VARD_Version", {L"", yes}), L"Varden 007.000.000.000 64 bit");
    }
    for (const wchar_t* no : {L"FALSE", L"0", L"no", L"N", L"off", L"2", L"T", L"true ", L"", L"ye"}) {
        EXPECT_EQ(Call(L"VARD_Version", {L"SHORT", no}), L"7.0.0.0") << testing::PrintToString(no);
    }
    EXPECT_EQ(LastErrorText(), L""); // it leaves the record alone
}

TEST_F(CallTest, InputIsBlockedWhileTheEngineWorksAndOnlyThen) {
    Call(L"VARD_GetFirstRecord");
    EXPECT_EQ(HookSpy::Set(), 2);
    EXPECT_EQ(HookSpy::Held(), 0);
    EXPECT_EQ(HookSpy::Module(WH_KEYBOARD), nullptr);
    EXPECT_EQ(HookSpy::Module(WH_MOUSE), Varden().Module());
    for (const wchar_t* without : {L"VARD_Version", L"VARD_OutlookVersion", L"VARD_GetAttachmentSize",
                                   L"VARD_OpenSavedItem", L"VARD_RPClearRecurrencePattern"}) {
        Call(without, {});
    }
    Call(L"VARD_FilterByLastModified", {L"11/15/2026 3:45 PM"});
    EXPECT_EQ(HookSpy::Set(), 2);
}

TEST_F(CallTest, HooksSwallowOnlyLooksAtTheQueueAndKeysGoingDown) {
    Call(L"VARD_GetFirstRecord");
    const HOOKPROC keyboard = HookSpy::Procedure(WH_KEYBOARD);
    const HOOKPROC mouse = HookSpy::Procedure(WH_MOUSE);
    ASSERT_TRUE(keyboard && mouse);
    constexpr LPARAM down = 0x001E0001;
    constexpr LPARAM lastDown = 0x7FFFFFFF;
    constexpr LPARAM up = 0xC01E0001;
    EXPECT_EQ(keyboard(HC_NOREMOVE, 'A', down), 1);
    EXPECT_EQ(keyboard(HC_NOREMOVE, 'A', lastDown), 1);
    EXPECT_EQ(keyboard(HC_NOREMOVE, 'A', up), 0);
    EXPECT_EQ(keyboard(HC_ACTION, 'A', down), 0);
    EXPECT_EQ(mouse(HC_NOREMOVE, WM_LBUTTONDOWN, 0), 1);
    EXPECT_EQ(mouse(HC_ACTION, WM_LBUTTONDOWN, 0), 0);
}

/// The file with every function, so that none can be forgotten.
class SessionlessTest : public ScriptTest {
protected:
    SessionlessTest() : ScriptTest(kFullPlugin) {}
};

TEST_F(SessionlessTest, EveryOperationNeedsASession) {
    const std::vector<std::wstring> without{L"VARD_Version",
                                            L"VARD_Authenticate",
                                            L"VARD_GetLastError",
                                            L"VARD_OutlookVersion",
                                            L"VARD_RPCloseRecurrencePattern",
                                            L"VARD_RPCloseOccurrenceItem",
                                            L"VARD_LogSet",
                                            L"VARD_LogClear",
                                            L"VARD_LogMoveToDesktop",
                                            L"VARD_ItemExist"};
    constexpr std::int16_t setStoreOnline = 219;
    std::size_t tested = 0;
    for (const auto& function : Varden().Host().Functions()) {
        if (std::ranges::find(without, function.name) != without.end() || function.id == setStoreOnline) {
            continue;
        }
        const auto count = static_cast<std::size_t>(std::max(function.minimum, function.maximum));
        ExpectFailure(function.name.c_str(), Texts(count, L"C:\\1"), -1001,
                      L"Outlook not started or Authenticate not called");
        ++tested;
    }
    EXPECT_EQ(tested + without.size() + 1, Varden().Host().Functions().size());
    for (const wchar_t* close : {L"VARD_RPCloseRecurrencePattern", L"VARD_RPCloseOccurrenceItem"}) {
        EXPECT_EQ(Call(close, {L"1"}), L"0"); // nothing is open
    }
}

TEST_F(CallTest, ArgumentsThatAreMissingOrComeFromAFailedCallNeverReachTheEngine) {
    for (const wchar_t* function : {L"VARD_OpenRootFolder", L"VARD_OpenFolder", L"VARD_GetFieldData"}) {
        ExpectFailure(function, {L""}, -4, L"Invalid Parameter value(s)");
    }
    ExpectFailure(L"VARD_VerifyFieldData", {L"Subject", L""}, -4, L"Invalid Parameter value(s)");
    ExpectFailure(L"VARD_VerifyFieldData", {L"", L"x"}, -4, L"Invalid Parameter value(s)");
    ExpectFailure(L"VARD_OpenRootFolder", {kError}, -1017, L"Malformed or invalid root folder name");
    ExpectFailure(L"VARD_OpenRootFolder", {L"!!error!!"}, -1001,
                  L"Outlook not started or Authenticate not called");
}

TEST_F(CallTest, TheLastErrorIsReadAsTextOrAsNumberAndStays) {
    EXPECT_EQ(LastErrorText(), L"");
    EXPECT_EQ(LastErrorCode(), 0);
    Call(L"VARD_GetFolderID");
    for (const wchar_t* text : {L"", L"Text", L"TEXT"}) {
        EXPECT_EQ(Call(L"VARD_GetLastError", {text}), L"Outlook not started or Authenticate not called");
    }
    for (const wchar_t* number : {L"Number", L"code", L"text ", L"x"}) {
        EXPECT_EQ(Call(L"VARD_GetLastError", {number}), L"-1001");
    }
}

TEST_F(CallTest, AComFailureLeavesItsWordsAndNoCodeAndAnyOtherExceptionOneText) {
    EXPECT_EQ(Call(L"VARD_OutlookVersion"), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_TRUE(LastErrorText().starts_with(L"Error: 80004003\nMessage:"))
        << testing::PrintToString(LastErrorText());
    EXPECT_TRUE(LastErrorText().ends_with(L"\nSource:\nDesc:"));
    // The code of an earlier failure stays, since nothing cleared it.
    Call(L"VARD_GetFolderID");
    Call(L"VARD_OutlookVersion");
    EXPECT_EQ(LastErrorCode(), -1001);
    ExpectFailure(L"VARD_FilterByLastModified", {L""}, 1, L"Unhandled exception in function");
}

/// What the host does to a plug-in whose calls into it fail, one after the other.
TEST_F(CallTest, AFailingHostGetsItsOwnFailureWhileArgumentsAreFetchedAndNothingElse) {
    const auto isFetch = [](const std::wstring& line) {
        return line.find(L"FM_DataVect::") != std::wstring::npos ||
               line.find(L"GetSize") != std::wstring::npos || line.find(L"GetUnicode") != std::wstring::npos;
    };
    const auto operations = Operations(L"VARD_SetFieldData", {L"Subject", L"x"});
    ASSERT_GT(operations.size(), 8u);
    for (const HRESULT code : {1, 2}) {
        for (std::size_t i = 0; i < operations.size(); ++i) {
            Varden().Watch().FailCall(i + 1, code, {standin::Side::FileMaker});
            bool raised = false;
            try {
                EXPECT_EQ(Varden().Host().CallUnchecked(L"VARD_SetFieldData", {L"Subject", L"x"}).error, 0);
            } catch (...) {
                raised = true;
            }
            EXPECT_TRUE(Varden().Watch().HasFailed());
            EXPECT_EQ(raised, isFetch(operations[i])) << testing::PrintToString(operations[i]);
            EXPECT_EQ(HookSpy::Held(), 0);
            Varden().Watch().Reset();
        }
    }
    EXPECT_EQ(Call(L"VARD_Version", {L"short"}), L"7.0.0.0");
}

} // namespace
} // namespace varden::tests
