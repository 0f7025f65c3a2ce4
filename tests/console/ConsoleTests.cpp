// varden.exe as its user meets it: scripts, the prompt, options.
#include "Places.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

struct Run {
    const char* script;
    const char* output;
    int status = 0;
    const char* errors = "";
};

void ExpectRuns(std::initializer_list<Run> runs) {
    for (const auto& [script, output, status, errors] : runs) {
        const ProgramResult result = RunScript(script);
        EXPECT_EQ(result.output, output) << script;
        EXPECT_EQ(result.status, status) << script;
        EXPECT_EQ(result.errors, errors) << script;
    }
}

TEST(Console, RunsScripts) {
    ExpectRuns({
        {"", ""},
        {"# a comment with \" and [\n\n  \t\nShow Custom Dialog [ \"one¶two\" ]\n\"three\"\n",
         "one\ntwo\nthree\n"},
        // A loop with a counter, steps in any case, both forms of Set Variable, a global.
        {"set variable [ $i ; 0 ]\r\nLOOP\r\n  Set Variable[$i;Value:$i+1]\r\n  exit loop if [ $i > 3 ]\r\n"
         "  Set Variable [ $$all ; $$all & $i ]\r\nend loop\r\n$$ALL\r\n",
         "123\n"},
        // Exit Loop If leaves the inner loop only.
        {"Loop\nLoop\nExit Loop If [ 1 ]\n\"never\"\nEnd Loop\n\"outer\"\nExit Loop If [ 1 ]\nEnd Loop",
         "outer\n"},
        {"Set Variable [ $i ; 2 ]\nIf [ $i = 1 ]\n\"a\"\nElse If [ $i = 2 ]\n\"b\"\nElse If [ 1 "
         "]\n\"c\"\nElse\n\"d\"\nEnd If",
         "b\n"},
        {"If [ 0 ]\n\"a\"\nElse\n\"d\"\nIf [ \"]\" = \"]\" ]\n\"e\"\nEnd If\nEnd If\nIf ( 1 ; \"function\" )",
         "d\ne\nfunction\n"},
        {"\"before\"\nLoop\nIf [ 1 ]\nExit Script [ Text Result: \"status 7\" ]\nEnd If\nEnd Loop\n\"after\"",
         "before\n", 7},
        {"Exit Script [ 1 + 2 ]", "", 3},
        {"Exit Script\n\"after\"", ""},
        {"Exit Script [ Text Result: ]", ""},
        // Nothing runs when any line is wrong.
        {"\"before\"\nIf [ 1 ]\nLeft( 1 )\nEnd If", "", 2, "SCRIPT:3: Left takes 2 arguments, not 1\n"},
        {"Loop\n\"before\"", "", 2, "SCRIPT:1: Loop without End Loop\n"},
        {"1\r\n\r\n2 +\r\n", "", 2, "SCRIPT:3: a value is missing before the end of the line\n"},
        {"1\n\"\xFF\"", "", 2, "SCRIPT:2: the line is not valid UTF-8\n"},
        {"\xEF\xBB\xBF\"mark\"\r\"old line ends\"", "mark\nold line ends\n"},
        {"Set Variable [ $größe ; \"é 😀 ß\" ]\nUpper( 1 )", "", 2, "SCRIPT:2: unknown function Upper\n"},
        {"Set Variable [ $größe ; \"é 😀 ß\" ]\n$GRÖßE", "é 😀 ß\n"},
    });
}

TEST(Console, CallsThePlugin) {
    ExpectRuns({
        {"tp_echo( \"é 😀\" )\nTP_Kinds( \"3x\" ; 1.5 ; 1 = 1 )\nTP_Kinds",
         "é 😀\n[3x|3|1][1.5|1|1][1|1|1]\n\n"},
        {"TP_AnswerError & TP_AnswerNumber & ( TP_AnswerNumber = 7 )", "?71\n"},
        {"TP_Echo( \"first\" )\nTP_Echo", "", 2, "SCRIPT:2: TP_Echo takes 1 to 2 arguments, not 0\n"},
        {"TP_Echo( \"first\" )\nIf [ 0 ]\nElse If [ TP_Throw( 1 ) ]\nEnd If\n\"never\"", "first\n", 2,
         "SCRIPT:3: TP_Throw threw an exception: broken\n"},
        {"TP_Throw( \"number\" )", "", 2, "SCRIPT:1: TP_Throw threw an exception\n"},
        {"TP_DeleteTwice", "survived\n", 0,
         "rule broken by the plug-in: FM_Text_Delete: a text that is no longer alive where a text is "
         "wanted\n"},
    });
}

