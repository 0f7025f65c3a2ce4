// Entry ids put together and taken apart.
#include "standin/mailbox/EntryId.h"

#include "standin/mailbox/ByteOrder.h"

namespace standin::mailbox {
namespace {

using Uid = std::array<std::uint8_t, 16>;

// [MS-OXCDATA] 2.2.4.3, 2.2.5.1, 2.2.5.2.
constexpr Uid kWrappedStoreProvider{0x38, 0xA1, 0xBB, 0x10, 0x05, 0xE5, 0x10, 0x1A,
                                    0xA1, 0xBB, 0x08, 0x00, 0x2B, 0x2A, 0x56, 0xC2};
constexpr Uid kMailboxStoreProvider{0x1B, 0x55, 0xFA, 0x20, 0xAA, 0x66, 0x11, 0xCD,
                                    0x9B, 0xC8, 0x00, 0xAA, 0x00, 0x2F, 0xC4, 0x5A};
constexpr Uid kPublicStoreProvider{0x1C, 0x83, 0x02, 0x10, 0xAA, 0x66, 0x11, 0xCD,
                                   0x9B, 0xC8, 0x00, 0xAA, 0x00, 0x2F, 0xC4, 0x5A};
constexpr Uid kOneOffProvider MAPI_ONE_OFF_UID;
constexpr Uid kAddressBookProvider{0xDC, 0xA7, 0x40, 0xC8, 0xC0, 0x42, 0x10, 0x1A,
                                   0xB4, 0xB9, 0x08, 0x00, 0x2B, 0x2F, 0xE1, 0x82};

// [MS-OXCDATA] 2.2.4: FolderType and MessageType.
enum class ObjectType : std::uint16_t {
    PrivateFolder = 1,
    PublicFolder = 3,
    PrivateMessage = 7,
    PublicMessage = 9
};

constexpr std::size_t kFolderEntryIdSize = 46;
constexpr std::size_t kMessageEntryIdSize = 70;
constexpr std::uint16_t kOneOffNoLookUp = 0x1000;

using Counter = std::array<std::uint8_t, 6>; // most significant byte first

Counter PackCounter(std::uint64_t value) {
    Counter counter;
    for (std::size_t i = 0; i < counter.size(); ++i)
        counter[i] = static_cast<std::uint8_t>(value >> 8 * (counter.size() - 1 - i));
    return counter;
}

std::uint64_t UnpackCounter(const Counter& counter) {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : counter)
        value = value << 8 | byte;
    return value;
}

void AddObject(ByteWriter& id, const GUID& database, std::uint64_t counter) {
    id.Add(database).Add(PackCounter(counter)).AddZeros(2);
}

} // namespace

