// Address lists in the form that the address book resolves.
#include "Ownership.h"

#include "Tags.h"

namespace varden::mapi {

AddressList MakeNameList(const std::wstring& displayName) {
    AddressList list(AllocateBlock<ADRLIST>(CbNewADRLIST(1)).release());
    auto properties = AllocateBlock<SPropValue>();
    const std::size_t bytes = (displayName.size() + 1) * sizeof(wchar_t);
    properties->ulPropTag = tag::kDisplayName;
    properties->Value.lpszW = AllocateIn<wchar_t>(properties.get(), bytes);
    std::memcpy(properties->Value.lpszW, displayName.c_str(), bytes);
    list->cEntries = 1;
    list->aEntries[0].cValues = 1;
    list->aEntries[0].rgPropVals = properties.release();
    return list;
}

} // namespace varden::mapi
