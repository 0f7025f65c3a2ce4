// Meeting requests, updates and cancellations: the organizer's side.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "mapi/InterfaceIds.h"
#include "mapi/MeetingProperties.h"
#include "mapi/NamedTags.h"
#include "mapi/PropertyCatalogue.h"
#include "mapi/PropertySets.h"
#include "mapi/Steps.h"
#include "mapi/Tags.h"
#include "session/Operation.h"

#include <algorithm>
#include <array>
#include <limits>

namespace varden {

namespace {

namespace tag = mapi::tag;
using mapi::NumberedName;

constexpr long kStatusReceived = 3;
constexpr long kStatusCanceled = 5;
constexpr long kStatusReceivedAndCanceled = 7;
constexpr long kMeetingIcon = 1026;

/// The long of a property; none where it can't be read.
std::optional<long> LongOf(IMAPIProp& object, ULONG longTag) {
    mapi::Block<SPropValue> value;
    if (FAILED(mapi::GetOneProp(&object, longTag, value.Out())) || PROP_TYPE(value->ulPropTag) != PT_LONG) {
        return std::nullopt;
    }
    return value->Value.l;
}

std::optional<std::wstring> TextOf(IMAPIProp& object, ULONG textTag) {
    mapi::Block<SPropValue> value;
    if (FAILED(mapi::GetOneProp(&object, textTag, value.Out()))) {
        return std::nullopt;
    }
    return value->Value.lpszW ? std::wstring(value->Value.lpszW) : std::wstring();
}

/// The number before; the range of 32 bits has no end.
long Below(long number) {
    return static_cast<long>(static_cast<std::uint32_t>(number) - 1);
}

/// A folder's entry id, as the store tells it.
HRESULT GetFolderId(IMsgStore& store, ULONG folderTag, mapi::Block<SPropValue>& entryId) {
    const HRESULT status = mapi::GetStoreProperty(store, folderTag, entryId);
    return FAILED(status) ? FailMapi(status, L"Unable to access store properties") : status;
}

/// The appointment remembers that it went out: everybody is invited, the organizer has answered, its icon is
/// a meeting's.
HRESULT MarkInvited(IMessage& appointment) {
    std::array<SPropValue, 3> properties{};
    properties[0].ulPropTag = mapi_TypedTag(L"FInvited", PT_BOOLEAN, appointment);
    properties[0].Value.b = TRUE;
    properties[1].ulPropTag = mapi_TypedTag(L"Response Status", PT_LONG, appointment);
    properties[1].Value.l = 1;
    properties[2].ulPropTag = tag::kIconIndex;
    properties[2].Value.l = kMeetingIcon;
    appointment.SetProps(static_cast<ULONG>(properties.size()), properties.data(), nullptr);
    const std::array attached{NumberedName{&mapi::propertyset::kMeeting, 38}};
    if (const auto tags = mapi::FindTags(attached, appointment); !tags.empty()) {
        mapi::SetLong(appointment, CHANGE_PROP_TYPE(tags.front(), PT_LONG), 1);
    }
    return appointment.SaveChanges(KEEP_OPEN_READWRITE);
}

/// What a message says of itself: its class, subject and the prefix of the subject.
struct Heading {
    std::wstring messageClass = L"IPM.Schedule.Meeting.Request";
    std::wstring subject;
    std::wstring prefix;
};

Heading HeadingFor(long status, bool isUpdate, const std::optional<std::wstring>& topic) {
    Heading heading;
    if (!topic) {
        return heading;
    }
    if (status == kStatusCanceled || status == kStatusReceivedAndCanceled) {
        return {L"IPM.Schedule.Meeting.Canceled", L"Canceled: " + *topic, L"Canceled:"};
    }
    heading.subject = isUpdate ? L"Updated: " + *topic : *topic;
    heading.prefix = isUpdate ? L"Updated:" : L"";
    return heading;
}

/// The number that the meeting's status begins with. Its type isn't asked for: a meeting that was prepared
/// for sending has it labelled as a time.
long MeetingStatusOf(IMessage& message) {
    ULONG statusTag = 0;
    mapi::Block<SPropValue> status;
    const bool isRead = mapi_PropTagFromFieldName(L"Meeting Status", statusTag, &message) &&
                        SUCCEEDED(mapi::GetOneProp(&message, statusTag, status.Out()));
    return isRead ? status->Value.l : kStatusReceived;
}

/// A property of the appointment set that a message goes out with.
struct FinalProperty {
    LONG id;
    ULONG type;
    long value;
};

/// The meeting's final properties; a failure is told to the log only.
void SetFinalProperties(IMessage& message, long status) {
    const std::array rows{FinalProperty{33303, PT_LONG, status + 2}, FinalProperty{33312, PT_BOOLEAN, FALSE},
                          FinalProperty{33304, PT_LONG, 5}, FinalProperty{33285, PT_LONG, 1},
                          FinalProperty{33316, PT_LONG, 0}};
    std::array<NumberedName, rows.size()> names;
    std::ranges::transform(rows, names.begin(), [](const FinalProperty& row) {
        return NumberedName{&mapi::propertyset::kAppointment, row.id};
    });
    const std::vector<ULONG> tags = mapi::FindTags(names, message);
    if (tags.size() != rows.size()) {
        return;
    }
    std::array<SPropValue, rows.size()> properties{};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        properties[i].ulPropTag = CHANGE_PROP_TYPE(tags[i], rows[i].type);
        properties[i].Value.l = rows[i].value;
    }
    if (const HRESULT written =
            message.SetProps(static_cast<ULONG>(properties.size()), properties.data(), nullptr);
        FAILED(written)) {
        LogLine(mapi_HResultName(written));
    }
}

} // namespace

