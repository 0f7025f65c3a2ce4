// Where the properties of a resolved address go.
#include "SenderStamps.h"

#include "Tags.h"

#include <algorithm>
#include <array>

namespace varden::mapi {

namespace {

constexpr std::array kStamps{
    SenderStamp{0x0FFF, tag::kSenderEntryId, tag::kSentRepresentingEntryId},
    SenderStamp{0x3002, tag::kSenderAddressType, tag::kSentRepresentingAddressType},
    SenderStamp{0x3003, tag::kSenderEmailAddress, tag::kSentRepresentingEmailAddress},
    SenderStamp{0x3001, tag::kSenderName, tag::kSentRepresentingName},
    SenderStamp{0x300B, tag::kSenderSearchKey, tag::kSentRepresentingSearchKey},
};

} // namespace

const SenderStamp* StampFor(const SPropValue& resolved) {
    const auto stamp = std::ranges::find(kStamps, PROP_ID(resolved.ulPropTag), &SenderStamp::resolvedId);
    // An entry that lacks a property has an error in its place.
    const bool fits = stamp != kStamps.end() && PROP_TYPE(resolved.ulPropTag) == PROP_TYPE(stamp->sender);
    return fits ? &*stamp : nullptr;
}

std::span<const SPropValue> ResolvedProperties(const AddressList& list) {
    const ADRENTRY& entry = list->aEntries[0];
    return {entry.rgPropVals, entry.cValues};
}

HRESULT StoreAs(ULONG tag, const SPropValue& value, IMessage* message) {
    SPropValue stored = value;
    stored.ulPropTag = tag;
    return SetOneProp(message, &stored);
}

} // namespace varden::mapi
