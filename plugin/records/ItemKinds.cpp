// The kinds of item, and telling a record's kind.
#include "session/COutlookFuncs.h"

#include "ItemMessage.h"

#include "frame/PlugInLog.h"
#include "mapi/HexText.h"

namespace varden {

using Row = ItemKindRow;
using E = COutlookFuncs;

constexpr std::array<ItemKindRow, kItemKindCount> COutlookFuncs::s_itemKinds{
    Row{ItemKind::Appointment, &E::m_objAppointmentItem, L"appt", L"appt"},
    Row{ItemKind::Contact, &E::m_objContactItem, L"contact", L"contact"},
    Row{ItemKind::DistList, &E::m_objDistListItem, L"distlist", L"distlist"},
    Row{ItemKind::Document, &E::m_objDocumentItem, L"document", L"document"},
    Row{ItemKind::Journal, &E::m_objJournalItem, L"journal", L"journal"},
    Row{ItemKind::Mail, &E::m_objMailItem, L"mail", L"mail"},
    Row{ItemKind::Meeting, &E::m_objMeetingItem, L"meetng", L"meeting"},
    Row{ItemKind::Note, &E::m_objNoteItem, L"note", L"note"},
    Row{ItemKind::Post, &E::m_objPostItem, L"post", L"post"},
    Row{ItemKind::Remote, &E::m_objRemoteItem, L"Remote", L"remote"},
    Row{ItemKind::Report, &E::m_objReportItem, L"report", L"report"},
    Row{ItemKind::Sharing, &E::m_objSharingItem, L"sharing", L"sharing"},
    Row{ItemKind::Storage, &E::m_objStorageItem, L"storage", L"storage"},
    Row{ItemKind::Task, &E::m_objTaskItem, L"task", L"task"},
    Row{ItemKind::TaskRequestAccept, &E::m_objTaskRequestAcceptItem, L"taskrequest accept",
        L"taskrequest accept"},
    Row{ItemKind::TaskRequestDecline, &E::m_objTaskRequestDeclineItem, L"task request decline",
        L"taskrequest decline"},
    Row{ItemKind::TaskRequest, &E::m_objTaskRequestItem, L"taskrequest item", L"taslrequest"},
    Row{ItemKind::TaskRequestUpdate, &E::m_objTaskRequestUpdateItem, L"task requst update",
        L"taskrequest update"},
};

outlook::Reference* COutlookFuncs::FirstHeld(std::span<const ItemKind> kinds) {
    const auto kind =
        std::ranges::find_if(kinds, [&](ItemKind candidate) { return Item(candidate).IsHeld(); });
    return kind == kinds.end() ? nullptr : &Item(*kind);
}

outlook::Reference* COutlookFuncs::CurrentItem() {
    const auto row = std::ranges::find_if(
        s_itemKinds, [&](const ItemKindRow& known) { return (this->*known.member).IsHeld(); });
    return row == s_itemKinds.end() ? nullptr : &(this->*row->member);
}

const ItemKindRow* COutlookFuncs::DetectKind() {
    for (const ItemKindRow& row : s_itemKinds) {
        if (SUCCEEDED((this->*row.member).Query(m_objCurrentItem))) {
            return &row;
        }
    }
    return nullptr;
}

void COutlookFuncs::TakeMessage(ItemKind kind, const std::wstring& entryId) {
    if (IsOpenedByEntryId(kind)) {
        OpenMessageFromEntryID(entryId, m_pMessage);
    } else {
        QueryMessage(Item(kind), m_pMessage);
    }
}

HRESULT COutlookFuncs::OpenMessageFromEntryID(const std::wstring& entryId, mapi::Pointer<IMessage>& message) {
    const LoggedOperation log(L"OpenMessageFromEntryID");
    std::vector<BYTE> binary = mapi::BytesFromHex(entryId);
    if (binary.empty()) {
        return MAPI_E_INVALID_ENTRYID;
    }
    ULONG objectType = 0;
    return m_pMsgStore->OpenEntry(static_cast<ULONG>(binary.size()),
                                  reinterpret_cast<LPENTRYID>(binary.data()), nullptr, MAPI_MODIFY,
                                  &objectType, message.OutAs<IUnknown>());
}

} // namespace varden
