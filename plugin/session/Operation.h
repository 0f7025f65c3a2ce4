// One engine operation: its frame in the log, and the ways in which it fails.
#pragma once

#include "frame/LastError.h"
#include "frame/PlugInLog.h"

#include <windows.h>

#include <comdef.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace varden {

/// Records the failure; gives the answer "!!ERROR!!".
std::wstring Fail(std::int32_t code, std::wstring_view extra = L"");
std::wstring Fail(std::int32_t code, HRESULT subcode, std::wstring_view extra);

/// Records a failure of MAPI, -1097 with this detail; gives its status.
HRESULT FailMapi(HRESULT status, std::wstring_view detail);

/// Records a COM failure that an operation has caught itself: code 999, which has no message, and the words
/// for the failure as extra text. Gives the answer.
std::wstring FailCom(const _com_error& caught);

/// An operation in the log whose failing paths leave by the exit line "error in function".
class Operation : public LoggedOperation {
public:
    using LoggedOperation::LoggedOperation;

    std::wstring Fail(std::int32_t code, std::wstring_view extra = L"");
    std::wstring Fail(std::int32_t code, HRESULT subcode, std::wstring_view extra);
    std::wstring FailCom(const _com_error& caught);
    /// The answer when the last error is set already.
    std::wstring Failed();
    /// Passes on the answer of an operation that this one ends with: its failure is a failure of this one.
    std::wstring EndedWith(std::wstring answer);
};

} // namespace varden
