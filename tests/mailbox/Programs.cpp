// A process that saves until it is ended, and one that writes messages for other readers.
#include "tests/mailbox/Programs.h"

#include "standin/mailbox/MailboxFolder.h"
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "tests/mailbox/SavedRounds.h"
#include "tests/mailbox/Support.h"

namespace standin::mailbox::test {
namespace {

void Attach(OpenMessage& message, const std::wstring& fileName, Bytes bytes) {
    std::shared_ptr<OpenAttachment> attachment;
    message.CreateAttachment(attachment);
    attachment->Write(PR_ATTACH_METHOD, std::int32_t{ATTACH_BY_VALUE});
    attachment->Write(PR_ATTACH_LONG_FILENAME_W, fileName);
    attachment->Write(PR_ATTACH_DATA_BIN, std::move(bytes));
    attachment->Save();
}

void AttachMessage(OpenMessage& message, const std::wstring& subject) {
    std::shared_ptr<OpenAttachment> attachment;
    std::shared_ptr<OpenMessage> inner;
    message.CreateAttachment(attachment);
    attachment->Write(PR_ATTACH_METHOD, std::int32_t{ATTACH_EMBEDDED_MSG});
    attachment->Write(PR_DISPLAY_NAME_W, subject);
    attachment->Embedded(true, Access::Modify, inner);
    inner->Write(PR_MESSAGE_CLASS_W, std::wstring(L"IPM.Note"));
    inner->Write(PR_SUBJECT_W, subject);
    inner->Write(PR_BODY_W, std::wstring(L"The text of the inner message."));
    inner->Save();
    attachment->Save();
}

HRESULT WriteMessage(const Message& message, const std::filesystem::path& path) {
    Bytes file;
    const HRESULT status = WriteMsgBytes(message.Current(), message.Names(), file);
    WriteFile(path, file);
    return status;
}

} // namespace

int SaveWithoutEnd(const wchar_t* folder) {
    LoadReport report;
    const auto mailbox = OpenMailboxFolder(folder, report);
    if (!mailbox)
        return 1;
    Folder& inbox = FolderNamed(*mailbox, L"Inbox");
    std::shared_ptr<OpenMessage> message;
    inbox.OpenMessage(*inbox.Messages().at(0), Access::Modify, message);
    for (int round = 0;; ++round) {
        message->Write(PR_SUBJECT_W, SubjectOfRound(round));
        message->Write(PR_BODY_W, BodyOfRound(round));
        if (FAILED(message->Save()))
            return 1;
    }
}

int WriteMessages(const wchar_t* folder) {
    const auto mailbox = MakeSampleWorld();
    const auto message = SaveMessage(FolderNamed(*mailbox, L"Outbox"), L"RE: Grüße aus Köln");
    message->Write(PR_BODY_W, std::wstring(L"First line\r\nZweite Zeile: äöü\r\n"));
    AddRecipient(*message, L"Front Desk");
    AddRecipient(*message, L"zoe@example.org", MAPI_CC);
    Attach(*message, L"numbers.bin", Bytes{0, 1, 2, 3, 254, 255});
    AttachMessage(*message, L"The inner subject");
    if (FAILED(mailbox->Submit(*message)))
        return 1;
    const Message& arrived = *FolderNamed(*mailbox, L"Inbox").Messages().at(0);
    return FAILED(WriteMessage(arrived, std::filesystem::path(folder) / "mail.msg"));
}

} // namespace standin::mailbox::test
