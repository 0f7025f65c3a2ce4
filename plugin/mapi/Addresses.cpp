// The internet addresses of a message's sender and recipients.
#include "session/COutlookFuncs.h"

#include "frame/PlugInLog.h"
#include "mapi/Steps.h"
#include "mapi/Tags.h"
#include "session/Operation.h"

#include <algorithm>
#include <optional>

namespace varden {

namespace {

struct RecipientList {
    std::wstring_view fieldName;
    long type;           ///< PR_RECIPIENT_TYPE
    bool needsAddresses; ///< a recipient without an address is a failure
};

constexpr std::array kRecipientLists{
    RecipientList{L"To", MAPI_TO, false},
    RecipientList{L"Cc", MAPI_CC, true},
    RecipientList{L"Bcc", MAPI_BCC, true},
};

/// The columns of the walk; the last three are where an address may stand, best first.
enum Column : std::size_t { kTypeColumn, kSmtpColumn, kOrganizationColumn, kEmailColumn, kColumnCount };

constexpr ULONG kFirstBatch = 2;

/// A recipient of a list that must have addresses has none.
struct NoAddress : std::exception {};

std::optional<std::wstring> AddressOf(const SRow& row) {
    for (std::size_t column = kSmtpColumn; column < std::min<std::size_t>(row.cValues, kColumnCount);
         ++column) {
        const SPropValue& value = row.lpProps[column];
        if (PROP_TYPE(value.ulPropTag) == PT_UNICODE && value.Value.lpszW) {
            return value.Value.lpszW;
        }
        if (PROP_TYPE(value.ulPropTag) == PT_STRING8 && value.Value.lpszA) {
            return Widen(value.Value.lpszA);
        }
    }
    return std::nullopt;
}

bool IsOfType(const SRow& row, long type) {
    return row.cValues > kTypeColumn && row.lpProps[kTypeColumn].ulPropTag == mapi::tag::kRecipientType &&
           row.lpProps[kTypeColumn].Value.l == type;
}

void AppendAddresses(const mapi::RowSet& rows, const RecipientList& list, std::wstring& addresses) {
    for (const SRow& row : rows.Rows()) {
        if (!IsOfType(row, list.type)) {
            continue;
        }
        const auto address = AddressOf(row);
        if (!address && list.needsAddresses) {
            throw NoAddress();
        }
        if (address) {
            addresses += addresses.empty() ? *address : L", " + *address;
        }
    }
}

} // namespace

HRESULT COutlookFuncs::mapi_GetSenderEMailAddress(IMessage* message, std::wstring& text) {
    const LoggedOperation log(L"mapi_GetSenderEMailAddress");
    const auto fail = [&](HRESULT failure) {
        LogLine(L"Returning %ls", text.c_str());
        return failure;
    };
    mapi::Pointer<IAddrBook> addressBook;
    HRESULT status = mapi::OpenAddressBook(m_psession.Required(), addressBook);
    if (FAILED(status)) {
        return fail(status);
    }
    mapi::Block<SPropValue> entryId;
    status = mapi::GetOneProp(message, mapi::tag::kSenderEntryId, entryId.Out());
    if (FAILED(status)) {
        return fail(status);
    }
    ULONG objectType = 0;
    mapi::Pointer<IMAPIProp> entry;
    status =
        addressBook->OpenEntry(entryId->Value.bin.cb, reinterpret_cast<LPENTRYID>(entryId->Value.bin.lpb),
                               nullptr, MAPI_BEST_ACCESS, &objectType, entry.OutAs<IUnknown>());
    if (FAILED(status)) {
        return fail(status);
    }
    mapi::Block<SPropValue> address;
    status = mapi::GetOneProp(&entry.Required(), mapi::tag::kSmtpAddress, address.Out());
    if (FAILED(status)) {
        status = mapi::GetOneProp(entry.Get(), mapi::tag::kEmailAddress, address.Out());
    }
    if (FAILED(status)) {
        return fail(status);
    }
    if (address->Value.lpszW) {
        text = address->Value.lpszW;
    }
    return status;
}

bool COutlookFuncs::mapi_GetSMTPAddresses(const std::wstring& fieldName, std::wstring& fieldData,
                                          IMessage* message) {
    const LoggedOperation log(L"mapi_GetSMTPAddresses");
    log.Param(L"strFieldName", fieldName);
    log.Param(L"strFieldData", fieldData);
    if (!message) {
        fieldData = L"!!ERROR!! No current message";
        LogLine(L"Returning %ls", fieldData.c_str());
        return false;
    }
    const auto fail = [&](HRESULT status, const wchar_t* reason) {
        FailMapi(status, reason);
        LogLine(L"Returning %ls", fieldData.c_str());
        return false;
    };
    fieldData.clear();
    mapi::Pointer<IMAPITable> table;
    if (const HRESULT status = message->GetRecipientTable(MAPI_UNICODE, table.Out()); FAILED(status)) {
        return fail(status, L"Unable to get recipients table");
    }
    SizedSPropTagArray(kColumnCount,
                       columns) = {kColumnCount,
                                   {mapi::tag::kRecipientType, mapi::tag::kSmtpAddress,
                                    mapi::tag::kOrganizationEmailAddress, mapi::tag::kEmailAddress}};
    if (const HRESULT status = table->SetColumns(reinterpret_cast<LPSPropTagArray>(&columns), 0);
        FAILED(status)) {
        return fail(status, L"Unable to set recipients columns");
    }
    ULONG count = 0;
    if (const HRESULT status = table->GetRowCount(0, &count); status != S_OK) {
        return fail(status, L"Unable to get recipient count");
    }
    if (count == 0) {
        return true;
    }
    if (const HRESULT status = table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr); FAILED(status)) {
        return fail(status, L"Unable to seek row");
    }
    const auto list = std::ranges::find(kRecipientLists, fieldName, &RecipientList::fieldName);
    const ULONG first = std::min(count, kFirstBatch);
    for (ULONG fetched = 0; fetched < count; fetched = fetched == 0 ? first : count) {
        mapi::RowSet rows;
        const ULONG wanted = fetched == 0 ? first : count - fetched;
        if (const HRESULT status = table->QueryRows(static_cast<LONG>(wanted), 0, rows.Out());
            FAILED(status)) {
            return fail(status, L"Unable to Query  row");
        }
        try {
            if (list != kRecipientLists.end()) {
                AppendAddresses(rows, *list, fieldData);
            }
        } catch (const std::exception&) {
            return fail(S_OK, L"Invalid SMTP address in record");
        }
    }
    return true;
}

} // namespace varden
