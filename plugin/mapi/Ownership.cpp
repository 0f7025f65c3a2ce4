// Address lists in the form that the address book resolves.
#include "Ownership.h"

#include "Tags.h"

namespace varden::mapi {

namespace {

/// A list of one entry with room for this many properties, the first its display name.
AddressList MakeList(const std::wstring& displayName, ULONG propertyCount) {
    AddressList list(AllocateBlock<ADRLIST>(CbNewADRLIST(1)).release());
    auto properties = AllocateBlock<SPropValue>(propertyCount * sizeof(SPropValue));
    const std::size_t bytes = (displayName.size() + 1) * sizeof(wchar_t);
    properties->ulPropTag = tag::kDisplayName;
    properties->Value.lpszW = AllocateIn<wchar_t>(properties.get(), bytes);
    std::memcpy(properties->Value.lpszW, displayName.c_str(), bytes);
    list->cEntries = 1;
    list->aEntries[0].cValues = propertyCount;
    list->aEntries[0].rgPropVals = properties.release();
    return list;
}

} // namespace

AddressList MakeNameList(const std::wstring& displayName) {
    return MakeList(displayName, 1);
}

AddressList MakeRecipientList(const std::wstring& displayName, long recipientType) {
    AddressList list = MakeList(displayName, 2);
    SPropValue& type = list->aEntries[0].rgPropVals[1];
    type.ulPropTag = tag::kRecipientType;
    type.Value.l = recipientType;
    return list;
}

} // namespace varden::mapi
