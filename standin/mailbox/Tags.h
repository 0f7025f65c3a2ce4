// Property tags that the platform's mapitags.h doesn't have ([MS-OXPROPS]), and the property sets of named
// ones.
#pragma once

#include "standin/mailbox/Property.h"

namespace standin::mailbox {

// Messages.
inline constexpr PropertyTag kPrMessageCodepage = PROP_TAG(PT_LONG, 0x3FFD);
inline constexpr PropertyTag kPrInternetCodepage = PROP_TAG(PT_LONG, 0x3FDE);
inline constexpr PropertyTag kPrMessageLocaleId = PROP_TAG(PT_LONG, 0x3FF1);
inline constexpr PropertyTag kPrInternetMessageId = PROP_TAG(PT_UNICODE, 0x1035);
inline constexpr PropertyTag kPrInternetReferences = PROP_TAG(PT_UNICODE, 0x1039);
inline constexpr PropertyTag kPrInReplyToId = PROP_TAG(PT_UNICODE, 0x1042);
inline constexpr PropertyTag kPrHtml = PROP_TAG(PT_BINARY, 0x1013);
inline constexpr PropertyTag kPrBodyHtml = PROP_TAG(PT_UNICODE, 0x1013);
inline constexpr PropertyTag kPrIconIndex = PROP_TAG(PT_LONG, 0x1080);
inline constexpr PropertyTag kPrLastVerbExecuted = PROP_TAG(PT_LONG, 0x1081);
inline constexpr PropertyTag kPrLastVerbExecutionTime = PROP_TAG(PT_SYSTIME, 0x1082);
inline constexpr PropertyTag kPrFlagStatus = PROP_TAG(PT_LONG, 0x1090);
inline constexpr PropertyTag kPrFollowupIcon = PROP_TAG(PT_LONG, 0x1095);
inline constexpr PropertyTag kPrAttributeHidden = PROP_TAG(PT_BOOLEAN, 0x10F4);
inline constexpr PropertyTag kPrLastModifierName = PROP_TAG(PT_UNICODE, 0x3FFA);
inline constexpr PropertyTag kPrLastModifierEntryId = PROP_TAG(PT_BINARY, 0x3FFB);
inline constexpr PropertyTag kPrCreatorName = PROP_TAG(PT_UNICODE, 0x3FF8);
inline constexpr PropertyTag kPrCreatorEntryId = PROP_TAG(PT_BINARY, 0x3FF9);
inline constexpr PropertyTag kPrChangeKey = PROP_TAG(PT_BINARY, 0x65E2);
inline constexpr PropertyTag kPrHasNamedProperties = PROP_TAG(PT_BOOLEAN, 0x664A);
inline constexpr PropertyTag kPrInternetArticleNumber = PROP_TAG(PT_LONG, 0x0E23);
inline constexpr PropertyTag kPrSenderSmtpAddress = PROP_TAG(PT_UNICODE, 0x5D01);
inline constexpr PropertyTag kPrSentRepresentingSmtpAddress = PROP_TAG(PT_UNICODE, 0x5D02);
inline constexpr PropertyTag kPrReceivedBySmtpAddress = PROP_TAG(PT_UNICODE, 0x5D07);
inline constexpr PropertyTag kPrReceivedRepresentingSmtpAddress = PROP_TAG(PT_UNICODE, 0x5D08);

// Recipients and address book entries.
inline constexpr PropertyTag kPrSmtpAddress = PROP_TAG(PT_UNICODE, 0x39FE);
inline constexpr PropertyTag kPr7BitDisplayName = PROP_TAG(PT_UNICODE, 0x39FF);
inline constexpr PropertyTag kPrDisplayTypeEx = PROP_TAG(PT_LONG, 0x3905);
inline constexpr PropertyTag kPrRecipientFlags = PROP_TAG(PT_LONG, 0x5FFD);
inline constexpr PropertyTag kPrRecipientDisplayName = PROP_TAG(PT_UNICODE, 0x5FF6);
inline constexpr PropertyTag kPrRecipientEntryId = PROP_TAG(PT_BINARY, 0x5FF7);
inline constexpr PropertyTag kPrRecipientTrackStatus = PROP_TAG(PT_LONG, 0x5FFF);
inline constexpr PropertyTag kPrYomiFirstName = PROP_TAG(PT_UNICODE, 0x8C8E);
inline constexpr PropertyTag kPrYomiLastName = PROP_TAG(PT_UNICODE, 0x8C8F);
inline constexpr PropertyTag kPrYomiDepartment = PROP_TAG(PT_UNICODE, 0x8C90);
inline constexpr PropertyTag kPrYomiCompanyName = PROP_TAG(PT_UNICODE, 0x8C91);
inline constexpr PropertyTag kPrYomiDisplayName = PROP_TAG(PT_UNICODE, 0x8C92);

// Attachments.
inline constexpr PropertyTag kPrAttachContentId = PROP_TAG(PT_UNICODE, 0x3712);
inline constexpr PropertyTag kPrAttachContentLocation = PROP_TAG(PT_UNICODE, 0x3713);
inline constexpr PropertyTag kPrAttachFlags = PROP_TAG(PT_LONG, 0x3714);
inline constexpr PropertyTag kPrAttachmentHidden = PROP_TAG(PT_BOOLEAN, 0x7FFE);
inline constexpr PropertyTag kPrAttachMimeTag = PROP_TAG(PT_UNICODE, 0x370E);

// Folders and stores.
inline constexpr PropertyTag kPrMailboxOwnerName = PROP_TAG(PT_UNICODE, 0x661C);
inline constexpr PropertyTag kPrMailboxOwnerEntryId = PROP_TAG(PT_BINARY, 0x661B);
inline constexpr PropertyTag kPrUserName = PROP_TAG(PT_UNICODE, 0x661A);
inline constexpr PropertyTag kPrUserEntryId = PROP_TAG(PT_BINARY, 0x6619);
inline constexpr PropertyTag kPrDefaultMessageClass = PROP_TAG(PT_UNICODE, 0x36E5);
inline constexpr PropertyTag kPrIpmPublicFoldersEntryId = PROP_TAG(PT_BINARY, 0x6631);
inline constexpr PropertyTag kPrIpmAppointmentEntryId = PROP_TAG(PT_BINARY, 0x36D0);
inline constexpr PropertyTag kPrIpmContactEntryId = PROP_TAG(PT_BINARY, 0x36D1);
inline constexpr PropertyTag kPrIpmJournalEntryId = PROP_TAG(PT_BINARY, 0x36D2);
inline constexpr PropertyTag kPrIpmNoteEntryId = PROP_TAG(PT_BINARY, 0x36D3);
inline constexpr PropertyTag kPrIpmTaskEntryId = PROP_TAG(PT_BINARY, 0x36D4);
inline constexpr PropertyTag kPrIpmDraftsEntryId = PROP_TAG(PT_BINARY, 0x36D7);
inline constexpr PropertyTag kPrAdditionalRenEntryIds = PROP_TAG(PT_MV_BINARY, 0x36D8);
inline constexpr PropertyTag kPrDeletedMessageCount = PROP_TAG(PT_LONG, 0x6640);

/// A bit of PR_STORE_SUPPORT_MASK: text is Unicode.
inline constexpr std::int32_t kStoreUnicodeOk = 0x00040000;

// Property sets ([MS-OXPROPS] 1.3.2).
inline constexpr GUID kPsMapi{0x00020328, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID kPsPublicStrings{0x00020329, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

} // namespace standin::mailbox
