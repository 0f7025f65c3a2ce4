// Tasks that one person gives to another: assigning, answering, sending what goes between the two, and what
// each side's task learns from it ([MS-OXOTASK] 3.1.4).
#pragma once

#include "standin/outlook/items/Item.h"

namespace standin::outlook::tasks {

/// Assign: the task is another's to do, from when it is sent on. Gives the task itself.
ComPtr<ItemObject> Assign(ItemObject& item);
/// CancelResponseState: an assignment or answer that has not gone out is taken back.
void CancelResponseState(ItemObject& item);
/// Respond: the answer to a task that the user was asked to do; Send sends it. Raises E_INVALIDARG for no
/// answer, MAPI_E_NO_SUPPORT for a task of the user's own, E_NOTIMPL where the user is to be asked.
ComPtr<ItemObject> Respond(ItemObject& item, const Arguments& arguments);
/// Send: the request for a task that is assigned, or the answer. The task stays. Raises MAPI_E_NO_SUPPORT for
/// any other, MAPI_E_NO_RECIPIENTS, and E_FAIL for names that nobody knows.
void SendTask(ItemObject& item);
/// StatusReport: a mail about the task, unsent, to those who want to hear of it.
ComPtr<ItemObject> StatusReport(ItemObject& item);

/// GetAssociatedTask of the four messages. A request gives the task, which is saved in the task list with its
/// first argument; the others bring the user's task up to date, or give nothing where there is none.
ComPtr<ItemObject> AssociatedTask(ItemObject& item, const Arguments& arguments);

} // namespace standin::outlook::tasks
