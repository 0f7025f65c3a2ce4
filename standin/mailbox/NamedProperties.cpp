// Ids for names.
#include "standin/mailbox/NamedProperties.h"

#include "standin/mailbox/Tags.h"

#include <cstring>

namespace standin::mailbox {

std::size_t PropertyNameHash::operator()(const PropertyName& name) const {
    std::size_t set = 0;
    std::memcpy(&set, &name.set, sizeof set);
    return set ^ std::hash<std::variant<std::uint32_t, std::wstring>>()(name.id);
}

PropertyId NamedProperties::Id(const PropertyName& name) const {
    const auto* number = std::get_if<std::uint32_t>(&name.id);
    if (name.set == kPsMapi)
        return number && *number < kFirstNamedId ? static_cast<PropertyId>(*number) : PropertyId{0};
    const auto found = m_ids.find(name);
    return found == m_ids.end() ? PropertyId{0} : found->second;
}

PropertyId NamedProperties::Id(const PropertyName& name, bool create) {
    constexpr std::size_t kMostNames = 0xFFFE - kFirstNamedId + 1;
    if (const PropertyId id = Id(name); id != 0 || !create)
        return id;
    if (name.set == kPsMapi || m_names.size() >= kMostNames)
        return 0;
    const auto id = static_cast<PropertyId>(kFirstNamedId + m_names.size());
    m_names.push_back(name);
    m_ids.emplace(name, id);
    return id;
}

const PropertyName* NamedProperties::Name(PropertyId id) const {
    const std::size_t index = std::size_t{id} - kFirstNamedId;
    return id >= kFirstNamedId && index < m_names.size() ? &m_names[index] : nullptr;
}

PropertyTag RemapTag(PropertyTag tag, const NamedProperties& from, NamedProperties& to) {
    if (!IsNamed(tag))
        return tag;
    const PropertyName* name = from.Name(IdOf(tag));
    const PropertyId id = name ? to.Id(*name, true) : PropertyId{0};
    return id == 0 ? 0 : MakeTag(id, TypeOf(tag));
}

PropertyBag RemapBag(const PropertyBag& bag, const NamedProperties& from, NamedProperties& to) {
    PropertyBag remapped;
    remapped.Reserve(bag.Size());
    for (const Property& property : bag)
        if (const PropertyTag tag = RemapTag(property.Tag(), from, to))
            remapped.Put(tag, property.value);
    return remapped;
}

} // namespace standin::mailbox
