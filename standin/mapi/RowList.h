// The rows of a table in their order, with the position in them: what IMAPITable does, without its form.
#pragma once

#include "standin/mapi/Restriction.h"

#include <map>
#include <optional>

namespace standin::mapi {

/// Where a table's rows come from. One class per sort of table.
class TableRows {
public:
    /// A row and the number that knows it again when the rows are fetched anew.
    struct Row {
        std::shared_ptr<const mailbox::PropertyObject> object;
        std::uint64_t key = 0;
    };

    virtual ~TableRows() = default;
    /// Another number each time that the rows are others.
    virtual std::uint64_t Version() const = 0;
    virtual std::vector<Row> Fetch() const = 0;
    /// The columns that a new table has, text as PT_UNICODE.
    virtual std::span<const mailbox::PropertyTag> DefaultColumns() const = 0;
    virtual HRESULT Read(const mailbox::PropertyObject& row, mailbox::PropertyTag tag,
                         mailbox::Value& value) const {
        return row.Read(tag, value);
    }
    /// What a client sees of a value that was read: restrictions and sort orders look at the whole of it.
    /// MAPI_E_NOT_ENOUGH_MEMORY: it is too long for a row.
    virtual HRESULT Shorten(mailbox::Value& value) const;
    /// See RestrictedRow.
    virtual bool AnyRowOf(const mailbox::PropertyObject&, mailbox::PropertyTag,
                          const std::function<bool(const RestrictedRow&)>&) const {
        return false;
    }
};

/// Rows restricted and sorted, a position, bookmarks. Every member sees the rows as they are by now; the
/// position stays with its row.
class RowList {
public:
    explicit RowList(std::unique_ptr<TableRows> source) : m_source(std::move(source)) {}

    const TableRows& Source() const { return *m_source; }
    std::size_t Count();
    /// The row that is read next; Count() at the end.
    std::size_t Position();
    void MoveTo(std::size_t position) { m_position = position; }
    /// The value of a row's column, or an error value.
    mailbox::Value Read(std::size_t row, mailbox::PropertyTag tag) const;
    /// The tags that the rows have, from the first of them.
    std::vector<mailbox::PropertyTag> TagsOfRows();

    /// Null takes the restriction away. Both go to the first row and forget all bookmarks.
    void Restrict(std::shared_ptr<const Restriction> restriction);
    void Sort(std::vector<SSortOrder> orders);
    const std::vector<SSortOrder>& SortOrders() const { return m_orders; }

    /// The first row from `from` on that meets a restriction, backwards if wanted.
    std::optional<std::size_t> Find(const Restriction& restriction, std::size_t from, bool backward);

    BOOKMARK CreateBookmark();
    /// MAPI_E_INVALID_BOOKMARK: there is none.
    HRESULT FreeBookmark(BOOKMARK bookmark);
    /// Where a bookmark is; the three predefined ones too. MAPI_W_POSITION_CHANGED: its row is gone, and this
    /// is the place where it was. MAPI_E_INVALID_BOOKMARK.
    HRESULT Locate(BOOKMARK bookmark, std::size_t& position);

private:
    struct Mark {
        std::size_t position;
        std::optional<std::uint64_t> key; // nothing at the end of the table
    };

    void Refresh();
    void Arrange();
    bool IsMet(const Restriction& restriction, const TableRows::Row& row) const;
    Mark MarkAt(std::size_t position) const;
    bool Find(const Mark& mark, std::size_t& position) const;

    std::unique_ptr<TableRows> m_source;
    std::optional<std::uint64_t> m_version; // of the rows here; nothing before they are first needed
    std::vector<TableRows::Row> m_rows;
    std::shared_ptr<const Restriction> m_restriction;
    std::vector<SSortOrder> m_orders;
    std::size_t m_position = 0;
    std::map<BOOKMARK, Mark> m_bookmarks;
    BOOKMARK m_nextBookmark = BOOKMARK_END + 1;
};

} // namespace standin::mapi
