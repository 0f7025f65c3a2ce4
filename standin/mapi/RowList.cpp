// Restricting, sorting and finding rows.
#include "standin/mapi/RowList.h"

#include "standin/mapi/Comparison.h"
#include "standin/mapi/Values.h"

#include <algorithm>
#include <set>

namespace standin::mapi {
namespace {

using mailbox::PropertyTag;
using mailbox::Value;

/// A table's row for a restriction.
class RowInTable final : public RestrictedRow {
public:
    RowInTable(const TableRows& source, const mailbox::PropertyObject& row) : m_source(source), m_row(row) {}
    HRESULT Read(PropertyTag tag, Value& value) const override { return m_source.Read(m_row, tag, value); }
    bool AnyRowOf(PropertyTag subobject,
                  const std::function<bool(const RestrictedRow&)>& test) const override {
        return m_source.AnyRowOf(m_row, subobject, test);
    }

private:
    const TableRows& m_source;
    const mailbox::PropertyObject& m_row;
};

/// A row with the values that it is sorted by; what is missing comes first.
struct SortedRow {
    TableRows::Row row;
    std::vector<std::optional<Value>> keys;
};

std::weak_ordering CompareKeys(const std::optional<Value>& left, const std::optional<Value>& right) {
    if (!left || !right)
        return left.has_value() <=> right.has_value();
    return Compare(*left, *right).value_or(std::weak_ordering::equivalent);
}

} // namespace

HRESULT TableRows::Shorten(Value& value) const {
    return RoomFor(value) > kLargestValue ? MAPI_E_NOT_ENOUGH_MEMORY : S_OK;
}

void RowList::Refresh() {
    const std::uint64_t version = m_source->Version();
    if (m_version == version)
        return;
    const bool first = !m_version;
    const Mark mark = MarkAt(m_position);
    m_version = version;
    Arrange();
    if (!first)
        Find(mark, m_position);
}

void RowList::Arrange() {
    m_rows = m_source->Fetch();
    if (m_restriction)
        std::erase_if(m_rows, [this](const TableRows::Row& row) { return !IsMet(*m_restriction, row); });
    if (m_orders.empty())
        return;
    std::vector<SortedRow> sorted;
    sorted.reserve(m_rows.size());
    for (TableRows::Row& row : m_rows) {
        SortedRow& added = sorted.emplace_back();
        for (const SSortOrder& order : m_orders) {
            Value value;
            const bool there = SUCCEEDED(m_source->Read(*row.object, order.ulPropTag, value));
            added.keys.push_back(there ? std::optional(std::move(value)) : std::nullopt);
        }
        added.row = std::move(row);
    }
    std::ranges::stable_sort(sorted, [this](const SortedRow& left, const SortedRow& right) {
        for (std::size_t i = 0; i < m_orders.size(); ++i) {
            const auto order = CompareKeys(left.keys[i], right.keys[i]);
            if (order != 0)
                return m_orders[i].ulOrder == TABLE_SORT_DESCEND ? order > 0 : order < 0;
        }
        return false;
    });
    std::ranges::transform(sorted, m_rows.begin(), [](SortedRow& each) { return std::move(each.row); });
}

bool RowList::IsMet(const Restriction& restriction, const TableRows::Row& row) const {
    return restriction.IsMetBy(RowInTable(*m_source, *row.object));
}

RowList::Mark RowList::MarkAt(std::size_t position) const {
    return {position, position < m_rows.size() ? std::optional(m_rows[position].key) : std::nullopt};
}

/// Whether the mark's row is still there. If not, the position is where it was.
bool RowList::Find(const Mark& mark, std::size_t& position) const {
    if (!mark.key) {
        position = m_rows.size();
        return true;
    }
    const auto found = std::ranges::find(m_rows, *mark.key, &TableRows::Row::key);
    const bool there = found != m_rows.end();
    position =
        there ? static_cast<std::size_t>(found - m_rows.begin()) : std::min(mark.position, m_rows.size());
    return there;
}

std::size_t RowList::Count() {
    Refresh();
    return m_rows.size();
}

std::size_t RowList::Position() {
    Refresh();
    return m_position;
}

Value RowList::Read(std::size_t row, PropertyTag tag) const {
    Value value;
    HRESULT status = m_source->Read(*m_rows[row].object, tag, value);
    if (SUCCEEDED(status))
        status = m_source->Shorten(value);
    return FAILED(status) ? Value(mailbox::ErrorValue{status}) : value;
}

std::vector<PropertyTag> RowList::TagsOfRows() {
    constexpr std::size_t kRowsLookedAt = 100;
    Refresh();
    std::set<PropertyTag> tags;
    for (std::size_t i = 0; i < std::min(m_rows.size(), kRowsLookedAt); ++i)
        for (const PropertyTag tag : m_rows[i].object->Tags())
            if (mailbox::TypeOf(tag) != PT_OBJECT && mailbox::TypeOf(tag) != PT_ERROR)
                tags.insert(tag);
    return {tags.begin(), tags.end()};
}

void RowList::Restrict(std::shared_ptr<const Restriction> restriction) {
    m_restriction = std::move(restriction);
    m_version.reset();
    m_position = 0;
    m_bookmarks.clear();
}

void RowList::Sort(std::vector<SSortOrder> orders) {
    m_orders = std::move(orders);
    m_version.reset();
    m_position = 0;
    m_bookmarks.clear();
}

std::optional<std::size_t> RowList::Find(const Restriction& restriction, std::size_t from, bool backward) {
    Refresh();
    if (!backward) {
        for (std::size_t i = from; i < m_rows.size(); ++i)
            if (IsMet(restriction, m_rows[i]))
                return i;
        return std::nullopt;
    }
    for (std::size_t i = std::min(from + 1, m_rows.size()); i-- > 0;)
        if (IsMet(restriction, m_rows[i]))
            return i;
    return std::nullopt;
}

BOOKMARK RowList::CreateBookmark() {
    Refresh();
    m_bookmarks[m_nextBookmark] = MarkAt(m_position);
    return m_nextBookmark++;
}

HRESULT RowList::FreeBookmark(BOOKMARK bookmark) {
    if (bookmark <= BOOKMARK_END)
        return S_OK; // the predefined ones can't go
    return m_bookmarks.erase(bookmark) > 0 ? S_OK : MAPI_E_INVALID_BOOKMARK;
}

HRESULT RowList::Locate(BOOKMARK bookmark, std::size_t& position) {
    Refresh();
    const std::size_t predefined[] = {0, m_position, m_rows.size()};
    if (bookmark < std::size(predefined)) {
        position = predefined[bookmark];
        return S_OK;
    }
    const auto found = m_bookmarks.find(bookmark);
    if (found == m_bookmarks.end())
        return MAPI_E_INVALID_BOOKMARK;
    return Find(found->second, position) ? S_OK : MAPI_W_POSITION_CHANGED;
}

} // namespace standin::mapi
