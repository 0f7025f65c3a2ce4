// Deleting records: the current one, one by its id, all of a folder, and what was deleted before.
#include "session/COutlookFuncs.h"

#include "ItemMessage.h"
#include "KindOrders.h"

#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "mapi/HexText.h"
#include "mapi/PropertyCatalogue.h"
#include "mapi/Tags.h"
#include "session/Operation.h"

#include <set>
#include <utility>

namespace varden {

namespace {

/// What a distribution list's entry for a member and the member's own entry id have in common: the end of
/// their texts.
constexpr std::size_t kEntryIdTail = 42;

constexpr long kPrivate = 2;
constexpr long kDistributionListClass = 69;

std::wstring TailOf(const std::wstring& entryId) {
    return entryId.size() <= kEntryIdTail ? entryId : entryId.substr(entryId.size() - kEntryIdTail);
}

/// "Yes", "True", "1", and whatever else begins like them.
bool IsPermanent(const ScriptText& word) {
    return word && std::wstring_view(L"YyTt1").find(word->front()) != std::wstring_view::npos;
}

bool IsFailure(const std::wstring& answer) {
    const std::wstring_view error = kErrorText;
    return EqualIgnoringCase(std::wstring_view(answer).substr(0, error.size()), error);
}

} // namespace

std::wstring COutlookFuncs::DeleteCurrentRecord(bool permanent) {
    const std::uint32_t placeBefore = m_lindex == 0 ? 0 : m_lindex - 1;
    Operation operation(L"DeleteCurrentRecord");
    if (permanent) {
        operation.Param(L"bPerm", L"true"); // the other value isn't logged
    }
    if (!BeginOperation()) {
        return operation.Failed();
    }
    m_pMessage.Release();
    if (permanent) {
        if (!m_objItems) {
            // Right after a record was opened by its id there is no list to remove it from, and its message
            // has just been let go: the operation ends here with the record undeleted.
            m_pMessage.Required();
        }
        LogLine(L"removing item from items list at m_lindex");
        m_objItems.Call(L"Remove", {outlook::LongValue(static_cast<long>(m_lindex))});
    } else {
        const outlook::Reference* item = CurrentItem();
        if (!item) {
            m_lindex = placeBefore;
            GetNextRecord();
            return operation.Fail(error::kNoRecord);
        }
        item->Call(L"Delete");
        LogLine(L"moved item to trash");
        m_lindex = placeBefore;
        LogLine(L"reset internal index");
    }
    GetFirstRecord(); // renews the list, with the filter
    ReleaseItems();
    m_lindex = placeBefore;
    LogLine(L"reset internal index");
    return kSuccessText;
}

std::wstring COutlookFuncs::DeleteRecord(const ScriptText& entryId, const ScriptText& permanent) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    ReleaseItems();
    Operation operation(L"DeleteRecord");
    if (!entryId) {
        return operation.Fail(error::kOutlookId);
    }
    if (std::wstring answer = OpenRecord(entryId, RecordSource::EntryId); IsFailure(answer)) {
        return operation.EndedWith(std::move(answer));
    }
    const outlook::Reference* item = FirstHeld(kinds::kDeleted);
    if (!item) {
        return operation.Fail(error::kNoRecord);
    }
    if (IsPermanent(permanent)) {
        return RemoveFromParent(*item, *entryId, operation);
    }
    _variant_t nothing;
    if (const HRESULT status = item->TryCall(L"Delete", {}, nothing); FAILED(status)) {
        return operation.Fail(error::kNoRecord, status, L"Failed to delete item");
    }
    return operation.EndedWith(ApplyStandingFilter());
}

/// Opening a record has emptied the list, so that a standing filter finds none to work on, and the answer is
/// its failure although the record has gone.
std::wstring COutlookFuncs::ApplyStandingFilter() {
    return m_strFilter.empty() ? std::wstring(kSuccessText) : FilterApply(std::wstring(m_strFilter));
}

/// Looks for the record in its folder, place by place, and removes it there.
std::wstring COutlookFuncs::RemoveFromParent(const outlook::Reference& item, const std::wstring& entryId,
                                             Operation& operation) {
    _variant_t parentObject;
    outlook::Folder parent;
    HRESULT status = item.TryGet(L"Parent", parentObject);
    if (SUCCEEDED(status)) {
        status = parent.Query(outlook::UnknownOf(parentObject));
    }
    if (FAILED(status)) {
        return operation.Fail(error::kNoRecord, status,
                              L"Failed to access parent folder for permanent deletion");
    }
    for (long i = 1;; ++i) {
        const outlook::Items items = parent.AllItems();
        if (i > items.Count()) {
            return operation.Fail(error::kRecordsNotFound, status, L"");
        }
        m_objCurrentItem = outlook::DispatchOf(items.Item(i));
        const std::wstring found = EntryIdOfAnyKind();
        ReleaseItems();
        if (found == entryId) {
            items.Call(L"Remove", {outlook::LongValue(i)});
            return operation.EndedWith(ApplyStandingFilter());
        }
    }
}

