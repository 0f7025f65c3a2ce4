// Attachments of the current record: added, counted, named, measured, saved to files.
#include "Files.h"
#include "ScriptTest.h"

#include <limits>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

constexpr const wchar_t* kNoRecord = L"Item operation called without opening/creating a record";

/// What an attachment of a message in a folder is like.
struct Attached {
    std::int32_t method = ATTACH_BY_VALUE;
    std::wstring longName = {};
    std::wstring shortName = {};
    Bytes data = {};
    std::shared_ptr<const Content> embedded = {};
    std::shared_ptr<const Bytes> oleStorage = {};
};

class AttachmentTest : public ScriptTest {
protected:
    void SetUp() override { LogOn(); }

    Folder& Inbox() { return FolderAt(World(), L"Front Desk", L"Inbox"); }
    const TemporaryFolder& Files() const { return m_files; }

    void OpenWith(std::initializer_list<Attached> all) {
        Content content;
        content.properties.Set<PR_MESSAGE_CLASS_W>(L"IPM.Note");
        for (const Attached& each : all) {
            auto attachment = std::make_shared<Attachment>();
            attachment->number = static_cast<std::uint32_t>(content.attachments.size());
            PropertyBag& bag = attachment->properties;
            bag.Set<PR_ATTACH_METHOD>(each.method);
            if (!each.longName.empty()) {
                bag.Set<PR_ATTACH_LONG_FILENAME_W>(each.longName);
            }
            if (!each.shortName.empty()) {
                bag.Set<PR_ATTACH_FILENAME_W>(each.shortName);
            }
            if (!each.data.empty()) {
                bag.Set<PR_ATTACH_DATA_BIN>(each.data);
            }
            attachment->embedded = each.embedded;
            attachment->oleStorage = each.oleStorage;
            content.attachments.push_back(attachment);
        }
        std::shared_ptr<Message> message;
        ASSERT_EQ(Inbox().Receive(content, false, message), S_OK);
        ASSERT_EQ(Call(L"VARD_OpenRecord", {ToHex(message->EntryId())}), L"0");
    }
    static std::shared_ptr<const Content> Embedded(const wchar_t* messageClass, const wchar_t* subject) {
        Content content;
        content.properties.Set<PR_MESSAGE_CLASS_W>(messageClass);
        content.properties.Set<PR_SUBJECT_W>(subject);
        return std::make_shared<Content>(std::move(content));
    }
    /// A compound file with one stream.
    static Bytes OleObject(std::string_view data);
    std::wstring Name(int index) { return Call(L"VARD_GetAttachmentName", {index}); }
    std::wstring ShortName(int index) { return Call(L"VARD_GetAttachmentName", {index, L"true"}); }
    std::wstring Save(const std::wstring& name, int index) {
        return Call(L"VARD_SaveAttachment", {Files().File(name), index});
    }
    /// Of the ways to open an OLE object's data, those before this one (from 1) are refused.
    void OpenOleBy(std::uint64_t way) {
        Varden().Watch().Reset();
        for (std::uint64_t refused = 1; refused < way; ++refused) {
            Varden().Watch().AlsoFailMember(L"IAttach::OpenProperty", MAPI_E_INTERFACE_NOT_SUPPORTED,
                                            refused);
        }
    }
    void ExpectSaveFailure(int index, const std::wstring& text) {
        ExpectFailure(L"VARD_SaveAttachment", {Files().File(L"out.bin"), index}, -1097,
                      L"MAPI Subsystem error\r" + text);
        EXPECT_FALSE(Exists(Files().File(L"out.bin"))); // no half of a file
    }

private:
    TemporaryFolder m_files;
};

constexpr const wchar_t* kStream = L"Contents";

Bytes AttachmentTest::OleObject(std::string_view data) {
    ILockBytes* memory = nullptr;
    IStorage* storage = nullptr;
    EXPECT_EQ(OpenStorageBytes({}, &memory, &storage), S_OK);
    IStream* stream = nullptr;
    EXPECT_EQ(
        storage->CreateStream(kStream, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream),
        S_OK);
    stream->Write(data.data(), static_cast<ULONG>(data.size()), nullptr);
    stream->Release();
    storage->Commit(STGC_DEFAULT);
    storage->Release();
    Bytes bytes;
    EXPECT_EQ(BytesOfStorage(memory, bytes), S_OK);
    memory->Release();
    return bytes;
}

