// Named properties by their names, and copies of objects to where the same names have other ids.
#include "standin/mailbox/Tags.h"
#include "tests/mapi/Client.h"

using namespace standin;

namespace mapi_tests {
namespace {

constexpr GUID kPublicStrings = mailbox::kPsPublicStrings;
constexpr GUID kCommon{0x00062008, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

/// A name for a parameter.
struct Name : MAPINAMEID {
    Name(const GUID& set, const wchar_t* text) : MAPINAMEID{} {
        lpguid = const_cast<GUID*>(&set);
        ulKind = MNID_STRING;
        Kind.lpwstrName = const_cast<wchar_t*>(text);
    }
    Name(const GUID& set, LONG id) : MAPINAMEID{} {
        lpguid = const_cast<GUID*>(&set);
        ulKind = MNID_ID;
        Kind.lID = id;
    }
};

ULONG TagOf(IMAPIProp* object, Name name, ULONG type) {
    MAPINAMEID* names[] = {&name};
    Block<SPropTagArray> tags;
    EXPECT_EQ(object->GetIDsFromNames(1, names, MAPI_CREATE, &tags), S_OK);
    return tags->aulPropTag[0] | type;
}

using NameTest = MapiTest;

TEST_F(NameTest, NamesGetIdsWithoutATypeWhereTheyAreCreated) {
    const Ref<IMessage> message = NewMessage();
    Name shade(kPublicStrings, L"Shade"), otherCase(kPublicStrings, L"SHADE"), number(kCommon, 0x8516);
    Name plain(mailbox::kPsMapi, LONG{0x37});
    MAPINAMEID* names[] = {&shade, &number, &plain};
    Block<SPropTagArray> tags;
    ASSERT_EQ(message->GetIDsFromNames(3, names, 0, &tags), MAPI_W_ERRORS_RETURNED);
    EXPECT_EQ(tags->aulPropTag[0], PROP_TAG(PT_ERROR, 0));
    EXPECT_EQ(tags->aulPropTag[2], PROP_TAG(PT_UNSPECIFIED, 0x37));

    ASSERT_EQ(message->GetIDsFromNames(3, names, MAPI_CREATE, &tags), S_OK);
    EXPECT_GE(PROP_ID(tags->aulPropTag[0]), 0x8000u);
    EXPECT_EQ(PROP_TYPE(tags->aulPropTag[0]), PT_UNSPECIFIED);
    EXPECT_NE(tags->aulPropTag[0], tags->aulPropTag[1]);
    const ULONG created = tags->aulPropTag[0];
    ASSERT_EQ(OpenStore()->GetIDsFromNames(1, names, 0, &tags), S_OK);
    EXPECT_EQ(tags->aulPropTag[0], created) << "ids are the store's";
    names[0] = &otherCase;
    EXPECT_EQ(message->GetIDsFromNames(1, names, 0, &tags), MAPI_W_ERRORS_RETURNED);
}

TEST_F(NameTest, IdsHaveTheirNames) {
    const Ref<IMessage> message = NewMessage();
    const ULONG shade = TagOf(message, Name(kPublicStrings, L"Shade"), PT_UNICODE);
    const ULONG number = TagOf(message, Name(kCommon, 0x8516), PT_SYSTIME);
    ULONG count = 0;
    Block<MAPINAMEID*> names;
    Tags asked{shade, number, PR_SUBJECT_W, PROP_TAG(PT_LONG, 0xFFF0)};
    SPropTagArray* tags = asked;
    ASSERT_EQ(message->GetNamesFromIDs(&tags, nullptr, 0, &count, &names), MAPI_W_ERRORS_RETURNED);
    ASSERT_EQ(count, 4u);
    EXPECT_TRUE(names[0]->ulKind == MNID_STRING && *names[0]->lpguid == kPublicStrings);
    EXPECT_STREQ(names[0]->Kind.lpwstrName, L"Shade");
    EXPECT_TRUE(names[1]->ulKind == MNID_ID && names[1]->Kind.lID == 0x8516 && *names[1]->lpguid == kCommon);
    EXPECT_TRUE(*names[2]->lpguid == mailbox::kPsMapi && names[2]->Kind.lID == 0x37);
    EXPECT_EQ(names[3], nullptr);

    tags = nullptr;
    ASSERT_EQ(message->GetNamesFromIDs(&tags, const_cast<GUID*>(&kCommon), MAPI_NO_STRINGS, &count, &names),
              S_OK);
    for (ULONG i = 0; i < count; ++i)
        EXPECT_TRUE(names[i]->ulKind == MNID_ID && *names[i]->lpguid == kCommon);
    EXPECT_EQ(count, tags->cValues);
    EXPECT_GE(count, 1u);
    MAPIFreeBuffer(tags);
    Block<SPropTagArray> all;
    ASSERT_EQ(message->GetIDsFromNames(0, nullptr, 0, &all), S_OK);
    EXPECT_GE(all->cValues, 2u);
}

TEST_F(NameTest, BadNamesAreRefused) {
    const Ref<IMessage> message = NewMessage();
    Name noText(kPublicStrings, nullptr), noSet(kPublicStrings, L"x"), noKind(kPublicStrings, L"x");
    noSet.lpguid = nullptr;
    noKind.ulKind = 7;
    Block<SPropTagArray> tags;
    for (Name* name : {&noText, &noSet, &noKind}) {
        MAPINAMEID* names[] = {name};
        EXPECT_EQ(message->GetIDsFromNames(1, names, MAPI_CREATE, &tags), MAPI_E_INVALID_PARAMETER);
    }
    MAPINAMEID* names[] = {&noText, nullptr};
    EXPECT_EQ(message->GetIDsFromNames(1, names, 0x40, &tags), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(message->GetIDsFromNames(1, nullptr, 0, &tags), MAPI_E_INVALID_PARAMETER);
}

/// A message with a bit of everything that can be copied.
class CopyTest : public MapiTest {
protected:
    Ref<IMessage> FullMessage() {
        Ref<IMessage> message = NewMessage(L"Hello");
        m_named = TagOf(message, Name(kPublicStrings, L"Shade"), PT_UNICODE);
        Set(message, Text(m_named, L"blue"));
        Set(message, Text(PR_BODY_W, L"Text"));
        AddressList list{
            {Text(PR_DISPLAY_NAME_W, L"Ann"), Long(PR_RECIPIENT_TYPE, MAPI_TO), Text(m_named, L"row")}};
        EXPECT_EQ(message->ModifyRecipients(MODRECIP_ADD, list), S_OK);
        const Ref<IAttach> attach = NewAttach(message, L"a.txt");
        Set(attach, Binary(PR_ATTACH_DATA_BIN, BytesOf("data")));
        EXPECT_EQ(attach->SaveChanges(0), S_OK);
        EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
        return message;
    }
    /// A new message in another store, where the names have other ids.
    Ref<IMessage> MessageElsewhere() {
        const Ref<IMsgStore> archive = OpenStore(1);
        TagOf(archive, Name(kPublicStrings, L"Something else"), 0);
        mailbox::Folder& inbox = *Store(1).IpmSubtree().FindSubfolder(L"Inbox");
        const Ref<IMAPIFolder> folder(mapi::MakeFolder(inbox.shared_from_this()));
        Ref<IMessage> message;
        EXPECT_EQ(folder->CreateMessage(nullptr, 0, &message), S_OK);
        return message;
    }
    HRESULT Copy(IMessage* from, IMessage* to, SPropTagArray* excluded = nullptr, ULONG flags = 0,
                 std::vector<IID> interfaces = {}) {
        return from->CopyTo(static_cast<ULONG>(interfaces.size()), interfaces.data(), excluded, 0, nullptr,
                            &mapi::kIidMessage, to, flags, &m_problems);
    }
    HRESULT CopyProps(IMessage* from, IMessage* to, Tags tags) {
        return from->CopyProps(tags, 0, nullptr, &mapi::kIidMessage, to, 0, &m_problems);
    }
    static ULONG Recipients(IMessage* message) {
        return RowCount(Table(message, &IMessage::GetRecipientTable));
    }
    static ULONG Attachments(IMessage* message) {
        return RowCount(Table(message, &IMessage::GetAttachmentTable));
    }

    ULONG m_named = 0;
    Block<SPropProblemArray> m_problems;
};

constexpr ULONG kMissing = PROP_TAG(PT_LONG, 0x6777);

TEST_F(CopyTest, ACopyHasItAllWithNamesRemapped) {
    const Ref<IMessage> from = FullMessage(), to = MessageElsewhere();
    ASSERT_EQ(Copy(from, to), S_OK);
    const ULONG named = TagOf(to, Name(kPublicStrings, L"Shade"), PT_UNICODE);
    EXPECT_NE(named, m_named);
    EXPECT_FALSE(m_problems);
    EXPECT_EQ(GetText(to, named), L"blue");
    EXPECT_EQ(GetText(to, PR_SUBJECT_W), L"Hello");
    EXPECT_EQ(GetText(to, PR_BODY_W), L"Text");
    EXPECT_EQ(ReadStatus(to, PR_ENTRYID), MAPI_E_NOT_FOUND) << "it isn't saved yet";
    EXPECT_EQ(Column(Table(to, &IMessage::GetRecipientTable), named), Texts{L"row"});
    Ref<IAttach> attach;
    ASSERT_EQ(to->OpenAttach(0, nullptr, 0, &attach), S_OK);
    EXPECT_EQ(GetBinary(attach, PR_ATTACH_DATA_BIN), BytesOf("data"));
    ASSERT_EQ(to->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(GetText(to, PR_DISPLAY_TO_W), L"Ann");
    ASSERT_EQ(Copy(from, to), S_OK);
    EXPECT_FALSE(m_problems);
    EXPECT_EQ(Recipients(to), 1u) << "a second copy replaces the first";
}

TEST_F(CopyTest, WhatIsExcludedStaysOut) {
    const Ref<IMessage> from = FullMessage();
    struct {
        Tags tags;
        std::vector<IID> interfaces;
        bool subject, named;
        ULONG recipients, attachments;
    } cases[] = {
        {{}, {}, true, true, 1, 1},
        {{PR_SUBJECT_A}, {}, false, true, 1, 1}, // whatever the type says
        {{m_named}, {}, true, false, 1, 1},
        {{PR_MESSAGE_RECIPIENTS}, {}, true, true, 0, 1},
        {{PR_MESSAGE_ATTACHMENTS, PR_SUBJECT_W}, {}, false, true, 1, 0},
        {{}, {mapi::kIidMessage}, true, true, 0, 0},
        {{}, {mapi::kIidProp}, false, false, 1, 1},
    };
    for (auto& row : cases) {
        SCOPED_TRACE(&row - cases);
        const Ref<IMessage> to = NewMessage();
        ASSERT_EQ(Copy(from, to, row.tags, 0, row.interfaces), S_OK);
        EXPECT_FALSE(m_problems);
        EXPECT_EQ(SUCCEEDED(ReadStatus(to, PR_SUBJECT_W)), row.subject);
        EXPECT_EQ(SUCCEEDED(ReadStatus(to, m_named)), row.named);
        EXPECT_EQ(Recipients(to), row.recipients);
        EXPECT_EQ(Attachments(to), row.attachments);
    }
}

TEST_F(CopyTest, NothingIsReplacedThatIsNotToBe) {
    const Ref<IMessage> from = FullMessage(), to = NewMessage(L"Mine");
    AddressList list{{Text(PR_DISPLAY_NAME_W, L"Bob"), Long(PR_RECIPIENT_TYPE, MAPI_TO)},
                     {Text(PR_DISPLAY_NAME_W, L"Cid"), Long(PR_RECIPIENT_TYPE, MAPI_TO)}};
    ASSERT_EQ(to->ModifyRecipients(MODRECIP_ADD, list), S_OK);
    ASSERT_EQ(Copy(from, to, nullptr, MAPI_NOREPLACE), S_OK);
    EXPECT_FALSE(m_problems);
    EXPECT_EQ(GetText(to, PR_SUBJECT_W), L"Mine");
    EXPECT_EQ(GetText(to, m_named), L"blue") << "it had none before";
    EXPECT_EQ(Recipients(to), 2u);
    EXPECT_EQ(Attachments(to), 1u);
}

TEST_F(CopyTest, CopyPropsCopiesWhatIsNamed) {
    const Ref<IMessage> from = FullMessage(), to = NewMessage();
    ASSERT_EQ(CopyProps(from, to, {PR_SUBJECT_W, kMissing, PR_MESSAGE_RECIPIENTS}), S_OK);
    ASSERT_TRUE(m_problems && m_problems->cProblem == 1);
    EXPECT_EQ(m_problems->aProblem[0].ulIndex, 1u);
    EXPECT_EQ(m_problems->aProblem[0].scode, MAPI_E_NOT_FOUND);
    EXPECT_EQ(GetText(to, PR_SUBJECT_W), L"Hello");
    EXPECT_EQ(ReadStatus(to, m_named), MAPI_E_NOT_FOUND);
    EXPECT_EQ(Recipients(to), 1u);
    EXPECT_EQ(Attachments(to), 0u);
}

TEST_F(CopyTest, AProblemCanBeHadForAsking) {
    Watch().Deviate().copyProblem = MAPI_E_NO_ACCESS;
    const Ref<IMessage> from = FullMessage(), to = NewMessage();
    ASSERT_EQ(Copy(from, to), S_OK);
    ASSERT_TRUE(m_problems && m_problems->cProblem == 1);
    EXPECT_EQ(m_problems->aProblem[0].scode, MAPI_E_NO_ACCESS);
    EXPECT_EQ(GetText(to, PR_SUBJECT_W), L"Hello");
    ASSERT_EQ(CopyProps(from, to, {kMissing, PR_SUBJECT_W}), S_OK);
    ASSERT_TRUE(m_problems && m_problems->cProblem == 2);
    EXPECT_EQ(m_problems->aProblem[1].scode, MAPI_E_NO_ACCESS) << "beside a problem that there is";
}

TEST_F(CopyTest, TargetsThatCantBeAreRefused) {
    const Ref<IMessage> from = FullMessage(), to = NewMessage();
    const Ref<IStream> stream = OpenStream(from, PR_SUBJECT_W);
    const auto copy = [&](const IID* iid, void* target, ULONG flags) {
        return from->CopyTo(0, nullptr, nullptr, 0, nullptr, iid, target, flags, nullptr);
    };
    EXPECT_EQ(copy(&mapi::kIidMessage, nullptr, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(copy(nullptr, to, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(copy(&mapi::kIidFolder, to, 0), MAPI_E_INTERFACE_NOT_SUPPORTED);
    EXPECT_EQ(copy(&mapi::kIidStream, stream, 0), MAPI_E_INTERFACE_NOT_SUPPORTED);
    EXPECT_EQ(copy(&mapi::kIidMessage, from, 0), MAPI_E_NO_ACCESS);
    EXPECT_EQ(copy(&mapi::kIidMessage, to, MAPI_MOVE), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(copy(&mapi::kIidMessage, to, 0x1000), MAPI_E_UNKNOWN_FLAGS);
}

TEST_F(CopyTest, AFaultyPropertyIsAProblemAndNoFailure) {
    constexpr ULONG kFaulty = PROP_TAG(PT_UNICODE, 0x6700);
    const auto open = MakeMessage();
    mailbox::Content* content = nullptr;
    ASSERT_EQ(open->EditContent(content), S_OK);
    content->properties.Put(kFaulty, mailbox::NullPointer{PT_UNICODE, 0});
    content->properties.Set<PR_SUBJECT_W>(L"Hello");
    const Ref<IMessage> from(mapi::MakeMessage(open)), to = NewMessage();
    ASSERT_EQ(Copy(from, to), S_OK);
    ASSERT_TRUE(m_problems && m_problems->cProblem == 1);
    EXPECT_EQ(m_problems->aProblem[0].ulPropTag, kFaulty);
    EXPECT_EQ(GetText(to, PR_SUBJECT_W), L"Hello");
}

} // namespace
} // namespace mapi_tests
