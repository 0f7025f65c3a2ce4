// The script language in-process: calculations and mistakes in them.
#include "console/Evaluator.h"
#include "console/ExpressionParser.h"
#include "console/ScriptParser.h"
#include "console/Text.h"

#include <gtest/gtest.h>

using namespace standin::console;

namespace {

/// A plug-in with one function, F( a ; b… ), which joins its arguments by commas.
class OneFunction final : public Externals {
public:
    std::optional<ExternalFunction> Find(std::wstring_view name) const override {
        return EqualIgnoringCase(name, L"F") ? std::optional(ExternalFunction{7, L"F", {0, 2}})
                                             : std::nullopt;
    }
    Value Call(const ExternalFunction&, const std::vector<Value>& arguments) override {
        ++m_calls;
        std::wstring joined;
        for (const Value& argument : arguments) {
            joined += argument.AsText() + L",";
        }
        return joined;
    }
    int Calls() const { return m_calls; }

private:
    int m_calls = 0;
};

class Language : public testing::Test {
protected:
    Language() {
        m_variables.Set(L"$word", L"Word");
        m_variables.Set(L"$$Count", 12);
        m_variables.Set(L"$größe", 3);
    }

    std::wstring Result(std::wstring_view text) {
        Cursor cursor(text);
        const ExpressionPtr expression = ParseExpression(cursor, m_externals);
        if (!cursor.AtEnd()) {
            throw Mistake(L"unexpected " + Describe(cursor.Peek()));
        }
        return Evaluator(m_variables, m_externals).Evaluate(*expression).AsText();
    }

    struct Case {
        const wchar_t* expression;
        const wchar_t* result;
    };
    void Expect(std::initializer_list<Case> cases) {
        for (const auto& [expression, result] : cases) {
            try {
                EXPECT_EQ(Result(expression), result) << ToUtf8(expression);
            } catch (const Mistake& mistake) {
                ADD_FAILURE() << ToUtf8(expression) << ": " << ToUtf8(mistake.Reason());
            }
        }
    }

    void ExpectTrue(std::initializer_list<const wchar_t*> expressions) { ExpectEach(expressions, L"1"); }
    void ExpectFalse(std::initializer_list<const wchar_t*> expressions) { ExpectEach(expressions, L"0"); }

    OneFunction m_externals;
    Variables m_variables;

private:
    void ExpectEach(std::initializer_list<const wchar_t*> expressions, const wchar_t* result) {
        for (const wchar_t* expression : expressions) {
            Expect({{expression, result}});
        }
    }
};

TEST_F(Language, ConstantsAndVariables) {
    Expect({{LR"("a \"quoted\" word")", L"a \"quoted\" word"},
            {LR"("C:\\Temp\new")", LR"(C:\Temp\new)"},
            {L"\"one¶two\\¶\"", L"one\rtwo¶"},
            {L"\"a\" & ¶ & \"b\"", L"a\rb"},
            {LR"("a ] b ; c ( d")", L"a ] b ; c ( d"},
            {L"0.50 & .25", L".5.25"},
            {L"1e3", L"1000"},
            {L"12.", L"12"},
            {L"$WORD & $unset & $$count", L"Word12"},
            {L"$GRÖSSE & $Größe", L"3"},
            {L"\"😀 é\"", L"😀 é"}});
}

TEST_F(Language, OperatorsBindAsInFileMaker) {
    Expect({{L"2 + 3 * 4", L"14"},
            {L"( 2 + 3 ) * 4", L"20"},
            {L"10 - 3 - 2", L"5"},
            {L"8 / 4 / 2", L"1"},
            {L"- 2 * -3", L"6"},
            {L"1 + 1 & 1 + 2", L"23"}});
    ExpectTrue({L"\"a\" & 1 = \"A1\"", L"1 = 2 = 0", L"not 1 = 0", L"not not 5", L"1 or 0 and 0",
                L"1 AND 2 Xor 0", L"2 > 1 and 1 < 2"});
    ExpectFalse({L"( 1 or 0 ) and 0", L"1 or 1 xor 1"});
}

