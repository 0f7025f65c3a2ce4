// Changing a message's recipients.
#include "standin/mapi/Recipients.h"

#include "standin/mapi/TableSources.h"
#include "standin/mapi/Values.h"

#include <algorithm>

namespace standin::mapi {
namespace {

using mailbox::OpenMessage;
using mailbox::PropertyBag;
using mailbox::PropertyType;
using mailbox::TypeOf;
using mailbox::Value;

using Rows = std::vector<PropertyBag>;

HRESULT TakeRows(const ADRLIST& list, Rows& rows) {
    for (ULONG i = 0; i < list.cEntries; ++i)
        if (const HRESULT status = TakeAddressEntry(list.aEntries[i], rows.emplace_back()); FAILED(status))
            return status;
    return S_OK;
}

/// What every row must say: who it is, and how he gets the message.
bool IsComplete(const PropertyBag& row) {
    return row.Get<PR_RECIPIENT_TYPE>() && row.Get<PR_DISPLAY_NAME_W>();
}

bool HasRow(const OpenMessage& message, std::int32_t rowId) {
    return std::ranges::any_of(message.Recipients(),
                               [&](const PropertyBag& row) { return row.GetOr<PR_ROWID>(-1) == rowId; });
}

HRESULT Add(OpenMessage& message, Rows& rows) {
    for (PropertyBag& row : rows)
        if (const HRESULT status = message.AddRecipient(std::move(row)); FAILED(status))
            return status;
    return S_OK;
}

HRESULT ReplaceAll(OpenMessage& message, Rows& rows) {
    const HRESULT status = message.RemoveAllRecipients();
    return FAILED(status) ? status : Add(message, rows);
}

HRESULT Modify(OpenMessage& message, Rows& rows) {
    for (PropertyBag& row : rows) {
        const std::int32_t rowId = *row.Get<PR_ROWID>();
        const HRESULT status =
            HasRow(message, rowId)
                ? message.ReplaceRecipient(static_cast<std::uint32_t>(rowId), std::move(row))
                : message.AddRecipient(std::move(row));
        if (FAILED(status))
            return status;
    }
    return S_OK;
}

HRESULT Remove(OpenMessage& message, const Rows& rows) {
    for (const PropertyBag& row : rows)
        if (!HasRow(message, *row.Get<PR_ROWID>()))
            return MAPI_E_NOT_FOUND;
    for (const PropertyBag& row : rows)
        if (const HRESULT status = message.RemoveRecipient(static_cast<std::uint32_t>(*row.Get<PR_ROWID>()));
            FAILED(status))
            return status;
    return S_OK;
}

} // namespace

HRESULT TakeAddressEntry(const ADRENTRY& entry, PropertyBag& row) {
    if (entry.cValues > 0 && !entry.rgPropVals)
        return MAPI_E_INVALID_PARAMETER;
    for (ULONG i = 0; i < entry.cValues; ++i) {
        const SPropValue& property = entry.rgPropVals[i];
        const PropertyType type = TypeOf(property.ulPropTag);
        if (type == PT_ERROR || type == PT_NULL)
            continue;
        if (type == PT_OBJECT)
            return MAPI_E_INVALID_TYPE;
        Value value;
        if (const HRESULT status = TakeValue(property, value); FAILED(status))
            return status;
        if (auto wide = mailbox::ConvertValue(value, TypeOf(WithTextWidth(type, true)), CP_ACP))
            value = std::move(*wide);
        row.Put(property.ulPropTag, std::move(value));
    }
    return S_OK;
}

HRESULT ChangeRecipients(OpenMessage& message, ULONG flags, const ADRLIST* changes) {
    if (!changes)
        return MAPI_E_INVALID_PARAMETER;
    Rows rows;
    if (const HRESULT status = TakeRows(*changes, rows); FAILED(status))
        return status;
    const bool needsRowIds = flags == MODRECIP_MODIFY || flags == MODRECIP_REMOVE;
    if (needsRowIds && !std::ranges::all_of(rows, [](const PropertyBag& row) { return row.Get<PR_ROWID>(); }))
        return MAPI_E_INVALID_PARAMETER;
    if (flags != MODRECIP_REMOVE && !std::ranges::all_of(rows, IsComplete))
        return MAPI_E_INVALID_PARAMETER;
    NoteMessagePartReplaced();
    switch (flags) {
    case 0:
        return ReplaceAll(message, rows);
    case MODRECIP_ADD:
        return Add(message, rows);
    case MODRECIP_MODIFY:
        return Modify(message, rows);
    case MODRECIP_REMOVE:
        return Remove(message, rows);
    default:
        return MAPI_E_UNKNOWN_FLAGS;
    }
}

} // namespace standin::mapi
