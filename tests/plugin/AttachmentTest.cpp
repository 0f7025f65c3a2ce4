// Attachments of the current record: added, counted, named, measured, saved to files.
#include "Files.h"
#include "MailboxTest.h"

#include <limits>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

/// What an attachment of a message in a folder is like.
struct Attached {
    std::int32_t method = ATTACH_BY_VALUE;
    std::wstring longName = {};
    std::wstring shortName = {};
    Bytes data = {};
    std::shared_ptr<const Content> embedded = {};
    std::shared_ptr<const Bytes> oleStorage = {};
};

class AttachmentTest : public MailboxTest {
protected:
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
        OpenRecord(ToHex(AddToInbox(std::move(content))->EntryId()));
    }
    /// An attachment that is a message.
    static Attached Embedded(const wchar_t* messageClass, const wchar_t* subject) {
        Content content;
        content.properties.Set<PR_MESSAGE_CLASS_W>(messageClass);
        content.properties.Set<PR_SUBJECT_W>(subject);
        return {.method = ATTACH_EMBEDDED_MSG, .embedded = std::make_shared<Content>(std::move(content))};
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
    void ExpectSaveFailure(int index, const LastError& error) {
        ExpectFailure(L"VARD_SaveAttachment", {Files().File(L"out.bin"), index}, error);
        EXPECT_FALSE(Exists(Files().File(L"out.bin"))); // no half of a file
    }
    /// Each fault in turn is why the attachment isn't saved.
    void ExpectSaveFaults(int index, const std::vector<Fault>& faults) {
        for (const Fault& fault : faults) {
            ExpectFaults(L"VARD_SaveAttachment", {Files().File(L"out.bin"), index}, {fault});
            EXPECT_FALSE(Exists(Files().File(L"out.bin"))); // no half of a file
        }
    }

private:
    TemporaryFolder m_files;
};

const LastError kNameless = errors::Mapi(L"Unable to access attachment name ");

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
        New(module);
        EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), L"0");
        for (const auto& [name, bytes] : files) {
            ExpectSuccess(L"VARD_AddAttachment", {Files().Add(name, bytes), L""});
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
    Open(L"/Inbox");
    New(L"Mail");
    ExpectSuccess(L"VARD_AddAttachment", {Files().Add(L"a.txt", "a"), L"Shown name"});
    ASSERT_EQ(At(L"Inbox").Messages().size(), 1u);
    const PropertyBag& stored = At(L"Inbox").Messages()[0]->Current().attachments.at(0)->properties;
    EXPECT_EQ(stored.GetOr<PR_DISPLAY_NAME_W>({}), L"Shown name");
    EXPECT_EQ(stored.GetOr<PR_ATTACH_METHOD>(0), ATTACH_BY_VALUE);
    EXPECT_EQ(stored.GetOr<PR_RENDERING_POSITION>(0), 15000);
    EXPECT_EQ(Name(1), L"a.txt");
}

TEST_F(AttachmentTest, WhatCannotBeAttachedIsTold) {
    const std::wstring file = Files().Add(L"a.txt", "a");
    std::wstring withSlash = file;
    withSlash[withSlash.rfind(L'\\')] = L'/';
    ExpectFailure(L"VARD_AddAttachment", {L"", L"x"}, -1013,
                  L"Missing Path to Attachment\rCan not retrieve MAPI interface for item.");
    for (const std::wstring& path : {withSlash, Files().File(L"none.txt"), std::wstring(L" ")}) {
        ExpectFailure(L"VARD_AddAttachment", {path, L""}, errors::kInvalidPath);
    }
    ExpectFailure(L"VARD_AddAttachment", {file, L""}, errors::kNoRecord);
    // Notes have no attachments, and a folder is none.
    New(L"Note");
    ExpectFailureLike(L"VARD_AddAttachment", {file, L""}, {0, L"Error: "});
    New(L"Mail");
    ExpectFailureLike(L"VARD_AddAttachment", {Files().Path(), L""}, {0, L"Error: "});
    EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), L"0");
}