TEST_F(Language, ArithmeticTakesTheNumberInAText) {
    Expect({{L"\"5 apples\" + \"2 pears\"", L"7"},
            {L"\"abc\" + 1", L"1"},
            {L"\"-3\" * \"1.5\"", L"-4.5"},
            {L"0.1 + 0.2", L".3"},
            {L"1 / 3", L".3333333333333333"},
            {L"1 / 0", L"?"},
            {L"-\"x4\"", L"-4"},
            {L"+\"x4\"", L"4"},
            {L"\"yes\" or \"0\"", L"0"}});
}

TEST_F(Language, ComparisonIsNumericForNumbersAndWithoutCaseForTexts) {
    ExpectTrue({L"\"End\" = \"end\"", L"\"ÄRGER\" = \"ärger\"", L"\"a\" ≠ \"b\"", L"\"apple\" < \"Banana\"",
                L"\"B\" > \"a\"", L"9 < 10", L"\"7\" = 7", L"2 ≤ 2", L"2 >= 2", L"$unset = \"\"",
                L"( 1 = 1 ) < 2"});
    ExpectFalse({L"\"a\" <> \"A\"", L"\"9\" < \"10\"", L"9 < \"10\"", L"2 <= 1", L"2 ≥ 3",
                 L"\"co-op\" = \"coop\"", L"\"soft\u00ADhyphen\" = \"softhyphen\""});
}

TEST_F(Language, TextFunctions) {
    Expect({
        {L"Length( \"four\" ) + length ( \"\" )", L"4"},
        {L"Left( \"abcdef\" ; 2 )", L"ab"},
        {L"Left( \"ab\" ; 9 ) & Left( \"ab\" ; -1 )", L"ab"},
        {L"Right( \"abcdef\" ; 2.9 )", L"ef"},
        {L"Right( \"ab\" ; 9 ) & Right( \"ab\" ; 0 )", L"ab"},
        {L"Middle( \"abcdef\" ; 2 ; 3 )", L"bcd"},
        {L"Middle( \"abcdef\" ; 5 ; 99 ) & Middle( \"abc\" ; 4 ; 1 )", L"ef"},
        {L"Position( \"Mississippi\" ; \"SS\" ; 1 ; 1 )", L"3"},
        {L"Position( \"Mississippi\" ; \"ss\" ; 1 ; 2 )", L"6"},
        {L"Position( \"Mississippi\" ; \"ss\" ; 4 ; 1 )", L"6"},
        {L"Position( \"Mississippi\" ; \"ss\" ; 99 ; -2 )", L"3"},
        {L"Position( \"Mississippi\" ; \"ss\" ; 5 ; -1 )", L"3"},
        {L"Position( \"Mississippi\" ; \"ss\" ; 1 ; 3 ) & Position( \"a\" ; \"\" ; 1 ; 1 )", L"00"},
        {L"Position( \"aXbX\" ; \"x\" ; 1 ; -2147483648 )", L"0"},
        {L"Substitute( \"aAbab\" ; \"a\" ; \"--\" )", L"--Ab--b"},
        {L"Substitute( \"abc\" ; [ \"a\" ; \"b\" ] ; [ \"b\" ; \"]\" ] )", L"]]c"},
        {L"Substitute( \"abc\" ; \"\" ; \"x\" )", L"abc"},
        {L"Exact( \"a\" ; \"a\" ) & Exact( \"a\" ; \"A\" )", L"10"},
        {L"GetAsNumber( \"$1,200.50\" )", L"1200.5"},
        {L"GetAsNumber( \"none\" )", L""},
        {L"GetAsNumber( \"9\" ) < GetAsNumber( \"10\" )", L"1"},
        {L"ValueCount( \"\" ) & ValueCount( \"a\" ) & ValueCount( \"a¶b¶\" ) & ValueCount( \"a¶¶b\" )",
         L"0123"},
        {L"GetValue( \"a¶b¶c\" ; 2 ) & GetValue( \"a¶b\" ; 3 ) & GetValue( \"a\" ; 0 )", L"b"},
        {L"If( \"x\" = \"X\" ; \"yes\" ; \"no\" ) & If( 0 ; 1 )", L"yes"},
    });
}

