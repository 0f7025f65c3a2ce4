// The messages by which meetings are arranged.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/outlook/items/Item.h"

namespace standin::outlook::calendar {

// Their classes ([MS-OXOCAL] 2.2.4 to 2.2.9).
inline constexpr const wchar_t* kRequest = L"IPM.Schedule.Meeting.Request";
inline constexpr const wchar_t* kCancellation = L"IPM.Schedule.Meeting.Canceled";

/// A kind of answer, by its OlMeetingResponse number, which is also what is noted of those who gave it.
struct ResponseKind {
    std::int32_t number;
    const wchar_t* messageClass;
    const wchar_t* prefix;
    std::int32_t icon;
};
/// Null for a number that is none, and for a class that is no answer's.
const ResponseKind* FindResponse(std::int32_t number);
const ResponseKind* FindResponse(const std::wstring& messageClass);

/// Subject and prefix of a message: "Accepted: x".
void WritePrefixed(mailbox::OpenMessage& message, const std::wstring& prefix, const std::wstring& subject);

/// The appointment in the user's calendar that is about the same meeting; null for none.
std::shared_ptr<mailbox::Message> FindAppointment(const mailbox::MessageProperties& message);

} // namespace standin::outlook::calendar
