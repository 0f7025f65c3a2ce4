// Names and paths of a kept mailbox.
#include "standin/mailbox/DiskLayout.h"

#include "standin/mailbox/MailboxFolder.h"
#include "standin/mailbox/Platform.h"

#include <algorithm>
#include <cwchar>

namespace standin::mailbox::disk {
namespace {

constexpr std::size_t kIdDigits = 12;

std::wstring HexId(std::uint64_t id) {
    wchar_t text[24];
    std::swprintf(text, std::size(text), L"%012llX", static_cast<unsigned long long>(id));
    return text;
}

} // namespace

std::wstring MessageFile(std::uint64_t id) {
    return HexId(id) + kMessageEnding;
}

std::optional<std::uint64_t> IdOfMessageFile(const std::wstring& name) {
    const std::wstring digits = name.substr(0, kIdDigits);
    const bool isOurs = name.size() == kIdDigits + std::size(kMessageEnding) - 1 &&
                        digits.find_first_not_of(L"0123456789ABCDEF") == std::wstring::npos;
    return isOurs ? std::optional(std::wcstoull(digits.c_str(), nullptr, 16)) : std::nullopt;
}

std::wstring Places::NameOf(const Store& store) const {
    return m_stores.at(&store);
}

std::wstring Places::PathOf(const Store& store) const {
    return m_root + L'\\' + NameOf(store);
}

std::wstring Places::NameOf(const Folder& folder) const {
    return m_folders.at(&folder.Store()).at(folder.Id());
}

std::wstring Places::PathOf(const Folder& folder) const {
    if (folder.Id() == kIpmSubtreeId)
        return PathOf(folder.Store());
    if (folder.Id() == kRootFolderId)
        return PathOf(folder.Store()) + L'\\' + kRootFolder;
    return PathOf(*folder.Parent()) + L'\\' + NameOf(folder);
}

void Places::Set(const Store& store, std::wstring name) {
    m_stores[&store] = std::move(name);
}

void Places::Set(const Folder& folder, std::wstring name) {
    m_folders[&folder.Store()][folder.Id()] = std::move(name);
}

void Places::Forget(const Folder& folder) {
    m_folders[&folder.Store()].erase(folder.Id());
}

/// A shortened name has a mark that no other name has, and its id: two long names don't become one.
std::wstring Places::ProposedName(const std::wstring& name, std::uint64_t id) {
    constexpr std::size_t kMostBytes =
        200; // room for what is put before it, in file systems that count bytes
    constexpr std::size_t kShortened = 60;
    std::wstring fileName = FileNameFromName(name);
    if (Narrow(fileName, CP_UTF8).size() <= kMostBytes)
        return fileName;
    std::wstring shortened = fileName.substr(0, kShortened);
    if (IS_HIGH_SURROGATE(shortened.back()))
        shortened.pop_back();
    return shortened + L"%~" + HexId(id);
}

std::wstring Places::ProposedStoreName(const std::wstring& name) const {
    const auto isTaken = [this](const std::wstring& proposed) {
        return std::ranges::any_of(m_stores,
                                   [&](const auto& each) { return SameIgnoringCase(each.second, proposed); });
    };
    std::wstring proposed = ProposedName(name, 0);
    for (std::uint64_t number = 2; isTaken(proposed); ++number)
        proposed = FileNameFromName(name.substr(0, 40)) + L"%~" + HexId(number);
    return proposed;
}

} // namespace standin::mailbox::disk
