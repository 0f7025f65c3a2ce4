// Single steps that several operations on messages share.
#include "Steps.h"

namespace varden::mapi {

HRESULT OpenAddressBook(IMAPISession& session, Pointer<IAddrBook>& addressBook) {
    constexpr ULONG_PTR noWindow = 0;
    return session.OpenAddressBook(noWindow, nullptr, AB_NO_DIALOG, addressBook.Out());
}

HRESULT GetStoreProperty(IMsgStore& store, ULONG tag, Block<SPropValue>& value, ULONG flags) {
    SizedSPropTagArray(1, tags) = {1, {tag}};
    ULONG count = 0;
    const HRESULT status =
        store.GetProps(reinterpret_cast<LPSPropTagArray>(&tags), flags, &count, value.Out());
    return status == MAPI_W_ERRORS_RETURNED && value ? value->Value.err : status;
}

HRESULT SetLong(IMAPIProp& object, ULONG longTag, long number) {
    SPropValue property{};
    property.ulPropTag = longTag;
    property.Value.l = number;
    return SetOneProp(&object, &property);
}

HRESULT SetText(IMAPIProp& object, ULONG textTag, const std::wstring& text) {
    SPropValue property{};
    property.ulPropTag = textTag;
    property.Value.lpszW = const_cast<LPWSTR>(text.c_str());
    return SetOneProp(&object, &property);
}

} // namespace varden::mapi
