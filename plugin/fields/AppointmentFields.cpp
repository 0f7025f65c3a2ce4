// The field vocabulary of an appointment. Its names have no blanks: blanks are taken out of what a script
// gives.
#include "Vocabularies.h"

#include "RecurrenceBlob.h"

#include "frame/ErrorCodes.h"
#include "mapi/PropertyCatalogue.h"
#include "mapi/Tags.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

#include <algorithm>
#include <array>

namespace varden {

namespace {

constexpr std::array kBusyStatus{EnumWord{0, L"Free"}, EnumWord{1, L"Tentative"}, EnumWord{2, L"Busy"},
                                 EnumWord{3, L"Out of Office"}};
constexpr EnumWords kBusyStatusWords{kBusyStatus};
constexpr std::array kBusyStatusByWord{EnumWord{0, L"Free"}, EnumWord{1, L"Tentative"}, EnumWord{2, L"Busy"},
                                       EnumWord{3, L"OutOfOffice"}, EnumWord{3, L"Out of Office"}};
constexpr EnumChoice kBusyStatusChoice{{}, kBusyStatusByWord};

constexpr std::array kMeetingResponse{EnumWord{2, L"Tentative"}, EnumWord{3, L"Accepted"},
                                      EnumWord{4, L"Declined"}};
constexpr EnumWords kMeetingResponseWords{kMeetingResponse};
constexpr EnumChoice kMeetingResponseChoice{{}, kMeetingResponse};

constexpr std::array kMeetingStatus{EnumWord{0, L"NonMeeting"}, EnumWord{1, L"Meeting"},
                                    EnumWord{3, L"Received"}, EnumWord{5, L"Canceled"}};
constexpr EnumWords kMeetingStatusWords{kMeetingStatus};
constexpr std::array kMeetingStatusByWord{EnumWord{0, L"NonMeeting"}, EnumWord{0, L""},
                                          EnumWord{1, L"Meeting"}, EnumWord{3, L"Received"},
                                          EnumWord{5, L"Canceled"}};
constexpr EnumChoice kMeetingStatusChoice{{}, kMeetingStatusByWord};

constexpr std::array kNetMeetingType{EnumWord{0, L"Net Meeting"}, EnumWord{1, L"Net Show"},
                                     EnumWord{2, L"Exchange Conferencing"}};
constexpr EnumWords kNetMeetingTypeWords{kNetMeetingType};
constexpr EnumChoice kNetMeetingTypeChoice{{}, kNetMeetingType};

constexpr std::array kAutoStartByLetter{EnumLetter{L'T', 1}, EnumLetter{L'F', 0}};
constexpr EnumChoice kAutoStartLetters{kAutoStartByLetter, {}};

constexpr std::array kRecurrenceState{EnumWord{0, L"Not Recurring"}, EnumWord{1, L"Master"},
                                      EnumWord{2, L"Occurence"}, EnumWord{3, L"Exception"}};
constexpr EnumWords kRecurrenceStateWords{kRecurrenceState, L"Unknown"};

constexpr std::array kLabel{
    EnumWord{0, L"None"},
    EnumWord{1, L"Important"},
    EnumWord{2, L"Business"},
    EnumWord{3, L"Personal"},
    EnumWord{4, L"Vacation"},
    EnumWord{5, L"Must Attend"},
    EnumWord{6, L"Travel Required"},
    EnumWord{7, L"Needs Preparation"},
    EnumWord{8, L"Birthday"},
    EnumWord{9, L"Anniversary"},
    EnumWord{10, L"Phone Call"},
};
constexpr EnumWords kLabelWords{kLabel, L"Unknown"};
constexpr EnumChoice kLabelChoice{{}, kLabel, true};
constexpr long kLastLabel = 10;

/// An unknown word is passed over in silence.
bool SetBusyStatus(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    if (const auto status = Choose(data, kBusyStatusChoice)) {
        context.item.PutProperty(L"BusyStatus", outlook::LongValue(*status));
    }
    return true;
}

bool SetLoggedDate(const FieldContext& context, const FieldRow& row, const std::wstring& data) {
    const auto date = ParseDateOrNone(data);
    if (!date) {
        return Refuse(error::kFieldValue);
    }
    LogLine(DateText(*date));
    context.item.PutProperty(row.set.member, outlook::DateValue(*date));
    return true;
}

/// The colour label, a number that the object model doesn't show.
std::wstring GetLabel(const FieldContext& context, const FieldRow&) {
    const auto tag = CatalogueTag(L"Label", context);
    if (!tag) {
        return {};
    }
    mapi::PropertyBlock block;
    const bool read = SUCCEEDED(context.engine.mapi_GetOneProp(*tag, block, context.message));
    const auto label = block.AsLong();
    if (!read || !label) {
        return Fail(error::kMapi, L"Unable to get MAPI field for label");
    }
    return WordFor(*label, kLabelWords);
}

/// A word, or a number from 1 to 10; "0" and the empty text for none.
std::optional<long> LabelFrom(const std::wstring& data) {
    if (data.empty() || data == L"0") {
        return 0;
    }
    if (const auto label = Choose(data, kLabelChoice)) {
        return label;
    }
    const long number = LeadingNumber(data);
    return number >= 1 && number <= kLastLabel ? std::optional(number) : std::nullopt;
}

bool SetLabel(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    const auto label = LabelFrom(data);
    if (!label) {
        return Refuse(error::kFieldValue);
    }
    if (const auto tag = CatalogueTag(L"Label", context)) {
        mapi::PropertyUnion value{};
        value.l = *label;
        context.engine.mapi_SetOneProp(CHANGE_PROP_TYPE(*tag, PT_LONG), value, context.message);
    }
    return true;
}

std::wstring GetLastModifierName(const FieldContext& context, const FieldRow&) {
    mapi::PropertyBlock block;
    context.engine.mapi_GetOneProp(mapi::tag::kLastModifierNameA, block, context.engine.CurrentMessage());
    return block.AsText();
}

/// Looked up on the item's message, read from the record's.
std::wstring GetOrganizer(const FieldContext& context, const FieldRow& row) {
    mapi::PropertyBlock block;
    if (const auto tag = CatalogueTag(row.name, context)) {
        context.engine.mapi_GetOneProp(*tag, block, context.engine.CurrentMessage());
    }
    return block.AsText();
}

/// Where the value that a field had before is kept.
struct Trace {
    const wchar_t* field;
    const wchar_t* property; ///< the catalogue's name
    ULONG tag;               ///< in place of the catalogue's, which is asked for all the same
};

constexpr std::array kTraces{
    Trace{L"Location", L"PreviousLocation", 0},
    Trace{L"OptionalAttendees", L"PreviousOptionalAtts", 0},
    // The list of required attendees leaves its trace in the message's display list.
    Trace{L"RequiredAttendees", L"PreviousRequiredAtts", mapi::tag::kDisplayTo},
};

/// The tag to write the trace under; none for one that can't be resolved.
std::optional<ULONG> TagOf(const Trace& trace, const FieldContext& context) {
    const auto found = CatalogueTag(trace.property, context);
    if (trace.tag != 0) {
        return trace.tag;
    }
    return found ? std::optional(CHANGE_PROP_TYPE(*found, PT_UNICODE)) : std::nullopt;
}

/// Keeps the value that the field has now, or, when it has none, the new one. What comes of it isn't looked
/// at.
void KeepPrevious(const FieldContext& context, const FieldRow& row, const std::wstring& present,
                  const std::wstring& data) {
    const Trace& trace = *std::ranges::find(kTraces, row.name, &Trace::field);
    const auto tag = TagOf(trace, context);
    if (tag && context.message) {
        context.engine.mapi_SetOneProp(*tag, present.empty() ? data : present, context.message);
    }
}

bool SetLocation(const FieldContext& context, const FieldRow& row, const std::wstring& data) {
    KeepPrevious(context, row, context.item.GetText(L"Location"), data);
    context.item.PutProperty(L"Location", outlook::TextValue(data));
    return true;
}

bool SetAttendees(const FieldContext& context, const FieldRow& row, const std::wstring& data) {
    if (data.find(L"(null)") != std::wstring::npos) {
        return Refuse(error::kFieldValue, L"The value '(null)' is an unacceptable Attendee");
    }
    const std::wstring present = context.engine.ReadMasterField(std::wstring(row.name));
    KeepPrevious(context, row, present, data);
    context.item.PutProperty(row.set.member, outlook::TextValue(data));
    return true;
}

std::wstring GetMeetingResponse(const FieldContext& context, const FieldRow&) {
    return WordFor(context.engine.MasterAppointment().GetLong(L"ResponseStatus"), kMeetingResponseWords);
}

/// The value waits for the meeting response that the save sends.
bool SetMeetingResponse(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    const auto response = Choose(data, kMeetingResponseChoice);
    if (!response) {
        return Refuse(error::kFieldValue);
    }
    context.engine.SetPendingResponse(*response);
    return true;
}

bool SetNetMeetingType(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    const auto type = Choose(data, kNetMeetingTypeChoice);
    if (!type) {
        return Refuse(error::kFieldValue);
    }
    context.engine.MasterAppointment().PutProperty(L"NetMeetingType", outlook::LongValue(*type));
    return true;
}

std::wstring GetRecurrenceState(const FieldContext& context, const FieldRow&) {
    _variant_t state;
    if (const HRESULT status = context.item.TryGet(L"RecurrenceState", state); FAILED(status)) {
        return Fail(error::kMapi, status, L"Unable to get recurrence state");
    }
    return WordFor(state, kRecurrenceStateWords);
}

std::wstring GetBinaryRecurrence(const FieldContext& context, const FieldRow&) {
    return ReadRecurrenceBlob(context, L"RecurrenceState");
}

constexpr bool kReadInAnyCase = true;

constexpr FieldGet kCatalogueOptional = get::named(L"Optional Attendees");
constexpr FieldGet kCatalogueRequired = get::named(L"Required Attendees");

constexpr std::array kAppointmentFields{
    FieldRow{L"AllDayEvent", get::boolean(L"AllDayEvent"), set::flagT(L"AllDayEvent")},
    FieldRow{L"BillingInformation", get::text(L"BillingInformation"), set::text(L"BillingInformation")},
    FieldRow{L"BinaryRecurrence", get::special(GetBinaryRecurrence), set::unknownName, false, kReadInAnyCase},
    FieldRow{L"Body", get::mapiText(mapi::tag::kBody), set::text(L"Body")},
    FieldRow{L"BusyStatus", get::words(L"BusyStatus", kBusyStatusWords), set::special(SetBusyStatus)},
    FieldRow{L"Categories", get::text(L"Categories"), set::text(L"Categories")},
    FieldRow{L"Companies", get::unknownName, set::text(L"Companies")},
    FieldRow{L"Contacts", get::named(), set::special(SetLinkedContacts)},
    FieldRow{L"Created", get::date(L"CreationTime"), set::readOnly},
    FieldRow{L"Duration", get::integer(L"Duration"), set::number(L"Duration")},
    FieldRow{L"End", get::date(L"End"), set::special(SetLoggedDate, L"End")},
    FieldRow{L"FormName", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"ID", get::text(L"EntryID"), set::readOnly},
    FieldRow{L"Importance", get::words(L"Importance", kImportanceWords),
             set::choice(L"Importance", kImportanceLetters)},
    FieldRow{L"IsRecurring", get::boolean(L"IsRecurring"), set::readOnly},
    FieldRow{L"Label", get::special(GetLabel), set::special(SetLabel)},
    FieldRow{L"LastModifierName", get::special(GetLastModifierName), set::unknownName},
    FieldRow{L"Location", get::text(L"Location"), set::special(SetLocation)},
    FieldRow{L"MeetingResponse", get::special(GetMeetingResponse), set::special(SetMeetingResponse)},
    FieldRow{L"MeetingStatus", get::words(L"MeetingStatus", kMeetingStatusWords),
             set::choice(L"MeetingStatus", kMeetingStatusChoice)},
    FieldRow{L"MessageClass", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"Mileage", get::text(L"Mileage"), set::text(L"Mileage")},
    FieldRow{L"Modify", get::date(L"LastModificationTime"), set::readOnly},
    FieldRow{L"NetMeetingAutoStart", get::boolean(L"NetMeetingAutoStart"),
             set::choice(L"NetMeetingAutoStart", kAutoStartLetters)},
    FieldRow{L"NetMeetingDocPathName", get::text(L"NetMeetingDocPathName"),
             set::text(L"NetMeetingDocPathName")},
    FieldRow{L"NetMeetingOfficeDocument", get::text(L"NetMeetingDocPathName"),
             set::text(L"NetMeetingDocPathName")},
    FieldRow{L"NetMeetingOrganizerAlias", get::named(L"NetMeeting Organizer Alias"),
             set::text(L"NetMeetingOrganizerAlias")},
    FieldRow{L"NetMeetingServer", get::text(L"NetMeetingServer"), set::text(L"NetMeetingServer")},
    FieldRow{L"NetMeetingType", get::words(L"NetMeetingType", kNetMeetingTypeWords),
             set::special(SetNetMeetingType)},
    FieldRow{L"NetShowURL", get::text(L"NetShowURL"), set::text(L"NetShowURL")},
    FieldRow{L"OptionalAttendees", kCatalogueOptional, set::special(SetAttendees, L"OptionalAttendees")},
    FieldRow{L"Organizer", get::special(GetOrganizer), set::readOnly},
    FieldRow{L"RecurrenceState", get::special(GetRecurrenceState), set::unknownName},
    FieldRow{L"RemindBeforehand", get::integer(L"ReminderMinutesBeforeStart"),
             set::number(L"ReminderMinutesBeforeStart")},
    FieldRow{L"Reminder", get::boolean(L"ReminderSet"), set::flagT(L"ReminderSet")},
    FieldRow{L"ReminderOverrideDefault", get::boolean(L"ReminderOverrideDefault"),
             set::flagT(L"ReminderOverrideDefault")},
    FieldRow{L"ReminderSound", get::boolean(L"ReminderPlaySound"), set::flagT(L"ReminderPlaySound")},
    FieldRow{L"ReminderSoundFile", get::text(L"ReminderSoundFile"), set::text(L"ReminderSoundFile")},
    FieldRow{L"RequiredAttendees", kCatalogueRequired, set::special(SetAttendees, L"RequiredAttendees")},
    // Written in one place and read from another.
    FieldRow{L"Resources", get::named(L"Appt. Location"), set::text(L"Resources")},
    FieldRow{L"ResponseRequested", get::boolean(L"ResponseRequested"), set::flagT(L"ResponseRequested")},
    FieldRow{L"Sensitivity", get::words(L"Sensitivity", kSensitivityWords),
             set::choice(L"Sensitivity", kSensitivityLetters)},
    FieldRow{L"Size", get::integer(L"Size"), set::readOnly},
    FieldRow{L"Start", get::date(L"Start"), set::special(SetLoggedDate, L"Start")},
    FieldRow{L"Subject", get::text(L"Subject"), set::text(L"Subject")},
};

constexpr Vocabulary kAppointment{
    .getterName = L"GetAppointmentFieldData",
    .setterName = L"SetAppointmentFieldData",
    .fields = kAppointmentFields,
    .cutsLineFeeds = true,
    .usesItemsMessage = true,
    .ignoresBlanks = true,
};

} // namespace

const Vocabulary& AppointmentVocabulary() {
    return kAppointment;
}

} // namespace varden
