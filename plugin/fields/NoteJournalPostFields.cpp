// The field vocabularies of notes, journal entries and posts.
#include "Vocabularies.h"

#include "frame/ErrorCodes.h"
#include "mapi/Tags.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

// --- Note
// ------------------------------------------------------------------------------------------------------------

constexpr std::array kNoteFields{
    FieldRow{L"Body", get::mapiText(mapi::tag::kBody), set::text(L"Body")},
    FieldRow{L"Categories", get::text(L"Categories"), set::text(L"Categories")},
    FieldRow{L"Color", get::integer(L"Color"), set::number(L"Color")},
    FieldRow{L"Form Name", get::text(L"MessageClass"), set::unknownName},
    FieldRow{L"Message Class", get::text(L"MessageClass"), set::unknownName},
    FieldRow{L"Subject", get::text(L"Subject"), set::unknownName},
};

// --- Journal entry
// ---------------------------------------------------------------------------------------------------

/// The test of the data is against a word that has just been written over it, so that the outcome doesn't
/// depend on the data: these fields can't be cleared.
bool SetAlwaysTrue(const FieldContext& context, const FieldRow& row, const std::wstring&) {
    context.item.PutProperty(row.set.member, outlook::BoolValue(true));
    return true;
}

bool SetAlwaysConfidential(const FieldContext& context, const FieldRow&, const std::wstring&) {
    constexpr long confidential = 3;
    context.item.PutProperty(L"Sensitivity", outlook::LongValue(confidential));
    return true;
}

constexpr std::array kJournalFields{
    FieldRow{L"Billing Information", get::text(L"BillingInformation"), set::text(L"BillingInformation")},
    FieldRow{L"Body", get::mapiText(mapi::tag::kBody), set::text(L"Body")},
    FieldRow{L"Categories", get::text(L"Categories"), set::text(L"Categories")},
    FieldRow{L"Companies", get::text(L"Companies"), set::text(L"Companies")},
    FieldRow{L"Contact Names", get::unknownName, set::text(L"ContactNames")},
    FieldRow{L"Conversation Index", get::text(L"ConversationIndex"), set::readOnly},
    FieldRow{L"Conversation Topic", get::text(L"ConversationTopic"), set::readOnly},
    FieldRow{L"Doc Posted", get::boolean(L"DocPosted"), set::special(SetAlwaysTrue, L"DocPosted")},
    FieldRow{L"Doc Printed", get::boolean(L"DocPrinted"), set::special(SetAlwaysTrue, L"DocPrinted")},
    FieldRow{L"Doc Routed", get::boolean(L"DocRouted"), set::special(SetAlwaysTrue, L"DocRouted")},
    FieldRow{L"Doc Saved", get::boolean(L"DocSaved"), set::special(SetAlwaysTrue, L"DocSaved")},
    FieldRow{L"Duration", get::integer(L"Duration"), set::number(L"Duration")},
    FieldRow{L"End", get::date(L"End"), set::date(L"End")},
    FieldRow{L"Form Name", get::text(L"MessageClass"), set::unknownName},
    FieldRow{L"Importance", get::words(L"Importance", kImportanceWords),
             set::choice(L"Importance", kImportanceLetters)},
    FieldRow{L"Is Conflict", get::boolean(L"IsConflict"), set::readOnly},
    FieldRow{L"Message Class", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"Mileage", get::text(L"Mileage"), set::text(L"Mileage")},
    FieldRow{L"No Aging", get::boolean(L"NoAging"), set::special(SetAlwaysTrue, L"NoAging")},
    FieldRow{L"Saved", get::boolean(L"Saved"), set::unknownName},
    FieldRow{L"Sensitivity", get::words(L"Sensitivity", kSensitivityWords),
             set::special(SetAlwaysConfidential)},
    FieldRow{L"Size", get::integer(L"Size"), set::readOnly},
    FieldRow{L"Start", get::date(L"Start"), set::date(L"Start")},
    FieldRow{L"Subject", get::text(L"Subject"), set::text(L"Subject")},
    FieldRow{L"Type", get::text(L"Type"), set::text(L"Type")},
    FieldRow{L"Unread", get::boolean(L"UnRead"), set::readOnly},
};

