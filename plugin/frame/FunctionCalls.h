// The functions whose answer takes more than handing the arguments to one engine operation.
#pragma once

#include "CallShell.h"

namespace varden {

// Answered from the frame's own constants and objects.
std::wstring CallVersion(const Arguments& arguments);
std::wstring CallGetLastError(const Arguments& arguments);
std::wstring CallSetStoreOnline(const Arguments& arguments);
std::wstring CallItemExist(const Arguments& arguments);
std::wstring CallLogSet(const Arguments& arguments);
std::wstring CallLogClear(const Arguments& arguments);
std::wstring CallLogMoveToDesktop(const Arguments& arguments);

// Arguments tested or put into another form before they reach the engine.
std::wstring CallOpenRootFolder(const Arguments& arguments);
std::wstring CallOpenFolder(const Arguments& arguments);
std::wstring CallGetFieldData(const Arguments& arguments);
std::wstring CallVerifyFieldData(const Arguments& arguments);
std::wstring CallSearch(const Arguments& arguments);
std::wstring CallSendMail(const Arguments& arguments);
std::wstring CallGetAttachmentName(const Arguments& arguments);

} // namespace varden
