// The field vocabularies of the messages that Outlook makes for itself: meetings, reports, task requests.
#include "Vocabularies.h"

#include "SharedFields.h"

#include "frame/ErrorCodes.h"
#include "mapi/Tags.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

// --- Meeting
// ---------------------------------------------------------------------------------------------------------

constexpr std::array kFlagIcon{EnumWord{0, L"None"},  EnumWord{1, L"Purple"}, EnumWord{2, L"Orange"},
                               EnumWord{3, L"Green"}, EnumWord{4, L"Yellow"}, EnumWord{5, L"Blue"},
                               EnumWord{6, L"Red"}};
constexpr EnumWords kFlagIconWords{kFlagIcon};

/// A reading that moves the current record from the meeting to its appointment.
std::wstring GetAssociatedAppointment(const FieldContext& context, const FieldRow&) {
    return context.engine.TakeAssociatedAppointment();
}

constexpr FieldSet kReadOnlyHere = set::refused(error::kReadOnly);

constexpr std::array kMeetingFields{
    FieldRow{L"Associated Appointment", get::special(GetAssociatedAppointment), kReadOnlyHere},
    FieldRow{L"Sent Date", get::unknownName, kReadOnlyHere},
    FieldRow{L"Reminder Time", get::unknownName, kReadOnlyHere},
    FieldRow{L"Reminder Set", get::boolean(L"ReminderSet"), kReadOnlyHere},
    FieldRow{L"Received", get::date(L"ReceivedTime"), kReadOnlyHere},
    FieldRow{L"Is Submitted", get::boolean(L"Submitted"), kReadOnlyHere},
    FieldRow{L"Is Sent", get::boolean(L"Sent"), kReadOnlyHere},
    FieldRow{L"Billing Information", get::text(L"BillingInformation"), set::text(L"BillingInformation")},
    FieldRow{L"Body", get::special(GetBodyWithLineFeeds), set::text(L"Body")},
    FieldRow{L"Categories", get::text(L"Categories"), set::text(L"Categories")},
    FieldRow{L"Class", get::integer(L"Class"), set::readOnly},
    FieldRow{L"Companies", get::text(L"Companies"), set::text(L"Companies")},
    FieldRow{L"Conversation Index", get::text(L"ConversationIndex"), set::readOnly},
    FieldRow{L"Conversation Topic", get::text(L"ConversationTopic"), set::readOnly},
    FieldRow{L"Due Date", get::date(L"FlagDueBy"), set::date(L"FlagDueBy")},
    FieldRow{L"Expiry Time", get::date(L"ExpiryTime"), set::date(L"ExpiryTime")},
    FieldRow{L"Flag Icon", get::words(L"FlagIcon", kFlagIconWords), set::special(SetFlagIcon)},
    FieldRow{L"Flag Request", get::text(L"FlagRequest"), set::text(L"FlagRequest")},
    FieldRow{L"Flag Status", get::words(L"FlagStatus", kFlagStatusWords), set::special(SetFlagStatus)},
    FieldRow{L"Form Name", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"From Name", get::mapiOne(mapi::tag::kSenderName), set::unknownName},
    FieldRow{L"ID", get::text(L"EntryID"), set::readOnly},
    FieldRow{L"Importance", get::words(L"Importance", kImportanceWords),
             set::choice(L"Importance", kImportanceLetters)},
    FieldRow{L"Is Conflict", get::boolean(L"IsConflict"), set::readOnly},
    FieldRow{L"Last Modifier Name", get::mapiOne(mapi::tag::kLastModifierNameA), set::unknownName},
    FieldRow{L"Message Class", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"Mileage", get::text(L"Mileage"), set::text(L"Mileage")},
    FieldRow{L"Sensitivity", get::words(L"Sensitivity", kSensitivityWords),
             set::choice(L"Sensitivity", kSensitivityLetters)},
    FieldRow{L"Size", get::integer(L"Size"), set::readOnly},
    FieldRow{L"Subject", get::text(L"Subject"), set::text(L"Subject")},
};

// --- Report and task request
// -----------------------------------------------------------------------------------------

constexpr FieldRow kReportBody{L"Body", get::text(L"Body"), set::text(L"Body")};
constexpr FieldRow kTaskRequestBody{L"Body", get::mapiText(mapi::tag::kBody), set::text(L"Body")};

