// In whose name a mail is sent.
#include "SenderFields.h"

#include "mapi/SenderStamps.h"
#include "mapi/Steps.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

namespace varden {

namespace {

/// One entry, resolved without a dialog. False with the last error set.
bool Resolve(const FieldContext& context, const std::wstring& name, mapi::AddressList& list) {
    mapi::Pointer<IAddrBook> addressBook;
    HRESULT status = mapi::OpenAddressBook(context.engine.Session().Required(), addressBook);
    if (FAILED(status)) {
        FailMapi(status, mapi::kNoAddressBookForSender);
        return false;
    }
    list = mapi::MakeNameList(name);
    status = addressBook->ResolveName(0, MAPI_UNICODE, nullptr, list.get());
    if (FAILED(status)) {
        FailMapi(status, mapi::kSenderNotResolved);
        return false;
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