/// The entry id of the current item, by the first kind that it is; empty for one that isn't looked for.
std::wstring COutlookFuncs::EntryIdOfAnyKind() {
    for (const ItemKind kind : kinds::kSearched) {
        if (SUCCEEDED(Item(kind).Query(m_objCurrentItem))) {
            return Item(kind).GetText(L"EntryID");
        }
    }
    return {};
}

std::wstring COutlookFuncs::DeleteAllRecords(bool excludePrivate, bool excludeDistLists) {
    Operation operation(L"DeleteAllRecords");
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!m_objCurrentFolder) {
        return operation.Fail(error::kNoFolder);
    }
    // The class of a folder is always that of folders: neither exclusion is dropped in practice, and the item
    // type holds that number until the next folder is opened.
    m_nItemType = m_objCurrentFolder.GetLong(L"Class");
    if (m_nItemType == outlook::olMailItem || m_nItemType == outlook::olPostItem) {
        excludePrivate = false;
    }
    if (m_nItemType != outlook::olContactItem) {
        excludeDistLists = false;
    }
    const outlook::Items items = m_objCurrentFolder.AllItems();
    std::set<std::wstring> excluded;
    if (excludeDistLists && items.Count() > 0) {
        const ListMembers members = CollectListMembers(items, excluded);
        if (FAILED(members.status)) {
            return operation.Fail(error::kMapi, members.status, mapi_HResultToText(members.status));
        }
        if (!members.isComplete) {
            return kSuccessText;
        }
    }
    std::wstring answer = GetFirstRecord();
    while (answer != kEndText && answer != kErrorText) {
        const bool isKept =
            (excludePrivate && IsPrivate()) || (excludeDistLists && excluded.contains(TailOf(answer)));
        if (!isKept) {
            DeleteCurrentRecord(true);
        }
        answer = GetNextRecord();
    }
    if (answer == kErrorText) {
        return operation.Failed();
    }
    return kSuccessText;
}

bool COutlookFuncs::IsPrivate() {
    mapi::Block<SPropValue> sensitivity;
    return SUCCEEDED(mapi::GetOneProp(&m_pMessage.Required(), mapi::tag::kSensitivity, sensitivity.Out())) &&
           sensitivity->Value.l == kPrivate;
}

/// Adds the lists of the folder and their members, by the ends of their entry ids. A list whose members can't
/// be read, one that never had any among them, ends the collection.
COutlookFuncs::ListMembers COutlookFuncs::CollectListMembers(const outlook::Items& items,
                                                             std::set<std::wstring>& excluded) {
    for (_variant_t object = items.Call(L"GetFirst"); outlook::DispatchOf(object);
         object = items.Call(L"GetNext")) {
        outlook::Reference list(outlook::kDistListItem);
        if (FAILED(list.Query(outlook::UnknownOf(object))) ||
            list.GetLong(L"Class") != kDistributionListClass) {
            continue;
        }
        excluded.insert(TailOf(list.GetText(L"EntryID")));
        mapi::Pointer<IMessage> message;
        HRESULT status = QueryMessage(list, message);
        if (FAILED(status)) {
            return {status, false};
        }
        ULONG tag = 0;
        if (!mapi_PropTagFromFieldName(L"Members", tag, message.Get())) {
            return {S_OK, false};
        }
        mapi::Block<SPropValue> members;
        status = mapi::GetOneProp(message.Get(), tag, members.Out());
        if (FAILED(status)) {
            return {status, false};
        }
        if (PROP_TYPE(members->ulPropTag) == PT_MV_BINARY) {
            const auto& values = members->Value.MVbin;
            for (const SBinary& member : std::span(values.lpbin, values.lpbin ? values.cValues : 0)) {
                excluded.insert(TailOf(mapi::HexText(member)));
            }
        }
    }
    return {S_OK, true};
}

std::wstring COutlookFuncs::EmptyAllDeletedItems() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    const Operation operation(L"EmptyAllDeletedItems");
    const outlook::Items items =
        m_objNamespace.DefaultFolder(outlook::DefaultFolder::DeletedItems).AllItems();
    for (long i = items.Count(); i >= 1; --i) { // downwards, so that the places stay valid
        items.Call(L"Remove", {outlook::LongValue(i)});
    }
    return kSuccessText;
}

} // namespace varden
