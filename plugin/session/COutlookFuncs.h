// The engine: one object that holds the session, the current folder and the current record, and whose
// operations are the script functions.
#pragma once

#include "frame/LastError.h"
#include "frame/Text.h"
#include "mapi/Ownership.h"
#include "mapi/PropertyBlock.h"
#include "outlook/Objects.h"
#include "records/ItemKind.h"

#include <array>
#include <cstdint>
#include <ctime>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace varden {

class Operation;
struct Vocabulary;

/// How a property was written. A refusal, of a computed property or an invalid value, is passed over: the
/// message is saved all the same.
enum class Stored { Yes, Refused, No };

/// Where OpenRecord takes the record from.
enum class RecordSource { EntryId, SavedItem };

/// Operations answer with a text: "0" for a change of state, an entry id for an operation that yields a
/// record, "End" at the end of a walk, "!!ERROR!!" for a failure, whose reason is then in the last-error
/// record. Without a session every operation fails with -1001; with one it clears the last error first. Only
/// Authenticate, OutlookVersion, RPCloseRecurrencePattern and RPCloseOccurrenceItem need none. A COM failure
/// that an operation doesn't name itself leaves it as _com_error, the use of a MAPI object that isn't there
/// as mapi::Unavailable; one that it catches is recorded as 999 with the words for it.
class COutlookFuncs {
public:
    COutlookFuncs() = default;
    /// Logs off, then gives MAPI back, whether or not it was ever taken.
    ~COutlookFuncs();
    COutlookFuncs(const COutlookFuncs&) = delete;
    COutlookFuncs& operator=(const COutlookFuncs&) = delete;

    // Session (session/)

    /// Starts or attaches to Outlook, logs on to the profile and takes the MAPI session.
    std::wstring Authenticate(const ScriptText& profile, const ScriptText& password);
    /// Application.Version as Outlook gives it; raises E_POINTER without a session.
    std::wstring OutlookVersion();
    /// The full logoff: record, folders, stores, Outlook's own logon.
    void LogoffSession();
    std::time_t m_tStart = 0; ///< when the plug-in started

    // Folders (folders/)

    /// Makes the store of that name, in any case and with or without a "/" in front, the store in use, and
    /// its top-level folder the root folder. No folder is current afterwards. Clears the filter, also when it
    /// fails: -1003 for a store that can't be looked up.
    std::wstring OpenRootFolder(const ScriptText& name);
    /// Makes the first top-level folder the root folder; the store in use and the filter stay. Its name, or
    /// "End". No folder is current afterwards.
    std::wstring GetFirstRootFolder();
    /// The same for the one behind it.
    std::wstring GetNextRootFolder();
    /// Makes a folder current, with its items and without a filter. The path has "/" between names, which
    /// count with case; one that begins with "/" runs from the root folder, any other from the current
    /// folder. -1015 for a path that leads nowhere: the last folder that matched is then the current one,
    /// without a list.
    std::wstring OpenFolder(const ScriptText& path);
    /// Makes the folders of the path that are missing, and the last one current as OpenFolder does. The
    /// module word, in any case, is the type of the new ones. -1026 without a current folder, -1087 without a
    /// path, -1021 for an unknown word, 999 for what Outlook refuses; folders made before that stay.
    std::wstring CreateFolder(const ScriptText& path, const ScriptText& module);
    /// Lists all folders below the root folder and makes the first one current; list of items, item type and
    /// filter stay as they were. Its path, or "End". The item word is only logged. -1097 for a folder that
    /// can't be had.
    std::wstring GetFirstFolder(const ScriptText& item);
    /// The same for the next folder of the list that GetFirstFolder made. One that fails is tried again by
    /// the next call.
    std::wstring GetNextFolder();
    /// The entry id of the current folder; -1026 without one.
    std::wstring GetFolderID();
    /// The word for what the current folder holds: "Mail", "Calendar" ... -1026 without a current folder,
    /// -1015 for a type that has no word.
    std::wstring GetFolderType();
    /// The name of the current folder; -1026 without one.
    std::wstring GetCurrentFolderName();
    /// The name of the folder that Outlook uses for a purpose, by a word in any case: "Inbox", "Sent Mail"
    /// ... "Root". -1088 for an unknown word; -1097 for a folder that isn't reached, and the record is let
    /// go.
    std::wstring GetDefaultFolderName(const ScriptText& word);
    /// Makes another user's default folder current, without a filter; the root folder stays. `folder` is a
    /// number of OlDefaultFolders. -1100 for one that isn't reached.
    std::wstring OpenSharedFolder(const ScriptText& user, std::int32_t folder);

