// The operations of FMWrapper.dll: what they do at the edges, what they refuse, how they fail by plan.
#include "standin/filemaker/Control.h"

#include <gtest/gtest.h>

#include <functional>

using namespace standin;
using namespace standin::filemaker;

namespace {

std::int16_t Nothing(std::int16_t, const ExprEnv*, const DataVect*, Data*) {
    return 0;
}

/// Keeps what is registered.
class Table final : public Registrar {
public:
    void Register(const RegisteredFunction& function) override { m_functions.push_back(function); }
    bool Unregister(const std::string&, std::int16_t id) override { return id == 7; }
    const std::vector<RegisteredFunction>& Functions() const { return m_functions; }

private:
    std::vector<RegisteredFunction> m_functions;
};

class Operations : public testing::Test {
protected:
    Operations() {
        m_control.SetWatch(&m_watch);
        m_control.SetRegistrar(&m_table);
    }
    ~Operations() override {
        m_control.SetWatch(nullptr);
        m_control.SetRegistrar(nullptr);
        m_control.DropPlugInObjects();
    }

    /// A fresh error record; it must not come back with an error unless one is planned.
    ErrorRecord* Error() { return &(m_error = ErrorRecord()); }

    Text* MakeText(const wchar_t* content) {
        Text* text = FM_Text_Constructor1(Error());
        FM_Text_AssignUnicode(text, content, Error());
        return text;
    }
    std::wstring Content(const Text* text) {
        std::wstring content(FM_Text_GetSize(text, Error()), L'\0');
        FM_Text_GetUnicode(text, content.data(), 0, static_cast<std::uint32_t>(content.size()), Error());
        return content;
    }
    /// The violations since the last time.
    std::vector<std::wstring> NewViolations() {
        auto violations = m_watch.Violations();
        m_watch.Reset();
        return violations;
    }

