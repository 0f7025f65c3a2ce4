// The exported functions: files and MSG storages, hexadecimal, conversation indexes, and that each of them
// can be made to fail.
#include "standin/mailbox/ConversationIndex.h"
#include "standin/mailbox/Msg.h"
#include "tests/mapi/Client.h"

#include <filesystem>
#include <functional>

using namespace standin;

namespace mapi_tests {
namespace {

namespace fs = std::filesystem;

/// Anything but null: what a client's variable may hold before a call.
template <class T>
T* Junk() {
    return reinterpret_cast<T*>(std::uintptr_t{0x55});
}

class FunctionTest : public MapiTest {
protected:
    FunctionTest()
        : m_folder(fs::temp_directory_path() / ("mapi-tests-" + std::to_string(GetCurrentProcessId()))) {
        fs::create_directories(m_folder);
    }
    ~FunctionTest() override {
        std::error_code ignored;
        fs::remove_all(m_folder, ignored);
    }

    std::string Path(const char* name) const { return (m_folder / name).string(); }
    static HRESULT OpenFile(const std::string& path, ULONG flags, Ref<IStream>& stream,
                            const char* prefix = nullptr) {
        return OpenStreamOnFile(MAPIAllocateBuffer, MAPIFreeBuffer, flags, const_cast<char*>(path.c_str()),
                                const_cast<char*>(prefix), &stream);
    }

