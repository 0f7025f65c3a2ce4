// IMAPIFolder.
#include "standin/mapi/FolderView.h"

#include "standin/mapi/Entries.h"
#include "standin/mapi/Table.h"
#include "standin/mapi/TableSources.h"
#include "standin/mapi/Values.h"
#include "standin/mapi/Views.h"

namespace standin::mapi {

using mailbox::Access;
using mailbox::Folder;
using mailbox::Message;
using mailbox::PropertyTag;

namespace {

constexpr ULONG kHardDelete = 0x10; // DELETE_HARD_DELETE: newer than the platform's headers

/// The folder behind a caller's target interface. MAPI_E_INTERFACE_NOT_SUPPORTED: it is no folder of this
/// library.
HRESULT FindTarget(const IID* iid, void* target, Held<IUnknown>& held, FolderView*& view) {
    if (!target)
        return MAPI_E_INVALID_PARAMETER;
    if (!Offers<IMAPIFolder>(iid))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    auto* unknown = static_cast<IUnknown*>(target);
    void* side = nullptr;
    if (FAILED(unknown->QueryInterface(kIidPropertySide, &side)))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    held.reset(unknown);
    view = dynamic_cast<FolderView*>(static_cast<PropertySide*>(side));
    if (!view)
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    return view->CheckWritable();
}

/// Does something to each message of a list. What isn't in the folder, or fails, makes the whole a partial
/// completion.
template <class Work>
HRESULT ForEachMessage(const Folder& folder, const ENTRYLIST& list, Work work) {
    HRESULT status = S_OK;
    for (ULONG i = 0; i < list.cValues; ++i) {
        const auto id = mailbox::ParseObjectEntryId(BytesAt(list.lpbin[i].cb, list.lpbin[i].lpb));
        const bool isHere = id && id->folder == folder.Id() && id->database == folder.Store().Key().database;
        const auto message = isHere ? folder.FindMessage(id->message) : nullptr;
        if (!message || FAILED(work(*message)))
            status = MAPI_W_PARTIAL_COMPLETION;
    }
    return status;
}

bool IsList(const ENTRYLIST* list) {
    return list && (list->cValues == 0 || list->lpbin);
}

/// `messages` is the folder's own list, which each that goes leaves. False: some stay.
bool RemoveAll(Folder& folder, const std::vector<Message*>& messages) {
    for (std::size_t i = messages.size(); i > 0; --i)
        folder.RemoveMessage(*messages[i - 1]);
    return messages.empty();
}

/// The first failure; the others go all the same.
HRESULT DeleteAll(const std::vector<std::shared_ptr<Folder>>& folders) {
    HRESULT result = S_OK;
    for (const std::shared_ptr<Folder>& folder : std::vector(folders))
        if (const HRESULT status = folder->Delete(); SUCCEEDED(result))
            result = status;
    return result;
}

} // namespace

FolderView::FolderView(std::shared_ptr<Folder> folder, Access access, bool storeIsWritable)
    : DirectObject(folder, access == Access::Modify), m_folder(std::move(folder)),
      m_storeIsWritable(storeIsWritable) {
}

HRESULT FolderView::Usable() const {
    return m_folder->IsDeleted() ? MAPI_E_OBJECT_DELETED : S_OK;
}

HRESULT FolderView::GetContentsTable(ULONG flags, IMAPITable** table) {
    return Call(L"GetContentsTable", Outputs(table), [&]() -> HRESULT {
        if (!table)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~(MAPI_UNICODE | MAPI_DEFERRED_ERRORS | MAPI_ASSOCIATED))
            return MAPI_E_UNKNOWN_FLAGS;
        *table =
            MakeTable(MessageRows(m_folder, (flags & MAPI_ASSOCIATED) != 0), (flags & MAPI_UNICODE) != 0);
        return S_OK;
    });
}

