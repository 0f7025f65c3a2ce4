// The catalogue of field names, and the look-up of named properties on a message.
#include "PropertyCatalogue.h"

#include "Ownership.h"
#include "PropertySets.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace varden {

namespace {

/// A field with a tag of its own.
struct FixedRow {
    std::wstring_view fieldName;
    ULONG tag;
};

// Several names share a tag on purpose. "Received Time" and "Sent On" both read the delivery time.
constexpr std::array kFixedTags{
    FixedRow{L"Account", 0x3A00001F},
    FixedRow{L"Anniversary", 0x3A410040},
    FixedRow{L"Assistant's Name", 0x3A30001F},
    FixedRow{L"Assistant's Phone", 0x3A2E001F},
    FixedRow{L"Auto Forwarded", 0x0005000B},
    FixedRow{L"Bcc", 0x0E02001F},
    FixedRow{L"Birthday", 0x3A420040},
    FixedRow{L"Body", 0x1000001F},
    FixedRow{L"Business Fax", 0x3A24001F},
    FixedRow{L"Business Home Page", 0x3A51001F},
    FixedRow{L"Business Phone", 0x3A08001F},
    FixedRow{L"Business Phone 2", 0x3A1B001F},
    FixedRow{L"Callback", 0x3A02001F},
    FixedRow{L"Car Phone", 0x3A1E001F},
    FixedRow{L"Cc", 0x0E03001F},
    FixedRow{L"Children", 0x3A58101F},
    FixedRow{L"Company", 0x3A16001F},
    FixedRow{L"Company Main Phone", 0x3A57001F},
    FixedRow{L"Computer Network Name", 0x3A49001F},
    FixedRow{L"Conversation Index", 0x00710102},
    FixedRow{L"Conversation Topic", 0x0070001F},
    FixedRow{L"Created", 0x30070040},
    FixedRow{L"Creation Time", 0x30070040},
    FixedRow{L"Customer ID", 0x3A4A001F},
    FixedRow{L"Creator Name", 0x3FF8001F},
    FixedRow{L"Department", 0x3A18001F},
    FixedRow{L"EntryID", 0x0FFF0102},
    FixedRow{L"Expires", 0x00150040},
    FixedRow{L"First Name", 0x3A06001F},
    FixedRow{L"Flag Icon", 0x10950003},
    FixedRow{L"Flag Status", 0x10900003},
    FixedRow{L"Form Name", 0x001A001F},
    FixedRow{L"From", 0x0C1A001F},
    FixedRow{L"From1", 0x0C1A001F},
    FixedRow{L"From2", 0x0C1A001F},
    FixedRow{L"FTP Site", 0x3A4C001F},
    FixedRow{L"Full Name", 0x3001001F},
    FixedRow{L"Gender", 0x3A4D0002},
    FixedRow{L"Government ID Number", 0x3A07001F},
    FixedRow{L"Header", 0x007D001F},
    FixedRow{L"Hobbies", 0x3A43001F},
    FixedRow{L"Home Address City", 0x3A59001F},
    FixedRow{L"Home Address Country", 0x3A5A001F},
    FixedRow{L"Home Address PO Box", 0x3A5E001F},
    FixedRow{L"Home Address Postal Code", 0x3A5B001F},
    FixedRow{L"Home Address State", 0x3A5C001F},
    FixedRow{L"Home Address Street", 0x3A5D001F},
    FixedRow{L"Home Fax", 0x3A25001F},
    FixedRow{L"Home Phone", 0x3A09001F},
    FixedRow{L"Home Phone 2", 0x3A2F001F},
    FixedRow{L"HTML Body", 0x10130102},
    FixedRow{L"ID", 0x0FFF0102},
    FixedRow{L"Importance", 0x00170003},
    FixedRow{L"In Folder", 0x0E090102},
    FixedRow{L"ISDN", 0x3A2D001F},
    FixedRow{L"Job Title", 0x3A17001F},
    FixedRow{L"Language", 0x3A0C001F},
    FixedRow{L"Last Modification Time", 0x30080040},
    FixedRow{L"Last Name", 0x3A11001F},
    FixedRow{L"Location", 0x3A0D001F},
    FixedRow{L"Mailing Address", 0x3A15001F},
    FixedRow{L"Manager's Name", 0x3A4E001F},
    FixedRow{L"Middle Name", 0x3A44001F},
    FixedRow{L"Mobile Phone", 0x3A1C001F},
    FixedRow{L"Modify", 0x30080040},
    FixedRow{L"Nickname", 0x3A4F001F},
    FixedRow{L"Office Location", 0x3A19001F},
    FixedRow{L"Optional Attendees", 0x0E03001F},
    FixedRow{L"Organizational ID Number", 0x3A10001F},
    FixedRow{L"Organizer", 0x0C1A001F},
    FixedRow{L"Originator Delivery Requested", 0x0023000B},
    FixedRow{L"Other Address City", 0x3A5F001F},
    FixedRow{L"Other Address Country", 0x3A60001F},
    FixedRow{L"Other Address PO Box", 0x3A64001F},
    FixedRow{L"Other Address Postal Code", 0x3A61001F},
    FixedRow{L"Other Address State", 0x3A62001F},
    FixedRow{L"Other Address Street", 0x3A63001F},
    FixedRow{L"Other Fax", 0x3A23001F},
    FixedRow{L"Other Phone", 0x3A1F001F},
    FixedRow{L"Pager", 0x3A21001F},
    FixedRow{L"Personal Home Page", 0x3A50001F},
    FixedRow{L"Primary Phone", 0x3A1A001F},
    FixedRow{L"Profession", 0x3A46001F},
    FixedRow{L"Radio Phone", 0x3A1D001F},
    FixedRow{L"Receipt Requested", 0x0029000B},
    FixedRow{L"Received Time", 0x0E060040},
    FixedRow{L"Referred By", 0x3A47001F},
    FixedRow{L"Remote Status", 0x3E0B0003},
    FixedRow{L"Required Attendees", 0x0E04001F},
    FixedRow{L"Resources", 0x0E02001F},
    FixedRow{L"Response Requested", 0x0063000B},
    FixedRow{L"RTF Body", 0x10090102},
    FixedRow{L"Sender Name", 0x0C1A001F},
    FixedRow{L"Sensitivity", 0x00360003},
    FixedRow{L"Sent On", 0x0E060040},
    FixedRow{L"Size", 0x0E080003},
    FixedRow{L"Spouse", 0x3A48001F},
    FixedRow{L"Subject", 0x0037001F},
    FixedRow{L"Suffix", 0x3A05001F},
    FixedRow{L"Telex", 0x3A2C001F},
    FixedRow{L"Title", 0x3A45001F},
    FixedRow{L"To", 0x0E04001F},
    FixedRow{L"TTY/TDD Phone", 0x3A4B001F},
    FixedRow{L"Unread", 0x0E070003},
};

/// A field whose id each store gives: by a number, or by a name where there is one.
struct NamedRow {
    std::wstring_view fieldName;
    const GUID& propertySet;
    LONG id;
    const wchar_t* name = nullptr;
};

namespace set = mapi::propertyset;

constexpr std::array kNamedProperties{
    NamedRow{L"% Complete", set::kTask, 0x8102},
    NamedRow{L"Actual Work", set::kTask, 0x8110},
    NamedRow{L"All Day Event", set::kAppointment, 0x8215},
    NamedRow{L"Appt. Location", set::kAppointment, 0x8208},
    NamedRow{L"Billing Information", set::kCommon, 0x8535},
    NamedRow{L"Business Address", set::kAddress, 0x801B},
    NamedRow{L"Business Address City", set::kAddress, 0x8046},
    NamedRow{L"Business Address Country", set::kAddress, 0x8049},
    NamedRow{L"Business Address PO Box", set::kAddress, 0x804A},
    NamedRow{L"Business Address Postal Code", set::kAddress, 0x8048},
    NamedRow{L"Business Address State", set::kAddress, 0x8047},
    NamedRow{L"Business Address Street", set::kAddress, 0x8045},
    NamedRow{L"Busy Status", set::kAppointment, 0x8205},
    NamedRow{L"Categories", set::kPublicStrings, 0, L"Keywords"},
    NamedRow{L"Color", set::kNote, 0x8B00},
    NamedRow{L"Companies", set::kCommon, 0x8539},
    NamedRow{L"Complete", set::kTask, 0x811C},
    NamedRow{L"Contacts", set::kCommon, 0x853A},
    NamedRow{L"Date Completed", set::kTask, 0x810F},
    NamedRow{L"DLName", set::kAddress, 0x8053},
    NamedRow{L"Doc Posted", set::kLog, 0x8711},
    NamedRow{L"Doc Printed", set::kLog, 0x870E},
    NamedRow{L"Doc Saved", set::kLog, 0x870F},
    NamedRow{L"Due Date", set::kTask, 0x8105},
    NamedRow{L"Duration", set::kAppointment, 0x8213},
    NamedRow{L"E-mail", set::kAddress, 0x8083},
    NamedRow{L"E-mail 2", set::kAddress, 0x8093},
    NamedRow{L"E-mail 2 Address Type", set::kAddress, 0x8092},
    NamedRow{L"E-mail 2 Display As", set::kAddress, 0x8090},
    NamedRow{L"E-mail 3", set::kAddress, 0x80A3},
    NamedRow{L"E-mail 3 Address Type", set::kAddress, 0x80A2},
    NamedRow{L"E-mail 3 Display As", set::kAddress, 0x80A0},
    NamedRow{L"E-mail Address Type", set::kAddress, 0x8082},
    NamedRow{L"E-mail Display As", set::kAddress, 0x8080},
    NamedRow{L"End", set::kAppointment, 0x820E},
    NamedRow{L"File As", set::kAddress, 0x8005},
    NamedRow{L"Flag Due By", set::kCommon, 0x8560},
    NamedRow{L"Home Address", set::kAddress, 0x801A},
    NamedRow{L"Hide Attachments", set::kCommon, 0x8514},
    NamedRow{L"IM Address", set::kAddress, 0x8062},
    NamedRow{L"Internet Free/Busy Address", set::kAddress, 0x80D8},
    NamedRow{L"IsRecurring", set::kAppointment, 0x8223},
    NamedRow{L"Journal", set::kAddress, 0x8025},
    NamedRow{L"Journal Duration", set::kLog, 0x8707},
    NamedRow{L"Journal End", set::kLog, 0x8708},
    NamedRow{L"Journal Start", set::kLog, 0x8706},
    NamedRow{L"Label", set::kAppointment, 0x8214},
    NamedRow{L"Meeting Status", set::kAppointment, 0x8217},
    NamedRow{L"Members", set::kAddress, 0x8055},
    NamedRow{L"Mileage", set::kCommon, 0x8534},
    NamedRow{L"NetMeeting AutoStart", set::kAppointment, 0x8244},
    NamedRow{L"NetMeeting Office Document", set::kAppointment, 0x8247},
    NamedRow{L"NetMeeting Organizer Alias", set::kAppointment, 0x8243},
    NamedRow{L"NetMeeting Server", set::kAppointment, 0x8242},
    NamedRow{L"No Aging", set::kCommon, 0x850E},
    NamedRow{L"OneOffMembers", set::kAddress, 0x8054},
    NamedRow{L"Other Address", set::kAddress, 0x801C},
    NamedRow{L"Owner", set::kTask, 0x811F},
    NamedRow{L"Private", set::kCommon, 0x8506},
    NamedRow{L"Recurrence", set::kTask, 0x8116},
    NamedRow{L"RecurrenceState", set::kAppointment, 0x8216},
    NamedRow{L"Remind Beforehand", set::kCommon, 0x8501},
    NamedRow{L"Reminder", set::kCommon, 0x8503},
    NamedRow{L"Reminder Override Default", set::kCommon, 0x851C},
    NamedRow{L"Reminder Sound", set::kCommon, 0x851E},
    NamedRow{L"Reminder Sound File", set::kCommon, 0x851F},
    NamedRow{L"Reminder Time", set::kCommon, 0x8502},
    NamedRow{L"Role", set::kTask, 0x8127},
    NamedRow{L"Schedule + Priority", set::kTask, 0x812F},
    NamedRow{L"Start", set::kAppointment, 0x820D},
    NamedRow{L"Start Date", set::kTask, 0x8104},
    NamedRow{L"Status", set::kTask, 0x8101},
    NamedRow{L"TaskDeadOccur", set::kTask, 0x8109},
    NamedRow{L"Team Task", set::kTask, 0x8103},
    NamedRow{L"TimeZone", set::kAppointment, 0x8234},
    NamedRow{L"Total Work", set::kTask, 0x8111},
    NamedRow{L"Type", set::kLog, 0x8700},
    NamedRow{L"Use TNEF", set::kCommon, 0x8582},
    NamedRow{L"User Field 1", set::kAddress, 0x804F},
    NamedRow{L"User Field 2", set::kAddress, 0x8050},
    NamedRow{L"User Field 3", set::kAddress, 0x8051},
    NamedRow{L"User Field 4", set::kAddress, 0x8052},
    NamedRow{L"Voting Response", set::kCommon, 0x8524},
    NamedRow{L"Web Page", set::kAddress, 0x802B},
    NamedRow{L"FInvited", set::kAppointment, 0x8229},
    NamedRow{L"aLocation", set::kAppointment, 0x8208},
    NamedRow{L"Response Status", set::kAppointment, 0x8218},
    NamedRow{L"DoVerb", set::kCommon, 0x8510},
    NamedRow{L"pidLidTaskGlobalID", set::kCommon, 0x8519},
    NamedRow{L"pidLidTaskMode", set::kCommon, 0x8518},
    NamedRow{L"aContactList", set::kCommon, 0x8586},
    NamedRow{L"aContactEntryIDs", set::kCommon, 0x8585},
    NamedRow{L"PreviousOptionalAtts", set::kCommon, 0x823C},
    NamedRow{L"PreviousRequiredAtts", set::kCommon, 0x823B},
    NamedRow{L"PreviousLocation", set::kMeeting, 0x0028},
};

/// Hands the name to MAPI in blocks of its own, as MAPI's callers do, and asks for its tag.
HRESULT FindTag(const GUID& propertySet, LONG id, const wchar_t* name, ULONG& tag, IMAPIProp* message) {
    const auto nameId = mapi::AllocateBlock<MAPINAMEID>();
    const auto guid = mapi::AllocateBlock<GUID>();
    *guid = propertySet;
    nameId->lpguid = guid.get();
    if (name) {
        nameId->ulKind = MNID_STRING;
        nameId->Kind.lpwstrName = const_cast<LPWSTR>(name);
    } else {
        nameId->ulKind = MNID_ID;
        nameId->Kind.lID = id;
    }
    return mapi_TagFromNameId(*nameId, tag, 0, message);
}

} // namespace

