// The language of Items.Restrict and Items.Find.
#include "Client.h"

#include "standin/mailbox/Tags.h"

namespace outlook_tests {
namespace {

namespace mailbox = standin::mailbox;

/// A folder of five messages, told apart by their subjects.
class FilterTest : public OutlookTest {
protected:
    struct Sample {
        const wchar_t* subject;
        std::vector<std::wstring> keywords;
        std::int32_t importance;
        bool unread;
        const wchar_t* modified; ///< local time
        const wchar_t* colour;   ///< of a field that users defined
    };

    FilterTest() : m_folder(*World().DefaultStore()->SpecialFolder(kInbox)) {
        EXPECT_EQ(m_folder.SetUserFields({{L"Paint Colour", 1}, {L"Amount", 3}}), S_OK);
        const Sample samples[] = {
            {L"Alpha", {}, 1, true, L"2025-01-31 15:30:00", L"red"},
            {L"beta", {L"Green"}, 0, false, L"2025-01-31 15:30:45", L"blue"},
            {L"It's", {L"Green", L"Blue"}, 2, true, L"2025-01-31 15:31:00", nullptr},
            {L"Say \"hi\"", {L"Blue"}, 1, false, L"2025-02-01 00:00:00", L"Red"},
            {L"", {}, 1, false, L"2024-12-24 18:00:00", nullptr},
        };
        for (const Sample& sample : samples)
            Add(sample);
    }

    /// The subjects that fit, a bar behind each; or Outlook's words of refusal.
    std::wstring Find(const std::wstring& filter) {
        const Answer answer = Items(kInbox).TryCall(L"Restrict", {filter});
        if (answer.status == DISP_E_EXCEPTION)
            return answer.description;
        std::wstring found;
        const Object items(answer.value);
        for (Object item = items.Child(L"GetFirst"); item; item = items.Child(L"GetNext"))
            found += item.Text(L"Subject") + L"|";
        return found;
    }

private:
    void Add(const Sample& sample) {
        mailbox::Content content;
        mailbox::PropertyBag& bag = content.properties;
        bag.Set<PR_SUBJECT_W>(sample.subject);
        bag.Set<PR_IMPORTANCE>(sample.importance);
        bag.Set<PR_MESSAGE_FLAGS>(sample.unread ? 0 : MSGFLAG_READ);
        bag.Set<PR_LAST_MODIFICATION_TIME>(UtcOf(sample.modified));
        if (!sample.keywords.empty())
            bag.Put(NamedTag(L"Keywords", PT_MV_UNICODE), sample.keywords);
        if (sample.colour)
            bag.Put(NamedTag(L"Paint Colour", PT_UNICODE), std::wstring(sample.colour));
        std::shared_ptr<mailbox::Message> message;
        EXPECT_EQ(m_folder.Receive(std::move(content), false, message), S_OK);
    }

    mailbox::PropertyTag NamedTag(const wchar_t* name, mailbox::PropertyType type) {
        return mailbox::MakeTag(m_folder.Names().Id({mailbox::kPsPublicStrings, std::wstring(name)}, true),
                                type);
    }

    static mailbox::SysTime UtcOf(const wchar_t* text) {
        SYSTEMTIME local{}, utc{};
        swscanf(text, L"%hu-%hu-%hu %hu:%hu:%hu", &local.wYear, &local.wMonth, &local.wDay, &local.wHour,
                &local.wMinute, &local.wSecond);
        FILETIME time{};
        TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc);
        SystemTimeToFileTime(&utc, &time);
        return {std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime};
    }

