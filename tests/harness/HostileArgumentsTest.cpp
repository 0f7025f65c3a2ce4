// For every argument of every function: texts and numbers that no script should pass. The function answers
// with a text, the hooks are gone, and nothing is left alive.
#include "ScriptedUses.h"

#include "Files.h"

#include <limits>

namespace varden::tests {
namespace {

std::wstring Repeated(const wchar_t* text, int times) {
    std::wstring repeated;
    for (int i = 0; i < times; ++i) {
        repeated += text;
    }
    return repeated;
}

const std::vector<Value>& HostileValues() {
    static const std::vector<Value> values{
        L"",
        L"x",
        std::wstring(1 << 20, L'm'),
        std::wstring(1, static_cast<wchar_t>(0xD800)),
        std::wstring({L'a', static_cast<wchar_t>(0xDC00), L'b', static_cast<wchar_t>(0xD83D)}),
        std::wstring({L'\x01', L'\x07', L'\x1B', L'\x7F', static_cast<wchar_t>(0xFFFF)}),
        std::wstring(L"before\0behind", 13),
        L"%s%n%d%1$s%%",
        Repeated(L"/", 10000),
        Repeated(L";", 10000),
        Repeated(L",", 10000),
        Repeated(L":", 10000),
        Repeated(L"\r", 10000),
        Repeated(L"(", 10000),
        Repeated(L"a/", 2000),
        L"!!ERROR!!",
        L"-2147483648",
        L"2147483647",
        L"99999999999999999999",
        L"-1",
        L"0",
        std::numeric_limits<std::int32_t>::min(),
        std::numeric_limits<std::int32_t>::max(),
        true,
    };
    return values;
}

class HostileArgumentsTest : public testing::TestWithParam<ScriptedUse> {
protected:
    void SetUp() override {
        FillWorld(m_plugin.World());
        GetCurrentDirectoryW(MAX_PATH, m_before);
        SetCurrentDirectoryW(m_folder.Path().c_str()); // where a strange file name may make a file
    }

    void TearDown() override {
        m_plugin.End();
        SetCurrentDirectoryW(m_before);
        RecordProperty("inputs", std::to_string(m_inputs));
    }

    void Try(const Texts& arguments) {
        Arrange(m_plugin, GetParam().before);
        const auto answer = m_plugin.Host().CallUnchecked(GetParam().function, arguments);
        EXPECT_EQ(answer.error, 0);
        EXPECT_EQ(HookSpy::Held(), 0);
        ++m_inputs;
    }

    Plugin& Varden() { return m_plugin; }

private:
    standin::outlook::Registration m_registration;
    Plugin m_plugin{kFullPlugin};
    TemporaryFolder m_folder;
    wchar_t m_before[MAX_PATH] = {};
    int m_inputs = 0;
};

TEST_P(HostileArgumentsTest, AreAnswered) {
    for (std::size_t i = 0; i < GetParam().arguments.size(); ++i) {
        for (const Value& hostile : HostileValues()) {
            Texts arguments = ArgumentsOf(Varden(), GetParam());
            arguments[i] = hostile;
            Try(arguments);
        }
        Texts shortened = ArgumentsOf(Varden(), GetParam());
        shortened.resize(i);
        Try(shortened);
    }
    Texts more = ArgumentsOf(Varden(), GetParam());
    more.resize(more.size() + 20);
    Try(more);
}

INSTANTIATE_TEST_SUITE_P(Uses, HostileArgumentsTest, testing::ValuesIn(ScriptedUses()),
                         [](const auto& info) { return NameOf(info.param); });

} // namespace
} // namespace varden::tests
