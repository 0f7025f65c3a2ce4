// In whose name a mail is sent.
#include "SenderFields.h"

#include "frame/ErrorCodes.h"
#include "mapi/Tags.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

namespace tag = mapi::tag;

/// Where a property of a resolved address goes.
struct Stamp {
    ULONG resolvedId;
    ULONG sender;
    ULONG represented;
};

constexpr std::array kStamps{
    Stamp{0x0FFF, tag::kSenderEntryId, tag::kSentRepresentingEntryId},
    Stamp{0x3002, tag::kSenderAddressType, tag::kSentRepresentingAddressType},
    Stamp{0x3003, tag::kSenderEmailAddress, tag::kSentRepresentingEmailAddress},
    Stamp{0x3001, tag::kSenderName, tag::kSentRepresentingName},
    Stamp{0x300B, tag::kSenderSearchKey, tag::kSentRepresentingSearchKey},
};

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

/// Stores the value under another tag of the same type. What comes of it isn't looked at.
void Store(const SPropValue& value, ULONG storedTag, IMessage* message) {
    if (PROP_TYPE(value.ulPropTag) == PROP_TYPE(storedTag)) {
        SPropValue stored = value;
        stored.ulPropTag = storedTag;
        mapi::SetOneProp(message, &stored);
    }
}

std::span<const SPropValue> ResolvedProperties(const mapi::AddressList& list) {
    const ADRENTRY& entry = list->aEntries[0];
    return {entry.rgPropVals, entry.cValues};
}

const Stamp* StampFor(const SPropValue& value) {
    const auto stamp = std::ranges::find(kStamps, PROP_ID(value.ulPropTag), &Stamp::resolvedId);
    return stamp == kStamps.end() ? nullptr : &*stamp;
}

} // namespace

bool SetSendOnBehalfOf(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    mapi::AddressList list;
    if (!Resolve(context, data, list)) {
        return false;
    }
    constexpr ULONG searchKeyId = 0x300B; // stays as it was
    for (const SPropValue& value : ResolvedProperties(list)) {
        const Stamp* stamp = StampFor(value);
        if (stamp && stamp->resolvedId != searchKeyId) {
            Store(value, stamp->represented, context.message);
        }
    }
    return true;
}

bool SetFrom(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    mapi::AddressList list;
    if (!Resolve(context, data, list)) {
        return false;
    }
    for (const SPropValue& value : ResolvedProperties(list)) {
        if (const Stamp* stamp = StampFor(value)) {
            Store(value, stamp->sender, context.message);
            Store(value, stamp->represented, context.message);
        }
    }
    return true;
}

} // namespace varden
