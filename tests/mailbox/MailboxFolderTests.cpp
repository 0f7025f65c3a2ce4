// A mailbox on disk: it comes back as it was, takes in what is dropped in, and survives whatever happens to
// it.
#include "standin/mailbox/MailboxFolder.h"
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "tests/mailbox/SavedRounds.h"
#include "tests/mailbox/Support.h"

#include <algorithm>

namespace standin::mailbox::test {
namespace {

namespace fs = std::filesystem;

std::unique_ptr<Mailbox> Open(const fs::path& path) {
    LoadReport report;
    auto mailbox = OpenMailboxFolder(path.wstring(), report);
    EXPECT_EQ(Utf8(report.error), "");
    EXPECT_TRUE(report.leftOut.empty()) << Utf8(report.leftOut[0]);
    return mailbox;
}

/// Everything in a folder and below that a user could see, as text.
std::wstring Describe(const Folder& folder, const std::wstring& indent) {
    std::wstring text = indent + folder.Name() + L" " + ToHex(folder.EntryId()) + L" " +
                        folder.ContainerClass() + L" " + std::to_wstring(folder.DefaultItemType()) + L" " +
                        folder.Get<PR_COMMENT_W>().value_or(L"") + L"\n";
    for (const UserField& field : folder.UserFields())
        text += indent + L" field " + field.name + L" " + std::to_wstring(field.type) + L"\n";
    for (const auto* messages : {&folder.Messages(), &folder.AssociatedMessages()})
        for (const Message* message : *messages)
            text += indent + L" message " + ToHex(message->EntryId()) + L" " +
                    message->Get<PR_SUBJECT_W>().value_or(L"") + L" " +
                    std::to_wstring(message->Get<PR_MESSAGE_SIZE>().value_or(0)) + L"\n";
    for (const auto& subfolder : folder.Subfolders())
        text += Describe(*subfolder, indent + L"  ");
    return text;
}

std::string Describe(const Mailbox& mailbox) {
    std::wstring text = mailbox.ProfileName() + L"\n";
    for (const auto& store : mailbox.AllStores()) {
        text += store->Name() + L" " + ToHex(store->EntryId()) + L" " +
                store->Get<PR_COMMENT_W>().value_or(L"") + L"\n";
        for (const auto& [number, folder] : store->SpecialFolders())
            text += std::to_wstring(number) + L"=" + folder->Name() + L" ";
        text += Describe(store->Root(), L"");
    }
    for (const auto& entry : mailbox.Addresses().Entries())
        text += entry->Name() + L" " + entry->Get<PR_TITLE_W>().value_or(L"") + L" " +
                std::to_wstring(entry->Members().size()) + L" " + ToHex(entry->EntryId()) + L"\n";
    return Utf8(text);
}

fs::path OnlyFile(const fs::path& folder, const std::string& ending) {
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().string().ends_with(ending))
            return entry.path();
    return {};
}

TEST(MailboxFolder, ComesBackAsItWasAndNeverGivesAnIdTwice) {
    const TemporaryFolder folder;
    const fs::path path = folder.Path() / "new";
    std::string before;
    Bytes removedId;
    {
        const auto mailbox = Open(path);
        Store& store = *mailbox->DefaultStore();
        const PropertyName name{kPsPublicStrings, L"Case = number"};
        const PropertyTag named = MakeTag(store.Names().Id(name, true), PT_MV_UNICODE);
        Folder& inbox = FolderNamed(*mailbox, L"Inbox");
        std::shared_ptr<Folder> made;
        ASSERT_EQ(inbox.CreateSubfolder({L"Projects", 3, {}}, made), S_OK);
        ASSERT_EQ(made->SetUserFields({{L"Hours = [all]; ", 3}, {L"Ünits\r\n", 1}}), S_OK);
        ASSERT_EQ(made->Write(PR_COMMENT_W, std::wstring(L" two\r\nlines; \\ ")), S_OK);
        ASSERT_EQ(made->Write(named, std::vector<std::wstring>{L"", L"a;b\\", L" "}), S_OK);
        ASSERT_EQ(store.Write(PR_COMMENT_W, std::wstring(L"the front")), S_OK);
        std::shared_ptr<Folder> hidden;
        ASSERT_EQ(store.Root().CreateSubfolder({L"Finder", 0, {}}, hidden), S_OK);
        ASSERT_EQ(store.SetSpecialFolder(kJunk, nullptr), S_OK);
        const auto first = SaveMessage(*made, L"first");
        SaveMessage(*made, L"second");
        const auto moved = SaveMessage(*made, L"third");
        ASSERT_EQ(made->MoveMessage(*moved->Saved(), inbox, nullptr), S_OK);
        ASSERT_EQ(first->Write(named, std::vector<std::wstring>{L"red", L"green"}), S_OK);
        ASSERT_EQ(first->Save(), S_OK);
        std::shared_ptr<OpenMessage> associated;
        ASSERT_EQ(inbox.CreateMessage(true, associated), S_OK);
        ASSERT_EQ(associated->Save(), S_OK);
        const auto removed = SaveMessage(inbox, L"removed");
        removedId = removed->Saved()->EntryId();
        ASSERT_EQ(inbox.RemoveMessage(*removed->Saved()), S_OK);
        before = Describe(*mailbox);
    }
    const auto mailbox = Open(path);
    EXPECT_EQ(Describe(*mailbox), before);
    Store& store = *mailbox->DefaultStore();
    const PropertyTag named = MakeTag(store.Names().Id({kPsPublicStrings, L"Case = number"}), PT_MV_UNICODE);
    Folder& inbox = FolderNamed(*mailbox, L"Inbox");
    const Folder* made = inbox.FindSubfolder(L"projects");
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(Read(*made, named), Value(std::vector<std::wstring>{L"", L"a;b\\", L" "}));
    EXPECT_EQ(Read(*made->Messages()[0], named), Value(std::vector<std::wstring>{L"red", L"green"}));
    EXPECT_EQ(mailbox->FindMessage(removedId), nullptr);
    EXPECT_NE(SaveMessage(inbox, L"new")->Saved()->EntryId(), removedId);
}

TEST(MailboxFolder, KeepsFoldersUnderNamesThatNoFileMayHave) {
    std::vector<std::wstring> names = {
        L"a/b\\c",       L"C:",         L"con",   L"NUL.txt",   L"trailing.",     L"trailing ",
        L".root",        L".writing",   L"%0041", L"100%",      L"a?b*c",         L"<\"quoted\">|",
        L"tab\tname",    L"folder.ini", L"x.MSG", L"transport", L"日本語 メール", L"😀",
        L"\xD83D alone", L" leading",   L"..",
    };
    names.push_back(std::wstring(250, L'é'));
    names.push_back(std::wstring(249, L'é') + L"e");
    const TemporaryFolder folder;
    {
        const auto mailbox = Open(folder.Path());
        for (const std::wstring& name : names) {
            std::shared_ptr<Folder> made;
            ASSERT_EQ(FolderNamed(*mailbox, L"Inbox").CreateSubfolder({name, 0, {}}, made), S_OK)
                << Utf8(name);
            SaveMessage(*made, name);
            EXPECT_EQ(NameFromFileName(FileNameFromName(name)), name);
        }
    }
    {
        const auto mailbox = Open(folder.Path());
        Folder& inbox = FolderNamed(*mailbox, L"Inbox");
        ASSERT_EQ(inbox.Subfolders().size(), names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            EXPECT_TRUE(inbox.Subfolders()[i]->Name() == names[i]) << Utf8(names[i]);
            ASSERT_EQ(inbox.Subfolders()[i]->Messages().size(), 1u);
        }
        ASSERT_EQ(inbox.FindSubfolder(L"con")->Rename(L"CON"), S_OK);
        ASSERT_EQ(inbox.FindSubfolder(L"C:")->Rename(L"plain"), S_OK);
        ASSERT_EQ(inbox.FindSubfolder(names.back())->MoveTo(*inbox.FindSubfolder(L"plain"), L"short"), S_OK);
        ASSERT_EQ(inbox.FindSubfolder(L"..")->Delete(), S_OK);
    }
    const auto mailbox = Open(folder.Path());
    Folder& inbox = FolderNamed(*mailbox, L"Inbox");
    EXPECT_EQ(inbox.Subfolders().size(), names.size() - 2);
    EXPECT_EQ(inbox.FindSubfolder(L"con")->Name(), L"CON");
    ASSERT_NE(inbox.FindSubfolder(L"plain"), nullptr);
    ASSERT_NE(inbox.FindSubfolder(L"plain")->FindSubfolder(L"short"), nullptr);
    EXPECT_EQ(inbox.FindSubfolder(L"plain")->FindSubfolder(L"short")->Messages().size(), 1u);
}

TEST(MailboxFolder, TakesInWhatIsDroppedInAndLeavesOutWhatItCannotRead) {
    const fs::path files = MsgFolder();
    if (files.empty())
        GTEST_SKIP();
    const TemporaryFolder folder;
    Open(folder.Path());
    const fs::path inboxPath = folder.Path() / "Front Desk" / "Inbox";
    fs::create_directories(inboxPath / "by hand");
    fs::copy_file(files / "message-in-message.msg", inboxPath / "a mail.msg");
    fs::copy_file(files / "msgClassTask.msg", inboxPath / "by hand" / "Task.MSG");
    fs::copy_file(files / "damaged-1.msg", inboxPath / "damaged.msg");
    WriteFile(inboxPath / "000000000001.msg", "no message");
    WriteFile(inboxPath / "readme.txt", "hello");
    std::string ids;
    for (int round = 0; round < 2; ++round) {
        LoadReport report;
        const auto mailbox = OpenMailboxFolder(folder.Path().wstring(), report);
        ASSERT_NE(mailbox, nullptr);
        ASSERT_EQ(report.leftOut.size(), 3u);
        std::ranges::sort(report.leftOut);
        const std::string shown = Utf8(inboxPath.wstring()) + "\\";
        EXPECT_EQ(Utf8(report.leftOut[0]), shown + "000000000001.msg: damaged, or no MSG file");
        EXPECT_EQ(Utf8(report.leftOut[1]), shown + "damaged.msg: damaged, or no MSG file");
        EXPECT_EQ(Utf8(report.leftOut[2]), shown + "readme.txt: no MSG file");
        const Folder& inbox = FolderNamed(*mailbox, L"Inbox");
        ASSERT_EQ(inbox.Messages().size(), 1u);
        EXPECT_EQ(inbox.Messages()[0]->Get<PR_SUBJECT_W>(), L"I have attachments!");
        ASSERT_EQ(inbox.Subfolders().at(0)->Messages().size(), 1u);
        const std::string described = Describe(*mailbox);
        EXPECT_TRUE(round == 0 || described == ids) << "ids are stable from then on";
        ids = described;
    }
    EXPECT_EQ(ReadFile(inboxPath / "damaged.msg"), ReadFile(files / "damaged-1.msg"));
    EXPECT_EQ(ReadFile(OnlyFile(inboxPath / "by hand", ".msg")), ReadFile(files / "msgClassTask.msg"));
}

TEST(MailboxFolder, GivesACopiedFolderAnIdOfItsOwn) {
    const TemporaryFolder folder;
    SaveMessage(FolderNamed(*Open(folder.Path()), L"Inbox"), L"x");
    const fs::path top = folder.Path() / "Front Desk";
    fs::copy(top / "Inbox", top / "Copy", fs::copy_options::recursive);
    const auto mailbox = Open(folder.Path());
    const Folder& inbox = FolderNamed(*mailbox, L"Inbox");
    const Folder& copy = FolderNamed(*mailbox, L"Copy");
    EXPECT_EQ(mailbox->DefaultStore()->SpecialFolder(kInbox), &inbox);
    EXPECT_NE(copy.Id(), inbox.Id());
    EXPECT_EQ(copy.Messages().size() + inbox.Messages().size(), 2u);
    EXPECT_EQ(Describe(*Open(folder.Path())), Describe(*mailbox));
}

/// All files below with what is in them.
std::map<fs::path, Bytes> Snapshot(const fs::path& path) {
    std::map<fs::path, Bytes> files;
    for (const auto& entry : fs::recursive_directory_iterator(path))
        files[entry.path()] = entry.is_directory() ? Bytes() : ReadFile(entry.path());
    return files;
}

TEST(MailboxFolder, RefusesBrokenFilesWithTheirLineAndTouchesNothing) {
    const TemporaryFolder folder;
    Open(folder.Path());
    const char* const cases[][3] = {
        {"mailbox.ini", "[Profile]\nName\n", ":2: neither a section nor a key with its value"},
        {"mailbox.ini", "[Profile]\nName=x\nStore=Front Desk\nColour=red\n", ":4: unknown key \"Colour\""},
        {"mailbox.ini", "[Profile]\nName=x\nStore=../x\n", ":3: \"../x\" is no folder beside mailbox.ini"},
        {"mailbox.ini", "[Profile]\nName=x\n", ":1: [Profile] has no key \"Store\""},
        {"mailbox.ini", "[Profile]\nName=x\nStore=Archive\n", ": none of its stores is the default one"},
        {"mailbox.ini", "Name=x\n", ":1: a key outside of any section"},
        {"mailbox.ini", "", ":1: there is no section [Profile]"},
        {"Front Desk/store.ini", "; mine\n[Store]\nKind=Postbox\n",
         ":3: \"Postbox\" is no kind of store: Mailbox, Archive or Public"},
        {"Front Desk/store.ini", "[Store]\nProvider={1}\n", ":2: \"{1}\" is no GUID in braces"},
        {"Front Desk/Inbox/folder.ini", "[Folder]\nId=seven\n", ":2: \"seven\" is no number"},
        {"Front Desk/Inbox/folder.ini", "[Folder]\nId=0\n", ":2: \"0\" is no id"},
        {"Front Desk/Inbox/folder.ini", "[Folder\n", ":1: a section without its closing bracket"},
        {"Front Desk/Inbox/folder.ini", "[Folder]\nId=\\12\n",
         ":2: a backslash without four hexadecimal digits"},
        {"Front Desk/Inbox/folder.ini", "[Folder]\nId=9\nClass=x\nItemType=0\n[Properties]\n36040003=many\n",
         ":6: \"many\" is no value of the property's type"},
        {"Front Desk/Inbox/folder.ini", "[Colours]\n", ":1: there is no section [Folder]"},
    };
    WriteFile(folder.Path() / "Front Desk" / "Inbox" / ".writing-000000000009.msg", "left over");
    for (const auto& [name, text, reason] : cases) {
        SCOPED_TRACE(text);
        const fs::path file = folder.Path() / name;
        const Bytes sound = ReadFile(file);
        WriteFile(file, text);
        const auto before = Snapshot(folder.Path());
        LoadReport report;
        EXPECT_EQ(OpenMailboxFolder(folder.Path().wstring(), report), nullptr);
        EXPECT_EQ(Utf8(report.error), Utf8(fs::path(file).make_preferred().wstring()) + reason);
        EXPECT_TRUE(Snapshot(folder.Path()) == before);
        WriteFile(file, sound);
    }
    EXPECT_NE(Open(folder.Path()), nullptr);
    const TemporaryFolder foreign;
    WriteFile(foreign.Path() / "thesis.doc", "years of work");
    LoadReport report;
    EXPECT_EQ(OpenMailboxFolder(foreign.Path().wstring(), report), nullptr);
    EXPECT_TRUE(report.error.ends_with(L"not empty, and no mailbox: there is no mailbox.ini"));
    EXPECT_EQ(Snapshot(foreign.Path()).size(), 1u);
}

TEST(MailboxFolder, ClearsWhatAnInterruptedSaveLeftBehind) {
    const TemporaryFolder folder;
    SaveMessage(FolderNamed(*Open(folder.Path()), L"Inbox"), L"x");
    const fs::path inbox = folder.Path() / "Front Desk" / "Inbox";
    const std::string before = Describe(*Open(folder.Path()));
    const fs::path message = OnlyFile(inbox, ".msg");
    WriteFile(inbox / (".writing-" + message.filename().string()), "half a mess");
    WriteFile(folder.Path() / ".writing-mailbox.ini", "[Prof");
    fs::create_directories(inbox / ".deleted-Projects" / "below");
    WriteFile(inbox / ".deleted-Projects" / "below" / "000000000007.msg", "x");
    const auto mailbox = Open(folder.Path());
    EXPECT_EQ(Describe(*mailbox), before);
    for (const auto& entry : fs::recursive_directory_iterator(folder.Path()))
        EXPECT_FALSE(entry.path().filename().string().starts_with(".")) << entry.path();
}

TEST(MailboxFolder, BeginsAnewWhereTheSampleWorldWasNotFinished) {
    const TemporaryFolder folder;
    Open(folder.Path());
    WriteFile(folder.Path() / ".writing-world", "");
    fs::remove(folder.Path() / "Front Desk" / "store.ini");
    Open(folder.Path());
    EXPECT_EQ(Open(folder.Path())->AllStores().size(), 4u);
}

TEST(MailboxFolder, KeepsACopyOfWhatIsSent) {
    const TemporaryFolder folder;
    const auto mailbox = Open(folder.Path());
    const auto message = SaveMessage(FolderNamed(*mailbox, L"Outbox"), L"sent");
    AddRecipient(*message, L"Back Office");
    ASSERT_EQ(message->Write(PR_SENTMAIL_ENTRYID, FolderNamed(*mailbox, L"Sent Items").EntryId()), S_OK);
    ASSERT_EQ(mailbox->Submit(*message), S_OK);
    NamedProperties names;
    Content content;
    ASSERT_EQ(ReadMsgBytes(ReadFile(OnlyFile(folder.Path() / "transport", ".msg")), names, content), S_OK);
    EXPECT_EQ(content.properties.GetOr<PR_SUBJECT_W>({}), L"sent");
    EXPECT_EQ(content.recipients.size(), 1u);
    EXPECT_EQ(Describe(*Open(folder.Path())), Describe(*mailbox));
}

/// Starts this program on the folder, and ends it while it saves.
void RunAndEnd(const fs::path& folder, DWORD milliseconds) {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring command =
        L"\"" + std::wstring(program) + L"\" --save-without-end \"" + folder.wstring() + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                               &process));
    EXPECT_EQ(WaitForSingleObject(process.hProcess, milliseconds), WAIT_TIMEOUT) << "it was to go on and on";
    TerminateProcess(process.hProcess, 1);
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

TEST(MailboxFolder, SurvivesTheEndOfItsProcessAtAnyMoment) {
    const TemporaryFolder folder;
    SaveMessage(FolderNamed(*Open(folder.Path()), L"Inbox"), L"before");
    bool hasChanged = false;
    for (DWORD round = 0; round < 6; ++round) {
        RunAndEnd(folder.Path(), 400 + 37 * round);
        const auto mailbox = Open(folder.Path());
        ASSERT_NE(mailbox, nullptr);
        const Folder& inbox = FolderNamed(*mailbox, L"Inbox");
        ASSERT_EQ(inbox.Messages().size(), 1u);
        const std::wstring subject = inbox.Messages()[0]->Get<PR_SUBJECT_W>().value_or(L"");
        const std::wstring body = inbox.Messages()[0]->Get<PR_BODY_W>().value_or(L"");
        EXPECT_TRUE(subject == L"before" || body == BodyOfRound(subject.at(0) - L'a')) << "half of a save";
        hasChanged = hasChanged || subject != L"before";
    }
    EXPECT_TRUE(hasChanged) << "the second process never came to save";
}

} // namespace
} // namespace standin::mailbox::test
