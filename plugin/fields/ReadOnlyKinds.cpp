// The field vocabularies of documents, remote, sharing and storage items: they are read and not written.
#include "Vocabularies.h"

#include "SharedFields.h"

#include "mapi/Tags.h"

#include <array>

namespace varden {

namespace {

// --- Document and remote
// ---------------------------------------------------------------------------------------------

constexpr std::array kDocumentOwnFields{
    FieldRow{L"Auto Resolved Winner", truthOrEmpty(L"AutoResolvedWinner")},
    FieldRow{L"EntryID", get::text(L"EntryID")},
    FieldRow{L"Mark for Download", get::words(L"MarkForDownload", kMarkForDownloadWords)},
    FieldRow{L"No Aging", get::boolean(L"NoAging")},
};
constexpr auto kDocumentFields = Joined(kUnwrittenFields, kDocumentOwnFields);

constexpr std::array kRemoteOwnFields{
    FieldRow{L"Remote Message Class", get::text(L"RemoteMessageClass")},
    FieldRow{L"Transfer Size", get::integer(L"TransferSize")},
    FieldRow{L"Transfer Time", get::integer(L"TransferTime")},
};
constexpr auto kRemoteFields = Joined(kDocumentFields, kRemoteOwnFields);

// --- Sharing
// ---------------------------------------------------------------------------------------------------------

constexpr std::array kPermission{EnumWord{0, L"unrestricted"}, EnumWord{1, L"do not forward"},
                                 EnumWord{2, L"template"}};
constexpr EnumWords kPermissionWords{kPermission};
constexpr std::array kPermissionService{EnumWord{0, L"unknown"}, EnumWord{1, L"windows"},
                                        EnumWord{2, L"passport"}};
constexpr EnumWords kPermissionServiceWords{kPermissionService};
/// No word for 1, and not the words of mail.
constexpr std::array kRemoteStatus{EnumWord{0, L"none"}, EnumWord{2, L"download"}, EnumWord{3, L"copy"},
                                   EnumWord{4, L"delete"}};
constexpr EnumWords kSharingRemoteStatusWords{kRemoteStatus};
constexpr std::array kSharingProvider{
    EnumWord{0, L"unknown"}, EnumWord{1, L"exchange"},   EnumWord{2, L"webcal"}, EnumWord{3, L"pubcal"},
    EnumWord{4, L"ical"},    EnumWord{5, L"sharepoint"}, EnumWord{6, L"rss"}};
constexpr EnumWords kSharingProviderWords{kSharingProvider};
constexpr std::array kSharingType{EnumWord{0, L"unknown"},       EnumWord{1, L"request"},
                                  EnumWord{2, L"inviation"},     EnumWord{3, L"invitationrequest"},
                                  EnumWord{4, L"responseallow"}, EnumWord{5, L"responsedeny"}};
constexpr EnumWords kSharingTypeWords{kSharingType};
constexpr std::array kRequestedFolder{
    EnumWord{3, L"Deleted Items"},
    EnumWord{4, L"Outbox"},
    EnumWord{5, L"Sent Mail"},
    EnumWord{6, L"Inbox"},
    EnumWord{9, L"Calendar"},
    EnumWord{10, L"Contacts"},
    EnumWord{11, L"Journal"},
    EnumWord{12, L"Notes"},
    EnumWord{13, L"Tasks"},
    EnumWord{16, L"Drafts"},
    EnumWord{18, L"All Public Folders"},
    EnumWord{19, L"Conflicts"},
    EnumWord{20, L"Sync Issues"},
    EnumWord{21, L"Local Failures"},
    EnumWord{22, L"Server Failures"},
    EnumWord{23, L"Junk"},
    EnumWord{25, L"Rss Feeds"},
    EnumWord{28, L"To Do"},
    EnumWord{29, L"Managed Email"},
};
constexpr EnumWords kRequestedFolderWords{kRequestedFolder};

constexpr std::array kSharingOwnFields{
    FieldRow{L"Allow Write Access", get::boolean(L"AllowWriteAccess")},
    FieldRow{L"Alternate Recipient Allowed", get::boolean(L"AlternateRecipientAllowed")},
    FieldRow{L"Body Format", get::words(L"BodyFormat", kBodyFormatWords)},
    FieldRow{L"Delete After Submit", get::boolean(L"DeleteAfterSubmit")},
    FieldRow{L"Enable Shared Attachments", get::boolean(L"EnableSharedAttachments")},
    FieldRow{L"EntryID", get::text(L"EntryID")},
    FieldRow{L"Expires", get::date(L"ExpiryTime")},
    FieldRow{L"Expiry Time", get::date(L"ExpiryTime")},
    FieldRow{L"Flag Icon", get::special(GetFlagIcon)},
    FieldRow{L"Flag Request", get::text(L"FlagRequest")},
    FieldRow{L"Flag Status", get::words(L"FlagStatus", kFlagStatusWords)},
    FieldRow{L"HTML Body", get::mapiBinary(mapi::tag::kHtml)},
    FieldRow{L"Mark for Download", get::words(L"MarkForDownload", kMarkForDownloadWords)},
    FieldRow{L"No Aging", get::boolean(L"NoAging")},
    FieldRow{L"Originator Delivery Report Requested", get::boolean(L"OriginatorDeliveryReportRequested")},
    FieldRow{L"Permission", get::words(L"Permission", kPermissionWords)},
    FieldRow{L"Permission Service", get::words(L"PermissionService", kPermissionServiceWords)},
    FieldRow{L"Read Receipt Requested", get::boolean(L"ReadReceiptRequested")},
    FieldRow{L"Recipient Reassignment Prohibited", get::boolean(L"RecipientReassignmentProhibited")},
    FieldRow{L"Reminder Override Default", get::boolean(L"ReminderOverrideDefault")},
    FieldRow{L"Reminder Play Sound", get::boolean(L"ReminderPlaySound")},
    FieldRow{L"Reminder Set", get::boolean(L"ReminderSet")},
    FieldRow{L"Reminder Sound File", get::text(L"ReminderSoundFile")},
    FieldRow{L"Remote ID", get::text(L"RemoteID")},
    FieldRow{L"Remote Name", get::text(L"RemoteName")},
    FieldRow{L"Remote Path", get::text(L"RemotePath")},
    FieldRow{L"Remote Status", get::words(L"RemoteStatus", kSharingRemoteStatusWords)},
    FieldRow{L"Reply Recipient Names", get::text(L"ReplyRecipientNames")},
    FieldRow{L"Requested Folder", get::words(L"RequestedFolder", kRequestedFolderWords)},
    FieldRow{L"Sender Name", get::mapiOne(mapi::tag::kSenderName)},
    FieldRow{L"Sent", get::boolean(L"Sent")},
    FieldRow{L"Sharing Provider", get::words(L"SharingProvider", kSharingProviderWords)},
    FieldRow{L"Submitted", get::boolean(L"Submitted")},
    FieldRow{L"Type", get::words(L"Type", kSharingTypeWords)},
};
constexpr auto kSharingFields = Joined(kUnwrittenFields, kSharingOwnFields);

// --- Storage
// ---------------------------------------------------------------------------------------------------------

constexpr std::array kStorageFields{
    FieldRow{L"Body", get::mapiText(mapi::tag::kBody)},
    FieldRow{L"Class", get::integer(L"Class")},
    FieldRow{L"Creator", get::text(L"Creator")},
    FieldRow{L"Entry ID", get::text(L"EntryID")},
    FieldRow{L"ID", get::text(L"EntryID")},
    FieldRow{L"In Folder", get::special(GetInFolder)},
    FieldRow{L"Parent", get::special(GetInFolder)},
    FieldRow{L"Size", get::integer(L"Size")},
    FieldRow{L"Subject", get::text(L"Subject")},
};

constexpr Vocabulary kDocument{.getterName = L"GetDocumentFieldData", .fields = kDocumentFields};
constexpr Vocabulary kRemote{.getterName = L"GetRemoteFieldData", .fields = kRemoteFields};
constexpr Vocabulary kSharing{
    .getterName = L"GetSharingFieldData", .fields = kSharingFields, .hasToDoFields = true};
constexpr Vocabulary kStorage{.getterName = L"GetStorageFieldData", .fields = kStorageFields};

} // namespace

const Vocabulary& DocumentVocabulary() {
    return kDocument;
}

const Vocabulary& RemoteVocabulary() {
    return kRemote;
}

const Vocabulary& SharingVocabulary() {
    return kSharing;
}

const Vocabulary& StorageVocabulary() {
    return kStorage;
}

} // namespace varden
