// From message content to a storage.
#include "standin/mailbox/ByteOrder.h"
#include "standin/mailbox/Message.h"
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/MsgLayout.h"
#include "standin/mailbox/Tags.h"

#include <unordered_map>

namespace standin::mailbox {
namespace {

using namespace msg;

constexpr DWORD kCreateMode = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

StoragePointer CreatePart(IStorage* storage, const std::wstring& name) {
    StoragePointer part;
    Need(storage->CreateStorage(name.c_str(), kCreateMode, 0, 0, &part));
    return part;
}

/// Gives the named properties of one file their ids, as they come along.
class FileNames {
public:
    explicit FileNames(const NamedProperties& names) : m_names(names) {}

    /// 0 for an id that has no name.
    PropertyId FileId(PropertyId id) {
        if (id < kFirstNamedId)
            return id;
        const PropertyName* name = m_names.Name(id);
        if (!name)
            return 0;
        const auto [position, isNew] =
            m_fileIds.emplace(id, static_cast<PropertyId>(kFirstNamedId + m_used.size()));
        if (isNew)
            m_used.push_back(*name);
        return position->second;
    }
    const std::vector<PropertyName>& Used() const { return m_used; }

private:
    const NamedProperties& m_names;
    std::unordered_map<PropertyId, PropertyId> m_fileIds;
    std::vector<PropertyName> m_used;
};

/// Writes the properties of one object: streams as they come, and at the end the property stream.
class PropertyWriter {
public:
    PropertyWriter(const StoragePointer& storage, FileNames& names, UINT codePage)
        : m_storage(storage), m_names(names), m_codePage(codePage) {}

    void AddHeader(std::span<const std::uint8_t> header) { m_entries.AddBytes(header.data(), header.size()); }

    /// Narrow text is written as Unicode.
    void Add(const Property& property) {
        const PropertyId id = m_names.FileId(property.id);
        if (id == 0)
            return;
        const PropertyType type = TypeOf(property.value);
        const bool isNarrow = (type & ~MV_FLAG) == PT_STRING8;
        const auto wide =
            isNarrow ? ConvertValue(property.value, (type & MV_FLAG) | PT_UNICODE, m_codePage) : std::nullopt;
        const Value& value = wide ? *wide : property.value;
        const PropertyTag tag = MakeTag(id, TypeOf(value));
        std::visit([&](const auto& what) { AddValue(tag, what); }, value);
    }
    void AddObject(std::uint32_t kind) {
        constexpr std::uint32_t kNoSize = 0xFFFFFFFF;
        AddEntry(kObjectTag, kNoSize, kind);
    }
    void Finish() {
        const Bytes stream = m_entries.Take();
        WriteStream(m_storage, kPropertiesName, stream.data(), stream.size());
    }

private:
    void AddEntry(PropertyTag tag, std::uint32_t size, std::uint32_t reserved = 0) {
        m_entries.Add(tag).Add(kReadable | kWritable).Add(size).Add(reserved);
    }
    void AddStream(PropertyTag tag, const void* data, std::size_t size, std::size_t sizeOfNul = 0) {
        WriteStream(m_storage, ValueName(tag), data, size);
        AddEntry(tag, static_cast<std::uint32_t>(size + sizeOfNul));
    }

    // Fixed-size values stand in the entry.
    template <class T>
    void AddValue(PropertyTag tag, const T& value) {
        static_assert(std::is_trivially_copyable_v<T> && sizeof(T) <= sizeof(PropertyEntry::value));
        m_entries.Add(tag)
            .Add(kReadable | kWritable)
            .Add(value)
            .AddZeros(sizeof(PropertyEntry::value) - sizeof(T));
    }
    void AddValue(PropertyTag tag, bool value) { AddValue(tag, std::int16_t{value}); }
    void AddValue(PropertyTag tag, const GUID& value) { AddStream(tag, &value, sizeof value); }
    void AddValue(PropertyTag tag, const Bytes& value) { AddStream(tag, value.data(), value.size()); }
    template <class T>
    void AddValue(PropertyTag tag, const std::basic_string<T>& value) {
        AddStream(tag, value.data(), value.size() * sizeof(T), sizeof(T));
    }
    template <class T>
    void AddValue(PropertyTag tag, const std::vector<T>& values) {
        AddStream(tag, values.data(), values.size() * sizeof(T));
    }

    // Values of several sizes: a stream of lengths, and a stream for each ([MS-OXMSG] 2.1.4.2).
    template <class T>
    void AddValue(PropertyTag tag, const std::vector<std::basic_string<T>>& values) {
        ByteWriter lengths;
        for (std::uint32_t i = 0; i < values.size(); ++i) {
            const std::size_t size = (values[i].size() + 1) * sizeof(T);
            lengths.Add(static_cast<std::uint32_t>(size));
            WriteStream(m_storage, ValueName(tag, i), values[i].c_str(), size);
        }
        AddValue(tag, lengths.Take());
    }
    void AddValue(PropertyTag tag, const std::vector<Bytes>& values) {
        ByteWriter lengths;
        for (std::uint32_t i = 0; i < values.size(); ++i) {
            lengths.Add(static_cast<std::uint32_t>(values[i].size())).AddZeros(4);
            WriteStream(m_storage, ValueName(tag, i), values[i].data(), values[i].size());
        }
        AddValue(tag, lengths.Take());
    }

    // Nothing that a file could hold.
    void AddValue(PropertyTag, const Null&) {}
    void AddValue(PropertyTag, const ErrorValue&) {}
    void AddValue(PropertyTag, const ObjectMark&) {}
    void AddValue(PropertyTag, const NullPointer&) {}

