// The session log, switched on through the plug-in file that registers every function.
#include "Files.h"
#include "ScriptTest.h"

#include <algorithm>
#include <fstream>
#include <regex>

namespace varden::tests {
namespace {

class LogTest : public ScriptTest {
protected:
    using Expected = std::vector<std::string>;

    LogTest() : ScriptTest(kFullPlugin) {}

    std::wstring Path() const { return m_folder.File(L"log.txt"); }

    /// The lines of the log behind their time stamps, a tab as ">"; fails for a line of another form.
    std::vector<std::string> Lines(const std::wstring& path) const {
        std::ifstream file(path.c_str(), std::ios::binary);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            // The stamp may be looked at as a form; the message may be of any length.
            static const std::regex stamp(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)");
            constexpr std::size_t stampLength = 19;
            const std::size_t text = line.find_first_not_of('\t', stampLength);
            EXPECT_TRUE(std::regex_match(line.substr(0, stampLength), stamp)) << line;
            EXPECT_TRUE(line.ends_with('\r')) << line;
            lines.push_back(std::string(text - stampLength, '>') + line.substr(text, line.size() - text - 1));
        }
        return lines;
    }
    std::vector<std::string> Lines() const { return Lines(Path()); }

    std::vector<std::string> LinesOf(const wchar_t* function, const Texts& arguments) {
        const std::size_t before = Lines().size();
        Call(function, arguments);
        auto lines = Lines();
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before));
        return lines;
    }

    /// A call logs lines that end in these words, among others, in this order.
    void ExpectLogged(const wchar_t* function, const Texts& arguments, const Expected& words) {
        const auto lines = LinesOf(function, arguments);
        auto from = lines.begin();
        for (const std::string& wanted : words) {
            from = std::find_if(from, lines.end(),
                                [&](const std::string& line) { return line.ends_with(wanted); });
            ASSERT_NE(from, lines.end()) << testing::PrintToString(function) << ": " << wanted << " in "
                                         << testing::PrintToString(lines);
            ++from;
        }
    }
    void NewMail() {
        LogOn();
        Call(L"VARD_OpenFolder", {L"/Drafts"});
        Call(L"VARD_NewRecord", {L"Mail"});
    }

private:
    TemporaryFolder m_folder;
};

TEST_F(LogTest, OnlyTheSwitchMakesAFile) {
    Call(L"VARD_GetFirstRecord");
    EXPECT_EQ(Call(L"VARD_LogSet", {L"off", Path()}), L"0");
    EXPECT_EQ(Call(L"VARD_LogSet", {L"maybe", Path()}), L"0");
    EXPECT_EQ(Call(L"VARD_LogClear"), L"-4");
    EXPECT_FALSE(Exists(Path()));
    EXPECT_EQ(Call(L"VARD_LogSet", {L"ON", Path()}), L"0");
    EXPECT_EQ(Call(L"VARD_LogSet", {L"ON", Path() + L"2"}), L"0"); // the first log goes on
    EXPECT_FALSE(Exists(Path() + L"2"));
    EXPECT_EQ(Call(L"VARD_LogClear"), L"0");
    EXPECT_EQ(Call(L"VARD_LogSet", {L"no"}), L"0");
    EXPECT_EQ(Lines(), (Expected{">***** CONTENT CLEARED ******", ">******** Session Ended ********"}));
    ExpectFailure(L"VARD_LogSet", {}, -3, L"Invalid Number of Parameters");
    ExpectFailure(L"VARD_LogMoveToDesktop", {}, -3, L"Invalid Number of Parameters");
}

TEST_F(LogTest, TheDefaultFileLiesBelowTheDesktop) {
    wchar_t previous[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, previous);
    Call(L"VARD_LogSet", {L"true"});
    Call(L"VARD_LogClear"); // of what earlier logs have left
    wchar_t folder[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, folder);
    SetCurrentDirectoryW(previous);
    const std::wstring file = std::wstring(folder) + L"\\LogFile.txt";
    EXPECT_TRUE(std::wstring(folder).ends_with(L"\\TEMBO\\VARDENBRIDGE")) << testing::PrintToString(folder);
    EXPECT_EQ(Lines(file), Expected{">***** CONTENT CLEARED ******"});
    Call(L"VARD_LogSet", {L"false"});
    DeleteFileW(file.c_str());
}

