// What IDispatch of every object lets through and what it refuses.
#include "Client.h"

#include <array>

namespace outlook_tests {
namespace {

using DispatchTest = OutlookTest;

enum class How { Get, Put, Call };

struct Refusal {
    How how;
    const wchar_t* member;
    std::vector<_variant_t> arguments;
    HRESULT status;
};

Answer Try(const Object& object, const Refusal& row) {
    const DISPID id = object.IdOf(row.member);
    if (id == DISPID_UNKNOWN)
        return UnknownName();
    constexpr std::array<WORD, 3> kFlags{DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, DISPATCH_METHOD};
    const WORD flags = kFlags[static_cast<std::size_t>(row.how)];
    switch (row.arguments.size()) {
    case 0:
        return object.Invoke(id, flags, {});
    case 1:
        return object.Invoke(id, flags, {row.arguments[0]});
    default:
        return object.Invoke(id, flags, {row.arguments[0], row.arguments[1]});
    }
}

TEST_F(DispatchTest, RefusesWhatOutlookRefuses) {
    const Object folder = DefaultFolder(kInbox);
    const Refusal rows[] = {
        {How::Get, L"Colour", {}, DISP_E_UNKNOWNNAME},
        {How::Put, L"EntryID", {Value(L"00")}, DISP_E_MEMBERNOTFOUND},
        {How::Put, L"Delete", {Value(1)}, DISP_E_MEMBERNOTFOUND},
        {How::Get, L"CopyTo", {}, DISP_E_MEMBERNOTFOUND},
        {How::Call, L"Name", {}, DISP_E_MEMBERNOTFOUND},
        {How::Get, L"Name", {Value(1)}, DISP_E_BADPARAMCOUNT},
        {How::Call, L"CopyTo", {}, DISP_E_BADPARAMCOUNT},
        {How::Call, L"Delete", {Value(1)}, DISP_E_BADPARAMCOUNT},
        {How::Call, L"CopyTo", {Missing()}, DISP_E_PARAMNOTOPTIONAL},
        {How::Call, L"CopyTo", {Value(L"Inbox")}, DISP_E_TYPEMISMATCH},
        {How::Call, L"CopyTo", {_variant_t(Application().Raw())}, E_INVALIDARG},
        {How::Call, L"GetStorage", {Value(L"x"), Value(L"first")}, DISP_E_TYPEMISMATCH},
        {How::Get, L"CurrentView", {}, E_NOTIMPL},
        {How::Call, L"GetTable", {}, E_NOTIMPL},
    };
    for (const Refusal& row : rows)
        EXPECT_EQ(Try(folder, row).Status(), row.status)
            << row.member << ", " << row.arguments.size() << " arguments";
}

TEST_F(DispatchTest, FindsNamesOfWhateverCase) {
    const Object folder = DefaultFolder(kInbox);
    EXPECT_EQ(folder.IdOf(L"defaultitemtype"), folder.IdOf(L"DefaultItemType"));
    EXPECT_NE(folder.IdOf(L"EntryID"), folder.IdOf(L"StoreID"));
    EXPECT_EQ(folder.IdOf(L"FullFolderPath"), folder.IdOf(L"fullfolderpath"))
        << "hidden members are callable";
}

TEST_F(DispatchTest, AnIdOfAnotherInterfaceIsNoMember) {
    const Object folder = DefaultFolder(kInbox);
    const DISPID name = Application().IdOf(L"Name");
    EXPECT_EQ(folder.Invoke(name, DISPATCH_PROPERTYGET, {}).status, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(folder.Invoke(0x7FFF0001, DISPATCH_PROPERTYGET, {}).status, DISP_E_MEMBERNOTFOUND);
}

TEST_F(DispatchTest, ArgumentsMayBeNamed) {
    const Object nameSpace = NameSpace();
    LPOLESTR names[] = {const_cast<LPOLESTR>(L"Logon"), const_cast<LPOLESTR>(L"PROFILE"),
                        const_cast<LPOLESTR>(L"shoe")};
    DISPID ids[3]{};
    EXPECT_EQ(nameSpace.Raw()->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids),
              DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[1], 0);
    EXPECT_EQ(ids[2], DISPID_UNKNOWN);

    // CompareEntryIDs with its arguments the other way round, by name.
    LPOLESTR compare[] = {const_cast<LPOLESTR>(L"CompareEntryIDs"), const_cast<LPOLESTR>(L"secondEntryID"),
                          const_cast<LPOLESTR>(L"firstEntryID")};
    ASSERT_EQ(nameSpace.Raw()->GetIDsOfNames(IID_NULL, compare, 3, LOCALE_USER_DEFAULT, ids), S_OK);
    _variant_t values[] = {Value(L"ABCD"), Value(L"abcd")};
    DISPPARAMS parameters{values, ids + 1, 2, 2};
    _variant_t result;
    ASSERT_EQ(nameSpace.Raw()->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                      &result, nullptr, nullptr),
              S_OK);
    EXPECT_TRUE(static_cast<bool>(result));
    ids[2] = ids[1];
    EXPECT_EQ(nameSpace.Raw()->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                      &result, nullptr, nullptr),
              DISP_E_PARAMNOTFOUND)
        << "the same parameter twice";
}

