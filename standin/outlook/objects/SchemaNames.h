// Properties by the names of schemas, as PropertyAccessor and "@SQL=" filters give them.
#pragma once

#include "standin/mailbox/PropertyObject.h"
#include "standin/outlook/automation/Row.h"

#include <memory>

namespace standin::outlook {

/// A property that a schema name means. `stored.conversion` stays empty.
struct SchemaProperty {
    StoredProperty stored;
    std::wstring name; ///< what stored.name points to
    GUID set{};        ///< what stored.set points to
};

/// A property by its schema name: ".../mapi/proptag/0x0037001F", ".../mapi/id/{set}/XXXXTTTT",
/// ".../mapi/string/{set}/name" or ".../name/0x0000001F", and the better known of "urn:schemas:...". Null for
/// a text that is none of these.
std::unique_ptr<SchemaProperty> ParseSchemaName(std::wstring_view name);

} // namespace standin::outlook
