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

#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"

namespace standin::outlook {

_variant_t GetStored(Object& item, const Call& call);
void PutStored(Object& item, const Call& call);
/// The message of an item that came as an object.
mailbox::OpenMessage& MessageOf(Object& item);

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

template <void (*follow)(mailbox::OpenMessage&)>
void PutThen(Object& item, const Call& call) {
    PutStored(item, call);
    follow(MessageOf(item));
}

template <void (*check)(const mailbox::OpenMessage&)>
void CheckThenPut(Object& item, const Call& call) {
    check(MessageOf(item));
    PutStored(item, call);
}

/// The same property, with what else follows from writing it: for what Outlook keeps together.
template <void (*follow)(mailbox::OpenMessage&)>
constexpr Row Then(Row row) {
    row.put = PutThen<follow>;
    return row;
}

/// The same property, written only where `check` doesn't raise.
template <void (*check)(const mailbox::OpenMessage&)>
constexpr Row Provided(Row row) {
    row.put = CheckThenPut<check>;
    return row;
}

/// The same property, written by a function of its own.
template <auto function>
constexpr Row WrittenBy(Row row) {
    row.put = Put<function>;
    return row;
}

/// A property whose value is always the same: writing it that value is no failure, any other raises
/// E_NOTIMPL.
template <auto value>
void PutOnly(Object&, const Call& call) {
    if (_variant_t(call.arguments[0]) != Result(value))
        throw NotBuilt(call.member.name + L" other than what it is");
}
template <auto value>
constexpr Row Constant(const wchar_t* name) {
    return {name, Always<value>, PutOnly<value>};
}

} // namespace standin::outlook
