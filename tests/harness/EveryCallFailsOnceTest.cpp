// For a use of each function, each call that the plug-in makes into FileMaker, Outlook and MAPI fails in
// turn. After each the function has answered with a text, the hooks are gone, an ordinary script works, and
// at the end nothing is alive.
#include "ScriptedUses.h"

#include <algorithm>
#include <array>
#include <iostream>

namespace varden::tests {
namespace {

using standin::Side;

class EveryCallFailsOnceTest : public testing::TestWithParam<ScriptedUse> {
protected:
    static constexpr std::array<HRESULT, 3> kStatuses{E_FAIL, MAPI_E_NOT_FOUND, E_ACCESSDENIED};
    static constexpr std::array<HRESULT, 2> kHostCodes{1, 2};
    /// More calls than any use makes.
    static constexpr std::uint64_t kMost = 5000;

    void SetUp() override { FillWorld(m_plugin.World()); }
    void TearDown() override {
        m_plugin.End();
        RecordProperty("points", std::to_string(m_points));
    }

    /// One run of the use with its `number`-th call failing. False when the use makes fewer calls.
    bool FailOne(std::uint64_t number, HRESULT status, const std::vector<Side>& sides) {
        Arrange(m_plugin, GetParam().before);
        const Texts arguments = ArgumentsOf(m_plugin, GetParam());
        m_plugin.Watch().FailCall(number, status, sides);
        bool raised = false;
        standin::filemaker::Answer answer;
        try {
            answer = m_plugin.Host().CallUnchecked(GetParam().function, arguments);
        } catch (...) {
            raised = true;
        }
        const bool failed = m_plugin.Watch().HasFailed();
        m_plugin.Watch().Reset();
        EXPECT_EQ(answer.error, 0);
        EXPECT_EQ(HookSpy::Held(), 0) << "call " << number;
        if (raised) {
            EXPECT_EQ(sides.front(), Side::FileMaker)
                << "call " << number; // while the arguments were fetched
        }
        m_points += failed;
        return failed;
    }

    void FailEach(HRESULT status, const std::vector<Side>& sides) {
        std::uint64_t number = 1;
        while (number < kMost && FailOne(number, status, sides) && !HasFailure()) {
            ++number;
        }
        EXPECT_LT(number, kMost);
        ExpectOrdinaryScript();
    }

    void ExpectOrdinaryScript() {
        EXPECT_EQ(m_plugin.Call(L"VARD_Authenticate", {L"Outlook"}), L"0");
        EXPECT_EQ(m_plugin.Call(L"VARD_OpenFolder", {L"/Drafts"}), L"0");
        EXPECT_EQ(m_plugin.Call(L"VARD_NewRecord", {L"Mail"}), L"0");
        EXPECT_EQ(m_plugin.Call(L"VARD_SetFieldData", {L"Subject", L"Works"}), L"0");
        EXPECT_EQ(m_plugin.Call(L"VARD_GetFieldData", {L"Subject"}), L"Works");
    }

private:
    standin::outlook::Registration m_registration;
    Plugin m_plugin{kFullPlugin};
    int m_points = 0;
};

TEST_P(EveryCallFailsOnceTest, AndNothingIsLost) {
    for (const HRESULT status : kStatuses) {
        FailEach(status, {Side::Outlook, Side::Mapi});
    }
    for (const HRESULT code : kHostCodes) {
        FailEach(code, {Side::FileMaker});
    }
}

INSTANTIATE_TEST_SUITE_P(Uses, EveryCallFailsOnceTest, testing::ValuesIn(ScriptedUses()),
                         [](const auto& info) { return NameOf(info.param); });

/// The uses leave no function out.
TEST(ScriptedUsesTest, CoverEveryFunction) {
    const standin::outlook::Registration registration;
    Plugin plugin(kFullPlugin);
    for (const auto& function : plugin.Host().Functions()) {
        const bool isUsed = std::ranges::any_of(
            ScriptedUses(), [&](const ScriptedUse& use) { return function.name == use.function; });
        EXPECT_TRUE(isUsed || function.name.empty()) << testing::PrintToString(function.name);
    }
    plugin.End();
}

} // namespace
} // namespace varden::tests
