// The field vocabulary of a task.
#include "Vocabularies.h"

#include "RecurrenceBlob.h"

#include "frame/ErrorCodes.h"
#include "mapi/PropertyCatalogue.h"
#include "mapi/Steps.h"
#include "mapi/Tags.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

#include <objbase.h>

#include <array>

namespace varden {

namespace {

constexpr std::array kStatus{EnumWord{0, L"Not Started"}, EnumWord{1, L"In Progress"},
                             EnumWord{2, L"Complete"}, EnumWord{3, L"Waiting"}, EnumWord{4, L"Deferred"}};
constexpr EnumWords kStatusWords{kStatus};
constexpr std::array kStatusByLetter{EnumLetter{L'N', 0}, EnumLetter{L'I', 1}, EnumLetter{L'C', 2},
                                     EnumLetter{L'W', 3}, EnumLetter{L'D', 4}};
constexpr EnumChoice kStatusLetters{kStatusByLetter, {}};

std::wstring GetBinaryRecurrence(const FieldContext& context, const FieldRow&) {
    return ReadRecurrenceBlob(context, L"Recurrence");
}

/// In small letters, unlike every other truth.
std::wstring GetIsRecurring(const FieldContext& context, const FieldRow&) {
    return context.item.GetBool(L"IsRecurring") ? L"true" : L"false";
}

std::wstring GetDeadOccurrence(const FieldContext& context, const FieldRow&) {
    const auto tag = CatalogueTag(L"TaskDeadOccur", context);
    mapi::PropertyBlock block;
    if (!tag || FAILED(context.engine.mapi_GetOneProp(*tag, block, context.message))) {
        return {};
    }
    return block.FirstUnit() != 0 ? L"True" : L"False";
}

/// Saves the task at once.
bool SetComplete(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    context.item.PutProperty(L"Complete", outlook::BoolValue(data.starts_with(L'T')));
    context.item.Call(L"Save");
    return true;
}

/// A new global id for an assigned task.
HRESULT StampGlobalId(IMessage& message) {
    ULONG tag = 0;
    if (const HRESULT status = mapi_FindPropTag(L"pidLidTaskGlobalID", tag, &message); FAILED(status)) {
        return status;
    }
    GUID id;
    if (const HRESULT status = CoCreateGuid(&id); FAILED(status)) {
        return status;
    }
    SPropValue property{};
    property.ulPropTag = CHANGE_PROP_TYPE(tag, PT_BINARY);
    property.Value.bin.cb = sizeof id;
    property.Value.bin.lpb = reinterpret_cast<LPBYTE>(&id);
    if (const HRESULT status = mapi::SetOneProp(&message, &property); FAILED(status)) {
        return status;
    }
    return message.SaveChanges(KEEP_OPEN_READWRITE);
}

/// Puts the person on the task's message as a resolved recipient.
HRESULT AddAssignee(const FieldContext& context, const std::wstring& name) {
    IMAPISession& session = context.engine.Session().Required();
    mapi::Pointer<IAddrBook> addressBook;
    HRESULT status = mapi::OpenAddressBook(session, addressBook);
    if (FAILED(status)) {
        return status;
    }
    const mapi::AddressList list = mapi::MakeRecipientList(name, MAPI_TO);
    status = mapi::OpenAddressBook(session, addressBook); // anew for the look-up
    if (SUCCEEDED(status)) {
        status = addressBook->ResolveName(0, MAPI_UNICODE, nullptr, list.get());
    }
    if (SUCCEEDED(status)) {
        status = mapi::Present(context.message).ModifyRecipients(MODRECIP_ADD, list.get());
    }
    return FAILED(status) ? status : context.message->SaveChanges(KEEP_OPEN_READWRITE);
}

/// Makes the task an assigned one. Whatever fails behind the first step, the task stays saved as assigned.
bool SetAssign(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    context.item.Call(L"Assign");
    context.item.Call(L"Save");
    HRESULT status = AddAssignee(context, data);
    if (SUCCEEDED(status)) {
        status = StampGlobalId(*context.message);
    }
    if (FAILED(status)) {
        FailMapi(status, L"");
        return false;
    }
    return true;
}

/// Adds nobody: the data isn't used.
bool SetTo(const FieldContext& context, const FieldRow&, const std::wstring&) {
    const outlook::Reference assigned(outlook::kTaskItem, context.item.Call(L"Assign"));
    assigned.GetProperty(L"Recipients");
    return true;
}

constexpr bool kReadInAnyCase = true;

constexpr std::array kTaskFields{
    FieldRow{L"% Complete", get::integer(L"PercentComplete"), set::number(L"PercentComplete")},
    FieldRow{L"Actual Work", get::integer(L"ActualWork"), set::number(L"ActualWork")},
    FieldRow{L"Assign", get::unknownName, set::special(SetAssign)},
    FieldRow{L"Billing Information", get::text(L"BillingInformation"), set::text(L"BillingInformation")},
    FieldRow{L"Binary Recurrence", get::special(GetBinaryRecurrence), set::unknownName, false,
             kReadInAnyCase},
    FieldRow{L"BinaryRecurrence", get::special(GetBinaryRecurrence), set::unknownName, false, kReadInAnyCase},
    FieldRow{L"Body", get::mapiText(mapi::tag::kBody), set::text(L"Body")},
    FieldRow{L"Categories", get::text(L"Categories"), set::text(L"Categories")},
    FieldRow{L"Company", get::text(L"Companies"), set::text(L"Companies")},
    FieldRow{L"Complete", get::boolean(L"Complete"), set::special(SetComplete)},
    FieldRow{L"Contacts", get::named(), set::special(SetLinkedContacts)},
    FieldRow{L"Created", get::date(L"CreationTime"), set::readOnly},
    FieldRow{L"Date Completed", get::date(L"DateCompleted"), set::date(L"DateCompleted")},
    FieldRow{L"Due Date", get::date(L"DueDate"), set::date(L"DueDate")},
    FieldRow{L"Form Name", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"ID", get::text(L"EntryID"), set::readOnly},
    FieldRow{L"Importance", get::words(L"Importance", kImportanceWords),
             set::choice(L"Importance", kImportanceLetters)},
    FieldRow{L"Is Recurring", get::special(GetIsRecurring), set::unknownName},
    FieldRow{L"Message Class", get::text(L"MessageClass"), set::text(L"MessageClass")},
    FieldRow{L"Mileage", get::text(L"Mileage"), set::text(L"Mileage")},
    FieldRow{L"Modify", get::date(L"LastModificationTime"), set::readOnly},
    FieldRow{L"Owner", get::named(), set::text(L"Owner")},
    FieldRow{L"Reminder", get::boolean(L"ReminderSet"), set::flagT(L"ReminderSet")},
    FieldRow{L"Reminder Override Default", get::boolean(L"ReminderOverrideDefault"),
             set::flagT(L"ReminderOverrideDefault")},
    FieldRow{L"Reminder Sound", get::boolean(L"ReminderPlaySound"), set::flagT(L"ReminderPlaySound")},
    FieldRow{L"Reminder Sound File", get::text(L"ReminderSoundFile"), set::text(L"ReminderSoundFile")},
    FieldRow{L"Reminder Time", get::date(L"ReminderTime"), set::date(L"ReminderTime")},
    FieldRow{L"Role", get::text(L"Role"), set::text(L"Role")},
    FieldRow{L"Schedule + Priority", get::text(L"SchedulePlusPriority"), set::text(L"SchedulePlusPriority")},
    FieldRow{L"Sensitivity", get::words(L"Sensitivity", kSensitivityWords),
             set::choice(L"Sensitivity", kSensitivityLetters)},
    FieldRow{L"Size", get::integer(L"Size"), set::readOnly},
    FieldRow{L"Start Date", get::date(L"StartDate"), set::date(L"StartDate")},
    FieldRow{L"Status", get::words(L"Status", kStatusWords), set::choice(L"Status", kStatusLetters)},
    FieldRow{L"Subject", get::text(L"Subject"), set::text(L"Subject")},
    FieldRow{L"task dead occur", get::special(GetDeadOccurrence), set::unknownName, false, kReadInAnyCase},
    FieldRow{L"Team Task", get::boolean(L"TeamTask"), set::flagT(L"TeamTask")},
    FieldRow{L"To", get::unknownName, set::special(SetTo)},
    FieldRow{L"Total Work", get::integer(L"TotalWork"), set::number(L"TotalWork")},
};

constexpr Vocabulary kTask{
    .getterName = L"GetTaskFieldData",
    .fields = kTaskFields,
    .usesItemsMessage = true,
};

} // namespace

const Vocabulary& TaskVocabulary() {
    return kTask;
}

} // namespace varden