    StoragePointer m_storage;
    FileNames& m_names;
    UINT m_codePage;
    ByteWriter m_entries;
};

/// [MS-OXMSG] 2.4.1.1, 2.4.1.2: an embedded message's header ends before the last eight bytes.
Bytes MessageHeader(const Content& content, std::size_t headerSize) {
    const auto recipients = static_cast<std::uint32_t>(content.recipients.size());
    const auto attachments = static_cast<std::uint32_t>(content.attachments.size());
    ByteWriter header;
    header.AddZeros(8).Add(recipients).Add(attachments).Add(recipients).Add(attachments);
    header.AddZeros(headerSize - header.Size());
    return header.Take();
}

void WriteOleObject(IStorage* target, const Bytes& bytes) {
    LockBytesPointer memory;
    StoragePointer source;
    Need(OpenStorageBytes(bytes, &memory, &source));
    Need(source->CopyTo(0, nullptr, nullptr, target));
}

void WriteMessage(IStorage* storage, const Content& content, FileNames& names, std::size_t headerSize,
                  int depth);

void WriteAttachment(IStorage* storage, const Attachment& attachment, std::uint32_t place, FileNames& names,
                     UINT codePage, int depth) {
    constexpr std::uint32_t kEmbeddedMessage = 1; // [MS-OXMSG] 2.4.2.2
    constexpr std::uint32_t kStorage = 4;
    PropertyWriter writer(storage, names, codePage);
    writer.AddHeader(Bytes(kPartHeaderSize));
    for (const Property& property : attachment.properties)
        if (property.id != IdOf(PR_ATTACH_NUM))
            writer.Add(property);
    writer.Add({IdOf(PR_ATTACH_NUM), static_cast<std::int32_t>(place)});
    if (attachment.embedded) {
        writer.AddObject(kEmbeddedMessage);
        WriteMessage(CreatePart(storage, ValueName(kObjectTag)), *attachment.embedded, names,
                     kEmbeddedHeaderSize, depth + 1);
    } else if (attachment.oleStorage) {
        writer.AddObject(kStorage);
        WriteOleObject(CreatePart(storage, ValueName(kObjectTag)), *attachment.oleStorage);
    }
    writer.Finish();
}

void WriteMessage(IStorage* storage, const Content& content, FileNames& names, std::size_t headerSize,
                  int depth) {
    if (depth > kMostNesting)
        throw Failure{MAPI_E_TOO_COMPLEX};
    const UINT codePage = CodePageOf(content.properties);
    PropertyWriter writer(storage, names, codePage);
    writer.AddHeader(MessageHeader(content, headerSize));
    const PropertyBag workedOut = WorkedOutForFile(content);
    for (const Property& property : content.properties)
        if (property.id != IdOf(PR_STORE_SUPPORT_MASK) && !workedOut.Contains(property.Tag()))
            writer.Add(property);
    for (const Property& property : workedOut)
        writer.Add(property);
    writer.Add({IdOf(PR_STORE_SUPPORT_MASK), std::int32_t{kStoreUnicodeOk}});
    writer.Finish();
    for (std::uint32_t i = 0; i < content.recipients.size(); ++i) {
        PropertyWriter row(CreatePart(storage, PartName(kRecipientPrefix, i)), names, codePage);
        row.AddHeader(Bytes(kPartHeaderSize));
        for (const Property& property : content.recipients[i])
            row.Add(property);
        row.Finish();
    }
    for (std::uint32_t i = 0; i < content.attachments.size(); ++i)
        WriteAttachment(CreatePart(storage, PartName(kAttachmentPrefix, i)), *content.attachments[i], i,
                        names, codePage, depth);
}

/// Takes the message out of a storage that had one: all elements whose names are of this format.
void RemoveMessage(IStorage* storage) {
    ElementsPointer elements;
    Need(storage->EnumElements(0, nullptr, 0, &elements));
    std::vector<std::wstring> names;
    STATSTG element{};
    while (elements->Next(1, &element, nullptr) == S_OK) {
        names.emplace_back(element.pwcsName);
        CoTaskMemFree(element.pwcsName);
    }
    for (const std::wstring& name : names)
        if (name.starts_with(L"__"))
            Need(storage->DestroyElement(name.c_str()));
}

} // namespace

HRESULT WriteMsg(const Content& content, const NamedProperties& names, IStorage* storage,
                 MsgWriting writing) {
    try {
        RemoveMessage(storage);
        FileNames fileNames(names);
        WriteMessage(storage, content, fileNames, kTopHeaderSize, 0);
        WriteNames(storage, fileNames.Used());
        if (writing.setClass)
            Need(WriteClassStg(storage, kClass));
        return writing.commit ? StatusFromStorage(storage->Commit(STGC_DEFAULT)) : S_OK;
    } catch (const Failure& failure) {
        return StatusFromStorage(failure.status);
    }
}

HRESULT WriteMsgBytes(const Content& content, const NamedProperties& names, Bytes& file) {
    LockBytesPointer memory;
    StoragePointer storage;
    if (const HRESULT status = OpenStorageBytes({}, &memory, &storage); FAILED(status))
        return StatusFromStorage(status);
    if (const HRESULT status = WriteMsg(content, names, storage); FAILED(status))
        return status;
    storage.Release();
    return StatusFromStorage(BytesOfStorage(memory, file));
}

} // namespace standin::mailbox
