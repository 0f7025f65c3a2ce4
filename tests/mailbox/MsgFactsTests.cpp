// What an independent reader found in MSG files of real mail clients, our reader finds too; and what our
// writer makes of them says the same.
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/Tags.h"
#include "tests/mailbox/Json.h"
#include "tests/mailbox/Support.h"

#include <cwchar>
#include <sstream>

namespace standin::mailbox::test {
namespace {

std::vector<Json> Facts(const std::filesystem::path& folder) {
    const Bytes file = ReadFile(folder / "facts.jsonl");
    std::wistringstream lines(Widen({reinterpret_cast<const char*>(file.data()), file.size()}, CP_UTF8));
    std::vector<Json> facts;
    for (std::wstring line; std::getline(lines, line);)
        facts.push_back(ParseJson(line));
    return facts;
}

/// The date as the facts have it: "Mon, 11 Jan 2010 16:25:11 GMT".
std::wstring DateText(SysTime time) {
    const FILETIME file{static_cast<DWORD>(time.ticks), static_cast<DWORD>(time.ticks >> 32)};
    SYSTEMTIME date{};
    FileTimeToSystemTime(&file, &date);
    wchar_t day[32];
    wchar_t hour[32];
    GetDateFormatW(0x0409, 0, &date, L"ddd, dd MMM yyyy ", day, static_cast<int>(std::size(day)));
    GetTimeFormatW(0x0409, 0, &date, L"HH:mm:ss 'GMT'", hour, static_cast<int>(std::size(hour)));
    return std::wstring(day) + hour;
}

void ExpectText(const Json& facts, const wchar_t* fact, const std::optional<std::wstring>& found) {
    if (!facts.Has(fact))
        return;
    EXPECT_EQ(Utf8(found.value_or(L"(none)")), Utf8(facts.Text(fact))) << Utf8(fact);
}

template <PropertyTag tag>
std::optional<std::wstring> TextIn(const PropertyBag& bag) {
    const auto* value = bag.Get<tag>();
    if (!value)
        return std::nullopt;
    if constexpr (PROP_TYPE(tag) == PT_SYSTIME)
        return DateText(*value);
    else
        return *value;
}

/// Text of a field that contacts and appointments have under a name of the given set.
std::optional<std::wstring> NamedText(const Content& content, const NamedProperties& names,
                                      std::uint32_t id) {
    constexpr GUID kAddress{0x00062004, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    constexpr GUID kAppointment{0x00062002, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    for (const GUID& set : {kAddress, kAppointment})
        if (const PropertyId found = names.Id({set, id}))
            if (const Value* value = content.properties.Find(MakeTag(found, 0)))
                if (const auto* text = std::get_if<std::wstring>(value))
                    return *text;
    return std::nullopt;
}

void ExpectRecipients(const Json& facts, const Content& content) {
    ASSERT_EQ(content.recipients.size(), facts.Items(L"recipients").size());
    for (std::size_t i = 0; i < content.recipients.size(); ++i) {
        const Json& fact = facts.Items(L"recipients")[i];
        const PropertyBag& row = content.recipients[i];
        ExpectText(fact, L"name", TextIn<PR_DISPLAY_NAME_W>(row));
        ExpectText(fact, L"email", TextIn<PR_EMAIL_ADDRESS_W>(row));
        ExpectText(fact, L"smtp", TextIn<kPrSmtpAddress>(row));
        EXPECT_EQ(row.GetOr<PR_RECIPIENT_TYPE>(0),
                  static_cast<std::int32_t>(fact.Text(L"type") == L"cc" ? MAPI_CC : MAPI_TO));
    }
}

void ExpectAttachments(const Json& facts, const Content& content) {
    ASSERT_EQ(content.attachments.size(), facts.Items(L"attachments").size());
    for (std::size_t i = 0; i < content.attachments.size(); ++i) {
        const Json& fact = facts.Items(L"attachments")[i];
        const Attachment& attachment = *content.attachments[i];
        ExpectText(fact, L"fileName", TextIn<PR_ATTACH_LONG_FILENAME_W>(attachment.properties));
        ExpectText(fact, L"name", TextIn<PR_DISPLAY_NAME_W>(attachment.properties));
        EXPECT_EQ(attachment.embedded != nullptr, fact.Text(L"embeddedMessage") == L"true");
        const std::size_t size = attachment.properties.GetOr<PR_ATTACH_DATA_BIN>({}).size();
        EXPECT_EQ(size, fact.Has(L"bytes") ? std::stoul(fact.Text(L"bytes")) : 0);
    }
}

void ExpectFacts(const Json& facts, const Content& content, const NamedProperties& names) {
    const PropertyBag& properties = content.properties;
    const std::wstring body = properties.GetOr<PR_BODY_W>({});
    ExpectText(facts, L"messageClass", TextIn<PR_MESSAGE_CLASS_W>(properties));
    EXPECT_EQ(Utf8(properties.GetOr<PR_SUBJECT_W>({})), Utf8(facts.Text(L"subject")));
    ExpectText(facts, L"senderName", TextIn<PR_SENDER_NAME_W>(properties));
    ExpectText(facts, L"senderEmail", TextIn<PR_SENDER_EMAIL_ADDRESS_W>(properties));
    EXPECT_EQ(body.size(), std::stoul(facts.Text(L"bodyLength")));
    EXPECT_EQ(Utf8(body.substr(0, 60)), Utf8(facts.Text(L"bodyStart")));
    ExpectText(facts, L"received", TextIn<PR_MESSAGE_DELIVERY_TIME>(properties));
    ExpectText(facts, L"submitted", TextIn<PR_CLIENT_SUBMIT_TIME>(properties));
    ExpectText(facts, L"created", TextIn<PR_CREATION_TIME>(properties));
    ExpectText(facts, L"modified", TextIn<PR_LAST_MODIFICATION_TIME>(properties));
    ExpectText(facts, L"givenName", TextIn<PR_GIVEN_NAME_W>(properties));
    ExpectText(facts, L"surname", TextIn<PR_SURNAME_W>(properties));
    ExpectText(facts, L"company", TextIn<PR_COMPANY_NAME_W>(properties));
    ExpectText(facts, L"businessPhone", TextIn<PR_BUSINESS_TELEPHONE_NUMBER_W>(properties));
    ExpectText(facts, L"emailAddress1", NamedText(content, names, 0x8083));
    ExpectText(facts, L"location", NamedText(content, names, 0x8208));
    ExpectRecipients(facts, content);
    ExpectAttachments(facts, content);
}

TEST(MsgFiles, HoldWhatAnIndependentReaderFindsAndComeBackFromOurWriterAsTheyWere) {
    const std::filesystem::path folder = MsgFolder();
    if (folder.empty())
        GTEST_SKIP();
    for (const Json& facts : Facts(folder)) {
        const std::wstring& file = facts.Text(L"file");
        if (file.starts_with(L"damaged"))
            continue;
        SCOPED_TRACE(Utf8(file));
        NamedProperties names;
        Content content, again;
        Bytes written;
        ASSERT_EQ(ReadMsgBytes(ReadFile(folder / file), names, content), S_OK);
        ExpectFacts(facts, content, names);
        ASSERT_EQ(WriteMsgBytes(content, names, written), S_OK);
        ASSERT_EQ(ReadMsgBytes(written, names, again), S_OK);
        EXPECT_TRUE(SameContent(content, again));
        // For a store whose names have other ids, too.
        NamedProperties otherNames;
        otherNames.Id({GUID{1, 2, 3, {}}, L"in the way"}, true);
        ASSERT_EQ(ReadMsgBytes(written, otherNames, again), S_OK);
        EXPECT_TRUE(SameContent(content, RemapContent(again, otherNames, names)));
        ExpectFacts(facts, again, otherNames);
    }
}

} // namespace
} // namespace standin::mailbox::test