std::wstring ToHex(std::span<const std::uint8_t> bytes) {
    constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    std::wstring text;
    text.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::optional<Bytes> FromHex(std::wstring_view text) {
    const auto digit = [](wchar_t unit) {
        if (unit >= L'0' && unit <= L'9')
            return unit - L'0';
        const wchar_t lower = static_cast<wchar_t>(unit | 0x20);
        return lower >= L'a' && lower <= L'f' ? lower - L'a' + 10 : -1;
    };
    if (text.size() % 2 != 0)
        return std::nullopt;
    Bytes bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const int high = digit(text[i]);
        const int low = digit(text[i + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes.push_back(static_cast<std::uint8_t>(high << 4 | low));
    }
    return bytes;
}

Bytes MakeFolderEntryId(const StoreKey& store, std::uint64_t folder) {
    ByteWriter id;
    id.AddZeros(4).Add(store.provider);
    id.Add(store.isPublic ? ObjectType::PublicFolder : ObjectType::PrivateFolder);
    AddObject(id, store.database, folder);
    return id.Take();
}

Bytes MakeMessageEntryId(const StoreKey& store, std::uint64_t folder, std::uint64_t message) {
    ByteWriter id;
    id.AddZeros(4).Add(store.provider);
    id.Add(store.isPublic ? ObjectType::PublicMessage : ObjectType::PrivateMessage);
    AddObject(id, store.database, folder);
    AddObject(id, store.database, message);
    return id.Take();
}

Bytes MakeRecordKey(const StoreKey& store, std::uint64_t counter) {
    return ByteWriter().Add(store.database).Add(PackCounter(counter)).Take();
}

Bytes MakeInstanceKey(std::uint64_t counter) {
    return ByteWriter().Add(counter).Take();
}

Bytes MakeStoreEntryId(bool isPublic, std::string_view server, std::string_view dn) {
    constexpr char kDllFileName[14] = "emsmdb.dll";
    ByteWriter id;
    id.AddZeros(4).Add(kWrappedStoreProvider).AddZeros(2).Add(kDllFileName);
    id.AddZeros(4).Add(isPublic ? kPublicStoreProvider : kMailboxStoreProvider);
    id.Add(std::uint32_t{isPublic ? 0x06u : 0x0Cu}).AddText(server).AddText(dn);
    return id.Take();
}

Bytes ProviderOf(const Bytes& storeEntryId) {
    constexpr std::size_t kWrappedProviderOffset = 40;
    ByteReader reader(storeEntryId);
    reader.Skip(kWrappedProviderOffset);
    return ByteWriter().Add(reader.Take<Uid>()).Take();
}

Bytes MakeAddressBookEntryId(std::uint32_t type, std::string_view dn) {
    ByteWriter id;
    id.AddZeros(4).Add(kAddressBookProvider).Add(std::uint32_t{1}).Add(type).AddText(dn);
    return id.Take();
}

Bytes MakeOneOffEntryId(std::wstring_view name, std::wstring_view addressType, std::wstring_view address,
                        bool unicode, bool sendRichInfo) {
    std::uint16_t flags = kOneOffNoLookUp;
    flags |= static_cast<std::uint16_t>(unicode ? MAPI_ONE_OFF_UNICODE : 0);
    flags |= static_cast<std::uint16_t>(sendRichInfo ? 0 : MAPI_ONE_OFF_NO_RICH_INFO);
    ByteWriter id;
    id.AddZeros(4).Add(kOneOffProvider).AddZeros(2).Add(flags);
    for (const std::wstring_view text : {name, addressType, address}) {
        if (unicode)
            id.AddText(text);
        else
            id.AddText(std::string_view(Narrow(text, CP_ACP)));
    }
    return id.Take();
}

std::optional<ObjectEntryId> ParseObjectEntryId(std::span<const std::uint8_t> entryId) {
    if (entryId.size() != kFolderEntryIdSize && entryId.size() != kMessageEntryIdSize)
        return std::nullopt;
    ByteReader reader(entryId);
    reader.Skip(4);
    ObjectEntryId parsed;
    parsed.provider = reader.Take<GUID>();
    const auto type = reader.Take<ObjectType>();
    parsed.database = reader.Take<GUID>();
    parsed.folder = UnpackCounter(reader.Take<Counter>());
    reader.Skip(2);
    if (entryId.size() == kFolderEntryIdSize)
        return type == ObjectType::PrivateFolder || type == ObjectType::PublicFolder ? std::optional(parsed)
                                                                                     : std::nullopt;
    const auto messageDatabase = reader.Take<GUID>();
    parsed.message = UnpackCounter(reader.Take<Counter>());
    const bool isMessage = type == ObjectType::PrivateMessage || type == ObjectType::PublicMessage;
    return isMessage && messageDatabase == parsed.database ? std::optional(parsed) : std::nullopt;
}

std::optional<AddressBookEntryId> ParseAddressBookEntryId(std::span<const std::uint8_t> entryId) {
    ByteReader reader(entryId);
    reader.Skip(4);
    if (reader.Take<Uid>() != kAddressBookProvider)
        return std::nullopt;
    reader.Skip(4);
    AddressBookEntryId parsed;
    parsed.type = reader.Take<std::uint32_t>();
    parsed.dn = reader.TakeText<char>();
    return reader.Ok() ? std::optional(parsed) : std::nullopt;
}

std::optional<OneOffEntryId> ParseOneOffEntryId(std::span<const std::uint8_t> entryId) {
    ByteReader reader(entryId);
    reader.Skip(4);
    if (reader.Take<Uid>() != kOneOffProvider)
        return std::nullopt;
    reader.Skip(2);
    const bool unicode = reader.Take<std::uint16_t>() & MAPI_ONE_OFF_UNICODE;
    const auto take = [&] {
        return unicode ? reader.TakeText<wchar_t>() : Widen(reader.TakeText<char>(), CP_ACP);
    };
    OneOffEntryId parsed;
    parsed.name = take();
    parsed.addressType = take();
    parsed.address = take();
    return reader.Ok() ? std::optional(parsed) : std::nullopt;
}

} // namespace standin::mailbox
