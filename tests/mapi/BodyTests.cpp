// The forms of a message's body, and compressed RTF.
#include "standin/mailbox/Tags.h"
#include "standin/mapi/Bodies.h"
#include "standin/mapi/RtfCompression.h"
#include "tests/mapi/Client.h"

using namespace standin;

namespace mapi_tests {
namespace {

using mailbox::kPrHtml;

// What mapiutil.h calls RTF_SYNC_RTF_CHANGED and RTF_SYNC_BODY_CHANGED.
constexpr ULONG kRtfChanged = 1;
constexpr ULONG kBodyChanged = 2;

class BodyTest : public MapiTest {
protected:
    static Bytes Stored(IMessage* message, ULONG tag) { return ReadAll(OpenStream(message, tag)); }
    static std::string Rtf(IMessage* message) {
        Ref<IStream> stream;
        EXPECT_EQ(WrapCompressedRTFStream(OpenStream(message, PR_RTF_COMPRESSED), 0, &stream), S_OK);
        const Bytes bytes = ReadAll(stream);
        return {bytes.begin(), bytes.end()};
    }
    static void WriteRtf(IMessage* message, std::string_view rtf, ULONG flags = MAPI_MODIFY) {
        const auto compressed = OpenStream(message, PR_RTF_COMPRESSED, MAPI_CREATE | MAPI_MODIFY);
        Ref<IStream> stream;
        ASSERT_EQ(WrapCompressedRTFStream(compressed, flags, &stream), S_OK);
        WriteAll(stream, BytesOf(rtf));
        ASSERT_EQ(stream->Commit(0), S_OK);
        ASSERT_EQ(compressed->Commit(0), S_OK);
    }
    static LONG Native(IMessage* message) { return GetLong(message, mapi::kPrNativeBodyInfo); }
};

TEST_F(BodyTest, AMessageWithoutABodyHasNone) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    for (const ULONG tag : {PR_BODY_W, PR_BODY_A, ULONG{kPrHtml}, PR_RTF_COMPRESSED, PR_RTF_IN_SYNC})
        EXPECT_EQ(ReadStatus(message, tag), MAPI_E_NOT_FOUND) << std::hex << tag;
    EXPECT_EQ(Native(message), 0);
}

TEST_F(BodyTest, WhicheverFormIsWrittenTheOthersFollow) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    ASSERT_EQ(Set(message, Text(PR_BODY_W, L"a < \u00E9\r\nb")), S_OK);
    EXPECT_EQ(Native(message), 1);
    EXPECT_NE(Rtf(message).find("a < "), std::string::npos);
    const Bytes html = Stored(message, kPrHtml);
    EXPECT_NE(std::string(html.begin(), html.end()).find("a &lt; &#233;"), std::string::npos);

    const Bytes page =
        BytesOf("<html><head><title>T</title><body><p>one &amp; two</p>three<br>four & 5</body>"
                "<style>six");
    ASSERT_EQ(Set(message, Binary(kPrHtml, page)), S_OK);
    EXPECT_EQ(Native(message), 3);
    EXPECT_EQ(GetBinary(message, kPrHtml), page);
    EXPECT_EQ(GetText(message, PR_BODY_W), L"one & two\r\nthree\r\nfour & 5");
    const std::string rtf = Rtf(message);
    EXPECT_NE(rtf.find("\\fromhtml1"), std::string::npos);
    WriteRtf(message, rtf);
    EXPECT_EQ(Stored(message, kPrHtml), page) << "it is in the RTF whole";

    WriteRtf(message, "{\\rtf1\\ansi bold \\b text\\b0\\par next}");
    EXPECT_EQ(Native(message), 2);
    EXPECT_TRUE(GetText(message, PR_BODY_W).starts_with(L"bold text\r\nnext"));
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    EXPECT_EQ(Rtf(Reopen(message)), "{\\rtf1\\ansi bold \\b text\\b0\\par next}");
    ASSERT_EQ(message->DeleteProps(Tags{PR_RTF_COMPRESSED}, nullptr), S_OK);
    EXPECT_EQ(Problem(message, Long(mapi::kPrNativeBodyInfo, 1)), MAPI_E_COMPUTED);
}

TEST_F(BodyTest, WhicheverFormIsDeletedTheBodyIsGone) {
    for (const ULONG tag : {PR_BODY_W, ULONG{kPrHtml}, PR_RTF_COMPRESSED}) {
        const Ref<IMessage> message = NewMessage(L"Hello");
        ASSERT_EQ(Set(message, Text(PR_BODY_W, L"text")), S_OK);
        Block<SPropProblemArray> problems;
        ASSERT_EQ(message->DeleteProps(Tags{tag}, &problems), S_OK);
        EXPECT_FALSE(problems);
        for (const ULONG form : {PR_BODY_W, ULONG{kPrHtml}, PR_RTF_COMPRESSED})
            EXPECT_EQ(ReadStatus(message, form), MAPI_E_NOT_FOUND) << std::hex << tag << ' ' << form;
        EXPECT_EQ(Native(message), 0);
    }
}

