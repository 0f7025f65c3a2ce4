// What a message consists of. Saved content never changes and is shared by all who look at it.
#pragma once

#include "standin/mailbox/NamedProperties.h"
#include "standin/mailbox/Property.h"

#include <memory>
#include <vector>

namespace standin::mailbox {

struct Content;

/// An attachment: a file (its bytes are PR_ATTACH_DATA_BIN), an embedded message (method 5) or an OLE object
/// (method 6). The method is PR_ATTACH_METHOD, and may be at odds with what there is.
struct Attachment {
    /// PR_ATTACH_NUM: names the attachment within its message, and stays when others are removed.
    std::uint32_t number = 0;
    PropertyBag properties;
    /// The embedded message; null if there is none.
    std::shared_ptr<const Content> embedded;
    /// The OLE object's storage as the bytes of a compound file; null if there is none.
    std::shared_ptr<const Bytes> oleStorage;
};

/// A message's own properties, its recipient rows (each with PR_ROWID) and its attachments.
struct Content {
    PropertyBag properties;
    std::vector<PropertyBag> recipients;
    std::vector<std::shared_ptr<const Attachment>> attachments;
};

using ContentPtr = std::shared_ptr<const Content>;
using AttachmentPtr = std::shared_ptr<const Attachment>;

/// Whether two messages hold the same: property by property, row by row, embedded messages and OLE bytes
/// included.
bool SameContent(const Content& left, const Content& right);

/// Content for a store with other named properties. Remaps embedded messages too.
Content RemapContent(const Content& content, const NamedProperties& from, NamedProperties& to);

/// The bytes that the content takes up, as PR_MESSAGE_SIZE counts them.
std::uint64_t SizeOf(const PropertyBag& bag);
std::uint64_t SizeOf(const Content& content);

} // namespace standin::mailbox
