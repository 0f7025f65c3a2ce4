// The property tags that the engine uses by number ([MS-OXPROPS]).
#pragma once

#include <windows.h>

namespace varden::mapi::tag {

inline constexpr ULONG kMessageClass = 0x001A001F;
inline constexpr ULONG kSensitivity = 0x00360003;
inline constexpr ULONG kSubject = 0x0037001F;
inline constexpr ULONG kSubjectPrefix = 0x003D001F;
inline constexpr ULONG kSentRepresentingSearchKey = 0x003B0102;
inline constexpr ULONG kSentRepresentingEntryId = 0x00410102;
inline constexpr ULONG kSentRepresentingName = 0x0042001F;
inline constexpr ULONG kStartDate = 0x00600040;
inline constexpr ULONG kEndDate = 0x00610040;
inline constexpr ULONG kOwnerAppointmentId = 0x00620003;
inline constexpr ULONG kResponseRequested = 0x0063000B;
inline constexpr ULONG kSentRepresentingAddressType = 0x0064001F;
inline constexpr ULONG kSentRepresentingEmailAddress = 0x0065001F;
inline constexpr ULONG kConversationTopic = 0x0070001F;
inline constexpr ULONG kConversationIndex = 0x00710102;
inline constexpr ULONG kRecipientType = 0x0C150003;
inline constexpr ULONG kSenderEntryId = 0x0C190102;
inline constexpr ULONG kSenderName = 0x0C1A001F;
inline constexpr ULONG kSenderSearchKey = 0x0C1D0102;
inline constexpr ULONG kSenderAddressType = 0x0C1E001F;
inline constexpr ULONG kSenderEmailAddress = 0x0C1F001F;
inline constexpr ULONG kDisplayCc = 0x0E03001F;
inline constexpr ULONG kDisplayTo = 0x0E04001F;
inline constexpr ULONG kParentEntryId = 0x0E090102;
inline constexpr ULONG kSentmailEntryId = 0x0E0A0102;
inline constexpr ULONG kAttachSize = 0x0E200003;
inline constexpr ULONG kAttachNumber = 0x0E210003;
inline constexpr ULONG kEntryId = 0x0FFF0102;
inline constexpr ULONG kBody = 0x1000001F;
inline constexpr ULONG kRtfCompressed = 0x10090102;
inline constexpr ULONG kHtml = 0x10130102;
inline constexpr ULONG kIconIndex = 0x10800003;
inline constexpr ULONG kFlagStatus = 0x10900003;
inline constexpr ULONG kFlagIcon = 0x10950003;
inline constexpr ULONG kDisplayName = 0x3001001F;
inline constexpr ULONG kAddressType = 0x3002001F;
inline constexpr ULONG kEmailAddress = 0x3003001F;
inline constexpr ULONG kDefaultStore = 0x3400000B;
inline constexpr ULONG kIpmOutboxEntryId = 0x35E20102;
inline constexpr ULONG kIpmSentmailEntryId = 0x35E40102;
inline constexpr ULONG kAttachDataBinary = 0x37010102;
inline constexpr ULONG kAttachDataObject = 0x3701000D;
inline constexpr ULONG kAttachExtension = 0x3703001F;
inline constexpr ULONG kAttachFilename = 0x3704001F;
inline constexpr ULONG kAttachMethod = 0x37050003;
inline constexpr ULONG kAttachLongFilename = 0x3707001F;
inline constexpr ULONG kAttachPathname = 0x3708001F;
inline constexpr ULONG kSmtpAddress = 0x39FE001F;
inline constexpr ULONG kLastModifierNameA = 0x3FFA001E; // narrow
inline constexpr ULONG kOrganizationEmailAddress = 0x403E001E;
inline constexpr ULONG kMailboxOwnerName = 0x661C001F;

} // namespace varden::mapi::tag