TEST_F(BodyTest, RtfSyncMakesTheFormThatChangedTheOneThatCounts) {
    const auto open = MakeMessage();
    const std::string rtf = "{\\rtf1 from rtf}";
    open->Write(PR_BODY_W, std::wstring(L"from text"));
    open->Write(PR_RTF_COMPRESSED, mapi::CompressRtf(BytesOf(rtf)));
    open->Write(kPrHtml, BytesOf("from html"));
    const Ref<IMessage> message(mapi::MakeMessage(open));
    BOOL updated = FALSE;
    EXPECT_EQ(RTFSync(message, 4, &updated), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(RTFSync(nullptr, kRtfChanged, &updated), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(Native(message), 3);
    ASSERT_EQ(RTFSync(message, kRtfChanged, &updated), S_OK);
    EXPECT_TRUE(updated);
    EXPECT_TRUE(GetText(message, PR_BODY_W).starts_with(L"from rtf"));
    ASSERT_EQ(RTFSync(message, kBodyChanged, &updated), S_OK);
    EXPECT_FALSE(updated) << "there is no text of its own any more";
}

TEST_F(BodyTest, CompressedRtfIsReadAndWritten) {
    // The examples of [MS-OXRTFCP] 4.1 and 4.2: one with a reference that crosses the end of the dictionary.
    const Bytes simple{0x2D, 0x00, 0x00, 0x00, 0x2B, 0x00, 0x00, 0x00, 0x4C, 0x5A, 0x46, 0x75, 0xF1,
                       0xC5, 0xC7, 0xA7, 0x03, 0x00, 0x0A, 0x00, 0x72, 0x63, 0x70, 0x67, 0x31, 0x32,
                       0x35, 0x42, 0x32, 0x0A, 0xF3, 0x20, 0x68, 0x65, 0x6C, 0x09, 0x00, 0x20, 0x62,
                       0x77, 0x05, 0xB0, 0x6C, 0x64, 0x7D, 0x0A, 0x80, 0x0F, 0xA0};
    const Bytes crossing{0x1A, 0x00, 0x00, 0x00, 0x1C, 0x00, 0x00, 0x00, 0x4C, 0x5A,
                         0x46, 0x75, 0xE2, 0xD4, 0x4B, 0x51, 0x41, 0x00, 0x04, 0x20,
                         0x57, 0x58, 0x59, 0x5A, 0x0D, 0x6E, 0x7D, 0x01, 0x0E, 0xB0};
    Bytes rtf;
    ASSERT_EQ(mapi::DecompressRtf(simple, rtf), S_OK);
    EXPECT_EQ(rtf, BytesOf("{\\rtf1\\ansi\\ansicpg1252\\pard hello world}\r\n"));
    EXPECT_LE(mapi::CompressRtf(rtf).size(), simple.size());
    ASSERT_EQ(mapi::DecompressRtf(crossing, rtf), S_OK);
    EXPECT_EQ(rtf, BytesOf("{\\rtf1 WXYZWXYZWXYZWXYZWXYZ}"));
    Bytes damaged = simple;
    damaged[20] ^= 1;
    EXPECT_EQ(mapi::DecompressRtf(damaged, rtf), MAPI_E_CORRUPT_DATA);
    EXPECT_EQ(mapi::DecompressRtf(Bytes(simple.begin(), simple.begin() + 30), rtf), MAPI_E_CORRUPT_DATA);
    std::string big = "{\\rtf1 ";
    for (int i = 0; i < 20000; ++i)
        big += std::to_string(i * 7919 % 1000);
    ASSERT_EQ(mapi::DecompressRtf(mapi::CompressRtf(BytesOf(big)), rtf), S_OK);
    EXPECT_EQ(rtf, BytesOf(big));
}

TEST_F(BodyTest, AWrappedStreamGoesOneWay) {
    const Ref<IMessage> message = NewMessage(L"Hello");
    WriteRtf(message, "{\\rtf1 plain}", MAPI_MODIFY | STORE_UNCOMPRESSED_RTF);
    EXPECT_NE(Stored(message, PR_RTF_COMPRESSED), mapi::CompressRtf(BytesOf("{\\rtf1 plain}")));
    EXPECT_EQ(Rtf(message), "{\\rtf1 plain}");
    Ref<IStream> stream;
    ASSERT_EQ(WrapCompressedRTFStream(OpenStream(message, PR_RTF_COMPRESSED), 0, &stream), S_OK);
    STATSTG statistics{};
    EXPECT_EQ(stream->Stat(&statistics, STATFLAG_NONAME), E_NOTIMPL);
    EXPECT_EQ(stream->Seek({}, STREAM_SEEK_SET, nullptr), E_NOTIMPL);
    EXPECT_EQ(stream->SetSize({}), E_NOTIMPL);
    EXPECT_EQ(stream->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
    EXPECT_EQ(WrapCompressedRTFStream(OpenStream(message, PR_RTF_COMPRESSED), 4, &stream),
              MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(WrapCompressedRTFStream(nullptr, 0, &stream), MAPI_E_INVALID_PARAMETER);
    ASSERT_EQ(Set(message, Binary(PR_RTF_COMPRESSED, BytesOf("no RTF"))), S_OK);
    EXPECT_EQ(WrapCompressedRTFStream(OpenStream(message, PR_RTF_COMPRESSED), 0, &stream),
              MAPI_E_CORRUPT_DATA);
}

} // namespace
} // namespace mapi_tests
