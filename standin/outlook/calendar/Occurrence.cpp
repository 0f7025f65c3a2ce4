// Occurrences: what one looks like, and what saving and deleting it does to the series.
#include "standin/outlook/calendar/Occurrence.h"

#include "standin/outlook/calendar/AppointmentTimes.h"
#include "standin/outlook/calendar/CalendarProperties.h"
#include "standin/outlook/calendar/ExceptionMessages.h"
#include "standin/outlook/calendar/GlobalId.h"
#include "standin/outlook/calendar/SeriesStore.h"
#include "standin/outlook/items/PropertySets.h"

#include <algorithm>

namespace standin::outlook::calendar {
namespace {

using mailbox::Content;
using mailbox::OpenMessage;
using mailbox::SysTime;
using recurrence::DayState;
using recurrence::Exception;
using recurrence::Minute;
using recurrence::Series;

constexpr mailbox::PropertyTag kBodyForms[] = {PR_BODY_W, mailbox::kPrHtml, PR_RTF_COMPRESSED};

/// The properties of content that no message is open for.
class ContentProperties final : public mailbox::PropertyObject {
public:
    ContentProperties(const Content& content, mailbox::NamedProperties& names)
        : m_content(content), m_names(names) {}
    const mailbox::PropertyBag& Stored() const override { return m_content.properties; }
    mailbox::NamedProperties& Names() const override { return m_names; }

protected:
    std::span<const mailbox::ComputedProperty> Computed() const override { return {}; }
    HRESULT CheckWritable() const override { return E_ACCESSDENIED; }
    mailbox::PropertyBag& Edit() override { std::abort(); } // nobody comes past CheckWritable

private:
    const Content& m_content;
    mailbox::NamedProperties& m_names;
};

/// A value of the exception's own, or nothing where it is the series' too.
template <class T>
std::optional<T> Own(const mailbox::PropertyObject& exception, const mailbox::PropertyObject& series,
                     const StoredProperty& stored, T fallback) {
    T value = ReadAs<T>(exception, stored).value_or(fallback);
    return value == ReadAs<T>(series, stored).value_or(fallback) ? std::nullopt
                                                                 : std::optional<T>(std::move(value));
}

bool HasOwnBody(const mailbox::PropertyObject& exception, const mailbox::PropertyObject& series) {
    return std::ranges::any_of(kBodyForms, [&](mailbox::PropertyTag tag) {
        const mailbox::Value *own = exception.Stored().Find(tag), *other = series.Stored().Find(tag);
        return own && (!other || *own != *other);
    });
}

/// What the series says of its exception.
Exception DescribeException(const Content& content, const OpenMessage& series, Minute original) {
    constexpr StoredProperty kSubject{.tag = PR_SUBJECT_W};
    const ContentProperties own(content, series.Names());
    const Zone zone = ZoneOfSeries(series);
    Exception exception{.original = original};
    exception.start = MinuteOf(zone, ReadAs<SysTime>(own, kStartWhole).value_or(SysTime()));
    exception.end = MinuteOf(zone, ReadAs<SysTime>(own, kEndWhole).value_or(SysTime()));
    exception.subject = Own<std::wstring>(own, series, kSubject, L"");
    exception.meetingStatus = Own<std::int32_t>(own, series, kStateFlags, 0);
    exception.reminderMinutes = Own<std::int32_t>(own, series, kReminderMinutes, 0);
    exception.reminderSet = Own<bool>(own, series, kReminderSet, false);
    exception.location = Own<std::wstring>(own, series, kLocation, L"");
    exception.busyStatus = Own<std::int32_t>(own, series, kBusyStatus, 0);
    exception.allDay = Own<bool>(own, series, kAllDay, false);
    exception.color = Own<std::int32_t>(own, series, kColor, 0);
    if (!content.attachments.empty())
        exception.hasAttachment = 1;
    exception.hasBody = HasOwnBody(own, series);
    return exception;
}

SysTime AsIfUtc(Minute minute) {
    return TimeOfUtc(DateOfMinute(minute));
}

void SaveException(OpenMessage& series, Minute original, const Content& content) {
    std::optional<Series> all = ReadSeries(series);
    const recurrence::Day day = recurrence::DayOf(original);
    if (!all || StateOf(*all, day) == DayState::Deleted || StateOf(*all, day) == DayState::NotInPattern)
        throw NoSuchOccurrence();
    Exception exception = DescribeException(content, series, original);
    const ExceptionTimes times{TimeOf(ZoneOfSeries(series), original), AsIfUtc(exception.start),
                               AsIfUtc(exception.end)};
    ChangeDay(*all, std::move(exception));
    WriteSeries(series, *all);
    WriteExceptionMessage(series, times, content);
    Check(series.Save());
}

/// Where an occurrence is saved: in its series.
class SeriesTarget final : public mailbox::MessageTarget {
public:
    SeriesTarget(std::shared_ptr<OpenMessage> series, Minute original)
        : m_series(std::move(series)), m_original(original) {}
    HRESULT Save(const mailbox::ContentPtr& content) override {
        try {
            SaveException(*m_series, m_original, *content);
            return S_OK;
        } catch (const Failure& failure) {
            return failure.status;
        }
    }
    mailbox::NamedProperties& Names() override { return m_series->Names(); }

private:
    std::shared_ptr<OpenMessage> m_series;
    Minute m_original;
};

template <class T>
void Take(OpenMessage& message, const StoredProperty& stored, const std::optional<T>& own) {
    if (own)
        WriteValue(message, stored, *own);
}

void TakeDescription(OpenMessage& message, const Exception& exception) {
    if (exception.subject)
        Check(message.Write(PR_SUBJECT_W, *exception.subject));
    Take(message, kStateFlags, exception.meetingStatus);
    Take(message, kReminderMinutes, exception.reminderMinutes);
    Take(message, kReminderSet, exception.reminderSet);
    Take(message, kLocation, exception.location);
    Take(message, kBusyStatus, exception.busyStatus);
    Take(message, kAllDay, exception.allDay);
    Take(message, kColor, exception.color);
}

/// What the exception's own message has goes over what the series has. A body of its own replaces all forms
/// of the series' body.
void TakeMessage(OpenMessage& message, const Content& own) {
    Content* content = nullptr;
    Check(message.EditContent(content));
    if (std::ranges::any_of(kBodyForms,
                            [&](mailbox::PropertyTag form) { return own.properties.Contains(form); }))
        for (const mailbox::PropertyTag form : kBodyForms)
            content->properties.Remove(form);
    for (const mailbox::Property& property : own.properties)
        content->properties.Put(property.Tag(), property.value);
    if (!own.recipients.empty())
        content->recipients = own.recipients;
    content->attachments = own.attachments;
}

/// An occurrence has what the series has, but for its recurrence, its exceptions and its place in the folder.
std::shared_ptr<OpenMessage> CopyOfSeries(const OpenMessage& series, std::shared_ptr<SeriesTarget> target) {
    auto content = std::make_shared<Content>(series.Current());
    std::erase_if(content->attachments,
                  [](const mailbox::AttachmentPtr& each) { return IsExceptionMessage(*each); });
    auto copy = OpenMessage::ForTarget(std::move(target), std::move(content), mailbox::Access::Modify);
    for (const StoredProperty* stored :
         {&kRecurrence, &kRecurrenceType, &kRecurrenceText, &kZoneStruct, &kZoneDescription, &kZoneOfSeries})
        RemoveValue(*copy, *stored);
    WriteValue(*copy, kIsRecurring, false);
    Check(copy->Write(PR_MESSAGE_CLASS_W, std::wstring(kExceptionClass)));
    return copy;
}

/// Its global id is the meeting's, with the day on which it would take place.
void WriteGlobalId(OpenMessage& message, Minute original) {
    SYSTEMTIME day{};
    const auto id = ReadAs<mailbox::Bytes>(message, kGlobalId);
    if (id && VariantTimeToSystemTime(DateOfMinute(original).days, &day))
        WriteValue(message, kGlobalId, GlobalIdOn(*id, day));
}

ComPtr<OccurrenceObject> MakeOccurrence(ItemObject& item, Minute original, const Span& span,
                                        const Exception* exception) {
    const std::shared_ptr<OpenMessage>& series = item.Shared();
    const SysTime replaced = TimeOf(ZoneOfSeries(*series), original);
    const auto target = std::make_shared<SeriesTarget>(series, original);
    const std::shared_ptr<OpenMessage> draft = CopyOfSeries(*series, target);
    if (exception)
        TakeDescription(*draft, *exception);
    if (const auto own = exception ? FindExceptionMessage(*series, replaced) : nullptr)
        TakeMessage(*draft, *own);
    WriteValue(*draft, kReplacedTime, replaced);
    WriteValue(*draft, kMeetingIsException, true);
    WriteGlobalId(*draft, original);
    WriteSpan(*draft, span);
    // What it looks like by now is where its changes begin.
    const auto content = std::make_shared<const Content>(draft->Current());
    const mailbox::Access access = series->IsWritable() ? mailbox::Access::Modify : mailbox::Access::Read;
    return Make<OccurrenceObject>(ComPtr<ItemObject>(&item), OpenMessage::ForTarget(target, content, access),
                                  original);
}

Series SeriesIn(ItemObject& item) {
    std::optional<Series> series = ReadSeries(item.Message());
    if (!series)
        throw NoSuchOccurrence();
    return std::move(*series);
}

ComPtr<OccurrenceObject> MakeException(ItemObject& item, const Exception& exception) {
    const Zone zone = ZoneOfSeries(item.Message());
    return MakeOccurrence(item, exception.original,
                          {TimeOf(zone, exception.start), TimeOf(zone, exception.end)}, &exception);
}

} // namespace

OccurrenceObject::OccurrenceObject(ComPtr<ItemObject> series, std::shared_ptr<OpenMessage> message,
                                   Minute original)
    : ItemObject(kAppointmentItem, std::move(message)), m_series(std::move(series)), m_original(original) {
}

bool OccurrenceObject::IsException() const {
    const std::optional<Series> series = ReadSeries(m_series->Message());
    return series && StateOf(*series, recurrence::DayOf(m_original)) == DayState::Changed;
}

void OccurrenceObject::Delete() {
    OpenMessage& message = m_series->Message();
    Series series = SeriesIn(*m_series);
    RemoveExceptionMessage(message, TimeOf(ZoneOfSeries(message), m_original));
    DeleteDay(series, recurrence::DayOf(m_original));
    WriteSeries(message, series);
    m_series->Save();
    LetGo();
}

ComPtr<OccurrenceObject> OccurrenceAt(ItemObject& item, Minute start) {
    const Series series = SeriesIn(item);
    if (const Exception* exception = FindException(series, start))
        return MakeException(item, *exception);
    const recurrence::Day day = recurrence::DayOf(start);
    if (StateOf(series, day) != DayState::Regular || StartOn(series, day) != start)
        throw NoSuchOccurrence();
    const Zone zone = ZoneOfSeries(item.Message());
    const Minute end = recurrence::MidnightOf(day) + series.endOffset;
    return MakeOccurrence(item, start, {TimeOf(zone, start), TimeOf(zone, end)}, nullptr);
}

ComPtr<OccurrenceObject> OccurrenceFrom(ItemObject& item, Minute original) {
    const Series series = SeriesIn(item);
    const auto exception = std::ranges::find(series.exceptions, original, &Exception::original);
    if (exception != series.exceptions.end())
        return MakeException(item, *exception);
    return OccurrenceAt(item, original);
}

Failure NoSuchOccurrence() {
    return {MAPI_E_NOT_FOUND, L"You changed one of the recurrences of this item, and this instance no longer "
                              L"exists. Close any open "
                              L"items and try again."};
}

} // namespace standin::outlook::calendar
