// Members that several kinds of item have, in a table for each topic. A kind takes of them what its interface
// has.
#pragma once

#include "standin/outlook/automation/Row.h"

namespace standin::outlook {

extern const std::span<const Row> kBodyRows;           ///< HTMLBody, BodyFormat ...
extern const std::span<const Row> kItemCollectionRows; ///< Attachments, Recipients, UserProperties ...
extern const std::span<const Row> kDeliveryRows;       ///< To, SenderName, Sent ...
extern const std::span<const Row> kFlagRows;           ///< FlagStatus, MarkAsTask, TaskDueDate ...
extern const std::span<const Row> kReminderRows;       ///< ReminderSet, ReminderTime ...
extern const std::span<const Row> kAnswerRows;         ///< Reply, Forward, Send
/// All of them.
extern const std::span<const std::span<const Row>* const> kItemTopics;

} // namespace standin::outlook