    fs::path m_folder;
};

TEST_F(FunctionTest, AFileIsAStream) {
    const std::string path = Path("a.bin");
    Ref<IStream> stream;
    EXPECT_EQ(OpenFile(path, STGM_READ, stream), MAPI_E_NOT_FOUND);
    EXPECT_EQ(OpenFile(Path("none/a.bin"), STGM_CREATE | STGM_READWRITE, stream), MAPI_E_NOT_FOUND);
    ASSERT_EQ(OpenFile(path, STGM_CREATE | STGM_READWRITE, stream), S_OK);
    WriteAll(stream, BytesOf("a longer text"));
    EXPECT_EQ(stream->Commit(0), S_OK);
    ASSERT_EQ(OpenFile(path, STGM_CREATE | STGM_READWRITE, stream), S_OK);
    const Ref<IStream> source = OpenStream(NewMessage(L"Hello"), PR_SUBJECT_W);
    ULARGE_INTEGER read{}, written{};
    ASSERT_EQ(source->CopyTo(stream, {.QuadPart = 4}, &read, &written), S_OK);
    EXPECT_EQ(read.QuadPart, 4u);
    EXPECT_EQ(written.QuadPart, 4u);
    stream.Clear();

    ASSERT_EQ(OpenFile(path, STGM_READ, stream), S_OK);
    EXPECT_EQ(ReadAll(stream), (Bytes{'H', 0, 'e', 0})) << "the file was emptied first";
    EXPECT_EQ(stream->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
    stream.Clear();
    EXPECT_EQ(OpenStreamOnFile(nullptr, MAPIFreeBuffer, STGM_READ, const_cast<char*>(path.c_str()), nullptr,
                               &stream),
              MAPI_E_INVALID_PARAMETER);
    ASSERT_EQ(OpenFile(path, STGM_READWRITE | STGM_DELETEONRELEASE, stream), S_OK);
    stream.Clear();
    EXPECT_FALSE(fs::exists(path));
    ASSERT_EQ(OpenFile(m_folder.string(), 0x80000000 | STGM_READWRITE, stream, "abc"), S_OK);
    stream.Clear();
    EXPECT_EQ(std::distance(fs::directory_iterator(m_folder), fs::directory_iterator()), 1);
}

TEST_F(FunctionTest, HexadecimalGoesBothWays) {
    BYTE bytes[] = {0x00, 0xAF, 0x10};
    char text[7];
    HexFromBin(bytes, 3, text);
    EXPECT_STREQ(text, "00AF10");
    BYTE back[3] = {1, 1, 1};
    EXPECT_TRUE(FBinFromHex(const_cast<char*>("00aF10"), back));
    EXPECT_EQ(Bytes(back, back + 3), Bytes(bytes, bytes + 3));
    EXPECT_FALSE(FBinFromHex(const_cast<char*>("0"), back));
    EXPECT_FALSE(FBinFromHex(const_cast<char*>("0g"), back));
    HexFromBin(bytes, 0, text);
    EXPECT_STREQ(text, "");
}

TEST_F(FunctionTest, AReplysConversationIndexGrowsFromItsParents) {
    constexpr std::uint64_t kBegin = 0x01DA1234'56789ABC;
    const GUID guid{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    const auto first = mailbox::MakeConversationIndex({}, {kBegin}, guid, 0);
    ASSERT_TRUE(first && first->size() == 22);
    EXPECT_EQ(Bytes(first->begin(), first->begin() + 6), (Bytes{0x01, 0xDA, 0x12, 0x34, 0x56, 0x78}));
    // [MS-OXOMSG] 2.2.1.3: below 1.7 years the delta is in units of 2^18 ticks, above it in those of 2^23.
    const auto soon = mailbox::MakeConversationIndex(*first, {(kBegin & ~0xFFFFull) + (5ull << 18)}, guid, 9);
    EXPECT_EQ(Bytes(soon->begin() + 22, soon->end()), (Bytes{0, 0, 0, 5, 9}));
    const auto late = mailbox::MakeConversationIndex(*first, {(kBegin & ~0xFFFFull) + (1ull << 50)}, guid, 9);
    EXPECT_EQ(Bytes(late->begin() + 22, late->end()), (Bytes{0x88, 0, 0, 0, 9}));

    ULONG size = 0;
    Block<BYTE> index;
    ASSERT_EQ(ScCreateConversationIndex(22, const_cast<BYTE*>(first->data()), &size, &index), S_OK);
    EXPECT_EQ(size, 27u);
    ASSERT_EQ(ScCreateConversationIndex(0, nullptr, &size, &index), S_OK);
    EXPECT_EQ(size, 22u);
    EXPECT_EQ(ScCreateConversationIndex(21, const_cast<BYTE*>(first->data()), &size, &index),
              MAPI_E_INVALID_PARAMETER);
}

/// A compound file in memory and a session for messages on it.
class MsgTest : public FunctionTest {
protected:
    MsgTest() { EXPECT_EQ(OpenIMsgSession(MAPIGetDefaultMalloc(), 0, &m_session), S_OK); }
    ~MsgTest() override {
        if (m_session)
            CloseIMsgSession(m_session);
    }
    HRESULT Create(Ref<IStorage>& storage) { return mailbox::OpenStorageBytes({}, &m_memory, &storage); }
    HRESULT Open(IStorage* storage, Ref<IMessage>& message, ULONG flags = 0,
                 MSGCALLRELEASE* released = nullptr, ULONG data = 0) {
        return OpenIMsgOnIStg(m_session, MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer,
                              MAPIGetDefaultMalloc(), nullptr, storage, released, data, flags, &message);
    }
    Bytes File() {
        Bytes bytes;
        EXPECT_EQ(mailbox::BytesOfStorage(m_memory, bytes), S_OK);
        return bytes;
    }
    static HRESULT Copy(IMessage* from, IMessage* to) {
        return from->CopyTo(0, nullptr, nullptr, 0, nullptr, &mapi::kIidMessage, to, 0, nullptr);
    }

    Ref<ILockBytes> m_memory;
    LPMSGSESS m_session = nullptr;
};

ULONG g_releasedWith = 0;
void STDAPICALLTYPE NoteRelease(ULONG data, LPMESSAGE) {
    g_releasedWith = data;
}

TEST_F(MsgTest, AMessageIsSavedInAStorageAndReadFromIt) {
    const Ref<IMessage> source = NewMessage(L"Saved");
    AddressList list{{Text(PR_DISPLAY_NAME_W, L"Ann"), Long(PR_RECIPIENT_TYPE, MAPI_TO)}};
    ASSERT_EQ(source->ModifyRecipients(MODRECIP_ADD, list), S_OK);
    Ref<IStorage> storage;
    ASSERT_EQ(Create(storage), S_OK);
    Ref<IMessage> message;
    ASSERT_EQ(Open(storage, message, 0, NoteRelease, 77), S_OK);
    ASSERT_EQ(Copy(source, message), S_OK);
    mailbox::NamedProperties names;
    mailbox::Content content;
    EXPECT_NE(mailbox::ReadMsg(storage, names, content), S_OK) << "not before SaveChanges";
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    STATSTG statistics{};
    ASSERT_EQ(storage->Stat(&statistics, STATFLAG_NONAME), S_OK);
    EXPECT_EQ(statistics.clsid, GUID{}) << "the class is for WriteClassStg to enter";
    EXPECT_EQ(message->SubmitMessage(0), MAPI_E_NO_SUPPORT);
    message.Clear();
    EXPECT_EQ(g_releasedWith, 77u);
    storage.Clear();
    const Bytes file = File();
    ASSERT_EQ(mailbox::ReadMsgBytes(file, names, content), S_OK);
    EXPECT_EQ(content.properties.GetOr<PR_SUBJECT_W>({}), L"Saved");

    ASSERT_EQ(mailbox::OpenStorageBytes(file, &m_memory, &storage), S_OK);
    ASSERT_EQ(Open(storage, message), S_OK);
    EXPECT_EQ(GetText(message, PR_SUBJECT_W), L"Saved");
    EXPECT_EQ(GetText(message, PR_DISPLAY_TO_W), L"Ann");
    ASSERT_EQ(Set(message, Text(PR_SUBJECT_W, L"Again")), S_OK);
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    CloseIMsgSession(m_session);
    EXPECT_EQ(ReadStatus(message, PR_SUBJECT_W), MAPI_E_INVALID_OBJECT);
    message.Clear();
    CloseIMsgSession(std::exchange(m_session, nullptr));
    EXPECT_EQ(TakeViolations().size(), 1u) << "closed twice";
}

TEST_F(MsgTest, WhatIsNoMessageIsRefused) {
    Ref<IStorage> storage;
    ASSERT_EQ(Create(storage), S_OK);
    Ref<IStream> stream;
    ASSERT_EQ(storage->CreateStream(L"__properties_version1.0",
                                    STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream),
              S_OK);
    WriteAll(stream, Bytes(3, 0xFF));
    stream.Clear();
    Ref<IMessage> message;
    EXPECT_EQ(Open(storage, message), MAPI_E_CORRUPT_DATA);
    EXPECT_EQ(Open(nullptr, message), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(Open(storage, message, 0x40), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(OpenIMsgOnIStg(m_session, nullptr, MAPIAllocateMore, MAPIFreeBuffer, MAPIGetDefaultMalloc(),
                             nullptr, storage, nullptr, 0, 0, &message),
              MAPI_E_INVALID_PARAMETER);
    LPMSGSESS session = nullptr;
    EXPECT_EQ(OpenIMsgSession(nullptr, 0, &session), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(OpenIMsgSession(MAPIGetDefaultMalloc(), 8, &session), MAPI_E_UNKNOWN_FLAGS);
}

/// A call that is made to fail: gives its status, and notes whether it left something behind.
struct Planned {
    const wchar_t* member;
    std::function<HRESULT(bool& left)> call;
};

/// One with a pointer to hand out.
template <class T>
Planned HandsOut(const wchar_t* member, std::type_identity_t<std::function<HRESULT(T** out)>> call) {
    return {member, [call](bool& left) {
                T* out = Junk<T>();
                const HRESULT status = call(&out);
                left = out != nullptr;
                return status;
            }};
}

class PlannedFailureTest : public MsgTest {
protected:
    void ExpectFailures(const std::vector<Planned>& calls) {
        for (const auto& [member, call] : calls) {
            SCOPED_TRACE(mailbox::Narrow(member, CP_UTF8));
            Watch().FailMember(member, MAPI_E_DISK_ERROR);
            bool left = false;
            EXPECT_EQ(call(left), MAPI_E_DISK_ERROR);
            EXPECT_TRUE(Watch().HasFailed());
            EXPECT_FALSE(left);
        }
        Watch().Reset();
    }
};

TEST_F(PlannedFailureTest, EveryFunctionThatCanFailFails) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IMAPITable> table = Table(OpenFolder(L"Inbox"), &IMAPIContainer::GetContentsTable);
    Ref<IStorage> storage;
    ASSERT_EQ(Create(storage), S_OK);
    SPropValue subject = Text(PR_SUBJECT_W, L"Changed");
    BYTE bytes[1] = {7};
    ExpectFailures({
        {L"MAPI32::MAPIInitialize", [](bool&) { return MAPIInitialize(nullptr); }},
        HandsOut<void>(L"MAPI32::MAPIAllocateBuffer", [](void** out) { return MAPIAllocateBuffer(8, out); }),
        HandsOut<void>(L"MAPI32::MAPIAllocateMore",
                       [](void** out) { return MAPIAllocateMore(8, nullptr, out); }),
        HandsOut<SPropValue>(L"MAPI32::HrGetOneProp",
                             [&](auto** out) { return HrGetOneProp(message, PR_SUBJECT_W, out); }),
        {L"MAPI32::HrSetOneProp", [&](bool&) { return HrSetOneProp(message, &subject); }},
        HandsOut<SRowSet>(
            L"MAPI32::HrQueryAllRows",
            [&](auto** out) { return HrQueryAllRows(table, nullptr, nullptr, nullptr, 0, out); }),
        {L"MAPI32::ScCreateConversationIndex",
         [](bool& left) {
             ULONG size = 5;
             BYTE* index = Junk<BYTE>();
             const HRESULT status = ScCreateConversationIndex(0, nullptr, &size, &index);
             left = size != 0 || index;
             return status;
         }},
        {L"MAPI32::MAPIGetDefaultMalloc",
         [](bool& left) {
             left = MAPIGetDefaultMalloc() != nullptr;
             return MAPI_E_DISK_ERROR; // it can't tell more
         }},
        {L"MAPI32::FBinFromHex",
         [&](bool& left) {
             left = FBinFromHex(const_cast<char*>("00"), bytes) || bytes[0] != 7;
             return MAPI_E_DISK_ERROR;
         }},
        HandsOut<IStream>(L"MAPI32::OpenStreamOnFile",
                          [this](auto** out) {
                              return OpenStreamOnFile(MAPIAllocateBuffer, MAPIFreeBuffer, STGM_READ,
                                                      Path("x").data(), nullptr, out);
                          }),
        HandsOut<IStream>(L"MAPI32::WrapCompressedRTFStream",
                          [](auto** out) { return WrapCompressedRTFStream(nullptr, 0, out); }),
        {L"MAPI32::RTFSync",
         [&](bool& left) {
             BOOL updated = TRUE;
             const HRESULT status = RTFSync(message, 1, &updated);
             left = updated;
             return status;
         }},
        HandsOut<std::remove_pointer_t<LPMSGSESS>>(
            L"MAPI32::OpenIMsgSession",
            [](auto** out) { return OpenIMsgSession(MAPIGetDefaultMalloc(), 0, out); }),
        {L"MAPI32::OpenIMsgOnIStg",
         [&](bool& left) {
             Ref<IMessage> opened;
             const HRESULT status = Open(storage, opened);
             left = opened;
             return status;
         }},
    });
    EXPECT_EQ(GetText(message, PR_SUBJECT_W), L"Hello");
}

TEST_F(PlannedFailureTest, AFailedMethodHandsNothingOut) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IMsgStore> store = OpenStore();
    const Ref<IMAPITable> table = Table(message, &IMessage::GetRecipientTable);
    const Ref<IStream> stream = OpenStream(message, PR_SUBJECT_W);
    ExpectFailures({
        HandsOut<void>(L"IMessage::QueryInterface",
                       [&](void** out) { return message->QueryInterface(mapi::kIidProp, out); }),
        {L"IMessage::GetProps",
         [&](bool& left) {
             ULONG count = 7;
             SPropValue* values = Junk<SPropValue>();
             const HRESULT status = message->GetProps(nullptr, 0, &count, &values);
             left = count != 0 || values;
             return status;
         }},
        HandsOut<IUnknown>(
            L"IMessage::OpenProperty",
            [&](auto** out) { return message->OpenProperty(PR_SUBJECT_W, &mapi::kIidStream, 0, 0, out); }),
        HandsOut<SPropTagArray>(L"IMessage::GetIDsFromNames",
                                [&](auto** out) { return message->GetIDsFromNames(0, nullptr, 0, out); }),
        {L"IMsgStore::OpenEntry",
         [&](bool& left) {
             ULONG type = 7;
             IUnknown* object = Junk<IUnknown>();
             const HRESULT status = store->OpenEntry(0, nullptr, nullptr, 0, &type, &object);
             left = type != 0 || object;
             return status;
         }},
        HandsOut<SRowSet>(L"IMAPITable::QueryRows", [&](auto** out) { return table->QueryRows(1, 0, out); }),
        {L"IStream::Read",
         [&](bool& left) {
             ULONG read = 7;
             char data = 0;
             const HRESULT status = stream->Read(&data, 1, &read);
             left = read != 0;
             return status;
         }},
    });
}

} // namespace
} // namespace mapi_tests
