// The uses.
#include "ScriptedUses.h"

#include <algorithm>

namespace varden::tests {

using namespace standin::mailbox;

namespace {

/// Stand for what is known only when the world is there.
constexpr const wchar_t* kMailId = L"<mail id>";
constexpr const wchar_t* kFile = L"<file>";
constexpr const wchar_t* kTarget = L"<target>";
constexpr const wchar_t* kMsgFile = L"<msg file>";

const std::vector<ScriptedUse> kUses{
    {L"VARD_Version", {L"short", L"yes"}, Standing::Nothing},
    {L"VARD_Authenticate", {L"Outlook", L"secret"}, Standing::Nothing},
    {L"VARD_OpenRootFolder", {L"Archive"}, Standing::InInbox},
    {L"VARD_OpenFolder", {L"/Inbox"}, Standing::LoggedOn},
    {L"VARD_NewRecord", {L"Mail"}, Standing::LoggedOn},
    {L"VARD_NewRecord", {L"Note"}, Standing::LoggedOn, L"Note"},
    {L"VARD_SetFieldData", {L"Subject", L"New subject"}, Standing::OnNewMail},
    {L"VARD_SetFieldData", {L"From", L"Warehouse"}, Standing::OnNewMail, L"From"},
    {L"VARD_SetFieldData", {L"Flag Icon", L"Red"}, Standing::OnNewMail, L"FlagIcon"},
    {L"VARD_SetFieldData", {L"HTML Body", L"<p>x</p>"}, Standing::OnNewMail, L"HtmlBody"},
    {L"VARD_SetFieldData", {L"Mark As Task", L"this week"}, Standing::OnMail, L"MarkAsTask"},
    {L"VARD_SetFieldData", {L"Contacts", L"A,B"}, Standing::OnContact, L"Contacts"},
    {L"VARD_SetFieldData", {L"Location", L"Room 2"}, Standing::OnAppointment, L"Location"},
    {L"VARD_SetFieldData", {L"Required Attendees", L"Warehouse"}, Standing::OnAppointment, L"Attendees"},
    {L"VARD_SetFieldData", {L"Assign", L"Warehouse"}, Standing::OnTask, L"Assign"},
    {L"VARD_SetFieldData", {L"Interval", L"2"}, Standing::OnPattern, L"Interval"},
    {L"VARD_SetFieldData", {L"Day of Week Mask", L"weekdays"}, Standing::OnPattern, L"Weekdays"},
    {L"VARD_SaveRecord", {L"keep open"}, Standing::OnContact},
    {L"VARD_SaveRecord", {}, Standing::OnNewMail, L"Mail"},
    {L"VARD_SaveRecord", {L"Send"}, Standing::OnAppointment, L"Meeting"},
    {L"VARD_SaveRecord", {L"ApptResponse"}, Standing::OnAcceptance, L"Acceptance"},
    {L"VARD_DeleteRecord", {kMailId, L"No"}, Standing::InInbox},
    {L"VARD_DeleteRecord", {kMailId, L"Yes"}, Standing::InInbox, L"Permanent"},
    {L"VARD_DeleteAllRecords", {L"yes", L"yes"}, Standing::InInbox},
    {L"VARD_OpenRecord", {kMailId}, Standing::LoggedOn},
    {L"VARD_GetFieldData", {L"Subject"}, Standing::OnMail},
    {L"VARD_GetFieldData", {L"From"}, Standing::OnMail, L"From"},
    {L"VARD_GetFieldData", {L"To"}, Standing::OnMail, L"To"},
    {L"VARD_GetFieldData", {L"Body"}, Standing::OnMail, L"Body"},
    {L"VARD_GetFieldData", {L"RTF Body"}, Standing::OnMail, L"RtfBody"},
    {L"VARD_GetFieldData", {L"Received Time"}, Standing::OnMail, L"ReceivedTime"},
    {L"VARD_GetFieldData", {L"Reminder Time"}, Standing::OnMail, L"ReminderTime"},
    {L"VARD_GetFieldData", {L"Header"}, Standing::OnMail, L"Header"},
    {L"VARD_GetFieldData", {L"Received By EntryID"}, Standing::OnMail, L"Binary"},
    {L"VARD_GetFieldData", {L"E-mail"}, Standing::OnContact, L"ContactEmail"},
    {L"VARD_GetFieldData", {L"Label"}, Standing::OnAppointment, L"Label"},
    {L"VARD_GetFieldData", {L"Owner"}, Standing::OnTask, L"Owner"},
    {L"VARD_GetFieldData", {L"Body"}, Standing::OnNote, L"NoteBody"},
    {L"VARD_GetFieldData", {L"Interval"}, Standing::OnPattern, L"Interval"},
    {L"VARD_GetFieldData", {L"One Off Members"}, Standing::OnDistList, L"Members"},
    {L"VARD_VerifyFieldData", {L"Subject", L"First"}, Standing::OnMail},
    {L"VARD_GetFirstRecord", {}, Standing::InInbox},
    {L"VARD_GetNextRecord", {}, Standing::InInbox},
    {L"VARD_GetRecordCount", {}, Standing::InInbox},
    {L"VARD_GetFirstFolder", {}, Standing::LoggedOn},
    {L"VARD_GetNextFolder", {}, Standing::InInbox},
    {L"VARD_GetFolderID", {}, Standing::InInbox},
    {L"VARD_MoveRecord", {L"/Drafts"}, Standing::OnMail},
    {L"VARD_EmptyAllDeletedItems", {}, Standing::LoggedOn},
    {L"VARD_AddAttachment", {kFile, L"notes"}, Standing::OnMail},
    {L"VARD_GetAttachmentName", {1, L"true"}, Standing::OnMail},
    {L"VARD_SaveAttachment", {kTarget, 1}, Standing::OnMail},
    {L"VARD_GetAttachmentCount", {}, Standing::OnMail},
    {L"VARD_SetCustomFieldData", {L"Colour", L"red", L"Text"}, Standing::OnMail},
    {L"VARD_GetCustomFieldData", {L"Size of lot"}, Standing::OnMail},
    {L"VARD_GetFirstRootFolder", {}, Standing::LoggedOn},
    {L"VARD_GetNextRootFolder", {}, Standing::LoggedOn},
    {L"VARD_GetFolderType", {}, Standing::InInbox},
    {L"VARD_GetCurrentFolderName", {}, Standing::InInbox},
    {L"VARD_NewFolder", {L"Harness/Below", L"Mail"}, Standing::InInbox},
    {L"VARD_FilterByLastModified", {L"11/15/2020 3:45:10 PM"}, Standing::InInbox},
    {L"VARD_FilterByFilterString", {L"[Subject] = 'First'"}, Standing::InInbox},
    {L"VARD_SendMail", {L"Warehouse", L"", L"", L"Subject", L"Body", kFile, L"no"}, Standing::LoggedOn},
    {L"VARD_OpenSharedFolder", {L"Back Office", 9}, Standing::LoggedOn},
    {L"VARD_SaveRecordAsMsg", {kTarget}, Standing::OnMail},
    {L"VARD_Display", {false}, Standing::OnMail},
    {L"VARD_CreateCustomField", {L"Weight", L"Number"}, Standing::InInbox},
    {L"VARD_GetDefaultFolderName", {L"Inbox"}, Standing::LoggedOn},
    {L"VARD_AddOneOffMember", {L"Somebody", L"somebody@example.com", L"SMTP"}, Standing::OnDistList},
    {L"VARD_DeleteCurrentRecord", {L"no"}, Standing::OnMail},
    {L"VARD_RPOpenOccurrence", {L"3/3/2026 9:00 AM"}, Standing::OnPattern},
    {L"VARD_RPClearRecurrencePattern", {}, Standing::OnPattern},
    {L"VARD_RPGetExceptionCount", {}, Standing::OnPattern},
    {L"VARD_RPOpenRecurrencePattern", {}, Standing::OnAppointment},
    {L"VARD_RPOpenFirstException", {}, Standing::OnPattern},
    {L"VARD_RPOpenNextException", {}, Standing::OnExceptions},
    {L"VARD_RPOpenExceptionAt", {1}, Standing::OnExceptions},
    {L"VARD_RPCloseOccurrenceItem", {L"yes"}, Standing::OnPattern},
    {L"VARD_RPCloseRecurrencePattern", {L"yes"}, Standing::OnPattern},
    {L"VARD_RPDeleteOccurrence", {L"3/4/2026 9:00 AM"}, Standing::OnPattern},
    {L"VARD_GetLastError", {L"Text"}, Standing::LoggedOn},
    {L"VARD_OutlookVersion", {}, Standing::LoggedOn},
    {L"VARD_OpenSavedItem", {kMsgFile}, Standing::LoggedOn},
    {L"VARD_GetAttachmentSize", {1}, Standing::OnMail},
    {L"VARD_AddDistListMember", {L"Warehouse"}, Standing::LoggedOn},
    {L"VARD_ReplyToMessage", {kMailId, L"Warehouse", L"", L"", L"See below", L"no"}, Standing::LoggedOn},
    {L"VARD_LogClear", {}, Standing::Nothing},
    {L"VARD_LogMoveToDesktop", {L"log.txt"}, Standing::Nothing},
    {L"VARD_LogSet", {L"off"}, Standing::Nothing},
    {L"VARD_GALCount", {}, Standing::LoggedOn},
    {L"VARD_GALGetField", {L"email", 5}, Standing::LoggedOn},
    {L"VARD_ItemExist", {}, Standing::Nothing},
    {L"VARD_RPEIGetPropertyCount", {}, Standing::OnExceptions},
    {L"VARD_RPEIOpenPropertyAt", {1}, Standing::OnExceptions},
};

Folder& Inbox(Mailbox& world) {
    return FolderAt(world, L"Front Desk", L"Inbox");
}

/// A mail with everything that the uses read of one.
std::shared_ptr<Message> AddFullMail(Mailbox& world, const wchar_t* subject) {
    Content content;
    PropertyBag& properties = content.properties;
    properties.Set<PR_MESSAGE_CLASS_W>(L"IPM.Note");
    properties.Set<PR_SUBJECT_W>(subject);
    properties.Set<PR_BODY_W>(L"one\r\ntwo\r\n");
    properties.Set<PR_TRANSPORT_MESSAGE_HEADERS_W>(L"From: a\r\n");
    properties.Set<PR_MESSAGE_DELIVERY_TIME>(SysTime{132000000000000000});
    properties.Set<PR_RECEIVED_BY_ENTRYID>(Bytes{1, 2, 3});
    properties.Set<PR_SENDER_ENTRYID>(world.Addresses().Entries()[2]->EntryId());
    PropertyBag recipient = world.Addresses().Entries()[4]->RecipientProperties();
    recipient.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
    content.recipients.push_back(std::move(recipient));
    Attachment attachment;
    attachment.properties.Set<PR_ATTACH_METHOD>(ATTACH_BY_VALUE);
    attachment.properties.Set<PR_ATTACH_LONG_FILENAME_W>(L"notes.txt");
    attachment.properties.Set<PR_ATTACH_FILENAME_W>(L"NOTES.TXT");
    attachment.properties.Set<PR_ATTACH_DATA_BIN>(Bytes(1000, 0x2E));
    content.attachments.push_back(std::make_shared<const Attachment>(std::move(attachment)));
    Folder& inbox = Inbox(world);
    constexpr GUID publicStrings = {0x00020329, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    properties.Put(MakeTag(inbox.Names().Id({publicStrings, L"Size of lot"}, true), PT_DOUBLE), 12.5);
    std::shared_ptr<Message> message;
    EXPECT_EQ(inbox.Receive(std::move(content), false, message), S_OK);
    return message;
}

void Script(Plugin& plugin, const wchar_t* function, const Texts& arguments, const wchar_t* expected = L"0") {
    const std::wstring answer = plugin.Call(function, arguments);
    EXPECT_TRUE(expected ? answer == expected : answer != kError)
        << testing::PrintToString(function) << " answered " << testing::PrintToString(answer) << ": "
        << testing::PrintToString(plugin.LastErrorText());
}

void NewSaved(Plugin& plugin, const wchar_t* module,
              std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> fields) {
    Script(plugin, L"VARD_NewRecord", {module});
    for (const auto& [field, data] : fields) {
        Script(plugin, L"VARD_SetFieldData", {field, data});
    }
    Script(plugin, L"VARD_SaveRecord", {}, nullptr);
}

void OpenRecurringAppointment(Plugin& plugin) {
    NewSaved(plugin, L"Calendar",
             {{L"Subject", L"Weekly"}, {L"Start", L"3/2/2026 9:00 AM"}, {L"Duration", L"60"}});
    Script(plugin, L"VARD_RPOpenRecurrencePattern", {});
    Script(plugin, L"VARD_SetFieldData", {L"Recurrence Type", L"Daily"});
    Script(plugin, L"VARD_SetFieldData", {L"Occurrences", L"10"});
    Script(plugin, L"VARD_SaveRecord", {}, nullptr);
    Script(plugin, L"VARD_RPDeleteOccurrence", {L"3/5/2026 9:00 AM"});
}

/// The Inbox has a request of Service North's, whose appointment becomes the record.
void OpenRequestToAccept(Plugin& plugin) {
    Folder& inbox = Inbox(plugin.World());
    Content request;
    request.properties.Set<PR_MESSAGE_CLASS_W>(L"IPM.Schedule.Meeting.Request");
    request.properties.Set<PR_SUBJECT_W>(L"Review");
    request.properties.Set<PR_START_DATE>(SysTime{0x01DCA00000000000});
    request.properties.Set<PR_END_DATE>(SysTime{0x01DCA00800000000});
    request.properties.Set<PR_OWNER_APPT_ID>(17);
    request.properties.Set<PR_CONVERSATION_INDEX>(Bytes(22, 0x01));
    PropertyBag organizer = plugin.World().Addresses().Entries()[2]->RecipientProperties();
    organizer.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
    request.recipients.push_back(std::move(organizer));
    std::shared_ptr<Message> message;
    EXPECT_EQ(inbox.Receive(std::move(request), false, message), S_OK);
    Script(plugin, L"VARD_OpenRecord", {ToHex(message->EntryId())});
    EXPECT_EQ(plugin.Call(L"VARD_GetFieldData", {L"Associated Appointment"}), L"0");
    Script(plugin, L"VARD_SetFieldData", {L"Meeting Response", L"Accepted"});
}

std::wstring TempFile(const wchar_t* name) {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    return std::wstring(folder) + L"varden-" + std::to_wstring(GetCurrentProcessId()) + L"-" + name;
}

/// A file that is there.
std::wstring FileToAttach() {
    static const std::wstring path = [] {
        const std::wstring file = TempFile(L"attached.txt");
        std::FILE* stream = _wfopen(file.c_str(), L"wb");
        std::fputs("attached", stream);
        std::fclose(stream);
        return file;
    }();
    return path;
}

} // namespace

std::span<const ScriptedUse> ScriptedUses() {
    return kUses;
}

std::string NameOf(const ScriptedUse& use) {
    std::string name;
    for (const wchar_t c : std::wstring(use.function) + (*use.variant ? L"_" : L"") + use.variant) {
        name += static_cast<char>(c);
    }
    return name;
}

void FillWorld(Mailbox& world) {
    AddFullMail(world, L"First");
    AddFullMail(world, L"Second");
}

namespace {

/// What earlier runs left would make each run longer than the one before it.
void Empty(Plugin& plugin, const wchar_t* folderName) {
    auto& folder = FolderAt(plugin.World(), L"Front Desk", folderName);
    while (!folder.Messages().empty()) {
        folder.RemoveMessage(*folder.Messages().back()->shared_from_this());
    }
}

} // namespace

void Arrange(Plugin& plugin, Standing standing) {
    Empty(plugin, L"Deleted Items");
    Empty(plugin, L"Inbox");
    FillWorld(plugin.World());
    if (standing == Standing::Nothing) {
        return;
    }
    Script(plugin, L"VARD_Authenticate", {L"Outlook"});
    switch (standing) {
    case Standing::InInbox:
        Script(plugin, L"VARD_OpenFolder", {L"/Inbox"});
        Script(plugin, L"VARD_GetFirstFolder", {}, nullptr);
        Script(plugin, L"VARD_OpenFolder", {L"/Inbox"});
        break;
    case Standing::OnMail:
        Script(plugin, L"VARD_OpenFolder", {L"/Inbox"});
        Script(plugin, L"VARD_GetFirstRecord", {}, nullptr);
        break;
    case Standing::OnNewMail:
        Script(plugin, L"VARD_NewRecord", {L"Mail"});
        Script(plugin, L"VARD_SetFieldData", {L"To", L"Warehouse"});
        break;
    case Standing::OnContact:
        NewSaved(plugin, L"Contacts", {{L"Full Name", L"Ann Other"}, {L"E-mail", L"ann@example.com"}});
        break;
    case Standing::OnAppointment:
        NewSaved(
            plugin, L"Calendar",
            {{L"Subject", L"Visit"}, {L"Required Attendees", L"Warehouse"}, {L"Label", L"Travel Required"}});
        break;
    case Standing::OnAcceptance:
        Empty(plugin, L"Calendar");
        Empty(plugin, L"Outbox");
        Empty(plugin, L"Sent Items");
        OpenRequestToAccept(plugin);
        break;
    case Standing::OnTask:
        NewSaved(plugin, L"Tasks", {{L"Subject", L"Order paper"}});
        break;
    case Standing::OnNote:
        NewSaved(plugin, L"Note", {{L"Body", L"A note"}});
        break;
    case Standing::OnPattern:
        OpenRecurringAppointment(plugin);
        break;
    case Standing::OnExceptions:
        OpenRecurringAppointment(plugin);
        Script(plugin, L"VARD_RPGetExceptionCount", {}, L"1");
        Script(plugin, L"VARD_RPOpenFirstException", {});
        break;
    case Standing::OnDistList:
        NewSaved(plugin, L"Distribution List", {{L"DL Name", L"Team"}});
        Script(plugin, L"VARD_AddOneOffMember", {L"One", L"one@example.com", L"SMTP"});
        break;
    default:
        break;
    }
}

Texts ArgumentsOf(Plugin& plugin, const ScriptedUse& use) {
    Texts arguments = use.arguments;
    for (Value& argument : arguments) {
        const std::wstring text = argument.AsText();
        if (text == kMailId) {
            argument = ToHex(AddFullMail(plugin.World(), L"By id")->EntryId());
        } else if (text == kFile) {
            argument = FileToAttach();
        } else if (text == kTarget) {
            argument = TempFile(L"target.msg");
        } else if (text == kMsgFile) {
            argument = TempFile(L"saved.msg");
        }
    }
    return arguments;
}

} // namespace varden::tests