bool mapi_PropTagFromFieldName(std::wstring_view fieldName, ULONG& tag, IMAPIProp* message) {
    return SUCCEEDED(mapi_FindPropTag(fieldName, tag, message));
}

HRESULT mapi_FindPropTag(std::wstring_view fieldName, ULONG& tag, IMAPIProp* message) {
    if (const auto row = std::ranges::find(kFixedTags, fieldName, &FixedRow::fieldName);
        row != kFixedTags.end()) {
        tag = row->tag;
        return S_OK;
    }
    const auto row = std::ranges::find(kNamedProperties, fieldName, &NamedRow::fieldName);
    return row == kNamedProperties.end() ? E_INVALIDARG
                                         : FindTag(row->propertySet, row->id, row->name, tag, message);
}

HRESULT mapi_TagFromNameId(MAPINAMEID& nameId, ULONG& tag, ULONG flags, IMAPIProp* message) {
    if (!message) {
        throw mapi::Unavailable("no message to look a name up on");
    }
    LPMAPINAMEID names = &nameId;
    mapi::Block<SPropTagArray> tags;
    const HRESULT status = message->GetIDsFromNames(1, &names, flags, tags.Out());
    if (SUCCEEDED(status) && tags) {
        tag = tags->aulPropTag[0];
    }
    return status;
}

ULONG mapi_TypedTag(std::wstring_view fieldName, ULONG type, IMAPIProp& message) {
    ULONG tag = 0;
    mapi_PropTagFromFieldName(fieldName, tag, &message);
    return CHANGE_PROP_TYPE(tag, type);
}

bool mapi_PublicStringToPropTag(const std::wstring& name, ULONG& tag, IMAPIProp* message) {
    return SUCCEEDED(FindTag(set::kPublicStrings, 0, name.c_str(), tag, message));
}

} // namespace varden
