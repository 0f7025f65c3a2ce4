// From a storage to message content.
#include "standin/mailbox/ByteOrder.h"
#include "standin/mailbox/CompoundCheck.h"
#include "standin/mailbox/Message.h"
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/MsgLayout.h"
#include "standin/mailbox/Tags.h"

#include <algorithm>
#include <limits>

namespace standin::mailbox {
namespace {

using namespace msg;

constexpr DWORD kOpenMode = STGM_READ | STGM_SHARE_EXCLUSIVE;
constexpr std::size_t kMostElements = 100'000; // of one storage: more are a damaged directory

/// Text without the NULs that some writers put at its end.
template <class T>
std::basic_string<T> TextOf(std::span<const std::uint8_t> bytes) {
    std::basic_string<T> text(bytes.size() / sizeof(T), T{});
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(T));
    text.erase(text.find_last_not_of(T{}) + 1);
    return text;
}

/// Fixed-size values, as they stand in a property entry or follow each other in a stream.
template <class T>
T TakeFixed(ByteReader& reader) {
    return reader.Take<T>();
}
template <>
bool TakeFixed<bool>(ByteReader& reader) {
    return reader.Take<std::uint16_t>() != 0;
}

template <class T>
std::optional<Value> FixedValue(std::span<const std::uint8_t> bytes) {
    ByteReader reader(bytes);
    const T value = TakeFixed<T>(reader);
    return reader.Ok() ? std::optional<Value>(value) : std::nullopt;
}
template <class T>
std::optional<Value> FixedValues(std::span<const std::uint8_t> bytes) {
    ByteReader reader(bytes);
    std::vector<T> values;
    while (reader.Left() >= sizeof(T))
        values.push_back(TakeFixed<T>(reader));
    return Value(std::move(values));
}
template <class T>
std::optional<Value> TextValue(std::span<const std::uint8_t> bytes) {
    return Value(TextOf<T>(bytes));
}
std::optional<Value> BinaryValue(std::span<const std::uint8_t> bytes) {
    return Value(Bytes(bytes.begin(), bytes.end()));
}

/// How values of a type are stored ([MS-OXMSG] 2.1).
struct TypeRow {
    PropertyType type;
    enum { InEntry, InStream, InStreams } place;
    std::optional<Value> (*decode)(std::span<const std::uint8_t>); // null for values in several streams
    std::size_t lengthEntrySize = 0;                               // in their stream of lengths
};

constexpr TypeRow kTypes[] = {
    {PT_I2, TypeRow::InEntry, FixedValue<std::int16_t>},
    {PT_LONG, TypeRow::InEntry, FixedValue<std::int32_t>},
    {PT_R4, TypeRow::InEntry, FixedValue<float>},
    {PT_DOUBLE, TypeRow::InEntry, FixedValue<double>},
    {PT_CURRENCY, TypeRow::InEntry, FixedValue<Currency>},
    {PT_APPTIME, TypeRow::InEntry, FixedValue<AppTime>},
    {PT_BOOLEAN, TypeRow::InEntry, FixedValue<bool>},
    {PT_I8, TypeRow::InEntry, FixedValue<std::int64_t>},
    {PT_SYSTIME, TypeRow::InEntry, FixedValue<SysTime>},
    {PT_STRING8, TypeRow::InStream, TextValue<char>},
    {PT_UNICODE, TypeRow::InStream, TextValue<wchar_t>},
    {PT_CLSID, TypeRow::InStream, FixedValue<GUID>},
    {PT_BINARY, TypeRow::InStream, BinaryValue},
    {PT_MV_I2, TypeRow::InStream, FixedValues<std::int16_t>},
    {PT_MV_LONG, TypeRow::InStream, FixedValues<std::int32_t>},
    {PT_MV_R4, TypeRow::InStream, FixedValues<float>},
    {PT_MV_DOUBLE, TypeRow::InStream, FixedValues<double>},
    {PT_MV_CURRENCY, TypeRow::InStream, FixedValues<Currency>},
    {PT_MV_APPTIME, TypeRow::InStream, FixedValues<AppTime>},
    {PT_MV_I8, TypeRow::InStream, FixedValues<std::int64_t>},
    {PT_MV_SYSTIME, TypeRow::InStream, FixedValues<SysTime>},
    {PT_MV_CLSID, TypeRow::InStream, FixedValues<GUID>},
    {PT_MV_STRING8, TypeRow::InStreams, nullptr, 4},
    {PT_MV_UNICODE, TypeRow::InStreams, nullptr, 4},
    {PT_MV_BINARY, TypeRow::InStreams, nullptr, 8},
};

const TypeRow* FindType(PropertyType type) {
    const auto row = std::ranges::find(kTypes, type, &TypeRow::type);
    return row == std::end(kTypes) ? nullptr : row;
}

void MakeUnicode(PropertyBag& bag, UINT codePage) {
    std::vector<Property> narrow;
    for (const Property& property : bag)
        if ((TypeOf(property.value) & ~MV_FLAG) == PT_STRING8)
            narrow.push_back(property);
    for (Property& property : narrow) {
        const PropertyType wide = (TypeOf(property.value) & MV_FLAG) | PT_UNICODE;
        bag.Put(property.Tag(), *ConvertValue(property.value, wide, codePage));
    }
}

/// Names of the elements that begin so, in their order.
std::vector<std::wstring> ElementNames(IStorage* storage, std::wstring_view prefix) {
    ElementsPointer elements;
    Need(storage->EnumElements(0, nullptr, 0, &elements));
    std::vector<std::wstring> names;
    STATSTG element{};
    for (std::size_t i = 0; elements->Next(1, &element, nullptr) == S_OK; ++i) {
        if (i == kMostElements)
            throw Failure{MAPI_E_CORRUPT_DATA};
        const std::wstring name = element.pwcsName ? element.pwcsName : L"";
        CoTaskMemFree(element.pwcsName);
        if (element.type == STGTY_STORAGE && name.starts_with(prefix))
            names.push_back(name);
    }
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

StoragePointer OpenPart(IStorage* storage, const std::wstring& name) {
    StoragePointer part;
    Need(storage->OpenStorage(name.c_str(), nullptr, kOpenMode, nullptr, 0, &part));
    return part;
}

class Reader {
public:
    Reader(IStorage* storage, NamedProperties& names, std::uint64_t budget)
        : m_names(names), m_budget(budget) {
        for (const std::optional<PropertyName>& name : ReadNames(storage, m_budget))
            m_idOfName.push_back(name ? names.Id(*name, true) : PropertyId{0});
    }

    Content ReadMessage(IStorage* storage, std::size_t headerSize, int depth) {
        if (depth > kMostNesting)
            throw Failure{MAPI_E_TOO_COMPLEX};
        Content content;
        content.properties = ReadProperties(storage, headerSize);
        content.properties.Remove(PR_STORE_SUPPORT_MASK); // tells of the file's text, not of the message
        const UINT codePage = CodePageOf(content.properties);
        MakeUnicode(content.properties, codePage);
        for (const std::wstring& name : ElementNames(storage, kRecipientPrefix)) {
            PropertyBag row = ReadProperties(OpenPart(storage, name), kPartHeaderSize);
            MakeUnicode(row, codePage);
            row.Set<PR_ROWID>(static_cast<std::int32_t>(content.recipients.size()));
            content.recipients.push_back(std::move(row));
        }
        for (const std::wstring& name : ElementNames(storage, kAttachmentPrefix)) {
            Attachment attachment = ReadAttachment(OpenPart(storage, name), codePage, depth);
            attachment.number = static_cast<std::uint32_t>(content.attachments.size());
            content.attachments.push_back(std::make_shared<const Attachment>(std::move(attachment)));
        }
        DropWorkedOut(content);
        return content;
    }

private:
    Attachment ReadAttachment(IStorage* storage, UINT codePage, int depth) {
        Attachment attachment;
        attachment.properties = ReadProperties(storage, kPartHeaderSize);
        MakeUnicode(attachment.properties, codePage);
        attachment.properties.Remove(PR_ATTACH_NUM); // its place says it
        if (attachment.properties.Contains(PR_ATTACH_DATA_BIN))
            return attachment;
        StoragePointer object;
        const HRESULT status =
            storage->OpenStorage(ValueName(kObjectTag).c_str(), nullptr, kOpenMode, nullptr, 0, &object);
        if (status == STG_E_FILENOTFOUND)
            return attachment;
        Need(status);
        if (attachment.properties.GetOr<PR_ATTACH_METHOD>(0) ==
            static_cast<std::int32_t>(ATTACH_EMBEDDED_MSG))
            attachment.embedded =
                std::make_shared<const Content>(ReadMessage(object, kEmbeddedHeaderSize, depth + 1));
        else
            attachment.oleStorage = std::make_shared<const Bytes>(ReadOleObject(object));
        return attachment;
    }

    static Bytes ReadOleObject(IStorage* object) {
        LockBytesPointer memory;
        StoragePointer copy;
        Need(OpenStorageBytes({}, &memory, &copy));
        Need(object->CopyTo(0, nullptr, nullptr, copy));
        Need(copy->Commit(STGC_DEFAULT));
        Bytes bytes;
        Need(BytesOfStorage(memory, bytes));
        return bytes;
    }

    PropertyBag ReadProperties(IStorage* storage, std::size_t headerSize) {
        const std::optional<Bytes> stream = ReadStream(storage, kPropertiesName, m_budget);
        if (!stream || stream->size() < headerSize)
            throw Failure{MAPI_E_CORRUPT_DATA};
        PropertyBag bag;
        ByteReader reader(*stream);
        reader.Skip(headerSize);
        bag.Reserve(reader.Left() / sizeof(PropertyEntry));
        while (reader.Left() >= sizeof(PropertyEntry)) {
            const auto entry = reader.Take<PropertyEntry>();
            const TypeRow* type = FindType(TypeOf(entry.tag));
            const PropertyId id = OwnId(IdOf(entry.tag));
            if (!type || id == 0)
                continue;
            if (std::optional<Value> value = ReadValue(storage, entry, *type))
                bag.Put(MakeTag(id, 0), std::move(*value));
        }
        return bag;
    }

    /// The id that a property of the file has here; 0 for one whose name can't be made out.
    PropertyId OwnId(PropertyId id) const {
        if (id < kFirstNamedId)
            return id;
        const std::size_t index = std::size_t{id} - kFirstNamedId;
        return index < m_idOfName.size() ? m_idOfName[index] : PropertyId{0};
    }

    std::optional<Value> ReadValue(IStorage* storage, const PropertyEntry& entry, const TypeRow& type) {
        if (type.place == TypeRow::InEntry)
            return type.decode(entry.value);
        const std::optional<Bytes> stream = ReadStream(storage, ValueName(entry.tag), m_budget);
        if (!stream)
            return std::nullopt;
        if (type.place == TypeRow::InStream)
            return type.decode(*stream);
        const std::size_t count = stream->size() / type.lengthEntrySize;
        switch (type.type) {
        case PT_MV_BINARY:
            return ReadEach<Bytes>(storage, entry.tag, count, [](const Bytes& bytes) { return bytes; });
        case PT_MV_UNICODE:
            return ReadEach<std::wstring>(storage, entry.tag, count, TextOf<wchar_t>);
        default:
            return ReadEach<std::string>(storage, entry.tag, count, TextOf<char>);
        }
    }

    /// The list ends where a stream is missing: a damaged count makes no values.
    template <class T, class Decode>
    Value ReadEach(IStorage* storage, PropertyTag tag, std::size_t count, Decode decode) {
        std::vector<T> values;
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::optional<Bytes> stream = ReadStream(storage, ValueName(tag, i), m_budget);
            if (!stream)
                break;
            values.push_back(decode(*stream));
        }
        return values;
    }

    NamedProperties& m_names;
    std::uint64_t m_budget;
    std::vector<PropertyId> m_idOfName; // by the file's index
};

HRESULT ReadWithin(IStorage* storage, NamedProperties& names, Content& content, std::uint64_t budget) {
    try {
        content = Reader(storage, names, budget).ReadMessage(storage, kTopHeaderSize, 0);
        return S_OK;
    } catch (const Failure& failure) {
        return StatusFromStorage(failure.status);
    } catch (const std::bad_alloc&) {
        return MAPI_E_NOT_ENOUGH_MEMORY;
    }
}

} // namespace

HRESULT ReadMsg(IStorage* storage, NamedProperties& names, Content& content) {
    constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 31;
    return ReadWithin(storage, names, content, kMostBytes);
}

HRESULT ReadMsgBytes(std::span<const std::uint8_t> file, NamedProperties& names, Content& content) {
    LockBytesPointer memory;
    StoragePointer storage;
    if (!IsSoundCompoundFile(file))
        return MAPI_E_CORRUPT_DATA;
    if (const HRESULT status = OpenStorageBytes(file, &memory, &storage); FAILED(status))
        return StatusFromStorage(status);
    return ReadWithin(storage, names, content, file.size());
}

} // namespace standin::mailbox
