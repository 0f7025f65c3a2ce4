// The property sets of Outlook's named properties ([MS-OXPROPS] 1.3.2).
#pragma once

#include "standin/mailbox/Tags.h"
#include "standin/outlook/automation/Row.h"

namespace standin::outlook {

inline constexpr GUID kPsAppointment = InterfaceId(0x00062002);
inline constexpr GUID kPsTask = InterfaceId(0x00062003);
inline constexpr GUID kPsAddress = InterfaceId(0x00062004);
inline constexpr GUID kPsCommon = InterfaceId(0x00062008);
inline constexpr GUID kPsLog = InterfaceId(0x0006200A);
inline constexpr GUID kPsNote = InterfaceId(0x0006200E);
inline constexpr GUID kPsReport = InterfaceId(0x00062013);
inline constexpr GUID kPsRemote = InterfaceId(0x00062014);
inline constexpr GUID kPsSharing = InterfaceId(0x00062040);
inline constexpr GUID kPsMeeting{
    0x6ED8DA90, 0x450B, 0x101B, {0x98, 0xDA, 0x00, 0xAA, 0x00, 0x3F, 0x13, 0x05}};
inline constexpr GUID kPsInternetHeaders{
    0x00020386, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
using mailbox::kPsMapi;
using mailbox::kPsPublicStrings;

} // namespace standin::outlook