    // Records (records/)

    /// Makes a new item the current record, unsaved but for a note: in the current folder, or, without one,
    /// in the default folder of the module, which becomes current. The module is a word in any case; without
    /// one the current folder's type decides. -1021 for an unknown word, -1026 with neither word nor folder.
    std::wstring NewRecord(const ScriptText& module);
    /// Makes a record current by its entry id (hexadecimal), or a new item made from an MSG file. The folder
    /// that it lies in becomes current, without a list of items, the cursor 1. -1018 without a root folder,
    /// -1024 without an argument, -1027 for an id and -1016 for a file that isn't found. An item of no known
    /// kind is answered "!!ERROR!! ", with a blank, and -1095.
    std::wstring OpenRecord(const ScriptText& idOrPath, RecordSource source);
    /// Fetches the current folder's items, narrows them by the filter and makes the first current. Its entry
    /// id, or "End". -1026 without a current folder; otherwise fails as FilterApply and GetNextRecord do.
    std::wstring GetFirstRecord();
    /// Makes the item behind the cursor current. Its entry id, or "End"; the record before is let go in any
    /// case. -1026 without a current folder, 999 without a list, -1095 for an item of no known kind, which
    /// the next call steps past.
    std::wstring GetNextRecord();
    /// The count of the list in decimal; without a list, that of the current folder's items without the
    /// filter. Raises E_POINTER with neither.
    std::wstring GetRecordCount();
    /// Narrows the list by a filter in Outlook's own language, and remembers it for GetFirstRecord. -1026
    /// without a list: one must have been fetched since the last OpenRecord. 999 for a filter that Outlook
    /// refuses, -1200 when no list comes back; both leave list and filter as they were.
    std::wstring FilterApply(const std::wstring& filter);
    /// Filters by last modification after a time stamp, which is in the user's locale and without seconds.
    std::wstring Search(const std::wstring& timeStamp);
    /// Saves the current record and, by its kind and the option word, sends it: a mail unless the word is
    /// "DontSend", an appointment and a meeting with "Send" or "Appointment", an appointment's response with
    /// "ApptResponse". The entry id, of a mail that went out the one it has in the Outbox. The record stays
    /// current without a word and with "keep open", unless a mail went out. -1023 without a record or for a
    /// kind that isn't saved, -1025 when nothing was saved or sent, -1098 for another word of an appointment,
    /// -1097 for a meeting that isn't sent.
    std::wstring SaveRecord(const ScriptText& option);
    /// Deletes a record by its entry id; for good when the word begins with "Y", "T" or "1", in either case.
    /// Its folder is current afterwards, without a list. Fails as OpenRecord does; -1023 for a kind that
    /// isn't deleted, -1028 for one that isn't found in its folder, a post above all; and under a filter as
    /// FilterApply without a list, although the record has gone.
    std::wstring DeleteRecord(const ScriptText& entryId, const ScriptText& permanent);
    /// Deletes the current record, for good by its place in the list, and renews the list: GetNextRecord goes
    /// on with the record behind it. -1023 without a record, unless it goes for good: then whatever stands at
    /// the cursor does. For good and without a list: raises mapi::Unavailable, the record undeleted.
    std::wstring DeleteCurrentRecord(bool permanent);
    /// Deletes the records of the current folder for good, except, where asked, private ones, and
    /// distribution lists with their members. -1026 without a current folder, -1097 for a list whose members
    /// can't be read; a record of no known kind ends it.
    std::wstring DeleteAllRecords(bool excludePrivate, bool excludeDistLists);
    /// Removes all that is in the default Deleted Items folder.
    std::wstring EmptyAllDeletedItems();
    /// Moves the current record to a folder, by a path of OpenFolder that begins with "/", or with the name
    /// of a root folder, which becomes the one in use. The entry id that the record has there; it is let go.
    /// The destination is current, without a list. -1024 without a path, -1003 and -1015 for a destination
    /// that isn't found, -1023 without a record or for one that can't be moved, -1097 for MAPI's failures.
    std::wstring MoveRecord(const ScriptText& path);
    /// Shows the current record in a window of Outlook's, in front of all others until it is closed if
    /// `modal`. -1023 without a record or for a kind that has no window.
    std::wstring Display(bool modal);
    /// Makes a new mail that passes a mail, post or journal entry on, unsent, the current record. Recipients
    /// are given as for the fields "To", "Cc" and "Bcc"; the added text goes in front of the body. -1000
    /// without an entry id, -1038 with OpenRecord's answer, -1023 for another kind, 999 for what Outlook
    /// refuses.
    std::wstring ReplyToMessage(const ScriptText& entryId, const ScriptText& to, const ScriptText& cc,
                                const ScriptText& bcc, const ScriptText& addedBody, bool keepAttachments);
    /// Writes the current record to an MSG file, in place of one of that name; ".MSG" is added to a path that
    /// doesn't end so. The type is only logged. -1097 with the reason.
    std::wstring SaveRecordAsMSG(const ScriptText& path, const ScriptText& outlookType);

