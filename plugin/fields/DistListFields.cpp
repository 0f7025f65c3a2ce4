// The field vocabulary of a distribution list.
#include "Vocabularies.h"

#include "frame/ErrorCodes.h"
#include "mapi/PropertyCatalogue.h"
#include "mapi/Tags.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

/// A letter outside these is answered as an unknown name, not as a refused value.
bool SetImportance(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    const auto importance = Choose(data, kImportanceLetters);
    if (!importance) {
        return Refuse(error::kFieldName);
    }
    context.item.PutProperty(L"Importance", outlook::LongValue(*importance));
    return true;
}

/// The parent is fetched and dropped.
std::wstring GetNothing(const FieldContext& context, const FieldRow&) {
    context.item.GetProperty(L"Parent");
    return {};
}

/// Name, address and type of a one-off entry, or nothing when it can't be opened or read.
std::optional<std::wstring> DescribeEntry(IMAPISession& session, const SBinary& entryId) {
    ULONG objectType = 0;
    mapi::Pointer<IMAPIProp> entry;
    if (FAILED(session.OpenEntry(entryId.cb, reinterpret_cast<LPENTRYID>(entryId.lpb), nullptr,
                                 MAPI_BEST_ACCESS, &objectType, entry.OutAs<IUnknown>())) ||
        !entry) {
        return std::nullopt;
    }
    SizedSPropTagArray(3, tags) = {
        3, {mapi::tag::kDisplayName, mapi::tag::kEmailAddress, mapi::tag::kAddressType}};
    ULONG count = 0;
    mapi::Block<SPropValue> values;
    if (entry->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), MAPI_UNICODE, &count, values.Out()) !=
        S_OK) {
        return std::nullopt;
    }
    const SPropValue* columns = values.get();
    return FormatText(L"%ls,%ls,%ls", columns[0].Value.lpszW, columns[1].Value.lpszW, columns[2].Value.lpszW);
}

/// A row for each member: name, address and type with commas between, a carriage return behind each but the
/// last.
std::wstring GetOneOffMembers(const FieldContext& context, const FieldRow&) {
    if (context.item.GetLong(L"MemberCount") == 0) {
        return {};
    }
    IMessage& message = mapi::Present(context.message);
    ULONG tag = 0;
    mapi::Block<SPropValue> members;
    HRESULT status = mapi_FindPropTag(L"OneOffMembers", tag, &message);
    if (SUCCEEDED(status)) {
        status = mapi::GetOneProp(&message, CHANGE_PROP_TYPE(tag, PT_MV_BINARY), members.Out());
    }
    if (FAILED(status)) {
        return Fail(error::kMapi, status, L"");
    }
    std::wstring rows;
    const auto& list = members->Value.MVbin;
    for (const SBinary& entryId : std::span(list.lpbin, list.lpbin ? list.cValues : 0)) {
        if (const auto row = DescribeEntry(context.engine.Session().Required(), entryId)) {
            rows += rows.empty() ? *row : L'\r' + *row;
        }
    }
    return rows;
}

constexpr std::array kDistListFields{
    FieldRow{L"Billing Information", get::text(L"BillingInformation"), set::text(L"BillingInformation")},
    FieldRow{L"Body", get::mapiText(mapi::tag::kBody), set::text(L"Body")},
    FieldRow{L"Categories", get::text(L"Categories"), set::text(L"Categories")},
    FieldRow{L"Companies", get::text(L"Companies"), set::text(L"Companies")},
    FieldRow{L"Conversation Index", get::text(L"ConversationIndex"), set::readOnly},
    FieldRow{L"Conversation Topic", get::text(L"ConversationTopic"), set::readOnly},
    FieldRow{L"DL Name", get::text(L"DLName"), set::text(L"DLName")},
    FieldRow{L"Entry ID", get::text(L"EntryID"), set::unknownName},
    FieldRow{L"ID", get::text(L"EntryID"), set::readOnly},
    FieldRow{L"Importance", get::words(L"Importance", kImportanceWords), set::special(SetImportance)},
    FieldRow{L"In Folder", get::special(GetNothing), set::readOnly},
    FieldRow{L"Marked For Download", get::integer(L"MarkForDownload"), set::number(L"MarkForDownload")},
    FieldRow{L"Member Count", get::integer(L"MemberCount"), set::refused(error::kReadOnly)},
    FieldRow{L"Message Class", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"Mileage", get::text(L"Mileage"), set::text(L"Mileage")},
    FieldRow{L"One Off Members", get::special(GetOneOffMembers), set::unknownName},
    FieldRow{L"Parent", get::special(GetNothing), set::unknownName},
    FieldRow{L"Sensitivity", get::integer(L"Sensitivity"), set::number(L"Sensitivity")},
    FieldRow{L"Size", get::integer(L"Size"), set::readOnly},
    FieldRow{L"Subject", get::text(L"Subject"), set::text(L"Subject")},
};

constexpr Vocabulary kDistList{
    .getterName = L"GetDistListFieldData", .fields = kDistListFields, .cutsLineFeeds = true};

} // namespace

const Vocabulary& DistListVocabulary() {
    return kDistList;
}

} // namespace varden
