// The messages within a series in which its exceptions are kept ([MS-OXOCAL] 2.2.10).
#pragma once

#include "standin/mailbox/Message.h"

#include <vector>

namespace standin::outlook::calendar {

/// Whether an attachment holds an exception. Users don't see it among the attachments.
bool IsExceptionMessage(const mailbox::Attachment& attachment);
/// The attachments that users see.
std::vector<mailbox::AttachmentPtr> ShownAttachments(const mailbox::OpenMessage& message);

/// The message of the occurrence that would begin at this time; null for none.
std::shared_ptr<const mailbox::Content> FindExceptionMessage(const mailbox::MessageProperties& series,
                                                             mailbox::SysTime original);
/// Puts it in, in place of one that there was. `start` and `end` are in the series' own zone, as if it were
/// UTC.
struct ExceptionTimes {
    mailbox::SysTime original, start, end;
};
void WriteExceptionMessage(mailbox::OpenMessage& series, const ExceptionTimes& times,
                           const mailbox::Content& content);
void RemoveExceptionMessage(mailbox::OpenMessage& series, mailbox::SysTime original);
void RemoveExceptionMessages(mailbox::OpenMessage& series);

} // namespace standin::outlook::calendar
