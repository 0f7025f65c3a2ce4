// Resolving address lists.
#include "standin/mapi/ResolveNames.h"

#include "standin/mapi/Buffers.h"
#include "standin/mapi/Process.h"
#include "standin/mapi/Values.h"

#include <algorithm>
#include <cstring>

namespace standin::mapi {
namespace {

using mailbox::IdOf;
using mailbox::Property;
using mailbox::PropertyBag;
using mailbox::PropertyTag;
using mailbox::TypeOf;

std::span<const SPropValue> ValuesOf(const ADRENTRY& entry) {
    return {entry.rgPropVals, entry.rgPropVals ? entry.cValues : 0};
}

/// The value of a property that is there; null if it is missing or an error.
const SPropValue* FindValue(const ADRENTRY& entry, PropertyTag tag) {
    const auto values = ValuesOf(entry);
    const auto found = std::ranges::find_if(values, [tag](const SPropValue& value) {
        return IdOf(value.ulPropTag) == IdOf(tag) && TypeOf(value.ulPropTag) != PT_ERROR;
    });
    return found == values.end() ? nullptr : &*found;
}

HRESULT NameOf(const ADRENTRY& entry, std::wstring& name) {
    const SPropValue* value = FindValue(entry, PR_DISPLAY_NAME_W);
    if (!value)
        return MAPI_E_INVALID_PARAMETER;
    const mailbox::PropertyType type = TypeOf(value->ulPropTag);
    if (!(type == PT_UNICODE && value->Value.lpszW) && !(type == PT_STRING8 && value->Value.lpszA))
        return MAPI_E_INVALID_PARAMETER;
    name = TextAt(value->Value.lpszW, type == PT_UNICODE);
    return S_OK;
}

/// A copy of an SPropValue with its data; what can't be read of it becomes an error.
Property Taken(const SPropValue& value) {
    Property taken{IdOf(value.ulPropTag), {}};
    if (FAILED(TakeValue(value, taken.value)))
        taken.value = mailbox::ErrorValue{MAPI_E_INVALID_PARAMETER};
    return taken;
}

void FreeOld(SPropValue* values) {
    if (!values || IsRootBuffer(values))
        FreeBuffer(values);
    else
        ReportViolation(L"ADRLIST: an entry's properties are no block of MAPIAllocateBuffer of their own");
}

PropertyBag Selected(const mailbox::AddressEntry& entry, const SPropTagArray& tags) {
    PropertyBag selected;
    for (const ULONG tag : TagsOf(tags)) {
        mailbox::Value value;
        if (FAILED(entry.Read(tag, value)))
            value = mailbox::ErrorValue{MAPI_E_NOT_FOUND};
        selected.Put(tag, std::move(value));
    }
    return selected;
}

} // namespace

HRESULT ResolveEntry(const mailbox::AddressBook& book, const ADRENTRY& entry, Resolution& resolution) {
    if (entry.cValues > 0 && !entry.rgPropVals)
        return MAPI_E_INVALID_PARAMETER;
    resolution = {};
    if (FindValue(entry, PR_ENTRYID)) {
        resolution.flag = MAPI_RESOLVED;
        return S_OK;
    }
    std::wstring name;
    if (const HRESULT status = NameOf(entry, name); FAILED(status))
        return status;
    const HRESULT status = book.Resolve(name, resolution.entry);
    if (status == MAPI_E_AMBIGUOUS_RECIP)
        resolution.flag = MAPI_AMBIGUOUS;
    else if (SUCCEEDED(status))
        resolution.flag = MAPI_RESOLVED;
    return S_OK;
}

void FillEntry(ADRENTRY& entry, const PropertyBag& properties, bool wide) {
    std::vector<Property> filled;
    for (const Property& property : properties) {
        auto converted =
            mailbox::ConvertValue(property.value, TypeOf(WithTextWidth(property.Tag(), wide)), CP_ACP);
        filled.push_back({property.id, std::move(converted).value_or(property.value)});
    }
    for (const SPropValue& value : ValuesOf(entry))
        if (!properties.Contains(value.ulPropTag))
            filled.push_back(Taken(value));
    SPropValue* old = entry.rgPropVals;
    entry.rgPropVals = NewPropArray(filled);
    entry.cValues = static_cast<ULONG>(filled.size());
    FreeOld(old);
}

HRESULT ResolveList(const mailbox::AddressBook& book, bool wide, ADRLIST& list) {
    std::vector<Resolution> resolutions(list.cEntries);
    for (ULONG i = 0; i < list.cEntries; ++i)
        if (const HRESULT status = ResolveEntry(book, list.aEntries[i], resolutions[i]); FAILED(status))
            return status;
    for (ULONG i = 0; i < list.cEntries; ++i)
        if (resolutions[i].entry)
            FillEntry(list.aEntries[i], resolutions[i].entry->RecipientProperties(), wide);
    const auto any = [&](ULONG flag) {
        return std::ranges::find(resolutions, flag, &Resolution::flag) != resolutions.end();
    };
    if (any(MAPI_AMBIGUOUS))
        return MAPI_E_AMBIGUOUS_RECIP;
    return any(MAPI_UNRESOLVED) ? MAPI_E_NOT_FOUND : S_OK;
}

HRESULT ResolveListWithFlags(const mailbox::AddressBook& book, const SPropTagArray* tags, bool wide,
                             ADRLIST& list, FlagList& flags) {
    if (flags.cFlags != list.cEntries)
        return MAPI_E_INVALID_PARAMETER;
    for (ULONG i = 0; i < list.cEntries; ++i) {
        if (flags.ulFlag[i] == MAPI_RESOLVED)
            continue;
        Resolution resolution;
        if (const HRESULT status = ResolveEntry(book, list.aEntries[i], resolution); FAILED(status))
            return status;
        // A one-off is no entry of the container.
        if (resolution.entry && resolution.entry->IsOneOff())
            continue;
        flags.ulFlag[i] = resolution.flag;
        if (resolution.entry)
            FillEntry(list.aEntries[i],
                      tags ? Selected(*resolution.entry, *tags) : resolution.entry->RecipientProperties(),
                      wide);
    }
    return S_OK;
}

} // namespace standin::mapi
