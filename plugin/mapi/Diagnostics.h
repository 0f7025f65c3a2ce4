// The names and words of MAPI's statuses, for last-error texts and the log.
#pragma once

#include <windows.h>

#include <mapidefs.h>

#include <string>

namespace varden {

/// The constant's name of a MAPI, storage or account status, such as "MAPI_E_NOT_FOUND"; empty for one that
/// the table doesn't hold.
const wchar_t* mapi_HResultName(HRESULT hresult);

/// "ERROR: %0.8X %s" with the status and its words in capitals. A status without words gets " UNKNOWN MAPI
/// ERROR", with its leading blank.
std::wstring mapi_HResultToText(HRESULT hresult);

/// One line for each problem: its index, tag and code, and the words of the code. Empty for no array.
std::wstring mapi_ProblemArrayToString(const SPropProblemArray* problems);

} // namespace varden