TEST_F(LogTest, AFunctionLogsItsArgumentsItsAnswerAndNeverAPassword) {
    Call(L"VARD_LogSet", {L"1", Path()});
    EXPECT_EQ(
        LinesOf(L"VARD_GetFolderType", {}),
        (Expected{">>FUNCTION ENTER: VARD_GetFolderType", ">>>FUNCTION ENTER: GetFolderType",
                  ">>>FUNCTION EXIT: error in function", ">>>Returning !!ERROR!!", ">>FUNCTION EXIT: "}));
    EXPECT_EQ(LinesOf(L"VARD_SetFieldData", {L"Subject", L"Two\twords"}),
              (Expected{">>FUNCTION ENTER: VARD_SetFieldData",
                        ">>>Testing to continue execution (min params: 2, max params: 2)...",
                        ">>PARAM:stra  VAL:Subject", ">>PARAM:strb  VAL:Two\twords",
                        ">>>Entering m_objFuncs->SetFieldData...", ">>>FUNCTION ENTER: SetFieldData",
                        ">>>FUNCTION EXIT: error in function", ">>>Done with m_objFuncs->SetFieldData",
                        ">>>Clearing parameter value(s) (if any)", ">>>Returning !!ERROR!!",
                        ">>FUNCTION EXIT: ", ">>Releasing hooks...", ">>Hooks released.",
                        ">>Returning to FileMaker."}));
    for (const auto& line : LinesOf(L"VARD_Authenticate", {L"Outlook", L"secret"})) {
        EXPECT_EQ(line.find("secret"), std::string::npos) << line;
    }
    EXPECT_EQ(LinesOf(L"VARD_AddAttachment", {L"path"}),
              (Expected{">>FUNCTION ENTER: VARD_SaveRecord",
                        ">>>Testing to continue execution (min params: 2, max params: 2)..."}));
    EXPECT_EQ(LinesOf(L"VARD_Version", {}), Expected{});
}

TEST_F(LogTest, AMailThatGoesOutLogsItsWay) {
    NewMail();
    Call(L"VARD_SetFieldData", {L"To", L"Back Office"});
    Call(L"VARD_LogSet", {L"1", Path()});
    auto lines = LinesOf(L"VARD_SaveRecord", {L"Send"});
    const auto begin = std::find(lines.begin(), lines.end(), ">>>FUNCTION ENTER: SaveRecord");
    const auto end = std::find(lines.begin(), lines.end(), ">>>FUNCTION EXIT: SaveRecord");
    ASSERT_TRUE(begin < end && end != lines.end());
    EXPECT_EQ(Expected(begin + 1, end - 3), // the answer's line, and those of the record let go, follow
              (Expected{">>>>Saving m_objMailItem...",
                        ">>>>m_objMailItem saved.",
                        ">>>>Entering workflow to send email message...",
                        ">>>>Ensured m_objMailItem is in the \"Drafts\" folder",
                        ">>>>FUNCTION ENTER: ReleaseItems",
                        ">>>>FUNCTION EXIT: ReleaseItems",
                        ">>>>Calling mapi_Send...",
                        ">>>>FUNCTION ENTER: mapi_Send",
                        ">>>>>FUNCTION ENTER: mapi_AddrListFromMessage",
                        ">>>>>>obtained recipient table",
                        ">>>>>>obtained address book",
                        ">>>>>>obtained rows",
                        ">>>>>>resolved names",
                        ">>>>>FUNCTION EXIT: mapi_AddrListFromMessage",
                        ">>>>>obtained addr list",
                        ">>>>>modified list",
                        ">>>>>obtained sent items folder",
                        ">>>>>Submitting message",
                        ">>>>>message submitted",
                        ">>>>FUNCTION EXIT: mapi_Send",
                        ">>>>Done with mapi_Send.",
                        ">>>>Done saving mail record"}));
}

TEST_F(LogTest, AnExceptionIsLoggedByTheFunctionsThatLog) {
    NewMail();
    Call(L"VARD_LogSet", {L"1", Path()});
    EXPECT_EQ(LinesOf(L"VARD_FilterByLastModified", {L""}), Expected{});
    Varden().Watch().FailCall(1, E_ACCESSDENIED, {standin::Side::Outlook});
    EXPECT_EQ(Call(L"VARD_SetFieldData", {L"Subject", L"x"}), kError);
    const std::string text = BytesIn(Path());
    EXPECT_TRUE(std::regex_search(
        text, std::regex(R"(\t\tCOM ERROR CAUGHT\r\n[-0-9 :]{19}\t\tError: 80070005\r\nMessage:)")))
        << text;
    EXPECT_EQ(text.find("Done with m_objFuncs->SetFieldData"), std::string::npos);
}