/// The data of the stream in the compound file of an OLE object.
std::string OleDataIn(const std::wstring& path) {
    IStorage* storage = nullptr;
    EXPECT_EQ(StgOpenStorage(path.c_str(), nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, nullptr, 0, &storage),
              S_OK);
    IStream* stream = nullptr;
    EXPECT_EQ(storage->OpenStream(kStream, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream), S_OK);
    char data[100];
    ULONG read = 0;
    stream->Read(data, sizeof data, &read);
    stream->Release();
    storage->Release();
    return {data, read};
}

TEST_F(AttachmentTest, FilesAreAttachedToEveryKindThatTakesThemAndComeBackUnchanged) {
    std::string large(300000, '\0');
    for (std::size_t i = 0; i < large.size(); ++i) {
        large[i] = static_cast<char>(i * 31 >> 3);
    }
    const std::vector<std::pair<std::wstring, std::string>> files{
        {L"empty.txt", ""}, {L"letter to Ann.txt", "Dear Ann"}, {L"\u00dcber.bin", large}};
    for (const wchar_t* module :
         {L"Contacts", L"Calendar", L"Tasks", L"Mail", L"Journal", L"Post", L"Distribution List"}) {
        LogOn();
        ASSERT_EQ(Call(L"VARD_NewRecord", {module}), L"0");
        EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), L"0");
        for (const auto& [name, bytes] : files) {
            EXPECT_EQ(Call(L"VARD_AddAttachment", {Files().Add(name, bytes), L""}), L"0")
                << testing::PrintToString(module) << testing::PrintToString(LastErrorText());
        }
        EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), L"3");
        for (int i = 1; i <= 3; ++i) {
            const auto& [name, bytes] = files[static_cast<std::size_t>(i) - 1];
            EXPECT_EQ(Name(i), name);
            EXPECT_GE(std::stoul(Call(L"VARD_GetAttachmentSize", {i})), bytes.size());
            EXPECT_EQ(Save(L"out.bin", i), L"0") << testing::PrintToString(LastErrorText());
            EXPECT_TRUE(BytesIn(Files().File(L"out.bin")) == bytes) << testing::PrintToString(name);
        }
    }
}

TEST_F(AttachmentTest, AnAttachmentIsSavedWithItsRecordAtOnce) {
    ASSERT_EQ(Call(L"VARD_OpenFolder", {L"/Inbox"}), L"0");
    ASSERT_EQ(Call(L"VARD_NewRecord", {L"Mail"}), L"0");
    EXPECT_EQ(Call(L"VARD_AddAttachment", {Files().Add(L"a.txt", "a"), L"Shown name"}), L"0");
    ASSERT_EQ(Inbox().Messages().size(), 1u);
    const PropertyBag& stored = Inbox().Messages()[0]->Current().attachments.at(0)->properties;
    EXPECT_EQ(stored.GetOr<PR_DISPLAY_NAME_W>({}), L"Shown name");
    EXPECT_EQ(stored.GetOr<PR_ATTACH_METHOD>(0), ATTACH_BY_VALUE);
    EXPECT_EQ(stored.GetOr<PR_RENDERING_POSITION>(0), 15000);
    EXPECT_EQ(Name(1), L"a.txt");
}

