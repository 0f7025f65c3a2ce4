// Records written to MSG files and opened from them.
#include "Files.h"
#include "MailboxTest.h"
#include "standin/mailbox/Tags.h"

#include <set>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

class MsgFileTest : public MailboxTest {
protected:
    const TemporaryFolder& Files() const { return m_files; }
    std::wstring SaveAs(const std::wstring& path) { return Call(L"VARD_SaveRecordAsMsg", {path}); }
    /// Puts what the file holds into the Inbox as it is, and opens it.
    void OpenAsReceived(const std::wstring& path) {
        OpenRecord(ToHex(AddToInbox(MessageIn(path, At(L"Inbox").Names()))->EntryId()));
    }
    void OpenMail(const wchar_t* subject) { OpenRecord(Add({.subject = subject, .body = L"text"})); }
    std::wstring SubjectIn(const std::wstring& file) const {
        NamedProperties names;
        return MessageIn(Files().File(file), names).properties.GetOr<PR_SUBJECT_W>({});
    }

private:
    TemporaryFolder m_files;
};

std::wstring NameOf(const std::wstring& path) {
    return path.substr(path.rfind(L'\\') + 1);
}

/// The real files but for those that are damaged.
std::vector<std::wstring> WholeMsgFiles() {
    std::vector<std::wstring> paths = RealMsgFiles();
    std::erase_if(paths, [](const std::wstring& path) { return NameOf(path).starts_with(L"damaged"); });
    return paths;
}

/// What is worked out from the rest of a message, or entered anew, wherever the message is.
bool IsWorkedOut(PropertyId id) {
    static const std::set<PropertyId> ids{
        PROP_ID(PR_MESSAGE_FLAGS), PROP_ID(PR_NORMALIZED_SUBJECT), PROP_ID(PR_ACCESS),
        PROP_ID(PR_ACCESS_LEVEL),  PROP_ID(kPrChangeKey),          PROP_ID(PR_MESSAGE_SIZE),
        PROP_ID(PR_HASATTACH),     PROP_ID(PR_STORE_SUPPORT_MASK), PROP_ID(PR_DISPLAY_TO),
        PROP_ID(PR_DISPLAY_CC),    PROP_ID(PR_DISPLAY_BCC)};
    return ids.contains(id);
}

/// Every property of `expected` is in `actual`, named ones under their names.
void ExpectProperties(const PropertyBag& expected, const NamedProperties& names, const PropertyBag& actual,
                      NamedProperties& actualNames) {
    for (const Property& property : expected) {
        if (IsWorkedOut(property.id) || TypeOf(property.value) == PT_ERROR) {
            continue;
        }
        const PropertyTag tag = RemapTag(property.Tag(), names, actualNames);
        const auto* value = actual.Find(tag);
        EXPECT_TRUE(value && *value == property.value) << std::hex << property.Tag();
    }
}

void ExpectContent(const Content& expected, const NamedProperties& names, const Content& actual,
                   NamedProperties& actualNames) {
    ExpectProperties(expected.properties, names, actual.properties, actualNames);
    ASSERT_EQ(actual.recipients.size(), expected.recipients.size());
    for (std::size_t i = 0; i < expected.recipients.size(); ++i) {
        ExpectProperties(expected.recipients[i], names, actual.recipients[i], actualNames);
    }
    ASSERT_EQ(actual.attachments.size(), expected.attachments.size());
    for (std::size_t i = 0; i < expected.attachments.size(); ++i) {
        const Attachment &one = *expected.attachments[i], &other = *actual.attachments[i];
        EXPECT_EQ(other.properties.GetOr<PR_ATTACH_DATA_BIN>({}),
                  one.properties.GetOr<PR_ATTACH_DATA_BIN>({}));
        EXPECT_EQ(other.properties.GetOr<PR_ATTACH_LONG_FILENAME_W>({}),
                  one.properties.GetOr<PR_ATTACH_LONG_FILENAME_W>({}));
        ASSERT_EQ(other.embedded != nullptr, one.embedded != nullptr);
        if (one.embedded) {
            ExpectContent(*one.embedded, names, *other.embedded, actualNames);
        }
        EXPECT_EQ(other.oleStorage != nullptr, one.oleStorage != nullptr);
    }
}

TEST_F(MsgFileTest, WhatOtherClientsWroteIsWrittenAgainWhole) {
    const std::vector<std::wstring> files = WholeMsgFiles();
    if (files.empty()) {
        GTEST_SKIP() << "the folder of real MSG files is missing";
    }
    for (const std::wstring& path : files) {
        SCOPED_TRACE(testing::PrintToString(NameOf(path)));
        OpenAsReceived(path);
        const std::wstring copy = Files().File(NameOf(path));
        ASSERT_EQ(SaveAs(copy), L"0") << testing::PrintToString(LastErrorText());
        NamedProperties names, copiedNames;
        const Content original = MessageIn(path, names);
        ExpectContent(original, names, MessageIn(copy, copiedNames), copiedNames);
    }
}