HRESULT FolderView::GetHierarchyTable(ULONG flags, IMAPITable** table) {
    return Call(L"GetHierarchyTable", Outputs(table), [&]() -> HRESULT {
        if (!table)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~(MAPI_UNICODE | MAPI_DEFERRED_ERRORS | CONVENIENT_DEPTH))
            return MAPI_E_UNKNOWN_FLAGS;
        *table =
            MakeTable(FolderRows(m_folder, (flags & CONVENIENT_DEPTH) != 0), (flags & MAPI_UNICODE) != 0);
        return S_OK;
    });
}

HRESULT FolderView::OpenEntry(ULONG size, ENTRYID* entryId, const IID* iid, ULONG flags, ULONG* type,
                              IUnknown** object) {
    return Call(L"OpenEntry", Outputs(type, object), [&]() -> HRESULT {
        EntryRequest request;
        if (const HRESULT status = TakeEntryRequest(size, entryId, iid, flags, type, object, request);
            FAILED(status))
            return status;
        const mailbox::Bytes root = m_folder->Store().Root().EntryId();
        if (request.entryId.empty())
            request.entryId = root;
        request.storeIsWritable = m_storeIsWritable;
        return OpenStoreEntry(m_folder->Store().Mailbox(), &m_folder->Store(), request);
    });
}

HRESULT FolderView::CreateMessage(const IID* iid, ULONG flags, IMessage** message) {
    return Change(L"CreateMessage", Outputs(message), [&]() -> HRESULT {
        if (!message)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~(MAPI_ASSOCIATED | MAPI_DEFERRED_ERRORS))
            return MAPI_E_UNKNOWN_FLAGS;
        if (!Offers<IMessage>(iid))
            return MAPI_E_INTERFACE_NOT_SUPPORTED;
        std::shared_ptr<mailbox::OpenMessage> created;
        const HRESULT status = m_folder->CreateMessage((flags & MAPI_ASSOCIATED) != 0, created);
        if (SUCCEEDED(status))
            *message = MakeMessage(std::move(created));
        return status;
    });
}

HRESULT FolderView::CopyMessages(ENTRYLIST* list, const IID* iid, void* target, ULONG, IMAPIProgress*,
                                 ULONG flags) {
    return Call(L"CopyMessages", [&]() -> HRESULT {
        if (!IsList(list))
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~(MESSAGE_MOVE | MESSAGE_DIALOG))
            return MAPI_E_UNKNOWN_FLAGS;
        const bool isMove = (flags & MESSAGE_MOVE) != 0;
        if (isMove)
            if (const HRESULT status = CheckWritable(); FAILED(status))
                return status;
        Held<IUnknown> held;
        FolderView* to = nullptr;
        if (const HRESULT status = FindTarget(iid, target, held, to); FAILED(status))
            return status;
        return ForEachMessage(*m_folder, *list, [&](Message& message) {
            return isMove ? m_folder->MoveMessage(message, *to->m_folder, nullptr)
                          : m_folder->CopyMessage(message, *to->m_folder, nullptr);
        });
    });
}

HRESULT FolderView::DeleteMessages(ENTRYLIST* list, ULONG, IMAPIProgress*, ULONG flags) {
    return Change(L"DeleteMessages", [&]() -> HRESULT {
        if (!IsList(list))
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~(MESSAGE_DIALOG | kHardDelete))
            return MAPI_E_UNKNOWN_FLAGS;
        return ForEachMessage(*m_folder, *list,
                              [this](Message& message) { return m_folder->RemoveMessage(message); });
    });
}

HRESULT FolderView::CreateFolder(ULONG type, LPTSTR name, LPTSTR comment, const IID* iid, ULONG flags,
                                 IMAPIFolder** folder) {
    return Change(L"CreateFolder", Outputs(folder), [&]() -> HRESULT {
        if (!name || !folder)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~(MAPI_UNICODE | MAPI_DEFERRED_ERRORS | OPEN_IF_EXISTS))
            return MAPI_E_UNKNOWN_FLAGS;
        if (type != FOLDER_GENERIC)
            return type == FOLDER_SEARCH ? MAPI_E_NO_SUPPORT : MAPI_E_INVALID_PARAMETER;
        if (!Offers<IMAPIFolder>(iid))
            return MAPI_E_INTERFACE_NOT_SUPPORTED;
        const bool wide = (flags & MAPI_UNICODE) != 0;
        return CreateSubfolder(TextAt(name, wide), TextAt(comment, wide), (flags & OPEN_IF_EXISTS) != 0,
                               folder);
    });
}

