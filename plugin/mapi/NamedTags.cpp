// Tags of many named properties at once.
#include "NamedTags.h"

#include "Diagnostics.h"

#include "frame/PlugInLog.h"

namespace varden::mapi {

std::vector<ULONG> FindTags(std::span<const NumberedName> names, IMAPIProp& object) {
    const auto pointers = AllocateBlock<LPMAPINAMEID>(names.size() * sizeof(LPMAPINAMEID));
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto* name = AllocateIn<MAPINAMEID>(pointers.get());
        name->lpguid = const_cast<LPGUID>(names[i].set);
        name->ulKind = MNID_ID;
        name->Kind.lID = names[i].id;
        pointers.get()[i] = name;
    }
    Block<SPropTagArray> tags;
    const HRESULT status =
        object.GetIDsFromNames(static_cast<ULONG>(names.size()), pointers.get(), 0, tags.Out());
    if (FAILED(status) || !tags) {
        LogLine(mapi_HResultName(status));
        return {};
    }
    return {tags->aulPropTag, tags->aulPropTag + tags->cValues};
}

} // namespace varden::mapi
