// Lists of messages that follow their folder.
#include "standin/outlook/items/MessageList.h"

#include <algorithm>

namespace standin::outlook {

void MessageList::Sort(Field field, bool descending) {
    m_order = std::move(field);
    m_descending = descending;
    m_version.reset();
}

const std::vector<mailbox::Message*>& MessageList::Current() {
    if (!m_filter && !m_order)
        return m_folder.Messages();
    if (m_version != m_folder.ContentsVersion()) {
        m_version = m_folder.ContentsVersion();
        Look();
        if (m_order)
            Order();
    }
    return m_list;
}

/// Both lists ascend by id, so that what is known of a message is met on the way.
void MessageList::Look() {
    std::vector<Entry> before = std::exchange(m_looked, {});
    m_looked.reserve(m_folder.Messages().size());
    m_list.clear();
    auto known = before.begin();
    for (mailbox::Message* message : m_folder.Messages()) {
        while (known != before.end() && known->id < message->Id())
            ++known;
        const bool isKnown =
            known != before.end() && known->id == message->Id() && known->content == message->SharedContent();
        if (isKnown)
            m_looked.push_back(std::move(*known));
        else
            m_looked.push_back(
                {message, message->SharedContent(), message->Id(), !m_filter || m_filter->Matches(*message)});
        if (m_looked.back().matches)
            m_list.push_back(message);
    }
}

void MessageList::Order() {
    std::vector<std::pair<Comparable, mailbox::Message*>> keyed;
    keyed.reserve(m_list.size());
    for (mailbox::Message* message : m_list)
        keyed.emplace_back(m_order->read(*message), message);
    std::ranges::stable_sort(keyed, [this](const auto& left, const auto& right) {
        const std::weak_ordering order = Compare(left.first, right.first);
        return m_descending ? order > 0 : order < 0;
    });
    std::ranges::transform(keyed, m_list.begin(), [](const auto& each) { return each.second; });
}

} // namespace standin::outlook