// --- Post
// ------------------------------------------------------------------------------------------------------------

constexpr std::array kBodyFormatByWord{EnumWord{2, L"HTML"}, EnumWord{1, L"Plain Text"},
                                       EnumWord{1, L"Plain"}, EnumWord{3, L"Rich Text"}};
constexpr EnumChoice kBodyFormatChoice{{}, kBodyFormatByWord};
constexpr std::array kSensitivityByWord{EnumWord{3, L"Confidential"}, EnumWord{0, L"Normal"},
                                        EnumWord{2, L"Private"}, EnumWord{1, L"Personal"}};
constexpr EnumChoice kSensitivityChoice{{}, kSensitivityByWord};

bool SetBody(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    return context.engine.mapi_SetOneProp(mapi::tag::kBody, data, context.message) != Stored::No;
}

/// The name is known, and nothing else happens.
bool Ignore(const FieldContext&, const FieldRow&, const std::wstring&) {
    return true;
}

bool SetNoAging(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    context.item.PutProperty(L"NoAging", outlook::BoolValue(data == L"True"));
    return true;
}

constexpr std::array kPostFields{
    FieldRow{L"Billing Information", get::text(L"BillingInformation"), set::text(L"BillingInformation")},
    FieldRow{L"Body", get::mapiText(mapi::tag::kBody), set::special(SetBody)},
    FieldRow{L"Body Format", get::words(L"BodyFormat", kBodyFormatWords),
             set::choice(L"BodyFormat", kBodyFormatChoice)},
    FieldRow{L"Categories", get::text(L"Categories"), set::text(L"Categories")},
    FieldRow{L"Companies", get::text(L"Companies"), set::text(L"Companies")},
    FieldRow{L"Conversation Index", get::text(L"ConversationIndex"), set::readOnly},
    FieldRow{L"Conversation Topic", get::text(L"ConversationTopic"), set::readOnly},
    FieldRow{L"EntryID", get::text(L"EntryID"), set::unknownName},
    FieldRow{L"Expires", get::date(L"ExpiryTime"), set::date(L"ExpiryTime")},
    FieldRow{L"Form Name", get::text(L"MessageClass"), set::unknownName},
    FieldRow{L"HTML Body", get::mapiBinary(mapi::tag::kHtml), set::text(L"HTMLBody")},
    FieldRow{L"Importance", get::words(L"Importance", kImportanceWords), set::special(Ignore)},
    FieldRow{L"Is Conflict", get::boolean(L"IsConflict"), set::readOnly},
    FieldRow{L"Last Modification Time", get::date(L"LastModificationTime"), set::unknownName},
    FieldRow{L"Message Class", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"Mileage", get::text(L"Mileage"), set::text(L"Mileage")},
    FieldRow{L"No Aging", get::boolean(L"NoAging"), set::special(SetNoAging)},
    FieldRow{L"Saved", get::boolean(L"Saved"), set::unknownName},
    FieldRow{L"Sender Name", get::mapiOne(mapi::tag::kSenderName), set::unknownName},
    FieldRow{L"Sensitivity", get::words(L"Sensitivity", kSensitivityWords),
             set::choice(L"Sensitivity", kSensitivityChoice)},
    FieldRow{L"Size", get::date(L"SentOn"), set::readOnly}, // a date, never a size
    FieldRow{L"Subject", get::text(L"Subject"), set::text(L"Subject")},
    FieldRow{L"Unread", get::boolean(L"UnRead"), set::readOnly},
};

constexpr Vocabulary kNote{.getterName = L"GetNoteFieldData", .fields = kNoteFields, .cutsLineFeeds = true};
constexpr Vocabulary kJournal{
    .getterName = L"GetJournalFieldData", .fields = kJournalFields, .cutsLineFeeds = true};
constexpr Vocabulary kPost{.getterName = L"GetAPostFieldData", .fields = kPostFields, .hasToDoFields = true};

} // namespace

const Vocabulary& NoteVocabulary() {
    return kNote;
}

const Vocabulary& JournalVocabulary() {
    return kJournal;
}

const Vocabulary& PostVocabulary() {
    return kPost;
}

} // namespace varden
