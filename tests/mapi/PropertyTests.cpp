// IMAPIProp: reading, writing and removing properties.
#include "standin/mailbox/Tags.h"
#include "standin/mapi/Buffers.h"
#include "standin/mapi/Values.h"
#include "tests/mapi/Client.h"

#include <algorithm>
#include <cstring>
#include <map>

using namespace standin;
using mailbox::Value;

namespace mapi_tests {
namespace {

constexpr ULONG kOwnText = PROP_TAG(PT_UNICODE, 0x6700);
constexpr ULONG kOwnBinary = PROP_TAG(PT_BINARY, 0x6701);
constexpr ULONG kOwnLong = PROP_TAG(PT_LONG, 0x6702);

using PropertyTest = MapiTest;

TEST_F(PropertyTest, TheFlagDecidesTheWidthOfTextWithoutAType) {
    const Ref<IMessage> message = NewMessage(L"Gr\u00FC\u00DFe");
    const ULONG anySubject = PROP_TAG(PT_UNSPECIFIED, PROP_ID(PR_SUBJECT_W));
    ULONG count = 0;
    Block<SPropValue> values;
    ASSERT_EQ(message->GetProps(Tags{anySubject, PR_SUBJECT_A, PR_SUBJECT_W}, MAPI_UNICODE, &count, &values),
              S_OK);
    ASSERT_EQ(count, 3u);
    EXPECT_EQ(values[0].ulPropTag, PR_SUBJECT_W);
    EXPECT_STREQ(values[0].Value.lpszW, L"Gr\u00FC\u00DFe");
    EXPECT_EQ(values[1].ulPropTag, PR_SUBJECT_A);
    EXPECT_STREQ(values[1].Value.lpszA, "Gr\xFC\xDF"
                                        "e");
    ASSERT_EQ(message->GetProps(Tags{anySubject}, 0, &count, &values), S_OK);
    EXPECT_EQ(values[0].ulPropTag, PR_SUBJECT_A);
    ASSERT_EQ(HrGetOneProp(message.Get(), anySubject, &values), S_OK);
    EXPECT_EQ(values->ulPropTag, PR_SUBJECT_A) << "HrGetOneProp asks without MAPI_UNICODE";
}

TEST_F(PropertyTest, WhatIsMissingIsAnErrorColumnAndAWarning) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    ULONG count = 0;
    Block<SPropValue> values;
    ASSERT_EQ(message->GetProps(Tags{kOwnLong, PR_SUBJECT_W, PROP_TAG(PT_LONG, PROP_ID(PR_SUBJECT_W))},
                                MAPI_UNICODE, &count, &values),
              MAPI_W_ERRORS_RETURNED);
    ASSERT_EQ(count, 3u);
    EXPECT_EQ(values[0].ulPropTag, CHANGE_PROP_TYPE(kOwnLong, PT_ERROR));
    EXPECT_EQ(values[0].Value.err, MAPI_E_NOT_FOUND);
    EXPECT_EQ(values[1].ulPropTag, PR_SUBJECT_W);
    EXPECT_EQ(values[2].Value.err, MAPI_E_NOT_FOUND) << "of another type";
    EXPECT_EQ(ReadStatus(message.Get(), kOwnLong), MAPI_E_NOT_FOUND);
}

TEST_F(PropertyTest, CallsThatMakeNoSenseAreRefused) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    IMessage* object = message.Get();
    ULONG count = 0;
    Block<SPropValue> values;
    Block<SPropTagArray> tags;
    SPropValue nullText = Text(PR_SUBJECT_W, nullptr);
    SPropValue nullBinary = Binary(kOwnBinary, {});
    nullBinary.Value.bin.cb = 5;
    const std::pair<HRESULT, HRESULT> answers[] = {
        {object->GetProps(Tags{}, 0, &count, &values), MAPI_E_INVALID_PARAMETER},
        {object->GetProps(Tags{PROP_TAG(0x99, 0x37)}, 0, &count, &values), MAPI_E_INVALID_PARAMETER},
        {object->GetProps(nullptr, 0, nullptr, &values), MAPI_E_INVALID_PARAMETER},
        {object->GetProps(nullptr, 1, &count, &values), MAPI_E_UNKNOWN_FLAGS},
        {object->GetPropList(1, &tags), MAPI_E_UNKNOWN_FLAGS},
        {object->SetProps(0, &nullText, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->SetProps(1, nullptr, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->SetProps(1, &nullText, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->SetProps(1, &nullBinary, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->DeleteProps(nullptr, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->SaveChanges(0x40), MAPI_E_UNKNOWN_FLAGS},
        {object->SaveChanges(KEEP_OPEN_READONLY | KEEP_OPEN_READWRITE), MAPI_E_INVALID_PARAMETER},
        {HrGetOneProp(nullptr, PR_SUBJECT_W, &values), MAPI_E_INVALID_PARAMETER},
    };
    for (std::size_t i = 0; i < std::size(answers); ++i)
        EXPECT_EQ(answers[i].first, answers[i].second) << "row " << i;
    EXPECT_EQ(GetText(object, PR_SUBJECT_W), L"Hello");
}

TEST_F(PropertyTest, EveryTypeComesBackAsItWasWritten) {
    const Ref<IMessage> message = NewMessage();
    GUID guid{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    short shorts[] = {-1, 2};
    LONG longs[] = {3, -4, 5};
    float floats[] = {1.5f};
    double doubles[] = {2.25, -1};
    CURRENCY currencies[1] = {};
    currencies[0].int64 = 12345;
    LARGE_INTEGER larges[1] = {};
    larges[0].QuadPart = -7;
    FILETIME times[] = {{1, 2}, {3, 4}};
    GUID guids[] = {guid, guid};
    wchar_t one[] = L"one";
    wchar_t none[] = L"";
    LPWSTR texts[] = {one, none};
    BYTE raw[] = {0, 1, 2};
    SBinary binaries[] = {{3, raw}, {0, nullptr}};

    std::vector<SPropValue> written;
    const auto add = [&](ULONG type, auto fill) {
        SPropValue value{};
        value.ulPropTag = PROP_TAG(type, 0x6710 + static_cast<ULONG>(written.size()));
        fill(value.Value);
        written.push_back(value);
    };
    add(PT_I2, [](auto& v) { v.i = -2; });
    add(PT_LONG, [](auto& v) { v.l = 70000; });
    add(PT_R4, [](auto& v) { v.flt = 0.5f; });
    add(PT_DOUBLE, [](auto& v) { v.dbl = -0.25; });
    add(PT_CURRENCY, [](auto& v) { v.cur.int64 = -1; });
    add(PT_APPTIME, [](auto& v) { v.at = 36526.5; });
    add(PT_BOOLEAN, [](auto& v) { v.b = 1; });
    add(PT_I8, [](auto& v) { v.li.QuadPart = 1LL << 40; });
    add(PT_SYSTIME, [](auto& v) { v.ft = {5, 6}; });
    add(PT_UNICODE, [&](auto& v) { v.lpszW = one; });
    add(PT_CLSID, [&](auto& v) { v.lpguid = &guid; });
    add(PT_BINARY, [&](auto& v) { v.bin = {3, raw}; });
    add(PT_MV_I2, [&](auto& v) { v.MVi = {2, shorts}; });
    add(PT_MV_LONG, [&](auto& v) { v.MVl = {3, longs}; });
    add(PT_MV_R4, [&](auto& v) { v.MVflt = {1, floats}; });
    add(PT_MV_DOUBLE, [&](auto& v) { v.MVdbl = {2, doubles}; });
    add(PT_MV_CURRENCY, [&](auto& v) { v.MVcur = {1, currencies}; });
    add(PT_MV_I8, [&](auto& v) { v.MVli = {1, larges}; });
    add(PT_MV_SYSTIME, [&](auto& v) { v.MVft = {2, times}; });
    add(PT_MV_CLSID, [&](auto& v) { v.MVguid = {2, guids}; });
    add(PT_MV_UNICODE, [&](auto& v) { v.MVszW = {2, texts}; });
    add(PT_MV_BINARY, [&](auto& v) { v.MVbin = {2, binaries}; });
    Block<SPropProblemArray> problems;
    ASSERT_EQ(message->SetProps(static_cast<ULONG>(written.size()), written.data(), &problems), S_OK);
    ASSERT_FALSE(problems);

    Block<SPropValue> value;
    for (const SPropValue& expected : written) {
        ASSERT_EQ(HrGetOneProp(message.Get(), expected.ulPropTag, &value), S_OK)
            << std::hex << expected.ulPropTag;
        const auto type = PROP_TYPE(expected.ulPropTag);
        EXPECT_EQ(value->ulPropTag, expected.ulPropTag);
        if (type < PT_STRING8 || type == PT_SYSTIME) {
            const ULONG size = UlPropSize(value.Get());
            EXPECT_EQ(std::memcmp(&value->Value, &expected.Value, size), 0) << std::hex << expected.ulPropTag;
            const auto* rest = reinterpret_cast<const BYTE*>(&value->Value);
            EXPECT_EQ(std::count(rest + size, rest + sizeof value->Value, mapi::kUnsetByte),
                      static_cast<std::ptrdiff_t>(sizeof value->Value - size))
                << "another member of the union is no number; " << std::hex << expected.ulPropTag;
        } else if (type & MV_FLAG) {
            EXPECT_EQ(value->Value.MVl.cValues, expected.Value.MVl.cValues) << std::hex << expected.ulPropTag;
        }
        EXPECT_EQ(UlPropSize(value.Get()), UlPropSize(const_cast<SPropValue*>(&expected)));
    }
    const auto get = [&](std::size_t index) {
        return HrGetOneProp(message.Get(), written[index].ulPropTag, &value);
    };
    EXPECT_TRUE(get(10) == S_OK && *value->Value.lpguid == guid);
    EXPECT_TRUE(get(11) == S_OK && value->Value.bin.cb == 3 && value->Value.bin.lpb[2] == 2);
    EXPECT_TRUE(get(12) == S_OK && value->Value.MVi.lpi[0] == -1);
    EXPECT_TRUE(get(13) == S_OK && value->Value.MVl.lpl[1] == -4);
    EXPECT_TRUE(get(15) == S_OK && value->Value.MVdbl.lpdbl[1] == -1);
    EXPECT_TRUE(get(18) == S_OK && value->Value.MVft.lpft[1].dwHighDateTime == 4);
    EXPECT_TRUE(get(19) == S_OK && value->Value.MVguid.lpguid[1] == guid);
    EXPECT_TRUE(get(20) == S_OK && std::wstring(value->Value.MVszW.lppszW[0]) == L"one");
    EXPECT_TRUE(get(20) == S_OK && std::wstring(value->Value.MVszW.lppszW[1]).empty());
    EXPECT_TRUE(get(21) == S_OK && value->Value.MVbin.lpbin[0].lpb[1] == 1 &&
                value->Value.MVbin.lpbin[1].cb == 0);
}

TEST_F(PropertyTest, ARefusedPropertyIsAProblemOfItsOwn) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const auto typed = [](ULONG type) { return Long(PROP_TAG(type, 0x6700), 0); };
    const std::pair<SPropValue, HRESULT> cases[] = {
        {Long(PR_MESSAGE_SIZE, 1), MAPI_E_COMPUTED},
        {Text(PR_DISPLAY_TO_W, L"x"), MAPI_E_COMPUTED},
        {typed(PT_ERROR), MAPI_E_INVALID_TYPE},
        {typed(PT_OBJECT), MAPI_E_INVALID_TYPE},
        {typed(PT_NULL), MAPI_E_INVALID_TYPE},
        {typed(PT_UNSPECIFIED), MAPI_E_INVALID_TYPE},
        {Long(PROP_TAG(PT_LONG, 0), 0), MAPI_E_INVALID_PARAMETER},
        {Long(PROP_TAG(PT_LONG, 0xFFFF), 0), MAPI_E_INVALID_PARAMETER},
        {Long(PROP_TAG(PT_LONG, 0xFFF0), 0), MAPI_E_INVALID_PARAMETER}, // no name behind it
        {Long(kOwnLong, 1), S_OK},
        {Text(CHANGE_PROP_TYPE(PR_IMPORTANCE, PT_UNICODE), L"1"), MAPI_E_UNEXPECTED_TYPE},
        {Long(CHANGE_PROP_TYPE(PR_SUBJECT_W, PT_LONG), 1), MAPI_E_UNEXPECTED_TYPE},
        {Long(CHANGE_PROP_TYPE(PR_BODY_W, PT_LONG), 1), MAPI_E_UNEXPECTED_TYPE},
        {Long(CHANGE_PROP_TYPE(PR_START_DATE, PT_LONG), 1), MAPI_E_UNEXPECTED_TYPE},
        {Text(mailbox::kPrCreatorName, L"x"), MAPI_E_COMPUTED},
        {Text(PR_SUBJECT_W, L"Hello"), S_OK},
    };
    for (const auto& [value, expected] : cases) {
        EXPECT_EQ(Problem(message.Get(), value), expected) << std::hex << value.ulPropTag;
        EXPECT_EQ(Set(message.Get(), value), expected) << std::hex << value.ulPropTag;
    }
    SPropValue both[] = {Long(PR_MESSAGE_SIZE, 1), Text(PR_SUBJECT_W, L"Changed")};
    Block<SPropProblemArray> problems;
    ASSERT_EQ(message->SetProps(2, both, &problems), S_OK);
    ASSERT_TRUE(problems && problems->cProblem == 1);
    EXPECT_EQ(GetText(message.Get(), PR_SUBJECT_W), L"Changed") << "the others are written all the same";
    EXPECT_EQ(message->SetProps(2, both, nullptr), S_OK);
    Watch().Deviate().largestValueSet = 16;
    EXPECT_EQ(Set(message.Get(), Text(PR_SUBJECT_W, L"12345678")), MAPI_E_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(Set(message.Get(), Text(PR_SUBJECT_W, L"1234567")), S_OK);
}

TEST_F(PropertyTest, DeletedIsGoneAndWhatIsGoneIsNoProblem) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    ASSERT_EQ(Set(message.Get(), Long(kOwnLong, 1)), S_OK);
    Block<SPropProblemArray> problems;
    const ULONG anyType = CHANGE_PROP_TYPE(kOwnLong, PT_UNSPECIFIED);
    ASSERT_EQ(message->DeleteProps(Tags{anyType, kOwnText, PR_MESSAGE_SIZE}, &problems), S_OK);
    EXPECT_EQ(ReadStatus(message.Get(), kOwnLong), MAPI_E_NOT_FOUND);
    ASSERT_TRUE(problems);
    ASSERT_EQ(problems->cProblem, 1u);
    EXPECT_EQ(problems->aProblem[0].ulIndex, 2u);
    EXPECT_EQ(problems->aProblem[0].scode, MAPI_E_COMPUTED);
}

TEST_F(PropertyTest, AllPropertiesAreThoseOfTheList) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    ASSERT_EQ(Set(message.Get(), Long(kOwnLong, 42)), S_OK);
    for (const ULONG flags : {ULONG{0}, ULONG{MAPI_UNICODE}}) {
        Block<SPropTagArray> tags;
        ASSERT_EQ(message->GetPropList(flags, &tags), S_OK);
        ULONG count = 0;
        Block<SPropValue> values;
        ASSERT_EQ(message->GetProps(nullptr, flags, &count, &values), S_OK);
        ASSERT_EQ(count, tags->cValues);
        std::map<ULONG, const SPropValue*> byTag;
        for (ULONG i = 0; i < count; ++i) {
            EXPECT_EQ(values[i].ulPropTag, tags->aulPropTag[i]);
            byTag[values[i].ulPropTag] = &values[i];
        }
        EXPECT_TRUE(byTag.contains(flags ? PR_SUBJECT_W : PR_SUBJECT_A));
        EXPECT_TRUE(byTag.contains(PR_ENTRYID));
        EXPECT_TRUE(byTag.contains(PR_MESSAGE_RECIPIENTS));
        ASSERT_TRUE(byTag.contains(kOwnLong));
        EXPECT_EQ(byTag[kOwnLong]->Value.l, 42);
    }
}

TEST_F(PropertyTest, LargeValuesAreToBeHadAsStreamsOnly) {
    const Ref<IMessage> message = NewMessage();
    const std::size_t limit = mapi::kLargestValue;
    const struct {
        std::wstring text;
        HRESULT status;
    } cases[] = {{std::wstring(limit / 2 - 1, L'x'), S_OK},
                 {std::wstring(limit / 2 + 10, L'x'), MAPI_E_NOT_ENOUGH_MEMORY}};
    for (const auto& [text, status] : cases) {
        ASSERT_EQ(Set(message.Get(), Text(kOwnText, text.c_str())), S_OK);
        EXPECT_EQ(ReadStatus(message.Get(), kOwnText), status);
        Ref<IStream> stream;
        ASSERT_EQ(OpenStream(message.Get(), kOwnText, 0, stream), S_OK);
        EXPECT_EQ(ReadAll(stream.Get()).size(), text.size() * 2);
    }
    ULONG count = 0;
    Block<SPropValue> values;
    ASSERT_EQ(message->GetProps(Tags{kOwnText, PR_MESSAGE_CLASS_W}, 0, &count, &values),
              MAPI_W_ERRORS_RETURNED);
    EXPECT_EQ(values[0].Value.err, MAPI_E_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(values[1].ulPropTag, PR_MESSAGE_CLASS_W) << "the other columns are whole";
}

TEST_F(PropertyTest, AFaultyProvidersValuesComeThroughAsTheyAre) {
    const auto open = MakeMessage();
    mailbox::Content* content = nullptr;
    ASSERT_EQ(open->EditContent(content), S_OK);
    mailbox::PropertyBag& bag = content->properties;
    bag.Put(kOwnText, mailbox::NullPointer{PT_UNICODE, 5});
    bag.Put(kOwnBinary, mailbox::NullPointer{PT_BINARY, 5});
    const ULONG ownList = PROP_TAG(PT_MV_UNICODE, 0x6703);
    bag.Put(ownList, mailbox::NullPointer{PT_MV_UNICODE, 3});
    const ULONG emptyList = PROP_TAG(PT_MV_BINARY, 0x6704);
    bag.Put(emptyList, std::vector<Bytes>());
    bag.Put(PR_SUBJECT_W, std::int32_t{7}); // of a type that it never has
    const ULONG failing = PROP_TAG(PT_ERROR, 0x6705);
    bag.Put(failing, mailbox::ErrorValue{MAPI_E_DISK_ERROR});

    const Ref<IMessage> message(mapi::MakeMessage(open));
    Block<SPropValue> value;
    ASSERT_EQ(HrGetOneProp(message.Get(), kOwnText, &value), S_OK);
    EXPECT_EQ(value->Value.lpszW, nullptr);
    ASSERT_EQ(HrGetOneProp(message.Get(), kOwnBinary, &value), S_OK);
    EXPECT_TRUE(value->Value.bin.cb == 5 && !value->Value.bin.lpb);
    ASSERT_EQ(HrGetOneProp(message.Get(), ownList, &value), S_OK);
    EXPECT_TRUE(value->Value.MVszW.cValues == 3 && !value->Value.MVszW.lppszW);
    ASSERT_EQ(HrGetOneProp(message.Get(), emptyList, &value), S_OK);
    EXPECT_EQ(value->Value.MVbin.cValues, 0u);
    EXPECT_EQ(ReadStatus(message.Get(), PR_SUBJECT_W), MAPI_E_NOT_FOUND);
    EXPECT_EQ(GetLong(message.Get(), PROP_TAG(PT_UNSPECIFIED, PROP_ID(PR_SUBJECT_W))), 7);
    EXPECT_EQ(ReadStatus(message.Get(), failing), MAPI_E_DISK_ERROR);
    ULONG count = 0;
    EXPECT_EQ(message->GetProps(nullptr, MAPI_UNICODE, &count, &value), MAPI_W_ERRORS_RETURNED);
    Ref<IStream> stream;
    ASSERT_EQ(OpenStream(message.Get(), kOwnText, 0, stream), S_OK);
    EXPECT_TRUE(ReadAll(stream.Get()).empty());
}

TEST_F(PropertyTest, StreamsWriteWhenTheyAreCommitted) {
    const Ref<IMessage> message = NewMessage();
    const struct {
        ULONG tag;
        Bytes written;
    } cases[] = {{kOwnText, {'H', 0, 'i', 0}},
                 {CHANGE_PROP_TYPE(kOwnText, PT_STRING8), BytesOf("Hi")},
                 {kOwnBinary, {0, 255, 0}}};
    for (const auto& [tag, written] : cases) {
        message->DeleteProps(Tags{tag}, nullptr);
        Ref<IStream> stream;
        EXPECT_EQ(OpenStream(message.Get(), tag, 0, stream), MAPI_E_NOT_FOUND);
        EXPECT_EQ(OpenStream(message.Get(), tag, MAPI_MODIFY, stream), MAPI_E_NOT_FOUND);
        ASSERT_EQ(OpenStream(message.Get(), tag, MAPI_CREATE | MAPI_MODIFY, stream), S_OK);
        WriteAll(stream.Get(), written);
        EXPECT_EQ(ReadStatus(message.Get(), tag), MAPI_E_NOT_FOUND) << "before Commit";
        ASSERT_EQ(stream->Commit(0), S_OK);
        Ref<IStream> reader;
        ASSERT_EQ(OpenStream(message.Get(), tag, 0, reader), S_OK);
        EXPECT_EQ(ReadAll(reader.Get()), written);
        EXPECT_EQ(reader->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
    }
    EXPECT_EQ(GetText(message.Get(), kOwnText), L"Hi");
}

TEST_F(PropertyTest, AStreamIsWrittenInPlaces) {
    const Ref<IMessage> message = NewMessage();
    ASSERT_EQ(Set(message.Get(), Binary(kOwnBinary, BytesOf("abcdef"))), S_OK);
    Ref<IStream> stream;
    ASSERT_EQ(OpenStream(message.Get(), kOwnBinary, MAPI_MODIFY, stream), S_OK);
    ULARGE_INTEGER position{};
    ASSERT_EQ(stream->Seek({.QuadPart = -2}, STREAM_SEEK_END, &position), S_OK);
    EXPECT_EQ(position.QuadPart, 4u);
    WriteAll(stream.Get(), BytesOf("XYZ"));
    EXPECT_EQ(stream->Seek({.QuadPart = -1}, STREAM_SEEK_SET, nullptr), STG_E_INVALIDFUNCTION);
    ASSERT_EQ(stream->SetSize({.QuadPart = 9}), S_OK);
    STATSTG statistics{};
    ASSERT_EQ(stream->Stat(&statistics, STATFLAG_NONAME), S_OK);
    EXPECT_EQ(statistics.cbSize.QuadPart, 9u);
    ASSERT_EQ(stream->Commit(0), S_OK);
    EXPECT_EQ(GetBinary(message.Get(), kOwnBinary), BytesOf(std::string_view("abcdXYZ\0\0", 9)));
    ASSERT_EQ(OpenStream(message.Get(), kOwnBinary, MAPI_MODIFY | STREAM_APPEND, stream), S_OK);
    WriteAll(stream.Get(), BytesOf("!"));
    message->SaveChanges(KEEP_OPEN_READONLY);
    EXPECT_EQ(stream->Commit(0), E_ACCESSDENIED) << "its message is for reading only by now";
}

TEST_F(PropertyTest, OpenPropertyTellsWhyNot) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IMessage> readOnly = Reopen(message.Get());
    const IID stranger = mapi::MapiIid(0x12345);
    constexpr ULONG kCreate = MAPI_CREATE | MAPI_MODIFY;
    const struct {
        IMessage* message;
        ULONG tag;
        const IID* iid;
        ULONG flags;
        HRESULT status;
    } cases[] = {
        {message.Get(), PROP_TAG(PT_UNSPECIFIED, 0x37), &mapi::kIidStream, 0, MAPI_E_INVALID_PARAMETER},
        {message.Get(), PROP_TAG(PT_ERROR, 0x37), &mapi::kIidStream, 0, MAPI_E_INVALID_PARAMETER},
        {message.Get(), PR_SUBJECT_W, nullptr, 0, MAPI_E_INVALID_PARAMETER},
        {message.Get(), PR_SUBJECT_W, &mapi::kIidStream, MAPI_CREATE, MAPI_E_INVALID_PARAMETER},
        {message.Get(), PR_SUBJECT_W, &mapi::kIidStream, 0x100, MAPI_E_UNKNOWN_FLAGS},
        {message.Get(), PR_SUBJECT_W, &stranger, 0, MAPI_E_INTERFACE_NOT_SUPPORTED},
        {message.Get(), PR_MESSAGE_SIZE, &mapi::kIidStream, 0, MAPI_E_INTERFACE_NOT_SUPPORTED},
        {message.Get(), PR_DISPLAY_TO_W, &mapi::kIidStream, MAPI_MODIFY, MAPI_E_COMPUTED},
        {message.Get(), PROP_TAG(PT_UNICODE, 0), &mapi::kIidStream, kCreate, MAPI_E_INVALID_PARAMETER},
        {message.Get(), PROP_TAG(PT_UNICODE, 0xFFFF), &mapi::kIidStream, kCreate, MAPI_E_INVALID_PARAMETER},
        {message.Get(), PROP_TAG(PT_UNICODE, 0xFFF0), &mapi::kIidStream, kCreate, MAPI_E_INVALID_PARAMETER},
        {message.Get(), CHANGE_PROP_TYPE(PR_IMPORTANCE, PT_BINARY), &mapi::kIidStream, kCreate,
         MAPI_E_UNEXPECTED_TYPE},
        {message.Get(), PR_SUBJECT_W, &mapi::kIidTable, 0, MAPI_E_INTERFACE_NOT_SUPPORTED},
        {readOnly.Get(), PR_SUBJECT_W, &mapi::kIidStream, MAPI_MODIFY, E_ACCESSDENIED},
        {readOnly.Get(), PR_SUBJECT_W, &mapi::kIidStream, 0, S_OK},
        {readOnly.Get(), PR_MESSAGE_RECIPIENTS, &mapi::kIidTable, 0, S_OK},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        Ref<IUnknown> opened;
        EXPECT_EQ(cases[i].message->OpenProperty(cases[i].tag, cases[i].iid, 0, cases[i].flags, &opened),
                  cases[i].status)
            << "row " << i;
        EXPECT_EQ(static_cast<bool>(opened), SUCCEEDED(cases[i].status)) << "row " << i;
    }
}

TEST_F(PropertyTest, NothingIsWrittenThroughWhatIsOpenForReading) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IMessage> readOnly = Reopen(message.Get());
    SPropValue subject = Text(PR_SUBJECT_W, L"Changed");
    AddressList list{{Text(PR_DISPLAY_NAME_W, L"A")}};
    ULONG number = 0;
    Ref<IAttach> attach;
    const HRESULT answers[] = {
        readOnly->SetProps(1, &subject, nullptr),
        readOnly->DeleteProps(Tags{PR_SUBJECT_W}, nullptr),
        readOnly->SaveChanges(KEEP_OPEN_READWRITE),
        readOnly->ModifyRecipients(MODRECIP_ADD, list),
        readOnly->CreateAttach(nullptr, 0, &number, &attach),
        readOnly->DeleteAttach(0, 0, nullptr, 0),
        readOnly->SubmitMessage(0),
        message->CopyTo(0, nullptr, nullptr, 0, nullptr, &mapi::kIidMessage, readOnly.Get(), 0, nullptr),
    };
    for (std::size_t i = 0; i < std::size(answers); ++i)
        EXPECT_EQ(answers[i], E_ACCESSDENIED) << "row " << i;
    EXPECT_EQ(GetLong(readOnly.Get(), PR_ACCESS_LEVEL), 0);
}

TEST_F(PropertyTest, SaveChangesDecidesWhatMayComeAfter) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IMessage> other = Reopen(message.Get(), MAPI_MODIFY);
    ASSERT_EQ(Set(message.Get(), Text(PR_SUBJECT_W, L"Mine")), S_OK);
    EXPECT_EQ(GetText(other.Get(), PR_SUBJECT_W), L"Hello");
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(GetText(Reopen(message.Get()).Get(), PR_SUBJECT_W), L"Mine");

    ASSERT_EQ(Set(other.Get(), Text(PR_SUBJECT_W, L"Theirs")), S_OK);
    EXPECT_EQ(other->SaveChanges(KEEP_OPEN_READWRITE), MAPI_E_OBJECT_CHANGED);
    EXPECT_EQ(other->SaveChanges(KEEP_OPEN_READWRITE | FORCE_SAVE), S_OK);
    EXPECT_EQ(GetText(Reopen(message.Get()).Get(), PR_SUBJECT_W), L"Theirs");

    ASSERT_EQ(other->SaveChanges(KEEP_OPEN_READONLY), S_OK);
    EXPECT_EQ(GetText(other.Get(), PR_SUBJECT_W), L"Theirs");
    EXPECT_EQ(Set(other.Get(), Text(PR_SUBJECT_W, L"More")), E_ACCESSDENIED);

    ASSERT_EQ(message->SaveChanges(FORCE_SAVE), S_OK);
    EXPECT_EQ(ReadStatus(message.Get(), PR_SUBJECT_W), MAPI_E_INVALID_OBJECT);
    EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), MAPI_E_INVALID_OBJECT);
}

TEST_F(PropertyTest, TheLastFailureIsTold) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    Block<MAPIERROR> error;
    EXPECT_EQ(message->GetLastError(MAPI_E_NO_SUPPORT, MAPI_UNICODE, &error), S_OK);
    EXPECT_FALSE(error) << "nothing has failed yet";
    ASSERT_EQ(message->SaveChanges(0x40), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(message->GetLastError(MAPI_E_NO_SUPPORT, MAPI_UNICODE, &error), S_OK);
    EXPECT_FALSE(error) << "not with this status";
    ASSERT_EQ(message->GetLastError(MAPI_E_UNKNOWN_FLAGS, MAPI_UNICODE, &error), S_OK);
    ASSERT_TRUE(error);
    EXPECT_STREQ(error->lpszError, L"A flag is not known.");
    ASSERT_EQ(message->GetLastError(MAPI_E_UNKNOWN_FLAGS, 0, &error), S_OK);
    EXPECT_STREQ(reinterpret_cast<char*>(error->lpszError), "A flag is not known.");
    EXPECT_EQ(error->ulLowLevelError, static_cast<ULONG>(MAPI_E_UNKNOWN_FLAGS));
}

TEST_F(PropertyTest, ADeletedMessageIsNotWrittenTo) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    mailbox::Folder& inbox = Folder(L"Inbox");
    ASSERT_EQ(inbox.RemoveMessage(*inbox.Messages().front()), S_OK);
    EXPECT_EQ(GetText(message.Get(), PR_SUBJECT_W), L"Hello");
    EXPECT_EQ(Set(message.Get(), Text(PR_SUBJECT_W, L"Changed")), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), MAPI_E_OBJECT_DELETED);
}

} // namespace
} // namespace mapi_tests
