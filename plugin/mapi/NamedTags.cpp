// Tags of many named properties at once.
#include "NamedTags.h"

#include "PropertySets.h"

namespace varden::mapi {

namespace {

const GUID& SetOf(NameSet set) {
    switch (set) {
    case NameSet::Meeting:
        return propertyset::kMeeting;
    case NameSet::Appointment:
        return propertyset::kAppointment;
    case NameSet::Common:
        return propertyset::kCommon;
    default:
        return propertyset::kCalendarAssistant;
    }
}

} // namespace

std::vector<ULONG> FindTags(std::span<const NumberedName> names, IMAPIProp& object) {
    const auto pointers = AllocateBlock<LPMAPINAMEID>(names.size() * sizeof(LPMAPINAMEID));
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto* name = AllocateIn<MAPINAMEID>(pointers.get());
        name->lpguid = const_cast<LPGUID>(&SetOf(names[i].set));
        name->ulKind = MNID_ID;
        name->Kind.lID = names[i].id;
        pointers.get()[i] = name;
    }
    Block<SPropTagArray> tags;
    if (FAILED(object.GetIDsFromNames(static_cast<ULONG>(names.size()), pointers.get(), 0, tags.Out())) ||
        !tags) {
        return {};
    }
    return {tags->aulPropTag, tags->aulPropTag + tags->cValues};
}

} // namespace varden::mapi
