// Replies and forwards.
#include "standin/outlook/items/Answers.h"

#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "standin/mapi/Bodies.h"
#include "standin/mapi/ConversationIndex.h"
#include "standin/mapi/Html.h"
#include "standin/mapi/Rtf.h"
#include "standin/mapi/RtfCompression.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/items/Sending.h"
#include "standin/outlook/objects/Attachments.h"
#include "standin/outlook/objects/RecipientList.h"

#include <algorithm>

namespace standin::outlook {
namespace {

using mailbox::OpenMessage;
using mailbox::PropertyBag;
using mailbox::Value;

constexpr const wchar_t* kReplyPrefix = L"RE: ";
constexpr const wchar_t* kForwardPrefix = L"FW: ";

/// Subject and conversation of an answer.
void ContinueConversation(const OpenMessage& original, OpenMessage& answer, const wchar_t* prefix) {
    const std::wstring subject = original.Get<PR_NORMALIZED_SUBJECT_W>().value_or(L"");
    Check(answer.Write(PR_SUBJECT_W, prefix + subject));
    Check(answer.Write(PR_CONVERSATION_TOPIC_W, original.Get<PR_CONVERSATION_TOPIC_W>().value_or(subject)));
    const auto parent = original.Get<PR_CONVERSATION_INDEX>().value_or(mailbox::Bytes());
    if (std::optional<mailbox::Bytes> index = mapi::MakeConversationIndex(parent))
        Check(answer.Write(PR_CONVERSATION_INDEX, std::move(*index)));
    if (const auto id = original.Get<mailbox::kPrInternetMessageId>())
        Check(answer.Write(mailbox::kPrInReplyToId, *id));
}

std::wstring DateText(Date date) {
    SYSTEMTIME time{};
    wchar_t day[128] = L"", hour[128] = L"";
    if (date == kNoDate || !VariantTimeToSystemTime(date.days, &time))
        return {};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &time, nullptr, day, static_cast<int>(std::size(day)));
    GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, hour,
                   static_cast<int>(std::size(hour)));
    return std::wstring(day) + L" " + hour;
}

/// The lines above the text that is answered.
std::vector<std::wstring> HeadingOf(const OpenMessage& original) {
    const auto sent = original.Get<PR_CLIENT_SUBMIT_TIME>();
    std::vector<std::wstring> lines{L"-----Original Message-----"};
    const auto add = [&lines](const wchar_t* label, const std::wstring& text) {
        if (!text.empty())
            lines.push_back(label + text);
    };
    add(L"From: ", original.Get<PR_SENT_REPRESENTING_NAME_W>().value_or(L""));
    add(L"Sent: ", DateText(sent ? LocalDate(*sent) : kNoDate));
    add(L"To: ", original.Get<PR_DISPLAY_TO_W>().value_or(L""));
    add(L"Cc: ", original.Get<PR_DISPLAY_CC_W>().value_or(L""));
    add(L"Subject: ", original.Get<PR_SUBJECT_W>().value_or(L""));
    return lines;
}

std::wstring BodyText(const OpenMessage& message, mailbox::PropertyTag tag) {
    Value value;
    const auto* text =
        SUCCEEDED(mapi::ReadBody(message, tag, value)) ? std::get_if<std::wstring>(&value) : nullptr;
    return text ? *text : std::wstring();
}

std::wstring QuotedText(const OpenMessage& original) {
    std::wstring text = L"\r\n\r\n";
    for (const std::wstring& line : HeadingOf(original))
        text += line + L"\r\n";
    return text + L"\r\n" + BodyText(original, PR_BODY_W);
}

/// The heading goes to the start of the page's body; a page without one gets it in front.
std::wstring QuotedHtml(const OpenMessage& original) {
    const std::wstring page = BodyText(original, mailbox::kPrBodyHtml);
    const std::wstring folded = mailbox::FoldCase(page);
    const std::size_t tag = folded.find(L"<BODY");
    const std::size_t end = tag == page.npos ? page.npos : page.find(L'>', tag);
    const std::size_t place = end == page.npos ? 0 : end + 1;
    std::wstring heading = L"<p>&nbsp;</p><div>";
    for (const std::wstring& line : HeadingOf(original)) {
        for (const wchar_t c : line)
            heading += c == L'<' ? L"&lt;" : c == L'&' ? L"&amp;" : std::wstring(1, c);
        heading += L"<br>";
    }
    return page.substr(0, place) + heading + L"</div>" + page.substr(place);
}