/// Names and words that stand in the log as they always have, and the exit line of each failing operation.
TEST_F(LogTest, OperationsLogUnderTheirOwnWords) {
    LogOn();
    const auto mail = AddMessage(FolderAt(World(), L"Front Desk", L"Inbox"), {.subject = L"x"});
    const std::wstring id = standin::mailbox::ToHex(mail->EntryId());
    ASSERT_EQ(Call(L"VARD_OpenFolder", {L"/Inbox"}), L"0");
    Call(L"VARD_LogSet", {L"1", Path()});
    const std::string failed = "FUNCTION EXIT: error in function";
    ExpectLogged(L"VARD_OpenFolder", {L"Nowhere"},
                 {"FUNCTION ENTER: OpenFolder", "PARAM:strFoldePath  VAL:Nowhere",
                  "FUNCTION ENTER: FindFolder", "PARAM:strFolder  VAL:Nowhere", "obtained subfolders", failed,
                  failed});
    ExpectLogged(L"VARD_FilterByLastModified", {L"1/1/2026"},
                 {"FUNCTION ENTER: Search", "FUNCTION ENTER: FilterApply",
                  "PARAM:filterString  VAL:[LastModificationTime] > \"1/1/2026\"", failed, failed});
    ExpectLogged(L"VARD_OpenRecord", {id},
                 {"found item for id", "obtained interface for item as mail",
                  "getting interface for parent folder", "Returning 0"});
    ExpectLogged(L"VARD_OpenFolder", {L"/Inbox"},
                 {"found folder - setting types", "setting items", "setting internal mapi pointer",
                  "FUNCTION EXIT: OpenFolder"});
    ExpectLogged(L"VARD_GetFirstRecord", {},
                 {"FUNCTION ENTER: GetFirstRecord", "obtained current folder items",
                  "obtained count for items", "incremented index", "obtained item at index",
                  "item is type mail", "FUNCTION EXIT: GetFirstRecord"});
    ExpectLogged(L"VARD_AddAttachment", {L"a/b", L""}, {"FUNCTION ENTER: AddAttachement", failed});
    ExpectLogged(L"VARD_SetCustomFieldData", {L"Price", L"1", L"Number"},
                 {"FUNCTION ENTER: SetCustonFieldData", "FUNCTION EXIT: SetCustonFieldData"});
    ExpectLogged(L"VARD_GetCustomFieldData", {L"Price"},
                 {"FUNCTION ENTER: GetCustomFieldData", "FUNCTION EXIT: GetCustomFiledData"});
    ExpectLogged(L"VARD_RPClearRecurrencePattern", {}, {"FUNCTION ENTER: ClearREcurrencePattern", failed});
    ExpectLogged(L"VARD_RPOpenExceptionAt", {3},
                 {"FUNCTION ENTER: RPOpenExceptionAt", "PARAM:index  VAL:3", failed});
    ExpectLogged(L"VARD_SaveRecordAsMsg", {L"C:\\no such folder\\x"},
                 {"FUNCTION ENTER: SaveREcordAsMSG", "appending .MSG to strPath",
                  "PARAM:szFileName  VAL:C:\\no such folder\\x.MSG", failed, failed});
    ExpectLogged(L"VARD_ReplyToMessage", {L"", L"", L"", L"", L"", L""},
                 {"FUNCTION ENTER: REplyToMessage", failed});
    ExpectLogged(L"VARD_GetDefaultFolderName", {L"Inbox"},
                 {"PARAM:strType  VAL:Inbox", "onbtained default folder"});
    ExpectLogged(L"VARD_DeleteCurrentRecord", {true},
                 {"PARAM:bPerm  VAL:true", "removing item from items list at m_lindex"});
    ExpectLogged(L"VARD_GALGetField", {L"fax", 1}, {"FUNCTION ENTER: GALGetField", failed});
}

TEST_F(LogTest, TheTimeStampLosesItsSecondsOnTheWayToTheFilter) {
    Call(L"VARD_LogSet", {L"1", Path()});
    const std::vector<std::pair<const wchar_t*, std::string>> stamps{
        {L"11/15/2026 3:45:10 PM", "11/15/2026 3:45  PM"},
        {L"11/15/2026 3:45 PM", "11/15/2026 3:45 PM"},
        {L"15.11.2026 15:45:10", "15.11.2026 15:45 "},
        {L"3:45:", "3:45 "},
        {L"no colon", "no colon"},
    };
    for (const auto& [given, passed] : stamps) {
        const auto lines = LinesOf(L"VARD_FilterByLastModified", {given});
        ASSERT_GE(lines.size(), 2u);
        EXPECT_TRUE(lines[1].ends_with("PARAM:strFieldData  VAL:" + passed)) << lines[1];
    }
}

TEST_F(LogTest, ALongLineIsWrittenWhole) {
    Call(L"VARD_LogSet", {L"1", Path()});
    const std::wstring name(100000, L'n');
    const auto lines = LinesOf(L"VARD_OpenFolder", {name});
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[1].size(), std::string(">>PARAM:stra  VAL:").size() + name.size());
}

TEST_F(LogTest, AFileThatCannotBeOpenedChangesNoAnswer) {
    Call(L"VARD_LogSet", {L"1", L"C:\\no such folder\\log.txt"});
    EXPECT_EQ(Call(L"VARD_Version", {L"short"}), L"7.0.0.0");
    ExpectFailure(L"VARD_GetFolderID", {}, -1001, L"Outlook not started or Authenticate not called");
}

} // namespace
} // namespace varden::tests
