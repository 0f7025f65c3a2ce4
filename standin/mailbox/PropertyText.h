// Properties as text, for .ini files.
#pragma once

#include "standin/mailbox/Ini.h"
#include "standin/mailbox/NamedProperties.h"

namespace standin::mailbox {

/// A value as text that ValueFromText takes back; nothing for one that isn't kept (narrow text, null
/// pointers, errors, objects). Values of several end with a semicolon each.
std::optional<std::wstring> TextOfValue(const Value& value);
std::optional<Value> ValueFromText(PropertyType type, std::wstring_view text);

/// A section with a bag's properties: "3004001F=..." or, for a named one, "{set}#00008054 1102=..." and
/// "{set}$text 001F=...".
IniSection PropertySection(const PropertyBag& bag, const NamedProperties& names);
/// Throws IniError.
PropertyBag ParseProperties(const IniSection& section, NamedProperties& names);
/// One line of such a section.
void ParseProperty(const IniEntry& entry, NamedProperties& names, PropertyBag& bag);

} // namespace standin::mailbox