    // Fields (fields/)

    std::wstring SetFieldData(const ScriptText& fieldName, const ScriptText& fieldData);
    std::wstring GetFieldData(const ScriptText& fieldName);
    /// "0" when the field's present text equals the data, "1" when it doesn't or can't be read.
    std::wstring VerifyFieldData(const ScriptText& fieldName, const ScriptText& verifyData);

    // Mail in one call (mapi/)

    std::wstring CreateMessage(const ScriptText& to, const ScriptText& cc, const ScriptText& bcc,
                               const std::wstring& subject, const std::wstring& body,
                               const std::vector<std::wstring>& attachments, bool useHtml);

    // Below the object model (mapi/): single properties of a message. `message` may be null where a doc
    // comment says so.

    /// Finds the default store in the stores table and opens it.
    HRESULT mapi_OpenDefaultMessageStore();
    /// Writes one property and saves the message at once. A tag without type bits takes the stored type. The
    /// text is one wide text, or, for a multi-valued tag, one with ";" between the elements. A refusal and a
    /// failure are told by the last error too; most callers look at neither.
    Stored mapi_SetOneProp(ULONG tag, const std::wstring& text, IMessage* message);
    Stored mapi_SetOneProp(ULONG tag, const mapi::PropertyUnion& value, IMessage* message);
    /// Reads one property. A tag without type bits reads whatever type is stored. E_INVALIDARG for a null
    /// message.
    HRESULT mapi_GetOneProp(ULONG tag, mapi::PropertyBlock& block, IMAPIProp* message);
    /// Reads a text of any length, without line feeds and without its last character. A missing property is
    /// an empty text and a success. On failure `text` holds the reason; with a null message it stays as it
    /// was.
    bool mapi_GetTextField(ULONG tag, std::wstring& text, IMessage* message);
    /// Reads a blob of the current message as hexadecimal text; compressed RTF as RTF, HTML as text. A
    /// missing property is an empty text and a success. On failure `text` holds the reason; with a null
    /// message that is "No Message Opened". Which message it is isn't looked at beyond that.
    bool mapi_GetBinaryField(ULONG tag, std::wstring& text, IMessage* message);
    /// The sender's address as the address book has it: SMTP, or else in its own form.
    HRESULT mapi_GetSenderEMailAddress(IMessage* message, std::wstring& text);
    /// The addresses of the message's recipients of one kind, "To", "Cc" or "Bcc", with ", " between. On
    /// failure the last error is set, and what was built so far stays in `fieldData`. With a null message
    /// `fieldData` holds the reason behind "!!ERROR!!", and the last error stays as it was.
    bool mapi_GetSMTPAddresses(const std::wstring& fieldName, std::wstring& fieldData, IMessage* message);

