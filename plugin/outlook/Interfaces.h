// The interface ids of Outlook's objects, from its type library.
#pragma once

#include "Reference.h"

namespace varden::outlook {

/// The ids of Outlook's interfaces differ in their first 32 bits only.
constexpr IID OutlookIid(unsigned long first) {
    return {first, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
}

inline Interface kApplication(OutlookIid(0x00063001));
inline Interface kNameSpace(OutlookIid(0x00063002));
inline Interface kFolder(OutlookIid(0x00063006));
inline Interface kFolders(OutlookIid(0x00063040));
inline Interface kItems(OutlookIid(0x00063041));

// The kinds of item.
inline Interface kAppointmentItem(OutlookIid(0x00063033));
inline Interface kContactItem(OutlookIid(0x00063021));
inline Interface kDistListItem(OutlookIid(0x00063081));
inline Interface kDocumentItem(OutlookIid(0x00063020));
inline Interface kJournalItem(OutlookIid(0x00063022));
inline Interface kMailItem(OutlookIid(0x00063034));
inline Interface kMeetingItem(OutlookIid(0x00063062));
inline Interface kNoteItem(OutlookIid(0x00063025));
inline Interface kPostItem(OutlookIid(0x00063024));
inline Interface kRemoteItem(OutlookIid(0x00063023));
inline Interface kReportItem(OutlookIid(0x00063026));
inline Interface kSharingItem(OutlookIid(0x0006302F));
inline Interface kStorageItem(OutlookIid(0x000630CB));
inline Interface kTaskItem(OutlookIid(0x00063035));
inline Interface kTaskRequestAcceptItem(OutlookIid(0x00063038));
inline Interface kTaskRequestDeclineItem(OutlookIid(0x00063039));
inline Interface kTaskRequestItem(OutlookIid(0x00063036));
inline Interface kTaskRequestUpdateItem(OutlookIid(0x00063037));

// Reached from items only, by their members: never asked for by id.
inline Interface kAttachments(OutlookIid(0x0006303C));
inline Interface kUserProperties(OutlookIid(0x0006303D));
inline Interface kUserProperty(OutlookIid(0x00063042));
inline Interface kRecurrencePattern(OutlookIid(0x00063044));
inline Interface kExceptions(OutlookIid(0x0006304C));
inline Interface kException(OutlookIid(0x0006304D));
inline Interface kItemProperties(OutlookIid(0x000630A8));
inline Interface kItemProperty(OutlookIid(0x000630A7));
inline Interface kAddressList(OutlookIid(0x00063049));
inline Interface kAddressEntries(OutlookIid(0x0006304A));
inline Interface kAddressEntry(OutlookIid(0x0006304B));
inline Interface kExchangeUser(OutlookIid(0x000630C9));
inline Interface kPropertyAccessor(OutlookIid(0x0006302D));

} // namespace varden::outlook
