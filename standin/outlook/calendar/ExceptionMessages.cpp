// Exceptions of series as attachments.
#include "standin/outlook/calendar/ExceptionMessages.h"

#include "standin/mailbox/Tags.h"
#include "standin/outlook/automation/Failure.h"

#include <algorithm>

namespace standin::outlook::calendar {
namespace {

using mailbox::Attachment;
using mailbox::AttachmentPtr;
using mailbox::OpenMessage;
using mailbox::SysTime;

// [MS-OXCMSG] 2.2.2.19, [MS-OXOCAL] 2.2.10.1.4 to 2.2.10.1.6.
constexpr mailbox::PropertyTag kPrAttachmentFlags = PROP_TAG(PT_LONG, 0x7FFD);
constexpr mailbox::PropertyTag kPrAttachmentLinkId = PROP_TAG(PT_LONG, 0x7FFA);
constexpr mailbox::PropertyTag kPrExceptionStart = PROP_TAG(PT_SYSTIME, 0x7FFB);
constexpr mailbox::PropertyTag kPrExceptionEnd = PROP_TAG(PT_SYSTIME, 0x7FFC);
constexpr mailbox::PropertyTag kPrExceptionReplaceTime = PROP_TAG(PT_SYSTIME, 0x7FF9);
constexpr std::int32_t kHoldsException = 2; // afException

template <class Wanted>
std::vector<std::uint32_t> NumbersOf(const OpenMessage& series, Wanted wanted) {
    std::vector<std::uint32_t> numbers;
    for (const AttachmentPtr& each : series.Attachments())
        if (IsExceptionMessage(*each) && wanted(*each))
            numbers.push_back(each->number);
    return numbers;
}

void Remove(OpenMessage& series, const std::vector<std::uint32_t>& numbers) {
    for (const std::uint32_t number : numbers)
        Check(series.RemoveAttachment(number));
}

bool Replaces(const Attachment& attachment, SysTime original) {
    return attachment.properties.GetOr<kPrExceptionReplaceTime>({}) == original;
}

} // namespace

bool IsExceptionMessage(const Attachment& attachment) {
    return attachment.embedded && attachment.properties.GetOr<kPrAttachmentFlags>(0) & kHoldsException;
}

std::vector<AttachmentPtr> ShownAttachments(const OpenMessage& message) {
    std::vector<AttachmentPtr> shown = message.Attachments();
    std::erase_if(shown, [](const AttachmentPtr& each) { return IsExceptionMessage(*each); });
    return shown;
}

std::shared_ptr<const mailbox::Content> FindExceptionMessage(const mailbox::MessageProperties& series,
                                                             SysTime original) {
    for (const AttachmentPtr& each : series.Current().attachments)
        if (IsExceptionMessage(*each) && Replaces(*each, original))
            return each->embedded;
    return nullptr;
}

void WriteExceptionMessage(OpenMessage& series, const ExceptionTimes& times,
                           const mailbox::Content& content) {
    constexpr std::int32_t kNotInTheText = -1, kNone = 0;
    RemoveExceptionMessage(series, times.original);
    std::shared_ptr<mailbox::OpenAttachment> open;
    Check(series.CreateAttachment(open));
    Check(open->Write(PR_ATTACH_METHOD, std::int32_t{ATTACH_EMBEDDED_MSG}));
    Check(open->Write(PR_RENDERING_POSITION, kNotInTheText));
    Check(open->Write(PR_DISPLAY_NAME_W, std::wstring(L"Untitled")));
    Check(open->Write(PR_ATTACH_ENCODING, mailbox::Bytes()));
    Check(open->Write(mailbox::kPrAttachFlags, kNone));
    Check(open->Write(mailbox::kPrAttachmentHidden, true));
    Check(open->Write(kPrAttachmentFlags, kHoldsException));
    Check(open->Write(kPrAttachmentLinkId, kNone));
    Check(open->Write(kPrExceptionStart, times.start));
    Check(open->Write(kPrExceptionEnd, times.end));
    Check(open->Write(kPrExceptionReplaceTime, times.original));
    std::shared_ptr<OpenMessage> embedded;
    Check(open->Embedded(true, mailbox::Access::Modify, embedded));
    mailbox::Content* copy = nullptr;
    Check(embedded->EditContent(copy));
    *copy = content;
    Check(embedded->Save());
    Check(open->Save());
}

void RemoveExceptionMessage(OpenMessage& series, SysTime original) {
    Remove(series,
           NumbersOf(series, [original](const Attachment& each) { return Replaces(each, original); }));
}

void RemoveExceptionMessages(OpenMessage& series) {
    Remove(series, NumbersOf(series, [](const Attachment&) { return true; }));
}

} // namespace standin::outlook::calendar
