// The messages of a folder that fit a filter, in an order: a list that follows the folder.
#pragma once

#include "standin/mailbox/Folder.h"
#include "standin/outlook/filter/Fields.h"
#include "standin/outlook/filter/Filter.h"

namespace standin::outlook {

/// Without filter and order it is the folder's own list, and nothing is kept. Otherwise the list is made anew
/// when the folder changed, where each message is looked at again only if it changed itself.
class MessageList {
public:
    using FilterPtr = std::shared_ptr<const Filter>;

    explicit MessageList(mailbox::Folder& folder, FilterPtr filter)
        : m_folder(folder), m_filter(std::move(filter)) {}

    const FilterPtr& Condition() const { return m_filter; }
    std::size_t Size() { return Current().size(); }
    mailbox::Message& At(std::size_t index) { return *Current()[index]; }

    /// From now on in the order of this property; messages that are equal in it stay in order of arrival.
    void Sort(Field field, bool descending);

private:
    struct Entry {
        mailbox::Message* message;
        mailbox::ContentPtr content; // as it was looked at
        std::uint64_t id;
        bool matches;
    };

    const std::vector<mailbox::Message*>& Current();
    void Look();
    void Order();

    mailbox::Folder& m_folder;
    FilterPtr m_filter;
    std::optional<Field> m_order;
    bool m_descending = false;
    std::optional<std::uint64_t> m_version; // of the folder's contents, when the list was made
    std::vector<Entry> m_looked;            // all messages of the folder, by id
    std::vector<mailbox::Message*> m_list;
};

} // namespace standin::outlook
