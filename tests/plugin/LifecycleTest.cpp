// Start and end of the plug-in, its registration with the host, the texts that the host asks for.
#include "ScriptTest.h"

#include <objidl.h>

#include <limits>
#include <map>
#include <numeric>

namespace varden::tests {
namespace {

using standin::Recorder;
using standin::filemaker::Host;

/// A loaded plug-in that has had no Init yet.
class LifecycleTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(m_host.Load(FileBeside(kShippedPlugin)), L""); }

    Host& FileMaker() { return m_host; }
    Recorder& Watch() { return m_recorder; }

private:
    standin::outlook::Registration m_registration;
    Recorder m_recorder;
    Host m_host{m_recorder};
};

TEST_F(LifecycleTest, WorksWithTheHostsInterfaceVersionsFrom50To255) {
    const std::map<std::int16_t, std::int64_t> results{
        {49, -1},  {50, 53}, {62, 53}, {255, 53},
        {256, -1}, {0, -1},  {-1, -1}, {std::numeric_limits<std::int16_t>::min(), -1},
    };
    for (const auto& [version, result] : results) {
        Recorder recorder;
        Host host(recorder);
        ASSERT_EQ(host.Load(FileBeside(kShippedPlugin)), L"");
        EXPECT_EQ(host.Init(version), result) << version;
        EXPECT_EQ(host.Functions().size(), result == 53 ? 56u : 0u) << version;
    }
}

TEST_F(LifecycleTest, TheHostGetsItsTextsWithinTheBufferItGives) {
    EXPECT_EQ(FileMaker().GetString(131).text, L"VARD1nnYnnn");
    EXPECT_EQ(FileMaker().GetString(1).text, L"VARD1nnYnnn");
    EXPECT_EQ(FileMaker().GetString(128).text, L"VARD Varden v7.0.0.0");
    const std::wstring description = FileMaker().GetString(129).text;
    EXPECT_TRUE(description.starts_with(
        L"This plug-in pushes and pulls data between FileMaker Pro and Microsoft\u00ae Outlook.\n"));
    EXPECT_EQ(std::count(description.begin(), description.end(), L'\n'), 2);
    EXPECT_EQ(FileMaker().GetString(128, 5).text, L"VARD");
    EXPECT_EQ(FileMaker().GetString(130).text, L"");
}

TEST_F(LifecycleTest, OtherMessagesDoNothing) {
    for (const std::uint8_t message : {1, 2, 3, 5, 6, 8, 255}) {
        FileMaker().Send(message);
    }
    EXPECT_EQ(Watch().Calls(standin::Side::FileMaker), 0u);
}

TEST_F(LifecycleTest, RegistersUnderTheNamesThatScriptsUse) {
    FileMaker().Init();
    for (const auto& function : FileMaker().Functions()) {
        EXPECT_EQ(function.pluginId, "VARD");
        EXPECT_EQ(function.flags, 0xFF01u);
        EXPECT_NE(function.function, nullptr);
        EXPECT_EQ(function.name, function.prototype.substr(0, function.prototype.find(L'(')));
    }
    const auto* shared = FileMaker().Find(std::int16_t{183});
    ASSERT_NE(shared, nullptr);
    EXPECT_EQ(shared->prototype, L"VARD_OpenSharedFolder( ContactName ; Folder ) ");
    EXPECT_EQ(shared->name, L"VARD_OpenSharedFolder");
    const auto* nameless = FileMaker().Find(std::int16_t{219});
    ASSERT_NE(nameless, nullptr);
    EXPECT_EQ(nameless->name, L"");
    EXPECT_EQ(nameless->prototype, L"");
}

TEST_F(LifecycleTest, ShutdownUnregistersTheWholeRangeAndLeavesOneFunction) {
    FileMaker().Init();
    FileMaker().Shutdown();
    std::vector<std::int16_t> expected(218 - 148 + 1);
    std::iota(expected.begin(), expected.end(), std::int16_t{148});
    EXPECT_EQ(FileMaker().Unregistered(), expected);
    ASSERT_EQ(FileMaker().Functions().size(), 1u);
    EXPECT_EQ(FileMaker().Functions().front().id, 219);
    EXPECT_EQ(FileMaker().Call(std::int16_t{219}, {L"on"}).text, L"!!ERROR!!");
}

TEST_F(LifecycleTest, BusyOutlookRaisesNoDialogWhileThePluginLives) {
    FileMaker().Init();
    IMessageFilter* filter = nullptr;
    ASSERT_EQ(CoRegisterMessageFilter(nullptr, &filter), S_OK);
    ASSERT_NE(filter, nullptr);
    EXPECT_GE(filter->RetryRejectedCall(nullptr, 60000, SERVERCALL_RETRYLATER), 100u);
    EXPECT_EQ(filter->RetryRejectedCall(nullptr, 0, SERVERCALL_REJECTED), static_cast<DWORD>(-1));
    EXPECT_EQ(filter->MessagePending(nullptr, 0, 0), static_cast<DWORD>(PENDINGMSG_WAITDEFPROCESS));
    CoRegisterMessageFilter(filter, nullptr);
    filter->Release();
    FileMaker().Shutdown();
    CoInitialize(nullptr);
    EXPECT_EQ(CoRegisterMessageFilter(nullptr, &filter), S_OK);
    EXPECT_EQ(filter, nullptr);
    CoUninitialize();
}

TEST_F(LifecycleTest, ASecondInitWithoutShutdownStartsAnew) {
    FileMaker().Init();
    FileMaker().CallUnchecked(L"VARD_GetRecordCount");
    EXPECT_EQ(FileMaker().Call(L"VARD_GetLastError", {L"code"}).text, L"-1001");
    EXPECT_EQ(FileMaker().Init(), 53);
    EXPECT_EQ(FileMaker().Call(L"VARD_GetLastError", {L"code"}).text, L"0");
    EXPECT_EQ(FileMaker().Call(L"VARD_GetLastError").text, L"");
    FileMaker().Shutdown();
}

TEST_F(LifecycleTest, AHostThatFailsWhileFunctionsAreRegistered) {
    constexpr std::uint64_t callsBeforeFirstFunction = 5;
    for (const HRESULT code : {1, 2}) {
        for (std::uint64_t call = 1; call <= callsBeforeFirstFunction; ++call) {
            Watch().FailCall(call, code, {standin::Side::FileMaker});
            EXPECT_EQ(FileMaker().Init(), -1) << call; // without a text no function can be entered
            EXPECT_EQ(FileMaker().LiveObjects(), 0u) << call;
            EXPECT_LE(FileMaker().Functions().size(), 1u) << call; // the one that no Shutdown takes
        }
        Watch().FailCall(callsBeforeFirstFunction + 1, code, {standin::Side::FileMaker});
        EXPECT_EQ(FileMaker().Init(), 53); // one that the host doesn't take is left out, the others work
        EXPECT_EQ(FileMaker().Functions().size(), 55u);
        EXPECT_EQ(FileMaker().Call(L"VARD_GetRecordCount").text, L"!!ERROR!!");
        FileMaker().Shutdown();
        EXPECT_EQ(FileMaker().LiveObjects(), 0u);
    }
    Watch().Reset();
    EXPECT_EQ(FileMaker().Init(), 53);
    Watch().FailCall(1, 1, {standin::Side::FileMaker});
    FileMaker().Shutdown(); // lets go of everything even when nothing can be unregistered
    EXPECT_EQ(FileMaker().LiveObjects(), 0u);
}

} // namespace
} // namespace varden::tests