    mailbox::Folder& m_folder;
};

constexpr const wchar_t* kAll = L"Alpha|beta|It's|Say \"hi\"||";
constexpr const wchar_t* kInvalid = L"Condition is not valid.";

TEST_F(FilterTest, FindsWhatOutlookFinds) {
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        // Text: without case, in either quote, doubled within.
        {L"[Subject] = 'alpha'", L"Alpha|"},
        {L"[Subject]=\"BETA\"", L"beta|"},
        {L"Subject = 'Alpha'", L"Alpha|"},
        {L"[subject] <> 'beta'", L"Alpha|It's|Say \"hi\"||"},
        {L"[Subject] = 'It''s'", L"It's|"},
        {L"[Subject] = \"It's\"", L"It's|"},
        {L"[Subject] = \"Say \"\"hi\"\"\"", L"Say \"hi\"|"},
        {L"[Subject] = ''", L"|"},
        {L"[Subject] >= 'b' And [Subject] < 'j'", L"beta|It's|"},
        // Numbers, with and without quotes.
        {L"[Importance] = 2", L"It's|"},
        {L"[Importance] <= '1'", L"Alpha|beta|Say \"hi\"||"},
        {L"[Importance] > 0.5 And [Importance] < 1.5", L"Alpha|Say \"hi\"||"},
        {L"[Importance] > -1", kAll},
        // Truth, without quotes; within quotes every text is true but the empty one.
        {L"[UnRead] = True", L"Alpha|It's|"},
        {L"[unread] = no", L"beta|Say \"hi\"||"},
        {L"[UnRead] <> Off", L"Alpha|It's|"},
        {L"[UnRead] = 'False'", L"Alpha|It's|"},
        {L"[UnRead] = ''", L"beta|Say \"hi\"||"},
        // Dates, by the minute.
        {L"[LastModificationTime] = '1/31/2025 3:30 PM'", L"Alpha|beta|"},
        {L"[LastModificationTime] > '1/31/2025 3:30 PM'", L"It's|Say \"hi\"|"},
        {L"[LastModificationTime] < \"1/1/2025\"", L"|"},
        {L"[LastModificationTime] >= '2/1/2025'", L"Say \"hi\"|"},
        {L"[LastModificationTime] = ''", L""},
        {L"[LastModificationTime] < '1/1/4501'", kAll},
        // A time with seconds compares with nothing, but in DASL.
        {L"[LastModificationTime] > '1/31/2025 3:30:00 PM'", L""},
        {L"[LastModificationTime] <= '1/31/2025 3:30:45 PM'", L""},
        {L"[LastModificationTime] <> '1/31/2025 15:30:45'", L""},
        {L"@SQL=\"DAV:getlastmodified\" > '1/31/2025 3:30:00 PM'", L"It's|Say \"hi\"|"},
        {L"@SQL=\"DAV:getlastmodified\" = '1/31/2025 3:30:45 PM'", L"Alpha|beta|"},
        // Keywords: one of them.
        {L"[Categories] = 'blue'", L"It's|Say \"hi\"|"},
        {L"[Categories] <> 'Blue'", L"Alpha|beta||"},
        {L"[Categories] = 'Green, Blue'", L""},
        {L"[Categories] = ''", L"Alpha||"},
        // Fields of users, and names with blanks.
        {L"[Paint Colour] = 'RED'", L"Alpha|Say \"hi\"|"},
        {L"[Paint Colour] = ''", L"It's||"},
        {L"[Amount] = 0", kAll},
        {L"[Last Modification Time] < '1/1/2025'", L"|"},
        // And binds tighter than Or, and Not tighter than both.
        {L"[Importance] = 0 Or [Importance] = 1 And [UnRead] = True", L"Alpha|beta|"},
        {L"([Importance] = 0 Or [Importance] = 1) And [UnRead] = True", L"Alpha|"},
        {L"Not [UnRead] = True And [Importance] = 1", L"Say \"hi\"||"},
        {L"NOT ([UnRead] = True AND [Importance] = 1)", L"beta|It's|Say \"hi\"||"},
        {L"not not [Subject] = 'beta'", L"beta|"},
        {L"  ( ( [Subject]\t= 'beta' ) ) ", L"beta|"},
    };
    for (const auto& [filter, found] : rows)
        EXPECT_EQ(Find(filter), found) << filter;
}

