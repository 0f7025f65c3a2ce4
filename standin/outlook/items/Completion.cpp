// What every item gets with a save.
#include "standin/outlook/items/Completion.h"

#include "standin/mapi/ConversationIndex.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

constexpr StoredProperty kPrivate{.tag = PT_BOOLEAN, .set = &kPsCommon, .number = 0x8506};
constexpr StoredProperty kInternalVersion{.tag = PT_LONG, .set = &kPsCommon, .number = 0x8552};
constexpr StoredProperty kVersion{.tag = PT_UNICODE, .set = &kPsCommon, .number = 0x8554};

/// "16.0" and 177328 of the version text "16.0.17328.20004".
void WriteVersion(mailbox::OpenMessage& message) {
    constexpr std::int32_t kMajorFactor = 10000;
    const std::wstring& text = TheSwitches().versionText;
    const std::size_t build = text.find(L'.', text.find(L'.') + 1);
    const std::int32_t number = build == text.npos ? 0 : _wtoi(text.c_str() + build + 1);
    WriteValue(message, kVersion, text.substr(0, build));
    WriteValue(message, kInternalVersion, MajorVersion() * kMajorFactor + number);
}

bool IsUnsent(const mailbox::OpenMessage& message) {
    return message.Get<PR_MESSAGE_FLAGS>().value_or(0) & std::int32_t{MSGFLAG_UNSENT};
}

} // namespace

void CompleteConversation(mailbox::OpenMessage& message) {
    constexpr std::size_t kFirstIndexSize = 22;
    const auto index = message.Get<PR_CONVERSATION_INDEX>();
    if (!index)
        Check(message.Write(PR_CONVERSATION_INDEX, *mapi::MakeConversationIndex({})));
    const bool answers = index && index->size() > kFirstIndexSize;
    if (!answers || !message.Get<PR_CONVERSATION_TOPIC_W>())
        Check(message.Write(PR_CONVERSATION_TOPIC_W, message.Get<PR_NORMALIZED_SUBJECT_W>().value_or(L"")));
}

void CompleteAnyItem(mailbox::OpenMessage& message) {
    constexpr std::int32_t kPrivateSensitivity = SENSITIVITY_PRIVATE;
    if (IsUnsent(message))
        CompleteConversation(message);
    if (message.IsNew())
        WriteVersion(message);
    WriteValue(message, kPrivate, message.Get<PR_SENSITIVITY>().value_or(0) == kPrivateSensitivity);
}

} // namespace standin::outlook
