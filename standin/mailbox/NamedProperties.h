// The names of a store's named properties and the property ids that stand for them.
#pragma once

#include "standin/mailbox/Property.h"

#include <functional>
#include <memory>
#include <unordered_map>

namespace standin::mailbox {

/// The name of a named property: a property set, and a number or a text within it. Texts compare exactly,
/// case included ([MS-OXCDATA] 2.6.1).
struct PropertyName {
    GUID set{};
    std::variant<std::uint32_t, std::wstring> id;

    bool operator==(const PropertyName&) const = default;
};

struct PropertyNameHash {
    std::size_t operator()(const PropertyName& name) const;
};

/// Gives names ids from 0x8000 on, in the order in which they are first asked for. One per store: an id means
/// nothing in another store. Names of the set PS_MAPI are ids below 0x8000 themselves.
class NamedProperties {
public:
    /// The id of a name; 0 if it has none yet and none is to be made, or if all ids are given away.
    PropertyId Id(const PropertyName& name, bool create);
    PropertyId Id(const PropertyName& name) const;
    /// The name behind an id; null for an id that was not given to a name.
    const PropertyName* Name(PropertyId id) const;
    /// All names, that of 0x8000 first.
    const std::vector<PropertyName>& Names() const { return m_names; }

private:
    std::vector<PropertyName> m_names;
    std::unordered_map<PropertyName, PropertyId, PropertyNameHash> m_ids;
};

/// The tag that a property of one store has in another. Tags without a name stay as they are; a named one
/// whose id has no name gives 0.
PropertyTag RemapTag(PropertyTag tag, const NamedProperties& from, NamedProperties& to);
/// The same for a whole bag; properties whose tags give 0 are left out.
PropertyBag RemapBag(const PropertyBag& bag, const NamedProperties& from, NamedProperties& to);

} // namespace standin::mailbox
