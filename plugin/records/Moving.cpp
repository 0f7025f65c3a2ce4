// Moving the current record to another folder.
#include "session/COutlookFuncs.h"

#include "KindOrders.h"

#include "frame/ErrorCodes.h"
#include "mapi/HexText.h"
#include "mapi/Tags.h"
#include "session/Operation.h"

namespace varden {

namespace {

/// Where the root folder's name at the front of a path ends: the first separator from the third character on.
constexpr std::size_t kFirstRootEnd = 2;

} // namespace

std::wstring COutlookFuncs::MoveRecord(const ScriptText& path) {
    m_lindex = 1;
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"MoveRecord");
    if (!path) {
        return operation.Fail(error::kOutlookId);
    }
    std::wstring folderPath = *path;
    if (!folderPath.starts_with(L'/')) {
        const std::size_t end = folderPath.find(L'/', kFirstRootEnd);
        if (!FindRootFolder(end == std::wstring::npos ? std::wstring() : folderPath.substr(0, end))) {
            return operation.Fail(error::kRootFolderNotFound);
        }
        folderPath.erase(0, end + 1);
    }
    if (!FindFolder(folderPath) || !m_objCurrentFolder) {
        return operation.Fail(error::kFolderNotFound);
    }

    if (!m_pMessage && (!m_objCurrentItem || !FirstHeld(kinds::kMoved))) {
        return operation.Fail(error::kNoRecord);
    }
    mapi::Block<SPropValue> parent;
    if (const HRESULT status =
            mapi::GetOneProp(&m_pMessage.Required(), mapi::tag::kParentEntryId, parent.Out());
        FAILED(status)) {
        return operation.Fail(error::kMapi, status, L"");
    }
    if (mapi::HexText(parent->Value.bin) == m_objCurrentFolder.EntryID()) {
        return AnswerUnmoved(operation);
    }
    outlook::Reference* item = FirstHeld(kinds::kMoved);
    if (!item) {
        return operation.Fail(error::kNoRecord);
    }
    const IUnknownPtr moved = outlook::UnknownOf(item->Call(L"Move", {m_objCurrentFolder.AsValue()}));
    if (const HRESULT status = item->Query(moved); FAILED(status)) {
        return operation.Fail(error::kMapi, status, L"Can not retrieve MAPI interface for item.");
    }
    std::wstring entryId = item->GetText(L"EntryID");
    item->Release();
    ReleaseItems();
    return entryId;
}

/// The record is in its destination already.
std::wstring COutlookFuncs::AnswerUnmoved(Operation& operation) {
    mapi::Block<SPropValue> own;
    if (const HRESULT status = mapi::GetOneProp(&m_pMessage.Required(), mapi::tag::kEntryId, own.Out());
        FAILED(status)) {
        return operation.Fail(error::kMapi, status, L"");
    }
    std::wstring entryId = mapi::HexText(own->Value.bin);
    ReleaseItems();
    return entryId;
}

} // namespace varden
