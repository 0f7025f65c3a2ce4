// The items of a folder, whole, filtered or sorted.
#pragma once

#include "standin/outlook/automation/Collection.h"
#include "standin/outlook/filter/Fields.h"
#include "standin/outlook/filter/Filter.h"
#include "standin/outlook/items/MessageList.h"

namespace standin::outlook {

/// Items. Live: it shows what comes and goes while it is held.
class ItemsObject final : public Collection {
public:
    explicit ItemsObject(std::shared_ptr<mailbox::Folder> folder, MessageList::FilterPtr filter = nullptr);

    /// Raises MAPI_E_OBJECT_DELETED for a folder that is gone.
    mailbox::Folder& Folder() const;
    MessageList& List();

    ComPtr<Object> Parent() override;
    std::int32_t Count() override;
    _variant_t At(std::int32_t place) override;
    /// By the default property, the subject.
    _variant_t Named(const std::wstring& subject) override;

    void Remove(std::int32_t place);

    /// Find and FindNext. Nothing where there is no more.
    _variant_t Find(MessageList::FilterPtr filter);
    _variant_t FindNext();

private:
    std::shared_ptr<mailbox::Folder> m_folder;
    MessageList m_list;
    MessageList::FilterPtr m_find;
    std::size_t m_found = 0; // places looked at
};

} // namespace standin::outlook
