// Tests of what a script does to a mailbox that it has logged on to.
#pragma once

#include "ScriptTest.h"

namespace varden::tests {

/// What VARD_GetLastError tells of a failure: a number, and a text.
struct LastError {
    int code;
    std::wstring text;
};

/// The failures that are told by many functions.
namespace errors {

inline const LastError kRootNotFound{-1003, L"Cannot Find Root Folder"};
inline const LastError kFolderNotFound{-1015, L"Folder Not Found"};
inline const LastError kInvalidPath{-1016, L"Invalid Path or File Name"};
inline const LastError kNoRecord{-1023, L"Item operation called without opening/creating a record"};
inline const LastError kInvalidId{-1024, L"Invalid Outlook ID"};
inline const LastError kNotSaved{-1025, L"Unable to save record"};
inline const LastError kNoFolder{-1026, L"Must navigate to a folder before operation"};
inline const LastError kNoRecords{-1028, L"Unable to find records"};
inline const LastError kNoMessage{-1038, L"Unable to locate record\rno current message selected"};
inline const LastError kUnknownKind{-1095, L"Item is not supported in this version of the plug-in"};
inline const LastError kUnhandled{1, L"Unhandled exception in function"};

/// MAPI's, with what follows the words that all of them begin with.
LastError Mapi(const std::wstring& text);
/// Those of a call that answered E_ACCESSDENIED, MAPI_E_NOT_FOUND, or had no such interface.
LastError Denied(const std::wstring& text = {});
LastError NotFound(const std::wstring& text = {});
LastError NoInterface(const std::wstring& text = {});

} // namespace errors

/// A call into Outlook or MAPI that fails, and what a script is told of it.
struct Fault {
    const wchar_t* member;
    LastError error;
    HRESULT status = E_ACCESSDENIED;
    std::uint64_t number = 1; ///< which call of the member
};
/// A call that answers E_ACCESSDENIED, and the text that a script is told.
inline Fault Denied(const wchar_t* member, const std::wstring& text, std::uint64_t number = 1) {
    return {member, errors::Denied(text), E_ACCESSDENIED, number};
}

/// A test that is logged on to the sample profile.
class MailboxTest : public ScriptTest {
protected:
    explicit MailboxTest(const wchar_t* file = kShippedPlugin) : ScriptTest(file) {}

    void SetUp() override { LogOn(); }

    standin::mailbox::Folder& At(const std::wstring& path, const wchar_t* store = L"Front Desk") {
        return FolderAt(World(), store, path);
    }
    /// The message with this entry id; null when there is none.
    std::shared_ptr<standin::mailbox::Message> Find(const std::wstring& id);
    /// The subjects of the messages in a folder.
    std::vector<std::wstring> SubjectsIn(const std::wstring& path);
    /// Puts the message into a folder; gives its entry id.
    std::wstring Add(const MessageToAdd& message, const std::wstring& folder = L"Inbox");
    std::shared_ptr<standin::mailbox::Message> AddToInbox(standin::mailbox::Content content);

    // What scripts do before the call that matters; a failure is a failure of the test.
    void Open(const std::wstring& folder) { ExpectSuccess(L"VARD_OpenFolder", {folder}); }
    void OpenRecord(const std::wstring& id) { ExpectSuccess(L"VARD_OpenRecord", {id}); }
    void New(const wchar_t* module) { ExpectSuccess(L"VARD_NewRecord", {module}); }

    std::wstring Get(const wchar_t* field) { return Call(L"VARD_GetFieldData", {field}); }
    std::wstring Set(const wchar_t* field, const std::wstring& data) {
        return Call(L"VARD_SetFieldData", {field, data});
    }

    /// The `number`-th call of this member from now on fails: "MailItem::Delete".
    void Fail(const wchar_t* member, HRESULT status = E_ACCESSDENIED, std::uint64_t number = 1) {
        Varden().Watch().FailMember(member, status, number);
    }

    void ExpectSuccess(const wchar_t* function, const Texts& arguments);
    using ScriptTest::ExpectFailure;
    void ExpectFailure(const wchar_t* function, const Texts& arguments, const LastError& error);
    /// For what Outlook tells of itself only the beginning of the text counts.
    void ExpectFailureLike(const wchar_t* function, const Texts& arguments, const LastError& beginning);
    /// Each fault in turn is what the call fails of.
    void ExpectFaults(const wchar_t* function, const Texts& arguments, const std::vector<Fault>& faults);
    void ExpectNoCurrentRecord() { ExpectFailure(L"VARD_GetFieldData", {L"Subject"}, errors::kNoMessage); }
};

} // namespace varden::tests
