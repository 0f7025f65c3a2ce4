// A mailbox that a script works on, and the failures that it is told of.
#include "MailboxTest.h"

namespace varden::tests {

using namespace standin::mailbox;

namespace errors {

LastError Mapi(const std::wstring& text) {
    return {-1097, L"MAPI Subsystem error\r" + text};
}

LastError Denied(const std::wstring& text) {
    return Mapi(L"Error: 80070005\rMAPI_E_NO_ACCESS" + (text.empty() ? text : L"\r" + text));
}

LastError NotFound(const std::wstring& text) {
    return Mapi(L"Error: 8004010F\rMAPI_E_NOT_FOUND" + (text.empty() ? text : L"\r" + text));
}

LastError NoInterface(const std::wstring& text) {
    return Mapi(L"Error: 80004002\rMAPI_E_INTERFACE_NOT_SUPPORTED\r" + text);
}

} // namespace errors

std::shared_ptr<Message> MailboxTest::Find(const std::wstring& id) {
    return World().FindMessage(FromHex(id).value_or(Bytes()));
}

std::vector<std::wstring> MailboxTest::SubjectsIn(const std::wstring& path) {
    std::vector<std::wstring> subjects;
    for (const Message* message : At(path).Messages()) {
        subjects.push_back(message->Current().properties.GetOr<PR_SUBJECT_W>({}));
    }
    return subjects;
}

std::wstring MailboxTest::Add(const MessageToAdd& message, const std::wstring& folder) {
    return ToHex(AddMessage(At(folder), message)->EntryId());
}

std::shared_ptr<Message> MailboxTest::AddToInbox(Content content) {
    std::shared_ptr<Message> message;
    EXPECT_EQ(At(L"Inbox").Receive(std::move(content), false, message), S_OK);
    return message;
}

void MailboxTest::ExpectSuccess(const wchar_t* function, const Texts& arguments) {
    EXPECT_EQ(Call(function, arguments), L"0")
        << testing::PrintToString(function) << testing::PrintToString(LastErrorText());
}

void MailboxTest::ExpectFailure(const wchar_t* function, const Texts& arguments, const LastError& error) {
    ExpectFailure(function, arguments, error.code, error.text);
}

void MailboxTest::ExpectFailureLike(const wchar_t* function, const Texts& arguments,
                                    const LastError& beginning) {
    EXPECT_EQ(Call(function, arguments), kError);
    EXPECT_EQ(LastErrorCode(), beginning.code);
    EXPECT_EQ(LastErrorText().substr(0, beginning.text.size()), beginning.text);
}

void MailboxTest::ExpectFaults(const wchar_t* function, const Texts& arguments,
                               const std::vector<Fault>& faults) {
    for (const auto& [member, error, status, number] : faults) {
        SCOPED_TRACE(testing::PrintToString(member));
        Fail(member, status, number);
        ExpectFailure(function, arguments, error);
        EXPECT_TRUE(Varden().Watch().HasFailed());
    }
}

} // namespace varden::tests