/// One vocabulary but for two rows.
constexpr auto ReportLikeFields(const FieldRow& body, const FieldSet& setCompanies) {
    return std::array{
        FieldRow{L"Billing Information", get::text(L"BillingInformation"), set::text(L"BillingInformation")},
        body,
        FieldRow{L"Categories", get::text(L"Categories"), set::text(L"Categories")},
        FieldRow{L"Class", get::integer(L"Class"), set::readOnly},
        FieldRow{L"Companies", get::text(L"Companies"), setCompanies},
        FieldRow{L"Company", get::unknownName, set::text(L"Companies")},
        FieldRow{L"Conversation Index", get::text(L"ConversationIndex"), set::readOnly},
        FieldRow{L"Conversation Topic", get::text(L"ConversationTopic"), set::readOnly},
        FieldRow{L"Form Name", get::text(L"MessageClass"), set::text(L"MessageClass")},
        FieldRow{L"ID", get::text(L"EntryID"), set::readOnly},
        FieldRow{L"Importance", get::words(L"Importance", kImportanceWords),
                 set::choice(L"Importance", kImportanceLetters)},
        FieldRow{L"In Folder", get::special(GetInFolder), set::readOnly},
        FieldRow{L"Is Conflict", get::boolean(L"IsConflict"), set::readOnly},
        FieldRow{L"Message Class", get::text(L"MessageClass"), set::unknownName},
        FieldRow{L"Mileage", get::text(L"Mileage"), set::text(L"Mileage")},
        FieldRow{L"Sensitivity", get::words(L"Sensitivity", kSensitivityWords),
                 set::choice(L"Sensitivity", kSensitivityLetters)},
        FieldRow{L"Size", get::integer(L"Size"), set::readOnly},
        FieldRow{L"Subject", get::text(L"Subject"), set::text(L"Subject")},
        FieldRow{L"Unread", get::boolean(L"UnRead"), set::readOnly},
    };
}

constexpr auto kReportFields = ReportLikeFields(kReportBody, set::text(L"Companies"));
constexpr auto kTaskRequestFields = ReportLikeFields(kTaskRequestBody, set::unknownName);

// --- Answers to a task request: accepted, declined, updated
// ----------------------------------------------------------

/// The three differ in how one name is spelled.
constexpr auto AnswerFields(std::wstring_view markForDownload) {
    return Joined(kUnwrittenFields,
                  std::array{
                      FieldRow{L"Auto Resolved Winner", truthOrEmpty(L"AutoResolvedWinner")},
                      FieldRow{L"Entry ID", get::text(L"EntryID")},
                      FieldRow{L"ID", get::text(L"EntryID")},
                      FieldRow{L"In Folder", get::special(GetInFolder)},
                      FieldRow{markForDownload, get::words(L"MarkForDownload", kMarkForDownloadWords)},
                      FieldRow{L"No Aging", truthOrEmpty(L"NoAging")},
                      FieldRow{L"Parent", get::special(GetInFolder)},
                  });
}

constexpr auto kAcceptFields = AnswerFields(L"Mark for Download");
constexpr auto kDeclineFields = AnswerFields(L"Mark For Download");
constexpr auto kUpdateFields = AnswerFields(L"Mark For Download");

constexpr Vocabulary kMeeting{.getterName = L"GetMeetingFieldData", .fields = kMeetingFields};
constexpr Vocabulary kReport{.getterName = L"GetReportFieldData", .fields = kReportFields};
constexpr Vocabulary kTaskRequest{.getterName = L"GetTaskRequestFieldData", .fields = kTaskRequestFields};
constexpr Vocabulary kTaskRequestAccept{.getterName = L"GetTaskRequestAcceptFieldData",
                                        .fields = kAcceptFields};
constexpr Vocabulary kTaskRequestDecline{.getterName = L"GetTaskRequestDeclineFieldData",
                                         .fields = kDeclineFields};
constexpr Vocabulary kTaskRequestUpdate{.getterName = L"GetTaskRequestUpdateFieldData",
                                        .fields = kUpdateFields};

} // namespace

const Vocabulary& MeetingVocabulary() {
    return kMeeting;
}

const Vocabulary& ReportVocabulary() {
    return kReport;
}

const Vocabulary& TaskRequestVocabulary() {
    return kTaskRequest;
}

const Vocabulary& TaskRequestAcceptVocabulary() {
    return kTaskRequestAccept;
}

const Vocabulary& TaskRequestDeclineVocabulary() {
    return kTaskRequestDecline;
}

const Vocabulary& TaskRequestUpdateVocabulary() {
    return kTaskRequestUpdate;
}

} // namespace varden
