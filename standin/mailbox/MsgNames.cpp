// Named properties in MSG files ([MS-OXMSG] 2.2.3).
#include "standin/mailbox/ByteOrder.h"
#include "standin/mailbox/MsgLayout.h"
#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace standin::mailbox::msg {
namespace {

/// [MS-OXRTFCP] 3.1.3.2: starts with zero and isn't inverted.
std::uint32_t Checksum(std::wstring_view text) {
    std::uint32_t checksum = 0;
    for (const std::uint8_t byte :
         std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size() * sizeof(wchar_t))) {
        checksum ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            checksum = checksum & 1 ? checksum >> 1 ^ 0xEDB88320 : checksum >> 1;
    }
    return checksum;
}

std::optional<GUID> SetByIndex(std::uint16_t index, std::span<const std::uint8_t> listed) {
    if (index == kSetMapi)
        return kPsMapi;
    if (index == kSetPublicStrings)
        return kPsPublicStrings;
    const std::size_t offset = (std::size_t{index} - kFirstListedSet) * sizeof(GUID);
    if (index < kFirstListedSet || offset + sizeof(GUID) > listed.size())
        return std::nullopt;
    return ByteReader(listed.subspan(offset)).Take<GUID>();
}

/// Strings stand with their length in bytes before them.
std::optional<std::wstring> StringAt(std::uint32_t offset, std::span<const std::uint8_t> strings) {
    ByteReader reader(strings);
    reader.Skip(offset);
    const auto size = reader.Take<std::uint32_t>();
    if (!reader.Ok() || size > reader.Left())
        return std::nullopt;
    std::wstring text(size / sizeof(wchar_t), L'\0');
    for (wchar_t& unit : text)
        unit = reader.Take<wchar_t>();
    return text;
}

std::optional<PropertyName> NameOf(const NameEntry& entry, std::span<const std::uint8_t> sets,
                                   std::span<const std::uint8_t> strings) {
    const std::optional<GUID> set = SetByIndex(entry.setAndKind >> 1, sets);
    if (!set)
        return std::nullopt;
    if ((entry.setAndKind & 1) == 0)
        return PropertyName{*set, entry.id};
    std::optional<std::wstring> text = StringAt(entry.id, strings);
    return text ? std::optional(PropertyName{*set, std::move(*text)}) : std::nullopt;
}

/// The index of a name's set; new sets are listed.
std::uint16_t IndexOfSet(const GUID& set, std::vector<GUID>& listed) {
    if (set == kPsMapi)
        return kSetMapi;
    if (set == kPsPublicStrings)
        return kSetPublicStrings;
    auto position = std::ranges::find(listed, set);
    if (position == listed.end())
        position = listed.insert(listed.end(), set);
    return static_cast<std::uint16_t>(kFirstListedSet + (position - listed.begin()));
}

void WriteBytes(IStorage* storage, PropertyTag tag, const Bytes& bytes) {
    WriteStream(storage, ValueName(tag), bytes.data(), bytes.size());
}

} // namespace

std::vector<std::optional<PropertyName>> ReadNames(IStorage* storage, std::uint64_t& budget) {
    StoragePointer names;
    if (FAILED(
            storage->OpenStorage(kNamesName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, nullptr, 0, &names)))
        return {};
    const Bytes sets = ReadStream(names, ValueName(kGuidStream), budget).value_or(Bytes());
    const Bytes strings = ReadStream(names, ValueName(kStringStream), budget).value_or(Bytes());
    const Bytes entries = ReadStream(names, ValueName(kEntryStream), budget).value_or(Bytes());
    std::vector<std::optional<PropertyName>> found;
    ByteReader reader(entries);
    while (reader.Left() >= sizeof(NameEntry)) {
        const auto entry = reader.Take<NameEntry>();
        if (entry.property >= found.size())
            found.resize(std::size_t{entry.property} + 1);
        found[entry.property] = NameOf(entry, sets, strings);
    }
    return found;
}

void WriteNames(IStorage* storage, const std::vector<PropertyName>& names) {
    StoragePointer target;
    Need(storage->CreateStorage(kNamesName, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0,
                                &target));
    std::vector<GUID> sets;
    ByteWriter entries;
    ByteWriter strings;
    std::array<ByteWriter, kBuckets> buckets;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto* text = std::get_if<std::wstring>(&names[i].id);
        NameEntry entry;
        entry.setAndKind = static_cast<std::uint16_t>(IndexOfSet(names[i].set, sets) << 1 | (text ? 1 : 0));
        entry.property = static_cast<std::uint16_t>(i);
        entry.id = text ? static_cast<std::uint32_t>(strings.Size()) : std::get<std::uint32_t>(names[i].id);
        entries.Add(entry);
        if (text) {
            const std::size_t size = text->size() * sizeof(wchar_t);
            strings.Add(static_cast<std::uint32_t>(size)).AddBytes(text->data(), size).AddZeros(size % 4);
            entry.id = Checksum(*text);
        }
        buckets[(entry.id ^ entry.setAndKind) % kBuckets].Add(entry);
    }
    ByteWriter setStream;
    for (const GUID& set : sets)
        setStream.Add(set);
    WriteBytes(target, kGuidStream, setStream.Take());
    WriteBytes(target, kEntryStream, entries.Take());
    WriteBytes(target, kStringStream, strings.Take());
    for (std::uint32_t i = 0; i < kBuckets; ++i)
        if (buckets[i].Size() > 0)
            WriteBytes(target, (kFirstBucket + i) << 16 | PT_BINARY, buckets[i].Take());
}

} // namespace standin::mailbox::msg
