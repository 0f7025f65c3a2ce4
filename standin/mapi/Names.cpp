// Named properties: names to ids and back.
#include "standin/mapi/Buffers.h"
#include "standin/mapi/PropertySide.h"
#include "standin/mapi/Values.h"

#include "standin/mailbox/Tags.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace standin::mapi::properties {
namespace {

using mailbox::MakeTag;
using mailbox::NamedProperties;
using mailbox::PropertyId;
using mailbox::PropertyName;
using mailbox::PropertyTag;

constexpr PropertyTag kNoTag = PROP_TAG(PT_ERROR, 0);

std::optional<PropertyName> TakeName(const MAPINAMEID* name) {
    if (!name || !name->lpguid)
        return std::nullopt;
    if (name->ulKind == MNID_ID)
        return PropertyName{*name->lpguid, static_cast<std::uint32_t>(name->Kind.lID)};
    if (name->ulKind == MNID_STRING && name->Kind.lpwstrName)
        return PropertyName{*name->lpguid, std::wstring(name->Kind.lpwstrName)};
    return std::nullopt;
}

SPropTagArray* AllTags(const NamedProperties& names) {
    std::vector<PropertyTag> tags;
    for (std::size_t i = 0; i < names.Names().size(); ++i)
        tags.push_back(MakeTag(static_cast<PropertyId>(mailbox::kFirstNamedId + i), PT_UNSPECIFIED));
    return NewTagArray(tags);
}

/// The name behind an id. Below 0x8000 every id is its own name in PS_MAPI.
std::optional<PropertyName> NameOf(const NamedProperties& names, PropertyId id) {
    if (id < mailbox::kFirstNamedId)
        return PropertyName{mailbox::kPsMapi, std::uint32_t{id}};
    const PropertyName* name = names.Name(id);
    return name ? std::optional(*name) : std::nullopt;
}

bool IsWanted(const PropertyName& name, const GUID* set, ULONG flags) {
    const bool isText = std::holds_alternative<std::wstring>(name.id);
    return (!set || name.set == *set) && !(flags & (isText ? MAPI_NO_STRINGS : MAPI_NO_IDS));
}

MAPINAMEID* NewName(const PropertyName& name, void* root) {
    auto* made = static_cast<MAPINAMEID*>(NewMore(sizeof(MAPINAMEID), root));
    *made = {};
    made->lpguid = static_cast<GUID*>(std::memcpy(NewMore(sizeof(GUID), root), &name.set, sizeof(GUID)));
    if (const auto* text = std::get_if<std::wstring>(&name.id)) {
        made->ulKind = MNID_STRING;
        made->Kind.lpwstrName = reinterpret_cast<LPWSTR>(NewText(*text, true, root));
    } else {
        made->ulKind = MNID_ID;
        made->Kind.lID = static_cast<LONG>(std::get<std::uint32_t>(name.id));
    }
    return made;
}

} // namespace

HRESULT GetNamesFromIDs(const PropertySide& side, SPropTagArray** tags, const GUID* set, ULONG flags,
                        ULONG* count, MAPINAMEID*** names) {
    if (!tags || !count || !names)
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~(MAPI_NO_STRINGS | MAPI_NO_IDS))
        return MAPI_E_UNKNOWN_FLAGS;
    const NamedProperties& known = side.Properties().Names();
    const bool all = !*tags;
    Buffer<SPropTagArray> allTags(all ? AllTags(known) : nullptr);
    const SPropTagArray& asked = all ? *allTags : **tags;

    std::vector<PropertyTag> given;
    std::vector<std::optional<PropertyName>> found;
    for (const ULONG tag : TagsOf(asked)) {
        auto name = NameOf(known, mailbox::IdOf(tag));
        if (name && !IsWanted(*name, set, flags))
            name.reset();
        if (all && !name)
            continue;
        given.push_back(tag);
        found.push_back(std::move(name));
    }

    Buffer<MAPINAMEID*> list(static_cast<MAPINAMEID**>(NewBuffer(found.size() * sizeof(MAPINAMEID*))));
    for (std::size_t i = 0; i < found.size(); ++i)
        list.get()[i] = found[i] ? NewName(*found[i], list.get()) : nullptr;
    const bool complete = std::ranges::all_of(found, [](const auto& name) { return name.has_value(); });
    if (all)
        *tags = NewTagArray(given);
    *count = static_cast<ULONG>(found.size());
    *names = list.release();
    return complete ? S_OK : MAPI_W_ERRORS_RETURNED;
}

HRESULT GetIDsFromNames(const PropertySide& side, ULONG count, MAPINAMEID** names, ULONG flags,
                        SPropTagArray** tags) {
    if (!tags || (count > 0) != (names != nullptr))
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~MAPI_CREATE)
        return MAPI_E_UNKNOWN_FLAGS;
    NamedProperties& known = side.Properties().Names();
    if (count == 0) { // all that the store has
        *tags = AllTags(known);
        return S_OK;
    }
    std::vector<PropertyName> wanted;
    for (ULONG i = 0; i < count; ++i) {
        auto name = TakeName(names[i]);
        if (!name)
            return MAPI_E_INVALID_PARAMETER;
        wanted.push_back(std::move(*name));
    }
    std::vector<PropertyTag> found;
    for (const PropertyName& name : wanted) {
        const PropertyId id = known.Id(name, (flags & MAPI_CREATE) != 0);
        found.push_back(id == 0 ? kNoTag : MakeTag(id, PT_UNSPECIFIED));
    }
    *tags = NewTagArray(found);
    return std::ranges::find(found, kNoTag) == found.end() ? S_OK : MAPI_W_ERRORS_RETURNED;
}

} // namespace standin::mapi::properties
