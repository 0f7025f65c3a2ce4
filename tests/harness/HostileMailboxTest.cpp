// Messages whose properties are not what they should be: every field of every kind still answers, and nothing
// is left alive.
#include "ScriptedUses.h"

#include <array>

namespace varden::tests {
namespace {

using namespace standin::mailbox;

using Damage = standin::mailbox::Value;

const std::vector<Damage>& Damages() {
    static const std::vector<Damage> damages{
        Damage(Null{}),
        Damage(std::int16_t{-1}),
        Damage(std::int32_t{std::numeric_limits<std::int32_t>::min()}),
        Damage(true),
        Damage(1e308),
        Damage(ErrorValue{E_FAIL}),
        Damage(ObjectMark{}),
        Damage(std::int64_t{-1}),
        Damage(std::string("narrow")),
        Damage(std::string()),
        Damage(std::wstring()),
        Damage(std::wstring(1 << 20, L'h')),
        Damage(std::wstring(L"nul\0inside", 10)),
        Damage(SysTime{0xFFFFFFFFFFFFFFFF}),
        Damage(SysTime{0}),
        Damage(Bytes{}),
        Damage(Bytes(3, 0xFF)),
        Damage(Bytes(1 << 20, 0x41)),
        Damage(std::vector<std::wstring>{}),
        Damage(std::vector<std::wstring>{L"", L"", L" b "}),
        Damage(std::vector<std::string>{"", "x"}),
        Damage(std::vector<Bytes>{{}, {1}}),
        Damage(std::vector<std::int32_t>{1, 2}),
        Damage(NullPointer{PT_UNICODE, 0}),
        Damage(NullPointer{PT_BINARY, 100}),
        Damage(NullPointer{PT_STRING8, 0}),
        Damage(NullPointer{PT_MV_UNICODE, 3}),
        Damage(NullPointer{PT_MV_BINARY, 3}),
        Damage(NullPointer{PT_CLSID, 0}),
    };
    return damages;
}

/// The properties that fields read, by their ids.
constexpr std::array kTags{
    PR_SUBJECT_W,
    PR_BODY_W,
    PR_SENDER_ENTRYID,
    PR_SENDER_NAME_W,
    PR_MESSAGE_DELIVERY_TIME,
    PR_CLIENT_SUBMIT_TIME,
    PR_IMPORTANCE,
    PR_SENSITIVITY,
    PR_RTF_COMPRESSED,
    0x10130102ul,
    0x10900003ul,
    0x10950003ul,
    PR_TRANSPORT_MESSAGE_HEADERS_W,
    PR_RECEIVED_BY_ENTRYID,
    PR_SENT_REPRESENTING_NAME_W,
    PR_SENDER_ADDRTYPE_W,
    PR_CONVERSATION_INDEX,
    PR_CONVERSATION_TOPIC_W,
    PR_REPLY_TIME,
    PR_EXPIRY_TIME,
};

/// Named properties that fields read.
struct Named {
    GUID set;
    std::uint32_t id;
};
constexpr GUID SetOf(unsigned long first) {
    return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}
const std::array kNames{
    Named{SetOf(0x00062008), 0x853A}, Named{SetOf(0x00062008), 0x8502}, Named{SetOf(0x00062008), 0x8503},
    Named{SetOf(0x00062002), 0x8214}, Named{SetOf(0x00062002), 0x820D}, Named{SetOf(0x00062002), 0x820E},
    Named{SetOf(0x00062002), 0x8216}, Named{SetOf(0x00062002), 0x8208}, Named{SetOf(0x00062003), 0x8116},
    Named{SetOf(0x00062003), 0x8104}, Named{SetOf(0x00062003), 0x811F}, Named{SetOf(0x00062003), 0x8109},
    Named{SetOf(0x00062004), 0x8083}, Named{SetOf(0x00062004), 0x8055}, Named{SetOf(0x00062004), 0x8054},
    Named{SetOf(0x0006200A), 0x8706}, Named{SetOf(0x0006200A), 0x8700}, Named{SetOf(0x0006200E), 0x8B00},
};

const std::vector<const wchar_t*> kFields{
    L"Subject",
    L"Body",
    L"From",
    L"To",
    L"Cc",
    L"Contacts",
    L"Creator Name",
    L"Sent On",
    L"Received Time",
    L"Modify",
    L"Created",
    L"Flag Due By",
    L"Reminder Time",
    L"Header",
    L"Received By Entry Name",
    L"Received By EntryID",
    L"Sender Email Address",
    L"Sender Email Type",
    L"Sent On Behalf Of",
    L"Importance",
    L"Sensitivity",
    L"Flag Icon",
    L"Flag Status",
    L"Expires",
    L"HTML Body",
    L"RTF Body",
    L"Conversation Index",
    L"Categories",
    L"Body Format",
    L"Label",
    L"Start",
    L"End",
    L"Location",
    L"BinaryRecurrence",
    L"Required Attendees",
    L"Start Date",
    L"Owner",
    L"task dead occur",
    L"E-mail",
    L"Birthday",
    L"One Off Members",
    L"Member Count",
    L"Color",
    L"Type",
    L"Duration",
    L"Task Subject",
    L"Task Due Date",
    L"Size",
    L"ID",
};

class HostileMailboxTest : public testing::TestWithParam<const wchar_t*> {
protected:
    void SetUp() override { ASSERT_EQ(m_plugin.Call(L"VARD_Authenticate", {L"Outlook"}), L"0"); }
    void TearDown() override {
        m_plugin.End();
        RecordProperty("inputs", std::to_string(m_inputs));
    }

