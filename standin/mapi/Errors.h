// Words for failures: what GetLastError of every object answers.
#pragma once

#include "standin/mapi/Object.h"

namespace standin::mapi {

/// GetLastError: a MAPIERROR for the object's last failure, in one MAPI buffer; success and null if the last
/// failure was not `status`. Of the flags it takes MAPI_UNICODE.
HRESULT DescribeFailure(const LastFailure& last, HRESULT status, ULONG flags, MAPIERROR** error);

} // namespace standin::mapi
