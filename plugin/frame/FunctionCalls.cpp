// The functions whose answer takes more than one engine call.
#include "FunctionCalls.h"

#include "ErrorCodes.h"
#include "LastError.h"
#include "PlugInLog.h"
#include "ProcessObjects.h"
#include "session/COutlookFuncs.h"

#include <stdexcept>

namespace varden {

namespace {

constexpr const wchar_t* kLogProduct = L"VARDENBRIDGE";

std::wstring Refuse(std::int32_t code) {
    SetLastErrorRecord(code, 0, LastError(), L"");
    return kErrorText;
}

/// A time stamp without its seconds: what stands between the second colon and the third character behind it
/// is cut out, and a blank is put in its place. A text without a second colon stays whole. "11/15/2026
/// 3:45:10 PM" becomes "11/15/2026 3:45  PM".
std::wstring WithoutSeconds(const ScriptText& timeStamp) {
    const std::wstring& text = timeStamp.value(); // an empty argument has no value to shorten: raises
    constexpr std::size_t secondsWidth = 2;
    const std::size_t first = text.find(L':');
    const std::size_t second = first == std::wstring::npos ? first : text.find(L':', first + 1);
    if (second == std::wstring::npos) {
        return text;
    }
    const std::size_t rest = second + 1 + secondsWidth;
    return text.substr(0, second) + L' ' + (rest < text.size() ? text.substr(rest) : std::wstring());
}

ScriptText WithSemicolons(const ScriptText& recipients) {
    return recipients ? ScriptText(Replaced(*recipients, L',', L';')) : std::nullopt;
}

} // namespace

std::wstring CallVersion(const Arguments& arguments) {
    const bool isShort = arguments[0].text && EqualIgnoringCase(*arguments[0].text, L"SHORT");
    const bool isPadded = arguments[1].flag;
    const std::wstring version = isPadded ? L"007.000.000.000" : L"7.0.0.0";
    return isShort ? version : L"Varden " + version + L" 64 bit";
}

std::wstring CallGetLastError(const Arguments& arguments) {
    return DescribeLastError(LastError(), arguments[0].text);
}

std::wstring CallSetStoreOnline(const Arguments& arguments) {
    Engine().m_bStoreOnline = arguments[0].flag;
    return L"0";
}

std::wstring CallItemExist(const Arguments&) {
    return {};
}

std::wstring CallLogSet(const Arguments& arguments) {
    auto& log = SessionLog();
    if (arguments[0].flag && !log) {
        log = std::make_unique<CPlugInLog>(kLogProduct, arguments[1].text);
    } else if (!arguments[0].flag) {
        log.reset();
    }
    return L"0";
}

std::wstring CallLogClear(const Arguments&) {
    if (!SessionLog()) {
        return L"-4";
    }
    SessionLog()->Clear();
    return L"0";
}

/// Fetches its argument and moves nothing.
std::wstring CallLogMoveToDesktop(const Arguments&) {
    return {};
}

std::wstring CallOpenRootFolder(const Arguments& arguments) {
    const ScriptText& name = arguments[0].text;
    if (!name) {
        LogLine(L"ERR - Invalid Parameter Name");
        return Refuse(error::kParameterValue);
    }
    if (*name == kErrorText) { // handed over from an earlier call that failed
        LogLine(L"ERR - Invalid Root Name");
        return Refuse(error::kRootFolderName);
    }
    return Engine().OpenRootFolder(name);
}

std::wstring CallOpenFolder(const Arguments& arguments) {
    return arguments[0].text ? Engine().OpenFolder(arguments[0].text) : Refuse(error::kParameterValue);
}

std::wstring CallGetFieldData(const Arguments& arguments) {
    return arguments[0].text ? Engine().GetFieldData(arguments[0].text) : Refuse(error::kParameterValue);
}

std::wstring CallVerifyFieldData(const Arguments& arguments) {
    const bool complete = arguments[0].text && arguments[1].text;
    return complete ? Engine().VerifyFieldData(arguments[0].text, arguments[1].text)
                    : Refuse(error::kParameterValue);
}

std::wstring CallSearch(const Arguments& arguments) {
    std::vector<std::wstring> timeStamps;
    for (const Argument& argument : arguments) {
        timeStamps.push_back(WithoutSeconds(argument.text));
    }
    return Engine().Search(timeStamps.front());
}

std::wstring CallSendMail(const Arguments& arguments) {
    return Engine().CreateMessage(WithSemicolons(arguments[0].text), WithSemicolons(arguments[1].text),
                                  WithSemicolons(arguments[2].text), arguments[3].text.value_or(L""),
                                  arguments[4].text.value_or(L""),
                                  SplitText(arguments[5].text.value_or(L""), L","), arguments[6].flag);
}

std::wstring CallGetAttachmentName(const Arguments& arguments) {
    const bool truncated = arguments[1].text && EqualIgnoringCase(*arguments[1].text, L"true");
    return Engine().GetAttachmentName(arguments[0].number, truncated);
}

} // namespace varden