TEST_F(MsgFileTest, FilesOfOtherClientsAreOpenedWithTheirFieldsAndAttachments) {
    const std::vector<std::wstring> files = WholeMsgFiles();
    if (files.empty()) {
        GTEST_SKIP() << "the folder of real MSG files is missing";
    }
    for (const std::wstring& path : files) {
        SCOPED_TRACE(testing::PrintToString(NameOf(path)));
        ExpectSuccess(L"VARD_OpenSavedItem", {path});
        NamedProperties names;
        const Content original = MessageIn(path, names);
        if (original.properties.GetOr<PR_MESSAGE_CLASS_W>({}) == L"IPM.StickyNote") {
            // The message of a note is looked for by its id, which it hasn't got before it is saved.
            ExpectFailureLike(L"VARD_GetFieldData", {L"Subject"}, {-1038, L"Unable to locate record"});
            EXPECT_NE(Call(L"VARD_SaveRecord"), kError);
            continue;
        }
        EXPECT_EQ(Get(L"Message Class"), original.properties.GetOr<PR_MESSAGE_CLASS_W>(L"IPM.Note"));
        EXPECT_EQ(Get(L"Subject"), original.properties.GetOr<PR_SUBJECT_W>(L""));
        EXPECT_EQ(SaveAs(Files().File(L"copy")), L"0") << testing::PrintToString(LastErrorText());
        EXPECT_EQ(Call(L"VARD_GetAttachmentCount"), std::to_wstring(original.attachments.size()));
        for (std::size_t i = 0; i < original.attachments.size(); ++i) {
            const Attachment& attachment = *original.attachments[i];
            const std::wstring file = Files().File(L"attachment");
            ASSERT_EQ(Call(L"VARD_SaveAttachment", {file, static_cast<int>(i) + 1}), L"0")
                << testing::PrintToString(LastErrorText());
            if (attachment.embedded) {
                NamedProperties copiedNames;
                ExpectContent(*attachment.embedded, names, MessageIn(file, copiedNames), copiedNames);
            } else {
                const Bytes data = attachment.properties.GetOr<PR_ATTACH_DATA_BIN>({});
                EXPECT_TRUE(BytesIn(file) == std::string(data.begin(), data.end())) << i;
            }
        }
    }
}

TEST_F(MsgFileTest, AFileThatIsNoMessageIsNotOpened) {
    std::vector<std::wstring> paths{Files().Add(L"text.msg", "not a compound file"),
                                    Files().File(L"none.msg"), Files().Path()};
    for (const std::wstring& path : RealMsgFiles()) {
        if (NameOf(path).starts_with(L"damaged")) {
            paths.push_back(path);
        }
    }
    for (const std::wstring& path : paths) {
        SCOPED_TRACE(testing::PrintToString(path));
        ExpectFailureLike(L"VARD_OpenSavedItem", {path}, errors::kInvalidPath);
    }
    ExpectFailure(L"VARD_OpenSavedItem", {L""}, errors::kInvalidId);
}

TEST_F(MsgFileTest, AFileThatOutlookWroteIsARecordOfItsKindThatCanBeChangedAndWritten) {
    OpenMail(L"first");
    ASSERT_EQ(SaveAs(Files().File(L"first.msg")), L"0");
    ASSERT_EQ(Call(L"VARD_OpenSavedItem", {Files().File(L"first.msg")}), L"0");
    EXPECT_EQ(Get(L"Body"), L"text");
    EXPECT_EQ(Set(L"Subject", L"second"), L"0");
    EXPECT_EQ(SaveAs(Files().File(L"second.msg")), L"0");
    EXPECT_EQ(Get(L"Subject"), L"second"); // still the record
    EXPECT_EQ(SubjectIn(L"second.msg"), L"second");
    EXPECT_EQ(SubjectIn(L"first.msg"), L"first");
    EXPECT_EQ(At(L"Inbox").Messages().size(), 1u); // nothing is saved in the mailbox by that
}

