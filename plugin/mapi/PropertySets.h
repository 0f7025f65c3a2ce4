// The property sets of named properties ([MS-OXPROPS] 1.3.2).
#pragma once

#include <windows.h>

namespace varden::mapi::propertyset {

/// Nearly all sets differ in their first 32 bits only.
constexpr GUID OutlookSet(unsigned long first) {
    return {first, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
}

inline constexpr GUID kPublicStrings = OutlookSet(0x00020329); // PS_PUBLIC_STRINGS
inline constexpr GUID kAppointment = OutlookSet(0x00062002);   // PSETID_Appointment
inline constexpr GUID kTask = OutlookSet(0x00062003);          // PSETID_Task
inline constexpr GUID kAddress = OutlookSet(0x00062004);       // PSETID_Address
inline constexpr GUID kCommon = OutlookSet(0x00062008);        // PSETID_Common
inline constexpr GUID kLog = OutlookSet(0x0006200A);           // PSETID_Log
inline constexpr GUID kNote = OutlookSet(0x0006200E);          // PSETID_Note
inline constexpr GUID kMeeting = {
    0x6ED8DA90, 0x450B, 0x101B, {0x98, 0xDA, 0x00, 0xAA, 0x00, 0x3F, 0x13, 0x05}}; // PSETID_Meeting
inline constexpr GUID kCalendarAssistant = {
    0x11000E07, 0xB51B, 0x40D6, {0xAF, 0xD1, 0xCA, 0xA8, 0x5E, 0xDA, 0xB1, 0xD0}}; // PSETID_CalendarAssistant

} // namespace varden::mapi::propertyset
