// The profile's default store.
#include "session/COutlookFuncs.h"

#include "frame/PlugInLog.h"
#include "mapi/Restrictions.h"
#include "mapi/Tags.h"

namespace varden {

HRESULT COutlookFuncs::mapi_OpenDefaultMessageStore() {
    const LoggedOperation log(L"mapi_OpenDefaultMessageStore");
    if (m_pDefaultMsgStore) {
        LogLine(L"have default message store");
        return S_OK;
    }
    SizedSPropTagArray(3, columns) = {
        3, {mapi::tag::kDefaultStore, mapi::tag::kDisplayName, mapi::tag::kEntryId}};
    if (FAILED(m_pStoresTable->SetColumns(reinterpret_cast<LPSPropTagArray>(&columns), 0))) {
        LogLine(L"error in setting columns");
        return S_OK; // a success without a store
    }
    m_pStoresTable->SeekRow(BOOKMARK_BEGINNING, 0, nullptr);
    ULONG rowCount = 0;
    m_pStoresTable->GetRowCount(0, &rowCount);

    mapi::ExistsAndEquals restriction(mapi::BooleanProperty(mapi::tag::kDefaultStore, true));
    mapi::RowSet rows;
    const HRESULT status =
        mapi::QueryAllRows(m_pStoresTable.Get(), nullptr, restriction.Get(), nullptr, 1, rows.Out());
    if (FAILED(status)) {
        LogLine(L"error querying rows");
        return status;
    }
    LogLine(L"Obtained Message Store Table Rows");
    const SPropValue* entryId = mapi::FindInRow(rows, mapi::tag::kEntryId);
    if (!entryId) {
        return MAPI_E_NOT_FOUND;
    }
    const HRESULT opened = OpenStore(entryId->Value.bin, m_pDefaultMsgStore);
    LogLine(L"Obtained Default Message Store");
    return opened;
}

} // namespace varden
