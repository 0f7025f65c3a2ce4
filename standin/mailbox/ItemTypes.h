// What item types, container classes and message classes have to do with each other.
#pragma once

#include <cstdint>
#include <string_view>

namespace standin::mailbox {

struct ItemType {
    std::int32_t number; ///< OlItemType
    std::wstring_view containerClass;
    std::wstring_view messageClass;
};

/// The first row is for what is in no other.
inline constexpr ItemType kItemTypes[] = {
    {0, L"IPF.Note", L"IPM.Note"},        {1, L"IPF.Appointment", L"IPM.Appointment"},
    {2, L"IPF.Contact", L"IPM.Contact"},  {3, L"IPF.Task", L"IPM.Task"},
    {4, L"IPF.Journal", L"IPM.Activity"}, {5, L"IPF.StickyNote", L"IPM.StickyNote"},
    {6, L"IPF.Note", L"IPM.Post"},        {7, L"IPF.Contact", L"IPM.DistList"},
};

constexpr const ItemType& ItemTypeByNumber(std::int32_t number) {
    for (const ItemType& row : kItemTypes)
        if (row.number == number)
            return row;
    return kItemTypes[0];
}

/// Classes derive by further words: IPF.Note.OutlookHomepage is a kind of IPF.Note.
constexpr const ItemType& ItemTypeByContainerClass(std::wstring_view containerClass) {
    for (const ItemType& row : kItemTypes)
        if (containerClass.starts_with(row.containerClass))
            return row;
    return kItemTypes[0];
}

} // namespace standin::mailbox
