// Time, identifiers, letter case.
#include "standin/mailbox/Platform.h"

#include <objbase.h>

#include <cstring>

namespace standin::mailbox {

SysTime Now() {
    FILETIME time;
    GetSystemTimePreciseAsFileTime(&time);
    return {std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime};
}

GUID NewGuid() {
    GUID guid{};
    CoCreateGuid(&guid);
    return guid;
}

Bytes BytesOf(const GUID& guid) {
    Bytes bytes(sizeof guid);
    std::memcpy(bytes.data(), &guid, sizeof guid);
    return bytes;
}

std::wstring FoldCase(std::wstring_view text) {
    std::wstring folded(text);
    CharUpperBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    return folded;
}

bool SameIgnoringCase(std::wstring_view left, std::wstring_view right) {
    return left.size() == right.size() && FoldCase(left) == FoldCase(right);
}

std::wstring TextOfGuid(const GUID& guid) {
    wchar_t text[39];
    StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
    return text;
}

std::optional<GUID> GuidFromText(const std::wstring& text) {
    GUID guid;
    return SUCCEEDED(IIDFromString(text.c_str(), &guid)) ? std::optional(guid) : std::nullopt;
}

} // namespace standin::mailbox
