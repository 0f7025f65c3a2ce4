// Which kind of item a message is.
#include "standin/outlook/items/ItemKinds.h"

#include <algorithm>

namespace standin::outlook {
namespace {

constexpr const ItemKind* kAll[] = {
    &kAppointmentItem,
    &kContactItem,
    &kDistListItem,
    &kDocumentItem,
    &kJournalItem,
    &kMailItem,
    &kMeetingItem,
    &kNoteItem,
    &kPostItem,
    &kRemoteItem,
    &kReportItem,
    &kSharingItem,
    &kStorageItem,
    &kTaskItem,
    &kTaskRequestItem,
    &kTaskRequestAcceptItem,
    &kTaskRequestDeclineItem,
    &kTaskRequestUpdateItem,
};

struct ClassOfKind {
    std::wstring_view messageClass;
    const ItemKind* kind;
};

/// A longer class stands before the one that it descends from.
constexpr ClassOfKind kClasses[] = {
    {L"IPM.Activity", &kJournalItem},
    {L"IPM.Appointment", &kAppointmentItem},
    {L"IPM.Contact", &kContactItem},
    {L"IPM.DistList", &kDistListItem},
    {L"IPM.Document", &kDocumentItem},
    // An exception of a recurring appointment, [MS-OXOCAL] 2.2.10.
    {L"IPM.OLE.CLASS.{00061055-0000-0000-C000-000000000046}", &kAppointmentItem},
    {L"IPM.Post", &kPostItem},
    {L"IPM.Remote", &kRemoteItem},
    {L"IPM.Schedule.Meeting", &kMeetingItem},
    {L"IPM.Sharing", &kSharingItem},
    {L"IPM.StickyNote", &kNoteItem},
    {L"IPM.Storage", &kStorageItem},
    {L"IPM.TaskRequest.Accept", &kTaskRequestAcceptItem},
    {L"IPM.TaskRequest.Decline", &kTaskRequestDeclineItem},
    {L"IPM.TaskRequest.Update", &kTaskRequestUpdateItem},
    {L"IPM.TaskRequest", &kTaskRequestItem},
    {L"IPM.Task", &kTaskItem},
    {L"REPORT", &kReportItem},
};

} // namespace

std::span<const ItemKind* const> AllItemKinds() {
    return kAll;
}

bool DescendsFrom(std::wstring_view messageClass, std::wstring_view ancestor) {
    const std::size_t length = ancestor.size();
    if (messageClass.size() < length || (messageClass.size() > length && messageClass[length] != L'.'))
        return false;
    const auto count = static_cast<int>(length);
    return CompareStringOrdinal(messageClass.data(), count, ancestor.data(), count, TRUE) == CSTR_EQUAL;
}

const ItemKind& KindOfClass(std::wstring_view messageClass) {
    const auto row = std::ranges::find_if(
        kClasses, [&](const ClassOfKind& each) { return DescendsFrom(messageClass, each.messageClass); });
    return row == std::end(kClasses) ? kMailItem : *row->kind;
}

const ItemKind& KindOf(const mailbox::MessageProperties& message, bool associated) {
    if (associated)
        return kStorageItem;
    return KindOfClass(message.Get<PR_MESSAGE_CLASS_W>().value_or(L""));
}

const ItemKind* KindOfItemType(std::int32_t itemType) {
    const auto kind =
        std::ranges::find_if(kAll, [&](const ItemKind* each) { return each->itemType == itemType; });
    return kind == std::end(kAll) ? nullptr : *kind;
}

} // namespace standin::outlook
