// The current record: made, or opened by its id or from a file.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "frame/PlugInLog.h"
#include "mapi/Diagnostics.h"
#include "mapi/InterfaceIds.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

/// What a module word of NewRecord makes, and where if no folder is current.
struct NewRecordModule {
    const wchar_t* word;
    outlook::ItemType itemType;
    outlook::DefaultFolder folder;
};

constexpr std::array kModules{
    NewRecordModule{L"Contacts", outlook::olContactItem, outlook::DefaultFolder::Contacts},
    NewRecordModule{L"Calendar", outlook::olAppointmentItem, outlook::DefaultFolder::Calendar},
    NewRecordModule{L"Tasks", outlook::olTaskItem, outlook::DefaultFolder::Tasks},
    NewRecordModule{L"Task Request", outlook::olTaskItem, outlook::DefaultFolder::Tasks},
    NewRecordModule{L"Mail", outlook::olMailItem, outlook::DefaultFolder::Outbox},
    NewRecordModule{L"Note", outlook::olNoteItem, outlook::DefaultFolder::Notes},
    NewRecordModule{L"Journal", outlook::olJournalItem, outlook::DefaultFolder::Journal},
    NewRecordModule{L"Post", outlook::olPostItem, outlook::DefaultFolder::Inbox},
    NewRecordModule{L"Distribution List", outlook::olDistributionListItem, outlook::DefaultFolder::Contacts},
};

struct CreatedKind {
    ItemKind kind;
    const wchar_t* word; ///< in the log
};

/// By the number of OlItemType.
constexpr std::array kCreatedKinds{
    CreatedKind{ItemKind::Mail, L"mail"},       CreatedKind{ItemKind::Appointment, L"appt"},
    CreatedKind{ItemKind::Contact, L"contact"}, CreatedKind{ItemKind::Task, L"task"},
    CreatedKind{ItemKind::Journal, L"journal"}, CreatedKind{ItemKind::Note, L"note"},
    CreatedKind{ItemKind::Post, L"post"},       CreatedKind{ItemKind::DistList, L"dist list"},
};

} // namespace

std::wstring COutlookFuncs::NewRecord(const ScriptText& module) {
    Operation operation(L"NewRecord");
    operation.OptionalParam(L"strModule", module);
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (module) {
        const NewRecordModule* row = FindByWord(kModules, &NewRecordModule::word, *module);
        if (!row) {
            return operation.Fail(error::kModuleName);
        }
        m_nItemType = row->itemType;
        LogLine(L"obtained item type");
        if (!m_objCurrentFolder) { // a current folder stays, whatever its type: the item is made there
            m_objCurrentFolder = m_objNamespace.DefaultFolder(row->folder);
        }
    } else {
        if (!m_objCurrentFolder) {
            return operation.Fail(error::kNoFolder);
        }
        _variant_t type;
        if (const HRESULT status = m_objCurrentFolder.TryGet(L"DefaultItemType", type); FAILED(status)) {
            return operation.Fail(error::kMapi, status, mapi_HResultToText(status));
        }
        m_nItemType = static_cast<long>(type);
        LogLine(L"obtained item type");
    }
    // The drafts folder must be there, though nothing is done with it.
    static_cast<void>(m_objNamespace.DefaultFolder(outlook::DefaultFolder::Drafts));

    ReleaseItems();
    m_objCurrentItem =
        outlook::DispatchOf(m_objCurrentFolder.AllItems().Add(static_cast<std::int16_t>(m_nItemType)));
    if (m_nItemType < 0 || m_nItemType >= static_cast<std::int32_t>(kCreatedKinds.size())) {
        m_objCurrentItem = nullptr;
        return operation.Fail(error::kModuleName);
    }
    TakeNewItem(kCreatedKinds[static_cast<std::size_t>(m_nItemType)].kind,
                kCreatedKinds[static_cast<std::size_t>(m_nItemType)].word);
    LogLine(L"Returning %ls", kSuccessText);
    return kSuccessText;
}

/// Makes the new item the record of its kind. A note is saved at once, before any field is set: its message
/// can only be opened by its entry id.
void COutlookFuncs::TakeNewItem(ItemKind kind, const wchar_t* word) {
    outlook::Reference& item = Item(kind);
    item.Query(m_objCurrentItem);
    if (kind != ItemKind::Note) {
        TakeMessage(kind, {});
        LogLine(L"obtained item %ls", word);
        return;
    }
    item.Call(L"Save");
    LogLine(L"obtained item %ls", word);
    TakeMessage(kind, item.GetText(L"EntryID"));
}

std::wstring COutlookFuncs::OpenRecord(const ScriptText& idOrPath, RecordSource source) {
    Operation operation(L"OpenRecord");
    if (!BeginOperation()) {
        return operation.Failed();
    }
    m_lindex = 1;
    if (!m_objRootFolder) {
        return operation.Fail(error::kNoRootFolder);
    }
    if (!idOrPath) {
        return operation.Fail(error::kOutlookId);
    }
    ReleaseItems();
    m_objItems.Release();
    m_objCurrentFolder.Release();
    m_pMapiFolder.Release();

    const bool isFile = source == RecordSource::SavedItem;
    const outlook::Reference& opener =
        isFile ? static_cast<const outlook::Reference&>(m_objApplication) : m_objNamespace;
    _variant_t object;
    const HRESULT status =
        opener.TryCall(isFile ? L"CreateItemFromTemplate" : L"GetItemFromID",
                       {outlook::TextValue(*idOrPath), outlook::MissingArgument()}, object);
    m_objCurrentItem = outlook::DispatchOf(object);
    if (!m_objCurrentItem) {
        return operation.Fail(isFile ? error::kPath : error::kIdNotFound, status, L"");
    }
    LogLine(L"found item for id");

    std::wstring answer = kSuccessText;
    if (const ItemKindRow* row = DetectKind()) {
        const outlook::Reference& item = this->*row->member;
        TakeMessage(row->kind, IsOpenedByEntryId(row->kind) ? item.GetText(L"EntryID") : std::wstring());
        m_objCurrentFolder.Query(outlook::UnknownOf(item.GetProperty(L"Parent")));
        LogLine(L"obtained interface for item as %ls", row->openWord);
    } else {
        LogLine(L"interface not supported");
        // The one failure whose answer has a trailing blank.
        answer = operation.Fail(error::kItemKind) + L' ';
        m_objCurrentItem = nullptr;
    }
    if (m_objCurrentFolder) {
        LogLine(L"getting interface for parent folder");
        m_pMapiFolder.Query(outlook::UnknownOf(m_objCurrentFolder.MapiObject()), mapi::kIidFolder);
    }
    LogLine(L"Returning %ls", answer.c_str());
    return answer;
}

} // namespace varden
