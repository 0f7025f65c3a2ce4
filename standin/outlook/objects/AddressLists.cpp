// The global address list, and the entries of lists.
#include "standin/outlook/objects/AddressLists.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Platform.h"
#include "standin/outlook/session/Session.h"

#include <algorithm>

namespace standin::outlook {
namespace {

constexpr std::int32_t kExchangeGlobalList = 0; // OlAddressListType
constexpr std::int32_t kOnlyList = 1;

std::wstring Name(AddressListObject&) {
    return LoggedOnWorld().Addresses().Name();
}

std::wstring Id(AddressListObject&) {
    return mailbox::ToHex(LoggedOnWorld().Addresses().EntryId());
}

ComPtr<AddressEntriesObject> Entries(AddressListObject& list) {
    return Make<AddressEntriesObject>(ComPtr<Object>(&list), LoggedOnWorld().Addresses().Entries());
}

struct SortName {
    std::wstring_view name;
    mailbox::PropertyTag tag;
};

constexpr SortName kSortNames[] = {
    {L"Name", PR_DISPLAY_NAME_W}, {L"Address", PR_EMAIL_ADDRESS_W}, {L"Type", PR_ADDRTYPE_W}};

void Sort(AddressEntriesObject& entries, const Arguments& arguments) {
    constexpr std::size_t kProperty = 0, kOrder = 1;
    constexpr std::int32_t kAscending = 1, kDescending = 2; // OlSortOrder
    const std::wstring name = arguments.Text(kProperty, L"Name");
    const std::int32_t order = arguments.Number(kOrder, kAscending);
    const auto row = std::ranges::find_if(
        kSortNames, [&](const SortName& each) { return mailbox::SameIgnoringCase(each.name, name); });
    if (row == std::end(kSortNames) || order < kAscending || order > kDescending)
        throw InvalidValue();
    entries.SortBy(row->tag, order == kDescending);
}

/// The directory takes no entries from users.
void Add(AddressEntriesObject&) {
    throw Failure(E_ACCESSDENIED);
}

/// A folder of contacts is behind other lists only.
ComPtr<Object> NoFolder(AddressListObject&) {
    return nullptr;
}

constexpr Row kListRows[] = {
    {L"AddressEntries", Get<Entries>},       {L"AddressListType", Always<kExchangeGlobalList>},
    {L"GetContactsFolder", Get<NoFolder>},   {L"ID", Get<Id>},
    {L"Index", Always<kOnlyList>},           {L"IsInitialAddressList", Always<true>},
    {L"IsReadOnly", Always<true>},           {L"Name", Get<Name>},
    {L"ResolutionOrder", Always<kOnlyList>},
};

constexpr Row kEntriesRows[] = {
    {L"Add", Get<Add>},
    {L"Sort", Get<Sort>},
};

const Kind kListsKind{L"AddressLists", 0x00063048, 20, {}, kCollectionRows};
const Kind kListKind{L"AddressList", 0x00063049, 7, kListRows};
const Kind kEntriesKind{L"AddressEntries", 0x0006304A, 21, kEntriesRows, kCollectionRows};

} // namespace

AddressListsObject::AddressListsObject() : Collection(kListsKind) {
}

ComPtr<Object> AddressListsObject::Parent() {
    return TheNameSpace();
}

_variant_t AddressListsObject::At(std::int32_t) {
    return Result(Make<AddressListObject>());
}

_variant_t AddressListsObject::Named(const std::wstring& name) {
    if (!mailbox::SameIgnoringCase(name, LoggedOnWorld().Addresses().Name()))
        throw Failure(MAPI_E_NOT_FOUND);
    return At(kOnlyList);
}

AddressListObject::AddressListObject() : Object(kListKind) {
}

ComPtr<Object> AddressListObject::Parent() {
    return Make<AddressListsObject>();
}

AddressEntriesObject::AddressEntriesObject(ComPtr<Object> owner, std::vector<EntryPtr> entries)
    : Collection(kEntriesKind), m_owner(std::move(owner)), m_entries(std::move(entries)) {
}

_variant_t AddressEntriesObject::At(std::int32_t place) {
    return Result(Make<AddressEntryObject>(m_entries[static_cast<std::size_t>(place - 1)]));
}

_variant_t AddressEntriesObject::Named(const std::wstring& name) {
    const auto found = std::ranges::find_if(
        m_entries, [&](const EntryPtr& each) { return mailbox::SameIgnoringCase(each->Name(), name); });
    if (found == m_entries.end())
        throw Failure(MAPI_E_NOT_FOUND);
    return Result(Make<AddressEntryObject>(*found));
}

void AddressEntriesObject::SortBy(mailbox::PropertyTag tag, bool descending) {
    const auto key = [tag](const EntryPtr& entry) {
        mailbox::Value value;
        entry->Read(tag, value);
        const std::wstring* text = std::get_if<std::wstring>(&value);
        return mailbox::FoldCase(text ? *text : std::wstring());
    };
    if (descending)
        std::ranges::stable_sort(m_entries, std::ranges::greater(), key);
    else
        std::ranges::stable_sort(m_entries, std::ranges::less(), key);
}

} // namespace standin::outlook