    /// All recipients of the message as resolved addresses; no list for a message without recipients.
    HRESULT mapi_AddrListFromMessage(IMessage* message, mapi::AddressList& list);
    /// The same for the first recipient only.
    HRESULT mapi_AddrListFromMessageOrgOnly(IMessage* message, mapi::AddressList& list);
    /// Resolves the recipients, points the message at the sent-items folder and submits it. Two failures on
    /// the way are told by the last error alone, with the status of a success.
    HRESULT mapi_Send(IMessage* message, IMsgStore* store);
    /// Stamps the owner of the store on the message, as sender and as represented sender.
    HRESULT mapi_SetSentOnBehalf(IMessage* message, IMsgStore* store);
    /// Gives an appointment what a meeting message must carry.
    HRESULT mapi_PrepareMeetingProps(IMessage* message, IMsgStore* store);
    /// Sends a meeting's request, update or cancellation.
    HRESULT mapi_SendMeeting(IMessage* message, IMsgStore* store);
    /// Accepts a meeting: puts it on the calendar and answers its organizer.
    HRESULT mapi_SendMeetingAccept(IMessage* message, IMsgStore* store);
    /// Builds a task request in the Outbox, with the task embedded, and leaves it unsent.
    HRESULT mapi_CreateTaskRequest(IMessage* task, IMsgStore* store, mapi::Pointer<IMessage>& request);
    /// Opens the folder whose entry id the store has under the tag. A failure is told by the last error too.
    HRESULT mapi_OpenFolderFromStoreProp(mapi::Pointer<IMAPIFolder>& folder, ULONG folderTag,
                                         IMsgStore* store);
    /// A number for a meeting that no other of the folder has: one more than the greatest, or else one in a
    /// gap.
    HRESULT mapi_NextOwnerApptId(long& id, IMAPIFolder* folder);
    /// Gives the message of a meeting its class, subject and final properties by the meeting's status, and
    /// submits it. A failure is told by the last error too.
    HRESULT mapi_FinishMeetingMessage(IMessage& message, bool isUpdate);
    /// Makes the calendar's own entry from a meeting, not saved yet. A failure is told by the last error too.
    HRESULT mapi_CopyMeetingToCalendar(IMessage& meeting, IMsgStore* store, mapi::Pointer<IMessage>& entry);
    /// Fills a response from the calendar's entry and stamps the owner of the store on it. A failure is told
    /// by the last error too.
    HRESULT mapi_CopyMeetingProps(IMessage& response, IMsgStore* store, IMessage& entry);
    /// Gives a response the class and subject of an acceptance, and submits it. A failure is told by the last
    /// error too.
    HRESULT mapi_FinishMeetingResponse(IMessage& response);
    /// Makes the calendar's entry the current record. What Outlook doesn't give as an appointment is passed
    /// over.
    HRESULT mapi_RebindAcceptedMeeting(IMessage& entry);
    /// Writes the message to an MSG file, in place of a file of that name. "0", or "!!ERROR!!" with the last
    /// error set.
    std::wstring mapi_SaveToMSG(IMessage* message, const std::wstring& path);

    // What field code needs of the state.

    const outlook::Application& ApplicationObject() const { return m_objApplication; }
    const outlook::Folder& CurrentFolder() const { return m_objCurrentFolder; }
    const mapi::Pointer<IMAPISession>& Session() const { return m_psession; }
    IMessage* CurrentMessage() const { return m_pMessage.Get(); }
    /// The appointment that an open occurrence belongs to, or the record itself.
    const outlook::Reference& MasterAppointment() const { return m_objAppointmentItem; }
    /// A field of that appointment.
    std::wstring ReadMasterField(const std::wstring& name);
    /// Writes the names of the contacts that the record, or its open occurrence, is linked with; "," and line
    /// ends part them. False when a look-up or the last of its writes fails.
    bool SetContacts(const std::wstring& data);
    /// What the next meeting response answers: 2 tentative, 3 accepted, 4 declined.
    void SetPendingResponse(long response) { m_lMeetingResponse = response; }
    /// Makes the appointment of the current meeting the current record. "0", or "!!ERROR!!" with the last
    /// error set.
    std::wstring TakeAssociatedAppointment();

    // Recurrence (recurrence/)