TEST_F(AttachmentTest, WhatCannotBeAttachedIsTold) {
    const std::wstring file = Files().Add(L"a.txt", "a");
    std::wstring withSlash = file;
    withSlash[withSlash.rfind(L'\\')] = L'/';
    ExpectFailure(L"VARD_AddAttachment", {file}, -3, L"Invalid Number of Parameters");
    ExpectFailure(L"VARD_AddAttachment", {L"", L"x"}, -1013,
                  L"Missing Path to Attachment\rCan not retrieve MAPI interface for item.");
    for (const std::wstring& path : {withSlash, Files().File(L"none.txt"), std::wstring(L" ")}) {
        ExpectFailure(L"VARD_AddAttachment", {path, L""}, -1016, L"Invalid Path or File Name");
    }
    ExpectFailure(L"VARD_AddAttachment", {file, L""}, -1023, kNoRecord);
    // Notes have no attachments, and a folder is none.
    ASSERT_EQ(Call(L"VARD_NewRecord", {L"Note"}), L"0");
    EXPECT_EQ(Call(L"VARD_AddAttachment", {file, L""}), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    ASSERT_EQ(Call(L"VARD_NewRecord", {L"Mail"}), L"0");
    EXPECT_EQ(Call(L"VARD_AddAttachment", {Files().Path(), L""}), kError);
    EXPECT_EQ(LastErrorCode(), 0);
    EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), L"0");
}

TEST_F(AttachmentTest, ANameIsTheLongOneUnlessTheShortIsAskedFor) {
    OpenWith({{.longName = L"a long name.txt", .shortName = L"along~1.txt"},
              {.shortName = L"short.txt"},
              {.longName = L"only long.txt"},
              {}});
    EXPECT_EQ(Name(1), L"a long name.txt");
    EXPECT_EQ(ShortName(1), L"along~1.txt");
    EXPECT_EQ(Call(L"VARD_GetAttachmentName", {1, L"TRUE"}), L"along~1.txt");
    for (const wchar_t* word : {L"yes", L"1", L"false", L""}) { // only one word asks for it
        EXPECT_EQ(Call(L"VARD_GetAttachmentName", {1, word}), L"a long name.txt");
    }
    EXPECT_EQ(ShortName(2), L"short.txt");
    EXPECT_EQ(ShortName(3), L"only long.txt"); // falls back
    constexpr const wchar_t* nameless = L"MAPI Subsystem error\rUnable to access attachment name ";
    ExpectFailure(L"VARD_GetAttachmentName", {2}, -1097, nameless); // doesn't
    ExpectFailure(L"VARD_GetAttachmentName", {4, L"true"}, -1097, nameless);
}

TEST_F(AttachmentTest, AnEmbeddedMessageGoesByItsSubjectWithTheExtensionOfItsKind) {
    OpenWith({{.method = ATTACH_EMBEDDED_MSG, .embedded = Embedded(L"IPM.Note", L"Hello")},
              {.method = ATTACH_EMBEDDED_MSG, .embedded = Embedded(L"IPM.Post", L"Hello")},
              {.method = ATTACH_EMBEDDED_MSG, .embedded = Embedded(L"ipm.contact.Own", L"Bob")},
              {.method = ATTACH_EMBEDDED_MSG, .embedded = Embedded(L"IPM.Appointment", L"Lunch")},
              {.method = ATTACH_EMBEDDED_MSG, .embedded = Embedded(L"REPORT.IPM.Note.NDR", L"Failed")},
              {.method = ATTACH_EMBEDDED_MSG, .embedded = Embedded(L"IPM.Note", L"report.msg")},
              {.method = ATTACH_EMBEDDED_MSG, .embedded = Embedded(L"IPM.Note", L".MSG first")},
              {.method = ATTACH_EMBEDDED_MSG, .longName = L"x.msg", .embedded = Embedded(L"IPM.Note", L"")},
              {.method = ATTACH_EMBEDDED_MSG, .longName = L"x.msg"}});
    const std::vector<const wchar_t*> names{L"Hello.msg",  L"Hello.msg",      L"Bob.vcf",   L"Lunch.ics",
                                            L"Failed.msg", L"report.msg.msg", L".MSG first"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(Name(static_cast<int>(i) + 1), names[i]);
        EXPECT_EQ(ShortName(static_cast<int>(i) + 1), names[i]);
    }
    for (const int nameless : {8, 9}) { // without a subject; without a message
        ExpectFailure(L"VARD_GetAttachmentName", {nameless}, -1097,
                      L"MAPI Subsystem error\rUnable to access attachment name ");
    }
    const std::wstring size = Call(L"VARD_GetAttachmentSize", {1});
    EXPECT_TRUE(size.ends_with(L".msg") && std::stol(size) > 0) << testing::PrintToString(size);
    // Whatever the extension says, what is saved is an MSG file.
    EXPECT_EQ(Save(L"Bob.vcf", 3), L"0") << testing::PrintToString(LastErrorText());
    NamedProperties names3;
    EXPECT_EQ(MessageIn(Files().File(L"Bob.vcf"), names3).properties.GetOr<PR_SUBJECT_W>({}), L"Bob");
}