TEST_F(DispatchTest, ValuesAreConvertedAsAutomationDoesIt) {
    const Object folder = DefaultFolder(kInbox);
    const Object item = AddItem(folder, L"Subject");
    item.Put(L"Subject", Value(12));
    EXPECT_EQ(item.Text(L"Subject"), L"12");
    item.Put(L"Importance", Value(L"2"));
    EXPECT_EQ(item.Number(L"Importance"), 2);
    item.Put(L"UnRead", Value(1));
    EXPECT_EQ(item.Get(L"UnRead"), Value(true));
    _variant_t number = Value(7);
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_I4;
    reference.plVal = &number.lVal;
    EXPECT_EQ(item.Invoke(item.IdOf(L"Subject"), DISPATCH_PROPERTYPUT, {_variant_t(reference)}).status, S_OK);
    EXPECT_EQ(item.Text(L"Subject"), L"7");

    const Answer bad = item.TryPut(L"Importance", Value(L"high"));
    EXPECT_EQ(bad.status, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(bad.badArgument, 0u);
    EXPECT_EQ(item.TryPut(L"Importance", _variant_t(1e12)).status, DISP_E_OVERFLOW);
    EXPECT_EQ(item.TryPut(L"Importance", Value(3)).Status(), E_INVALIDARG) << "not of the enumeration";
    EXPECT_EQ(item.Number(L"Importance"), 2);
}

TEST_F(DispatchTest, PropertiesArePutByValueAndObjectsByReference) {
    const Object item = AddItem(DefaultFolder(kInbox), L"Subject");
    const DISPID subject = item.IdOf(L"Subject");
    _variant_t text = Value(L"Other");
    DISPPARAMS nameless{&text, nullptr, 1, 0};
    EXPECT_EQ(item.Raw()->Invoke(subject, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &nameless,
                                 nullptr, nullptr, nullptr),
              DISP_E_PARAMNOTFOUND)
        << "the value without its name";
    EXPECT_EQ(item.Invoke(subject, DISPATCH_PROPERTYPUT, {text, text}).status, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(item.Invoke(subject, DISPATCH_PROPERTYPUTREF, {text}).status, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(item.Text(L"Subject"), L"Subject");

    const Object first = NameSpace().Child(L"CreateRecipient", {Value(L"Warehouse")});
    const Object second = NameSpace().Child(L"CreateRecipient", {Value(L"Back Office")});
    const DISPID entry = first.IdOf(L"AddressEntry");
    const _variant_t other = second.Get(L"AddressEntry");
    EXPECT_EQ(first.Invoke(entry, DISPATCH_PROPERTYPUT, {other}).status, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(first.Text(L"Name"), L"Warehouse");
    EXPECT_EQ(first.Invoke(entry, DISPATCH_PROPERTYPUTREF, {other}).status, S_OK);
    EXPECT_EQ(first.Text(L"Name"), L"Back Office");
    EXPECT_EQ(first.Invoke(entry, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF, {other}).status, S_OK);
}

TEST_F(DispatchTest, DeadObjectsTellWhoStillUsesThem) {
    IDispatch* items = nullptr;
    ISupportErrorInfo* errors = nullptr;
    IEnumVARIANT* enumerator = nullptr;
    {
        const Object alive = DefaultFolder(kInbox).Child(L"Items");
        items = alive.Raw();
        ASSERT_EQ(items->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&errors)), S_OK);
        errors->Release();
        const _variant_t walk = alive.Invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET, {}).value;
        ASSERT_EQ(walk.punkVal->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(&enumerator)),
                  S_OK);
        enumerator->Release();
    }
    EXPECT_TRUE(Watch().Violations().empty());
    UINT count = 0;
    EXPECT_EQ(items->GetTypeInfoCount(&count), RPC_E_DISCONNECTED);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IID_IDispatch), RPC_E_DISCONNECTED);
    items->AddRef();
    errors->Release();
    enumerator->Reset();
    EXPECT_EQ(Watch().Violations(), (std::vector<std::wstring>{
                                        L"Items: used after its last release",
                                        L"Items: used after its last release",
                                        L"Items: referenced after its last release",
                                        L"Items: released too often",
                                        L"IEnumVARIANT: used after its last release",
                                    }));
    Watch().Reset();
}

