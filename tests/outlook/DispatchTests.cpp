// What IDispatch of every object lets through and what it refuses.
#include "Client.h"

#include <array>

namespace outlook_tests {
namespace {

using DispatchTest = OutlookTest;

constexpr WORD kGet = DISPATCH_PROPERTYGET, kPut = DISPATCH_PROPERTYPUT, kCall = DISPATCH_METHOD;

TEST_F(DispatchTest, RefusesWhatOutlookRefuses) {
    const Object folder = DefaultFolder(kInbox);
    const std::tuple<WORD, const wchar_t*, Values, HRESULT> rows[] = {
        {kPut, L"EntryID", {L"00"}, DISP_E_MEMBERNOTFOUND},
        {kPut, L"Delete", {1}, DISP_E_MEMBERNOTFOUND},
        {kGet, L"CopyTo", {}, DISP_E_MEMBERNOTFOUND},
        {kCall, L"Name", {}, DISP_E_MEMBERNOTFOUND},
        {kGet, L"Name", {1}, DISP_E_BADPARAMCOUNT},
        {kCall, L"CopyTo", {}, DISP_E_BADPARAMCOUNT},
        {kCall, L"Delete", {1}, DISP_E_BADPARAMCOUNT},
        {kCall, L"CopyTo", {Missing()}, DISP_E_PARAMNOTOPTIONAL},
        {kCall, L"CopyTo", {L"Inbox"}, DISP_E_TYPEMISMATCH},
        {kCall, L"CopyTo", {Application()}, E_INVALIDARG},
        {kCall, L"GetStorage", {L"x", L"first"}, DISP_E_TYPEMISMATCH},
        {kGet, L"CurrentView", {}, E_NOTIMPL},
        {kCall, L"GetTable", {}, E_NOTIMPL},
    };
    for (const auto& [how, member, arguments, status] : rows)
        EXPECT_EQ(folder.Invoke(folder.IdOf(member), how, arguments).Status(), status)
            << member << ", " << arguments.size() << " arguments";
}

TEST_F(DispatchTest, FindsNamesOfWhateverCase) {
    const Object folder = DefaultFolder(kInbox);
    EXPECT_EQ(folder.IdOf(L"defaultitemtype"), folder.IdOf(L"DefaultItemType"));
    EXPECT_NE(folder.IdOf(L"EntryID"), folder.IdOf(L"StoreID"));
    EXPECT_EQ(folder.IdOf(L"FullFolderPath"), folder.IdOf(L"fullfolderpath"))
        << "hidden members are callable";
    EXPECT_EQ(folder.IdOf(L"Colour"), DISPID_UNKNOWN);
}

TEST_F(DispatchTest, AnIdOfAnotherInterfaceIsNoMember) {
    const Object folder = DefaultFolder(kInbox);
    const DISPID name = Application().IdOf(L"Name");
    EXPECT_EQ(folder.Invoke(name, kGet, {}).status, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(folder.Invoke(0x7FFF0001, kGet, {}).status, DISP_E_MEMBERNOTFOUND);
}

TEST_F(DispatchTest, ArgumentsMayBeNamed) {
    const Object nameSpace = NameSpace();
    IDispatch& raw = *nameSpace.Raw();
    DISPID ids[3]{};
    const auto find = [&](const std::array<const wchar_t*, 3>& names) {
        return raw.GetIDsOfNames(IID_NULL, const_cast<LPOLESTR*>(names.data()), 3, LOCALE_USER_DEFAULT, ids);
    };
    EXPECT_EQ(find({L"Logon", L"PROFILE", L"shoe"}), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[1], 0);
    EXPECT_EQ(ids[2], DISPID_UNKNOWN);

    ASSERT_EQ(find({L"CompareEntryIDs", L"secondEntryID", L"firstEntryID"}), S_OK) << "the other way round";
    _variant_t values[] = {Value(L"ABCD"), Value(L"abcd")}, result;
    DISPPARAMS parameters{values, ids + 1, 2, 2};
    const auto compare = [&] {
        return raw.Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, kCall, &parameters, &result, nullptr,
                          nullptr);
    };
    ASSERT_EQ(compare(), S_OK);
    EXPECT_TRUE(static_cast<bool>(result));
    ids[2] = ids[1];
    EXPECT_EQ(compare(), DISP_E_PARAMNOTFOUND) << "the same parameter twice";
}

TEST_F(DispatchTest, ValuesAreConvertedAsAutomationDoesIt) {
    const Object item = AddItem(DefaultFolder(kInbox), L"Subject");
    PutAll(item, {{L"Subject", 12}, {L"Importance", L"2"}, {L"UnRead", 1}});
    Expect(item, {{L"Subject", L"12"}, {L"Importance", 2}, {L"UnRead", true}});
    _variant_t number = Value(7);
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_I4;
    reference.plVal = &number.lVal;
    EXPECT_EQ(item.Invoke(item.IdOf(L"Subject"), kPut, {_variant_t(reference)}).status, S_OK);
    EXPECT_EQ(item.Text(L"Subject"), L"7");

    const Answer bad = item.TryPut(L"Importance", L"high");
    EXPECT_EQ(bad.status, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(bad.badArgument, 0u);
    EXPECT_EQ(item.TryPut(L"Importance", _variant_t(1e12)).status, DISP_E_OVERFLOW);
    EXPECT_EQ(item.TryPut(L"Importance", 3).Status(), E_INVALIDARG) << "not of the enumeration";
    EXPECT_EQ(item.Number(L"Importance"), 2);
}

TEST_F(DispatchTest, PropertiesArePutByValueAndObjectsByReference) {
    const Object item = AddItem(DefaultFolder(kInbox), L"Subject");
    const DISPID subject = item.IdOf(L"Subject");
    _variant_t text = Value(L"Other");
    DISPPARAMS nameless{&text, nullptr, 1, 0};
    EXPECT_EQ(item.Raw()->Invoke(subject, IID_NULL, LOCALE_USER_DEFAULT, kPut, &nameless, nullptr, nullptr,
                                 nullptr),
              DISP_E_PARAMNOTFOUND)
        << "the value without its name";
    EXPECT_EQ(item.Invoke(subject, kPut, {text, text}).status, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(item.Invoke(subject, DISPATCH_PROPERTYPUTREF, {text}).status, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(item.Text(L"Subject"), L"Subject");

    const Object first = NameSpace().Child(L"CreateRecipient", {L"Warehouse"});
    const Object second = NameSpace().Child(L"CreateRecipient", {L"Back Office"});
    const DISPID entry = first.IdOf(L"AddressEntry");
    const _variant_t other = second.Get(L"AddressEntry");
    EXPECT_EQ(first.Invoke(entry, kPut, {other}).status, DISP_E_MEMBERNOTFOUND);
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
        const Object alive = Items(kInbox);
        items = alive.Raw();
        ASSERT_EQ(items->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&errors)), S_OK);
        errors->Release();
        const _variant_t walk = alive.Invoke(DISPID_NEWENUM, kGet, {}).value;
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
    const std::vector<std::wstring> expected = {
        L"Items: used after its last release",        L"Items: used after its last release",
        L"Items: referenced after its last release",  L"Items: released too often",
        L"IEnumVARIANT: used after its last release",
    };
    EXPECT_EQ(Watch().Violations(), expected);
    Watch().Reset();
}

TEST_F(DispatchTest, FailuresAreExceptionsInOutlooksWords) {
    const Answer answer = NameSpace().TryCall(L"GetFolderFromID", {L"1234"});
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
    EXPECT_EQ(nameSpace.Child(L"Folders", {L"archive"}).Invoke(DISPID_VALUE, kGet, {}).value,
              Value(L"Archive"));
    EXPECT_TRUE(IsOutOfBounds(nameSpace.TryCall(L"Folders", {9})));
    EXPECT_EQ(nameSpace.TryCall(L"Folders", {1, 2}).status, DISP_E_BADPARAMCOUNT);
}

TEST_F(DispatchTest, TheVersionTextDecidesWhichMembersThereAre) {
    const Object nameSpace = NameSpace();
    const DISPID current = nameSpace.IdOf(L"DefaultStore");
    EXPECT_NE(current, DISPID_UNKNOWN);
    Outlook().SetVersionText(L"11.0.8010.1");
    EXPECT_EQ(Application().Text(L"Version"), L"11.0.8010.1");
    EXPECT_EQ(nameSpace.IdOf(L"DefaultStore"), DISPID_UNKNOWN);
    EXPECT_EQ(nameSpace.Invoke(current, kGet, {}).status, DISP_E_MEMBERNOTFOUND);
    EXPECT_NE(nameSpace.IdOf(L"ExchangeConnectionMode"), DISPID_UNKNOWN);
}

TEST_F(DispatchTest, ObjectsAnswerTheInterfaceIdsOfTheirKind) {
    const Object folder = DefaultFolder(kInbox);
    const std::pair<Object, std::uint32_t> rows[] = {
        {Application(), 0x00063001},
        {NameSpace(), 0x00063002},
        {folder, 0x00063006},
        {folder.Child(L"Folders"), 0x00063040},
        {folder.Child(L"Items"), 0x00063041},
        {AddItem(folder, L"x"), 0x00063034},
    };
    for (const auto& [object, own] : rows)
        for (const auto& [other, id] : rows)
            EXPECT_EQ(object.IsA(id), id == own) << std::hex << id << " of " << own;
}

TEST_F(DispatchTest, TheApplicationAndTheSessionAreOneEach) {
    const Object application = Application(), nameSpace = NameSpace(), folder = DefaultFolder(kInbox);
    EXPECT_EQ(folder.Child(L"Application").Raw(), application.Raw());
    EXPECT_EQ(folder.Child(L"Session").Raw(), nameSpace.Raw());
    EXPECT_EQ(Application().Raw(), application.Raw());
    EXPECT_EQ(nameSpace.Child(L"Parent").Raw(), application.Raw());
}

TEST_F(DispatchTest, EveryCallIsTraced) {
    const Object folder = DefaultFolder(kInbox);
    Watch().KeepLines(true);
    folder.Get(L"Name");
    folder.TryPut(L"Name", L"Post");
    folder.TryCall(L"Folders", {1});
    const std::vector<std::wstring> expected = {
        L"Outlook MAPIFolder::GetIDsOfNames 00000000", L"Outlook MAPIFolder::Name 00000000",
        L"Outlook MAPIFolder::GetIDsOfNames 00000000", L"Outlook MAPIFolder::put_Name 80070005",
        L"Outlook MAPIFolder::GetIDsOfNames 00000000", L"Outlook MAPIFolder::Folders 80020009",
    };
    EXPECT_EQ(Watch().Lines(), expected);
}

} // namespace
} // namespace outlook_tests