TEST_F(AttachmentTest, AttachmentsThatAreNotThereAreTold) {
    OpenWith({{.method = NO_ATTACHMENT, .longName = L"none"}, {.longName = L"a.txt"}});
    ExpectFailure(L"VARD_GetAttachmentName", {1}, -1097, L"MAPI Subsystem error\rUnable to open attachments");
    ExpectFailure(L"VARD_GetAttachmentSize", {1}, -1097, L"MAPI Subsystem error\rUnable to open attachments");
    for (const int index : {0, 3, -1, 2000000000, std::numeric_limits<int>::min()}) {
        for (const wchar_t* function : {L"VARD_GetAttachmentName", L"VARD_GetAttachmentSize"}) {
            ExpectFailure(
                function, {index}, -1097,
                L"MAPI Subsystem error\rError: 8004010F\rMAPI_E_NOT_FOUND\rUnable to open attachments");
        }
        ExpectSaveFailure(index, L"Error: 8004010F\rMAPI_E_NOT_FOUND\r"
                                 L"Unable to open attachment ERROR: 8004010F NOT FOUND");
    }
    Varden().Watch().FailMember(L"MAPI32::HrGetOneProp", E_FAIL, 2);
    ExpectFailure(L"VARD_GetAttachmentSize", {2}, -1097,
                  L"MAPI Subsystem error\rError: 80004005\rMAPI_E_CALL_FAILED\r"
                  L"Unable to access attachment size ");
}

TEST_F(AttachmentTest, WithoutARecordThereIsNoAttachment) {
    for (const wchar_t* function : {L"VARD_GetAttachmentName", L"VARD_GetAttachmentSize"}) {
        ExpectFailure(function, {1}, -1097,
                      L"MAPI Subsystem error\rUnable to open attachment at provided index");
    }
    ExpectSaveFailure(1, L"Unable to open attachment at provided index");
    ExpectFailure(L"VARD_GetAttachmentCount", {}, 1, L"Unhandled exception in function");
}

TEST_F(AttachmentTest, ACountThatMapiRefusesIsTold) {
    OpenWith({{.longName = L"a"}, {.longName = L"b"}});
    Varden().Watch().FailMember(L"IMessage::GetAttachmentTable", E_ACCESSDENIED);
    ExpectFailure(L"VARD_GetAttachmentCount", {}, -1097,
                  L"MAPI Subsystem error\rError: 80070005\rMAPI_E_NO_ACCESS\r"
                  L"Unable to get attachments table ERROR: 80070005 NO ACCESS");
    Varden().Watch().FailMember(L"MAPI32::HrQueryAllRows", MAPI_E_TABLE_TOO_BIG);
    ExpectFailure(L"VARD_GetAttachmentCount", {}, -1097,
                  L"MAPI Subsystem error\rError: 80040403\rMAPI_E_TABLE_TOO_BIG\r"
                  L"Unable to get attachments table rows ERROR: 80040403 TABLE TOO BIG");
    EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), L"2");
}

/// Stands in for _waccess: everything is there, and can only be read. Windows itself says that of no folder.
int __cdecl NothingIsWritable(const wchar_t*, int mode) {
    return mode == 0 ? 0 : -1;
}

