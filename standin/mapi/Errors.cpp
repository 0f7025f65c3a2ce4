// The sentences that go with MAPI's statuses.
#include "standin/mapi/Errors.h"

#include "standin/mapi/Buffers.h"
#include "standin/mapi/Values.h"

namespace standin::mapi {
namespace {

struct Sentence {
    HRESULT status;
    std::wstring_view text;
};

constexpr Sentence kSentences[] = {
    {MAPI_E_CALL_FAILED, L"The operation failed."},
    {MAPI_E_NOT_ENOUGH_MEMORY,
     L"There is not enough memory to do this, or the value is too large to be given in one piece."},
    {MAPI_E_INVALID_PARAMETER, L"One or more parameter values are not valid."},
    {MAPI_E_INTERFACE_NOT_SUPPORTED, L"The interface is not supported."},
    {MAPI_E_NO_ACCESS, L"You do not have sufficient permission to perform this operation on this object."},
    {MAPI_E_NO_SUPPORT, L"The operation is not supported."},
    {MAPI_E_UNKNOWN_FLAGS, L"A flag is not known."},
    {MAPI_E_INVALID_ENTRYID, L"The entry identifier is not valid."},
    {MAPI_E_INVALID_OBJECT, L"The object is no longer valid."},
    {MAPI_E_OBJECT_CHANGED, L"The object was changed by someone else since it was opened."},
    {MAPI_E_OBJECT_DELETED, L"The object has been deleted."},
    {MAPI_E_NOT_FOUND, L"The object could not be found."},
    {MAPI_E_TOO_COMPLEX, L"The request is too complex."},
    {MAPI_E_COMPUTED, L"The property is worked out by the store and can't be set."},
    {MAPI_E_CORRUPT_DATA, L"The data is damaged."},
    {MAPI_E_END_OF_SESSION, L"The session has ended."},
    {MAPI_E_UNKNOWN_ENTRYID, L"The entry identifier belongs to no one here."},
    {MAPI_E_INVALID_TYPE, L"The type of the property is not valid."},
    {MAPI_E_TABLE_TOO_BIG, L"The table has more rows than were asked for."},
    {MAPI_E_INVALID_BOOKMARK, L"The bookmark is not valid."},
    {MAPI_E_NOT_IN_QUEUE, L"The message is not in the outgoing queue."},
    {MAPI_E_COLLISION, L"An object of this name exists already."},
    {MAPI_E_NOT_INITIALIZED, L"MAPI has not been initialized."},
    {MAPI_E_NO_RECIPIENTS, L"The message has no recipients."},
    {MAPI_E_SUBMITTED, L"The message has been submitted already."},
    {MAPI_E_HAS_FOLDERS, L"The folder has subfolders."},
    {MAPI_E_HAS_MESSAGES, L"The folder has messages."},
    {MAPI_E_FOLDER_CYCLE, L"A folder can't be put into itself or into a folder below it."},
    {MAPI_E_AMBIGUOUS_RECIP, L"A name matches more than one recipient."},
};

std::wstring_view SentenceFor(HRESULT status) {
    const auto found = std::ranges::find(kSentences, status, &Sentence::status);
    return found == std::end(kSentences) ? L"An unexpected error occurred." : found->text;
}

} // namespace

HRESULT DescribeFailure(const LastFailure& last, HRESULT status, ULONG flags, MAPIERROR** error) {
    if (!error)
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~MAPI_UNICODE)
        return MAPI_E_UNKNOWN_FLAGS;
    *error = nullptr;
    if (SUCCEEDED(status) || status != last.status)
        return S_OK;
    const bool wide = (flags & MAPI_UNICODE) != 0;
    auto* made = static_cast<MAPIERROR*>(NewBuffer(sizeof(MAPIERROR)));
    *made = {};
    made->ulVersion = MAPI_ERROR_VERSION;
    made->lpszError = NewText(SentenceFor(status), wide, made);
    made->lpszComponent = NewText(L"Microsoft Exchange Information Store", wide, made);
    made->ulLowLevelError = static_cast<ULONG>(status);
    *error = made;
    return S_OK;
}

} // namespace standin::mapi