    /// Opens the pattern of the current appointment or task, which becomes recurring by that. A pattern that
    /// was open is closed without a save. -1023 for other kinds.
    std::wstring OpenRecurrencePattern();
    /// Takes the recurrence from the current appointment or task, and saves it. -1023 for other kinds, -1097
    /// when Outlook refuses to.
    std::wstring ClearRecurrencePattern();
    /// Closes the open pattern with all that hangs on it but a task's occurrence; `save` saves the open
    /// occurrence first. The pattern itself is saved with its record, not here. 999 for a save that fails,
    /// and all stays open.
    std::wstring RPCloseRecurrencePattern(bool save);
    /// Opens the occurrence at a date and time in the user's locale, whose fields then stand for the
    /// record's. -1089 for a missing or bad date, -1023 without an open pattern, 999 for a date without an
    /// occurrence.
    std::wstring OpenRecurrenceOccurrence(const ScriptText& date);
    /// Deletes the occurrence at a date and time. Fails as opening it does.
    std::wstring DeleteRecurrenceOccurrence(const ScriptText& date);
    /// Closes the open occurrence; `save` saves it first. 999 for a save that fails, and it stays open.
    std::wstring RPCloseOccurrenceItem(bool save);
    /// The count of the open pattern's exceptions in decimal. -1023 without an open pattern, code 2 when it
    /// has no collection of them, 999.
    std::wstring GetRecurPatternExceptionCount();
    /// Takes the exceptions anew and opens the first. "0", or "End". -1023 without an open pattern, 999.
    std::wstring RPOpenFirstException();
    /// Opens the next one. -1023 before RPOpenFirstException, 999, also before it where the exceptions have
    /// only been counted.
    std::wstring RPOpenNextException();
    /// Opens the exception at a 1-based place; a walk goes on from where it stood. An exception that isn't a
    /// deleted one opens its occurrence too, in place of the one that was open, unsaved. -1023 without
    /// exceptions, 999 for a place where there is none.
    std::wstring RPOpenExceptionAt(std::int32_t index);
    /// The count of the item properties of the open exception in decimal; the name of the status when Outlook
    /// refuses them, with no last error. -1023 without an exception.
    std::wstring RPEIGetPropertyCount();
    /// Opens the item property at a place, as Outlook counts them. "0", or "End" while the properties haven't
    /// been taken. -1023 without an exception.
    std::wstring RPEIOpenPropertyAt(std::int32_t index);
    /// A text of the open item property, by a key in any case: "Name", "Value", "Is User Property" ... -1022
    /// for an unknown key, -1023 without an item property.
    std::wstring RPEIGetPropertyData(const std::wstring& key);
    /// Takes the item properties of the open exception. -1023 without a pattern or an exception.
    std::wstring OpenExceptItemProps();
    /// Writes a field of the open pattern; the name counts with its blanks, in any case. The recurrence type
    /// is saved at once, the other fields with the record. -1023 without a pattern or before it has a type,
    /// -1022 for an unknown name, -1089 for an unknown type, 999 for a value that Outlook refuses.
    std::wstring SetRecurPatternValue(const std::wstring& name, const std::wstring& data);
    /// The text of a field of the open pattern; blanks in the name don't count. -1023 without a pattern,
    /// -1022 for an unknown name.
    std::wstring GetRecurPatternValue(const std::wstring& name);
    /// The text of "Deleted" or "Original Date" of the open exception. -1023 without a pattern or its
    /// exceptions, -1022 for another name; raises E_POINTER without an open exception.
    std::wstring GetExceptValue(const std::wstring& name);

    // Extensions of items (extensions/)

