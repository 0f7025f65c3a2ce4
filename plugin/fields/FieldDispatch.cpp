// Reading, writing and verifying a field of the current record: the tests before any item is touched, the
// fields that all kinds have in common, and the routing by kind.
#include "session/COutlookFuncs.h"

#include "ToDoFields.h"
#include "Vocabularies.h"

#include "frame/ErrorCodes.h"
#include "frame/PlugInLog.h"
#include "frame/ProcessObjects.h"
#include "mapi/PropertyCatalogue.h"
#include "records/ItemMessage.h"
#include "session/Operation.h"

#include <algorithm>
#include <array>

namespace varden {

namespace {

/// Refused before anything looks at the kind of record, also when there is none.
constexpr std::array<std::wstring_view, 12> kReadOnlyFields{
    L"ID",
    L"In Folder",
    L"Is Conflict",
    L"Modify",
    L"Size",
    L"Unread",
    L"Class",
    L"Created",
    L"Conversation Index",
    L"Conversation Topic",
    L"IsRecurring",
    L"Organizer",
};

constexpr int kFirstVersionWithToDo = 12;

using VocabularyOf = const Vocabulary& (*)();

struct Route {
    ItemKind kind;
    const wchar_t* logLine;
    VocabularyOf vocabulary;
};

constexpr std::array kReadRoutes{
    Route{ItemKind::Appointment, L"get appointment field data", AppointmentVocabulary},
    Route{ItemKind::Contact, L"get contact field data", ContactVocabulary},
    Route{ItemKind::DistList, L"get distlist field data", DistListVocabulary},
    Route{ItemKind::Document, L"get document field data", DocumentVocabulary},
    Route{ItemKind::Journal, L"get journal field data", JournalVocabulary},
    Route{ItemKind::Mail, L"get mail field data", MailVocabulary},
    Route{ItemKind::Meeting, L"get meeting field data", MeetingVocabulary},
    Route{ItemKind::Note, L"get note field data", NoteVocabulary},
    Route{ItemKind::Post, L"get post field data", PostVocabulary},
    Route{ItemKind::Remote, L"get remote field data", RemoteVocabulary},
    Route{ItemKind::Report, L"get report field data", ReportVocabulary},
    Route{ItemKind::Sharing, L"get sharing field data", SharingVocabulary},
    Route{ItemKind::Storage, L"get storage field data", StorageVocabulary},
    Route{ItemKind::Task, L"get task field data", TaskVocabulary},
    Route{ItemKind::TaskRequest, L"get task request field data", TaskRequestVocabulary},
    Route{ItemKind::TaskRequestAccept, L"get task request accept field data", TaskRequestAcceptVocabulary},
    Route{ItemKind::TaskRequestDecline, L"get task request decline field data", TaskRequestDeclineVocabulary},
    Route{ItemKind::TaskRequestUpdate, L"get task request update field data", TaskRequestUpdateVocabulary},
};

constexpr std::array kWriteRoutes{
    Route{ItemKind::Contact, L"seting contact field", ContactVocabulary},
    Route{ItemKind::Task, L"seting task field", TaskVocabulary},
    Route{ItemKind::Mail, L"seting mail field", MailVocabulary},
    Route{ItemKind::Post, L"seting post field", PostVocabulary},
    Route{ItemKind::Appointment, L"seting appt field", AppointmentVocabulary},
    Route{ItemKind::Journal, L"seting journal field", JournalVocabulary},
    Route{ItemKind::Note, L"seting note field", NoteVocabulary},
    Route{ItemKind::DistList, L"seting distlist field", DistListVocabulary},
    Route{ItemKind::Report, L"seting report field", ReportVocabulary},
    Route{ItemKind::TaskRequest, L"seting taskrequest field", TaskRequestVocabulary},
    Route{ItemKind::Meeting, L"seting meeting field", MeetingVocabulary},
};

/// The kinds whose linked contacts can be written.
constexpr std::array kKindsWithContacts{ItemKind::Task, ItemKind::Journal, ItemKind::Appointment,
                                        ItemKind::Post, ItemKind::Contact, ItemKind::Sharing};

std::wstring GetAddresses(const FieldContext& context, const FieldRow& row) {
    LogLine(L"getting smtp address");
    std::wstring text;
    context.engine.mapi_GetSMTPAddresses(std::wstring(row.name), text, context.message);
    return text; // also what a failure left
}

std::wstring GetSenderAddress(const FieldContext& context, const FieldRow&) {
    LogLine(L"getting sender smtp address");
    std::wstring text;
    context.engine.mapi_GetSenderEMailAddress(context.message, text);
    return text;
}

std::wstring GetContactInformation(const FieldContext& context, const FieldRow& row) {
    LogLine(L"getting contact information");
    return ReadRow({row.name, get::named()}, context);
}

/// Kinds without recipients; their own fields don't know the recipients' names either.
constexpr std::array kKindsWithoutRecipients{ItemKind::Task, ItemKind::Note, ItemKind::Contact};

constexpr FieldGet kRecipients = get::special(GetAddresses);

constexpr std::array kCommonFields{
    FieldRow{L"To", kRecipients},
    FieldRow{L"Cc", kRecipients},
    FieldRow{L"Bcc", kRecipients},
    FieldRow{L"From", get::special(GetSenderAddress)},
    FieldRow{L"From1", get::special(GetSenderAddress)},
    FieldRow{L"From2", get::special(GetSenderAddress)},
    FieldRow{L"Contacts", get::special(GetContactInformation), set::special(SetLinkedContacts)},
    FieldRow{L"Creator Name", get::special(GetContactInformation)},
    FieldRow{L"Sent On", get::mapiTime(0x00390040)},
    FieldRow{L"Received Time", get::mapiTime(0x0E060040)},
    FieldRow{L"Modify", get::mapiTime(0x30080040)},
    FieldRow{L"Last Modified", get::mapiTime(0x30080040)},
    FieldRow{L"Created", get::mapiTime(0x30070040)},
    FieldRow{L"Creation Time", get::mapiTime(0x30070040)},
    FieldRow{L"Deferred Delivery Time", get::mapiTime(0x000F0040)},
    FieldRow{L"Flag Due By", get::mapiTime(0x00300040)},
    FieldRow{L"Reminder Time", get::mapiTime()},
    FieldRow{L"Header", get::mapiText(0x007D001F)},
    FieldRow{L"Received By Entry Name", get::mapiText(0x0040001F)},
    FieldRow{L"Received By EntryID", get::mapiBinary(0x003F0102)},
    FieldRow{L"Received On Behalf Of Entry Name", get::mapiText(0x0044001F)},
    FieldRow{L"Received On Behalf Of EntryID", get::mapiBinary(0x00430102)},
    FieldRow{L"Sender Email Address", get::mapiText(0x0C1F001F)},
    FieldRow{L"Sender Email Type", get::mapiBinary(0x0C1E001F)}, // a text, read as a blob all the same
    FieldRow{L"Sent On Behalf Of", get::mapiText(0x0042001F)},
};

/// The MAPI view of an item; none for one that hasn't any.
mapi::Pointer<IMessage> MessageOf(const outlook::Reference& item) {
    mapi::Pointer<IMessage> message;
    QueryMessage(item, message);
    return message;
}

const FieldRow* FindField(std::span<const FieldRow> fields, const std::wstring& name) {
    const auto row = std::ranges::find(fields, name, &FieldRow::name);
    return row == fields.end() ? nullptr : &*row;
}

} // namespace

std::span<const FieldRow> CommonFields() {
    return kCommonFields;
}

bool COutlookFuncs::HasRecordOf(std::span<const ItemKind> kinds) {
    return FirstHeld(kinds) != nullptr;
}

/// The session test of the field operations, which asks for the MAPI session in place of the namespace.
bool COutlookFuncs::BeginFieldOperation() {
    if (!m_objApplication || !m_psession) {
        Fail(error::kNoSession);
        return false;
    }
    ClearLastErrorRecord(LastError());
    return true;
}

std::wstring COutlookFuncs::SetFieldData(const ScriptText& fieldName, const ScriptText& fieldData) {
    Operation operation(L"SetFieldData");
    if (!BeginFieldOperation()) {
        return operation.Failed();
    }
    const std::wstring name = fieldName.value_or(L"");
    const std::wstring data = fieldData.value_or(L"");
    operation.Param(L"strFieldData", data);
    operation.Param(L"lpstrFieldName", name);
    if (name.empty()) {
        return operation.Fail(error::kFieldName);
    }
    if (std::ranges::count(kReadOnlyFields, name) != 0) {
        return operation.Fail(error::kReadOnly);
    }
    if (IsToDoFieldToWrite(name) && OutlookMajorVersion() < kFirstVersionWithToDo) {
        return operation.Fail(error::kOutlookVersion, L"Field is not supported for this OL version");
    }
    if (name == L"Contacts" && (m_objOccurrenceAppointment || HasRecordOf(kKindsWithContacts))) {
        return Written(SetContacts(data), operation);
    }
    if (auto answer = WriteRecurrenceField(name, data, operation)) {
        return *answer;
    }
    for (const Route& route : kWriteRoutes) {
        if (const outlook::Reference& item = Item(route.kind); item) {
            LogLine(route.logLine);
            return Written(WriteItemField(route.vocabulary(), item, name, data), operation);
        }
    }
    return operation.Fail(error::kNoRecord);
}

std::wstring COutlookFuncs::Written(bool written, Operation& operation) {
    if (written) {
        return kSuccessText;
    }
    LogLine(L"An error occurred. Check it with VARD_GetLastError( \"Text\" ).");
    return operation.Failed();
}

/// The linked contacts' names, in the named property of the list and in the one of the text. The list of
/// their entry ids goes, as it would no longer fit.
bool COutlookFuncs::SetContacts(const std::wstring& data) {
    const std::wstring list = Replaced(Replaced(data, L',', L';'), L'\r', L';');
    const mapi::Pointer<IMessage> own =
        m_objOccurrenceAppointment ? MessageOf(m_objOccurrenceAppointment) : m_pMessage;
    IMessage& message = own.Required();
    ULONG contacts = 0;
    ULONG contactList = 0;
    ULONG contactEntryIds = 0;
    if (!mapi_PropTagFromFieldName(L"Contacts", contacts, &message) ||
        !mapi_PropTagFromFieldName(L"aContactList", contactList, &message) ||
        !mapi_PropTagFromFieldName(L"aContactEntryIDs", contactEntryIds, &message)) {
        return false;
    }
    SizedSPropTagArray(1, deleted) = {1, {contactEntryIds}};
    message.DeleteProps(reinterpret_cast<LPSPropTagArray>(&deleted), nullptr);
    mapi_SetOneProp(CHANGE_PROP_TYPE(contacts, PT_MV_UNICODE), list, &message);
    return mapi_SetOneProp(CHANGE_PROP_TYPE(contactList, PT_UNICODE), list, &message) != Stored::No;
}

std::wstring COutlookFuncs::GetFieldData(const ScriptText& fieldName) {
    Operation operation(L"GetFieldData");
    const std::wstring name = fieldName.value_or(L"");
    operation.Param(L"strFieldName", name);
    if (!BeginFieldOperation()) {
        return operation.Failed();
    }
    if (!m_pMessage) {
        return operation.Fail(error::kRecordNotFound, L"no current message selected");
    }
    if (auto text = ReadRecurrenceField(name)) {
        LogLine(L"Returning %ls", text->c_str());
        return *text;
    }
    if (IsToDoFieldToRead(name) && OutlookMajorVersion() < kFirstVersionWithToDo) {
        return operation.Fail(error::kOutlookVersion, L"Field is not supported for this OL version");
    }
    if (name.empty()) {
        return operation.Fail(error::kFieldName);
    }
    std::wstring text = ReadRecordField(name, operation);
    if (text == L"(null)") {
        text.clear();
    }
    LogLine(L"Returning %ls", text.c_str());
    return text;
}

/// A field of the record: one that all kinds have in common, or else one of its kind.
std::wstring COutlookFuncs::ReadRecordField(const std::wstring& name, Operation& operation) {
    const FieldRow* const row = FindField(kCommonFields, name);
    const bool isRecipients = row && row->get.special == GetAddresses;
    if (row && !(isRecipients && HasRecordOf(kKindsWithoutRecipients))) {
        const outlook::Reference noItem(outlook::kMailItem);
        return ReadRow(*row, {*this, noItem, m_pMessage.Get()});
    }
    for (const Route& route : kReadRoutes) {
        if (const outlook::Reference& item = Item(route.kind); item) {
            LogLine(route.logLine);
            return ReadItemField(route.vocabulary(), item, name);
        }
    }
    return operation.Fail(error::kNoRecord);
}

std::wstring COutlookFuncs::ReadItemField(const Vocabulary& vocabulary, const outlook::Reference& item,
                                          const std::wstring& name) {
    const mapi::Pointer<IMessage> message = vocabulary.usesItemsMessage ? MessageOf(item) : m_pMessage;
    return ReadField(vocabulary, name, {*this, item, message.Get()});
}

bool COutlookFuncs::WriteItemField(const Vocabulary& vocabulary, const outlook::Reference& item,
                                   const std::wstring& name, const std::wstring& data) {
    const mapi::Pointer<IMessage> message = vocabulary.usesItemsMessage ? MessageOf(item) : m_pMessage;
    return WriteField(vocabulary, name, data, {*this, item, message.Get()});
}

std::wstring COutlookFuncs::ReadMasterField(const std::wstring& name) {
    return ReadItemField(AppointmentVocabulary(), m_objAppointmentItem, name);
}

/// An open occurrence sees its own fields, an exception without one the two that every exception has, an open
/// pattern its own; none of them sees the fields that all kinds have in common.
std::optional<std::wstring> COutlookFuncs::ReadRecurrenceField(const std::wstring& name) {
    const bool isOfException =
        EqualIgnoringCase(name, L"Deleted") || EqualIgnoringCase(name, L"Original Date");
    if (m_objOccurrenceAppointment && !isOfException) {
        LogLine(L"getting RP Appt field data");
        return ReadItemField(AppointmentVocabulary(), m_objOccurrenceAppointment, name);
    }
    if (m_objOccurrenceTask) {
        LogLine(L"getting RP Task field data");
        return ReadItemField(TaskVocabulary(), m_objOccurrenceTask, name);
    }
    if (m_objException) {
        LogLine(L"getting RP Exception field data");
        return GetExceptValue(name);
    }
    if (m_objRecurrencePattern) {
        LogLine(L"getting RP Exception field data"); // the pattern has no line of its own
        return GetRecurPatternValue(name);
    }
    return std::nullopt;
}

std::optional<std::wstring> COutlookFuncs::WriteRecurrenceField(const std::wstring& name,
                                                                const std::wstring& data,
                                                                Operation& operation) {
    if (m_objOccurrenceAppointment) {
        LogLine(L"seting rp appt field");
        return Written(WriteItemField(AppointmentVocabulary(), m_objOccurrenceAppointment, name, data),
                       operation);
    }
    if (m_objRecurrencePattern) {
        LogLine(L"seting rp field");
        return SetRecurPatternValue(name, data);
    }
    return std::nullopt;
}

std::wstring COutlookFuncs::VerifyFieldData(const ScriptText& fieldName, const ScriptText& verifyData) {
    Operation operation(L"VerifyFieldData");
    if (!BeginFieldOperation()) {
        return operation.Failed();
    }
    if (!fieldName) {
        return operation.Fail(error::kFieldNameMissing);
    }
    return GetFieldData(fieldName) == verifyData.value_or(L"") ? L"0" : L"1";
}

} // namespace varden
