// Where the parts of a kept mailbox are, and what the words in its .ini files are.
#pragma once

#include "standin/mailbox/Store.h"

#include <string>
#include <unordered_map>

namespace standin::mailbox::disk {

inline constexpr wchar_t kProfileFile[] = L"mailbox.ini";
inline constexpr wchar_t kStoreFile[] = L"store.ini";
inline constexpr wchar_t kFolderFile[] = L"folder.ini";
inline constexpr wchar_t kTransportFolder[] = L"transport";
/// What is below a store's root and not in the IPM subtree; the subtree itself is the store's folder.
inline constexpr wchar_t kRootFolder[] = L".root";
/// There while the sample world is being written.
inline constexpr wchar_t kBeginning[] = L".writing-world";

inline constexpr wchar_t kMessageEnding[] = L".msg";
/// "00000000002A.msg".
std::wstring MessageFile(std::uint64_t id);
/// The id of such a name; nothing for a file that somebody dropped in.
std::optional<std::uint64_t> IdOfMessageFile(const std::wstring& name);

struct KindWord {
    StoreKind kind;
    const wchar_t* word;
};
inline constexpr KindWord kKinds[] = {
    {StoreKind::Mailbox, L"Mailbox"}, {StoreKind::Archive, L"Archive"}, {StoreKind::Public, L"Public"}};

/// The names of the file-system folders of stores and folders. A folder that somebody made by hand keeps its
/// name.
class Places {
public:
    explicit Places(std::wstring root) : m_root(std::move(root)) {}

    const std::wstring& Root() const { return m_root; }
    std::wstring PathOf(const Store& store) const;
    std::wstring PathOf(const Folder& folder) const;
    /// The last part of the path.
    std::wstring NameOf(const Store& store) const;
    std::wstring NameOf(const Folder& folder) const;

    void Set(const Store& store, std::wstring name);
    void Set(const Folder& folder, std::wstring name);
    void Forget(const Folder& folder);

    /// The name that a folder with this id and name is to have; shortened if the file system would not take
    /// it.
    static std::wstring ProposedName(const std::wstring& name, std::uint64_t id);
    /// The same for a store, which has no id: different from those of the others.
    std::wstring ProposedStoreName(const std::wstring& name) const;

private:
    std::wstring m_root;
    std::unordered_map<const Store*, std::wstring> m_stores;
    std::unordered_map<const Store*, std::unordered_map<std::uint64_t, std::wstring>> m_folders; // by id
};

} // namespace standin::mailbox::disk
