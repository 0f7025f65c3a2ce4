// MeetingItem: the members of meeting messages beyond those of all items.
#include "standin/outlook/calendar/Meetings.h"
#include "standin/outlook/items/Answers.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

struct MeetingClass {
    std::wstring_view messageClass;
    std::int32_t objectClass; ///< OlObjectClass
};

constexpr MeetingClass kMeetingClasses[] = {
    {L"IPM.Schedule.Meeting.Request", 53},   {L"IPM.Schedule.Meeting.Canceled", 54},
    {L"IPM.Schedule.Meeting.Resp.Neg", 55},  {L"IPM.Schedule.Meeting.Resp.Pos", 56},
    {L"IPM.Schedule.Meeting.Resp.Tent", 57}, {L"IPM.Schedule.Meeting.Notification.Forward", 181},
};

std::int32_t ClassOf(const mailbox::MessageProperties& message) {
    const std::wstring messageClass = message.Get<PR_MESSAGE_CLASS_W>().value_or(L"");
    for (const MeetingClass& row : kMeetingClasses)
        if (DescendsFrom(messageClass, row.messageClass))
            return row.objectClass;
    return kMeetingClasses[0].objectClass;
}

ComPtr<ItemObject> GetAssociatedAppointment(ItemObject& item, const Arguments& arguments) {
    return calendar::AssociatedAppointment(item, arguments.Flag(0));
}

constexpr Row kRows[] = {
    Named(L"MeetingWorkspaceURL", kText, PT_UNICODE, kPsAppointment, 0x8209),
    {L"Forward", Get<ForwardAsIs>},
    {L"GetAssociatedAppointment", Get<GetAssociatedAppointment>},
    {L"IsLatestVersion", Get<calendar::IsLatestVersion>},
};

} // namespace

const ItemKind kMeetingItem{
    .kind = {L"MeetingItem", 0x00063062, 53, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Schedule.Meeting.Request",
    .objectClass = ClassOf,
};

} // namespace standin::outlook
