// Hosting a plug-in: loading, messages, registration, calls.
#include "Places.h"
#include "standin/filemaker/Host.h"

#include <windows.h>

#include <gtest/gtest.h>

using namespace standin;
using namespace standin::filemaker;

namespace {

class Hosting : public testing::Test {
protected:
    void Start() {
        ASSERT_EQ(m_host.Load(TestPluginFile()), L"");
        ASSERT_EQ(m_host.Init(), 53);
    }

    Recorder m_watch;
    Host m_host{m_watch};
};

TEST_F(Hosting, LoadingTellsWhyItFails) {
    const TemporaryFile noLibrary("no library", L".fmx64");
    for (const std::wstring& file :
         {noLibrary.Path(), BesideTests(L"missing.fmx64"), BesideTests(L"FMWrapper.dll")}) {
        const std::wstring problem = m_host.Load(file);
        EXPECT_EQ(problem.substr(0, problem.find(L": ")), file);
        EXPECT_GT(problem.size(), file.size() + 2);
    }
    EXPECT_THROW(m_host.Init(), CallRefused);
}

/// The options of the test plug-in, for as long as it lasts.
class OptionsToHave {
public:
    explicit OptionsToHave(const wchar_t* options) {
        SetEnvironmentVariableW(L"TEST_PLUGIN_OPTIONS", options);
    }
    ~OptionsToHave() { SetEnvironmentVariableW(L"TEST_PLUGIN_OPTIONS", nullptr); }
    OptionsToHave(const OptionsToHave&) = delete;
    OptionsToHave& operator=(const OptionsToHave&) = delete;
};

TEST_F(Hosting, ThePluginGetsTheMessagesThatItsOptionsAskFor) {
    for (const wchar_t* options : {L"TEST", L"TEST1YnYYn", L"TESTYYnYYnn", L"TEST1YnYYnnn"}) {
        const OptionsToHave wanted(options);
        EXPECT_NE(m_host.Load(TestPluginFile()), L"") << options;
    }
    {
        const OptionsToHave none(L"TEST1nnnnnn");
        Host silent(m_watch);
        ASSERT_EQ(silent.Load(TestPluginFile()), L"");
        EXPECT_EQ(silent.Init(), 0);
        EXPECT_TRUE(silent.Functions().empty());
        silent.Idle(9); // the test plug-in breaks a rule when it is idle
    }
    EXPECT_TRUE(m_watch.Violations().empty());
    const OptionsToHave foreign(L"ELSE1nnYnnn");
    ASSERT_EQ(m_host.Load(TestPluginFile()), L"");
    EXPECT_EQ(m_host.Init(60), 0) << "a plug-in that says nothing";
    EXPECT_THROW(m_host.CallUnchecked(L"TP_Calls"), CallRefused);
    EXPECT_EQ(m_host.Init(), 53);
    EXPECT_EQ(m_watch.Violations().size(), 11U) << "functions under another plug-in's id";
}

TEST_F(Hosting, InitHandsTheVersionOverAndGivesAllBitsOfTheResult) {
    ASSERT_EQ(m_host.Load(TestPluginFile()), L"");
    EXPECT_EQ(m_host.Init(49), -1);
    EXPECT_TRUE(m_host.Functions().empty());
    EXPECT_EQ(m_host.Init(50), 53);
    EXPECT_FALSE(m_host.Functions().empty());
    EXPECT_TRUE(m_watch.Violations().empty());
    EXPECT_EQ(m_host.Init(61), 53);
    ASSERT_EQ(m_watch.Violations().size(), 1U) << "names of functions are taken once";
    EXPECT_NE(m_watch.Violations().front().find(L"a second function tp_ECHO"), std::wstring::npos);
}

TEST_F(Hosting, RegistrationIsKeptInOrderUntilItIsTakenBack) {
    Start();
    ASSERT_EQ(m_host.Functions().size(), 11U);
    const RegisteredFunction& echo = m_host.Functions().front();
    EXPECT_EQ(echo.pluginId, "TEST");
    EXPECT_EQ(echo.id, 11);
    EXPECT_EQ(echo.name, L"TP_Echo");
    EXPECT_EQ(echo.prototype, L"TP_Echo( text ; optMore )");
    EXPECT_EQ(echo.minimum, 1);
    EXPECT_EQ(echo.maximum, 2);
    EXPECT_EQ(echo.flags, 0xFF01U);
    EXPECT_EQ(m_host.Functions().back().id, 21);

    m_host.Init();
    EXPECT_EQ(m_host.Functions().size(), 11U) << "the second registration takes the place of the first";
    m_host.Shutdown();
    EXPECT_EQ(m_host.Unregistered(), (std::vector<std::int16_t>{10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}));
    ASSERT_EQ(m_host.Functions().size(), 1U);
    EXPECT_EQ(m_host.LeftRegistered(), std::vector<std::int16_t>{21});
    EXPECT_EQ(m_host.Call(21, {L"late"}).text, L"late");
    EXPECT_TRUE(m_watch.Violations().empty());
    EXPECT_EQ(m_host.LiveObjects(), 0U);
}

TEST_F(Hosting, CallsGoByNameAndByIdWithinTheRegisteredCounts) {
    Start();
    m_host.SetLocale(0x0407);
    const Answer answer = m_host.Call(L"tp_ECHO", {L"grün \xD83D\xDE00"});
    EXPECT_EQ(answer.error, 0);
    EXPECT_EQ(answer.text, L"grün \xD83D\xDE00");
    EXPECT_EQ(answer.nativeType, 1);
    EXPECT_EQ(answer.locale, 0x0407U);
    EXPECT_EQ(m_host.Call(21, {L"nameless"}).text, L"nameless");
    EXPECT_EQ(m_host.Call(L"TP_Kinds", {L"3.9 x", 2, true, L""}).text, L"[3.9 x|3|1][2|2|1][1|1|1][|0|0]");
    EXPECT_EQ(m_host.Call(L"TP_AnswerError").error, 5);

    EXPECT_THROW(m_host.Call(L"", {L"x"}), CallRefused);
    EXPECT_THROW(m_host.Call(99), CallRefused);
    EXPECT_THROW(m_host.Call(L"TP_Echo"), CallRefused);
    EXPECT_THROW(m_host.Call(L"TP_Echo", {1, 2, 3}), CallRefused);
    EXPECT_EQ(m_host.Call(L"TP_Calls").text, L"2") << "a refused call reached the plug-in";
    EXPECT_EQ(m_host.CallUnchecked(L"TP_Echo").text, L"");
    EXPECT_EQ(m_host.Call(L"TP_Calls").text, L"3");
    EXPECT_TRUE(m_watch.Violations().empty());
}

TEST_F(Hosting, ExceptionsPassThroughAndLeaveNothingBehind) {
    Start();
    try {
        m_host.Call(L"TP_Throw", {L"error"});
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "broken");
    }
    EXPECT_THROW(m_host.Call(L"TP_Throw", {L"number"}), int);
    EXPECT_EQ(m_host.LiveObjects(), 0U);
    EXPECT_TRUE(m_watch.Violations().empty());
    EXPECT_EQ(m_host.Call(L"TP_UseLateArguments").text, L"0");
    EXPECT_EQ(m_watch.Violations().size(), 1U) << "the arguments of the call that threw are still alive";
}