TEST_F(AttachmentTest, PlacesThatCannotBeSavedToAreTold) {
    OpenWith({{.longName = L"a.txt", .data = {'a'}}});
    ExpectFailure(L"VARD_SaveAttachment", {L"", 1}, -1012, L"Save Path Missing");
    ExpectFailure(L"VARD_SaveAttachment", {L"a.txt", 1}, -1016, L"Invalid Path or File Name");
    ExpectFailure(L"VARD_SaveAttachment", {L"C:/a.txt", 1}, -1016, L"Invalid Path or File Name");
    ExpectFailure(L"VARD_SaveAttachment", {Files().File(L"none\\a.txt"), 1}, -301,
                  L"The specified file cannot be found");
    void* const access = ReplaceImport(Varden().Module(), "msvcrt.dll", "_waccess",
                                       reinterpret_cast<void*>(NothingIsWritable));
    ASSERT_TRUE(access);
    ExpectFailure(L"VARD_SaveAttachment", {Files().File(L"a.txt"), 1}, -302,
                  L"The specified folder cannot be accessed");
    ReplaceImport(Varden().Module(), "msvcrt.dll", "_waccess", access);
    ExpectFailure(L"VARD_SaveAttachment", {Files().File(L"a.txt")}, -3, L"Invalid Number of Parameters");
    Files().Add(L"a.txt", "a longer file that was there");
    EXPECT_EQ(Save(L"a.txt", 1), L"0"); // is replaced
    EXPECT_EQ(BytesIn(Files().File(L"a.txt")), "a");
}

TEST_F(AttachmentTest, AttachmentsByReferenceWriteNoFile) {
    for (const std::int32_t method : {2, 3, 4, 0, 7, 99}) { // and whatever else has no data
        OpenWith({{.method = method, .longName = L"a.txt", .data = {'a'}}});
        EXPECT_EQ(Save(L"a.txt", 1), L"0") << method;
        EXPECT_FALSE(Exists(Files().File(L"a.txt")));
    }
    OpenWith({{.method = 4, .longName = L"a.txt"}}); // where it points to is asked for, whatever the outcome
    Varden().Watch().FailMember(L"MAPI32::HrGetOneProp", E_ACCESSDENIED);
    EXPECT_EQ(Save(L"a.txt", 1), L"0");
    EXPECT_TRUE(Varden().Watch().HasFailed());
}

TEST_F(AttachmentTest, AFileThatIsNotWrittenWholeIsNotLeftBehind) {
    OpenWith({{.longName = L"a.txt", .data = Bytes(100000, 'a')}, {.longName = L"no data"}});
    const std::wstring noAccess = L"Error: 80070005\rMAPI_E_NO_ACCESS\r";
    Varden().Watch().FailMember(L"IAttach::GetProps", E_ACCESSDENIED);
    ExpectSaveFailure(1, noAccess + L"Unable to access attachment method  ERROR: 80070005 NO ACCESS");
    Varden().Watch().FailMember(L"MAPI32::OpenStreamOnFile", E_ACCESSDENIED);
    ExpectSaveFailure(1, noAccess + L"Cannot open stream on file ERROR: 80070005 NO ACCESS");
    ExpectSaveFailure(2, L"Error: 8004010F\rMAPI_E_NOT_FOUND\r"
                         L"Error opening attachment bin property ERROR: 8004010F NOT FOUND");
    for (const wchar_t* member : {L"IStream::CopyTo", L"IStream::Commit"}) {
        Varden().Watch().FailMember(member, STG_E_MEDIUMFULL);
        ExpectSaveFailure(1, L"Error: 80030070\rSTG_E_MEDIUMFULL\r"
                             L"Error copying stream to file ERROR: 80030070  UNKNOWN MAPI ERROR");
        EXPECT_TRUE(Varden().Watch().HasFailed());
    }
}

/// MAPI makes files by their name in the ANSI code page, in which this one is another.
TEST_F(AttachmentTest, AFileUnderANameThatIsNotWhollyAnsiIsRemovedUnderTheNameItGot) {
    OpenWith({{.longName = L"a.txt", .data = Bytes(1000, 'a')}});
    const std::wstring wide = L"\u0100-list.txt";
    Files().Add(wide, "somebody else's");
    EXPECT_EQ(Save(wide, 1), L"0");
    ASSERT_EQ(BytesIn(Files().File(L"A-list.txt")).size(), 1000u);
    Varden().Watch().FailMember(L"IStream::CopyTo", STG_E_MEDIUMFULL);
    EXPECT_EQ(Save(wide, 1), kError);
    EXPECT_FALSE(Exists(Files().File(L"A-list.txt")));
    EXPECT_EQ(BytesIn(Files().File(wide)), "somebody else's");
}

