// Requests and responses of meetings, and the appointments that they are about.
#include "standin/outlook/calendar/MeetingMessages.h"

#include "standin/mailbox/Folder.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/calendar/GlobalId.h"
#include "standin/outlook/items/Sending.h"

#include <algorithm>

namespace standin::outlook::calendar {
namespace {

constexpr ResponseKind kResponses[] = {
    {2, L"IPM.Schedule.Meeting.Resp.Tent", L"Tentative:", 1031},
    {3, L"IPM.Schedule.Meeting.Resp.Pos", L"Accepted:", 1029},
    {4, L"IPM.Schedule.Meeting.Resp.Neg", L"Declined:", 1030},
};

} // namespace

const ResponseKind* FindResponse(std::int32_t number) {
    const auto found = std::ranges::find(kResponses, number, &ResponseKind::number);
    return found == std::end(kResponses) ? nullptr : found;
}

const ResponseKind* FindResponse(const std::wstring& messageClass) {
    const auto found = std::ranges::find_if(
        kResponses, [&](const ResponseKind& each) { return DescendsFrom(messageClass, each.messageClass); });
    return found == std::end(kResponses) ? nullptr : found;
}

void WritePrefixed(mailbox::OpenMessage& message, const std::wstring& prefix, const std::wstring& subject) {
    Check(message.Write(PR_SUBJECT_PREFIX_W, prefix + L" "));
    Check(message.Write(PR_SUBJECT_W, prefix + L" " + subject));
}

std::shared_ptr<mailbox::Message> FindAppointment(const mailbox::MessageProperties& message) {
    const mailbox::Bytes id = MeetingOf(message);
    if (id.empty())
        return nullptr;
    mailbox::Folder& calendar = OwnFolder(mailbox::kCalendar);
    for (const mailbox::Message* each : calendar.Messages())
        if (&KindOf(*each, false) == &kAppointmentItem && MeetingOf(*each) == id)
            return calendar.FindMessage(each->Id());
    return nullptr;
}

} // namespace standin::outlook::calendar