    /// Attaches a file to the current record, shown by `name`, and saves the record. -1013 without a path,
    /// -1016 for one with "/" or without a file, -1023 without a record.
    std::wstring AddAttachment(const std::wstring& path, const std::wstring& name);
    /// The file name of the attachment at a 1-based place, the short one where asked and there is one; of an
    /// embedded message the subject with an extension. -1097 for a place without an attachment and for one
    /// without a name.
    std::wstring GetAttachmentName(std::int32_t index, bool truncated);
    /// Writes the attachment at a 1-based place to a file, in place of one of that name: an embedded message
    /// as MSG, an OLE object as a compound file; one by reference writes nothing. -1012 without a path, -1016
    /// for one without a folder, -301 and -302 for a folder that isn't there or can't be written, -1097 for
    /// all else; no half of a file is left but of an embedded message.
    std::wstring SaveAttachment(const ScriptText& path, std::int32_t index);
    /// The count of attachments in decimal. -1097 for MAPI's failures; raises mapi::Unavailable without a
    /// record.
    std::wstring GetAttachmentCount();
    /// The size in bytes of the attachment at a 1-based place, in decimal; behind that of an embedded message
    /// stands ".msg". Fails as GetAttachmentName does.
    std::wstring GetAttachmentSize(std::int32_t index);
    /// Writes a custom field of the current record, which isn't saved by that; a field that it hasn't is
    /// made, of the type that the word names in any case, also in the folder's list. Data that don't convert
    /// are written as no value for dates and currency, as 0 for other numbers, as false. -1011 without a
    /// name, -1094 for an unknown type, -1092 for a note, -1023 without a record, -1093 and -1097 for what
    /// Outlook refuses.
    std::wstring SetCustonFieldData(const ScriptText& fieldName, const ScriptText& data,
                                    const std::wstring& type);
    /// The text of a custom field of the current record, empty for one that has no value. -1026 without a
    /// current folder, -1011 without a name, -1019 for a field that the store doesn't know or can't be read.
    std::wstring GetCustomFieldData(const ScriptText& fieldName);
    /// Enters a custom field in the current folder's list; lets go of the record. -1026 without a current
    /// folder, -1011 without a name, -1090 for an unknown type, -1095 for a folder whose first item has no
    /// custom fields, -1093 and 999 for what Outlook refuses.
    std::wstring CreateCustomField(const ScriptText& fieldName, const ScriptText& type);
    /// Adds a member that is in no address book to the current distribution list, at once and without a save.
    /// The type is "SMTP" or "EX", with case. -1098 without one of the three, -1089 for a bad one, -1023
    /// without a list, -1097 when no entry id is to be had.
    std::wstring AddOneOffDistListMember(const ScriptText& name, const ScriptText& address,
                                         const ScriptText& type);
    /// Whether a name resolves in one store's address book: "All Ok", "NotFound", "Ambigious Entry" or the
    /// words for another failure, with no last error. No record is touched.
    std::wstring AddDistListMember(const ScriptText& name);
    /// The count of entries of the global address list in decimal.
    std::wstring GALCount();
    /// A text of the entry at a 1-based place, by a key in any case. "type" is served for every entry, the
    /// other keys for Exchange users; -4 for anything else.
    std::wstring GALGetField(const ScriptText& key, std::int32_t index);

    // State, in the order in which it is destroyed last to first.

private:
    std::uint32_t m_lindex = 0;    ///< 1-based place of the current record in m_objItems, 0 before the first
    std::int32_t m_lItemCount = 0; ///< Count of m_objItems when it was last set
    std::int32_t m_nItemType = 0;  ///< item type of the current folder, or of the item that NewRecord makes
    std::int32_t m_nFolderIndex = 0;     ///< 0-based place of the next entry of the folder list
    std::int32_t m_lMeetingResponse = 0; ///< the meeting response that waits to be sent, 0 for none
    std::int32_t m_nRootFolderIndex = 0; ///< 1-based place of the next root folder
public:
    bool m_bStoreOnline = false; ///< stores are opened online
private:
    outlook::Application m_objApplication;

    // At most one of these is set, but for the document: see ReleaseItems.
    outlook::Reference m_objAppointmentItem{outlook::kAppointmentItem};
    outlook::Reference m_objContactItem{outlook::kContactItem};
    outlook::Reference m_objDistListItem{outlook::kDistListItem};
    outlook::Reference m_objDocumentItem{outlook::kDocumentItem};
    outlook::Reference m_objJournalItem{outlook::kJournalItem};
    outlook::Reference m_objMailItem{outlook::kMailItem};
    outlook::Reference m_objMeetingItem{outlook::kMeetingItem};
    outlook::Reference m_objNoteItem{outlook::kNoteItem};
    outlook::Reference m_objPostItem{outlook::kPostItem};
    outlook::Reference m_objRemoteItem{outlook::kRemoteItem};
    outlook::Reference m_objReportItem{outlook::kReportItem};
    outlook::Reference m_objSharingItem{outlook::kSharingItem};
    outlook::Reference m_objStorageItem{outlook::kStorageItem};
    outlook::Reference m_objTaskItem{outlook::kTaskItem};
    outlook::Reference m_objTaskRequestAcceptItem{outlook::kTaskRequestAcceptItem};
    outlook::Reference m_objTaskRequestDeclineItem{outlook::kTaskRequestDeclineItem};
    outlook::Reference m_objTaskRequestItem{outlook::kTaskRequestItem};
    outlook::Reference m_objTaskRequestUpdateItem{outlook::kTaskRequestUpdateItem};

