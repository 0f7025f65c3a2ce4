// The items of a folder: reaching, making, filtering, sorting, removing.
#include "standin/outlook/items/Items.h"

#include "standin/mailbox/ItemTypes.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Store.h"
#include "standin/outlook/folders/Folder.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/Item.h"

namespace standin::outlook {
namespace {

using FilterPtr = MessageList::FilterPtr;

/// Restricting a restricted list narrows it.
struct BothFilters final : Filter {
    BothFilters(FilterPtr first, FilterPtr second) : first(std::move(first)), second(std::move(second)) {}
    bool Matches(const mailbox::MessageProperties& message) const override {
        return first->Matches(message) && second->Matches(message);
    }
    FilterPtr first, second;
};

std::wstring ClassOfNewItem(ItemsObject& items, const Arguments& arguments) {
    constexpr std::size_t kType = 0;
    std::int32_t number = items.Folder().DefaultItemType();
    if (arguments.IsGiven(kType)) {
        if (arguments[kType].vt == VT_BSTR)
            return arguments.Text(kType, L"");
        number = arguments.Number(kType, 0);
    }
    const ItemKind* kind = KindOfItemType(number);
    if (!kind)
        throw InvalidValue();
    return kind->messageClass;
}

/// By OlItemType number or message class; without either, of the folder's own type.
ComPtr<ItemObject> Add(ItemsObject& items, const Arguments& arguments) {
    const std::wstring messageClass = ClassOfNewItem(items, arguments);
    if (!DescendsFrom(messageClass, L"IPM") && !DescendsFrom(messageClass, L"REPORT"))
        throw InvalidValue();
    return NewItem(items.Folder(), messageClass);
}

void Remove(ItemsObject& items, const Arguments& arguments) {
    items.Remove(arguments.Number(0));
}

ComPtr<ItemsObject> Restrict(ItemsObject& items, const Arguments& arguments) {
    FilterPtr filter = ParseFilter(arguments.Text(0), items.Folder());
    if (const FilterPtr& outer = items.List().Condition())
        filter = std::make_shared<BothFilters>(outer, std::move(filter));
    return Make<ItemsObject>(items.Folder().shared_from_this(), std::move(filter));
}

_variant_t Find(ItemsObject& items, const Arguments& arguments) {
    return items.Find(ParseFilter(arguments.Text(0), items.Folder()));
}

_variant_t FindNext(ItemsObject& items) {
    return items.FindNext();
}

std::wstring WithoutBrackets(const std::wstring& name) {
    const bool inBrackets = name.starts_with(L'[') && name.ends_with(L']') && name.size() > 2;
    return inBrackets ? name.substr(1, name.size() - 2) : name;
}

void Sort(ItemsObject& items, const Arguments& arguments) {
    constexpr std::size_t kProperty = 0, kDescending = 1;
    std::optional<Field> field = FindSortField(WithoutBrackets(arguments.Text(kProperty)), items.Folder());
    if (!field)
        throw InvalidValue();
    items.List().Sort(std::move(*field), arguments.Flag(kDescending, false));
}

/// Which properties are fetched first makes no difference here but for the names that Outlook refuses.
void SetColumns(ItemsObject& items, const Arguments& arguments) {
    const std::vector<std::wstring> names = SplitKeywords(arguments.Text(0));
    if (names.empty())
        throw InvalidValue();
    for (const std::wstring& name : names)
        if (!FindField(WithoutBrackets(name), items.Folder()))
            throw InvalidValue();
}

void ResetColumns(ItemsObject&) {
}

/// Lists have series as one item each.
void SetIncludeRecurrences(ItemsObject&, const Arguments& value) {
    if (value.Flag(0))
        throw NotBuilt(L"IncludeRecurrences");
}

constexpr Row kRows[] = {
    {L"Add", Get<Add>},           {L"Find", Get<Find>},
    {L"FindNext", Get<FindNext>}, {L"IncludeRecurrences", Always<false>, Put<SetIncludeRecurrences>},
    {L"Remove", Get<Remove>},     {L"ResetColumns", Get<ResetColumns>},
    {L"Restrict", Get<Restrict>}, {L"SetColumns", Get<SetColumns>},
    {L"Sort", Get<Sort>},
};

const Kind kKind{L"Items", 0x00063041, 16, kRows, kCollectionRows};

} // namespace

ItemsObject::ItemsObject(std::shared_ptr<mailbox::Folder> folder, FilterPtr filter)
    : Collection(kKind), m_folder(std::move(folder)), m_list(*m_folder, std::move(filter)) {
}

mailbox::Folder& ItemsObject::Folder() const {
    if (m_folder->IsDeleted())
        throw Failure(MAPI_E_OBJECT_DELETED);
    return *m_folder;
}

MessageList& ItemsObject::List() {
    Folder();
    return m_list;
}

ComPtr<Object> ItemsObject::Parent() {
    return FolderFor(Folder());
}

std::int32_t ItemsObject::Count() {
    return static_cast<std::int32_t>(List().Size());
}

_variant_t ItemsObject::At(std::int32_t place) {
    return Result(OpenItem(List().At(static_cast<std::size_t>(place - 1))));
}

_variant_t ItemsObject::Named(const std::wstring& subject) {
    for (std::size_t i = 0; i < List().Size(); ++i)
        if (mailbox::SameIgnoringCase(m_list.At(i).Get<PR_SUBJECT_W>().value_or(L""), subject))
            return Result(OpenItem(m_list.At(i)));
    throw Failure(MAPI_E_NOT_FOUND);
}

/// For good: Deleted Items gets nothing.
void ItemsObject::Remove(std::int32_t place) {
    if (place < 1 || place > Count())
        throw IndexOutOfBounds();
    Check(Folder().RemoveMessage(m_list.At(static_cast<std::size_t>(place - 1))));
}

_variant_t ItemsObject::Find(FilterPtr filter) {
    m_find = std::move(filter);
    m_found = 0;
    return FindNext();
}

_variant_t ItemsObject::FindNext() {
    while (m_find && m_found < List().Size()) {
        mailbox::Message& message = m_list.At(m_found++);
        if (m_find->Matches(message))
            return Result(OpenItem(message));
    }
    return Result(ComPtr<Object>());
}

} // namespace standin::outlook
