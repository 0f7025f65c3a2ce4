// In whose name a mail is sent.
#include "SenderFields.h"

#include "frame/ErrorCodes.h"
#include "mapi/SenderStamps.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

namespace varden {

namespace {

bool FailSender(HRESULT status, const wchar_t* reason) {
    Fail(error::kMapi, status, reason);
    return false;
}

/// One entry, resolved without a dialog. False with the last error set.
bool Resolve(const FieldContext& context, const std::wstring& name, mapi::AddressList& list) {
    mapi::Pointer<IAddrBook> addressBook;
    if (const HRESULT status =
            context.engine.Session()->OpenAddressBook(0, nullptr, AB_NO_DIALOG, addressBook.Out());
        FAILED(status)) {
        return FailSender(status, L"Unable to set Sent On Behalf - unable to open Address Book.");
    }
    list = mapi::MakeNameList(name);
    if (const HRESULT status = addressBook->ResolveName(0, MAPI_UNICODE, nullptr, list.get());
        FAILED(status)) {
        return FailSender(status, L"Unable to set Sent On Behalf - Failed to resolve");
    }
    return true;
}

} // namespace

bool SetSendOnBehalfOf(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    mapi::AddressList list;
    if (!Resolve(context, data, list)) {
        return false;
    }
    constexpr ULONG searchKeyId = 0x300B; // stays as it was
    for (const SPropValue& value : mapi::ResolvedProperties(list)) {
        const mapi::SenderStamp* stamp = mapi::StampFor(value);
        if (stamp && stamp->resolvedId != searchKeyId) {
            mapi::StoreAs(stamp->represented, value, context.message); // what comes of it isn't looked at
        }
    }
    return true;
}

bool SetFrom(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    mapi::AddressList list;
    if (!Resolve(context, data, list)) {
        return false;
    }
    for (const SPropValue& value : mapi::ResolvedProperties(list)) {
        if (const mapi::SenderStamp* stamp = mapi::StampFor(value)) {
            mapi::StoreAs(stamp->sender, value, context.message);
            mapi::StoreAs(stamp->represented, value, context.message);
        }
    }
    return true;
}

} // namespace varden
