// Messages written to MSG files.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "mapi/InterfaceIds.h"
#include "mapi/MsgFile.h"
#include "session/Operation.h"

namespace varden {

namespace mapi {

HRESULT CreateMsgStorage(const std::wstring& path, Pointer<IStorage>& storage) {
    constexpr DWORD mode = STGM_TRANSACTED | STGM_CREATE | STGM_READWRITE;
    return StgCreateDocfile(path.c_str(), mode, 0, storage.Out());
}

HRESULT MsgSession::Open(IMalloc* allocator) {
    return OpenMsgSession(allocator, 0, &m_session);
}

MsgSession::~MsgSession() {
    if (m_session) {
        CloseMsgSession(m_session);
    }
}

HRESULT MsgSession::OpenMessage(IMalloc* allocator, IStorage* storage, Pointer<IMessage>& message) const {
    return OpenMsgOnStorage(m_session, reinterpret_cast<LPALLOCATEBUFFER>(AllocateBuffer.Address()),
                            reinterpret_cast<LPALLOCATEMORE>(AllocateMore.Address()),
                            reinterpret_cast<LPFREEBUFFER>(FreeBuffer.Address()), allocator, nullptr, storage,
                            nullptr, 0, 0, message.Out());
}

} // namespace mapi

std::wstring COutlookFuncs::mapi_SaveToMSG(IMessage* message, const std::wstring& path) {
    Operation operation(L"mapi_SaveToMSG");
    operation.Param(L"szFileName", path);
    operation.Param(L"message", FormatText(L"%p", static_cast<void*>(message)));
    try {
        return WriteMsgFile(message, path, operation);
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
}

std::wstring COutlookFuncs::WriteMsgFile(IMessage* message, const std::wstring& path, Operation& operation) {
    const auto fail = [&](HRESULT status) {
        return operation.Fail(error::kMapi, status, mapi_HResultName(status));
    };
    if (!message || path.empty()) {
        return operation.Fail(error::kMapi, L"current message or path is NULL");
    }
    IMalloc* allocator = mapi::DefaultMalloc();
    if (!allocator) {
        return operation.Fail(error::kMapi, L"Save as MSG - unable to allocate");
    }
    // The storage goes after the message on it, and before the session.
    mapi::MsgSession session;
    mapi::Pointer<IStorage> storage;
    mapi::Pointer<IMessage> target;
    if (const HRESULT status = mapi::CreateMsgStorage(path, storage); FAILED(status)) {
        return fail(status);
    }
    if (const HRESULT status = session.Open(allocator); FAILED(status)) {
        return fail(status);
    }
    if (const HRESULT status = session.OpenMessage(allocator, storage.Get(), target); FAILED(status)) {
        return fail(status);
    }
    LogLine(L"opened message for storage");
    if (const HRESULT status = WriteClassStg(storage.Get(), mapi::kMailMessageClass); FAILED(status)) {
        return operation.Fail(error::kMapi, status, L"Save As Message Write Class: %s ");
    }
    LogLine(L"created stroage");
    mapi::Block<SPropProblemArray> problems;
    const HRESULT copied =
        message->CopyTo(0, nullptr, nullptr, 0, nullptr, &mapi::kIidMessage, target.Get(), 0, problems.Out());
    if (FAILED(copied)) {
        return fail(copied);
    }
    LogLine(L"copied message to storage");
    if (problems) { // the file stays uncommitted
        return operation.Fail(error::kMapi, copied, mapi_ProblemArrayToString(problems.get()));
    }
    target->SaveChanges(KEEP_OPEN_READWRITE);
    LogLine(L"saved storage changes");
    storage->Commit(STGC_DEFAULT);
    LogLine(L"commited changes on pStorage");
    return kSuccessText;
}

} // namespace varden
