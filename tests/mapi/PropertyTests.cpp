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

class PropertyTest : public MapiTest {
protected:
    HRESULT GetProps(IMessage* message, SPropTagArray* tags, ULONG flags) {
        return message->GetProps(tags, flags, &m_count, &m_values);
    }

    ULONG m_count = 0;
    Block<SPropValue> m_values;
    Block<SPropProblemArray> m_problems;
};

TEST_F(PropertyTest, TheFlagDecidesTheWidthOfTextWithoutAType) {
    const Ref<IMessage> message = NewMessage(L"Gr\u00FC\u00DFe");
    const ULONG anySubject = PROP_TAG(PT_UNSPECIFIED, PROP_ID(PR_SUBJECT_W));
    ASSERT_EQ(GetProps(message, Tags{anySubject, PR_SUBJECT_A, PR_SUBJECT_W}, MAPI_UNICODE), S_OK);
    ASSERT_EQ(m_count, 3u);
    EXPECT_EQ(m_values[0].ulPropTag, PR_SUBJECT_W);
    EXPECT_STREQ(m_values[0].Value.lpszW, L"Gr\u00FC\u00DFe");
    EXPECT_EQ(m_values[1].ulPropTag, PR_SUBJECT_A);
    EXPECT_STREQ(m_values[1].Value.lpszA, "Gr\xFC\xDF\x65");
    ASSERT_EQ(GetProps(message, Tags{anySubject}, 0), S_OK);
    EXPECT_EQ(m_values[0].ulPropTag, PR_SUBJECT_A);
    ASSERT_EQ(HrGetOneProp(message, anySubject, &m_values), S_OK);
    EXPECT_EQ(m_values->ulPropTag, PR_SUBJECT_A) << "HrGetOneProp asks without MAPI_UNICODE";
}

TEST_F(PropertyTest, WhatIsMissingIsAnErrorColumnAndAWarning) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    Tags tags{kOwnLong, PR_SUBJECT_W, PROP_TAG(PT_LONG, PROP_ID(PR_SUBJECT_W))};
    ASSERT_EQ(GetProps(message, tags, MAPI_UNICODE), MAPI_W_ERRORS_RETURNED);
    ASSERT_EQ(m_count, 3u);
    EXPECT_EQ(m_values[0].ulPropTag, CHANGE_PROP_TYPE(kOwnLong, PT_ERROR));
    EXPECT_EQ(m_values[0].Value.err, MAPI_E_NOT_FOUND);
    EXPECT_EQ(m_values[1].ulPropTag, PR_SUBJECT_W);
    EXPECT_EQ(m_values[2].Value.err, MAPI_E_NOT_FOUND) << "of another type";
    EXPECT_EQ(ReadStatus(message, kOwnLong), MAPI_E_NOT_FOUND);
}

