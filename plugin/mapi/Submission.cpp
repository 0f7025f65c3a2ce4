// Recipients turned into resolved addresses, and messages sent.
#include "session/COutlookFuncs.h"

#include "mapi/Diagnostics.h"
#include "mapi/SenderStamps.h"
#include "mapi/Steps.h"
#include "mapi/Tags.h"
#include "session/Operation.h"

#include <algorithm>
#include <array>

namespace varden {

namespace {

/// What tells the two builders of address lists apart.
struct ListBuilder {
    const wchar_t* name;
    bool firstRowOnly;
    bool logsFailures;
    const wchar_t* noTable; ///< the error text when the recipient table can't be had
};

constexpr ListBuilder kAllRecipients{
    L"mapi_AddrListFromMessage", false, true,
    L"Error Resolving Names in Addrlist - Unable to access recipients table"};
constexpr ListBuilder kOrganizerOnly{L"mapi_AddrListFromMessageOrgOnly", true, false,
                                     L"Error Resolving Names in Addrlist - Unable to acess recipients table"};

struct ResolveFailure {
    HRESULT status;
    const wchar_t* text;
    const wchar_t* logLine;
};

constexpr std::array kResolveFailures{
    ResolveFailure{MAPI_E_NOT_FOUND, L"Error Resolving Names in Addrlist - Recipients not found",
                   L"Error resolving names in Addrlist - Recipients not found"},
    ResolveFailure{MAPI_E_AMBIGUOUS_RECIP, L"Error Resolving Names in Addrlist - Ambiguous recipients.",
                   L"Error resolving names in Addrlist - Ambiguous recipients"},
};
constexpr ResolveFailure kOtherResolveFailure{
    E_FAIL, L"Error Resolving Names in Addrlist - Other Mapi error.",
    L"Error resolving names in Addrlist - Other MAPI error encountered"};

HRESULT FailList(const ListBuilder& builder, HRESULT status, const wchar_t* text, const wchar_t* logLine) {
    FailMapi(status, text);
    if (builder.logsFailures) {
        LogLine(logLine);
    }
    return status;
}

/// The words that MAPI itself has for the object's last failure; empty where it has none.
template <typename Object>
std::wstring ExtendedErrorText(Object& object, HRESULT status) {
    mapi::Block<MAPIERROR> extended;
    object.GetLastError(status, MAPI_UNICODE, extended.Out());
    return extended && extended->lpszError ? reinterpret_cast<LPCWSTR>(extended->lpszError) : std::wstring();
}

/// Asks for every column that the table has, so that all properties of a recipient come along.
void SelectAllColumns(IMAPITable& table) {
    mapi::Block<SPropTagArray> columns;
    if (SUCCEEDED(table.QueryColumns(TBL_ALL_COLUMNS, columns.Out()))) {
        table.SetColumns(columns.get(), 0);
    }
}

HRESULT BuildList(const ListBuilder& builder, IMessage& message, IMAPISession& session,
                  mapi::AddressList& list) {
    const LoggedOperation log(builder.name);
    mapi::Pointer<IMAPITable> table;
    HRESULT status = message.GetRecipientTable(MAPI_UNICODE, table.Out());
    if (FAILED(status)) {
        return FailList(builder, status, builder.noTable,
                        L"Error resolving names in Addrlist - Unable to access recipients table");
    }
    LogLine(L"obtained recipient table");
    mapi::Pointer<IAddrBook> addressBook;
    status = mapi::OpenAddressBook(session, addressBook);
    if (FAILED(status)) {
        return FailList(builder, status, L"Error Resolving Names in Addrlist - no access to address book",
                        L"Error resolving names in Addrlist - No access to address book");
    }
    LogLine(L"obtained address book");
    SelectAllColumns(table.Required());
    ULONG count = 0;
    table->GetRowCount(0, &count);
    if (count == 0) {
        return S_OK;
    }
    LogLine(L"obtained rows");
    table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr);
    LPSRowSet rows = nullptr;
    status = table->QueryRows(builder.firstRowOnly ? 1 : static_cast<LONG>(count), 0, &rows);
    list.reset(reinterpret_cast<LPADRLIST>(rows)); // the two have the same layout
    if (FAILED(status) || !list) {
        return status;
    }
    status = addressBook->ResolveName(0, MAPI_UNICODE, nullptr, list.get());
    if (SUCCEEDED(status)) {
        LogLine(L"resolved names");
        return status;
    }
    ExtendedErrorText(addressBook.Required(), status); // taken off MAPI; the user reads our own text
    const auto row = std::ranges::find(kResolveFailures, status, &ResolveFailure::status);
    const ResolveFailure& failure = row == kResolveFailures.end() ? kOtherResolveFailure : *row;
    FailList(builder, status, failure.text, failure.logLine);
    LogLine(mapi_HResultName(status));
    return status;
}

} // namespace