TEST_F(MsgFileTest, EveryPathEndsInMsgAndAFileOfThatNameIsReplaced) {
    OpenMail(L"x");
    for (const wchar_t* name : {L"a.msg", L"b.MSG", L"c.Msg"}) {
        EXPECT_EQ(SaveAs(Files().File(name)), L"0");
        EXPECT_TRUE(Exists(Files().File(name)));
    }
    for (const wchar_t* name : {L"d", L"e.txt", L"f.msg ", L"msg"}) {
        EXPECT_EQ(SaveAs(Files().File(name)), L"0");
        EXPECT_TRUE(Exists(Files().File(std::wstring(name) + L".MSG"))) << testing::PrintToString(name);
    }
    EXPECT_EQ(Files().Names().size(), 7u);
    const std::wstring replaced = Files().Add(L"old.msg", std::string(100000, 'x'));
    EXPECT_EQ(SaveAs(replaced), L"0");
    EXPECT_EQ(SubjectIn(L"old.msg"), L"x");
    IStorage* storage = nullptr;
    ASSERT_EQ(
        StgOpenStorage(replaced.c_str(), nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, nullptr, 0, &storage),
        S_OK);
    STATSTG stat{};
    storage->Stat(&stat, STATFLAG_NONAME);
    storage->Release();
    EXPECT_EQ(stat.clsid.Data1, 0x00020D0Bu);
}

TEST_F(MsgFileTest, WhatCannotBeWrittenIsTold) {
    const LastError notWritten = errors::Mapi(L"!!ERROR!!");
    ExpectFailure(L"VARD_SaveRecordAsMsg", {Files().File(L"a.msg")}, notWritten); // no record
    EXPECT_TRUE(Files().Names().empty());
    OpenMail(L"x");
    for (const std::wstring& path : {Files().File(L"none\\a.msg"), Files().File(L"a?.msg")}) {
        ExpectFailure(L"VARD_SaveRecordAsMsg", {path}, notWritten);
    }
    ExpectFaults(L"VARD_SaveRecordAsMsg", {Files().File(L"a.msg")},
                 {{L"MAPI32::OpenIMsgSession", notWritten},
                  {L"MAPI32::OpenIMsgOnIStg", notWritten},
                  {L"IMessage::CopyTo", notWritten}});
    EXPECT_EQ(Get(L"Subject"), L"x"); // still the record
    EXPECT_EQ(SaveAs(Files().File(L"a.msg")), L"0");
}

/// An attachment that is a message is written in the same way, and tells the reason.
TEST_F(MsgFileTest, TheReasonsOfAnEmbeddedMessageThatIsNotWrittenAreTold) {
    Content inner;
    inner.properties.Set<PR_MESSAGE_CLASS_W>(L"IPM.Note");
    auto attachment = std::make_shared<Attachment>();
    attachment->properties.Set<PR_ATTACH_METHOD>(ATTACH_EMBEDDED_MSG);
    attachment->embedded = std::make_shared<Content>(inner);
    Content content = inner;
    content.attachments.push_back(attachment);
    OpenRecord(ToHex(AddToInbox(content)->EntryId()));
    const Texts save{Files().File(L"a.msg"), 1};
    ExpectFaults(L"VARD_SaveAttachment", save,
                 {Denied(L"MAPI32::OpenIMsgSession", L"MAPI_E_NO_ACCESS"),
                  Denied(L"MAPI32::OpenIMsgOnIStg", L"MAPI_E_NO_ACCESS"),
                  Denied(L"IMessage::CopyTo", L"MAPI_E_NO_ACCESS"),
                  {L"MAPI32::MAPIGetDefaultMalloc", errors::Mapi(L"Save as MSG - unable to allocate"),
                   E_OUTOFMEMORY}});
    constexpr auto refuse = [](IStorage*, REFCLSID) { return static_cast<HRESULT>(STG_E_ACCESSDENIED); };
    auto* const refused = reinterpret_cast<void*>(static_cast<HRESULT(WINAPI*)(IStorage*, REFCLSID)>(refuse));
    void* const real = ReplaceImport(Varden().Module(), "ole32.dll", "WriteClassStg", refused);
    ASSERT_TRUE(real);
    EXPECT_EQ(Call(L"VARD_SaveAttachment", save), kError);
    EXPECT_TRUE(LastErrorText().ends_with(L"\rSave As Message Write Class: %s "))
        << testing::PrintToString(LastErrorText());
    ReplaceImport(Varden().Module(), "ole32.dll", "WriteClassStg", real);
    Varden().Watch().Deviate().copyProblem = MAPI_E_NOT_ENOUGH_MEMORY;
    ExpectFailureLike(L"VARD_SaveAttachment", save, errors::Mapi(L""));
    EXPECT_NE(LastErrorText().find(L"8007000E"), std::wstring::npos)
        << testing::PrintToString(LastErrorText());
    Varden().Watch().Deviate() = {};
    EXPECT_TRUE(CreateDirectoryW(Files().File(L"folder.msg").c_str(), nullptr)); // stands in the way
    ExpectFailureLike(L"VARD_SaveAttachment", {Files().File(L"folder.msg"), 1}, errors::Mapi(L"Error: 8"));
    EXPECT_EQ(Call(L"VARD_SaveAttachment", save), L"0");
}

} // namespace
} // namespace varden::tests