    outlook::NameSpace m_objNamespace;
    outlook::Items m_objItems; ///< the current folder's items, possibly restricted
    outlook::Folder m_objCurrentFolder;
    outlook::Folder m_objRootFolder; ///< base of absolute paths
    outlook::Reference m_objRecurrencePattern{outlook::kRecurrencePattern};
    outlook::Reference m_objExceptions{outlook::kExceptions};
    outlook::Reference m_objException{outlook::kException}; ///< the one at the cursor of the walk
    std::int32_t m_lException = 0; ///< 1-based place of the next exception, 0 without a walk
    outlook::Reference m_objOccurrenceAppointment{outlook::kAppointmentItem};
    outlook::Reference m_objOccurrenceTask{outlook::kTaskItem};
    outlook::Reference m_objItemProperties{outlook::kItemProperties};
    outlook::Reference m_objItemProperty{outlook::kItemProperty};
    outlook::Reference m_objGlobalAddressList{outlook::kAddressList};
    IDispatchPtr m_objCurrentItem; ///< the current record, of whichever kind
    std::wstring m_strFilter;      ///< what GetFirstRecord applies, empty for none
    std::wstring m_strDefaultRootName;
    std::wstring m_strPublicRootName; ///< empty where there are no public folders
    std::vector<std::wstring> m_aFolderPaths;
    std::vector<std::wstring> m_aFolderIDs; ///< parallel to m_aFolderPaths
    mapi::Pointer<IMAPITable> m_pStoresTable;
    mapi::Pointer<IMAPIFolder> m_pMapiFolder; ///< MAPI view of the current folder
    mapi::Pointer<IMsgStore> m_pMsgStore; ///< store of the root folder chosen by name, or the default store
    mapi::Pointer<IMsgStore> m_pDefaultMsgStore;
    mapi::Pointer<IMessage> m_pMessage; ///< MAPI view of the current record
    mapi::Pointer<IMAPISession> m_psession;

    // Session

    bool HasSession() const { return m_objApplication && m_objNamespace; }
    /// Whether there is a session. Clears the last error if so, and records that there is none otherwise.
    bool BeginOperation();
    std::wstring StartOutlook();
    std::wstring LogOn(const std::wstring& profile, const std::wstring& password);
    std::wstring TakeMapiSession();
    std::wstring TakeDefaultFolders();
    void FindPublicRoot();
    /// Lets go of what a new logon replaces; Outlook's own logon stays.
    void ReleaseSession();
    enum class LogOffOutlook { No, Yes };
    void ReleaseSessionObjects(LogOffOutlook logOff);
    /// The number that Outlook's version begins with.
    int OutlookMajorVersion() const;

    // Folders

    bool FindRootFolder(std::wstring name);
    const wchar_t* OpenStoreByName(const std::wstring& name);
    /// Opens a store without dialogs, online where that is switched on.
    HRESULT OpenStore(const SBinary& entryId, mapi::Pointer<IMsgStore>& store);
    bool FindFolder(std::wstring path);
    bool FindSubFolder(outlook::Folders folders, const std::wstring& name);
    /// The current folder with all that belongs to it: item type, items, count, MAPI view; no filter.
    void TakeOverFolder();
    outlook::Folder FindOrAddFolders(outlook::Folders folders, const std::wstring& path, std::int16_t type);
    bool BuildMailFolderList();
    void AddFoldersToList(const outlook::Folders& folders, const std::wstring& prefix);

    // Records

    static const std::array<ItemKindRow, kItemKindCount> s_itemKinds;

    outlook::Reference& Item(ItemKind kind) {
        return this->*s_itemKinds[static_cast<std::size_t>(kind)].member;
    }
    /// Ends the current record: kind members, current item, message, recurrence objects.
    void ReleaseItems();
    /// The first of these kinds that the current record is; null for none.
    outlook::Reference* FirstHeld(std::span<const ItemKind> kinds);
    /// The current record, of whichever kind; null for none.
    outlook::Reference* CurrentItem();
    /// Finds out the kind of m_objCurrentItem: the first whose interface it has. Null when none fits.
    const ItemKindRow* DetectKind();
    /// Takes the MAPI view of the record of this kind. The entry id, in hexadecimal, is used only for the
    /// kinds that have no MAPIOBJECT, and looked for in the store in use, which after a walk of the root
    /// folders may not be theirs.
    void TakeMessage(ItemKind kind, const std::wstring& entryId);
    HRESULT OpenMessageFromEntryID(const std::wstring& entryId, mapi::Pointer<IMessage>& message);
    void TakeNewItem(ItemKind kind, const wchar_t* word);

