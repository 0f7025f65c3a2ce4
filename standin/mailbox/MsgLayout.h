// The names and layouts of [MS-OXMSG] that reader and writer share.
#pragma once

#include "standin/mailbox/NamedProperties.h"

#include <comdef.h>
#include <objidl.h>

#include <string>

namespace standin::mailbox::msg {

template <class Interface, const IID* iid>
using ComPointer = _com_ptr_t<_com_IIID<Interface, iid>>;
using StoragePointer = ComPointer<IStorage, &IID_IStorage>;
using StreamPointer = ComPointer<IStream, &IID_IStream>;
using LockBytesPointer = ComPointer<ILockBytes, &IID_ILockBytes>;
using ElementsPointer = ComPointer<IEnumSTATSTG, &IID_IEnumSTATSTG>;

/// CLSID_MailMessage, the class of an MSG file's root storage.
inline constexpr GUID kClass{0x00020D0B, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

inline constexpr wchar_t kPropertiesName[] = L"__properties_version1.0";
inline constexpr wchar_t kNamesName[] = L"__nameid_version1.0";
inline constexpr wchar_t kRecipientPrefix[] = L"__recip_version1.0_#";
inline constexpr wchar_t kAttachmentPrefix[] = L"__attach_version1.0_#";
inline constexpr wchar_t kValuePrefix[] = L"__substg1.0_";

/// PR_ATTACH_DATA_OBJ names the storage of an embedded message or OLE object.
inline constexpr PropertyTag kObjectTag = PR_ATTACH_DATA_OBJ;

/// What stands before the entries of a property stream ([MS-OXMSG] 2.4.1), in bytes.
inline constexpr std::size_t kTopHeaderSize = 32;
inline constexpr std::size_t kEmbeddedHeaderSize = 24;
inline constexpr std::size_t kPartHeaderSize = 8;

/// An entry of a property stream ([MS-OXMSG] 2.4.2.1, 2.4.2.2): the value itself, or the size of its stream.
struct PropertyEntry {
    std::uint32_t tag = 0;
    std::uint32_t flags = 0;
    std::array<std::uint8_t, 8> value{};
};
inline constexpr std::uint32_t kReadable = 2;
inline constexpr std::uint32_t kWritable = 4;

/// Streams of the names' storage ([MS-OXMSG] 2.2.3.1), as tags of value streams.
inline constexpr PropertyTag kGuidStream = 0x00020102;
inline constexpr PropertyTag kEntryStream = 0x00030102;
inline constexpr PropertyTag kStringStream = 0x00040102;
/// Hash buckets are streams with ids from 0x1000 on ([MS-OXMSG] 2.2.3.2).
inline constexpr std::uint32_t kFirstBucket = 0x1000;
inline constexpr std::uint32_t kBuckets = 0x1F;

/// An entry of the entry stream and of the buckets ([MS-OXMSG] 2.2.3.1.2): a number, the offset of a string
/// or its checksum; set and kind of name; the index of the property, which its id follows from.
struct NameEntry {
    std::uint32_t id = 0;
    std::uint16_t setAndKind = 0; // index of the set, times two; 1 added for a string
    std::uint16_t property = 0;
};
/// Indexes of sets: these two, then those of the GUID stream.
inline constexpr std::uint16_t kSetMapi = 1;
inline constexpr std::uint16_t kSetPublicStrings = 2;
inline constexpr std::uint16_t kFirstListedSet = 3;

/// Messages within messages, as deep as this, are read and written: Outlook nests no deeper.
inline constexpr int kMostNesting = 32;

/// Thrown within reader and writer; holds what their callers get.
struct Failure {
    HRESULT status;
};
inline void Need(HRESULT status) {
    if (FAILED(status))
        throw Failure{status};
}

/// "__substg1.0_0037001F", with "-00000002" behind it for a value of several.
std::wstring ValueName(PropertyTag tag);
std::wstring ValueName(PropertyTag tag, std::uint32_t index);
/// "__recip_version1.0_#00000003".
std::wstring PartName(const wchar_t* prefix, std::uint32_t index);

/// Property sets and names of a file, in the order of its property indexes.
std::vector<std::optional<PropertyName>> ReadNames(IStorage* storage, std::uint64_t& budget);
void WriteNames(IStorage* storage, const std::vector<PropertyName>& names);

/// A whole stream. Takes its size from the budget, so that a damaged file can't make it read without end.
/// Nothing if there is no such stream.
std::optional<Bytes> ReadStream(IStorage* storage, const std::wstring& name, std::uint64_t& budget);
void WriteStream(IStorage* storage, const std::wstring& name, const void* data, std::size_t size);

} // namespace standin::mailbox::msg
