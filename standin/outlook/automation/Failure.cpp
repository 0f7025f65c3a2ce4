// Outlook's words for failures.
#include "standin/outlook/automation/Failure.h"

#include <mapidefs.h>

#include <mapicode.h>

#include <comdef.h>

#include <algorithm>
#include <new>

namespace standin::outlook {
namespace {

struct Words {
    HRESULT status;
    const wchar_t* text;
};

constexpr const wchar_t* kOperationFailed = L"The operation failed.";

constexpr Words kWords[] = {
    {E_NOTIMPL, L"Not implemented."},
    {E_INVALIDARG, L"Could not complete the operation. One or more parameter values are not valid."},
    {E_OUTOFMEMORY, L"Out of memory or system resources. Close some windows or programs and try again."},
    {E_ACCESSDENIED, L"You don't have appropriate permission to perform this operation."},
    {MAPI_E_NOT_FOUND, L"The attempted operation failed.  An object could not be found."},
    {MAPI_E_OBJECT_CHANGED, L"The operation cannot be performed because the message has been changed."},
    {MAPI_E_OBJECT_DELETED, L"The item has been moved or deleted."},
    {MAPI_E_INVALID_ENTRYID, L"Could not open the item. Try again."},
    {MAPI_E_UNKNOWN_ENTRYID, L"Could not open the item. Try again."},
    {MAPI_E_NO_SUPPORT, L"The operation is not supported."},
    {MAPI_E_LOGON_FAILED, L"Cannot log on to the profile."},
    {MAPI_E_FAILONEPROVIDER,
     L"The server is not available. Contact your administrator if this condition persists."},
    {MAPI_E_USER_CANCEL, L"The operation was canceled."},
    {MAPI_E_COLLISION, L"A folder with this name already exists. Use another name."},
    {MAPI_E_FOLDER_CYCLE, L"Cannot move the items. A folder cannot be moved into itself or below itself."},
    {MAPI_E_AMBIGUOUS_RECIP, L"Outlook does not recognize one or more names."},
};

} // namespace

Failure::Failure(HRESULT status) : status(status), description(kOperationFailed) {
    const auto words = std::ranges::find(kWords, status, &Words::status);
    if (words != std::end(kWords))
        description = words->text;
}

Failure CaughtFailure() {
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const _com_error& error) {
        return Failure(error.Error());
    } catch (const std::bad_alloc&) {
        return Failure(E_OUTOFMEMORY);
    } catch (...) {
        return Failure(E_FAIL);
    }
}

Failure IndexOutOfBounds() {
    return {DISP_E_EXCEPTION, L"Array index out of bounds."};
}

Failure InvalidValue() {
    return Failure(E_INVALIDARG);
}

Failure NotBuilt(const std::wstring& member) {
    return {E_NOTIMPL, L"The stand-in for Outlook does not have " + member + L"."};
}

} // namespace standin::outlook