TEST_F(AttachmentTest, ANameIsTheLongOneUnlessTheShortIsAskedFor) {
    OpenWith({{.longName = L"a long name.txt", .shortName = L"along~1.txt"},
              {.shortName = L"short.txt"},
              {.longName = L"only long.txt"},
              {}});
    for (const wchar_t* word : {L"yes", L"1", L"false", L""}) { // only one word asks for it
        EXPECT_EQ(Call(L"VARD_GetAttachmentName", {1, word}), L"a long name.txt");
    }
    EXPECT_EQ(Call(L"VARD_GetAttachmentName", {1, L"TRUE"}), L"along~1.txt");
    EXPECT_EQ(ShortName(1), L"along~1.txt");
    EXPECT_EQ(Name(1), L"a long name.txt");
    EXPECT_EQ(ShortName(2), L"short.txt");
    EXPECT_EQ(ShortName(3), L"only long.txt");                // falls back
    ExpectFailure(L"VARD_GetAttachmentName", {2}, kNameless); // doesn't
    ExpectFailure(L"VARD_GetAttachmentName", {4, L"true"}, kNameless);
}

TEST_F(AttachmentTest, AnEmbeddedMessageGoesByItsSubjectWithTheExtensionOfItsKind) {
    OpenWith({Embedded(L"IPM.Note", L"Hello"),
              Embedded(L"IPM.Post", L"Hello"),
              Embedded(L"ipm.contact.Own", L"Bob"),
              Embedded(L"IPM.Appointment", L"Lunch"),
              Embedded(L"REPORT.IPM.Note.NDR", L"Failed"),
              Embedded(L"IPM.Note", L"report.msg"),
              Embedded(L"IPM.Note", L".MSG first"),
              {.method = ATTACH_EMBEDDED_MSG,
               .longName = L"x.msg",
               .embedded = Embedded(L"IPM.Note", L"").embedded},
              {.method = ATTACH_EMBEDDED_MSG, .longName = L"x.msg"}});
    int index = 0;
    for (const wchar_t* name : {L"Hello.msg", L"Hello.msg", L"Bob.vcf", L"Lunch.ics", L"Failed.msg",
                                L"report.msg.msg", L".MSG first"}) {
        EXPECT_EQ(Name(++index), name);
        EXPECT_EQ(ShortName(index), name);
    }
    for (const int nameless : {8, 9}) { // without a subject; without a message
        ExpectFailure(L"VARD_GetAttachmentName", {nameless}, kNameless);
    }
    const std::wstring size = Call(L"VARD_GetAttachmentSize", {1});
    EXPECT_TRUE(size.ends_with(L".msg") && std::stol(size) > 0) << testing::PrintToString(size);
    // Whatever the extension says, what is saved is an MSG file.
    EXPECT_EQ(Save(L"Bob.vcf", 3), L"0") << testing::PrintToString(LastErrorText());
    NamedProperties names;
    EXPECT_EQ(MessageIn(Files().File(L"Bob.vcf"), names).properties.GetOr<PR_SUBJECT_W>({}), L"Bob");
}

TEST_F(AttachmentTest, AttachmentsThatAreNotThereAreTold) {
    for (const wchar_t* function : {L"VARD_GetAttachmentName", L"VARD_GetAttachmentSize"}) {
        ExpectFailure(function, {1}, errors::Mapi(L"Unable to open attachment at provided index"));
    }
    ExpectSaveFailure(1, errors::Mapi(L"Unable to open attachment at provided index"));
    ExpectFailure(L"VARD_GetAttachmentCount", {}, errors::kUnhandled); // so far there was no record

    OpenWith({{.method = NO_ATTACHMENT, .longName = L"none"}, {.longName = L"a.txt"}});
    for (const wchar_t* function : {L"VARD_GetAttachmentName", L"VARD_GetAttachmentSize"}) {
        ExpectFailure(function, {1}, errors::Mapi(L"Unable to open attachments"));
    }
    for (const int index : {0, 3, -1, 2000000000, std::numeric_limits<int>::min()}) {
        for (const wchar_t* function : {L"VARD_GetAttachmentName", L"VARD_GetAttachmentSize"}) {
            ExpectFailure(function, {index}, errors::NotFound(L"Unable to open attachments"));
        }
        ExpectSaveFailure(index, errors::NotFound(L"Unable to open attachment ERROR: 8004010F NOT FOUND"));
    }
}

