// What filters and sorting know of items: their properties by name, and users' own fields.
#pragma once

#include "standin/mailbox/Folder.h"
#include "standin/outlook/filter/Comparable.h"

#include <functional>

namespace standin::outlook {

/// A property of items, as a filter reads it.
struct Field {
    FieldType type = FieldType::Text;
    std::function<Comparable(const mailbox::MessageProperties& message)> read;
};

/// A property by its name in the object model, with or without blanks and case ignored, or a field that users
/// defined in the folder. Nothing for a name that there isn't, or that Outlook doesn't filter by. Raises
/// E_NOTIMPL for a property that Outlook has and the stand-in can't read from a message.
std::optional<Field> FindField(std::wstring_view name, const mailbox::Folder& folder);
/// The same for sorting, where Outlook takes no keywords.
std::optional<Field> FindSortField(std::wstring_view name, const mailbox::Folder& folder);

/// A property by its schema name. Dates are in UTC.
std::optional<Field> FindSchemaField(std::wstring_view name);

} // namespace standin::outlook
