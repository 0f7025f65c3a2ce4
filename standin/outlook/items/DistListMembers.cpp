// Reads and writes the members of distribution lists.
#include "standin/outlook/items/DistListMembers.h"

#include "standin/mailbox/ByteOrder.h"
#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mapi/RtfCompression.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"
#include "standin/outlook/session/Session.h"

#include <algorithm>

namespace standin::outlook {
namespace {

using mailbox::Bytes;
using EntryIds = std::vector<Bytes>;

constexpr StoredProperty kChecksum{.tag = PT_LONG, .set = &kPsAddress, .number = 0x804C};
constexpr StoredProperty kOneOffMembers{.tag = PT_MV_BINARY, .set = &kPsAddress, .number = 0x8054};
constexpr StoredProperty kMembers{.tag = PT_MV_BINARY, .set = &kPsAddress, .number = 0x8055};

/// The provider of wrapped entry ids, and the words about what is inside ([MS-OXOCNTC] 2.2.2.2.4.1): mail
/// user or list of the global address list, without a choice of electronic addresses.
using Uid = std::array<std::uint8_t, 16>;
constexpr Uid kWrapper{0xC0, 0x91, 0xAD, 0xD3, 0x51, 0x9D, 0xCF, 0x11,
                       0xA4, 0xA9, 0x00, 0xAA, 0x00, 0x47, 0xFA, 0xA4};
constexpr std::uint8_t kUser = 0xB5, kList = 0xB6;

Bytes Wrap(const mailbox::AddressEntry& entry) {
    const Bytes inside = entry.EntryId();
    mailbox::ByteWriter id;
    id.AddZeros(4).Add(kWrapper).Add(entry.IsDistributionList() ? kList : kUser);
    return id.AddBytes(inside.data(), inside.size()).Take();
}

/// What is inside; the id itself if nothing is wrapped around it.
Bytes Unwrap(const Bytes& entryId) {
    mailbox::ByteReader in(entryId);
    in.Skip(4);
    if (in.Take<Uid>() != kWrapper)
        return entryId;
    in.Skip(1);
    return Bytes(entryId.end() - static_cast<std::ptrdiff_t>(in.Left()), entryId.end());
}

EntryIds Read(const mailbox::MessageProperties& message, const StoredProperty& stored) {
    return ReadAs<EntryIds>(message, stored).value_or(EntryIds());
}

std::int32_t ChecksumOf(const EntryIds& ids) {
    Bytes all;
    for (const Bytes& id : ids)
        all.insert(all.end(), id.begin(), id.end());
    return static_cast<std::int32_t>(mapi::Checksum(all));
}

} // namespace

std::vector<ListMember> ReadMembers(const mailbox::MessageProperties& message) {
    EntryIds ids = Read(message, kMembers), oneOffs = Read(message, kOneOffMembers);
    oneOffs.resize(ids.size());
    std::vector<ListMember> members;
    for (std::size_t i = 0; i < ids.size(); ++i)
        members.push_back({std::move(ids[i]), std::move(oneOffs[i])});
    return members;
}

void WriteMembers(mailbox::OpenMessage& message, const std::vector<ListMember>& members) {
    if (members.empty()) {
        for (const StoredProperty& stored : {kMembers, kOneOffMembers, kChecksum})
            RemoveValue(message, stored);
        return;
    }
    EntryIds ids, oneOffs;
    for (const ListMember& member : members) {
        ids.push_back(member.entryId);
        oneOffs.push_back(member.oneOff);
    }
    WriteValue(message, kChecksum, ChecksumOf(ids));
    WriteValue(message, kMembers, std::move(ids));
    WriteValue(message, kOneOffMembers, std::move(oneOffs));
}

ListMember MakeMember(const mailbox::AddressEntry& entry) {
    Bytes oneOff = entry.IsOneOff()
                       ? entry.EntryId()
                       : mailbox::MakeOneOffEntryId(entry.Name(), entry.AddressType(), entry.Address());
    return {entry.IsOneOff() ? oneOff : Wrap(entry), oneOff};
}

std::shared_ptr<mailbox::AddressEntry> EntryOf(const ListMember& member) {
    const mailbox::AddressBook& book = LoggedOnWorld().Addresses();
    std::shared_ptr<mailbox::AddressEntry> entry;
    if (FAILED(book.Open(Unwrap(member.entryId), entry)) && FAILED(book.Open(member.oneOff, entry)))
        return nullptr;
    return entry;
}

} // namespace standin::outlook
