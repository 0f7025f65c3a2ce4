// Collections of folders: by place, by name, adding, removing.
#include "standin/outlook/folders/Folders.h"

#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/session/Session.h"

#include <algorithm>

namespace standin::outlook {
namespace {

/// What folders can be made of which type, by the number of the default folder that is like them.
struct FolderType {
    std::int32_t number; ///< OlDefaultFolders
    std::int32_t itemType;
};

constexpr FolderType kFolderTypes[] = {
    {mailbox::kInbox, 0}, {mailbox::kDrafts, 0},  {mailbox::kCalendar, 1}, {mailbox::kContacts, 2},
    {mailbox::kTasks, 3}, {mailbox::kJournal, 4}, {mailbox::kNotes, 5},
};

std::int32_t ItemTypeOf(std::int32_t folderType) {
    const auto row = std::ranges::find(kFolderTypes, folderType, &FolderType::number);
    if (row == std::end(kFolderTypes))
        throw InvalidValue();
    return row->itemType;
}

ComPtr<FolderObject> Add(FoldersObject& folders, const Arguments& arguments) {
    constexpr std::size_t kName = 0, kType = 1;
    mailbox::Folder* parent = folders.ParentFolder();
    if (!parent)
        throw Failure(MAPI_E_NO_SUPPORT); // a store is not added as a folder
    mailbox::FolderDescription description{arguments.Text(kName), parent->DefaultItemType(), {}};
    if (arguments.IsGiven(kType))
        description.defaultItemType = ItemTypeOf(arguments.Number(kType, 0));
    std::shared_ptr<mailbox::Folder> folder;
    const HRESULT status = parent->CreateSubfolder(description, folder);
    if (status == MAPI_E_COLLISION)
        throw Failure(DISP_E_EXCEPTION, Failure(status).description);
    Check(status);
    return FolderFor(*folder);
}

void Remove(FoldersObject& folders, const Arguments& arguments) {
    const std::int32_t place = arguments.Number(0);
    if (place < 1 || place > folders.Count())
        throw IndexOutOfBounds();
    DeleteFolder(folders.FolderAt(place));
}

constexpr Row kRows[] = {
    {L"Add", Get<Add>},
    {L"Remove", Get<Remove>},
};

const Kind kKind{L"Folders", 0x00063040, 15, kRows, kCollectionRows};

} // namespace

FoldersObject::FoldersObject(std::shared_ptr<mailbox::Folder> parent)
    : Collection(kKind), m_parent(std::move(parent)) {
}

ComPtr<Object> FoldersObject::Parent() {
    return m_parent ? ComPtr<Object>(FolderFor(*m_parent)) : TheNameSpace();
}

std::int32_t FoldersObject::Count() {
    if (!m_parent)
        return static_cast<std::int32_t>(LoggedOnWorld().ProfileStores().size());
    if (m_parent->IsDeleted())
        throw Failure(MAPI_E_OBJECT_DELETED);
    return static_cast<std::int32_t>(m_parent->Subfolders().size());
}

mailbox::Folder& FoldersObject::FolderAt(std::int32_t place) const {
    const auto index = static_cast<std::size_t>(place - 1);
    return m_parent ? *m_parent->Subfolders()[index] : LoggedOnWorld().ProfileStores()[index]->IpmSubtree();
}

_variant_t FoldersObject::At(std::int32_t place) {
    return Result(FolderFor(FolderAt(place)));
}

_variant_t FoldersObject::Named(const std::wstring& name) {
    if (m_parent) {
        if (mailbox::Folder* folder = m_parent->FindSubfolder(name))
            return Result(FolderFor(*folder));
        throw Failure(MAPI_E_NOT_FOUND);
    }
    for (mailbox::Store* store : LoggedOnWorld().ProfileStores())
        if (mailbox::SameIgnoringCase(store->Name(), name))
            return Result(FolderFor(store->IpmSubtree()));
    throw Failure(MAPI_E_NOT_FOUND);
}

} // namespace standin::outlook
