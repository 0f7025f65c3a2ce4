// What our writer makes: every type of value, parts of every sort, the published layout of names.
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/MsgLayout.h"
#include "standin/mailbox/Tags.h"
#include "tests/mailbox/Support.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace standin::mailbox::test {
namespace {

using msg::LockBytesPointer;
using msg::StoragePointer;
using msg::StreamPointer;

constexpr std::uint32_t kExclusive = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

/// A compound file in memory.
struct File {
    explicit File(const Bytes& bytes = {}) { EXPECT_EQ(OpenStorageBytes(bytes, &memory, &storage), S_OK); }

    LockBytesPointer memory;
    StoragePointer storage;
};

StoragePointer Part(IStorage* storage, const std::wstring& name) {
    StoragePointer part;
    EXPECT_EQ(
        storage->OpenStorage(name.c_str(), nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, nullptr, 0, &part),
        S_OK);
    return part;
}

/// Empty for a stream that isn't there.
Bytes Stream(IStorage* storage, const std::wstring& name) {
    std::uint64_t budget = 1 << 20;
    return msg::ReadStream(storage, name, budget).value_or(Bytes());
}

Content RoundTrip(const Content& content, NamedProperties& names) {
    Bytes file;
    Content again;
    EXPECT_EQ(WriteMsgBytes(content, names, file), S_OK);
    EXPECT_EQ(ReadMsgBytes(file, names, again), S_OK);
    return again;
}

/// One value of each type that a file can hold, and the odd ones: empty, long, with a NUL within.
PropertyBag EveryType() {
    const GUID guid{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    const Value values[] = {
        std::int16_t{-5},
        std::int32_t{-70000},
        1.5f,
        -2.25,
        Currency{-12345},
        AppTime{45000.5},
        true,
        false,
        std::int64_t{-1} << 40,
        std::wstring(L"Grüße 日本"),
        std::wstring(),
        std::wstring(L"a\0b", 3),
        std::wstring(100'000, L'x'),
        SysTime{0x01D00000'12345678},
        guid,
        Bytes{0, 1, 255},
        Bytes{},
        std::vector<std::int16_t>{1, -1},
        std::vector<std::int32_t>{},
        std::vector<std::int32_t>{7, 8},
        std::vector<float>{0.5f},
        std::vector<double>{0.25, 4},
        std::vector<Currency>{{1}, {2}},
        std::vector<AppTime>{{1.5}},
        std::vector<std::int64_t>{1, 2, 3},
        std::vector<std::wstring>{L"", L"two", L"drei"},
        std::vector<std::wstring>{},
        std::vector<SysTime>{{9}},
        std::vector<GUID>{guid, GUID{}},
        std::vector<Bytes>{{}, {1}, {2, 3}},
    };
    PropertyBag bag;
    PropertyId id = 0x6000;
    for (const Value& value : values)
        bag.Put(MakeTag(id++, PT_UNSPECIFIED), value);
    return bag;
}

std::shared_ptr<Attachment> MakeAttachment(std::uint32_t number, std::int32_t method) {
    auto attachment = std::make_shared<Attachment>();
    attachment->number = number;
    attachment->properties = EveryType();
    attachment->properties.Set<PR_ATTACH_METHOD>(method);
    return attachment;
}

/// A storage with a stream in a storage, as an OLE object has it.
Bytes MakeOleObject() {
    const File file;
    StoragePointer part;
    Bytes bytes;
    EXPECT_EQ(file.storage->CreateStorage(L"part", STGM_CREATE | kExclusive, 0, 0, &part), S_OK);
    msg::WriteStream(part, L"CONTENTS", "hello", 5);
    part.Release();
    EXPECT_EQ(file.storage->Commit(STGC_DEFAULT), S_OK);
    EXPECT_EQ(BytesOfStorage(file.memory, bytes), S_OK);
    return bytes;
}

TEST(MsgWriter, WritesEveryTypeAndEverySortOfPart) {
    NamedProperties names;
    Content content;
    content.properties = EveryType();
    const PropertyTag number = MakeTag(names.Id({GUID{5, 5, 5, {}}, 0x8054u}, true), PT_LONG);
    const PropertyTag text = MakeTag(names.Id({kPsPublicStrings, L"Schlüssel"}, true), PT_UNICODE);
    content.properties.Put(number, std::int32_t{1});
    content.properties.Put(text, std::wstring(L"named"));
    for (std::int32_t i = 0; i < 12; ++i) {
        PropertyBag row = EveryType();
        row.Set<PR_ROWID>(i);
        row.Set<PR_DISPLAY_NAME_W>(L"recipient " + std::to_wstring(i));
        content.recipients.push_back(std::move(row));
    }
    auto file = MakeAttachment(0, ATTACH_BY_VALUE);
    file->properties.Set<PR_ATTACH_DATA_BIN>(Bytes(300'000, 7));
    auto message = MakeAttachment(1, ATTACH_EMBEDDED_MSG);
    auto inner = std::make_shared<Content>();
    inner->properties = EveryType();
    inner->properties.Put(text, std::wstring(L"named within"));
    inner->attachments.push_back(MakeAttachment(0, ATTACH_BY_REFERENCE));
    message->embedded = inner;
    content.attachments = {file, message};
    EXPECT_TRUE(SameContent(content, RoundTrip(content, names)));
}

/// The tags that stand in one object of a file.
std::set<PropertyTag> TagsIn(IStorage* storage, std::size_t headerSize) {
    const Bytes stream = Stream(storage, msg::kPropertiesName);
    std::set<PropertyTag> tags;
    for (std::size_t at = headerSize; at + sizeof(msg::PropertyEntry) <= stream.size();
         at += sizeof(msg::PropertyEntry)) {
        msg::PropertyEntry entry;
        std::memcpy(&entry, stream.data() + at, sizeof entry);
        EXPECT_TRUE(tags.insert(entry.tag).second) << "once each; " << std::hex << entry.tag;
    }
    return tags;
}

TEST(MsgWriter, WritesWhatIsWorkedOutAndTheReaderLeavesItOut) {
    NamedProperties names;
    Content content;
    content.properties.Set<PR_SUBJECT_W>(L"RE: Lunch");
    content.properties.Set<PR_MESSAGE_FLAGS>(static_cast<std::int32_t>(MSGFLAG_READ));
    PropertyBag row;
    row.Set<PR_ROWID>(0);
    row.Set<PR_DISPLAY_NAME_W>(L"Ann");
    row.Set<PR_RECIPIENT_TYPE>(MAPI_CC);
    content.recipients = {row};
    content.attachments = {MakeAttachment(0, ATTACH_BY_VALUE)};
    const File file;
    ASSERT_EQ(WriteMsg(content, names, file.storage), S_OK);
    const std::set<PropertyTag> tags = TagsIn(file.storage, msg::kTopHeaderSize);
    for (const PropertyTag tag : {PR_SUBJECT_PREFIX_W, PR_NORMALIZED_SUBJECT_W, PR_DISPLAY_TO_W,
                                  PR_DISPLAY_CC_W, PR_DISPLAY_BCC_W, PR_HASATTACH, PR_MESSAGE_FLAGS})
        EXPECT_TRUE(tags.contains(tag)) << std::hex << tag;
    EXPECT_EQ(Stream(file.storage, msg::ValueName(PR_DISPLAY_CC_W)), (Bytes{'A', 0, 'n', 0, 'n', 0}));
    EXPECT_TRUE(TagsIn(Part(file.storage, msg::PartName(msg::kAttachmentPrefix, 0)), msg::kPartHeaderSize)
                    .contains(PR_ATTACH_NUM));
    Content again;
    ASSERT_EQ(ReadMsg(file.storage, names, again), S_OK);
    EXPECT_TRUE(SameContent(content, again));
}

TEST(MsgWriter, KeepsOleObjects) {
    NamedProperties names;
    Content content;
    auto object = MakeAttachment(0, ATTACH_OLE);
    object->oleStorage = std::make_shared<const Bytes>(MakeOleObject());
    content.attachments = {object};
    const Content again = RoundTrip(content, names);
    ASSERT_EQ(again.attachments.size(), 1u);
    ASSERT_NE(again.attachments[0]->oleStorage, nullptr);
    const File file(*again.attachments[0]->oleStorage);
    EXPECT_EQ(Stream(Part(file.storage, L"part"), L"CONTENTS"), (Bytes{'h', 'e', 'l', 'l', 'o'}));
}

TEST(MsgWriter, LeavesOutWhatNoFileHoldsAndMakesTextUnicode) {
    NamedProperties names;
    Content content;
    content.properties.Set<kPrMessageCodepage>(1251);
    content.properties.Put(PR_SUBJECT_W, std::string("\xCF\xF0\xE8\xE2\xE5\xF2"));
    content.properties.Put(PR_BODY_W, NullPointer{PT_UNICODE, 4});
    content.properties.Put(PR_IMPORTANCE, ErrorValue{MAPI_E_NOT_FOUND});
    content.properties.Put(PR_SENSITIVITY, Null{});
    content.properties.Put(PR_MESSAGE_RECIPIENTS, ObjectMark{});
    content.properties.Put(MakeTag(0x8123, PT_LONG), std::int32_t{1}); // no name has this id
    PropertyBag expected;
    expected.Set<kPrMessageCodepage>(1251);
    expected.Set<PR_SUBJECT_W>(L"Привет");
    EXPECT_EQ(RoundTrip(content, names).properties, expected);
}

TEST(MsgWriter, TakesThePlaceOfAMessageInItsStorage) {
    const File file;
    NamedProperties names;
    Content first, second, again;
    first.properties = EveryType();
    first.recipients.resize(3);
    second.properties.Set<PR_SUBJECT_W>(L"second");
    ASSERT_EQ(WriteMsg(first, names, file.storage), S_OK);
    ASSERT_EQ(WriteMsg(second, names, file.storage), S_OK);
    ASSERT_EQ(ReadMsg(file.storage, names, again), S_OK);
    EXPECT_TRUE(SameContent(second, again));
    STATSTG state{};
    ASSERT_EQ(file.storage->Stat(&state, STATFLAG_NONAME), S_OK);
    EXPECT_TRUE(state.clsid == msg::kClass);
}

TEST(MsgWriter, GoesNoDeeperThanTheReader) {
    const auto nest = [](int depth) {
        auto content = std::make_shared<const Content>();
        for (int i = 0; i < depth; ++i) {
            auto attachment = std::make_shared<Attachment>();
            attachment->properties.Set<PR_ATTACH_METHOD>(ATTACH_EMBEDDED_MSG);
            attachment->embedded = content;
            auto outer = std::make_shared<Content>();
            outer->attachments = {attachment};
            content = outer;
        }
        return content;
    };
    NamedProperties names;
    EXPECT_TRUE(SameContent(*nest(msg::kMostNesting), RoundTrip(*nest(msg::kMostNesting), names)));
    Bytes file;
    EXPECT_EQ(WriteMsgBytes(*nest(msg::kMostNesting + 1), names, file), MAPI_E_TOO_COMPLEX);
}

/// Buckets of a file's names: number or checksum and kind of each name, by bucket.
std::map<std::uint32_t, std::vector<std::uint64_t>> Buckets(const Bytes& bytes) {
    const File file(bytes);
    const StoragePointer names = Part(file.storage, msg::kNamesName);
    std::map<std::uint32_t, std::vector<std::uint64_t>> buckets;
    for (std::uint32_t bucket = msg::kFirstBucket; bucket < msg::kFirstBucket + msg::kBuckets; ++bucket) {
        const Bytes stream = Stream(names, msg::ValueName(bucket << 16 | PT_BINARY));
        for (std::size_t i = 0; i + sizeof(msg::NameEntry) <= stream.size(); i += sizeof(msg::NameEntry)) {
            msg::NameEntry entry;
            std::memcpy(&entry, stream.data() + i, sizeof entry);
            buckets[bucket].push_back(std::uint64_t{entry.id} << 1 | (entry.setAndKind & 1));
        }
    }
    return buckets;
}

TEST(MsgWriter, PutsNamesWhereOutlookLooksForThem) {
    const std::filesystem::path folder = MsgFolder();
    if (folder.empty())
        GTEST_SKIP();
    // All of this file's names are of the sets that have fixed places, and in use: nothing else moves the
    // buckets.
    const Bytes file = ReadFile(folder / "keywords.msg");
    NamedProperties names;
    Content content;
    ASSERT_EQ(ReadMsgBytes(file, names, content), S_OK);
    Bytes written;
    ASSERT_EQ(WriteMsgBytes(content, names, written), S_OK);
    const auto ours = Buckets(written);
    for (const auto& [bucket, entries] : Buckets(file))
        for (const std::uint64_t entry : entries)
            EXPECT_EQ(std::ranges::count(ours.at(bucket), entry), 1) << std::hex << bucket << ": " << entry;
}

TEST(MsgReader, ReadsNarrowTextInTheFilesCodePage) {
    const File file, empty;
    struct {
        std::uint8_t header[msg::kTopHeaderSize]{};
        msg::PropertyEntry codePage{kPrMessageCodepage, 6, {0xA4, 0x03}}; // 932
        msg::PropertyEntry subject{PR_SUBJECT_A, 6, {7}};
        msg::PropertyEntry missing{PR_BODY_A, 6, {9}};
    } properties;
    msg::WriteStream(file.storage, msg::kPropertiesName, &properties, sizeof properties);
    msg::WriteStream(file.storage, msg::ValueName(PR_SUBJECT_A), "\x93\xFA\x96\x7B\x8C\xEA", 6);
    NamedProperties names;
    Content content;
    ASSERT_EQ(ReadMsg(file.storage, names, content), S_OK);
    EXPECT_EQ(content.properties.GetOr<PR_SUBJECT_W>({}), L"日本語");
    EXPECT_FALSE(content.properties.Contains(PR_BODY_W));
    EXPECT_EQ(ReadMsg(empty.storage, names, content), MAPI_E_CORRUPT_DATA);
}

} // namespace
} // namespace standin::mailbox::test
