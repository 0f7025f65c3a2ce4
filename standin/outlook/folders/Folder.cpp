// Folders as automation objects: names and paths, moving, what is kept with a folder.
#include "standin/outlook/folders/Folder.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/ItemTypes.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mapi/Views.h"
#include "standin/outlook/folders/Folders.h"
#include "standin/outlook/items/Items.h"
#include "standin/outlook/items/StorageLookup.h"
#include "standin/outlook/objects/PropertyAccessor.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

std::wstring Name(FolderObject& folder) {
    return ShownName(folder.Folder());
}

void SetName(FolderObject& folder, const Arguments& value) {
    Check(folder.Folder().Rename(value.Text(0)));
}

std::wstring EntryId(FolderObject& folder) {
    return mailbox::ToHex(folder.Folder().EntryId());
}

std::wstring StoreId(FolderObject& folder) {
    return mailbox::ToHex(folder.Folder().Store().EntryId());
}

std::wstring Path(FolderObject& folder) {
    return PathOf(folder.Folder());
}

std::int32_t DefaultItemType(FolderObject& folder) {
    return folder.Folder().DefaultItemType();
}

std::wstring DefaultMessageClass(FolderObject& folder) {
    return std::wstring(mailbox::ItemTypeByNumber(folder.Folder().DefaultItemType()).messageClass);
}

std::wstring Description(FolderObject& folder) {
    return folder.Folder().Get<PR_COMMENT_W>().value_or(L"");
}

void SetDescription(FolderObject& folder, const Arguments& value) {
    Check(folder.Folder().Write(PR_COMMENT_W, value.Text(0)));
}

std::int32_t UnreadItemCount(FolderObject& folder) {
    return static_cast<std::int32_t>(folder.Folder().UnreadCount());
}

ComPtr<FoldersObject> Subfolders(FolderObject& folder) {
    folder.Folder();
    return Make<FoldersObject>(folder.Shared());
}

ComPtr<ItemsObject> Items(FolderObject& folder) {
    folder.Folder();
    return Make<ItemsObject>(folder.Shared());
}

ComPtr<IUnknown> MapiObject(FolderObject& folder) {
    folder.Folder();
    return ComPtr<IUnknown>::Adopt(mapi::MakeFolder(folder.Shared()));
}

ComPtr<PropertyAccessorObject> Accessor(FolderObject& folder) {
    folder.Folder();
    return Make<PropertyAccessorObject>(ComPtr<Object>(&folder), folder.Shared());
}

void Delete(FolderObject& folder) {
    DeleteFolder(folder.Folder());
}

/// Within a store the folder itself moves; into another a copy of it goes.
void MoveTo(FolderObject& folder, const Arguments& arguments) {
    const ComPtr<FolderObject> target = arguments.As<FolderObject>(0);
    if (&target->Folder().Store() == &folder.Folder().Store())
        return Check(folder.Folder().MoveTo(target->Folder()));
    if (folder.Folder().IsSpecial())
        throw Failure(E_ACCESSDENIED);
    std::shared_ptr<mailbox::Folder> copy;
    Check(folder.Folder().CopyTo(target->Folder(), {}, copy));
    Check(folder.Folder().Delete());
}

ComPtr<FolderObject> CopyTo(FolderObject& folder, const Arguments& arguments) {
    const ComPtr<FolderObject> target = arguments.As<FolderObject>(0);
    std::shared_ptr<mailbox::Folder> copy;
    Check(folder.Folder().CopyTo(target->Folder(), {}, copy));
    return FolderFor(*copy);
}

ComPtr<Object> GetStorage(FolderObject& folder, const Arguments& arguments) {
    constexpr std::size_t kIdentifier = 0, kIdentifierType = 1;
    return FindStorage(folder.Folder(), arguments.Text(kIdentifier), arguments.Number(kIdentifierType));
}

constexpr Row kRows[] = {
    {L"CopyTo", Get<CopyTo>},
    {L"DefaultItemType", Get<DefaultItemType>},
    {L"DefaultMessageClass", Get<DefaultMessageClass>},
    {L"Delete", Get<Delete>},
    {L"Description", Get<Description>, Put<SetDescription>},
    {L"EntryID", Get<EntryId>},
    {L"FolderPath", Get<Path>},
    {L"Folders", Get<Subfolders>},
    {L"FullFolderPath", Get<Path>},
    {L"GetStorage", Get<GetStorage>},
    {L"IsSharePointFolder", Always<false>},
    {L"Items", Get<Items>},
    {L"MAPIOBJECT", Get<MapiObject>},
    {L"MoveTo", Get<MoveTo>},
    {L"Name", Get<Name>, Put<SetName>},
    {L"PropertyAccessor", Get<Accessor>},
    {L"StoreID", Get<StoreId>},
    {L"UnReadItemCount", Get<UnreadItemCount>},
};

const Kind kKind{L"MAPIFolder", 0x00063006, 2, kRows};

bool IsBelow(const mailbox::Folder& folder, const mailbox::Folder& other) {
    const mailbox::Folder* above = &folder;
    while (above && above != &other)
        above = above->Parent();
    return above;
}

std::wstring PathElement(const std::wstring& name) {
    std::wstring element;
    for (const wchar_t c : name)
        element += c == L'%' ? L"%25" : c == L'\\' ? L"%5C" : std::wstring(1, c);
    return element;
}

} // namespace

FolderObject::FolderObject(std::shared_ptr<mailbox::Folder> folder)
    : Object(kKind), m_folder(std::move(folder)) {
}

mailbox::Folder& FolderObject::Folder() const {
    if (m_folder->IsDeleted())
        throw Failure(MAPI_E_OBJECT_DELETED);
    return *m_folder;
}

ComPtr<Object> FolderObject::Parent() {
    return IsTopFolder(Folder()) ? TheNameSpace() : ComPtr<Object>(FolderFor(*m_folder->Parent()));
}

ComPtr<FolderObject> FolderFor(mailbox::Folder& folder) {
    return Make<FolderObject>(folder.shared_from_this());
}

ComPtr<FolderObject> FolderFor(mailbox::Folder* folder) {
    return folder ? FolderFor(*folder) : nullptr;
}

bool IsTopFolder(const mailbox::Folder& folder) {
    return !folder.Parent() || &folder == &folder.Store().IpmSubtree();
}

std::wstring ShownName(const mailbox::Folder& folder) {
    return IsTopFolder(folder) ? folder.Store().Name() : folder.Name();
}

std::wstring PathOf(const mailbox::Folder& folder) {
    const std::wstring above = IsTopFolder(folder) ? L"\\" : PathOf(*folder.Parent());
    return above + L"\\" + PathElement(ShownName(folder));
}

/// In Deleted Items a number is put behind a name that is there already.
void DeleteFolder(mailbox::Folder& folder) {
    mailbox::Folder* deleted = folder.Store().SpecialFolder(mailbox::kDeletedItems);
    if (!deleted || IsBelow(folder, *deleted))
        return Check(folder.Delete());
    std::wstring name = folder.Name();
    for (int number = 1; deleted->FindSubfolder(name); ++number)
        name = folder.Name() + std::to_wstring(number);
    Check(folder.MoveTo(*deleted, name));
}

} // namespace standin::outlook
