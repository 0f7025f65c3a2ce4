// Files and file-system folders: whole files at once, replaced at one stroke. Paths may be longer than
// MAX_PATH.
#pragma once

#include "standin/mailbox/Property.h"

#include <span>

namespace standin::mailbox {

/// Unfinished files and folders on their way out begin so: to be cleared by whoever finds them.
inline constexpr std::wstring_view kUnfinishedPrefix = L".writing-";
inline constexpr std::wstring_view kDeletedPrefix = L".deleted-";

struct FolderEntry {
    std::wstring name;
    bool isFolder = false;
};

/// The full path, in the form that may be of any length.
std::wstring LongPath(const std::wstring& path);
/// The path as users know it.
std::wstring ShownPath(const std::wstring& longPath);

/// What is in a folder, in order of name. MAPI_E_NOT_FOUND if there is no such folder.
HRESULT ListFolder(const std::wstring& path, std::vector<FolderEntry>& entries);
bool FileExists(const std::wstring& path);
HRESULT ReadWholeFile(const std::wstring& path, Bytes& bytes);
/// Writes beside the file and then puts it in its place: whoever looks finds the old file or the new one.
HRESULT ReplaceFile(const std::wstring& folder, const std::wstring& name,
                    std::span<const std::uint8_t> bytes);
/// In place of a file that has the new name.
HRESULT MoveEntry(const std::wstring& from, const std::wstring& to);
HRESULT RemoveFile(const std::wstring& path);
/// No failure if there is one.
HRESULT MakeFolder(const std::wstring& path);
/// A folder with all that is in it.
HRESULT RemoveTree(const std::wstring& path);
/// The same; it is gone from its place at one stroke.
HRESULT RemoveFolderTree(const std::wstring& folder, const std::wstring& name);

} // namespace standin::mailbox
