// Finds and makes storage items.
#include "standin/outlook/items/StorageLookup.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Platform.h"

#include <algorithm>

namespace standin::outlook {
namespace {

/// The first associated message whose text property is this, case ignored; null for none.
template <mailbox::PropertyTag tag>
mailbox::Message* FindBy(const mailbox::Folder& folder, const std::wstring& text) {
    const auto& messages = folder.AssociatedMessages();
    const auto found = std::ranges::find_if(messages, [&](const mailbox::Message* each) {
        return mailbox::SameIgnoringCase(each->Get<tag>().value_or(L""), text);
    });
    return found == messages.end() ? nullptr : *found;
}

ComPtr<ItemObject> NewStorage(mailbox::Folder& folder, const std::wstring& messageClass,
                              const std::wstring& subject) {
    std::shared_ptr<mailbox::OpenMessage> message;
    Check(folder.CreateMessage(true, message));
    Check(message->Write(PR_MESSAGE_CLASS_W, messageClass));
    if (!subject.empty())
        Check(message->Write(PR_SUBJECT_W, subject));
    return ItemFor(std::move(message));
}

ComPtr<Object> BySubject(mailbox::Folder& folder, const std::wstring& subject) {
    mailbox::Message* found = FindBy<PR_SUBJECT_W>(folder, subject);
    return found ? OpenItem(*found) : NewStorage(folder, kStorageItem.messageClass, subject);
}

ComPtr<Object> ByEntryId(mailbox::Folder& folder, const std::wstring& text) {
    const std::optional<mailbox::Bytes> id = mailbox::FromHex(text);
    const auto& messages = folder.AssociatedMessages();
    const auto found = std::ranges::find_if(
        messages, [&](const mailbox::Message* each) { return id && each->EntryId() == *id; });
    if (found == messages.end())
        throw Failure(MAPI_E_NOT_FOUND);
    return OpenItem(**found);
}

ComPtr<Object> ByMessageClass(mailbox::Folder& folder, const std::wstring& messageClass) {
    mailbox::Message* found = FindBy<PR_MESSAGE_CLASS_W>(folder, messageClass);
    return found ? OpenItem(*found) : NewStorage(folder, messageClass, L"");
}

/// By OlStorageIdentifierType.
constexpr decltype(&BySubject) kLookups[] = {BySubject, ByEntryId, ByMessageClass};

} // namespace

ComPtr<Object> FindStorage(mailbox::Folder& folder, const std::wstring& identifier,
                           std::int32_t identifierType) {
    const auto index = static_cast<std::size_t>(identifierType);
    if (index >= std::size(kLookups) || identifier.empty())
        throw InvalidValue();
    return kLookups[index](folder, identifier);
}

} // namespace standin::outlook
