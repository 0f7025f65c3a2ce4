// Property bags under MAPI's matching rule, names and their ids, entry ids in their published forms.
#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Tags.h"
#include "tests/mailbox/Support.h"

namespace standin::mailbox::test {
namespace {

constexpr GUID kSet{0x00062004, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

TEST(PropertyBag, AnswersATagOnlyInATypeThatFits) {
    PropertyBag bag;
    bag.Set<PR_SUBJECT_W>(L"Grüße");
    bag.Put(PR_BODY_W, std::string("caf\xE9"));
    bag.Put(PR_IMPORTANCE, std::vector<std::string>{"a", "b"});
    EXPECT_EQ(Read(bag, PR_SUBJECT_A), Value(std::string("Gr\xFC\xDF\x65")));
    EXPECT_EQ(Read(bag, CHANGE_PROP_TYPE(PR_SUBJECT_W, PT_UNSPECIFIED)), Value(std::wstring(L"Grüße")));
    Value value;
    EXPECT_EQ(bag.Read(CHANGE_PROP_TYPE(PR_SUBJECT_W, PT_LONG), value), MAPI_E_NOT_FOUND);
    EXPECT_EQ(bag.Read(CHANGE_PROP_TYPE(PR_SUBJECT_W, PT_MV_UNICODE), value), MAPI_E_NOT_FOUND);
    EXPECT_EQ(Read(bag, PR_BODY_W), Value(std::wstring(L"café")));
    bag.Set<kPrMessageCodepage>(1251);
    EXPECT_EQ(Read(bag, PR_BODY_W), Value(std::wstring(L"cafй")));
    EXPECT_EQ(Read(bag, CHANGE_PROP_TYPE(PR_IMPORTANCE, PT_MV_UNICODE)),
              Value(std::vector<std::wstring>{L"a", L"b"}));
}

TEST(PropertyBag, KeepsOneValueAnIdInOrderWhateverItsType) {
    PropertyBag bag;
    bag.Set<PR_SUBJECT_W>(L"text");
    bag.Set<PR_IMPORTANCE>(2);
    bag.Put(PR_SUBJECT_W, std::int32_t{5});
    bag.Put(PR_ENTRYID, NullPointer{PT_BINARY, 9});
    bag.Put(PR_BODY_W, std::vector<Bytes>{});
    std::vector<PropertyTag> tags;
    for (const Property& property : bag)
        tags.push_back(property.Tag());
    const std::vector<PropertyTag> expected{PR_IMPORTANCE, CHANGE_PROP_TYPE(PR_SUBJECT_W, PT_LONG),
                                            PR_ENTRYID, CHANGE_PROP_TYPE(PR_BODY_W, PT_MV_BINARY)};
    EXPECT_EQ(tags, expected);
    EXPECT_EQ(bag.Get<PR_SUBJECT_W>(), nullptr);
    EXPECT_TRUE(bag.Remove(PR_SUBJECT_A));
    EXPECT_FALSE(bag.Remove(PR_SUBJECT_A));
}

TEST(NamedProperties, GiveEachNameOneIdAndCompareTextsExactly) {
    NamedProperties names;
    const PropertyId number = names.Id({kSet, 0x8054u}, true);
    const PropertyId text = names.Id({kPsPublicStrings, L"Keywords"}, true);
    EXPECT_EQ(number, 0x8000);
    EXPECT_EQ(text, 0x8001);
    EXPECT_EQ(names.Id({kSet, 0x8054u}, true), number);
    EXPECT_EQ(names.Id({kPsPublicStrings, L"keywords"}, false), 0);
    EXPECT_EQ(names.Id({kPsPublicStrings, L"keywords"}, true), 0x8002);
    EXPECT_EQ(names.Id({kSet, L"Keywords"}), 0);
    EXPECT_EQ(names.Id({kPsMapi, 0x0037u}), 0x0037);
    ASSERT_NE(names.Name(text), nullptr);
    EXPECT_EQ(*names.Name(text), (PropertyName{kPsPublicStrings, L"Keywords"}));
    EXPECT_EQ(names.Name(0x8003), nullptr);
    EXPECT_EQ(names.Name(0x0037), nullptr);
}

TEST(NamedProperties, RunOutAtTheEndOfTheirIds) {
    NamedProperties names;
    PropertyId last = 0;
    std::uint32_t count = 0;
    while (const PropertyId id = names.Id({kSet, count}, true)) {
        last = id;
        ++count;
    }
    EXPECT_EQ(last, 0xFFFE);
    EXPECT_EQ(count, 0x7FFFu);
}

StoreKey Key() {
    return {GUID{0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}},
            GUID{0x11121314, 0x1516, 0x1718, {25, 26, 27, 28, 29, 30, 31, 32}}, false};
}

TEST(EntryIds, OfFoldersAndMessagesHaveThePublishedLayout) {
    EXPECT_EQ(ToHex(MakeFolderEntryId(Key(), 0x11002A)), L"00000000"
                                                         L"0403020106050807090A0B0C0D0E0F10"
                                                         L"0100"
                                                         L"1413121116151817191A1B1C1D1E1F20"
                                                         L"00000011002A"
                                                         L"0000");
    const Bytes message = MakeMessageEntryId(Key(), 0x11002A, 0x13F94D);
    EXPECT_EQ(message.size(), 70u);
    EXPECT_EQ(ToHex(message).substr(40, 4), L"0700");
    EXPECT_TRUE(ToHex(message).ends_with(L"00000013F94D0000"));
    const auto parsed = ParseObjectEntryId(message);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->folder, 0x11002Au);
    EXPECT_EQ(parsed->message, 0x13F94Du);
    EXPECT_TRUE(parsed->provider == Key().provider && parsed->database == Key().database);
}

TEST(EntryIds, OfAddressesComeApartAsTheyWerePutTogether) {
    const auto entry = ParseAddressBookEntryId(MakeAddressBookEntryId(DT_DISTLIST, "/o=Example/cn=all"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->type, DT_DISTLIST);
    EXPECT_EQ(entry->dn, "/o=Example/cn=all");
    for (const bool unicode : {true, false}) {
        const auto oneOff =
            ParseOneOffEntryId(MakeOneOffEntryId(L"Zoë", L"SMTP", L"zoe@example.com", unicode));
        ASSERT_TRUE(oneOff);
        EXPECT_EQ(oneOff->name, L"Zoë");
        EXPECT_EQ(oneOff->addressType, L"SMTP");
        EXPECT_EQ(oneOff->address, L"zoe@example.com");
    }
}

TEST(EntryIds, CutShortOrChangedAreNone) {
    const Bytes ids[] = {MakeFolderEntryId(Key(), 7), MakeMessageEntryId(Key(), 7, 8),
                         MakeAddressBookEntryId(DT_MAILUSER, "/cn=x"), MakeOneOffEntryId(L"a", L"b", L"c")};
    for (const Bytes& id : ids)
        for (std::size_t size = 0; size < id.size(); ++size) {
            const std::span<const std::uint8_t> part(id.data(), size);
            EXPECT_FALSE(ParseObjectEntryId(part));
            EXPECT_FALSE(ParseAddressBookEntryId(part));
            EXPECT_FALSE(ParseOneOffEntryId(part));
        }
    Bytes folder = ids[0];
    folder[20] = 7;
    EXPECT_FALSE(ParseObjectEntryId(folder));
    EXPECT_FALSE(FromHex(L"0"));
    EXPECT_FALSE(FromHex(L"0G"));
    EXPECT_EQ(ToHex(*FromHex(L"00ffAb")), L"00FFAB");
}

} // namespace
} // namespace standin::mailbox::test