TEST_F(Language, ExternalFunctionsAreCalledOnlyWhenTheirAnswerIsNeeded) {
    Expect({{L"F", L""}, {L"f()", L""}, {L"F( 1 + 1 ; \"a;b\" )", L"2,a;b,"}, {L"F( F( 1 ) )", L"1,,"}});
    const int before = m_externals.Calls();
    Expect({
        {L"If( 1 ; \"a\" ; F( 1 ) ) & If( 0 ; F( 1 ) ; \"b\" )", L"ab"},
        {L"0 and F( 1 )", L"0"},
        {L"1 or F( 1 )", L"1"},
    });
    EXPECT_EQ(m_externals.Calls(), before);
    Expect({{L"1 and F( 1 )", L"1"}, {L"0 or F( 1 )", L"1"}, {L"1 xor F( 1 )", L"0"}});
    EXPECT_EQ(m_externals.Calls(), before + 3);
}

TEST_F(Language, MistakesInCalculationsAreNamed) {
    const Case cases[] = {
        {L"\"open", L"the text has no closing quote"},
        {L"1 +", L"a value is missing before the end of the line"},
        {L"* 2", L"a value is missing before *"},
        {L"( 1", L") is missing before the end of the line"},
        {L"1 2", L"unexpected 2"},
        {L"\"a\"¶", L"unexpected \"\r\""},
        {L"1 ! 2", L"unexpected character !"},
        {L"$ & 1", L"a variable without a name"},
        {L"G( 1 )", L"unknown function G"},
        {L"Left( 1 )", L"Left takes 2 arguments, not 1"},
        {L"Length", L"Length takes 1 argument, not 0"},
        {L"If( 1 ; 2 ; 3 ; 4 )", L"If takes 2 to 3 arguments, not 4"},
        {L"F( 1 ; 2 ; 3 )", L"F takes 0 to 2 arguments, not 3"},
        {L"F( 1 ; )", L"a value is missing before )"},
        {L"F( [ 1 ; 2 ] )", L"a value is missing before ["},
        {L"Substitute( \"a\" ; \"b\" ; [ 1 ; 2 ] )", L"Substitute takes 3 arguments, not 4"},
        {L"Substitute( \"a\" ; [ \"b\" ] )", L"; is missing before ]"},
    };
    for (const auto& [expression, reason] : cases) {
        try {
            const std::wstring result = Result(expression);
            ADD_FAILURE() << ToUtf8(expression) << " gave " << ToUtf8(result);
        } catch (const Mistake& mistake) {
            EXPECT_EQ(mistake.Reason(), reason) << ToUtf8(expression);
        }
    }
}

TEST_F(Language, MistakesInStepsNameTheirLine) {
    const struct {
        std::vector<const wchar_t*> lines;
        int line;
        const wchar_t* reason;
    } cases[] = {
        {{L"If [ 1 ]", L"# no end"}, 1, L"If without End If"},
        {{L"", L"Loop", L"If [ 1 ]", L"End If"}, 2, L"Loop without End Loop"},
        {{L"End If"}, 1, L"End If without If"},
        {{L"Loop", L"End If"}, 2, L"End If without If"},
        {{L"Loop", L"Else"}, 2, L"Else without If"},
        {{L"If [ 1 ]", L"Else", L"Else If [ 1 ]"}, 3, L"Else If behind Else"},
        {{L"Exit Loop If [ 1 ]"}, 1, L"Exit Loop If outside of a Loop"},
        {{L"Set Variable [ name ; 1 ]"}, 1, L"a variable is missing before name"},
        {{L"Set Variable [ $a ; 1"}, 1, L"] is missing before the end of the line"},
        {{L"Set Variable [ $a 1 ]"}, 1, L"; is missing before 1"},
        {{L"Set Variable [ $a ; Value 1 ]"}, 1, L": is missing before 1"},
        {{L"If"}, 1, L"[ is missing before the end of the line"},
        {{L"If [ ]"}, 1, L"a value is missing before ]"},
        {{L"1", L"Show Custom Dialog [ 1 ] 2"}, 2, L"unexpected 2"},
        {{L"Beep"}, 1, L"unknown function Beep"},
    };
    for (const auto& [lines, line, reason] : cases) {
        ScriptParser parser(m_externals);
        try {
            int number = 0;
            for (const wchar_t* text : lines) {
                parser.AddLine(++number, text);
            }
            parser.Take();
            ADD_FAILURE() << ToUtf8(reason);
        } catch (const ScriptMistake& mistake) {
            EXPECT_EQ(mistake.Reason(), reason);
            EXPECT_EQ(mistake.Line(), line) << ToUtf8(reason);
        }
    }
}

} // namespace