TEST_F(Hosting, LeaksAndBrokenRulesAreSeen) {
    Start();
    EXPECT_EQ(m_host.Call(L"TP_LeakText").text, L"leaked");
    EXPECT_EQ(m_host.LiveObjects(), 1U);
    EXPECT_TRUE(m_watch.Violations().empty());
    EXPECT_EQ(m_host.Call(L"TP_DeleteTwice").text, L"survived");
    EXPECT_EQ(m_watch.Violations().size(), 1U);
    m_host.Idle(0);
    EXPECT_EQ(m_watch.Violations().size(), 1U);
    m_host.Idle(9); // the test plug-in writes the level over the version
    EXPECT_EQ(m_watch.Violations().size(), 2U);
    m_host.AppPreferences();
    m_host.Send(200);
    EXPECT_EQ(m_watch.Violations().size(), 2U);
}

TEST_F(Hosting, APluginThatIsGoneLeavesNothingToTheNext) {
    {
        Host former(m_watch);
        ASSERT_EQ(former.Load(TestPluginFile()), L"");
        former.Init();
        former.Call(L"TP_LeakText");
    }
    EXPECT_EQ(m_host.LiveObjects(), 0U);
    EXPECT_TRUE(m_host.Functions().empty());
}

TEST_F(Hosting, TextsAreAskedForWithAGuardedBuffer) {
    Start();
    EXPECT_EQ(m_host.GetString(1).text, L"a plug-in");
    EXPECT_EQ(m_host.GetString(1).written, 10U);
    const StringAnswer cut = m_host.GetString(1, 4);
    EXPECT_EQ(cut.text, L"a p");
    EXPECT_EQ(cut.written, 4U);
    EXPECT_EQ(m_host.GetString(3).written, 0U);
    EXPECT_EQ(m_host.GetString(2, 9).text, L"a plug-in");
    EXPECT_TRUE(m_watch.Violations().empty());
    EXPECT_EQ(m_host.GetString(2, 8).text, L"a plug-i");
    EXPECT_EQ(m_watch.Violations().size(), 1U);
}

TEST_F(Hosting, EveryCallIntoFileMakerIsTracedAndCanFail) {
    Start();
    m_watch.Reset();
    m_watch.KeepLines(true);
    m_host.Call(L"TP_Echo", {L"x"});
    const auto lines = m_watch.Lines();
    EXPECT_EQ(lines, (std::vector<std::wstring>{
                         L"FM FM_DataVect::AtAsText 00000000", L"FM FM_Text::GetSize 00000000",
                         L"FM FM_Text::GetUnicode 00000000", L"FM FM_Text::Constructor1 00000000",
                         L"FM FM_Text::AssignUnicode 00000000", L"FM FM_Data::GetLocale 00000000",
                         L"FM FM_Data::SetAsText 00000000", L"FM FM_Text::Delete 00000000"}));
    // The test plug-in raises for every failure but that of a Delete.
    for (std::size_t number = 1; number < lines.size(); ++number) {
        m_watch.FailCall(number, HRESULT{1}, {Side::FileMaker});
        EXPECT_THROW(m_host.Call(L"TP_Echo", {L"x"}), std::runtime_error) << number;
        EXPECT_TRUE(m_watch.HasFailed());
    }
    EXPECT_TRUE(m_watch.Violations().empty());
}

} // namespace
