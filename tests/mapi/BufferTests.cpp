// MAPI's memory: who may free what, and what is noticed.
#include "standin/mapi/Buffers.h"
#include "tests/mapi/Client.h"

#include <cstring>

using namespace standin;

namespace mapi_tests {
namespace {

using BufferTest = MapiTest;
TEST_F(BufferTest, ABlockIsFreedWithAllThatIsChainedToIt) {
    void* root = nullptr;
    void* more = nullptr;
    ASSERT_EQ(MAPIAllocateBuffer(10, &root), S_OK);
    ASSERT_EQ(MAPIAllocateMore(20, root, &more), S_OK);
    ASSERT_EQ(MAPIAllocateMore(0, root, &more), S_OK);
    EXPECT_EQ(mapi::Live().buffers, 1);
    EXPECT_EQ(MAPIFreeBuffer(root), 0u);
    EXPECT_EQ(mapi::Live().buffers, 0);
    EXPECT_EQ(MAPIFreeBuffer(nullptr), 0u);
}

TEST_F(BufferTest, ABlockHoldsNoZerosAtFirstAndNoDataAtLast) {
    void* block = nullptr;
    ASSERT_EQ(MAPIAllocateBuffer(100, &block), S_OK);
    const auto* bytes = static_cast<volatile std::uint8_t*>(block);
    EXPECT_EQ(bytes[0], 0xCD);
    EXPECT_EQ(bytes[99], 0xCD);
    std::memset(block, 1, 100);
    MAPIFreeBuffer(block);
    EXPECT_EQ(bytes[50], 0xDD); // kept back for this very look
}

TEST_F(BufferTest, WrongUseIsNoticed) {
    void* root = nullptr;
    void* more = nullptr;
    ASSERT_EQ(MAPIAllocateBuffer(10, &root), S_OK);
    ASSERT_EQ(MAPIAllocateMore(10, root, &more), S_OK);
    int foreign = 0;
    void* none = nullptr;

    EXPECT_NE(MAPIFreeBuffer(&foreign), 0u);
    EXPECT_NE(MAPIFreeBuffer(more), 0u);
    EXPECT_EQ(MAPIAllocateMore(10, more, &none), MAPI_E_INVALID_PARAMETER);
    MAPIFreeBuffer(root);
    EXPECT_NE(MAPIFreeBuffer(root), 0u);
    EXPECT_EQ(TakeViolations().size(), 4u);
    EXPECT_EQ(mapi::Live().buffers, 0);
}

TEST_F(BufferTest, WritingWhereNothingMayBeWrittenIsNoticed) {
    void* block = nullptr;
    ASSERT_EQ(MAPIAllocateBuffer(10, &block), S_OK);
    static_cast<volatile char*>(block)[10] = 'x';
    MAPIFreeBuffer(block);
    EXPECT_EQ(TakeViolations(), Texts{L"MAPI buffer written to past its end"});

    static_cast<volatile char*>(block)[3] = 'x';
    mapi::CheckFreedBuffers();
    EXPECT_EQ(TakeViolations(), Texts{L"MAPI buffer written to after MAPIFreeBuffer"});
}

TEST(InitializationTest, ThereIsNoMapiOutsideOfIt) {
    const auto world = mailbox::MakeSampleWorld();
    Recorder watch;
    SetCurrentWatch(&watch);
    mapi::SetMailbox(world.get());
    void* block = nullptr;
    EXPECT_EQ(MAPIAllocateBuffer(10, &block), MAPI_E_NOT_INITIALIZED);

    MAPIINIT wrongVersion{1, 0};
    EXPECT_EQ(MAPIInitialize(&wrongVersion), MAPI_E_VERSION);
    MAPIINIT parameters{0, 0};
    ASSERT_EQ(MAPIInitialize(&parameters), S_OK);
    ASSERT_EQ(MAPIInitialize(nullptr), S_OK);
    EXPECT_EQ(mapi::Live().sessions, 2);
    Ref<IMAPISession> session(mapi::MakeSession());
    Ref<IMAPITable> table;
    MAPIUninitialize();
    EXPECT_EQ(session->GetMsgStoresTable(0, &table), S_OK);
    table.Clear();
    EXPECT_EQ(watch.Violations(), Texts());
    MAPIUninitialize();
    EXPECT_EQ(session->GetMsgStoresTable(0, &table), MAPI_E_NOT_INITIALIZED);
    MAPIUninitialize(); // once too often is once too often, no more
    EXPECT_EQ(mapi::Live().sessions, 0);
    session->AddRef();
    session->Release();
    session.Clear();
    EXPECT_EQ(watch.Violations(), (Texts{L"MAPIUninitialize while 1 objects are not released yet",
                                         L"IMAPISession: referenced without MAPIInitialize",
                                         L"IMAPISession: released without MAPIInitialize",
                                         L"IMAPISession: released without MAPIInitialize"}));
    SetCurrentWatch(nullptr);
    mapi::SetMailbox(nullptr);
}

TEST_F(BufferTest, AnObjectIsNotUsedAfterItsLastRelease) {
    Ref<IMessage> message = NewMessage(L"gone");
    IMessage* dead = message;
    message.Clear();
    Block<SPropValue> value;
    EXPECT_EQ(HrGetOneProp(dead, PR_SUBJECT_W, &value), MAPI_E_INVALID_OBJECT);
    dead->Release();
    dead->AddRef();
    EXPECT_EQ(TakeViolations(),
              (Texts{L"IMessage: used after its last release", L"IMessage: released too often",
                     L"IMessage: referenced after its last release"}));
}

} // namespace
} // namespace mapi_tests