HRESULT COutlookFuncs::mapi_AddrListFromMessage(IMessage* message, mapi::AddressList& list) {
    return BuildList(kAllRecipients, mapi::Present(message), m_psession.Required(), list);
}

HRESULT COutlookFuncs::mapi_AddrListFromMessageOrgOnly(IMessage* message, mapi::AddressList& list) {
    return BuildList(kOrganizerOnly, mapi::Present(message), m_psession.Required(), list);
}

HRESULT COutlookFuncs::mapi_Send(IMessage* message, IMsgStore* store) {
    const LoggedOperation log(L"mapi_Send");
    mapi::AddressList list;
    HRESULT status = mapi_AddrListFromMessage(message, list);
    if (FAILED(status)) {
        return status;
    }
    if (list) {
        LogLine(L"obtained addr list");
        status = message->ModifyRecipients(MODRECIP_MODIFY, list.get());
        LogLine(L"modified list");
        if (FAILED(status)) {
            const std::wstring text = ExtendedErrorText(*message, status);
            FailMapi(status, text);
            LogLine(L"Error modifying recipients:");
            LogLine(text);
            return status;
        }
        list.reset();
    }
    // Two failures from here on are told by the last error alone: the answer is that of a success.
    mapi::Block<SPropValue> sentItems;
    status = mapi::GetStoreProperty(mapi::Present(store), mapi::tag::kIpmSentmailEntryId, sentItems);
    if (FAILED(status)) {
        FailMapi(status, L"MAPI Send - Unable to access store properties.");
        LogLine(L"Error encountered: Failed to access store properties");
        return S_OK;
    }
    LogLine(L"obtained sent items folder");
    SPropValue target = *sentItems;
    target.ulPropTag = mapi::tag::kSentmailEntryId;
    status = message->SetProps(1, &target, nullptr);
    if (FAILED(status)) {
        FailMapi(status, L"MAPI Send - Failed to set sent items folder.");
        LogLine(L"Error encountered: Failed to get sent items folder");
        return S_OK;
    }
    LogLine(L"Submitting message");
    status = message->SubmitMessage(0);
    if (FAILED(status)) {
        FailMapi(status, L"MAPI Send - Failed to submit message.");
        LogLine(L"Error encountered: Failed to submit message");
        return status;
    }
    LogLine(L"message submitted");
    return status;
}

HRESULT COutlookFuncs::mapi_SetSentOnBehalf(IMessage* message, IMsgStore* store) {
    const LoggedOperation log(L"mapi_SetSentOnBehalf");
    mapi::Pointer<IAddrBook> addressBook;
    HRESULT status = mapi::OpenAddressBook(m_psession.Required(), addressBook);
    if (FAILED(status)) {
        return FailMapi(status, mapi::kNoAddressBookForSender);
    }
    // Since Outlook 14 the store bears its owner's name; before, a property of its own tells it.
    constexpr int firstVersionWithOwnersStores = 14;
    const bool ownersStore = OutlookMajorVersion() >= firstVersionWithOwnersStores;
    mapi::Block<SPropValue> owner;
    status = mapi::GetStoreProperty(mapi::Present(store),
                                    ownersStore ? mapi::tag::kDisplayName : mapi::tag::kMailboxOwnerName,
                                    owner, MAPI_UNICODE);
    if (FAILED(status)) {
        return FailMapi(status, L"MAPI Create - Unable to access store properties.");
    }
    const mapi::AddressList list = mapi::MakeNameList(owner->Value.lpszW);
    status = addressBook->ResolveName(0, MAPI_UNICODE, nullptr, list.get());
    if (FAILED(status)) {
        return FailMapi(status, mapi::kSenderNotResolved);
    }
    for (const SPropValue& value : mapi::ResolvedProperties(list)) {
        if (const mapi::SenderStamp* stamp = mapi::StampFor(value)) {
            mapi::StoreAs(stamp->sender, value, message);
            status = mapi::StoreAs(stamp->represented, value, message);
        }
    }
    return status;
}

} // namespace varden
