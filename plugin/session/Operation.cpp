// How an operation fails.
#include "Operation.h"

#include "frame/ComErrorText.h"
#include "frame/ErrorCodes.h"
#include "frame/ProcessObjects.h"

namespace varden {

std::wstring Fail(std::int32_t code, std::wstring_view extra) {
    return Fail(code, S_OK, extra);
}

std::wstring Fail(std::int32_t code, HRESULT subcode, std::wstring_view extra) {
    SetLastErrorRecord(code, static_cast<std::uint32_t>(subcode), LastError(), extra);
    return kErrorText;
}

HRESULT FailMapi(HRESULT status, std::wstring_view detail) {
    Fail(error::kMapi, status, detail);
    return status;
}

std::wstring FailCom(const _com_error& caught) {
    SetLastErrorRecord(error::kComException, 0, LastError(), ComErrorText(caught));
    LastError().message = L"";
    return kErrorText;
}

std::wstring Operation::Fail(std::int32_t code, std::wstring_view extra) {
    return Fail(code, S_OK, extra);
}

std::wstring Operation::Fail(std::int32_t code, HRESULT subcode, std::wstring_view extra) {
    ExitAs(kFailedExit);
    return varden::Fail(code, subcode, extra);
}

std::wstring Operation::FailCom(const _com_error& caught) {
    ExitAs(kFailedExit);
    return varden::FailCom(caught);
}

std::wstring Operation::Failed() {
    ExitAs(kFailedExit);
    return kErrorText;
}

std::wstring Operation::EndedWith(std::wstring answer) {
    if (answer.starts_with(kErrorText)) {
        ExitAs(kFailedExit);
    }
    return answer;
}

} // namespace varden
