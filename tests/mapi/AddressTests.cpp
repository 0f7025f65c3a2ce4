// The address book: resolving names, one-offs, what its containers show.
#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Tags.h"
#include "tests/mapi/Client.h"

using namespace standin;

namespace mapi_tests {
namespace {

class AddressTest : public MapiTest {
protected:
    AddressTest() : m_book(OpenAddressBook()) {}
    HRESULT Resolve(ADRLIST* list, ULONG flags = MAPI_UNICODE) {
        return m_book->ResolveName(0, flags, nullptr, list);
    }
    template <class Interface>
    Ref<Interface> Open(const Bytes& id) {
        Ref<Interface> object;
        EXPECT_EQ(OpenEntry(m_book, id, 0, object), S_OK);
        return object;
    }

    Ref<IAddrBook> m_book;
};

TEST_F(AddressTest, NamesResolveAsTheListSays) {
    const std::tuple<const wchar_t*, HRESULT, const wchar_t*> cases[] = {
        {L"Warehouse", S_OK, L"Warehouse"},
        {L"All Hands", S_OK, L"All Hands"},
        {L"someone@example.org", S_OK, L"someone@example.org"},
        {L"Service", MAPI_E_AMBIGUOUS_RECIP, L"Service"},
        {L"Nobody", MAPI_E_NOT_FOUND, L"Nobody"},
        {L"", MAPI_E_NOT_FOUND, L""},
    };
    for (const auto& [name, status, resolved] : cases) {
        AddressList list{{Text(PR_DISPLAY_NAME_W, name), Long(PR_RECIPIENT_TYPE, MAPI_CC)}};
        EXPECT_EQ(Resolve(list), status) << mailbox::Narrow(name, CP_UTF8);
        ASSERT_TRUE(list.Find(0, PR_DISPLAY_NAME_W));
        EXPECT_STREQ(list.Find(0, PR_DISPLAY_NAME_W)->Value.lpszW, resolved);
        EXPECT_EQ(list.Find(0, PR_RECIPIENT_TYPE)->Value.l, MAPI_CC) << "what else there was stays";
        EXPECT_EQ(list.Find(0, PR_ENTRYID) != nullptr, status == S_OK);
        EXPECT_EQ(list.Find(0, PR_EMAIL_ADDRESS_W) != nullptr, status == S_OK);
        EXPECT_EQ(list.Find(0, PR_SEARCH_KEY) != nullptr, status == S_OK);
    }
}

TEST_F(AddressTest, EachEntryOfAListIsResolvedForItself) {
    const Bytes known{1, 2, 3};
    AddressList list{{Text(PR_DISPLAY_NAME_W, L"Nobody")},
                     {Text(PR_DISPLAY_NAME_W, L"Front Desk")},
                     {Text(PR_DISPLAY_NAME_W, L"Whoever"), Binary(PR_ENTRYID, known)},
                     {Text(PR_DISPLAY_NAME_W, L"Service")}};
    EXPECT_EQ(Resolve(list), MAPI_E_AMBIGUOUS_RECIP);
    EXPECT_EQ(list.Size(0), 1u);
    EXPECT_TRUE(list.Find(1, PR_ENTRYID));
    EXPECT_EQ(list.Size(2), 2u) << "an entry with an id is resolved already";
    EXPECT_STREQ(list.Find(2, PR_DISPLAY_NAME_W)->Value.lpszW, L"Whoever");
}

TEST_F(AddressTest, WithoutUnicodeTextIsNarrow) {
    AddressList list{{Narrow(PR_DISPLAY_NAME_A, "Warehouse")}};
    ASSERT_EQ(Resolve(list, 0), S_OK);
    ASSERT_TRUE(list.Find(0, PR_ADDRTYPE_A));
    EXPECT_STREQ(list.Find(0, PR_ADDRTYPE_A)->Value.lpszA, "EX");
    EXPECT_FALSE(list.Find(0, PR_ADDRTYPE_W));
}

TEST_F(AddressTest, ListsThatCantBeResolvedAreRefusedWhole) {
    AddressList noName{{Text(PR_DISPLAY_NAME_W, L"Warehouse")}, {Long(PR_RECIPIENT_TYPE, 1)}};
    AddressList nullName{{Text(PR_DISPLAY_NAME_W, nullptr)}};
    AddressList unknown{{Text(PR_DISPLAY_NAME_W, L"Nobody")}};
    EXPECT_EQ(Resolve(noName), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(noName.Size(0), 1u);
    EXPECT_EQ(Resolve(nullName), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(Resolve(nullptr), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(Resolve(unknown, 0x100), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(Resolve(unknown, MAPI_UNICODE | MAPI_DIALOG), MAPI_E_USER_CANCEL);
}

TEST_F(AddressTest, PropertiesOfAnEntryMustBeABufferOfTheirOwn) {
    void* memory = nullptr;
    void* more = nullptr;
    ASSERT_EQ(MAPIAllocateBuffer(CbNewADRLIST(1), &memory), S_OK);
    ASSERT_EQ(MAPIAllocateMore(sizeof(SPropValue), memory, &more), S_OK);
    auto* list = static_cast<ADRLIST*>(memory);
    list->cEntries = 1;
    list->aEntries[0] = {0, 1, static_cast<SPropValue*>(more)};
    list->aEntries[0].rgPropVals[0] = Text(PR_DISPLAY_NAME_W, L"Warehouse");
    EXPECT_EQ(Resolve(list), S_OK);
    EXPECT_EQ(TakeViolations().size(), 1u);
    FreePadrlist(list);
}

TEST_F(AddressTest, OneOffsAreMadeAndOpened) {
    ULONG size = 0;
    Block<ENTRYID> id;
    const auto create = [&](const void* name, const void* type, const void* address, ULONG flags) {
        const auto text = [](const void* any) { return static_cast<LPTSTR>(const_cast<void*>(any)); };
        return m_book->CreateOneOff(text(name), text(type), text(address), flags, &size, &id);
    };
    ASSERT_EQ(create(L"Ann", L"SMTP", L"ann@example.org", MAPI_UNICODE), S_OK);
    EXPECT_EQ(BytesOf(size, id), mailbox::MakeOneOffEntryId(L"Ann", L"SMTP", L"ann@example.org"));
    const auto user = Open<IMailUser>(BytesOf(size, id));
    EXPECT_EQ(GetText(user, PR_DISPLAY_NAME_W), L"Ann");
    EXPECT_EQ(GetText(user, PR_EMAIL_ADDRESS_W), L"ann@example.org");
    ASSERT_EQ(create("Bob", "SMTP", "b@c.de", MAPI_SEND_NO_RICH_INFO), S_OK);
    EXPECT_EQ(BytesOf(size, id), mailbox::MakeOneOffEntryId(L"Bob", L"SMTP", L"b@c.de", false, false));
    EXPECT_EQ(create(L"Ann", nullptr, L"x", MAPI_UNICODE), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(create(L"Ann", L"SMTP", L"x", 1), MAPI_E_UNKNOWN_FLAGS);
}

TEST_F(AddressTest, EntriesHaveTheirProperties) {
    const auto& entries = World().Addresses().Entries();
    const auto user = Open<IMailUser>(entries[4]->EntryId());
    EXPECT_EQ(GetText(user, PR_DISPLAY_NAME_W), L"Warehouse");
    EXPECT_EQ(GetText(user, mailbox::kPrSmtpAddress), L"warehouse@example.com");
    EXPECT_EQ(GetText(user, PR_ADDRTYPE_W), L"EX");
    EXPECT_EQ(Set(user, Text(PR_DISPLAY_NAME_W, L"x")), E_ACCESSDENIED);
    const auto list = Open<IDistList>(entries[5]->EntryId());
    EXPECT_EQ(RowCount(Table(list, &IMAPIContainer::GetContentsTable)), entries[5]->Members().size());
}

TEST_F(AddressTest, TheBookLeadsToItsListAndTheListToItsEntries) {
    Ref<IABContainer> root;
    ULONG type = 0;
    ASSERT_EQ(OpenEntry(m_book, {}, 0, root, &type), S_OK);
    EXPECT_EQ(type, MAPI_ABCONT);
    Ref<IMAPITable> none;
    EXPECT_EQ(root->GetContentsTable(0, &none), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(Column(Table(root, &IMAPIContainer::GetHierarchyTable), PR_DISPLAY_NAME_W),
              Texts{L"Global Address List"});
    ULONG size = 0;
    Block<ENTRYID> id;
    ASSERT_EQ(m_book->GetDefaultDir(&size, &id), S_OK);
    const auto list = Open<IABContainer>(BytesOf(size, id));
    EXPECT_EQ(Column(Table(list, &IMAPIContainer::GetContentsTable), PR_DISPLAY_NAME_W),
              (Texts{L"Front Desk", L"Back Office", L"Service North", L"Service South", L"Warehouse",
                     L"All Hands"}));
    Rows path;
    ASSERT_EQ(m_book->GetSearchPath(MAPI_UNICODE, &path), S_OK);
    EXPECT_EQ(path.Count(), 1u);
}

TEST_F(AddressTest, ContainersResolveWithFlags) {
    const Ref<IABContainer> list = Open<IABContainer>(World().Addresses().EntryId());
    AddressList names{{Text(PR_DISPLAY_NAME_W, L"Warehouse")},
                      {Text(PR_DISPLAY_NAME_W, L"Service")},
                      {Text(PR_DISPLAY_NAME_W, L"Nobody")},
                      {Text(PR_DISPLAY_NAME_W, L"a@b.org")},
                      {Text(PR_DISPLAY_NAME_W, L"Front Desk")}};
    struct {
        ULONG count;
        ULONG flags[5];
    } flags = {5, {0, 0, 0, 0, MAPI_RESOLVED}};
    ASSERT_EQ(list->ResolveNames(Tags{PR_ENTRYID, mailbox::kPrSmtpAddress}, MAPI_UNICODE, names,
                                 reinterpret_cast<FlagList*>(&flags)),
              S_OK);
    EXPECT_EQ(flags.flags[0], MAPI_RESOLVED);
    EXPECT_EQ(flags.flags[1], MAPI_AMBIGUOUS);
    EXPECT_EQ(flags.flags[2], MAPI_UNRESOLVED);
    EXPECT_EQ(flags.flags[3], MAPI_UNRESOLVED) << "a one-off is not in the list";
    EXPECT_EQ(names.Size(4), 1u);
    ASSERT_TRUE(names.Find(0, mailbox::kPrSmtpAddress));
    EXPECT_FALSE(names.Find(0, PR_SEARCH_KEY)) << "only what was asked for";
    flags.count = 2;
    EXPECT_EQ(list->ResolveNames(nullptr, 0, names, reinterpret_cast<FlagList*>(&flags)),
              MAPI_E_INVALID_PARAMETER);
}

TEST_F(AddressTest, ClientsDontChangeTheBook) {
    const Ref<IABContainer> list = Open<IABContainer>(World().Addresses().EntryId());
    Ref<IMAPIProp> entry;
    EXPECT_EQ(list->CreateEntry(0, nullptr, CREATE_REPLACE, &entry), E_ACCESSDENIED);
    EXPECT_EQ(list->DeleteEntries(nullptr, 0), E_ACCESSDENIED);
    EXPECT_EQ(m_book->SetSearchPath(0, nullptr), MAPI_E_NO_SUPPORT);
    // The container of a contact folder is another provider's, which isn't there.
    Bytes contacts = Folder(L"Contacts").EntryId();
    const Bytes provider{0xFE, 0x42, 0xAA, 0x0A, 0x18, 0xC7, 0x1A, 0x10,
                         0xE8, 0x85, 0x0B, 0x65, 0x1C, 0x24, 0x00, 0x00};
    std::copy(provider.begin(), provider.end(), contacts.begin() + 4);
    Ref<IUnknown> object;
    EXPECT_EQ(OpenEntry(m_book, contacts, MAPI_MODIFY, object), MAPI_E_UNKNOWN_ENTRYID);
    EXPECT_EQ(OpenEntry(m_book, {contacts.begin(), contacts.begin() + 8}, 0, object), MAPI_E_INVALID_ENTRYID);
    Block<MAPIERROR> error;
    EXPECT_EQ(m_book->GetLastError(MAPI_E_INVALID_ENTRYID, MAPI_UNICODE, &error), S_OK);
    EXPECT_TRUE(error);
}

} // namespace
} // namespace mapi_tests