TEST_F(FilterTest, RefusesWhatIsNoCondition) {
    const std::pair<const char*, std::vector<const wchar_t*>> rows[] = {
        {"half of one", {L"", L"[Subject]", L"[Subject] =", L"[Subject] 'x'", L"Not", L"()"}},
        {"the wrong way round", {L"= 'x'", L"'x' = [Subject]", L"@SQL"}},
        {"no operator", {L"[Subject] == 'x'", L"[Subject] != 'x'", L"[Subject] Like 'x'"}},
        {"no text", {L"[Subject] = x", L"[Subject] = 5", L"[Subject] = True", L"[Subject] = [Body]"}},
        {"no end", {L"[Subject] = 'x", L"[Subject] = 'x''", L"[Subject = 'x'", L"([Subject] = 'x'"}},
        {"too much", {L"[Subject] = 'x')", L"[Subject] = 'x' And", L"[Subject] = 'x'; [Subject] = 'y'"}},
        {"nothing between", {L"[Subject] = 'x' [Subject] = 'y'", L"[Subject] = 'x' Xor [Subject] = 'y'"}},
        {"no field", {L"[] = 'x'", L"[Colour] = 'x'", L"[Save] = 'x'", L"[Parent] = 'x'"}},
        {"no field to ask for",
         {L"[Body] = 'x'", L"[EntryID] = 'x'", L"[ConversationIndex] = 'x'", L"[Class] = 43",
          L"[Saved] = True", L"[Companies] = 'x'"}},
        {"no number", {L"[Importance] = 'high'", L"[Importance] = -", L"[Importance] = 1.2.3"}},
        {"no truth", {L"[UnRead] = 1", L"[UnRead] = Maybe", L"[UnRead] > False"}},
        {"no order among keywords", {L"[Categories] > 'x'"}},
        {"no date",
         {L"[LastModificationTime] > 'yesterday'", L"[LastModificationTime] > 45000",
          L"[LastModificationTime] > 1/31/2025"}},
    };
    for (const auto& [why, filters] : rows)
        for (const wchar_t* filter : filters)
            EXPECT_EQ(Find(filter), kInvalid) << why << ": " << filter;
    EXPECT_EQ(Find(std::wstring(100000, L'(')), kInvalid);
    EXPECT_EQ(Items(kInbox).TryCall(L"Find", {L"[Subject]"}).description, kInvalid);
}

TEST_F(FilterTest, DaslIsUnderstoodInItsPlainForms) {
    const std::wstring field =
        L"@SQL=\"http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/";
    const std::pair<std::wstring, const wchar_t*> rows[] = {
        {L"@SQL=\"urn:schemas:httpmail:subject\" = 'alpha'", L"Alpha|"},
        {L"@sql=\"urn:schemas:httpmail:subject\" Like '%A'", L"Alpha|beta|"},
        {L"@SQL=\"urn:schemas:httpmail:subject\" LIKE 'al%'", L"Alpha|"},
        {L"@SQL=\"urn:schemas:httpmail:subject\" LIKE '%et%' Or \"urn:schemas:httpmail:importance\" > 1",
         L"beta|It's|"},
        {L"@SQL=\"urn:schemas:httpmail:subject\" LIKE 'al'", L""},
        {L"@SQL=\"urn:schemas:httpmail:subject\" ci_startswith 'SAY'", L"Say \"hi\"|"},
        {L"@SQL=\"urn:schemas:httpmail:subject\" ci_phrasematch 'hi'", L"Say \"hi\"|"},
        {L"@SQL=\"http://schemas.microsoft.com/mapi/proptag/0x0037001f\" = 'beta'", L"beta|"},
        {L"@SQL=NOT(\"http://schemas.microsoft.com/mapi/proptag/0x00170003\" <> 0)", L"beta|"},
        {field + L"Paint Colour\" = 'red'", L"Alpha|Say \"hi\"|"},
        {field + L"Paint Colour\" IS NULL", L"It's||"},
        {field + L"Keywords/0x0000101F\" is not null", L"beta|It's|Say \"hi\"|"},
        {L"@SQL=", kInvalid},
        {L"@SQL=[Subject] = 'x'", kInvalid},
        {L"@SQL='urn:schemas:httpmail:subject' = 'x'", kInvalid},
        {L"@SQL=\"urn:schemas:httpmail:subject\" = \"x\"", kInvalid},
        {L"@SQL=\"urn:schemas:httpmail:subject\" LIKE '%a%b%'", kInvalid},
        {L"@SQL=\"urn:schemas:httpmail:nothing\" = 'x'", kInvalid},
        {L"@SQL=\"http://schemas.microsoft.com/mapi/proptag/0x0037\" = 'x'", kInvalid},
        {L"@SQL=\"urn:schemas:httpmail:importance\" LIKE '1'", kInvalid},
    };
    for (const auto& [filter, found] : rows)
        EXPECT_EQ(Find(filter), found) << filter;
}

} // namespace
} // namespace outlook_tests