TEST_F(PropertyTest, CallsThatMakeNoSenseAreRefused) {
    const Ref<IMessage> object = NewMessage(L"Hello");
    Block<SPropTagArray> tags;
    SPropValue nullText = Text(PR_SUBJECT_W, nullptr);
    SPropValue nullBinary{kOwnBinary, 0, {.bin = {5, nullptr}}};
    const std::pair<HRESULT, HRESULT> answers[] = {
        {GetProps(object, Tags{}, 0), MAPI_E_INVALID_PARAMETER},
        {GetProps(object, Tags{PROP_TAG(0x99, 0x37)}, 0), MAPI_E_INVALID_PARAMETER},
        {object->GetProps(nullptr, 0, nullptr, &m_values), MAPI_E_INVALID_PARAMETER},
        {GetProps(object, nullptr, 1), MAPI_E_UNKNOWN_FLAGS},
        {object->GetPropList(1, &tags), MAPI_E_UNKNOWN_FLAGS},
        {object->SetProps(0, &nullText, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->SetProps(1, nullptr, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->SetProps(1, &nullText, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->SetProps(1, &nullBinary, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->DeleteProps(nullptr, nullptr), MAPI_E_INVALID_PARAMETER},
        {object->SaveChanges(0x40), MAPI_E_UNKNOWN_FLAGS},
        {object->SaveChanges(KEEP_OPEN_READONLY | KEEP_OPEN_READWRITE), MAPI_E_INVALID_PARAMETER},
        {HrGetOneProp(nullptr, PR_SUBJECT_W, &m_values), MAPI_E_INVALID_PARAMETER},
    };
    for (const auto& row : answers)
        EXPECT_EQ(row.first, row.second) << "row " << &row - answers;
    EXPECT_EQ(GetText(object, PR_SUBJECT_W), L"Hello");
}

TEST_F(PropertyTest, EveryTypeComesBackAsItWasWritten) {
    const Ref<IMessage> message = NewMessage();
    GUID guid{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    short shorts[] = {-1, 2};
    LONG longs[] = {3, -4, 5};
    float floats[] = {1.5f};
    double doubles[] = {2.25, -1};
    CURRENCY currencies[] = {{.int64 = 12345}};
    LARGE_INTEGER larges[] = {{.QuadPart = -7}};
    FILETIME times[] = {{1, 2}, {3, 4}};
    GUID guids[] = {guid, guid};
    wchar_t one[] = L"one";
    wchar_t none[] = L"";
    LPWSTR texts[] = {one, none};
    BYTE raw[] = {0, 1, 2};
    SBinary binaries[] = {{3, raw}, {0, nullptr}};

    SPropValue written[] = {
        {PT_I2, 0, {.i = -2}},
        {PT_LONG, 0, {.l = 70000}},
        {PT_R4, 0, {.flt = 0.5f}},
        {PT_DOUBLE, 0, {.dbl = -0.25}},
        {PT_CURRENCY, 0, {.cur = {.int64 = -1}}},
        {PT_APPTIME, 0, {.at = 36526.5}},
        {PT_BOOLEAN, 0, {.b = 1}},
        {PT_I8, 0, {.li = {.QuadPart = 1LL << 40}}},
        {PT_SYSTIME, 0, {.ft = {5, 6}}},
        {PT_UNICODE, 0, {.lpszW = one}},
        {PT_CLSID, 0, {.lpguid = &guid}},
        {PT_BINARY, 0, {.bin = {3, raw}}},
        {PT_MV_I2, 0, {.MVi = {2, shorts}}},
        {PT_MV_LONG, 0, {.MVl = {3, longs}}},
        {PT_MV_R4, 0, {.MVflt = {1, floats}}},
        {PT_MV_DOUBLE, 0, {.MVdbl = {2, doubles}}},
        {PT_MV_CURRENCY, 0, {.MVcur = {1, currencies}}},
        {PT_MV_I8, 0, {.MVli = {1, larges}}},
        {PT_MV_SYSTIME, 0, {.MVft = {2, times}}},
        {PT_MV_CLSID, 0, {.MVguid = {2, guids}}},
        {PT_MV_UNICODE, 0, {.MVszW = {2, texts}}},
        {PT_MV_BINARY, 0, {.MVbin = {2, binaries}}},
    };
    ULONG id = 0x6710;
    for (SPropValue& each : written)
        each.ulPropTag = PROP_TAG(each.ulPropTag, id++);
    ASSERT_EQ(message->SetProps(std::size(written), written, &m_problems), S_OK);
    ASSERT_FALSE(m_problems);

    Block<SPropValue> value;
    for (SPropValue& expected : written) {
        SCOPED_TRACE(testing::Message() << std::hex << expected.ulPropTag);
        ASSERT_EQ(HrGetOneProp(message, expected.ulPropTag, &value), S_OK);
        const auto type = PROP_TYPE(expected.ulPropTag);
        const ULONG size = UlPropSize(value.Get());
        EXPECT_EQ(value->ulPropTag, expected.ulPropTag);
        EXPECT_EQ(size, UlPropSize(&expected));
        if (type < PT_STRING8 || type == PT_SYSTIME) {
            EXPECT_EQ(std::memcmp(&value->Value, &expected.Value, size), 0);
            const auto* rest = reinterpret_cast<const BYTE*>(&value->Value);
            EXPECT_EQ(std::count(rest + size, rest + sizeof value->Value, mapi::kUnsetByte),
                      static_cast<std::ptrdiff_t>(sizeof value->Value - size))
                << "another member of the union is no number";
        } else if (type & MV_FLAG) {
            EXPECT_EQ(value->Value.MVl.cValues, expected.Value.MVl.cValues);
        }
    }
    const auto get = [&](std::size_t index) {
        return HrGetOneProp(message, written[index].ulPropTag, &value);
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
        EXPECT_EQ(Problem(message, value), expected) << std::hex << value.ulPropTag;
        EXPECT_EQ(Set(message, value), expected) << std::hex << value.ulPropTag;
    }
    SPropValue both[] = {Long(PR_MESSAGE_SIZE, 1), Text(PR_SUBJECT_W, L"Changed")};
    ASSERT_EQ(message->SetProps(2, both, &m_problems), S_OK);
    ASSERT_TRUE(m_problems && m_problems->cProblem == 1);
    EXPECT_EQ(GetText(message, PR_SUBJECT_W), L"Changed") << "the others are written all the same";
    EXPECT_EQ(message->SetProps(2, both, nullptr), S_OK);
    Watch().Deviate().largestValueSet = 16;
    EXPECT_EQ(Set(message, Text(PR_SUBJECT_W, L"12345678")), MAPI_E_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(Set(message, Text(PR_SUBJECT_W, L"1234567")), S_OK);
}

TEST_F(PropertyTest, DeletedIsGoneAndWhatIsGoneIsNoProblem) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    ASSERT_EQ(Set(message, Long(kOwnLong, 1)), S_OK);
    const ULONG anyType = CHANGE_PROP_TYPE(kOwnLong, PT_UNSPECIFIED);
    ASSERT_EQ(message->DeleteProps(Tags{anyType, kOwnText, PR_MESSAGE_SIZE}, &m_problems), S_OK);
    EXPECT_EQ(ReadStatus(message, kOwnLong), MAPI_E_NOT_FOUND);
    ASSERT_TRUE(m_problems);
    ASSERT_EQ(m_problems->cProblem, 1u);
    EXPECT_EQ(m_problems->aProblem[0].ulIndex, 2u);
    EXPECT_EQ(m_problems->aProblem[0].scode, MAPI_E_COMPUTED);
}

TEST_F(PropertyTest, AllPropertiesAreThoseOfTheList) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    ASSERT_EQ(Set(message, Long(kOwnLong, 42)), S_OK);
    for (const ULONG flags : {ULONG{0}, ULONG{MAPI_UNICODE}}) {
        Block<SPropTagArray> tags;
        ASSERT_EQ(message->GetPropList(flags, &tags), S_OK);
        ASSERT_EQ(GetProps(message, nullptr, flags), S_OK);
        ASSERT_EQ(m_count, tags->cValues);
        std::map<ULONG, const SPropValue*> byTag;
        for (ULONG i = 0; i < m_count; ++i) {
            EXPECT_EQ(m_values[i].ulPropTag, tags->aulPropTag[i]);
            byTag[m_values[i].ulPropTag] = &m_values[i];
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
    const std::pair<std::wstring, HRESULT> cases[] = {
        {std::wstring(limit / 2 - 1, L'x'), S_OK},
        {std::wstring(limit / 2 + 10, L'x'), MAPI_E_NOT_ENOUGH_MEMORY}};
    for (const auto& [text, status] : cases) {
        ASSERT_EQ(Set(message, Text(kOwnText, text.c_str())), S_OK);
        EXPECT_EQ(ReadStatus(message, kOwnText), status);
        EXPECT_EQ(ReadAll(OpenStream(message, kOwnText)).size(), text.size() * 2);
    }
    ASSERT_EQ(GetProps(message, Tags{kOwnText, PR_MESSAGE_CLASS_W}, 0), MAPI_W_ERRORS_RETURNED);
    EXPECT_EQ(m_values[0].Value.err, MAPI_E_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(m_values[1].ulPropTag, PR_MESSAGE_CLASS_W) << "the other columns are whole";
}

TEST_F(PropertyTest, AFaultyProvidersValuesComeThroughAsTheyAre) {
    const auto open = MakeMessage();
    mailbox::Content* content = nullptr;
    ASSERT_EQ(open->EditContent(content), S_OK);
    mailbox::PropertyBag& bag = content->properties;
    constexpr ULONG kNullList = PROP_TAG(PT_MV_UNICODE, 0x6703), kEmptyList = PROP_TAG(PT_MV_BINARY, 0x6704);
    constexpr ULONG kFailing = PROP_TAG(PT_ERROR, 0x6705);
    bag.Put(kOwnText, mailbox::NullPointer{PT_UNICODE, 5});
    bag.Put(kOwnBinary, mailbox::NullPointer{PT_BINARY, 5});
    bag.Put(kNullList, mailbox::NullPointer{PT_MV_UNICODE, 3});
    bag.Put(kEmptyList, std::vector<Bytes>());
    bag.Put(PR_SUBJECT_W, std::int32_t{7}); // of a type that it never has
    bag.Put(kFailing, mailbox::ErrorValue{MAPI_E_DISK_ERROR});

    const Ref<IMessage> message(mapi::MakeMessage(open));
    Block<SPropValue> value;
    ASSERT_EQ(HrGetOneProp(message, kOwnText, &value), S_OK);
    EXPECT_EQ(value->Value.lpszW, nullptr);
    ASSERT_EQ(HrGetOneProp(message, kOwnBinary, &value), S_OK);
    EXPECT_TRUE(value->Value.bin.cb == 5 && !value->Value.bin.lpb);
    ASSERT_EQ(HrGetOneProp(message, kNullList, &value), S_OK);
    EXPECT_TRUE(value->Value.MVszW.cValues == 3 && !value->Value.MVszW.lppszW);
    ASSERT_EQ(HrGetOneProp(message, kEmptyList, &value), S_OK);
    EXPECT_EQ(value->Value.MVbin.cValues, 0u);
    EXPECT_EQ(ReadStatus(message, PR_SUBJECT_W), MAPI_E_NOT_FOUND);
    EXPECT_EQ(GetLong(message, PROP_TAG(PT_UNSPECIFIED, PROP_ID(PR_SUBJECT_W))), 7);
    EXPECT_EQ(ReadStatus(message, kFailing), MAPI_E_DISK_ERROR);
    EXPECT_EQ(GetProps(message, nullptr, MAPI_UNICODE), MAPI_W_ERRORS_RETURNED);
    EXPECT_TRUE(ReadAll(OpenStream(message, kOwnText)).empty());
}

TEST_F(PropertyTest, StreamsWriteWhenTheyAreCommitted) {
    const Ref<IMessage> message = NewMessage();
    const std::pair<ULONG, Bytes> cases[] = {{kOwnText, {'H', 0, 'i', 0}},
                                             {CHANGE_PROP_TYPE(kOwnText, PT_STRING8), BytesOf("Hi")},
                                             {kOwnBinary, {0, 255, 0}}};
    for (const auto& [tag, written] : cases) {
        message->DeleteProps(Tags{tag}, nullptr);
        Ref<IStream> stream;
        EXPECT_EQ(OpenStream(message, tag, 0, stream), MAPI_E_NOT_FOUND);
        EXPECT_EQ(OpenStream(message, tag, MAPI_MODIFY, stream), MAPI_E_NOT_FOUND);
        stream = OpenStream(message, tag, MAPI_CREATE | MAPI_MODIFY);
        WriteAll(stream, written);
        EXPECT_EQ(ReadStatus(message, tag), MAPI_E_NOT_FOUND) << "before Commit";
        ASSERT_EQ(stream->Commit(0), S_OK);
        const Ref<IStream> reader = OpenStream(message, tag);
        EXPECT_EQ(ReadAll(reader), written);
        EXPECT_EQ(reader->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
    }
    EXPECT_EQ(GetText(message, kOwnText), L"Hi");
}

TEST_F(PropertyTest, AStreamIsWrittenInPlaces) {
    const Ref<IMessage> message = NewMessage();
    ASSERT_EQ(Set(message, Binary(kOwnBinary, BytesOf("abcdef"))), S_OK);
    Ref<IStream> stream = OpenStream(message, kOwnBinary, MAPI_MODIFY);
    ULARGE_INTEGER position{};
    ASSERT_EQ(stream->Seek({.QuadPart = -2}, STREAM_SEEK_END, &position), S_OK);
    EXPECT_EQ(position.QuadPart, 4u);
    WriteAll(stream, BytesOf("XYZ"));
    EXPECT_EQ(stream->Seek({.QuadPart = -1}, STREAM_SEEK_SET, nullptr), STG_E_INVALIDFUNCTION);
    ASSERT_EQ(stream->SetSize({.QuadPart = 9}), S_OK);
    STATSTG statistics{};
    ASSERT_EQ(stream->Stat(&statistics, STATFLAG_NONAME), S_OK);
    EXPECT_EQ(statistics.cbSize.QuadPart, 9u);
    ASSERT_EQ(stream->Commit(0), S_OK);
    EXPECT_EQ(GetBinary(message, kOwnBinary), BytesOf(std::string_view("abcdXYZ\0\0", 9)));
    stream = OpenStream(message, kOwnBinary, MAPI_MODIFY | STREAM_APPEND);
    WriteAll(stream, BytesOf("!"));
    message->SaveChanges(KEEP_OPEN_READONLY);
    EXPECT_EQ(stream->Commit(0), E_ACCESSDENIED) << "its message is for reading only by now";
}

TEST_F(PropertyTest, OpenPropertyTellsWhyNot) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IMessage> readOnly = Reopen(message);
    const IID stranger = mapi::MapiIid(0x12345), stream = mapi::kIidStream, table = mapi::kIidTable;
    constexpr ULONG kCreate = MAPI_CREATE | MAPI_MODIFY;
    const struct {
        IMessage* message;
        ULONG tag;
        const IID* iid;
        ULONG flags;
        HRESULT status;
    } cases[] = {
        {message, PROP_TAG(PT_UNSPECIFIED, 0x37), &stream, 0, MAPI_E_INVALID_PARAMETER},
        {message, PROP_TAG(PT_ERROR, 0x37), &stream, 0, MAPI_E_INVALID_PARAMETER},
        {message, PR_SUBJECT_W, nullptr, 0, MAPI_E_INVALID_PARAMETER},
        {message, PR_SUBJECT_W, &stream, MAPI_CREATE, MAPI_E_INVALID_PARAMETER},
        {message, PR_SUBJECT_W, &stream, 0x100, MAPI_E_UNKNOWN_FLAGS},
        {message, PR_SUBJECT_W, &stranger, 0, MAPI_E_INTERFACE_NOT_SUPPORTED},
        {message, PR_MESSAGE_SIZE, &stream, 0, MAPI_E_INTERFACE_NOT_SUPPORTED},
        {message, PR_DISPLAY_TO_W, &stream, MAPI_MODIFY, MAPI_E_COMPUTED},
        {message, PROP_TAG(PT_UNICODE, 0), &stream, kCreate, MAPI_E_INVALID_PARAMETER},
        {message, PROP_TAG(PT_UNICODE, 0xFFFF), &stream, kCreate, MAPI_E_INVALID_PARAMETER},
        {message, PROP_TAG(PT_UNICODE, 0xFFF0), &stream, kCreate, MAPI_E_INVALID_PARAMETER},
        {message, CHANGE_PROP_TYPE(PR_IMPORTANCE, PT_BINARY), &stream, kCreate, MAPI_E_UNEXPECTED_TYPE},
        {message, PR_SUBJECT_W, &table, 0, MAPI_E_INTERFACE_NOT_SUPPORTED},
        {readOnly, PR_SUBJECT_W, &stream, MAPI_MODIFY, E_ACCESSDENIED},
        {readOnly, PR_SUBJECT_W, &stream, 0, S_OK},
        {readOnly, PR_MESSAGE_RECIPIENTS, &table, 0, S_OK},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(&row - cases);
        Ref<IUnknown> opened;
        EXPECT_EQ(row.message->OpenProperty(row.tag, row.iid, 0, row.flags, &opened), row.status);
        EXPECT_EQ(opened != nullptr, SUCCEEDED(row.status));
    }
}

TEST_F(PropertyTest, NothingIsWrittenThroughWhatIsOpenForReading) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IMessage> readOnly = Reopen(message);
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
        message->CopyTo(0, nullptr, nullptr, 0, nullptr, &mapi::kIidMessage, readOnly, 0, nullptr),
    };
    for (const HRESULT& answer : answers)
        EXPECT_EQ(answer, E_ACCESSDENIED) << "row " << &answer - answers;
    EXPECT_EQ(GetLong(readOnly, PR_ACCESS_LEVEL), 0);
}

TEST_F(PropertyTest, SaveChangesDecidesWhatMayComeAfter) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    const Ref<IMessage> other = Reopen(message, MAPI_MODIFY);
    ASSERT_EQ(Set(message, Text(PR_SUBJECT_W, L"Mine")), S_OK);
    EXPECT_EQ(GetText(other, PR_SUBJECT_W), L"Hello");
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(GetText(Reopen(message), PR_SUBJECT_W), L"Mine");

    ASSERT_EQ(Set(other, Text(PR_SUBJECT_W, L"Theirs")), S_OK);
    EXPECT_EQ(other->SaveChanges(KEEP_OPEN_READWRITE), MAPI_E_OBJECT_CHANGED);
    EXPECT_EQ(other->SaveChanges(KEEP_OPEN_READWRITE | FORCE_SAVE), S_OK);
    EXPECT_EQ(GetText(Reopen(message), PR_SUBJECT_W), L"Theirs");

    ASSERT_EQ(other->SaveChanges(KEEP_OPEN_READONLY), S_OK);
    EXPECT_EQ(GetText(other, PR_SUBJECT_W), L"Theirs");
    EXPECT_EQ(Set(other, Text(PR_SUBJECT_W, L"More")), E_ACCESSDENIED);

    ASSERT_EQ(message->SaveChanges(FORCE_SAVE), S_OK);
    EXPECT_EQ(ReadStatus(message, PR_SUBJECT_W), MAPI_E_INVALID_OBJECT);
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
    EXPECT_EQ(GetText(message, PR_SUBJECT_W), L"Hello");
    EXPECT_EQ(Set(message, Text(PR_SUBJECT_W, L"Changed")), MAPI_E_OBJECT_DELETED);
    EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), MAPI_E_OBJECT_DELETED);
}

} // namespace
} // namespace mapi_tests
