// MAPI properties: tags, values of every type, and the bag that holds the properties of one object.
#pragma once

#include <windows.h>

#include <mapicode.h>
#include <mapidefs.h>
#include <mapitags.h>

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace standin::mailbox {

/// Property id in the high half, property type (PT_..., [MS-OXCDATA] 2.11.1) in the low one.
using PropertyTag = std::uint32_t;
using PropertyId = std::uint16_t;
using PropertyType = std::uint16_t;
using Bytes = std::vector<std::uint8_t>;

constexpr PropertyId IdOf(PropertyTag tag) {
    return static_cast<PropertyId>(tag >> 16);
}
constexpr PropertyType TypeOf(PropertyTag tag) {
    return static_cast<PropertyType>(tag);
}
constexpr PropertyTag MakeTag(PropertyId id, PropertyType type) {
    return PropertyTag{id} << 16 | type;
}

/// Ids from here to 0xFFFE are given to names, store by store.
inline constexpr PropertyId kFirstNamedId = 0x8000;
constexpr bool IsNamed(PropertyTag tag) {
    return IdOf(tag) >= kFirstNamedId;
}

/// PT_NULL.
struct Null {
    auto operator<=>(const Null&) const = default;
};
/// PT_OBJECT: there is an object behind the property, which its owner opens.
struct ObjectMark {
    auto operator<=>(const ObjectMark&) const = default;
};
/// PT_ERROR.
struct ErrorValue {
    HRESULT status = MAPI_E_NOT_FOUND;
    auto operator<=>(const ErrorValue&) const = default;
};
/// PT_CURRENCY, in ten-thousandths.
struct Currency {
    std::int64_t tenThousandths = 0;
    auto operator<=>(const Currency&) const = default;
};
/// PT_APPTIME, an automation date (days since 30 December 1899).
struct AppTime {
    double days = 0;
    auto operator<=>(const AppTime&) const = default;
};
/// PT_SYSTIME, in 100-nanosecond ticks since 1 January 1601, UTC.
struct SysTime {
    std::uint64_t ticks = 0;
    auto operator<=>(const SysTime&) const = default;
};
/// A value of a type with a pointer, whose pointer is null: what a faulty provider hands out. `count` is what
/// its count or length field says all the same. Never written to a file.
struct NullPointer {
    PropertyType type = PT_UNICODE;
    std::uint32_t count = 0;
    auto operator<=>(const NullPointer&) const = default;
};

/// One value. Its alternative says its property type, see TypeOf(Value). PT_STRING8 text is in the code page
/// of its bag, see CodePageOf.
using Value = std::variant<Null, std::int16_t, std::int32_t, float, double, Currency, AppTime, ErrorValue,
                           bool, ObjectMark, std::int64_t, std::string, std::wstring, SysTime, GUID, Bytes,
                           std::vector<std::int16_t>, std::vector<std::int32_t>, std::vector<float>,
                           std::vector<double>, std::vector<Currency>, std::vector<AppTime>,
                           std::vector<std::int64_t>, std::vector<std::string>, std::vector<std::wstring>,
                           std::vector<SysTime>, std::vector<GUID>, std::vector<Bytes>, NullPointer>;

/// The property type of each alternative of Value, in their order; NullPointer has the type it names itself.
inline constexpr std::array<PropertyType, std::variant_size_v<Value> - 1> kTypeOfAlternative{
    PT_NULL,       PT_I2,      PT_LONG,       PT_R4,         PT_DOUBLE,     PT_CURRENCY,  PT_APPTIME,
    PT_ERROR,      PT_BOOLEAN, PT_OBJECT,     PT_I8,         PT_STRING8,    PT_UNICODE,   PT_SYSTIME,
    PT_CLSID,      PT_BINARY,  PT_MV_I2,      PT_MV_LONG,    PT_MV_R4,      PT_MV_DOUBLE, PT_MV_CURRENCY,
    PT_MV_APPTIME, PT_MV_I8,   PT_MV_STRING8, PT_MV_UNICODE, PT_MV_SYSTIME, PT_MV_CLSID,  PT_MV_BINARY};

/// The alternative of Value that holds a property type; the count of types for one that has none.
constexpr std::size_t AlternativeOf(PropertyType type) {
    std::size_t index = 0;
    while (index < kTypeOfAlternative.size() && kTypeOfAlternative[index] != type)
        ++index;
    return index;
}

/// The C++ type of a tag's values: std::wstring for PR_SUBJECT_W.
template <PropertyTag tag>
using Native = std::variant_alternative_t<AlternativeOf(TypeOf(tag)), Value>;

PropertyType TypeOf(const Value& value);

/// Whether a value of this type is text, single or multi-valued, narrow or wide.
constexpr bool IsText(PropertyType type) {
    const PropertyType single = type & ~MV_FLAG;
    return single == PT_STRING8 || single == PT_UNICODE;
}

/// Text from and to a code page. What the code page doesn't have becomes its default character.
std::wstring Widen(std::string_view text, UINT codePage);
std::string Narrow(std::wstring_view text, UINT codePage);

/// A value as a reader asks for it: the value itself when `wanted` is its type or PT_UNSPECIFIED, converted
/// between PT_STRING8 and PT_UNICODE (also multi-valued), otherwise nothing.
std::optional<Value> ConvertValue(const Value& value, PropertyType wanted, UINT codePage);

/// A property as it stands in a bag.
struct Property {
    PropertyId id = 0;
    Value value;

    PropertyTag Tag() const { return MakeTag(id, TypeOf(value)); }
    bool operator==(const Property&) const = default;
};

/// The properties of one object, one value per id, in ascending order of id. A bag takes any value for any
/// id: it is the object that holds the bag that is particular about what belongs where.
///
///     bag.Set<PR_SUBJECT_W>(L"Hello");
///     if (const std::wstring* subject = bag.Get<PR_SUBJECT_W>()) ...
class PropertyBag {
public:
    /// The value under the tag's id, of whatever type; null if there is none.
    const Value* Find(PropertyTag tag) const;
    Value* Find(PropertyTag tag);
    bool Contains(PropertyTag tag) const { return Find(tag) != nullptr; }

    /// The value under the tag's id as MAPI answers it: see ConvertValue. MAPI_E_NOT_FOUND if there is none
    /// that fits the tag's type.
    HRESULT Read(PropertyTag tag, Value& value) const;

    /// The value, if it is there with exactly the tag's type.
    template <PropertyTag tag>
    const Native<tag>* Get() const {
        const Value* value = Find(tag);
        return value ? std::get_if<Native<tag>>(value) : nullptr;
    }
    template <PropertyTag tag>
    Native<tag> GetOr(Native<tag> fallback) const {
        const Native<tag>* value = Get<tag>();
        return value ? *value : std::move(fallback);
    }

    /// Stores under the tag's id, in place of what was there. Put takes the type from the value, not from the
    /// tag.
    template <PropertyTag tag>
    void Set(Native<tag> value) {
        Put(tag, Value(std::in_place_index<AlternativeOf(TypeOf(tag))>, std::move(value)));
    }
    void Put(PropertyTag tag, Value value);
    /// Whether there was something to remove under the tag's id.
    bool Remove(PropertyTag tag);
    void Clear() { m_properties.clear(); }
    /// Makes room for so many in all.
    void Reserve(std::size_t count) { m_properties.reserve(count); }

    std::size_t Size() const { return m_properties.size(); }
    bool Empty() const { return m_properties.empty(); }
    std::vector<Property>::const_iterator begin() const { return m_properties.begin(); }
    std::vector<Property>::const_iterator end() const { return m_properties.end(); }
    bool operator==(const PropertyBag&) const = default;

private:
    std::vector<Property> m_properties;
};

/// The code page of PT_STRING8 values beside these properties: PR_MESSAGE_CODEPAGE, or else Windows-1252.
UINT CodePageOf(const PropertyBag& bag);

} // namespace standin::mailbox
