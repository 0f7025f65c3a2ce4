// Showing the current record, passing a message on, and writing a record to a file.
#include "session/COutlookFuncs.h"

#include "ItemMessage.h"
#include "KindOrders.h"

#include "frame/ErrorCodes.h"
#include "mapi/Tags.h"
#include "session/Operation.h"

#include <utility>

namespace varden {

namespace {

constexpr std::wstring_view kMsgExtension = L".msg";

bool EndsWithMsg(const std::wstring& path) {
    return path.size() >= kMsgExtension.size() &&
           EqualIgnoringCase(std::wstring_view(path).substr(path.size() - kMsgExtension.size()),
                             kMsgExtension);
}

/// Behind the opening tag of the body; at the very start of a text without one.
std::size_t PlaceInHtml(const std::wstring& html) {
    std::size_t tag = html.find(L"<body");
    if (tag == std::wstring::npos) {
        tag = html.find(L"<BODY");
    }
    const std::size_t end = tag == std::wstring::npos ? tag : html.find(L'>', tag);
    return end == std::wstring::npos ? 0 : end + 1;
}

/// Behind the first paragraph mark; at the very start of a text without one.
std::size_t PlaceInRtf(const std::wstring& rtf) {
    constexpr std::wstring_view paragraph = L"\\par";
    const std::size_t mark = rtf.find(paragraph);
    return mark == std::wstring::npos ? 0 : mark + paragraph.size();
}

/// Writes RTF in place of the message's own, and saves the message.
void StoreRtf(IMessage& message, const std::wstring& rtf) {
    constexpr ULONG writeRtf = 0x80000001;
    mapi::Pointer<IStream> compressed;
    mapi::Pointer<IStream> stream;
    HRESULT status = message.OpenProperty(mapi::tag::kRtfCompressed, &IID_IStream, STGM_WRITE, MAPI_MODIFY,
                                          compressed.OutAs<IUnknown>());
    if (SUCCEEDED(status)) {
        status = mapi::WrapCompressedRtfStream(compressed.Get(), writeRtf, stream.Out());
    }
    if (SUCCEEDED(status)) {
        const ULONG bytes = static_cast<ULONG>(rtf.size() * sizeof(wchar_t));
        ULARGE_INTEGER size{};
        size.QuadPart = bytes;
        stream->SetSize(size);
        stream->Write(rtf.data(), bytes, nullptr);
        stream->Commit(STGC_DEFAULT);
        compressed->Commit(STGC_DEFAULT);
    }
    stream.Release();
    compressed.Release();
    WINBOOL updated = FALSE;
    mapi::RtfSync(&message, RTF_SYNC_RTF_CHANGED, &updated);
    message.SaveChanges(KEEP_OPEN_READWRITE);
}

} // namespace

std::wstring COutlookFuncs::Display(bool modal) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"Display");
    const outlook::Reference* item = FirstHeld(kinds::kDisplayed);
    if (!item) {
        return operation.Fail(error::kNoRecord);
    }
    item->Call(L"Display", {outlook::BoolValue(modal)});
    return kSuccessText;
}

/// In spite of its name the message is forwarded. The new mail is the current record afterwards, unsent.
std::wstring COutlookFuncs::ReplyToMessage(const ScriptText& entryId, const ScriptText& to,
                                           const ScriptText& cc, const ScriptText& bcc,
                                           const ScriptText& addedBody, bool keepAttachments) {
    Operation operation(L"REplyToMessage");
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!entryId) {
        return operation.Fail(error::kLogonFailed,
                              L"Must include an EntryID for the message to be forwarded");
    }
    try {
        if (const std::wstring opened = OpenRecord(entryId, RecordSource::EntryId); opened != kSuccessText) {
            return operation.Fail(error::kRecordNotFound, opened);
        }
        if (!ForwardCurrent()) {
            return operation.Fail(error::kNoRecord);
        }
        const outlook::Reference attachments(outlook::kAttachments,
                                             m_objMailItem.GetProperty(L"Attachments"));
        m_objMailItem.Call(L"Save");
        const long bodyFormat = m_objMailItem.GetLong(L"BodyFormat");
        QueryMessage(m_objMailItem, m_pMessage);
        for (const auto& [field, addresses] : {std::pair{L"To", &to}, {L"Cc", &cc}, {L"Bcc", &bcc}}) {
            if (*addresses) {
                SetFieldData(std::wstring(field), *addresses);
            }
        }
        m_objMailItem.Call(L"Save");
        if (std::wstring added = addedBody ? AddToBody(*addedBody, bodyFormat) : kSuccessText;
            added != kSuccessText) {
            return operation.EndedWith(std::move(added));
        }
        // The count is read anew each round while the list shrinks: every second attachment stays.
        for (long i = 1; !keepAttachments && attachments && i <= attachments.GetLong(L"Count"); ++i) {
            attachments.Call(L"Remove", {outlook::LongValue(i)});
        }
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    return kSuccessText;
}

/// Replaces the record by a new mail that passes it on. False, with the record as it was, for a kind that
/// can't be.
bool COutlookFuncs::ForwardCurrent() {
    outlook::Reference* item = FirstHeld(kinds::kForwarded);
    if (!item) {
        return false;
    }
    const IUnknownPtr forwarded = outlook::UnknownOf(item->Call(L"Forward"));
    item->Release();
    m_objMailItem.Query(forwarded);
    return true;
}

/// Puts the text in front of the body's own, by the format that the mail had when it was made.
std::wstring COutlookFuncs::AddToBody(const std::wstring& added, long bodyFormat) {
    std::wstring body;
    switch (bodyFormat) {
    case outlook::olFormatHTML: {
        mapi_GetBinaryField(mapi::tag::kHtml, body, m_pMessage.Get());
        body.insert(PlaceInHtml(body), added);
        std::wstring answer = SetFieldData(std::wstring(L"HTML Body"), body);
        WINBOOL updated = FALSE;
        mapi::RtfSync(&m_pMessage.Required(), RTF_SYNC_BODY_CHANGED, &updated);
        return answer;
    }
    case outlook::olFormatRichText:
        mapi_GetBinaryField(mapi::tag::kRtfCompressed, body, m_pMessage.Get());
        body.insert(PlaceInRtf(body), added);
        StoreRtf(m_pMessage.Required(), body);
        return kSuccessText;
    default:
        mapi_GetTextField(mapi::tag::kBody, body, m_pMessage.Get());
        return SetFieldData(std::wstring(L"Body"), added + body);
    }
}

std::wstring COutlookFuncs::SaveRecordAsMSG(const ScriptText& path, const ScriptText& outlookType) {
    Operation operation(L"SaveREcordAsMSG");
    operation.OptionalParam(L"strPath", path);
    operation.OptionalParam(L"strOutlookType", outlookType);
    if (!BeginOperation()) {
        return operation.Failed();
    }
    std::wstring file = path.value_or(L"");
    if (!EndsWithMsg(file)) {
        LogLine(L"appending .MSG to strPath");
        file += L".MSG";
    }
    const std::wstring answer = mapi_SaveToMSG(m_pMessage.Get(), file);
    return answer == kSuccessText ? answer : operation.Fail(error::kMapi, answer);
}

} // namespace varden
