// Reminders ([MS-OXORMDR]).
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr StoredProperty kSignalTime{.tag = PT_SYSTIME, .set = &kPsCommon, .number = 0x8560};
constexpr StoredProperty kReminderTime{.tag = PT_SYSTIME, .set = &kPsCommon, .number = 0x8502};

/// The reminder comes up at its time, until it is put off.
void FollowTime(mailbox::OpenMessage& message) {
    if (std::optional<mailbox::Value> time = ReadValue(message, kReminderTime))
        WriteValue(message, kSignalTime, std::move(*time));
    else
        RemoveValue(message, kSignalTime);
}

constexpr Row kRows[] = {
    Named(L"ReminderOverrideDefault", kFlag, PT_BOOLEAN, kPsCommon, 0x851C),
    Named(L"ReminderPlaySound", kFlag, PT_BOOLEAN, kPsCommon, 0x851E),
    Named(L"ReminderSet", kFlag, PT_BOOLEAN, kPsCommon, 0x8503),
    Named(L"ReminderSoundFile", kText, PT_UNICODE, kPsCommon, 0x851F),
    Then<FollowTime>(Named(L"ReminderTime", kTime, PT_SYSTIME, kPsCommon, 0x8502)),
};

} // namespace

constinit const std::span<const Row> kReminderRows = kRows;

} // namespace standin::outlook
