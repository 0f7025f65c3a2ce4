// The recurrence blob as text.
#include "RecurrenceBlob.h"

#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "mapi/PropertyCatalogue.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

namespace varden {

std::wstring ReadRecurrenceBlob(const FieldContext& context, std::wstring_view catalogueName) {
    ULONG tag = 0;
    const HRESULT status = context.message ? mapi_FindPropTag(catalogueName, tag, context.message) : S_OK;
    if (FAILED(status)) {
        return Fail(status, mapi_HResultToText(status));
    }
    std::wstring text;
    return context.engine.mapi_GetBinaryField(CHANGE_PROP_TYPE(tag, PT_BINARY), text, context.message)
               ? text
               : Fail(error::kMapi, text);
}

} // namespace varden
