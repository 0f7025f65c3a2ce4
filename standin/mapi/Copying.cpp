// CopyTo and CopyProps.
#include "standin/mapi/Object.h"
#include "standin/mapi/PropertySide.h"
#include "standin/mapi/Values.h"
#include "standin/watch/Watch.h"

#include <algorithm>
#include <utility>

namespace standin::mapi {

using mailbox::IdOf;
using mailbox::PropertyId;
using mailbox::PropertyTag;
using mailbox::Value;

bool CopyFilter::Wants(PropertyTag tag) const {
    return (std::ranges::find(ids, IdOf(tag)) != ids.end()) == idsAreWanted;
}

namespace properties {
namespace {

/// A copy's target, with a reference to it.
struct Target {
    Held<IUnknown> object;
    PropertySide* side = nullptr;
};

/// MAPI_E_INTERFACE_NOT_SUPPORTED: the target hasn't got the interface, or is no object of this library.
/// MAPI_E_NO_ACCESS: source and target are one, as MAPI answers it.
HRESULT FindTarget(const PropertySide& from, const IID* iid, void* object, Target& target) {
    if (!iid || !object)
        return MAPI_E_INVALID_PARAMETER;
    auto* unknown = static_cast<IUnknown*>(object);
    void* side = nullptr;
    if (FAILED(unknown->QueryInterface(kIidPropertySide, &side)))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    target.object.reset(unknown);
    target.side = static_cast<PropertySide*>(side);
    if (!target.side->IsInterface(*iid))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    return target.side == &from ? MAPI_E_NO_ACCESS : S_OK;
}

HRESULT CheckFlags(ULONG flags) {
    if (flags & ~(MAPI_MOVE | MAPI_NOREPLACE | MAPI_DECLINE_OK | MAPI_DIALOG))
        return MAPI_E_UNKNOWN_FLAGS;
    return flags & MAPI_MOVE ? MAPI_E_NO_SUPPORT : S_OK;
}

bool Has(const PropertySide& side, PropertyTag tag) {
    Value value;
    return SUCCEEDED(side.Read(mailbox::MakeTag(IdOf(tag), PT_UNSPECIFIED), value));
}

/// A property that is to be copied: its place and tag in the source, its tag in the target.
struct Item {
    ULONG index;
    PropertyTag tag;
    PropertyTag targetTag;
};

std::vector<PropertyTag> TargetTags(const std::vector<Item>& items) {
    std::vector<PropertyTag> tags;
    tags.reserve(items.size());
    for (const Item& item : items)
        tags.push_back(item.targetTag);
    return tags;
}

/// What is to be copied is settled before anything is: the first property to arrive may make others seem to
/// be there already.
std::vector<Item> ItemsToCopy(const PropertySide& from, PropertySide& to,
                              const std::vector<PropertyTag>& tags, const CopyFilter& filter) {
    std::vector<Item> items;
    for (std::size_t i = 0; i < tags.size(); ++i) {
        if (!filter.Wants(tags[i]) || mailbox::TypeOf(tags[i]) == PT_OBJECT)
            continue;
        const PropertyTag there =
            mailbox::RemapTag(tags[i], from.Properties().Names(), to.Properties().Names());
        if (there != 0 && !(filter.keepExisting && Has(to, there)))
            items.push_back({static_cast<ULONG>(i), tags[i], there});
    }
    return items;
}

/// What the target works out for itself is no problem: it has its own.
HRESULT CopyOne(const PropertySide& from, PropertySide& to, const Item& item) {
    Value value;
    if (const HRESULT status = from.Read(item.tag, value); FAILED(status))
        return status;
    const HRESULT status = to.WriteCopied(item.targetTag, std::move(value));
    return status == MAPI_E_COMPUTED ? S_OK : status;
}

HRESULT Copy(const PropertySide& from, PropertySide& to, const std::vector<PropertyTag>& tags,
             const CopyFilter& filter, SPropProblemArray** problems) {
    if (const HRESULT status = to.CheckWritable(); FAILED(status))
        return status;
    std::vector<SPropProblem> found;
    if (filter.withProperties) {
        const std::vector<Item> items = ItemsToCopy(from, to, tags, filter);
        if (const HRESULT status = to.BeginCopy(TargetTags(items)); FAILED(status))
            return status;
        HRESULT wanted = WantedDeviations().copyProblem;
        for (const Item& item : items) {
            HRESULT status = CopyOne(from, to, item);
            if (SUCCEEDED(status))
                status = std::exchange(wanted, S_OK);
            if (status == MAPI_E_OBJECT_DELETED)
                return status;
            if (FAILED(status))
                found.push_back({item.index, item.tag, status});
        }
    }
    if (filter.withSubobjects)
        if (const HRESULT status = from.CopySubobjects(to, filter); FAILED(status))
            return status;
    if (problems)
        *problems = NewProblems(found);
    return S_OK;
}

std::vector<PropertyId> IdsOf(const SPropTagArray* tags) {
    std::vector<PropertyId> ids;
    if (tags)
        for (const ULONG tag : TagsOf(*tags))
            ids.push_back(IdOf(tag));
    return ids;
}

} // namespace

HRESULT CopyTo(const PropertySide& side, ULONG excludedCount, const IID* excluded, const SPropTagArray* tags,
               const IID* iid, void* target, ULONG flags, SPropProblemArray** problems) {
    if (excludedCount > 0 && !excluded)
        return MAPI_E_INVALID_PARAMETER;
    if (const HRESULT status = CheckFlags(flags); FAILED(status))
        return status;
    Target found;
    if (const HRESULT status = FindTarget(side, iid, target, found); FAILED(status))
        return status;
    CopyFilter filter;
    filter.ids = IdsOf(tags);
    filter.keepExisting = (flags & MAPI_NOREPLACE) != 0;
    // To leave IMAPIProp out is to leave the properties out; the object's own interface stands for the rest.
    for (const IID& each : std::span(excluded, excludedCount)) {
        if (each == kIidProp)
            filter.withProperties = false;
        else if (side.IsInterface(each))
            filter.withSubobjects = false;
    }
    return Copy(side, *found.side, side.TagsToCopy(), filter, problems);
}

HRESULT CopyProps(const PropertySide& side, const SPropTagArray* tags, const IID* iid, void* target,
                  ULONG flags, SPropProblemArray** problems) {
    if (!tags || tags->cValues == 0)
        return MAPI_E_INVALID_PARAMETER;
    if (const HRESULT status = CheckFlags(flags); FAILED(status))
        return status;
    Target found;
    if (const HRESULT status = FindTarget(side, iid, target, found); FAILED(status))
        return status;
    CopyFilter filter;
    filter.ids = IdsOf(tags);
    filter.idsAreWanted = true;
    filter.keepExisting = (flags & MAPI_NOREPLACE) != 0;
    const auto wanted = TagsOf(*tags);
    return Copy(side, *found.side, {wanted.begin(), wanted.end()}, filter, problems);
}

} // namespace properties
} // namespace standin::mapi