HRESULT FolderView::CreateSubfolder(const std::wstring& name, const std::wstring& comment, bool openIfExists,
                                    IMAPIFolder** folder) {
    std::shared_ptr<Folder> created;
    const HRESULT status = m_folder->CreateSubfolder({.name = name, .containerClass = {}}, created);
    if (status == MAPI_E_COLLISION && openIfExists)
        created = m_folder->FindSubfolder(name)->shared_from_this();
    else if (FAILED(status))
        return status;
    else if (const HRESULT written = comment.empty() ? S_OK : created->Write(PR_COMMENT_W, comment);
             FAILED(written))
        return written;
    *folder = MakeFolder(std::move(created));
    return S_OK;
}

/// A folder right below this one, by a caller's entry id.
HRESULT FolderView::FindSubfolder(ULONG size, const ENTRYID* entryId,
                                  std::shared_ptr<Folder>& subfolder) const {
    if (size == 0 || !entryId)
        return MAPI_E_INVALID_PARAMETER;
    const auto id = mailbox::ParseObjectEntryId(BytesAt(size, entryId));
    if (!id || id->message != 0)
        return MAPI_E_INVALID_ENTRYID;
    Folder* found = m_folder->Store().Mailbox().FindFolder(BytesAt(size, entryId));
    if (!found || found->Parent() != m_folder.get())
        return MAPI_E_NOT_FOUND;
    subfolder = found->shared_from_this();
    return S_OK;
}

HRESULT FolderView::CopyFolder(ULONG size, ENTRYID* entryId, const IID* iid, void* target, LPTSTR newName,
                               ULONG, IMAPIProgress*, ULONG flags) {
    return Call(L"CopyFolder", [&]() -> HRESULT {
        if (flags & ~(FOLDER_MOVE | COPY_SUBFOLDERS | FOLDER_DIALOG | MAPI_UNICODE))
            return MAPI_E_UNKNOWN_FLAGS;
        std::shared_ptr<Folder> subfolder;
        if (const HRESULT status = FindSubfolder(size, entryId, subfolder); FAILED(status))
            return status;
        Held<IUnknown> held;
        FolderView* to = nullptr;
        if (const HRESULT status = FindTarget(iid, target, held, to); FAILED(status))
            return status;
        const std::wstring name = TextAt(newName, (flags & MAPI_UNICODE) != 0);
        if (flags & FOLDER_MOVE) {
            const HRESULT status = CheckWritable();
            return FAILED(status) ? status : subfolder->MoveTo(*to->m_folder, name);
        }
        std::shared_ptr<Folder> copy;
        const HRESULT status = subfolder->CopyTo(*to->m_folder, name, copy);
        return FAILED(status) || (flags & COPY_SUBFOLDERS) ? status : DeleteAll(copy->Subfolders());
    });
}

HRESULT FolderView::DeleteFolder(ULONG size, ENTRYID* entryId, ULONG, IMAPIProgress*, ULONG flags) {
    return Change(L"DeleteFolder", [&]() -> HRESULT {
        if (flags & ~(DEL_MESSAGES | DEL_FOLDERS | FOLDER_DIALOG | kHardDelete))
            return MAPI_E_UNKNOWN_FLAGS;
        std::shared_ptr<Folder> subfolder;
        if (const HRESULT status = FindSubfolder(size, entryId, subfolder); FAILED(status))
            return status;
        if (!subfolder->Subfolders().empty() && !(flags & DEL_FOLDERS))
            return MAPI_E_HAS_FOLDERS;
        if (!subfolder->Messages().empty() && !(flags & DEL_MESSAGES))
            return MAPI_E_HAS_MESSAGES;
        return subfolder->Delete();
    });
}

