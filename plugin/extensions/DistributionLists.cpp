// Members of distribution lists.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "mapi/HexText.h"
#include "mapi/PropertyCatalogue.h"
#include "mapi/Steps.h"
#include "mapi/Tags.h"
#include "session/Operation.h"

namespace varden {

namespace {

/// An address book container of a contacts folder ([MS-OXCDATA] 2.2.5.3), the fixed data of one particular
/// store: flags, provider, version 3, type 5, index 255, and a folder's message entry id of 70 bytes.
constexpr const wchar_t* kContainerTemplate = L"00000000FE42AA0A18C71A10E8850B651C2400000300000005000000FF000"
                                              L"0004600000000000000319B6FB6B873004A892C10314E889EC307"
                                              L"00EB6E677A5099B2408F46318B1405343A00000011002A00007752A170A68"
                                              L"3A347B1FD0C4071167D5B00000013F94D0000000000";
/// A new entry in it: the same header, version 3, type 4, and nothing embedded.
constexpr const wchar_t* kNewEntryTemplate =
    L"00000000FE42AA0A18C71A10E8850B651C2400000300000004000000000000000000000000000000";

/// A list property with one entry id more at its end. `old` is the property as it stands, null for a list
/// that has none; it and `added` must outlive the result, which points into them.
struct GrownList {
    std::vector<SBinary> entries;
    SPropValue property{};

    GrownList(ULONG tag, const SPropValue* old, const SBinary& added) {
        if (old && PROP_TYPE(old->ulPropTag) == PT_MV_BINARY && old->Value.MVbin.lpbin) {
            const auto& values = old->Value.MVbin;
            entries.assign(values.lpbin, values.lpbin + values.cValues);
        }
        entries.push_back(added);
        property.ulPropTag = tag;
        property.Value.MVbin = {static_cast<ULONG>(entries.size()), entries.data()};
    }
    GrownList(const GrownList&) = delete;
    GrownList& operator=(const GrownList&) = delete;
};

} // namespace

/// The member is there at once, whether or not the record is saved later.
std::wstring COutlookFuncs::AddOneOffDistListMember(const ScriptText& name, const ScriptText& address,
                                                    const ScriptText& type) {
    Operation operation(L"AddOneOffDistListMember");
    operation.OptionalParam(L"lpsName", name);
    operation.OptionalParam(L"lpsEmail", address);
    operation.OptionalParam(L"lpsType", type);
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!name || !address || !type) {
        return operation.Fail(error::kParameter, L"Missing Name, Email, or Type");
    }
    if (address->empty()) {
        return operation.Fail(error::kFieldValue, L"Invalid Email value");
    }
    if (*type != L"SMTP" && *type != L"EX") {
        return operation.Fail(error::kFieldValue, L"Invalid Type value");
    }
    if (name->empty()) {
        return operation.Fail(error::kFieldValue, L"Invalid Name value");
    }
    if (!m_objDistListItem) {
        return operation.Fail(error::kNoRecord, L"No DistList item opened");
    }
    mapi::Pointer<IAddrBook> addressBook;
    mapi::OpenAddressBook(m_psession.Required(), addressBook);
    LogLine(L"opened m_psession addressbook");
    const auto text = [](const ScriptText& argument) {
        return reinterpret_cast<LPTSTR>(const_cast<LPWSTR>(argument->c_str()));
    };
    ULONG size = 0;
    mapi::Block<ENTRYID> entryId;
    if (const HRESULT status = addressBook->CreateOneOff(text(name), text(type), text(address), MAPI_UNICODE,
                                                         &size, entryId.Out());
        FAILED(status)) {
        return operation.Fail(error::kMapi, status, L"AddressBook - CreateOneOff");
    }
    LogLine(L"created addrressbook oneoff");
    AppendMember({size, reinterpret_cast<LPBYTE>(entryId.get())});
    return kSuccessText;
}

/// Appends the entry id to the two parallel properties of the list. What comes of the writes isn't looked at.
void COutlookFuncs::AppendMember(const SBinary& entryId) {
    IMessage& message = m_pMessage.Required();
    const ULONG membersTag = mapi_TypedTag(L"Members", PT_MV_BINARY, message);
    LogLine(L"converted members tag");
    const ULONG oneOffsTag = mapi_TypedTag(L"OneOffMembers", PT_MV_BINARY, message);
    LogLine(L"converted one off members tag");

    mapi::Block<SPropValue> oldMembers;
    mapi::GetOneProp(&message, membersTag, oldMembers.Out());
    LogLine(L"retrieved members prop from message");
    GrownList members(membersTag, oldMembers.get(), entryId);
    LogLine(L"copied m to lpPropValues");

    mapi::Block<SPropValue> oldOneOffs;
    mapi::GetOneProp(&message, oneOffsTag, oldOneOffs.Out());
    LogLine(L"retrieved one off propetry");
    GrownList oneOffs(oneOffsTag, oldOneOffs.get(), entryId);
    LogLine(L"copied o to lpPropValues");
    LogLine(L"copied new to lpPropValues");

    SPropValue properties[] = {members.property, oneOffs.property};
    message.SetProps(2, properties, nullptr);
    LogLine(L"set the prop on m_pMessage");
    message.SaveChanges(KEEP_OPEN_READWRITE);
    LogLine(L"saved the changes on m_pMessage");
}

/// Tells whether a name resolves; the current record isn't touched.
std::wstring COutlookFuncs::AddDistListMember(const ScriptText& name) {
    Operation operation(L"AddDistListMember");
    operation.OptionalParam(L"entryID", name);
    if (!BeginOperation()) {
        return operation.Failed();
    }
    std::vector<BYTE> containerId = mapi::BytesFromHex(kContainerTemplate);
    std::vector<BYTE> newEntryId = mapi::BytesFromHex(kNewEntryTemplate);
    mapi::Pointer<IAddrBook> addressBook;
    mapi::OpenAddressBook(m_psession.Required(), addressBook);
    ULONG objectType = 0;
    mapi::Pointer<IABContainer> container;
    HRESULT status = addressBook->OpenEntry(static_cast<ULONG>(containerId.size()),
                                            reinterpret_cast<LPENTRYID>(containerId.data()), nullptr,
                                            MAPI_MODIFY, &objectType, container.OutAs<IUnknown>());
    if (FAILED(status)) {
        return mapi_HResultToText(status);
    }
    const mapi::AddressList list = mapi::MakeNameList(name.value_or(L""));
    status = addressBook->ResolveName(0, MAPI_UNICODE, nullptr, list.get());
    if (SUCCEEDED(status)) {
        constexpr ULONG createFlags = 4;
        mapi::Pointer<IMAPIProp> entry; // neither filled nor saved
        container->CreateEntry(static_cast<ULONG>(newEntryId.size()),
                               reinterpret_cast<LPENTRYID>(newEntryId.data()), createFlags, entry.Out());
    }
    switch (status) {
    case S_OK:
        return L"All Ok";
    case MAPI_E_NOT_FOUND:
        return L"NotFound";
    case MAPI_E_AMBIGUOUS_RECIP:
        return L"Ambigious Entry";
    default:
        return mapi_HResultToText(status);
    }
}

} // namespace varden
