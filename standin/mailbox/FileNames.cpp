// Names of stores and folders as names of file-system folders.
#include "standin/mailbox/MailboxFolder.h"
#include "standin/mailbox/Platform.h"

#include <algorithm>
#include <cwchar>

namespace standin::mailbox {
namespace {

constexpr std::wstring_view kForbidden = L"<>:\"/\\|?*%";
constexpr std::wstring_view kDevices[] = {L"CON",  L"PRN",  L"AUX",  L"NUL",  L"COM0", L"COM1",
                                          L"COM2", L"COM3", L"COM4", L"COM5", L"COM6", L"COM7",
                                          L"COM8", L"COM9", L"LPT0", L"LPT1", L"LPT2", L"LPT3",
                                          L"LPT4", L"LPT5", L"LPT6", L"LPT7", L"LPT8", L"LPT9"};
/// Files of ours beside the folders end so.
constexpr std::wstring_view kOurEndings[] = {L".ini", L".msg"};
/// A folder of ours beside the stores.
constexpr std::wstring_view kTransport = L"transport";

constexpr std::size_t kDigits = 4;

bool IsDevice(std::wstring_view name) {
    const std::wstring base = FoldCase(name.substr(0, name.find(L'.')));
    return std::ranges::find(kDevices, base) != std::end(kDevices);
}

bool HasOurEnding(std::wstring_view name) {
    return std::ranges::any_of(kOurEndings, [&](std::wstring_view ending) {
        return name.size() >= ending.size() &&
               SameIgnoringCase(name.substr(name.size() - ending.size()), ending);
    });
}

bool IsLoneSurrogate(std::wstring_view name, std::size_t position) {
    const wchar_t unit = name[position];
    if (IS_HIGH_SURROGATE(unit))
        return position + 1 == name.size() || !IS_LOW_SURROGATE(name[position + 1]);
    return IS_LOW_SURROGATE(unit) && (position == 0 || !IS_HIGH_SURROGATE(name[position - 1]));
}

bool NeedsEscape(std::wstring_view name, std::size_t position) {
    constexpr std::size_t kEndingLength = 4;
    const wchar_t unit = name[position];
    const bool isFirst = position == 0;
    const bool isLast = position + 1 == name.size();
    return unit < L' ' || unit == 0x7F || kForbidden.find(unit) != std::wstring_view::npos ||
           (isLast && (unit == L'.' || unit == L' ')) ||
           (isFirst && (unit == L'.' || IsDevice(name) || SameIgnoringCase(name, kTransport))) ||
           (position + kEndingLength == name.size() && HasOurEnding(name)) || IsLoneSurrogate(name, position);
}

} // namespace

std::wstring FileNameFromName(std::wstring_view name) {
    std::wstring fileName;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (!NeedsEscape(name, i)) {
            fileName += name[i];
            continue;
        }
        wchar_t escaped[8];
        std::swprintf(escaped, std::size(escaped), L"%%%04X", static_cast<unsigned>(name[i]));
        fileName += escaped;
    }
    return fileName;
}

std::wstring NameFromFileName(std::wstring_view fileName) {
    std::wstring name;
    for (std::size_t i = 0; i < fileName.size(); ++i) {
        const std::wstring digits(fileName.substr(i + 1, kDigits));
        const bool isEscape = fileName[i] == L'%' && digits.size() == kDigits &&
                              digits.find_first_not_of(L"0123456789ABCDEF") == std::wstring::npos;
        name += isEscape ? static_cast<wchar_t>(std::wcstoul(digits.c_str(), nullptr, 16)) : fileName[i];
        i += isEscape ? kDigits : 0;
    }
    return name;
}

} // namespace standin::mailbox
