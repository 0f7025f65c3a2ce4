// The cursor over the current folder's items, and the filter that narrows them.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "frame/PlugInLog.h"
#include "session/Operation.h"

#include <utility>

namespace varden {

std::wstring COutlookFuncs::GetFirstRecord() {
    Operation operation(L"GetFirstRecord");
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!m_objCurrentFolder) {
        return operation.Fail(error::kNoFolder);
    }
    m_lindex = 0;
    ReleaseItems();
    m_objItems.Release();
    m_objItems = m_objCurrentFolder.AllItems();
    LogLine(L"obtained current folder items");
    m_lItemCount = m_objItems.Count();
    LogLine(L"obtained count for items");
    if (!m_strFilter.empty()) {
        LogLine(L"will apply filter");
        if (std::wstring answer = FilterApply(std::wstring(m_strFilter)); answer != kSuccessText) {
            LogLine(L"filter failed");
            return operation.EndedWith(std::move(answer));
        }
    }
    return operation.EndedWith(GetNextRecord());
}

/// The cursor is raised before the item is taken, and stays there when the item can't be told: the next call
/// steps past it.
std::wstring COutlookFuncs::GetNextRecord() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    if (!m_objCurrentFolder) {
        return Fail(error::kNoFolder);
    }
    Operation operation(L"GetNextRecord");
    try {
        ReleaseItems();
        if (static_cast<long>(m_lindex) >= m_objItems.Count()) {
            return kEndText;
        }
        ++m_lindex;
        LogLine(L"incremented index");
        m_objCurrentItem = outlook::DispatchOf(m_objItems.Item(static_cast<long>(m_lindex)));
        LogLine(L"obtained item at index");
        const ItemKindRow* row = DetectKind();
        if (!row) {
            LogLine(L"item is type unknown");
            return operation.Fail(error::kItemKind);
        }
        std::wstring entryId = (this->*row->member).GetText(L"EntryID");
        TakeMessage(row->kind, entryId);
        LogLine(L"item is type %ls", row->nextWord);
        return entryId;
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
}

std::wstring COutlookFuncs::GetRecordCount() {
    Operation operation(L"GetRecordCount");
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!m_objItems) {
        m_objItems = m_objCurrentFolder.AllItems(); // without the filter
    }
    if (!m_objItems) {
        return operation.Fail(error::kRecordsNotFound);
    }
    return FormatText(L"%ld", m_objItems.Count());
}

/// Works on the list as it stands: two filters in a row narrow it twice, while only the second is remembered.
std::wstring COutlookFuncs::FilterApply(const std::wstring& filter) {
    Operation operation(L"FilterApply");
    operation.Param(L"filterString", filter);
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!m_objCurrentFolder || !m_objItems) {
        return operation.Fail(error::kNoFolder);
    }
    try {
        const outlook::Items restricted = m_objItems.Restrict(filter);
        LogLine(L"restricted items");
        if (!restricted) {
            return operation.Fail(error::kRestriction);
        }
        m_objItems = restricted;
        LogLine(L"setting internal filter string");
        m_strFilter = filter;
        LogLine(L"saving item count");
        m_lItemCount = m_objItems.Count();
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    return kSuccessText;
}

std::wstring COutlookFuncs::Search(const std::wstring& timeStamp) {
    Operation operation(L"Search");
    operation.Param(L"strFieldData", timeStamp);
    return operation.EndedWith(FilterApply(L"[LastModificationTime] > \"" + timeStamp + L"\""));
}

} // namespace varden