/// In the form that the original has.
void Quote(const OpenMessage& original, OpenMessage& answer) {
    switch (mapi::NativeBodyOf(original)) {
    case mapi::NativeBody::Html:
        return Check(mapi::WriteBody(answer, mailbox::kPrBodyHtml, QuotedHtml(original)));
    case mapi::NativeBody::Rtf:
        return Check(mapi::WriteBody(answer, PR_RTF_COMPRESSED,
                                     mapi::CompressRtf(mapi::RtfOfText(QuotedText(original)))));
    default:
        return Check(mapi::WriteBody(answer, PR_BODY_W, QuotedText(original)));
    }
}

/// Those whom the sender wants replies to go to, or the sender.
std::vector<PropertyBag> ReplyTargets(ItemObject& item) {
    std::vector<PropertyBag> targets = ReplyRecipientsOf(item.Shared())->Rows();
    if (!targets.empty())
        return targets;
    auto sender = ReadPerson(item.Message(), kSentRepresentingTags);
    if (!sender)
        sender = ReadPerson(item.Message(), kSenderTags);
    if (sender)
        targets.push_back(sender->RecipientProperties());
    return targets;
}

bool SameAddress(const PropertyBag& left, const PropertyBag& right) {
    return mailbox::SameIgnoringCase(left.GetOr<PR_EMAIL_ADDRESS_W>(L""),
                                     right.GetOr<PR_EMAIL_ADDRESS_W>(L""));
}

/// The others who got it, but for the user and those who get the answer already.
void AddOthers(const OpenMessage& original, OpenMessage& answer) {
    const auto user = CurrentUser();
    const PropertyBag userRow = user ? user->RecipientProperties() : PropertyBag();
    for (PropertyBag row : original.Recipients()) {
        const auto isSame = [&row](const PropertyBag& other) { return SameAddress(row, other); };
        const bool isBlind = row.GetOr<PR_RECIPIENT_TYPE>(MAPI_TO) == std::int32_t{MAPI_BCC};
        if (!isBlind && !isSame(userRow) && std::ranges::none_of(answer.Recipients(), isSame))
            Check(answer.AddRecipient(std::move(row)));
    }
}

ComPtr<ItemObject> NewMail() {
    return NewItem(OwnFolder(mailbox::kDrafts), kMailItem.messageClass);
}

} // namespace

ComPtr<ItemObject> Answer(ItemObject& item, AnswerKind kind) {
    const OpenMessage& original = item.Message();
    ComPtr<ItemObject> answer = NewMail();
    OpenMessage& message = answer->Message();
    ContinueConversation(original, message, kind == AnswerKind::Forward ? kForwardPrefix : kReplyPrefix);
    Quote(original, message);
    if (kind == AnswerKind::Forward) {
        CopyAttachments(original, message);
        return answer;
    }
    for (PropertyBag row : ReplyTargets(item)) {
        row.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
        Check(message.AddRecipient(std::move(row)));
    }
    if (kind == AnswerKind::ReplyAll)
        AddOthers(original, message);
    return answer;
}

ComPtr<ItemObject> ForwardAttached(ItemObject& item) {
    ComPtr<ItemObject> answer = NewMail();
    OpenMessage& message = answer->Message();
    const std::wstring subject = item.Message().Get<PR_SUBJECT_W>().value_or(L"");
    Check(message.Write(PR_SUBJECT_W, kForwardPrefix + subject));
    AttachMessage(message, item.Message().Current(), item.Message().Names(), subject);
    return answer;
}

ComPtr<ItemObject> ForwardAsIs(ItemObject& item) {
    const OpenMessage& original = item.Message();
    mailbox::Folder& drafts = OwnFolder(mailbox::kDrafts);
    mailbox::Content content = mailbox::RemapContent(original.Current(), original.Names(), drafts.Names());
    content.recipients.clear();
    std::shared_ptr<OpenMessage> message;
    Check(drafts.CreateMessage(std::move(content), message));
    ContinueConversation(original, *message, kForwardPrefix);
    return ItemFor(std::move(message));
}

} // namespace standin::outlook
