// The two ways to write a row of an item: a property that shows a property of the message, and (as for any
// other object, see automation/Row.h) a function of its own.
//
//     constexpr Row kMailRows[] = {
//         Stored(L"Subject", kText, PR_SUBJECT_W),
//         Stored(L"Importance", kNumber, PR_IMPORTANCE, IMPORTANCE_NORMAL),
//         Named(L"FlagRequest", kText, PT_UNICODE, kPsCommon, 0x8530),
//         {L"Send", Get<Send>},
//     };
//
// The access and the automation type stand in the object model; a row that can be written is refused there
// where the model says that it is read-only.
#pragma once

#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"

namespace standin::outlook {

_variant_t GetStored(Object& item, const Call& call);
void PutStored(Object& item, const Call& call);

/// A property with a tag of its own.
constexpr Row Stored(const wchar_t* name, const Conversion& conversion, mailbox::PropertyTag tag,
                     std::int32_t fallback = 0) {
    return {name, GetStored, PutStored, {.conversion = &conversion, .tag = tag, .fallback = fallback}};
}

/// A named property, by number or by text, whose type is `type` (PT_...).
constexpr Row Named(const wchar_t* name, const Conversion& conversion, mailbox::PropertyType type,
                    const GUID& set, std::uint32_t number, std::int32_t fallback = 0) {
    return {name,
            GetStored,
            PutStored,
            {.conversion = &conversion, .tag = type, .set = &set, .number = number, .fallback = fallback}};
}
constexpr Row Named(const wchar_t* name, const Conversion& conversion, mailbox::PropertyType type,
                    const GUID& set, const wchar_t* propertyName, std::int32_t fallback = 0) {
    return {
        name,
        GetStored,
        PutStored,
        {.conversion = &conversion, .tag = type, .set = &set, .name = propertyName, .fallback = fallback}};
}

} // namespace standin::outlook