TEST_F(AttachmentTest, ACountOrASizeThatMapiRefusesIsTold) {
    OpenWith({{.longName = L"a"}, {.longName = L"b"}});
    ExpectFaults(L"VARD_GetAttachmentCount", {},
                 {Denied(L"IMessage::GetAttachmentTable",
                         L"Unable to get attachments table ERROR: 80070005 NO ACCESS"),
                  {L"MAPI32::HrQueryAllRows",
                   errors::Mapi(L"Error: 80040403\rMAPI_E_TABLE_TOO_BIG\r"
                                L"Unable to get attachments table rows ERROR: 80040403 TABLE TOO BIG"),
                   MAPI_E_TABLE_TOO_BIG}});
    EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), L"2");
    ExpectFaults(L"VARD_GetAttachmentSize", {2},
                 {{L"MAPI32::HrGetOneProp",
                   errors::Mapi(L"Error: 80004005\rMAPI_E_CALL_FAILED\rUnable to access attachment size "),
                   E_FAIL, 2}});
}

/// Stands in for _waccess: everything is there, and can only be read. Windows itself says that of no folder.
int __cdecl NothingIsWritable(const wchar_t*, int mode) {
    return mode == 0 ? 0 : -1;
}

TEST_F(AttachmentTest, PlacesThatCannotBeSavedToAreTold) {
    OpenWith({{.longName = L"a.txt", .data = {'a'}}});
    ExpectFailure(L"VARD_SaveAttachment", {L"", 1}, -1012, L"Save Path Missing");
    ExpectFailure(L"VARD_SaveAttachment", {L"a.txt", 1}, errors::kInvalidPath);
    ExpectFailure(L"VARD_SaveAttachment", {L"C:/a.txt", 1}, errors::kInvalidPath);
    ExpectFailure(L"VARD_SaveAttachment", {Files().File(L"none\\a.txt"), 1}, -301,
                  L"The specified file cannot be found");
    void* const access = ReplaceImport(Varden().Module(), "msvcrt.dll", "_waccess",
                                       reinterpret_cast<void*>(NothingIsWritable));
    ASSERT_TRUE(access);
    ExpectFailure(L"VARD_SaveAttachment", {Files().File(L"a.txt"), 1}, -302,
                  L"The specified folder cannot be accessed");
    ReplaceImport(Varden().Module(), "msvcrt.dll", "_waccess", access);
    Files().Add(L"a.txt", "a longer file that was there");
    EXPECT_EQ(Save(L"a.txt", 1), L"0"); // is replaced
    EXPECT_EQ(BytesIn(Files().File(L"a.txt")), "a");
}

TEST_F(AttachmentTest, AttachmentsByReferenceOrOfNoKnownMethodWriteNoFile) {
    for (const std::int32_t method : {2, 3, 4, 0, 7, 99}) { // and whatever else has no data
        OpenWith({{.method = method, .longName = L"a.txt", .data = {'a'}}});
        EXPECT_EQ(Save(L"a.txt", 1), L"0") << method;
        EXPECT_FALSE(Exists(Files().File(L"a.txt")));
    }
    OpenWith({{.method = 4, .longName = L"a.txt"}}); // where it points to is asked for, whatever the outcome
    Fail(L"MAPI32::HrGetOneProp");
    EXPECT_EQ(Save(L"a.txt", 1), L"0");
    EXPECT_TRUE(Varden().Watch().HasFailed());
    OpenWith({{.longName = L"a.txt", .data = {'a'}}});
    Fail(L"IAttach::GetProps", S_FALSE); // a success without values
    EXPECT_EQ(Save(L"a.txt", 1), L"0");
    EXPECT_FALSE(Exists(Files().File(L"a.txt")));
    EXPECT_EQ(Save(L"a.txt", 1), L"0");
    EXPECT_EQ(BytesIn(Files().File(L"a.txt")), "a") << "once it tells, it is written";
}

