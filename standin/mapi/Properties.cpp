// Reading, writing and removing properties as IMAPIProp does it.
#include "standin/mapi/Buffers.h"
#include "standin/mapi/PropertySide.h"
#include "standin/mapi/Stream.h"
#include "standin/mapi/Values.h"
#include "standin/watch/Watch.h"

#include <algorithm>

namespace standin::mapi {

using mailbox::ErrorValue;
using mailbox::IdOf;
using mailbox::MakeTag;
using mailbox::Property;
using mailbox::PropertyId;
using mailbox::PropertyTag;
using mailbox::TypeOf;
using mailbox::Value;

HRESULT PropertySide::Read(PropertyTag tag, Value& value) const {
    return Properties().Read(tag, value);
}

HRESULT PropertySide::Write(PropertyTag tag, Value value) {
    return Properties().Write(tag, std::move(value));
}

HRESULT PropertySide::Erase(PropertyTag tag) {
    return Properties().Erase(tag);
}

std::vector<PropertyTag> PropertySide::Tags() const {
    return Properties().Tags();
}

/// A message that came out of a file holds more than it gives: its key in the store that it was in.
std::vector<PropertyTag> PropertySide::TagsToCopy() const {
    std::vector<PropertyTag> tags;
    for (const Property& property : Properties().Stored())
        if (Value value; SUCCEEDED(Properties().Read(property.Tag(), value)))
            tags.push_back(property.Tag());
    return tags;
}

HRESULT PropertySide::WriteCopied(PropertyTag tag, Value value) {
    return Properties().Write(tag, std::move(value));
}

HRESULT PropertySide::OpenObject(PropertyTag, REFIID, ULONG, IUnknown**) {
    return MAPI_E_INTERFACE_NOT_SUPPORTED;
}

namespace properties {
namespace {

bool HasOnlyKnownTypes(const SPropTagArray& tags) {
    return std::ranges::all_of(TagsOf(tags), [](ULONG tag) { return IsPropertyType(TypeOf(tag)); });
}

/// The tag to read by for a tag that a caller asks for: without a type it is for the flag to say how wide
/// text is.
Value ReadForCaller(const PropertySide& side, PropertyTag tag, bool wide) {
    Value value;
    if (const HRESULT status = side.Read(tag, value); FAILED(status))
        return ErrorValue{status};
    if (!wide && TypeOf(tag) == PT_UNSPECIFIED)
        if (auto narrow =
                mailbox::ConvertValue(value, TypeOf(WithTextWidth(MakeTag(0, TypeOf(value)), false)), CP_ACP))
            value = std::move(*narrow);
    if (RoomFor(value) > kLargestValue)
        return ErrorValue{MAPI_E_NOT_ENOUGH_MEMORY};
    return value;
}

/// Notes what went wrong with each property; hands the list over where the caller wants it.
class Problems {
public:
    void Add(std::size_t index, PropertyTag tag, HRESULT status) {
        m_list.push_back({static_cast<ULONG>(index), tag, status});
    }
    HRESULT Give(SPropProblemArray** problems) const {
        if (problems)
            *problems = NewProblems(m_list);
        return S_OK;
    }

private:
    std::vector<SPropProblem> m_list;
};

} // namespace

HRESULT CheckId(const PropertySide& side, PropertyTag tag) {
    constexpr PropertyId kNoId = 0;
    constexpr PropertyId kInvalidId = 0xFFFF;
    if (IdOf(tag) == kNoId || IdOf(tag) == kInvalidId)
        return MAPI_E_INVALID_PARAMETER;
    // An id that the store never gave to a name.
    if (mailbox::IsNamed(tag) && !side.Properties().Names().Name(IdOf(tag)))
        return MAPI_E_INVALID_PARAMETER;
    return S_OK;
}

HRESULT GetProps(const PropertySide& side, const SPropTagArray* tags, ULONG flags, ULONG* count,
                 SPropValue** values) {
    if (!count || !values || (tags && (tags->cValues == 0 || !HasOnlyKnownTypes(*tags))))
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~MAPI_UNICODE)
        return MAPI_E_UNKNOWN_FLAGS;
    const bool wide = (flags & MAPI_UNICODE) != 0;
    std::vector<Property> read;
    bool complete = true;
    const auto add = [&](PropertyTag tag) {
        read.push_back({IdOf(tag), ReadForCaller(side, tag, wide)});
        complete = complete && !std::holds_alternative<ErrorValue>(read.back().value);
    };
    if (tags) {
        read.reserve(tags->cValues);
        for (const ULONG tag : TagsOf(*tags))
            add(tag);
    } else {
        for (const PropertyTag tag : side.Tags())
            add(WithTextWidth(tag, wide));
    }
    *values = NewPropArray(read);
    *count = static_cast<ULONG>(read.size());
    return complete ? S_OK : MAPI_W_ERRORS_RETURNED;
}

HRESULT GetPropList(const PropertySide& side, ULONG flags, SPropTagArray** tags) {
    if (!tags)
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~MAPI_UNICODE)
        return MAPI_E_UNKNOWN_FLAGS;
    std::vector<PropertyTag> list = side.Tags();
    for (PropertyTag& tag : list)
        tag = WithTextWidth(tag, (flags & MAPI_UNICODE) != 0);
    *tags = NewTagArray(list);
    return S_OK;
}