    Control& m_control = *StandinFileMakerControl();
    Recorder m_watch;
    Table m_table;
    ErrorRecord m_error;
};

TEST_F(Operations, TextsHoldAnyUnitsAndAreCutToWhatIsThere) {
    const std::wstring odd(L"a\0\xD800z", 4); // a terminator and half a character within
    const CallObjects call = m_control.BeginCall({odd}, 0);
    EXPECT_EQ(Content(FM_DataVect_AtAsText(call.arguments, 0, Error())), odd);
    m_control.EndCall(call);

    Text* text = MakeText(L"0123456789");
    const struct {
        std::uint32_t start, count;
        const wchar_t* piece;
    } pieces[] = {{0, 3, L"012"}, {8, 5, L"89"},        {9, 0xFFFFFFFE, L"9"},
                  {10, 1, L""},   {0xFFFFFFFF, 1, L""}, {4, 0, L""}};
    for (const auto& [start, count, piece] : pieces) {
        std::wstring buffer(12, L'#');
        FM_Text_GetUnicode(text, buffer.data(), start, count, Error());
        EXPECT_EQ(buffer, piece + std::wstring(12 - std::wcslen(piece), L'#')) << start;
    }
    const struct {
        std::uint32_t start, count;
        const wchar_t* rest;
    } cuts[] = {
        {10, 1, L"0123456789"}, {0xFFFFFFFF, 5, L"0123456789"}, {2, 3, L"0156789"}, {3, 0xFFFFFFFF, L"015"}};
    for (const auto& [start, count, rest] : cuts) {
        FM_Text_DeleteText(text, start, count, Error());
        EXPECT_EQ(Content(text), rest);
    }
    EXPECT_TRUE(NewViolations().empty());
}

TEST_F(Operations, FindIsExactAndKnowsWhenThereIsNothing) {
    Text* text = MakeText(L"VARD_Find( a ; (b) )");
    const struct {
        const wchar_t* sought;
        std::uint32_t start, position;
    } cases[] = {{L"(", 0, 9},          {L"(", 9, 9},          {L"(", 10, 15},
                 {L"(", 16, kNotFound}, {L"(", 99, kNotFound}, {L"vard", 0, kNotFound},
                 {L"", 0, kNotFound}};
    for (const auto& [sought, start, position] : cases) {
        EXPECT_EQ(FM_Text_Find(text, MakeText(sought), start, Error()), position);
    }
}

TEST_F(Operations, ArgumentsAreReadAsEveryKindAndNothingIsBehindTheLast) {
    const CallObjects call = m_control.BeginCall({L"abc-12.7", 3, true}, 0);
    EXPECT_EQ(FM_DataVect_Size(call.arguments, Error()), 3U);
    const struct {
        std::uint32_t index;
        const wchar_t* text;
        std::int32_t number;
        int truth;
    } cases[] = {
        {0, L"abc-12.7", -12, 1}, {1, L"3", 3, 1}, {2, L"1", 1, 1}, {3, L"", 0, 0}, {0xFFFFFFFF, L"", 0, 0}};
    for (const auto& [index, text, number, truth] : cases) {
        EXPECT_EQ(Content(FM_DataVect_AtAsText(call.arguments, index, Error())), text);
        EXPECT_EQ(FM_FixPt_AsLong(FM_DataVect_AtAsNumber(call.arguments, index, Error()), Error()), number);
        EXPECT_EQ(FM_DataVect_AtAsBoolean(call.arguments, index, Error()), truth);
    }
    EXPECT_EQ(FM_DataVect_AtAsText(call.arguments, 0, Error()),
              FM_DataVect_AtAsText(call.arguments, 0, Error()));
    EXPECT_EQ(m_control.LiveObjects(), 0U) << "what the vector owns is not the plug-in's";
    m_control.EndCall(call);
    EXPECT_TRUE(NewViolations().empty());
}

TEST_F(Operations, ResultsKeepTextLocaleAndTypeOfTheLastStore) {
    const CallObjects call = m_control.BeginCall({}, 0x0407);
    const Locale* locale = FM_Data_GetLocale(call.result, Error());
    EXPECT_EQ(FM_Data_SetAsText(call.result, MakeText(L"first"), locale, 2, Error()), 0);
    EXPECT_EQ(FM_Data_SetAsText(call.result, MakeText(L"second"), locale, 1, Error()), 0);
    for (const std::int32_t noType : {0, 8, -1}) {
        EXPECT_EQ(FM_Data_SetAsText(call.result, MakeText(L"third"), locale, noType, Error()), kRefused);
    }
    EXPECT_TRUE(NewViolations().empty());
    EXPECT_EQ(FM_Data_SetAsText(call.result, MakeText(L"fourth"), nullptr, 1, Error()), kRefused);
    EXPECT_EQ(NewViolations().size(), 1U);
    const ResultData result = m_control.EndCall(call);
    EXPECT_EQ(result.text, L"second");
    EXPECT_EQ(result.nativeType, 1);
    EXPECT_EQ(result.locale, 0x0407U);
}

TEST_F(Operations, WrongHandlesAreViolationsAndChangeNothing) {
    const CallObjects call = m_control.BeginCall({L"owned"}, 0);
    auto* owned = const_cast<Text*>(FM_DataVect_AtAsText(call.arguments, 0, Error()));
    const CallObjects ended = m_control.BeginCall({L"ended"}, 0);
    const Text* ofEnded = FM_DataVect_AtAsText(ended.arguments, 0, Error());
    const FixPt* numberOfEnded = FM_DataVect_AtAsNumber(ended.arguments, 0, Error());
    const Locale* localeOfEnded = FM_Data_GetLocale(ended.result, Error());
    m_control.EndCall(ended);
    Text* live = MakeText(L"live");
    Text* dead = MakeText(L"dead");
    FM_Text_Delete(dead, Error());
    QuadChar* quad = FM_QuadChar_Constructor2('a', 'b', 'c', 'd', Error());
    int ownVariable = 0;
    auto* foreign = reinterpret_cast<Text*>(&ownVariable);
    const std::size_t alive = m_control.LiveObjects();
    ErrorRecord notSetUp{0, 0};

    const struct {
        const wchar_t* violation;
        std::function<void()> act;
    } cases[] = {
        {L"FM_Text_Delete: a text that is no longer alive where a text is wanted",
         [&] { FM_Text_Delete(dead, Error()); }},
        {L"FM_Text_GetSize: a text that is no longer alive where a text is wanted",
         [&] { EXPECT_EQ(FM_Text_GetSize(dead, Error()), 0U); }},
        {L"FM_Text_GetSize: a quad-char where a text is wanted",
         [&] { FM_Text_GetSize(reinterpret_cast<Text*>(quad), Error()); }},
        {L"FM_QuadChar_Delete: a text where a quad-char is wanted",
         [&] { FM_QuadChar_Delete(reinterpret_cast<QuadChar*>(live), Error()); }},
        {L"FM_Text_AssignUnicode: no object of FileMaker's where a text is wanted",
         [&] { FM_Text_AssignUnicode(foreign, L"x", Error()); }},
        {L"FM_Text_AssignUnicode: null where a text is wanted",
         [&] { FM_Text_AssignUnicode(nullptr, L"x", Error()); }},
        {L"FM_Text_AssignUnicode: no UTF-16 to assign",
         [&] { FM_Text_AssignUnicode(live, nullptr, Error()); }},
        {L"FM_Text_GetUnicode: no buffer", [&] { FM_Text_GetUnicode(live, nullptr, 0, 9, Error()); }},
        {L"FM_Text_Delete: a text that belongs to FileMaker", [&] { FM_Text_Delete(owned, Error()); }},
        {L"FM_Text_AssignUnicode: a text that belongs to FileMaker",
         [&] { FM_Text_AssignUnicode(owned, L"x", Error()); }},
        {L"FM_Text_DeleteText: a text that belongs to FileMaker",
         [&] { FM_Text_DeleteText(owned, 0, 1, Error()); }},
        {L"FM_DataVect_Size: a data vector that is no longer alive where a data vector is wanted",
         [&] { FM_DataVect_Size(ended.arguments, Error()); }},
        {L"FM_Data_GetLocale: a data that is no longer alive where a data is wanted",
         [&] { EXPECT_EQ(FM_Data_GetLocale(ended.result, Error()), nullptr); }},
        {L"FM_Text_GetSize: a text that is no longer alive where a text is wanted",
         [&] { EXPECT_EQ(FM_Text_GetSize(ofEnded, Error()), 0U); }},
        {L"FM_FixPt_AsLong: a fixed-point number that is no longer alive where a fixed-point number is "
         L"wanted",
         [&] { EXPECT_EQ(FM_FixPt_AsLong(numberOfEnded, Error()), 0); }},
        {L"FM_Data_SetAsText: a locale that is no longer alive where a locale is wanted",
         [&] { EXPECT_EQ(FM_Data_SetAsText(call.result, live, localeOfEnded, 1, Error()), kRefused); }},
        {L"FM_Text_GetSize: an error record that is not set up as version 1 and code 0",
         [&] { EXPECT_EQ(FM_Text_GetSize(live, &notSetUp), 4U); }},
        {L"FM_Text_Constructor1: no error record",
         [&] { EXPECT_EQ(FM_Text_Constructor1(nullptr), nullptr); }},
    };
    NewViolations();
    for (const auto& [violation, act] : cases) {
        act();
        EXPECT_EQ(NewViolations(), std::vector<std::wstring>{violation});
    }
    EXPECT_EQ(Content(owned), L"owned");
    EXPECT_EQ(Content(live), L"live");
    EXPECT_EQ(m_control.LiveObjects(), alive);
    m_control.EndCall(call);
}

TEST_F(Operations, HandlesAreNeverUsedAgain) {
    Text* first = MakeText(L"first");
    FM_Text_Delete(first, Error());
    for (int i = 0; i < 100; ++i) {
        EXPECT_NE(FM_Text_Constructor1(Error()), first);
    }
}

TEST_F(Operations, RegisteringRefusesWhatMakesNoFunction) {
    QuadChar* id = FM_QuadChar_Constructor2('T', 'E', 'S', 'T', Error());
    Text* name = MakeText(L"F");
    const auto registered = [&](std::int16_t minimum, std::int16_t maximum, ExternalFunction function) {
        return FM_ExprEnv_RegisterExternalFunction(id, 7, name, name, minimum, maximum, 1, function, Error());
    };
    EXPECT_EQ(registered(0, 0, Nothing), 0);
    EXPECT_EQ(registered(2, -1, Nothing), 0);
    EXPECT_EQ(registered(2, 1, Nothing), kRefused);
    EXPECT_EQ(registered(-1, 1, Nothing), kRefused);
    EXPECT_TRUE(NewViolations().empty());
    EXPECT_EQ(registered(0, 0, nullptr), kRefused);
    EXPECT_EQ(NewViolations(),
              std::vector<std::wstring>{L"FM_ExprEnv_RegisterExternalFunction: no function"});
    ASSERT_EQ(m_table.Functions().size(), 2U);
    EXPECT_EQ(m_table.Functions()[1].pluginId, "TEST");
    EXPECT_EQ(FM_ExprEnv_UnRegisterExternalFunction(id, 7, Error()), 0);
    EXPECT_EQ(FM_ExprEnv_UnRegisterExternalFunction(id, 8, Error()), kRefused);
}

TEST_F(Operations, PlannedFailuresAreReportedAndNothingIsDone) {
    const CallObjects call = m_control.BeginCall({7}, 0);
    Text* text = MakeText(L"kept");
    QuadChar* quad = FM_QuadChar_Constructor2('a', 'b', 'c', 'd', Error());
    const FixPt* number = FM_DataVect_AtAsNumber(call.arguments, 0, Error());
    const Locale* locale = FM_Data_GetLocale(call.result, Error());
    wchar_t buffer[8] = L"#######";
    const std::function<bool()> gaveNothing[] = {
        [&] { return FM_QuadChar_Constructor2('a', 'b', 'c', 'd', &m_error) == nullptr; },
        [&] { return FM_Text_Constructor1(&m_error) == nullptr; },
        [&] { return FM_Text_AssignUnicode(text, L"changed", &m_error), true; },
        [&] { return FM_Text_GetSize(text, &m_error) == 0; },
        [&] { return FM_Text_GetUnicode(text, buffer, 0, 4, &m_error), buffer[0] == L'#'; },
        [&] { return FM_Text_Find(text, text, 0, &m_error) == 0; },
        [&] { return FM_Text_DeleteText(text, 0, 1, &m_error), true; },
        [&] { return FM_DataVect_Size(call.arguments, &m_error) == 0; },
        [&] { return FM_DataVect_AtAsText(call.arguments, 0, &m_error) == nullptr; },
        [&] { return FM_DataVect_AtAsNumber(call.arguments, 0, &m_error) == nullptr; },
        [&] { return FM_DataVect_AtAsBoolean(call.arguments, 0, &m_error) == 0; },
        [&] { return FM_FixPt_AsLong(number, &m_error) == 0; },
        [&] { return FM_Data_GetLocale(call.result, &m_error) == nullptr; },
        [&] { return FM_Data_SetAsText(call.result, text, locale, 1, &m_error) == 0; },
        [&] {
            return FM_ExprEnv_RegisterExternalFunction(quad, 7, text, text, 0, 0, 0, Nothing, &m_error) == 0;
        },
        [&] { return FM_ExprEnv_UnRegisterExternalFunction(quad, 7, &m_error) == 0; },
    };
    const std::size_t alive = m_control.LiveObjects();
    for (const auto& act : gaveNothing) {
        for (const HRESULT code : {1, 2}) {
            Error();
            m_watch.FailCall(1, code, {Side::FileMaker});
            EXPECT_TRUE(act()) << &act - gaveNothing;
            EXPECT_EQ(m_error.code, code) << &act - gaveNothing;
        }
    }
    EXPECT_EQ(Content(text), L"kept");
    EXPECT_TRUE(m_table.Functions().empty());
    EXPECT_EQ(m_control.LiveObjects(), alive);
    EXPECT_EQ(m_control.EndCall(call).nativeType, 0);
    EXPECT_TRUE(NewViolations().empty());
}

TEST_F(Operations, AFailingDeleteHasEndedItsObjectAllTheSame) {
    Text* text = MakeText(L"gone");
    m_watch.FailCall(1, 2, {Side::FileMaker});
    FM_Text_Delete(text, Error());
    EXPECT_EQ(m_error.code, 2);
    EXPECT_EQ(m_control.LiveObjects(), 0U);
    EXPECT_TRUE(NewViolations().empty());
}

} // namespace
