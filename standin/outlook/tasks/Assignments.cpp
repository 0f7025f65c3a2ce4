// Assigning tasks, and sending requests and answers.
#include "standin/outlook/tasks/Assignments.h"

#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "standin/mapi/Bodies.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/items/Sending.h"
#include "standin/outlook/objects/Attachments.h"
#include "standin/outlook/objects/Recipients.h"
#include "standin/outlook/tasks/TaskProperties.h"

#include <algorithm>
#include <cmath>

namespace standin::outlook::tasks {
namespace {

using mailbox::OpenMessage;

std::int32_t NumberOf(const OpenMessage& task, const StoredProperty& stored) {
    return ReadAs<std::int32_t>(task, stored).value_or(0);
}

std::wstring SubjectOf(const OpenMessage& task) {
    return task.Get<PR_SUBJECT_W>().value_or(L"");
}

std::wstring UserName() {
    const auto user = CurrentUser();
    return user ? user->Name() : std::wstring();
}

bool WasSent(const OpenMessage& task) {
    return NumberOf(task, kHistory) == kHistoryAssigned;
}

/// Where a task stands between the two.
struct Standing {
    std::int32_t mode, ownership, acceptance, state;
};

void Write(OpenMessage& task, const Standing& standing) {
    WriteValue(task, kMode, standing.mode);
    WriteValue(task, kOwnership, standing.ownership);
    WriteValue(task, kAcceptance, standing.acceptance);
    WriteValue(task, kState, standing.state);
}

/// What is sent, by the mode of the task.
struct MessageKind {
    std::int32_t mode;
    const wchar_t* messageClass;
    const wchar_t* prefix;
};

constexpr MessageKind kMessages[] = {
    {kRequested, L"IPM.TaskRequest", L"Task Request:"},
    {kAccept, L"IPM.TaskRequest.Accept", L"Task Accepted:"},
    {kDecline, L"IPM.TaskRequest.Decline", L"Task Declined:"},
};

/// Who gets it: a request those whom the task is given to, an answer whoever gave it.
std::vector<mailbox::PropertyBag> ReceiversOf(const OpenMessage& task, std::int32_t mode) {
    std::vector<mailbox::PropertyBag> receivers;
    if (mode != kRequested) {
        if (const auto assigner = ReadPerson(task, kSentRepresentingTags))
            receivers.push_back(assigner->RecipientProperties());
        return receivers;
    }
    for (const mailbox::PropertyBag& row : task.Recipients())
        if (row.GetOr<PR_RECIPIENT_TYPE>(MAPI_TO) == std::int32_t{MAPI_TO})
            receivers.push_back(row);
    return receivers;
}

std::wstring BodyOf(const OpenMessage& task) {
    mailbox::Value body;
    mapi::ReadBody(task, PR_BODY_W, body);
    const auto* text = std::get_if<std::wstring>(&body);
    return text ? *text : std::wstring();
}

/// The message, with the task in it ([MS-OXOTASK] 2.2.3).
std::shared_ptr<OpenMessage> MakeMessage(const OpenMessage& task, const MessageKind& kind) {
    constexpr StoredProperty kHideAttachments{.tag = PT_BOOLEAN, .set = &kPsCommon, .number = 0x8514};
    constexpr std::int32_t kNoIcon = -1;
    std::shared_ptr<OpenMessage> message;
    Check(OwnFolder(mailbox::kOutbox).CreateMessage(false, message));
    Check(message->Write(PR_MESSAGE_CLASS_W, std::wstring(kind.messageClass)));
    Check(message->Write(PR_SUBJECT_PREFIX_W, std::wstring(kind.prefix) + L" "));
    Check(message->Write(PR_SUBJECT_W, std::wstring(kind.prefix) + L" " + SubjectOf(task)));
    Check(message->Write(mailbox::kPrIconIndex, kNoIcon));
    Check(mapi::WriteBody(*message, PR_BODY_W, BodyOf(task)));
    WriteValue(*message, kMode, kind.mode);
    WriteValue(*message, kGlobalId, ReadAs<mailbox::Bytes>(task, kGlobalId).value_or(mailbox::Bytes()));
    WriteValue(*message, kHideAttachments, true);
    AttachMessage(*message, task.Current(), task.Names(), SubjectOf(task));
    return message;
}

void NoteRequest(OpenMessage& task) {
    WriteValue(task, kOwner, RecipientText(task, MAPI_TO));
    WriteValue(task, kHistory, kHistoryAssigned);
    WriteValue(task, kLastUpdate, mailbox::Now());
}

std::wstring PercentText(const OpenMessage& task) {
    const double percent = ReadAs<double>(task, kFractionDone).value_or(0) * 100;
    return std::to_wstring(std::lround(percent)) + L"%";
}

} // namespace

ComPtr<ItemObject> Assign(ItemObject& item) {
    OpenMessage& task = item.Message();
    if (NumberOf(task, kMode) == kRequested && NumberOf(task, kOwnership) == kAssignersCopy)
        return ComPtr<ItemObject>(&item);
    Write(task, {kRequested, kAssignersCopy, kUnknown, kStateAssigner});
    WriteValue(task, kLastDelegate, UserName());
    if (!ReadValue(task, kGlobalId))
        WriteValue(task, kGlobalId, mailbox::BytesOf(mailbox::NewGuid()));
    return ComPtr<ItemObject>(&item);
}

void CancelResponseState(ItemObject& item) {
    OpenMessage& task = item.Message();
    if (WasSent(task))
        return;
    if (NumberOf(task, kOwnership) == kAssignersCopy)
        Write(task, {kSimple, kNewTask, kNotDelegated, kStateOwn});
    else if (NumberOf(task, kOwnership) == kAssigneesCopy && NumberOf(task, kHistory) == kHistoryNone)
        Write(task, {kRequested, kAssigneesCopy, kUnknown, kStateAssignee});
}

ComPtr<ItemObject> Respond(ItemObject& item, const Arguments& arguments) {
    constexpr std::size_t kResponse = 0, kNoUi = 1, kDialog = 2;
    const std::int32_t response = arguments.Number(kResponse);
    if (response < kRequested || response > kDecline)
        throw InvalidValue();
    if (!arguments.Flag(kNoUi, false) && arguments.Flag(kDialog, false))
        throw NotBuilt(L"Respond with a dialog");
    if (response == kRequested)
        return Assign(item);
    OpenMessage& task = item.Message();
    if (NumberOf(task, kOwnership) != kAssigneesCopy)
        throw Failure(MAPI_E_NO_SUPPORT, L"Nobody asked you to do this task.");
    const std::int32_t acceptance = response == kAccept ? kAcceptedByAssignee : kDeclinedByAssignee;
    Write(task, {response, kAssigneesCopy, acceptance, kStateAssignee});
    WriteValue(task, kAccepted, response == kAccept);
    return ComPtr<ItemObject>(&item);
}

void SendTask(ItemObject& item) {
    OpenMessage& task = item.Message();
    const auto kind = std::ranges::find(kMessages, NumberOf(task, kMode), &MessageKind::mode);
    const bool isOfAssigner = NumberOf(task, kOwnership) == kAssignersCopy;
    if (kind == std::end(kMessages) || isOfAssigner != (kind->mode == kRequested))
        throw Failure(MAPI_E_NO_SUPPORT, L"The task is not assigned.");
    if (!ResolveAll(RecipientsOf(item.Shared())))
        throw Failure(E_FAIL, L"Outlook does not recognize one or more names.");
    const std::vector<mailbox::PropertyBag> receivers = ReceiversOf(task, kind->mode);
    if (receivers.empty())
        throw NoRecipients();
    if (kind->mode == kRequested)
        NoteRequest(task);
    else
        WriteValue(task, kHistory, kind->mode == kAccept ? kHistoryAccepted : kHistoryRejected);
    item.Save();
    const std::shared_ptr<OpenMessage> message = MakeMessage(task, *kind);
    for (const mailbox::PropertyBag& receiver : receivers)
        Check(message->AddRecipient(receiver));
    SubmitMessage(*message);
}

ComPtr<ItemObject> StatusReport(ItemObject& item) {
    constexpr const wchar_t* kStatusTexts[] = {L"Not started", L"In progress", L"Completed",
                                               L"Waiting on someone else", L"Deferred"};
    OpenMessage& task = item.Message();
    const auto status = static_cast<std::size_t>(NumberOf(task, kStatus));
    ComPtr<ItemObject> report = NewItem(OwnFolder(mailbox::kDrafts), kMailItem.messageClass);
    OpenMessage& message = report->Message();
    Check(message.Write(PR_SUBJECT_W, L"Task Status Report: " + SubjectOf(task)));
    Check(mapi::WriteBody(message, PR_BODY_W,
                          L"-----Original Task-----\r\nSubject:\t" + SubjectOf(task) + L"\r\nStatus:\t" +
                              (status < std::size(kStatusTexts) ? kStatusTexts[status] : L"") +
                              L"\r\n% Complete:\t" + PercentText(task) + L"\r\n\r\n" + BodyOf(task)));
    ReplaceRecipients(message, MAPI_TO, RecipientText(task, MAPI_CC));
    return report;
}

} // namespace standin::outlook::tasks
