// Logging off, and the test with which operations open.
#include "COutlookFuncs.h"
#include "Operation.h"

#include "frame/ErrorCodes.h"
#include "frame/PlugInLog.h"
#include "frame/ProcessObjects.h"

namespace varden {

COutlookFuncs::~COutlookFuncs() {
    LogoffSession();
    if (mapi::Uninitialize.IsAvailable()) {
        mapi::Uninitialize();
    }
}

bool COutlookFuncs::BeginOperation() {
    if (!HasSession()) {
        Fail(error::kNoSession);
        return false;
    }
    ClearLastErrorRecord(LastError());
    return true;
}

void COutlookFuncs::ReleaseItems() {
    const LoggedOperation log(L"ReleaseItems");
    // The document's place in this order is taken by a second distribution list: a document outlives its time
    // as the current record, until a record's kind is told apart that isn't one of the first three.
    for (const ItemKind kind :
         {ItemKind::Appointment, ItemKind::DistList, ItemKind::Contact, ItemKind::DistList, ItemKind::Journal,
          ItemKind::Mail, ItemKind::Meeting, ItemKind::Note, ItemKind::Post, ItemKind::Remote,
          ItemKind::Report, ItemKind::Sharing, ItemKind::Storage, ItemKind::Task, ItemKind::TaskRequestAccept,
          ItemKind::TaskRequestDecline, ItemKind::TaskRequest, ItemKind::TaskRequestUpdate}) {
        Item(kind).Release();
    }
    m_objCurrentItem = nullptr;
    m_pMessage.Release();
    for (outlook::Reference* recurrence :
         {&m_objOccurrenceAppointment, &m_objOccurrenceTask, &m_objItemProperty, &m_objItemProperties,
          &m_objException, &m_objExceptions, &m_objRecurrencePattern}) {
        recurrence->Release();
    }
    m_lException = 0;
}

void COutlookFuncs::LogoffSession() {
    ReleaseSessionObjects(LogOffOutlook::Yes);
}

/// A second logon leaves Outlook's earlier one standing.
void COutlookFuncs::ReleaseSession() {
    ReleaseSessionObjects(LogOffOutlook::No);
}

void COutlookFuncs::ReleaseSessionObjects(LogOffOutlook logOff) {
    ReleaseItems();
    m_aFolderPaths.clear();
    m_aFolderIDs.clear();
    if (m_objApplication) {
        m_objItems.Release();
        m_objGlobalAddressList.Release();
        m_objCurrentFolder.Release();
        m_objRootFolder.Release();
        if (m_objNamespace && logOff == LogOffOutlook::Yes) {
            _variant_t nothing;
            m_objNamespace.TryCall(L"Logoff", {}, nothing); // whatever Outlook says to it, the session ends
        }
        m_objNamespace.Release();
        m_objApplication.Release();
    }
    if (logOff == LogOffOutlook::Yes) {
        m_lMeetingResponse = 0;
    }
    if (m_psession) {
        m_pMapiFolder.Release();
        m_pMsgStore.Release();
        m_pDefaultMsgStore.Release();
        m_pStoresTable.Release();
        m_psession.Release();
    }
}

} // namespace varden
