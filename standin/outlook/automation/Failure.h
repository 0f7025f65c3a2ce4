// How members fail: raised anywhere below Invoke, which makes an automation exception of it.
#pragma once

#include <windows.h>

#include <string>

namespace standin::outlook {

/// Raised by members. The client gets DISP_E_EXCEPTION with the status as scode, and the description.
struct Failure {
    /// With Outlook's words for the status.
    explicit Failure(HRESULT status);
    Failure(HRESULT status, std::wstring description) : status(status), description(std::move(description)) {}

    HRESULT status;
    std::wstring description;
};

/// Raises a failed status.
inline void Check(HRESULT status) {
    if (FAILED(status))
        throw Failure(status);
}

/// The exception that is being handled, whatever it is, as a failure: none may leave a method of COM.
Failure CaughtFailure();

/// What `work` answers, or the status of what it throws.
template <class Work>
HRESULT Guarded(Work&& work) {
    try {
        return work();
    } catch (...) {
        return CaughtFailure().status;
    }
}

/// What Outlook raises for an index below 1 or above the count.
Failure IndexOutOfBounds();
/// What Outlook raises for a value that a property or parameter can't take.
Failure InvalidValue();
/// What the stand-in raises for a member that Outlook has and it hasn't.
Failure NotBuilt(const std::wstring& member);

} // namespace standin::outlook
