// A whole mail in one call.
#include "session/COutlookFuncs.h"

#include "fields/Vocabularies.h"
#include "frame/ErrorCodes.h"
#include "records/ItemMessage.h"
#include "session/Operation.h"

#include <io.h>

namespace varden {

std::wstring COutlookFuncs::CreateMessage(const ScriptText& to, const ScriptText& cc, const ScriptText& bcc,
                                          const std::wstring& subject, const std::wstring& body,
                                          const std::vector<std::wstring>& attachments, bool useHtml) {
    Operation operation(L"CreateMessage");
    operation.OptionalParam(L"csaTo", to);
    operation.OptionalParam(L"csaCc", cc);
    operation.OptionalParam(L"csaBcc", bcc);
    operation.Param(L"pMessageSubject", subject);
    operation.Param(L"strBody", body);
    ReleaseItems();
    if (std::wstring answer = NewRecord(std::wstring(L"Mail")); answer != kSuccessText) {
        operation.Failed();
        return answer;
    }
    // A field that can't be set doesn't keep the mail from going out.
    SetMailField(L"To", to, L"failed to add to");
    SetMailField(L"Cc", cc, L"failed to add To");
    SetMailField(L"Bcc", bcc, L"failed to add bcc");
    if (!attachments.empty() && !AttachFiles(attachments)) {
        return operation.Failed();
    }
    SetMailField(L"Subject", subject, L"failed to add subject");
    if (useHtml) {
        SetMailField(L"HTML Body", body, L"failed html body");
        m_objMailItem.PutProperty(L"BodyFormat", outlook::LongValue(outlook::olFormatHTML));
    } else {
        SetMailField(L"Body", body, L"failed to add body");
    }

    outlook::Folder outbox = m_objNamespace.DefaultFolder(outlook::DefaultFolder::Outbox);
    LogLine(L"opened out box");
    outlook::Reference moved(outlook::kMailItem, m_objMailItem.Call(L"Move", {outbox.AsValue()}));
    LogLine(L"moved item to out box");
    outbox.Release();
    ReleaseItems();
    mapi::Pointer<IMessage> message;
    HRESULT status = QueryMessage(moved, message);
    if (SUCCEEDED(status)) {
        LogLine(L"obtained mapi of moved item");
        status = mapi_Send(message.Get(), m_pDefaultMsgStore.Get());
    }
    return FAILED(status) ? operation.Failed() : std::wstring(kSuccessText);
}

/// Sets a field of the new mail, if there is a value for it.
void COutlookFuncs::SetMailField(const wchar_t* field, const ScriptText& data, const wchar_t* failureLine) {
    if (data && !WriteField(MailVocabulary(), field, *data, {*this, m_objMailItem, m_pMessage.Get()})) {
        LogLine(failureLine);
    }
}

/// Adds the files to the new mail. False with the last error set at the first that can't be: the mail stays
/// as it is then, unsent.
bool COutlookFuncs::AttachFiles(const std::vector<std::wstring>& paths) {
    LogLine(L"adding attachments");
    const outlook::Reference attachments(outlook::kAttachments, m_objMailItem.GetProperty(L"Attachments"));
    for (const std::wstring& given : paths) {
        const std::wstring path = Trimmed(given);
        if (path.empty()) {
            Fail(error::kAttachmentPathMissing, L"Missing path to attachment");
            return false;
        }
        constexpr int exists = 0;
        if (_waccess(path.c_str(), exists) != 0 || path.find(L'/') != std::wstring::npos) {
            Fail(error::kPath);
            return false;
        }
        attachments.Call(L"Add", {outlook::TextValue(path), outlook::MissingArgument(),
                                  outlook::MissingArgument(), outlook::MissingArgument()});
        LogLine(L"added an attachment");
    }
    return true;
}

} // namespace varden