HRESULT COutlookFuncs::mapi_PrepareMeetingProps(IMessage* message, IMsgStore*) {
    const LoggedOperation log(L"mapi_PrepareMeetingProps");
    mapi::PrepareMeetingProperties(mapi::Present(message));
    return S_OK;
}

HRESULT COutlookFuncs::mapi_OpenFolderFromStoreProp(mapi::Pointer<IMAPIFolder>& folder, ULONG folderTag,
                                                    IMsgStore* store) {
    const LoggedOperation log(L"mapi_OpenFolderFromStoreProp");
    mapi::Block<SPropValue> entryId;
    HRESULT status = GetFolderId(mapi::Present(store), folderTag, entryId);
    if (FAILED(status)) {
        return status;
    }
    ULONG objectType = 0;
    status = store->OpenEntry(entryId->Value.bin.cb, reinterpret_cast<LPENTRYID>(entryId->Value.bin.lpb),
                              nullptr, MAPI_BEST_ACCESS, &objectType, folder.OutAs<IUnknown>());
    if (FAILED(status)) {
        Fail(error::kFolderNotFound, status, L"");
    }
    return status;
}

HRESULT COutlookFuncs::mapi_NextOwnerApptId(long& id, IMAPIFolder* folder) {
    const LoggedOperation log(L"mapi_NextOwnerApptId");
    mapi::Pointer<IMAPITable> table;
    HRESULT status = mapi::Present(folder).GetContentsTable(0, table.Out());
    if (FAILED(status)) {
        return status;
    }
    SizedSPropTagArray(1, columns) = {1, {tag::kOwnerAppointmentId}};
    SRestriction exists{};
    exists.rt = RES_EXIST;
    exists.res.resExist.ulPropTag = tag::kOwnerAppointmentId;
    SizedSSortOrderSet(1, order) = {1, 0, 0, {{tag::kOwnerAppointmentId, TABLE_SORT_DESCEND}}};
    if (FAILED(status = table->SetColumns(reinterpret_cast<LPSPropTagArray>(&columns), 0)) ||
        FAILED(status = table->Restrict(&exists, 0)) ||
        FAILED(status = table->SortTable(reinterpret_cast<LPSSortOrderSet>(&order), 0))) {
        return status;
    }
    const auto next = [&]() -> std::optional<long> {
        mapi::RowSet rows;
        if (FAILED(status = table->QueryRows(1, 0, rows.Out())) || rows.Rows().empty()) {
            return std::nullopt;
        }
        return rows.Rows().front().lpProps[0].Value.l;
    };
    std::optional<long> previous = next();
    if (!previous) {
        id = 1;
        return status;
    }
    if (*previous >= 0 && *previous < std::numeric_limits<long>::max()) {
        id = *previous + 1;
        return status;
    }
    for (std::optional<long> row = next(); row; row = next()) {
        if (std::int64_t{*previous} > std::int64_t{*row} + 1) {
            id = Below(*row);
            return status;
        }
        previous = row;
    }
    id = Below(*previous);
    return status;
}

HRESULT COutlookFuncs::mapi_SendMeeting(IMessage* appointment, IMsgStore* store) {
    const LoggedOperation log(L"mapi_SendMeeting");
    IMessage& meeting = mapi::Present(appointment);
    // An appointment with an owner's number has gone out before.
    const bool isUpdate = LongOf(meeting, tag::kOwnerAppointmentId).value_or(0) >= 1;
    if (!isUpdate) {
        if (const HRESULT status = NumberMeeting(meeting); FAILED(status)) {
            return status;
        }
    }
    NameTopic(meeting);
    mapi::Pointer<IMessage> message;
    if (const HRESULT status = CreateInOutbox(message, store); FAILED(status)) {
        return status;
    }
    const auto excluded =
        mapi::ExcludedFromRequest(isUpdate ? mapi::SendKind::Update : mapi::SendKind::FirstRequest, meeting);
    const HRESULT copied = meeting.CopyTo(0, nullptr, excluded.get(), 0, nullptr, &mapi::kIidMessage,
                                          message.Get(), MAPI_NOREPLACE, nullptr);
    LogLine(mapi_HResultName(copied));
    if (const HRESULT status = MarkInvited(meeting); FAILED(status)) {
        return status;
    }
    if (const HRESULT status = PointAtSentItems(message.Required(), store); FAILED(status)) {
        return status;
    }
    mapi::AddressList list;
    if (const HRESULT status = mapi_AddrListFromMessage(&meeting, list); FAILED(status)) {
        return status;
    }
    if (list) {
        if (const HRESULT status = message->ModifyRecipients(MODRECIP_ADD, list.get()); FAILED(status)) {
            return FailMapi(status, L"Failed to modify recipients.");
        }
    }
    return mapi_FinishMeetingMessage(message.Required(), isUpdate);
}