    struct SaveOutcome {
        std::wstring answer;
        bool endsOperation = false; ///< the last error is set, and the record stays current
    };
    struct SaveRow {
        ItemKind kind;
        SaveOutcome (COutlookFuncs::*save)(const outlook::Reference& item, const ScriptText& option);
    };
    const SaveRow* FindSaveRow();
    SaveOutcome SavePlain(const outlook::Reference& item, const ScriptText& option);
    SaveOutcome SaveMail(const outlook::Reference& item, const ScriptText& option);
    SaveOutcome SaveAppointment(const outlook::Reference& item, const ScriptText& option);
    SaveOutcome SaveMeeting(const outlook::Reference& item, const ScriptText& option);
    outlook::Reference MoveToOutbox(const outlook::Reference& mail);

    std::wstring ApplyStandingFilter();
    std::wstring RemoveFromParent(const outlook::Reference& item, const std::wstring& entryId,
                                  Operation& operation);
    std::wstring EntryIdOfAnyKind();
    bool IsPrivate();
    /// How collecting the members of a folder's lists went.
    struct ListMembers {
        HRESULT status = S_OK;
        bool isComplete = false;
    };
    ListMembers CollectListMembers(const outlook::Items& items, std::set<std::wstring>& excluded);
    std::wstring AnswerUnmoved(Operation& operation);
    bool ForwardCurrent();
    std::wstring AddToBody(const std::wstring& added, long bodyFormat);

    // Meetings

    void NameTopic(IMessage& meeting);
    HRESULT NumberMeeting(IMessage& meeting);
    HRESULT CreateInOutbox(mapi::Pointer<IMessage>& message, IMsgStore* store);
    HRESULT PointAtSentItems(IMessage& message, IMsgStore* store);
    HRESULT WriteHeading(IMessage& message, const std::wstring& prefix, const std::wstring& subject,
                         const std::wstring& messageClass);
    HRESULT SendResponse(const mapi::Pointer<IMessage>& entry, IMsgStore* store);

    // Recurrence

    const outlook::Reference* RecurringItem(Operation& operation);
    /// Where an open occurrence is held: an appointment's while one is current, otherwise a task's.
    outlook::Reference& Occurrence() {
        return m_objAppointmentItem ? m_objOccurrenceAppointment : m_objOccurrenceTask;
    }
    std::wstring SetRecurrenceType(const std::wstring& word, Operation& operation);
    void EditBlobToWeekdays();
    void SaveOccurrences();

    // Extensions

    std::wstring AddToFolderFields(const std::wstring& name, long type, Operation& operation);
    void AppendMember(const SBinary& entryId);
    outlook::Reference AddressEntries();

    // Mail in one call

    void SetMailField(const wchar_t* field, const ScriptText& data, const wchar_t* failureLine);
    bool AttachFiles(const std::vector<std::wstring>& paths);

    // Attachments

    HRESULT OpenAttachment(std::int32_t index, mapi::Pointer<IAttach>& attachment);
    std::wstring WriteAttachment(const std::wstring& path, std::int32_t index, Operation& operation);
    std::wstring WriteMsgFile(IMessage* message, const std::wstring& path, Operation& operation);

    // Fields

    bool BeginFieldOperation();
    bool HasRecordOf(std::span<const ItemKind> kinds);
    std::wstring Written(bool written, Operation& operation);
    std::wstring ReadRecordField(const std::wstring& name, Operation& operation);
    /// A field that goes to the open occurrence, exception or pattern; none when nothing of the kind takes
    /// it.
    std::optional<std::wstring> ReadRecurrenceField(const std::wstring& name);
    std::optional<std::wstring> WriteRecurrenceField(const std::wstring& name, const std::wstring& data,
                                                     Operation& operation);
    std::wstring ReadItemField(const Vocabulary& vocabulary, const outlook::Reference& item,
                               const std::wstring& name);
    bool WriteItemField(const Vocabulary& vocabulary, const outlook::Reference& item,
                        const std::wstring& name, const std::wstring& data);
};

} // namespace varden
