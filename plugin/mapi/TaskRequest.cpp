// A task request built by hand: a message with the task embedded as an attachment. No function calls for it;
// it stands ready beside the field "Assign".
#include "session/COutlookFuncs.h"

#include "frame/PlugInLog.h"
#include "mapi/InterfaceIds.h"
#include "mapi/PropertyCatalogue.h"
#include "mapi/Steps.h"
#include "mapi/Tags.h"

#include <array>

namespace varden {

namespace {

namespace tag = mapi::tag;

constexpr long kTaskRequestIcon = 1284;
constexpr long kEmbeddedMethod = 5;

SPropValue LongValue(ULONG longTag, long number) {
    SPropValue property{};
    property.ulPropTag = longTag;
    property.Value.l = number;
    return property;
}

SPropValue TruthValue(ULONG truthTag, bool truth) {
    SPropValue property{};
    property.ulPropTag = truthTag;
    property.Value.b = truth;
    return property;
}

SPropValue TextValue(ULONG textTag, const wchar_t* text) {
    SPropValue property{};
    property.ulPropTag = textTag;
    property.Value.lpszW = const_cast<LPWSTR>(text);
    return property;
}

template <std::size_t Count>
HRESULT SetAll(IMAPIProp& object, std::array<SPropValue, Count> properties) {
    return object.SetProps(static_cast<ULONG>(Count), properties.data(), nullptr);
}

/// What tells the assignee's side which task is meant.
HRESULT CopyTaskIdentity(IMessage& task, IMessage& request) {
    SizedSPropTagArray(3, tags) = {3,
                                   {mapi_TypedTag(L"pidLidTaskGlobalID", PT_BINARY, task),
                                    mapi_TypedTag(L"pidLidTaskMode", PT_LONG, task), tag::kDisplayTo}};
    ULONG count = 0;
    mapi::Block<SPropValue> values;
    HRESULT status =
        task.GetProps(reinterpret_cast<LPSPropTagArray>(&tags), MAPI_UNICODE, &count, values.Out());
    if (SUCCEEDED(status)) {
        status = request.SetProps(count, values.get(), nullptr);
    }
    return FAILED(status) ? status : request.SaveChanges(KEEP_OPEN_READWRITE);
}

HRESULT StampRequest(IMessage& request) {
    SPropValue noDue{};
    noDue.ulPropTag = mapi_TypedTag(L"Flag Due By", PT_SYSTIME, request);
    constexpr ULONG processed = 0x7D01000B; // [MS-OXPROPS] PidTagProcessed
    const HRESULT status =
        SetAll(request, std::array{TextValue(tag::kMessageClass, L"IPM.TaskRequest"),
                                   TruthValue(processed, false), LongValue(tag::kFlagIcon, kTaskRequestIcon),
                                   TruthValue(mapi_TypedTag(L"Use TNEF", PT_BOOLEAN, request), true),
                                   TruthValue(mapi_TypedTag(L"No Aging", PT_BOOLEAN, request), false),
                                   LongValue(mapi_TypedTag(L"Remind Beforehand", PT_LONG, request), 0), noDue,
                                   TruthValue(mapi_TypedTag(L"Reminder", PT_BOOLEAN, request), false),
                                   TruthValue(mapi_TypedTag(L"Hide Attachments", PT_BOOLEAN, request), true),
                                   TruthValue(mapi_TypedTag(L"Private", PT_BOOLEAN, request), false)});
    return FAILED(status) ? status : request.SaveChanges(KEEP_OPEN_READWRITE);
}

/// The task as an embedded message, all of it but its entry id.
HRESULT EmbedTask(IMessage& task, IMessage& request, const wchar_t* subject) {
    constexpr ULONG renderingPosition = 0x370B0003;
    constexpr ULONG attachmentHidden = 0x7FFE000B;
    constexpr ULONG attachmentContactPhoto = 0x7FFF000B;
    constexpr ULONG attachmentFlags = 0x7FFD0003;
    constexpr ULONG attachmentLinkId = 0x7FFA0003;
    constexpr ULONG attachFlags = 0x37140003;
    constexpr ULONG attachEncoding = 0x37020102;
    ULONG number = 0;
    mapi::Pointer<IAttach> attachment;
    HRESULT status = request.CreateAttach(&mapi::kIidAttachment, 0, &number, attachment.Out());
    if (FAILED(status)) {
        return status;
    }
    SPropValue noEncoding{};
    noEncoding.ulPropTag = attachEncoding;
    status =
        SetAll(attachment.Required(),
               std::array{LongValue(tag::kAttachMethod, kEmbeddedMethod), LongValue(renderingPosition, -1),
                          TruthValue(attachmentHidden, true), TruthValue(attachmentContactPhoto, false),
                          LongValue(attachmentFlags, 0), LongValue(attachmentLinkId, 0),
                          LongValue(attachFlags, 0), TextValue(tag::kDisplayName, subject), noEncoding});
    if (FAILED(status)) {
        return status;
    }
    mapi::Pointer<IMessage> embedded;
    status = attachment->OpenProperty(tag::kAttachDataObject, &mapi::kIidMessage, 0,
                                      MAPI_CREATE | MAPI_MODIFY, embedded.OutAs<IUnknown>());
    if (FAILED(status)) {
        return status;
    }
    SizedSPropTagArray(1, excluded) = {1, {tag::kEntryId}};
    status = task.CopyTo(0, nullptr, reinterpret_cast<LPSPropTagArray>(&excluded), 0, nullptr,
                         &mapi::kIidMessage, embedded.Get(), 0, nullptr);
    if (SUCCEEDED(status)) {
        status = embedded->SaveChanges(FORCE_SAVE);
    }
    embedded.Release();
    if (SUCCEEDED(status)) {
        status = attachment->SaveChanges(FORCE_SAVE);
    }
    attachment.Release();
    return FAILED(status) ? status : request.SaveChanges(KEEP_OPEN_READWRITE);
}

} // namespace

HRESULT COutlookFuncs::mapi_CreateTaskRequest(IMessage* task, IMsgStore* store,
                                              mapi::Pointer<IMessage>& request) {
    const LoggedOperation log(L"mapi_CreateTaskRequest");
    HRESULT status = CreateInOutbox(request, store);
    if (FAILED(status)) {
        return status;
    }
    mapi::Block<SPropValue> sentItems;
    status = mapi::GetStoreProperty(*store, tag::kSentmailEntryId, sentItems);
    // The property belongs to messages: most stores have none.
    const bool isThere = status != MAPI_E_NOT_FOUND;
    if (SUCCEEDED(status)) {
        status = request->SetProps(1, sentItems.get(), nullptr);
    }
    if (FAILED(status) && isThere) {
        return status;
    }
    mapi::Block<SPropValue> subject;
    status = mapi::GetOneProp(&m_pMessage.Required(), tag::kSubject, subject.Out());
    if (FAILED(status)) {
        return status;
    }
    mapi::AddressList list;
    status = mapi_AddrListFromMessage(task, list);
    if (SUCCEEDED(status) && list) {
        status = request->ModifyRecipients(MODRECIP_ADD, list.get());
    }
    if (SUCCEEDED(status)) {
        status = CopyTaskIdentity(mapi::Present(task), request.Required());
    }
    if (SUCCEEDED(status)) {
        status = StampRequest(request.Required());
    }
    const wchar_t* text = subject->Value.lpszW;
    if (SUCCEEDED(status)) {
        status =
            SetAll(request.Required(), std::array{TextValue(tag::kBody, text), TextValue(tag::kSubject, text),
                                                  TextValue(tag::kConversationTopic, text)});
    }
    return FAILED(status) ? status : EmbedTask(*task, request.Required(), text);
}

} // namespace varden