/// The meeting's conversation bears its subject, or no text where it has none.
void COutlookFuncs::NameTopic(IMessage& meeting) {
    mapi::PropertyBlock subject;
    mapi_GetOneProp(tag::kSubject, subject, &meeting);
    const std::wstring text = subject.AsText();
    SPropValue topic{};
    topic.ulPropTag = tag::kConversationTopic;
    topic.Value.lpszW = const_cast<LPWSTR>(text.c_str());
    meeting.SetProps(1, &topic, nullptr);
}

/// Gives the meeting its owner's number and saves it with it.
HRESULT COutlookFuncs::NumberMeeting(IMessage& meeting) {
    long id = 0;
    const outlook::Folder calendar = m_objNamespace.DefaultFolder(outlook::DefaultFolder::Calendar);
    mapi::Pointer<IMAPIFolder> folder;
    HRESULT status = folder.Query(outlook::UnknownOf(calendar.MapiObject()), mapi::kIidFolder);
    if (SUCCEEDED(status)) {
        status = mapi_NextOwnerApptId(id, folder.Get());
    }
    if (FAILED(status)) {
        return status;
    }
    SPropValue property{};
    property.ulPropTag = tag::kOwnerAppointmentId;
    property.Value.l = id;
    status = meeting.SetProps(1, &property, nullptr);
    return FAILED(status) ? status : meeting.SaveChanges(KEEP_OPEN_READWRITE);
}

HRESULT COutlookFuncs::CreateInOutbox(mapi::Pointer<IMessage>& message, IMsgStore* store) {
    mapi::Pointer<IMAPIFolder> outbox;
    if (const HRESULT status = mapi_OpenFolderFromStoreProp(outbox, tag::kIpmOutboxEntryId, store);
        FAILED(status)) {
        return status;
    }
    const HRESULT status = outbox->CreateMessage(nullptr, 0, message.Out());
    return FAILED(status) ? FailMapi(status, L"Unable to create message") : status;
}

/// Tells the message where its sent copy belongs.
HRESULT COutlookFuncs::PointAtSentItems(IMessage& message, IMsgStore* store) {
    mapi::Block<SPropValue> sentItems;
    if (const HRESULT status = GetFolderId(mapi::Present(store), tag::kIpmSentmailEntryId, sentItems);
        FAILED(status)) {
        return status;
    }
    SPropValue target = *sentItems;
    target.ulPropTag = tag::kSentmailEntryId;
    return message.SetProps(1, &target, nullptr);
}

HRESULT COutlookFuncs::mapi_FinishMeetingMessage(IMessage& message, bool isUpdate) {
    const LoggedOperation log(L"mapi_FinishMeetingMessage");
    const long status = MeetingStatusOf(message);
    const Heading heading = HeadingFor(status, isUpdate, TextOf(message, tag::kConversationTopic));
    if (const HRESULT written = WriteHeading(message, heading.prefix, heading.subject, heading.messageClass);
        FAILED(written)) {
        return written;
    }
    SetFinalProperties(message, status);
    const HRESULT submitted = message.SubmitMessage(0);
    return FAILED(submitted) ? FailMapi(submitted, L"Failed to submit message") : submitted;
}

/// An empty prefix and an empty subject aren't written.
HRESULT COutlookFuncs::WriteHeading(IMessage& message, const std::wstring& prefix,
                                    const std::wstring& subject, const std::wstring& messageClass) {
    if (!prefix.empty()) {
        if (const HRESULT status = mapi::SetText(message, tag::kSubjectPrefix, prefix); FAILED(status)) {
            return FailMapi(status, L"Failed to set prefix message.");
        }
    }
    if (!subject.empty()) {
        if (const HRESULT status = mapi::SetText(message, tag::kSubject, subject); FAILED(status)) {
            return FailMapi(status, L"Failed to set subject.");
        }
    }
    const HRESULT status = mapi::SetText(message, tag::kMessageClass, messageClass);
    return FAILED(status) ? FailMapi(status, L"Failed to set message class.") : status;
}

} // namespace varden
