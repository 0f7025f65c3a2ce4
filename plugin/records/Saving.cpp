// Saving the current record, and what a save sends.
#include "session/COutlookFuncs.h"

#include "ItemMessage.h"

#include "frame/ErrorCodes.h"
#include "session/Operation.h"

#include <array>
#include <utility>

namespace varden {

namespace {

bool IsWord(const ScriptText& option, const wchar_t* word) {
    return option && EqualIgnoringCase(*option, word);
}

bool MeansSaveOnly(const ScriptText& option) {
    return IsWord(option, L"DontSend") || IsWord(option, L"Dont Send");
}

bool MeansSendMeeting(const ScriptText& option) {
    return IsWord(option, L"Send") || IsWord(option, L"Appointment");
}

} // namespace

const COutlookFuncs::SaveRow* COutlookFuncs::FindSaveRow() {
    static constexpr std::array rows{
        SaveRow{ItemKind::Contact, &COutlookFuncs::SavePlain},
        SaveRow{ItemKind::Task, &COutlookFuncs::SavePlain},
        SaveRow{ItemKind::Mail, &COutlookFuncs::SaveMail},
        SaveRow{ItemKind::Post, &COutlookFuncs::SavePlain},
        SaveRow{ItemKind::Appointment, &COutlookFuncs::SaveAppointment},
        SaveRow{ItemKind::Journal, &COutlookFuncs::SavePlain},
        SaveRow{ItemKind::Note, &COutlookFuncs::SavePlain},
        SaveRow{ItemKind::DistList, &COutlookFuncs::SavePlain},
        SaveRow{ItemKind::Report, &COutlookFuncs::SavePlain},
        SaveRow{ItemKind::TaskRequest, &COutlookFuncs::SavePlain},
        SaveRow{ItemKind::Meeting, &COutlookFuncs::SaveMeeting},
    };
    const auto row =
        std::ranges::find_if(rows, [&](const SaveRow& known) { return Item(known.kind).IsHeld(); });
    return row == rows.end() ? nullptr : &*row;
}

std::wstring COutlookFuncs::SaveRecord(const ScriptText& option) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"SaveRecord");
    SaveOutcome outcome;
    try {
        const SaveRow* row = FindSaveRow();
        if (!row) {
            return operation.Fail(error::kNoRecord);
        }
        outcome = (this->*row->save)(Item(row->kind), option);
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
    if (outcome.endsOperation) {
        return operation.Failed();
    }
    if (outcome.answer.empty()) {
        return operation.Fail(error::kNotSaved);
    }
    if (option && !IsWord(option, L"keep open")) {
        ReleaseItems();
    }
    LogLine(L"Returning %ls", outcome.answer.c_str());
    return operation.EndedWith(std::move(outcome.answer));
}

COutlookFuncs::SaveOutcome COutlookFuncs::SavePlain(const outlook::Reference& item, const ScriptText&) {
    item.Call(L"Save");
    return {item.GetText(L"EntryID")};
}

/// Saves, and, unless told not to, moves the mail to the Outbox and submits it through MAPI. A mail that goes
/// out is no longer the current record, whatever the option.
COutlookFuncs::SaveOutcome COutlookFuncs::SaveMail(const outlook::Reference& item, const ScriptText& option) {
    LogLine(L"Saving m_objMailItem...");
    item.Call(L"Save");
    LogLine(L"m_objMailItem saved.");
    if (MeansSaveOnly(option)) {
        LogLine(L"Flag set: bsend = false");
        LogLine(L"No send; getting the EntryID / Outlook ID");
        std::wstring entryId = item.GetText(L"EntryID");
        LogLine(L"Done saving mail record");
        return {entryId};
    }
    LogLine(L"Entering workflow to send email message...");
    const outlook::Reference mail = MoveToOutbox(item);
    LogLine(L"Ensured m_objMailItem is in the \"Drafts\" folder"); // the Outbox is meant
    ReleaseItems();
    mapi::Pointer<IMessage> message;
    HRESULT status = QueryMessage(mail, message);
    LogLine(L"Calling mapi_Send...");
    if (SUCCEEDED(status)) {
        status = mapi_Send(message.Get(), m_pDefaultMsgStore.Get());
    }
    LogLine(L"Done with mapi_Send.");
    std::wstring entryId = SUCCEEDED(status) ? mail.GetText(L"EntryID") : std::wstring();
    LogLine(L"Done saving mail record");
    return {entryId};
}

/// The mail where it can be submitted from: itself if it is there already, otherwise what the move gives.
outlook::Reference COutlookFuncs::MoveToOutbox(const outlook::Reference& mail) {
    const outlook::Folder outbox = m_objNamespace.DefaultFolder(outlook::DefaultFolder::Outbox);
    const outlook::Folder parent(mail.GetProperty(L"Parent"));
    if (parent.FullFolderPath() == outbox.FullFolderPath()) {
        return mail;
    }
    outlook::Reference moved(outlook::kMailItem);
    moved.Query(outlook::UnknownOf(mail.Call(L"Move", {outbox.AsValue()})));
    return moved;
}

COutlookFuncs::SaveOutcome COutlookFuncs::SaveAppointment(const outlook::Reference& item,
                                                          const ScriptText& option) {
    if (!option) {
        return SavePlain(item, option);
    }
    if (MeansSendMeeting(option)) {
        item.Call(L"Save");
        mapi_PrepareMeetingProps(m_pMessage.Get(), m_pDefaultMsgStore.Get());
        const HRESULT status = mapi_SendMeeting(m_pMessage.Get(), m_pDefaultMsgStore.Get());
        return {SUCCEEDED(status) ? item.GetText(L"EntryID") : kErrorText};
    }
    if (IsWord(option, L"ApptResponse")) {
        const HRESULT status = mapi_SendMeetingAccept(m_pMessage.Get(), m_pMsgStore.Get());
        // The response leaves another appointment current, the one on the calendar.
        return {SUCCEEDED(status) ? Item(ItemKind::Appointment).GetText(L"EntryID") : kErrorText};
    }
    Fail(error::kParameter, *option);
    return {{}, true};
}

COutlookFuncs::SaveOutcome COutlookFuncs::SaveMeeting(const outlook::Reference& item,
                                                      const ScriptText& option) {
    item.Call(L"Save");
    if (MeansSendMeeting(option) && FAILED(mapi_SendMeeting(m_pMessage.Get(), m_pDefaultMsgStore.Get()))) {
        Fail(error::kMapi, L"Failed to send meeting");
        return {{}, true};
    }
    return {item.GetText(L"EntryID")};
}

} // namespace varden
