// What tasks learn from the messages about them.
#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/items/Sending.h"
#include "standin/outlook/items/TaskDates.h"
#include "standin/outlook/tasks/Assignments.h"
#include "standin/outlook/tasks/TaskProperties.h"

#include <algorithm>

namespace standin::outlook::tasks {
namespace {

using mailbox::Content;
using mailbox::OpenMessage;

/// The task of the user's that has the same id; null for none.
std::shared_ptr<mailbox::Message> FindTask(const OpenMessage& message) {
    const auto id = ReadAs<mailbox::Bytes>(message, kGlobalId);
    mailbox::Folder& tasks = OwnFolder(mailbox::kTasks);
    if (!id || id->empty())
        return nullptr;
    for (const mailbox::Message* each : tasks.Messages())
        if (ReadAs<mailbox::Bytes>(*each, kGlobalId) == id)
            return tasks.FindMessage(each->Id());
    return nullptr;
}

/// The task within the message; null for none.
std::shared_ptr<const Content> TaskIn(const OpenMessage& message) {
    for (const mailbox::AttachmentPtr& each : message.Attachments())
        if (each->embedded &&
            &KindOfClass(each->embedded->properties.GetOr<PR_MESSAGE_CLASS_W>(L"")) == &kTaskItem)
            return each->embedded;
    return nullptr;
}

std::wstring SenderOf(const OpenMessage& message) {
    return message.Get<PR_SENT_REPRESENTING_NAME_W>().value_or(L"");
}

/// The copy of whoever is asked to do it: it remembers who asked, and is the user's.
void MakeAssigneesCopy(OpenMessage& task, const OpenMessage& request) {
    WriteValue(task, kMode, kRequested);
    WriteValue(task, kOwnership, kAssigneesCopy);
    WriteValue(task, kAcceptance, kUnknown);
    WriteValue(task, kState, kStateAssignee);
    WriteValue(task, kHistory, kHistoryNone);
    WriteValue(task, kCreatedHere, false);
    WriteValue(task, kAssigner, SenderOf(request));
    if (const auto id = ReadAs<mailbox::Bytes>(request, kGlobalId))
        WriteValue(task, kGlobalId, *id);
    if (const auto user = CurrentUser())
        WriteValue(task, kOwner, user->Name());
    if (const auto assigner = ReadPerson(request, kSentRepresentingTags))
        WritePerson(task, kSentRepresentingTags, *assigner);
}

ComPtr<ItemObject> TakeRequest(const OpenMessage& request, bool addToTaskList) {
    if (const auto known = FindTask(request))
        return OpenItem(*known);
    const std::shared_ptr<const Content> embedded = TaskIn(request);
    if (!embedded)
        throw Failure(MAPI_E_NOT_FOUND, L"The request has no task.");
    mailbox::Folder& tasks = OwnFolder(mailbox::kTasks);
    Content content = mailbox::RemapContent(*embedded, request.Names(), tasks.Names());
    content.recipients.clear();
    for (const mailbox::PropertyTag tag : {PR_CREATION_TIME, PR_LAST_MODIFICATION_TIME, PR_SEARCH_KEY})
        content.properties.Remove(tag);
    std::shared_ptr<OpenMessage> message;
    Check(tasks.CreateMessage(std::move(content), message));
    MakeAssigneesCopy(*message, request);
    ComPtr<ItemObject> item = ItemFor(std::move(message));
    if (addToTaskList)
        item->Save();
    return item;
}

void TakeAcceptance(OpenMessage& task, const OpenMessage& answer) {
    WriteValue(task, kMode, kAccept);
    WriteValue(task, kAcceptance, kAcceptedByAssignee);
    WriteValue(task, kHistory, kHistoryAccepted);
    WriteValue(task, kOwner, SenderOf(answer));
}

void TakeRejection(OpenMessage& task, const OpenMessage&) {
    WriteValue(task, kMode, kDecline);
    WriteValue(task, kAcceptance, kDeclinedByAssignee);
    WriteValue(task, kState, kStateRejected);
    WriteValue(task, kHistory, kHistoryRejected);
}

/// How far the assignee is with it.
void TakeUpdate(OpenMessage& task, const OpenMessage& update) {
    const std::shared_ptr<const Content> embedded = TaskIn(update);
    if (!embedded)
        return;
    const Content content = mailbox::RemapContent(*embedded, update.Names(), task.Names());
    for (const StoredProperty* stored :
         {&kStatus, &kFractionDone, &kComplete, &kActualEffort, &kEstimatedEffort, &kTaskStartDate,
          &kTaskDueDate, &kTaskDateCompleted})
        if (const mailbox::Value* value = content.properties.Find(TagOf(task, *stored, true)))
            WriteValue(task, *stored, *value);
    WriteValue(task, kHistory, kHistoryChanged);
}

struct Answer {
    const ItemKind* kind;
    void (*take)(OpenMessage& task, const OpenMessage& answer);
};

constexpr Answer kAnswers[] = {
    {&kTaskRequestAcceptItem, TakeAcceptance},
    {&kTaskRequestDeclineItem, TakeRejection},
    {&kTaskRequestUpdateItem, TakeUpdate},
};

} // namespace

ComPtr<ItemObject> AssociatedTask(ItemObject& item, const Arguments& arguments) {
    const auto answer = std::ranges::find(kAnswers, &item.ItemKindOf(), &Answer::kind);
    if (answer == std::end(kAnswers))
        return TakeRequest(item.Message(), arguments.Flag(0));
    const std::shared_ptr<mailbox::Message> known = FindTask(item.Message());
    if (!known)
        return nullptr;
    ComPtr<ItemObject> task = OpenItem(*known);
    if (ReadAs<std::int32_t>(task->Message(), kOwnership) != kAssignersCopy)
        return task;
    answer->take(task->Message(), item.Message());
    WriteValue(task->Message(), kLastUpdate, mailbox::Now());
    task->Save();
    return task;
}

} // namespace standin::outlook::tasks
