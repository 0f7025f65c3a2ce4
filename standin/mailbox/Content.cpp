// Comparing, remapping and measuring message content.
#include "standin/mailbox/Content.h"

#include <algorithm>

namespace standin::mailbox {
namespace {

bool SameAttachment(const Attachment& left, const Attachment& right) {
    if (left.properties != right.properties)
        return false;
    if (!left.embedded != !right.embedded || !left.oleStorage != !right.oleStorage)
        return false;
    if (left.embedded && !SameContent(*left.embedded, *right.embedded))
        return false;
    return !left.oleStorage || *left.oleStorage == *right.oleStorage;
}

template <class T>
std::uint64_t SizeOfPart(const T&) {
    return sizeof(T);
}
template <class T>
std::uint64_t SizeOfPart(const std::basic_string<T>& text) {
    return (text.size() + 1) * sizeof(T);
}
std::uint64_t SizeOfPart(const NullPointer&) {
    return 0;
}
template <class T>
std::uint64_t SizeOfPart(const std::vector<T>& values) {
    if constexpr (std::is_arithmetic_v<T>)
        return values.size() * sizeof(T);
    std::uint64_t size = 0;
    for (const T& value : values)
        size += SizeOfPart(value);
    return size;
}

} // namespace

bool SameContent(const Content& left, const Content& right) {
    return left.properties == right.properties && left.recipients == right.recipients &&
           std::ranges::equal(left.attachments, right.attachments, [](const auto& one, const auto& other) {
               return SameAttachment(*one, *other);
           });
}

Content RemapContent(const Content& content, const NamedProperties& from, NamedProperties& to) {
    Content remapped;
    remapped.properties = RemapBag(content.properties, from, to);
    for (const PropertyBag& recipient : content.recipients)
        remapped.recipients.push_back(RemapBag(recipient, from, to));
    for (const AttachmentPtr& attachment : content.attachments) {
        auto copy = std::make_shared<Attachment>();
        copy->number = attachment->number;
        copy->properties = RemapBag(attachment->properties, from, to);
        copy->oleStorage = attachment->oleStorage;
        if (attachment->embedded)
            copy->embedded = std::make_shared<const Content>(RemapContent(*attachment->embedded, from, to));
        remapped.attachments.push_back(std::move(copy));
    }
    return remapped;
}

std::uint64_t SizeOf(const PropertyBag& bag) {
    std::uint64_t size = 0;
    for (const Property& property : bag)
        size += sizeof(PropertyTag) +
                std::visit([](const auto& value) { return SizeOfPart(value); }, property.value);
    return size;
}

std::uint64_t SizeOf(const Content& content) {
    std::uint64_t size = SizeOf(content.properties);
    for (const PropertyBag& recipient : content.recipients)
        size += SizeOf(recipient);
    for (const AttachmentPtr& attachment : content.attachments) {
        size += SizeOf(attachment->properties);
        if (attachment->embedded)
            size += SizeOf(*attachment->embedded);
        if (attachment->oleStorage)
            size += attachment->oleStorage->size();
    }
    return size;
}

} // namespace standin::mailbox
