// The file system, in the few ways that a kept mailbox needs it.
#include "standin/mailbox/Files.h"

#include <algorithm>
#include <memory>

namespace standin::mailbox {
namespace {

constexpr std::wstring_view kLongPrefix = L"\\\\?\\";

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using FileHandle = std::unique_ptr<HANDLE, HandleCloser>;

struct FindCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { FindClose(handle); }
};
using FindHandle = std::unique_ptr<HANDLE, FindCloser>;

constexpr std::pair<DWORD, HRESULT> kStatuses[] = {
    {ERROR_FILE_NOT_FOUND, MAPI_E_NOT_FOUND},
    {ERROR_PATH_NOT_FOUND, MAPI_E_NOT_FOUND},
    {ERROR_ACCESS_DENIED, MAPI_E_NO_ACCESS},
    {ERROR_SHARING_VIOLATION, MAPI_E_NO_ACCESS},
    {ERROR_WRITE_PROTECT, MAPI_E_NO_ACCESS},
    {ERROR_DISK_FULL, MAPI_E_NOT_ENOUGH_DISK},
    {ERROR_HANDLE_DISK_FULL, MAPI_E_NOT_ENOUGH_DISK},
    {ERROR_ALREADY_EXISTS, MAPI_E_COLLISION},
    {ERROR_FILE_EXISTS, MAPI_E_COLLISION},
};

HRESULT LastStatus() {
    const DWORD error = GetLastError();
    for (const auto& [code, status] : kStatuses)
        if (code == error)
            return status;
    return MAPI_E_DISK_ERROR;
}

HRESULT StatusOf(BOOL succeeded) {
    return succeeded ? S_OK : LastStatus();
}

HRESULT WriteNewFile(const std::wstring& path, std::span<const std::uint8_t> bytes) {
    const HANDLE created =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (created == INVALID_HANDLE_VALUE)
        return LastStatus();
    const FileHandle file(created);
    DWORD written = 0;
    if (!WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
        return LastStatus();
    return written == bytes.size() ? S_OK : MAPI_E_NOT_ENOUGH_DISK;
}

} // namespace

std::wstring LongPath(const std::wstring& path) {
    if (path.starts_with(kLongPrefix))
        return path;
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    while (full.ends_with(L'\\'))
        full.pop_back();
    if (full.starts_with(L"\\\\"))
        return L"\\\\?\\UNC" + full.substr(1);
    return std::wstring(kLongPrefix) + full;
}

std::wstring ShownPath(const std::wstring& longPath) {
    constexpr std::wstring_view kShare = L"\\\\?\\UNC";
    if (longPath.starts_with(kShare))
        return L"\\" + longPath.substr(kShare.size());
    return longPath.starts_with(kLongPrefix) ? longPath.substr(kLongPrefix.size()) : longPath;
}

HRESULT ListFolder(const std::wstring& path, std::vector<FolderEntry>& entries) {
    WIN32_FIND_DATAW data;
    const HANDLE found = FindFirstFileW((path + L"\\*").c_str(), &data);
    if (found == INVALID_HANDLE_VALUE)
        return LastStatus();
    const FindHandle search(found);
    do {
        const std::wstring name = data.cFileName;
        if (name != L"." && name != L"..")
            entries.push_back({name, (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
    } while (FindNextFileW(search.get(), &data));
    std::ranges::sort(entries, {}, &FolderEntry::name);
    return S_OK;
}

bool FileExists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

HRESULT ReadWholeFile(const std::wstring& path, Bytes& bytes) {
    const HANDLE opened =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return LastStatus();
    const FileHandle file(opened);
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.get(), &size))
        return LastStatus();
    if (size.HighPart != 0)
        return MAPI_E_TOO_BIG;
    bytes.resize(size.LowPart);
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), size.LowPart, &read, nullptr))
        return LastStatus();
    bytes.resize(read);
    return S_OK;
}

HRESULT ReplaceFile(const std::wstring& folder, const std::wstring& name,
                    std::span<const std::uint8_t> bytes) {
    const std::wstring unfinished = folder + L'\\' + std::wstring(kUnfinishedPrefix) + name;
    HRESULT status = WriteNewFile(unfinished, bytes);
    if (SUCCEEDED(status))
        status = MoveEntry(unfinished, folder + L'\\' + name);
    if (FAILED(status))
        DeleteFileW(unfinished.c_str());
    return status;
}

HRESULT MoveEntry(const std::wstring& from, const std::wstring& to) {
    return StatusOf(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING));
}

HRESULT RemoveFile(const std::wstring& path) {
    return StatusOf(DeleteFileW(path.c_str()));
}

HRESULT MakeFolder(const std::wstring& path) {
    if (CreateDirectoryW(path.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS)
        return S_OK;
    return LastStatus();
}

HRESULT RemoveTree(const std::wstring& path) {
    std::vector<FolderEntry> entries;
    if (const HRESULT status = ListFolder(path, entries); FAILED(status))
        return status;
    for (const FolderEntry& entry : entries) {
        const std::wstring below = path + L'\\' + entry.name;
        if (const HRESULT status = entry.isFolder ? RemoveTree(below) : RemoveFile(below); FAILED(status))
            return status;
    }
    return StatusOf(RemoveDirectoryW(path.c_str()));
}

HRESULT RemoveFolderTree(const std::wstring& folder, const std::wstring& name) {
    const std::wstring onItsWayOut = folder + L'\\' + std::wstring(kDeletedPrefix) + name;
    if (const HRESULT status = MoveEntry(folder + L'\\' + name, onItsWayOut); FAILED(status))
        return status;
    RemoveTree(onItsWayOut); // what can't be removed now goes when the mailbox is opened next
    return S_OK;
}

} // namespace standin::mailbox