    Folder& Inbox() { return FolderAt(m_plugin.World(), L"Front Desk", L"Inbox"); }

    /// Puts the value under the tags of an otherwise ordinary message, and reads every field.
    void ReadAll(const std::vector<PropertyTag>& tags, const Damage& damage) {
        Content content;
        content.properties.Set<PR_MESSAGE_CLASS_W>(GetParam());
        content.properties.Set<PR_SUBJECT_W>(L"Damaged");
        for (const PropertyTag tag : tags) {
            content.properties.Put(tag, damage);
        }
        std::shared_ptr<Message> message;
        ASSERT_EQ(Inbox().Receive(std::move(content), false, message), S_OK);
        m_plugin.Call(L"VARD_OpenRecord", {ToHex(message->EntryId())});
        for (const wchar_t* field : kFields) {
            m_plugin.Call(L"VARD_GetFieldData", {field});
        }
        m_plugin.Call(L"VARD_GetCustomFieldData", {L"Anything"});
        m_plugin.Call(L"VARD_RPOpenRecurrencePattern");
        m_plugin.Call(L"VARD_GetFieldData", {L"Interval"});
        ASSERT_EQ(Inbox().RemoveMessage(*message), S_OK);
        m_inputs += static_cast<int>(tags.size());
    }

private:
    standin::outlook::Registration m_registration;
    Plugin m_plugin{kFullPlugin};
    int m_inputs = 0;
};

TEST_P(HostileMailboxTest, IsReadToTheEnd) {
    std::vector<PropertyTag> named;
    for (const Named& name : kNames) {
        named.push_back(MakeTag(Inbox().Names().Id({name.set, name.id}, true), PT_UNSPECIFIED));
    }
    for (const Damage& damage : Damages()) {
        ReadAll({kTags.begin(), kTags.end()}, damage);
        ReadAll(named, damage);
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, HostileMailboxTest,
                         testing::Values(L"IPM.Note", L"IPM.Appointment", L"IPM.Contact", L"IPM.Task",
                                         L"IPM.DistList", L"IPM.Activity", L"IPM.StickyNote", L"IPM.Post",
                                         L"IPM.Schedule.Meeting.Request", L"REPORT.IPM.Note.NDR",
                                         L"IPM.TaskRequest", L"IPM.Sharing", L"IPM.Document.x"),
                         [](const auto& info) {
                             std::string name;
                             for (const wchar_t c : std::wstring(info.param)) {
                                 name += c == L'.' ? '_' : static_cast<char>(c);
                             }
                             return name;
                         });

} // namespace
} // namespace varden::tests
