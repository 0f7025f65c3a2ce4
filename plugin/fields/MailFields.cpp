// The field vocabulary of a mail. The sender's fields stand in SenderFields.cpp.
#include "Vocabularies.h"

#include "SenderFields.h"
#include "SharedFields.h"

#include "frame/ErrorCodes.h"
#include "frame/Text.h"
#include "mapi/Tags.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

constexpr std::array kBodyFormatByLetter{EnumLetter{L'H', 2}, EnumLetter{L'P', 1}, EnumLetter{L'R', 3},
                                         EnumLetter{L'U', 0}};
constexpr EnumChoice kBodyFormatLetters{kBodyFormatByLetter, {}};

bool IsOutlook10(const FieldContext& context) {
    return context.engine.ApplicationObject().Version().starts_with(L"10");
}

bool SetRecipients(const FieldContext& context, const FieldRow& row, const std::wstring& data) {
    context.item.PutProperty(row.set.member, outlook::TextValue(Replaced(data, L',', L';')));
    return true;
}

bool SetBody(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    context.item.PutProperty(L"Body", outlook::TextValue(data));
    if (IsOutlook10(context)) {
        context.item.PutProperty(L"BodyFormat", outlook::LongValue(outlook::olFormatRichText));
    }
    return true;
}

/// From Outlook 11 on the value isn't even looked at.
bool SetBodyFormat(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    if (!IsOutlook10(context)) {
        return true;
    }
    const auto format = Choose(data, kBodyFormatLetters);
    if (!format) {
        return Refuse(error::kFieldValue);
    }
    context.item.PutProperty(L"BodyFormat", outlook::LongValue(*format));
    return true;
}

bool SetHtmlBody(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    context.item.PutProperty(L"Body", outlook::TextValue(L" "));
    context.item.PutProperty(L"HTMLBody", outlook::TextValue(data));
    // Anywhere in the version: a build number that holds "10" is enough.
    if (context.engine.ApplicationObject().Version().find(L"10") != std::wstring::npos) {
        context.item.PutProperty(L"BodyFormat", outlook::LongValue(outlook::olFormatHTML));
    }
    return true;
}

/// The text, or, where it can't be read, the reason: a failure is no error here.
std::wstring GetRtfBody(const FieldContext& context, const FieldRow& row) {
    std::wstring text;
    context.engine.mapi_GetBinaryField(row.get.tag, text, context.message);
    return text;
}

constexpr FieldSet kRefused = set::refused(error::kFieldValue);

constexpr FieldGet RtfBody() {
    FieldGet row = get::special(GetRtfBody);
    row.tag = mapi::tag::kRtfCompressed;
    return row;
}

// To, Cc, Bcc, the sender's names, the dates and the header are read by the fields that all kinds have in
// common.
constexpr std::array kMailFields{
    FieldRow{L"Header", get::unknownName, kRefused},
    FieldRow{L"Received Time", get::unknownName, kRefused},
    FieldRow{L"RTF Body", RtfBody(), kRefused},
    FieldRow{L"Sent On", get::unknownName, kRefused},
    FieldRow{L"Auto Forwarded", get::boolean(L"AutoForwarded"), set::flagT(L"AutoForwarded")},
    FieldRow{L"Bcc", get::unknownName, set::special(SetRecipients, L"BCC")},
    FieldRow{L"Billing Information", get::text(L"BillingInformation"), set::text(L"BillingInformation")},
    FieldRow{L"Body", get::special(GetBodyWithLineFeeds), set::special(SetBody)},
    FieldRow{L"Body Format", get::words(L"BodyFormat", kBodyFormatWords), set::special(SetBodyFormat)},
    FieldRow{L"Categories", get::text(L"Categories"), set::text(L"Categories")},
    FieldRow{L"Cc", get::unknownName, set::special(SetRecipients, L"CC")},
    FieldRow{L"Conversation Index", get::text(L"ConversationIndex"), set::readOnly},
    FieldRow{L"Conversation Topic", get::text(L"ConversationTopic"), set::readOnly},
    FieldRow{L"Defer Until", get::date(L"DeferredDeliveryTime"), set::date(L"DeferredDeliveryTime")},
    FieldRow{L"Expires", get::date(L"ExpiryTime"), set::date(L"ExpiryTime")},
    FieldRow{L"Flag Icon", get::special(GetFlagIcon), set::special(SetFlagIcon)},
    FieldRow{L"Flag Status", get::words(L"FlagStatus", kFlagStatusWords), set::special(SetFlagStatus)},
    FieldRow{L"Form Name", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"From", get::unknownName, set::special(SetFrom)},
    FieldRow{L"HTML Body", get::text(L"HTMLBody"), set::special(SetHtmlBody)},
    FieldRow{L"ID", get::text(L"EntryID"), set::readOnly},
    FieldRow{L"Importance", get::words(L"Importance", kImportanceWords),
             set::choice(L"Importance", kImportanceLetters)},
    FieldRow{L"In Folder", get::special(GetInFolder), set::readOnly},
    FieldRow{L"Message Class", get::text(L"MessageClass"), set::unknownName},
    FieldRow{L"Mileage", get::text(L"Mileage"), set::text(L"Mileage")},
    FieldRow{L"Originator Delivery Requested", get::boolean(L"OriginatorDeliveryReportRequested"),
             set::flagT(L"OriginatorDeliveryReportRequested")},
    FieldRow{L"Receipt Requested", get::boolean(L"ReadReceiptRequested"),
             set::flagT(L"ReadReceiptRequested")},
    FieldRow{L"Remote Status", get::words(L"RemoteStatus", kRemoteStatusWords),
             set::choice(L"RemoteStatus", kRemoteStatusChoice)},
    FieldRow{L"Send On Behalf Of", get::unknownName, set::special(SetSendOnBehalfOf)},
    FieldRow{L"Sensitivity", get::words(L"Sensitivity", kSensitivityWords),
             set::choice(L"Sensitivity", kSensitivityLetters)},
    FieldRow{L"Size", get::integer(L"Size"), set::readOnly},
    FieldRow{L"Subject", get::text(L"Subject"), set::text(L"Subject")},
    FieldRow{L"To", get::unknownName, set::special(SetRecipients, L"To")},
    FieldRow{L"Unread", get::boolean(L"UnRead"), set::readOnly},
    FieldRow{L"Voting Response", get::text(L"VotingResponse"), set::text(L"VotingResponse")},
};

constexpr Vocabulary kMail{
    .getterName = L"GetMailFieldData",
    .setterName = L"SetMailField",
    .fields = kMailFields,
    .hasToDoFields = true,
    .tellsFields = true,
};

} // namespace

const Vocabulary& MailVocabulary() {
    return kMail;
}

} // namespace varden
