// JournalItem: the members of journal entries beyond those of all items ([MS-OXOJRNL] 2.2.1).
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/Completion.h"
#include "standin/outlook/items/Filing.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

using mailbox::OpenMessage;
using mailbox::SysTime;

constexpr std::uint64_t kTicksPerMinute = 600'000'000;
constexpr const wchar_t* kPhoneCall = L"Phone call";

constexpr StoredProperty kType{.tag = PT_UNICODE, .set = &kPsLog, .number = 0x8700};
constexpr StoredProperty kTypeDescription{.tag = PT_UNICODE, .set = &kPsLog, .number = 0x8712};
constexpr StoredProperty kStart{.tag = PT_SYSTIME, .set = &kPsLog, .number = 0x8706};
constexpr StoredProperty kDuration{.tag = PT_LONG, .set = &kPsLog, .number = 0x8707};
constexpr StoredProperty kEnd{.tag = PT_SYSTIME, .set = &kPsLog, .number = 0x8708};
constexpr StoredProperty kCommonStart{.tag = PT_SYSTIME, .set = &kPsCommon, .number = 0x8516};
constexpr StoredProperty kCommonEnd{.tag = PT_SYSTIME, .set = &kPsCommon, .number = 0x8517};

std::int32_t DurationOf(const OpenMessage& message) {
    return ReadAs<std::int32_t>(message, kDuration).value_or(0);
}

SysTime After(SysTime time, std::int32_t minutes) {
    return {time.ticks + static_cast<std::uint64_t>(minutes) * kTicksPerMinute};
}

void WriteTime(OpenMessage& message, const StoredProperty& own, const StoredProperty& common,
               std::optional<SysTime> time) {
    for (const StoredProperty& stored : {own, common}) {
        if (time)
            WriteValue(message, stored, *time);
        else
            RemoveValue(message, stored);
    }
}

/// The end follows from start and duration; without a start there is none.
void FollowDuration(OpenMessage& message) {
    const auto start = ReadAs<SysTime>(message, kStart);
    WriteTime(message, kEnd, kCommonEnd,
              start ? std::optional(After(*start, DurationOf(message))) : std::nullopt);
}

void FollowStart(OpenMessage& message) {
    WriteTime(message, kStart, kCommonStart, ReadAs<SysTime>(message, kStart));
    FollowDuration(message);
}

/// The duration changes; a start that there isn't is the end. Nothing ends before it started.
void SetEnd(ItemObject& item, const Arguments& value) {
    OpenMessage& message = item.Message();
    const Date date = GivenDate(value);
    if (date == kNoDate) {
        WriteValue(message, kDuration, 0);
        return WriteTime(message, kEnd, kCommonEnd, std::nullopt);
    }
    const SysTime end = TimeOfLocal(date);
    const SysTime start = ReadAs<SysTime>(message, kStart).value_or(end);
    if (end.ticks < start.ticks)
        throw InvalidValue();
    WriteTime(message, kStart, kCommonStart, start);
    WriteTime(message, kEnd, kCommonEnd, end);
    WriteValue(message, kDuration, static_cast<std::int32_t>((end.ticks - start.ticks) / kTicksPerMinute));
}

void SetDuration(ItemObject& item, const Arguments& value) {
    if (value.Number(0) < 0)
        throw InvalidValue();
    WriteValue(item.Message(), kDuration, value.Number(0));
    FollowDuration(item.Message());
}

/// The description is the type in the user's language.
void FollowType(OpenMessage& message) {
    WriteValue(message, kTypeDescription, StoredText(message, kType));
}

void StartTimer(ItemObject& item) {
    item.Message();
    if (!item.timerStart)
        item.timerStart = mailbox::Now();
}

/// What the timer ran is added to the duration, in whole minutes.
void StopTimer(ItemObject& item) {
    OpenMessage& message = item.Message();
    if (!item.timerStart)
        return;
    const std::uint64_t ran = mailbox::Now().ticks - item.timerStart->ticks;
    item.timerStart.reset();
    WriteValue(message, kDuration, DurationOf(message) + static_cast<std::int32_t>(ran / kTicksPerMinute));
    FollowDuration(message);
}

/// A phone call that starts this minute.
void Begin(OpenMessage& message) {
    constexpr std::int32_t kIcon = 0x60A;
    BeginFiled(message, kIcon);
    EnterAuthor(message);
    const std::uint64_t now = mailbox::Now().ticks;
    WriteValue(message, kType, std::wstring(kPhoneCall));
    FollowType(message);
    WriteValue(message, kStart, SysTime{now - now % kTicksPerMinute});
    WriteValue(message, kDuration, 0);
    FollowStart(message);
}

constexpr Row kRows[] = {
    Named(L"ContactNames", kNames, PT_MV_UNICODE, kPsCommon, 0x853A),
    Named(L"DocPosted", kFlag, PT_BOOLEAN, kPsLog, 0x8711),
    Named(L"DocPrinted", kFlag, PT_BOOLEAN, kPsLog, 0x870E),
    Named(L"DocRouted", kFlag, PT_BOOLEAN, kPsLog, 0x8710),
    Named(L"DocSaved", kFlag, PT_BOOLEAN, kPsLog, 0x870F),
    WrittenBy<SetDuration>(Named(L"Duration", kNumber, PT_LONG, kPsLog, 0x8707)),
    WrittenBy<SetEnd>(Named(L"End", kTime, PT_SYSTIME, kPsLog, 0x8708)),
    Then<FollowStart>(Named(L"Start", kTime, PT_SYSTIME, kPsLog, 0x8706)),
    Then<FollowType>(Named(L"Type", kText, PT_UNICODE, kPsLog, 0x8700)),
    {L"StartTimer", Get<StartTimer>},
    {L"StopTimer", Get<StopTimer>},
};

} // namespace

const ItemKind kJournalItem{
    .kind = {L"JournalItem", 0x00063022, 42, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Activity",
    .itemType = 4,
    .home = mailbox::kJournal,
    .begin = Begin,
    .complete = CompleteConversation,
};

} // namespace standin::outlook