TEST_F(DispatchTest, FailuresAreExceptionsInOutlooksWords) {
    const Answer answer = NameSpace().TryCall(L"GetFolderFromID", {Value(L"1234")});
    EXPECT_EQ(answer.status, DISP_E_EXCEPTION);
    EXPECT_EQ(answer.scode, MAPI_E_INVALID_ENTRYID);
    EXPECT_EQ(answer.source, L"Microsoft Outlook");
    EXPECT_EQ(answer.description, L"Could not open the item. Try again.");

    IErrorInfo* info = nullptr;
    ASSERT_EQ(GetErrorInfo(0, &info), S_OK);
    BSTR description = nullptr;
    info->GetDescription(&description);
    info->Release();
    EXPECT_EQ(std::wstring(description), answer.description);
    SysFreeString(description);
}

TEST_F(DispatchTest, DefaultMembersServePropertiesWithArguments) {
    const Object nameSpace = NameSpace();
    const Object archive(nameSpace.Call(L"Folders", {Value(L"archive")}));
    ASSERT_TRUE(archive);
    EXPECT_EQ(archive.Invoke(DISPID_VALUE, DISPATCH_PROPERTYGET, {}).value, Value(L"Archive"));
    EXPECT_EQ(nameSpace.TryCall(L"Folders", {Value(9)}).description, L"Array index out of bounds.");
    EXPECT_EQ(nameSpace.TryCall(L"Folders", {Value(1), Value(2)}).status, DISP_E_BADPARAMCOUNT);
}

TEST_F(DispatchTest, TheVersionTextDecidesWhichMembersThereAre) {
    const Object nameSpace = NameSpace();
    const DISPID current = nameSpace.IdOf(L"DefaultStore");
    EXPECT_NE(current, DISPID_UNKNOWN);
    Outlook().SetVersionText(L"11.0.8010.1");
    EXPECT_EQ(Application().Text(L"Version"), L"11.0.8010.1");
    EXPECT_EQ(nameSpace.IdOf(L"DefaultStore"), DISPID_UNKNOWN);
    EXPECT_EQ(nameSpace.Invoke(current, DISPATCH_PROPERTYGET, {}).status, DISP_E_MEMBERNOTFOUND);
    EXPECT_NE(nameSpace.IdOf(L"ExchangeConnectionMode"), DISPID_UNKNOWN);
}

TEST_F(DispatchTest, ObjectsAnswerTheInterfaceIdsOfTheirKind) {
    struct Row {
        Object object;
        std::uint32_t id;
    };
    const Object folder = DefaultFolder(kInbox);
    const Row rows[] = {
        {Application(), 0x00063001},
        {NameSpace(), 0x00063002},
        {folder, 0x00063006},
        {folder.Child(L"Folders"), 0x00063040},
        {folder.Child(L"Items"), 0x00063041},
        {AddItem(folder, L"x"), 0x00063034},
    };
    for (const Row& asked : rows)
        for (const Row& row : rows) {
            const IID iid{row.id, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
            IUnknown* answer = nullptr;
            const HRESULT status = asked.object.Raw()->QueryInterface(iid, reinterpret_cast<void**>(&answer));
            EXPECT_EQ(status, asked.id == row.id ? S_OK : E_NOINTERFACE)
                << std::hex << asked.id << " " << row.id;
            if (answer)
                answer->Release();
        }
}

TEST_F(DispatchTest, TheApplicationAndTheSessionAreOneEach) {
    const Object application = Application();
    const Object nameSpace = NameSpace();
    const Object folder = DefaultFolder(kInbox);
    EXPECT_EQ(folder.Child(L"Application").Raw(), application.Raw());
    EXPECT_EQ(folder.Child(L"Session").Raw(), nameSpace.Raw());
    EXPECT_EQ(Application().Raw(), application.Raw());
    EXPECT_EQ(nameSpace.Child(L"Parent").Raw(), application.Raw());
}

TEST_F(DispatchTest, EveryCallIsTraced) {
    const Object folder = DefaultFolder(kInbox);
    Watch().KeepLines(true);
    folder.Get(L"Name");
    folder.TryPut(L"Name", Value(L"Post"));
    folder.TryCall(L"Folders", {Value(1)});
    const std::vector<std::wstring> expected = {
        L"Outlook MAPIFolder::GetIDsOfNames 00000000", L"Outlook MAPIFolder::Name 00000000",
        L"Outlook MAPIFolder::GetIDsOfNames 00000000", L"Outlook MAPIFolder::put_Name 80070005",
        L"Outlook MAPIFolder::GetIDsOfNames 00000000", L"Outlook MAPIFolder::Folders 80020009",
    };
    EXPECT_EQ(Watch().Lines(), expected);
}

} // namespace
} // namespace outlook_tests