TEST_F(AttachmentTest, AFileThatIsNotWrittenWholeIsNotLeftBehind) {
    OpenWith({{.longName = L"a.txt", .data = Bytes(100000, 'a')},
              {.longName = L"no data"},
              {.method = ATTACH_EMBEDDED_MSG, .longName = L"no message"}});
    ExpectSaveFailure(2,
                      errors::NotFound(L"Error opening attachment bin property ERROR: 8004010F NOT FOUND"));
    ExpectSaveFailure(3, errors::NotFound(L"Failed to open attachment as message ERROR: 8004010F NOT FOUND"));
    const LastError full = errors::Mapi(L"Error: 80030070\rSTG_E_MEDIUMFULL\r"
                                        L"Error copying stream to file ERROR: 80030070  UNKNOWN MAPI ERROR");
    ExpectSaveFaults(
        1, {Denied(L"IAttach::GetProps", L"Unable to access attachment method  ERROR: 80070005 NO ACCESS"),
            Denied(L"MAPI32::OpenStreamOnFile", L"Cannot open stream on file ERROR: 80070005 NO ACCESS"),
            {L"IStream::CopyTo", full, STG_E_MEDIUMFULL},
            {L"IStream::Commit", full, STG_E_MEDIUMFULL}});
}

/// MAPI makes files by their name in the ANSI code page, in which this one is another.
TEST_F(AttachmentTest, AFileUnderANameThatIsNotWhollyAnsiIsRemovedUnderTheNameItGot) {
    OpenWith({{.longName = L"a.txt", .data = Bytes(1000, 'a')}});
    const std::wstring wide = L"\u0100-list.txt";
    Files().Add(wide, "somebody else's");
    EXPECT_EQ(Save(wide, 1), L"0");
    ASSERT_EQ(BytesIn(Files().File(L"A-list.txt")).size(), 1000u);
    Fail(L"IStream::CopyTo", STG_E_MEDIUMFULL);
    EXPECT_EQ(Save(wide, 1), kError);
    EXPECT_FALSE(Exists(Files().File(L"A-list.txt")));
    EXPECT_EQ(BytesIn(Files().File(wide)), "somebody else's");
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
    ExpectSaveFailure(2,
                      errors::NotFound(L"Failed to open attachment data property ERROR: 8004010F NOT FOUND"));
}

TEST_F(AttachmentTest, AnOleObjectThatIsNotWrittenWholeIsNotLeftBehind) {
    OpenWith({{.method = ATTACH_OLE, .oleStorage = std::make_shared<const Bytes>(OleObject("x"))}});
    struct OleFault {
        std::uint64_t opening; ///< which of the three ways is open
        const wchar_t* member;
        const wchar_t* text;
    };
    for (const auto& [opening, member, text] :
         {OleFault{1, L"MAPI32::OpenStreamOnFile", L"Cannot open stream on doc file for data object"},
          OleFault{1, L"IStream::CopyTo", L"Cannot copy stream obj to stream file."},
          OleFault{1, L"IStream::Commit", L"Cannot copy stream obj to stream file."},
          OleFault{2, L"MAPI32::OpenStreamOnFile", L"Cannot open stream on doc file for data bin"},
          OleFault{2, L"IStream::CopyTo", L"Cannot copy stream bin to stream file."},
          OleFault{2, L"IStream::Commit", L"Cannot copy stream bin to stream file."},
          OleFault{3, L"MAPI32::OpenIMsgSession", L""}, OleFault{3, L"MAPI32::OpenIMsgOnIStg", L""},
          OleFault{3, L"IStorage::CopyTo", L""}, OleFault{3, L"IMessage::SaveChanges", L""}}) {
        OpenOleBy(opening);
        Varden().Watch().AlsoFailMember(member, E_ACCESSDENIED);
        ExpectSaveFailure(1, errors::Denied(std::wstring(text) + L" ERROR: 80070005 NO ACCESS"));
    }
    OpenOleBy(3); // onto a folder no compound file can be written
    ExpectFailureLike(L"VARD_SaveAttachment", {Files().Path() + L"\\.", 1}, errors::Mapi(L""));
}

} // namespace
} // namespace varden::tests