TEST_F(AttachmentTest, AnAttachmentThatTellsNothingOfItselfWritesNoFile) {
    OpenWith({{.longName = L"a.txt", .data = Bytes(100000, 'a')}});
    Varden().Watch().FailMember(L"IAttach::GetProps", S_FALSE); // a success without values
    EXPECT_EQ(Save(L"a.txt", 1), L"0");
    EXPECT_FALSE(Exists(Files().File(L"a.txt")));
    EXPECT_EQ(Save(L"a.txt", 1), L"0");
    EXPECT_EQ(BytesIn(Files().File(L"a.txt")).size(), 100000u);
}

TEST_F(AttachmentTest, AnEmbeddedMessageThatCannotBeOpenedIsTold) {
    OpenWith({{.method = ATTACH_EMBEDDED_MSG, .longName = L"x"}});
    ExpectSaveFailure(1, L"Error: 8004010F\rMAPI_E_NOT_FOUND\r"
                         L"Failed to open attachment as message ERROR: 8004010F NOT FOUND");
}

TEST_F(AttachmentTest, OleObjectsAreSavedAsCompoundFiles) {
    const auto object = std::make_shared<const Bytes>(OleObject("drawn by hand"));
    OpenWith({{.method = ATTACH_OLE, .oleStorage = object}, {.method = ATTACH_OLE}});
    EXPECT_EQ(Save(L"object.bin", 1), L"0") << testing::PrintToString(LastErrorText());
    EXPECT_EQ(BytesIn(Files().File(L"object.bin")), std::string(object->begin(), object->end()));
    // The other property gives the same, and where neither opens as a file the storage itself is copied.
    OpenOleBy(2);
    EXPECT_EQ(Save(L"object.bin", 1), L"0");
    EXPECT_EQ(BytesIn(Files().File(L"object.bin")), std::string(object->begin(), object->end()));
    OpenOleBy(3);
    EXPECT_EQ(Save(L"again.bin", 1), L"0") << testing::PrintToString(LastErrorText());
    EXPECT_EQ(OleDataIn(Files().File(L"again.bin")), "drawn by hand");
    ExpectSaveFailure(2, L"Error: 8004010F\rMAPI_E_NOT_FOUND\r"
                         L"Failed to open attachment data property ERROR: 8004010F NOT FOUND");
}

TEST_F(AttachmentTest, AnOleObjectThatIsNotWrittenWholeIsNotLeftBehind) {
    OpenWith({{.method = ATTACH_OLE, .oleStorage = std::make_shared<const Bytes>(OleObject("x"))}});
    struct Fault {
        std::uint64_t opening; ///< which of the three ways is open
        const wchar_t* member;
        const wchar_t* text;
    };
    for (const auto& [opening, member, text] :
         {Fault{1, L"MAPI32::OpenStreamOnFile", L"Cannot open stream on doc file for data object"},
          Fault{1, L"IStream::CopyTo", L"Cannot copy stream obj to stream file."},
          Fault{1, L"IStream::Commit", L"Cannot copy stream obj to stream file."},
          Fault{2, L"MAPI32::OpenStreamOnFile", L"Cannot open stream on doc file for data bin"},
          Fault{2, L"IStream::CopyTo", L"Cannot copy stream bin to stream file."},
          Fault{2, L"IStream::Commit", L"Cannot copy stream bin to stream file."},
          Fault{3, L"MAPI32::OpenIMsgSession", L""}, Fault{3, L"MAPI32::OpenIMsgOnIStg", L""},
          Fault{3, L"IStorage::CopyTo", L""}, Fault{3, L"IMessage::SaveChanges", L""}}) {
        OpenOleBy(opening);
        Varden().Watch().AlsoFailMember(member, E_ACCESSDENIED);
        ExpectSaveFailure(1, std::wstring(L"Error: 80070005\rMAPI_E_NO_ACCESS\r") + text +
                                 L" ERROR: 80070005 NO ACCESS");
    }
    OpenOleBy(3); // onto a folder no compound file can be written
    EXPECT_EQ(Call(L"VARD_SaveAttachment", {Files().Path() + L"\\.", 1}), kError);
    EXPECT_EQ(LastErrorCode(), -1097);
}

} // namespace
} // namespace varden::tests
