// The global address list.
#include "session/COutlookFuncs.h"

#include "fields/Conversions.h"
#include "frame/ErrorCodes.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

struct AddressKey {
    const wchar_t* key;
    const wchar_t* member; ///< of ExchangeUser
};

constexpr std::array kKeys{
    AddressKey{L"email", L"PrimarySmtpAddress"},
    AddressKey{L"company", L"CompanyName"},
    AddressKey{L"alias", L"Alias"},
    AddressKey{L"department", L"Department"},
    AddressKey{L"assistant", L"AssistantName"},
    AddressKey{L"businessphone", L"BusinessTelephoneNumber"},
    AddressKey{L"city", L"City"},
    AddressKey{L"comments", L"Comments"},
    AddressKey{L"firstname", L"FirstName"},
    AddressKey{L"id", L"ID"},
    AddressKey{L"jobtitle", L"JobTitle"},
    AddressKey{L"lastname", L"LastName"},
    AddressKey{L"mobilephone", L"MobileTelephoneNumber"},
    AddressKey{L"name", L"Name"},
    AddressKey{L"location", L"OfficeLocation"},
    AddressKey{L"zip", L"PostalCode"},
    AddressKey{L"state", L"StateOrProvince"},
    AddressKey{L"street", L"StreetAddress"},
};

/// PR_COUNTRY in its narrow form, as the property accessor names it.
constexpr const wchar_t* kCountryPath = L"http://schemas.microsoft.com/mapi/proptag/0x3A26000A";

constexpr std::array kUserTypes{
    EnumWord{0, L"ExchangeUser"},
    EnumWord{1, L"ExchangeDistributionList"},
    EnumWord{2, L"ExchangePublicFolder"},
    EnumWord{3, L"ExchangeAgent"},
    EnumWord{4, L"ExchangeOrganization"},
    EnumWord{5, L"ExchangeRemoteUser"},
    EnumWord{10, L"OutlookContact"},
    EnumWord{11, L"OutlookDistributionList"},
    EnumWord{20, L"Ldap"},
    EnumWord{30, L"Smtp"},
    EnumWord{40, L"Other"},
};
constexpr EnumWords kUserTypeWords{kUserTypes, L"Unknown"};

/// A failing call and an empty value are no country, and no error.
std::wstring CountryOf(const outlook::Reference& user) {
    _variant_t accessor;
    _variant_t value;
    if (FAILED(user.TryGet(L"PropertyAccessor", accessor)) ||
        FAILED(outlook::Reference(outlook::kPropertyAccessor, accessor)
                   .TryCall(L"GetProperty", {outlook::TextValue(kCountryPath)}, value)) ||
        value.vt != VT_BSTR) {
        return {};
    }
    return BstrText(_bstr_t(value));
}

} // namespace

/// The entries of the list, which is fetched once.
outlook::Reference COutlookFuncs::AddressEntries() {
    if (!m_objGlobalAddressList) {
        m_objGlobalAddressList.Set(m_objNamespace.Call(L"GetGlobalAddressList"));
    }
    return outlook::Reference(outlook::kAddressEntries,
                              m_objGlobalAddressList.GetProperty(L"AddressEntries"));
}

std::wstring COutlookFuncs::GALCount() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    const Operation operation(L"GALCount");
    return FormatText(L"%ld", AddressEntries().GetLong(L"Count"));
}

std::wstring COutlookFuncs::GALGetField(const ScriptText& key, std::int32_t index) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GALGetField");
    const outlook::Reference entry(outlook::kAddressEntry,
                                   AddressEntries().Call(L"Item", {outlook::LongValue(index)}));
    const outlook::Reference user(outlook::kExchangeUser, entry.Call(L"GetExchangeUser"));
    const std::wstring wanted = key.value_or(L"");
    if (EqualIgnoringCase(wanted, L"type")) {
        return WordFor(entry.GetLong(L"AddressEntryUserType"), kUserTypeWords);
    }
    if (user && EqualIgnoringCase(wanted, L"country")) {
        return CountryOf(user);
    }
    const AddressKey* row = FindByWord(kKeys, &AddressKey::key, wanted);
    return user && row ? user.GetText(row->member)
                       : operation.Fail(error::kParameterValue, L" Invalid Key Value.");
}

} // namespace varden