HRESULT FolderView::SetReadFlags(ENTRYLIST* list, ULONG, IMAPIProgress*, ULONG flags) {
    return Change(L"SetReadFlags", [&]() -> HRESULT {
        constexpr ULONG kReceipts =
            SUPPRESS_RECEIPT | GENERATE_RECEIPT_ONLY | CLEAR_RN_PENDING | CLEAR_NRN_PENDING | MESSAGE_DIALOG;
        if (flags & ~(kReceipts | CLEAR_READ_FLAG | MAPI_DEFERRED_ERRORS))
            return MAPI_E_UNKNOWN_FLAGS;
        const bool read = (flags & CLEAR_READ_FLAG) == 0;
        if ((list && !IsList(list)) || (!read && (flags & (SUPPRESS_RECEIPT | GENERATE_RECEIPT_ONLY))))
            return MAPI_E_INVALID_PARAMETER;
        if (flags & (GENERATE_RECEIPT_ONLY | CLEAR_RN_PENDING | CLEAR_NRN_PENDING))
            return S_OK; // there are no receipts to be sent or called off
        if (list)
            return ForEachMessage(*m_folder, *list,
                                  [read](Message& message) { return message.SetRead(read); });
        for (Message* message : std::vector(m_folder->Messages()))
            if (const HRESULT status = message->SetRead(read); FAILED(status))
                return status;
        return S_OK;
    });
}

HRESULT FolderView::EmptyFolder(ULONG, IMAPIProgress*, ULONG flags) {
    return Change(L"EmptyFolder", [&]() -> HRESULT {
        if (flags & ~(DEL_ASSOCIATED | FOLDER_DIALOG | kHardDelete))
            return MAPI_E_UNKNOWN_FLAGS;
        bool isEmpty = RemoveAll(*m_folder, m_folder->Messages());
        if (flags & DEL_ASSOCIATED)
            isEmpty = RemoveAll(*m_folder, m_folder->AssociatedMessages()) && isEmpty;
        isEmpty = SUCCEEDED(DeleteAll(m_folder->Subfolders())) && isEmpty;
        return isEmpty ? S_OK : MAPI_W_PARTIAL_COMPLETION;
    });
}

/// A copy of a folder has its messages and its subfolders.
HRESULT FolderView::CopySubobjects(PropertySide& target, const CopyFilter& filter) const {
    const auto* view = dynamic_cast<FolderView*>(&target);
    if (!view)
        return S_OK;
    Folder& to = *view->m_folder;
    const auto copyAll = [&](const std::vector<Message*>& messages) -> HRESULT {
        for (const Message* message : std::vector(messages))
            if (const HRESULT status = m_folder->CopyMessage(*message, to, nullptr); FAILED(status))
                return status;
        return S_OK;
    };
    HRESULT status = filter.Wants(PR_CONTAINER_CONTENTS) ? copyAll(m_folder->Messages()) : S_OK;
    if (SUCCEEDED(status) && filter.Wants(PR_FOLDER_ASSOCIATED_CONTENTS))
        status = copyAll(m_folder->AssociatedMessages());
    if (FAILED(status) || !filter.Wants(PR_CONTAINER_HIERARCHY))
        return status;
    for (const std::shared_ptr<Folder>& subfolder : std::vector(m_folder->Subfolders())) {
        std::shared_ptr<Folder> copy;
        if (status = subfolder->CopyTo(to, {}, copy); FAILED(status))
            return status;
    }
    return S_OK;
}

HRESULT FolderView::OpenObject(PropertyTag tag, REFIID iid, ULONG, IUnknown** object) {
    constexpr bool kWide = true;
    if (iid != kIidTable)
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    if (tag == PR_CONTAINER_CONTENTS || tag == PR_FOLDER_ASSOCIATED_CONTENTS)
        *object = MakeTable(MessageRows(m_folder, tag == PR_FOLDER_ASSOCIATED_CONTENTS), kWide);
    else if (tag == PR_CONTAINER_HIERARCHY)
        *object = MakeTable(FolderRows(m_folder, false), kWide);
    else
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    return S_OK;
}

IMAPIFolder* MakeFolder(std::shared_ptr<Folder> folder, Access access, bool storeIsWritable) {
    return new FolderView(std::move(folder), access, storeIsWritable);
}

} // namespace standin::mapi