HRESULT SetProps(PropertySide& side, ULONG count, const SPropValue* values, SPropProblemArray** problems) {
    if (count == 0 || !values)
        return MAPI_E_INVALID_PARAMETER;
    if (const HRESULT status = side.CheckWritable(); FAILED(status))
        return status;
    // A null pointer among the values refuses them all; every other trouble is one property's own.
    std::vector<Value> taken(count);
    std::vector<HRESULT> statuses(count);
    for (ULONG i = 0; i < count; ++i) {
        statuses[i] = TakeValue(values[i], taken[i]);
        if (statuses[i] == MAPI_E_INVALID_PARAMETER)
            return statuses[i];
    }
    Problems found;
    for (ULONG i = 0; i < count; ++i) {
        const PropertyTag tag = values[i].ulPropTag;
        HRESULT status = statuses[i];
        if (SUCCEEDED(status))
            status = CheckId(side, tag);
        if (SUCCEEDED(status) && RoomFor(taken[i]) > WantedDeviations().largestValueSet)
            status = MAPI_E_NOT_ENOUGH_MEMORY;
        if (SUCCEEDED(status))
            status = side.Write(tag, std::move(taken[i]));
        if (status == MAPI_E_OBJECT_DELETED)
            return status;
        if (FAILED(status))
            found.Add(i, tag, status);
    }
    return found.Give(problems);
}

HRESULT DeleteProps(PropertySide& side, const SPropTagArray* tags, SPropProblemArray** problems) {
    if (!tags || tags->cValues == 0 || !HasOnlyKnownTypes(*tags))
        return MAPI_E_INVALID_PARAMETER;
    if (const HRESULT status = side.CheckWritable(); FAILED(status))
        return status;
    Problems found;
    for (ULONG i = 0; i < tags->cValues; ++i) {
        const PropertyTag tag = tags->aulPropTag[i];
        const HRESULT status = side.Erase(tag);
        if (status == MAPI_E_OBJECT_DELETED)
            return status;
        // To Exchange a property that isn't there is removed already.
        if (FAILED(status) && status != MAPI_E_NOT_FOUND)
            found.Add(i, tag, status);
    }
    return found.Give(problems);
}

HRESULT OpenProperty(PropertySide& side, ULONG tag, const IID* iid, ULONG flags, IUnknown** object) {
    if (!iid || !object)
        return MAPI_E_INVALID_PARAMETER;
    const mailbox::PropertyType type = TypeOf(tag);
    if (type == PT_UNSPECIFIED || type == PT_ERROR || !IsPropertyType(type))
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~(MAPI_CREATE | MAPI_MODIFY | MAPI_DEFERRED_ERRORS | STREAM_APPEND))
        return MAPI_E_UNKNOWN_FLAGS;
    if ((flags & MAPI_CREATE) && !(flags & MAPI_MODIFY))
        return MAPI_E_INVALID_PARAMETER;
    if (flags & MAPI_MODIFY)
        if (const HRESULT status = side.CheckWritable(); FAILED(status))
            return status;
    if (*iid != kIidStream)
        return side.OpenObject(tag, *iid, flags, object);
    return OpenPropertyStream(side, tag, flags, object);
}

} // namespace properties
} // namespace standin::mapi
