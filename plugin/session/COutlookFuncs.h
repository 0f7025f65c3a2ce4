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
/// record. Without a session every operation fails with -1001; with one it clears the last error first. A COM
/// failure that an operation doesn't name itself leaves it as _com_error.
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

    std::wstring OpenRootFolder(const ScriptText& name);
    std::wstring GetFirstRootFolder();
    std::wstring GetNextRootFolder();
    std::wstring OpenFolder(const ScriptText& path);
    std::wstring CreateFolder(const ScriptText& path, const ScriptText& module);
    std::wstring GetFirstFolder(const ScriptText& item);
    std::wstring GetNextFolder();
    std::wstring GetFolderID();
    std::wstring GetFolderType();
    std::wstring GetCurrentFolderName();
    std::wstring GetDefaultFolderName(const ScriptText& word);
    std::wstring OpenSharedFolder(const ScriptText& user, std::int32_t folder);

    // Records (records/)

    std::wstring NewRecord(const ScriptText& module);
    std::wstring OpenRecord(const ScriptText& idOrPath, RecordSource source);
    std::wstring GetFirstRecord();
    std::wstring GetNextRecord();
    std::wstring GetRecordCount();
    std::wstring FilterApply(const std::wstring& filter);
    /// Filters by last modification after a time stamp.
    std::wstring Search(const std::wstring& timeStamp);
    std::wstring SaveRecord(const ScriptText& option);
    std::wstring DeleteRecord(const ScriptText& entryId, const ScriptText& permanent);
    std::wstring DeleteCurrentRecord(bool permanent);
    std::wstring DeleteAllRecords(bool excludePrivate, bool excludeDistLists);
    std::wstring EmptyAllDeletedItems();
    std::wstring MoveRecord(const ScriptText& path);
    std::wstring Display(bool modal);
    std::wstring ReplyToMessage(const ScriptText& entryId, const ScriptText& to, const ScriptText& cc,
                                const ScriptText& bcc, const ScriptText& addedBody, bool keepAttachments);
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
    /// Reads one property. A tag without type bits reads whatever type is stored.
    HRESULT mapi_GetOneProp(ULONG tag, mapi::PropertyBlock& block, IMAPIProp* message);
    /// Reads a text of any length, without line feeds and without its last character. A missing property is
    /// an empty text and a success. On failure `text` holds the reason; with a null message it stays as it
    /// was.
    bool mapi_GetTextField(ULONG tag, std::wstring& text, IMessage* message);
    /// Reads a blob of the current message as hexadecimal text; compressed RTF as RTF, HTML as text. A
    /// missing property is an empty text and a success. On failure `text` holds the reason.
    bool mapi_GetBinaryField(ULONG tag, std::wstring& text, IMessage* message);
    /// The sender's address as the address book has it: SMTP, or else in its own form.
    HRESULT mapi_GetSenderEMailAddress(IMessage* message, std::wstring& text);
    /// The addresses of the message's recipients of one kind, "To", "Cc" or "Bcc", with ", " between. On
    /// failure the last error is set, and what was built so far stays in `fieldData`.
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
    HRESULT mapi_OpenFolderFromStoreProp(mapi::Pointer<IMAPIFolder>& folder, ULONG folderTag,
                                         IMsgStore* store);
    HRESULT mapi_NextOwnerApptId(long& id, IMAPIFolder* folder);
    HRESULT mapi_FinishMeetingMessage(IMessage& message, bool isUpdate);
    HRESULT mapi_CopyMeetingToCalendar(IMessage& meeting, IMsgStore* store, mapi::Pointer<IMessage>& entry);
    HRESULT mapi_CopyMeetingProps(IMessage& response, IMsgStore* store, IMessage& entry);
    HRESULT mapi_FinishMeetingResponse(IMessage& response);
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
    /// What the next meeting response answers: 2 tentative, 3 accepted, 4 declined.
    void SetPendingResponse(long response) { m_lMeetingResponse = response; }
    /// Makes the appointment of the current meeting the current record. "0", or "!!ERROR!!" with the last
    /// error set.
    std::wstring TakeAssociatedAppointment();

    // Recurrence (recurrence/)

    std::wstring OpenRecurrencePattern();
    std::wstring ClearRecurrencePattern();
    std::wstring RPCloseRecurrencePattern(bool save);
    std::wstring OpenRecurrenceOccurrence(const ScriptText& date);
    std::wstring DeleteRecurrenceOccurrence(const ScriptText& date);
    std::wstring RPCloseOccurrenceItem(bool save);
    std::wstring GetRecurPatternExceptionCount();
    std::wstring RPOpenFirstException();
    std::wstring RPOpenNextException();
    std::wstring RPOpenExceptionAt(std::int32_t index);
    std::wstring RPEIGetPropertyCount();
    std::wstring RPEIOpenPropertyAt(std::int32_t index);
    std::wstring RPEIGetPropertyData(const std::wstring& key);
    std::wstring OpenExceptItemProps();
    // A field of the open pattern, and one of the open exception.
    std::wstring SetRecurPatternValue(const std::wstring& name, const std::wstring& data);
    std::wstring GetRecurPatternValue(const std::wstring& name);
    std::wstring GetExceptValue(const std::wstring& name);

    // Extensions of items (extensions/)

    std::wstring AddAttachment(const std::wstring& path, const std::wstring& name);
    std::wstring GetAttachmentName(std::int32_t index, bool truncated);
    std::wstring SaveAttachment(const ScriptText& path, std::int32_t index);
    std::wstring GetAttachmentCount();
    std::wstring GetAttachmentSize(std::int32_t index);
    std::wstring SetCustonFieldData(const ScriptText& fieldName, const ScriptText& data,
                                    const std::wstring& type);
    std::wstring GetCustomFieldData(const ScriptText& fieldName);
    std::wstring CreateCustomField(const ScriptText& fieldName, const ScriptText& type);
    std::wstring AddOneOffDistListMember(const ScriptText& name, const ScriptText& address,
                                         const ScriptText& type);
    std::wstring AddDistListMember(const ScriptText& name);
    std::wstring GALCount();
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
    void NoteFolder(IMessage& entry);

    // Recurrence

    const outlook::Reference* RecurringItem(Operation& operation);
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
    bool SetContacts(const std::wstring& data);
    std::wstring Written(bool written, Operation& operation);
    std::wstring ReadRecordField(const std::wstring& name);
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