TEST(Console, PromptAnswersLineByLineAndSurvivesMistakes) {
    const ProgramResult result = RunConsole({}, "Set Variable [ $x ; 2 ]\r\n"
                                                "$x * 2\n"
                                                "$x *\n"
                                                "Loop\n"
                                                "Set Variable [ $x ; $x + 1 ]\n"
                                                "Exit Loop If [ $x > 9 ]\n"
                                                "End Loop\n"
                                                "TP_Echo( \"é\" & $x )\n"
                                                "If [ 1 ]\n"
                                                "End Loop\n"
                                                "TP_Throw( 1 )\n"
                                                "\"goes on\"\n"
                                                "Exit Script [ 4 ]\n"
                                                "\"never\"\n");
    EXPECT_EQ(result.output, "4\né10\ngoes on\n");
    EXPECT_EQ(result.errors, "line 3: a value is missing before the end of the line\n"
                             "line 10: End Loop without Loop\n"
                             "line 11: TP_Throw threw an exception: broken\n");
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(RunConsole({}, "1 + 1").output, "2\n");
    EXPECT_EQ(RunConsole({}, "1\nLoop\n2").errors, "line 2: Loop without End Loop\n");
}

TEST(Console, ListsTheFunctions) {
    const ProgramResult result = RunConsole({L"--functions"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.starts_with("11\t1\t2\tTP_Echo( text ; optMore )\n12\t0\t-1\tTP_Kinds( … )\n"))
        << result.output;
    EXPECT_TRUE(result.output.ends_with("\n21\t1\t1\t\n")) << result.output;
}

TEST(Console, CountsAndTracesCalls) {
    const TemporaryFile trace("", L".txt");
    const ProgramResult result =
        RunScript("TP_Echo( 1 )\nTP_LeakText", {L"--counts", L"--trace", trace.Path()});
    EXPECT_EQ(result.output, "1\nleaked\n");
    // TP_Echo makes 8 calls, TP_LeakText one more than storing its answer takes.
    EXPECT_EQ(result.errors.substr(0, result.errors.find('\n')), "calls: FM 14 Outlook 0 MAPI 0");
    EXPECT_NE(result.errors.find("alive: FM objects 1,"), std::string::npos) << result.errors;
    const std::string lines = trace.Bytes();
    EXPECT_TRUE(lines.starts_with("FM\tFM_QuadChar\tConstructor2\t00000000\n")) << lines;
    EXPECT_TRUE(lines.ends_with("FM\tFM_QuadChar\tDelete\t00000000\n")) << "Shutdown is part of the trace";
}

TEST(Console, RefusesACommandLineThatMeansNothing) {
    const struct {
        std::vector<std::wstring> arguments;
        const char* reason;
    } cases[] = {
        {{L"--verbose"}, "unknown option --verbose"},
        {{L"--mailbox"}, "--mailbox takes a value"},
        {{L"a.fms", L"b.fms"}, "one script at a time"},
        {{L"--fail", L"3"}, "--fail takes N=STATUS"},
        {{L"--fail", L"0=80004005"}, "--fail takes N=STATUS"},
        {{L"--fail", L"1=8000400g"}, "--fail takes N=STATUS"},
        {{L"--fail", L"1=180004005"}, "--fail takes N=STATUS"},
        {{L"missing.fms"}, "missing.fms: the script can't be read"},
        {{L"--plugin", L"missing.fmx64"}, "missing.fmx64: "},
        {{L"--trace", L"no\\such\\folder.txt"}, "the trace can't be written"},
    };
    for (const auto& [arguments, reason] : cases) {
        const ProgramResult result = RunConsole(arguments);
        EXPECT_EQ(result.status, 2) << reason;
        EXPECT_EQ(result.output, "") << reason;
        EXPECT_NE(result.errors.find(reason), std::string::npos) << result.errors;
    }
    const ProgramResult help = RunConsole({L"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("--no-outlook"), std::string::npos);
}

TEST(Console, TellsOfAPlannedFailureThatNeverCame) {
    const ProgramResult result = RunScript("TP_Echo( 1 )", {L"--fail", L"1=0x80004005"});
    EXPECT_EQ(result.output, "1\n") << "calls into FileMaker are not counted";
    EXPECT_EQ(result.errors, "the planned failure did not come to pass: the script made fewer calls\n");
}

} // namespace
