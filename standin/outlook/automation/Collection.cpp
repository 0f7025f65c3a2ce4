// Collections: by place, by name, step by step.
#include "standin/outlook/automation/Collection.h"

#include "standin/outlook/automation/Enumerator.h"

#include <mapidefs.h>

#include <mapicode.h>

#include <algorithm>

namespace standin::outlook {
namespace {

std::int32_t Count(Collection& collection) {
    return collection.Count();
}

_variant_t Item(Collection& collection, const Arguments& arguments) {
    return collection.Item(arguments[0]);
}

_variant_t First(Collection& collection) {
    return collection.First();
}

_variant_t Next(Collection& collection) {
    return collection.Next();
}

_variant_t Previous(Collection& collection) {
    return collection.Previous();
}

_variant_t Last(Collection& collection) {
    return collection.Last();
}

constexpr Row kRows[] = {
    {L"Count", Get<Count>},          {L"Item", Get<Item>},
    {L"GetFirst", Get<First>},       {L"GetNext", Get<Next>},
    {L"GetPrevious", Get<Previous>}, {L"GetLast", Get<Last>},
};

} // namespace

const std::span<const Row> kCollectionRows = kRows;

_variant_t Collection::Named(const std::wstring&) {
    throw Failure(MAPI_E_NOT_FOUND);
}

_variant_t Collection::Item(std::int32_t place) {
    if (place < 1 || place > Count())
        throw IndexOutOfBounds();
    return At(place);
}

_variant_t Collection::Item(const VARIANT& index) {
    if (index.vt == VT_BSTR)
        return Named(std::wstring(TextOf(index)));
    _variant_t number;
    if (FAILED(Convert(index, VT_I4, LOCALE_USER_DEFAULT, number)))
        throw InvalidValue();
    return Item(static_cast<std::int32_t>(number.lVal));
}

_variant_t Collection::StepTo(std::int32_t place) {
    const std::int32_t count = Count();
    m_place = std::clamp(place, 0, count + 1);
    return place >= 1 && place <= count ? At(place) : Result(ComPtr<Object>());
}

_variant_t Collection::Enumerate() {
    return Result(MakeEnumerator(this));
}

} // namespace standin::outlook
