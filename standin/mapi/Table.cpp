// IMAPITable.
#include "standin/mapi/Table.h"

#include "standin/mapi/Buffers.h"
#include "standin/mapi/Errors.h"
#include "standin/mapi/Values.h"

#include <algorithm>
#include <limits>

namespace standin::mapi {
namespace {

using mailbox::IdOf;
using mailbox::Property;
using mailbox::PropertyTag;
using mailbox::PropertyType;
using mailbox::TypeOf;

constexpr ULONG kDeferral = TBL_ASYNC | TBL_BATCH;

/// Frees a row set that was not handed out.
struct RowsFreer {
    void operator()(SRowSet* rows) const {
        for (ULONG i = 0; i < rows->cRows; ++i)
            FreeBuffer(rows->aRow[i].lpProps);
        FreeBuffer(rows);
    }
};

std::unique_ptr<SRowSet, RowsFreer> NewRowSet(std::size_t count) {
    std::unique_ptr<SRowSet, RowsFreer> rows(static_cast<SRowSet*>(NewBuffer(CbNewSRowSet(count))));
    rows->cRows = 0;
    return rows;
}

/// A multi-valued column that stands for a row per entry can't be had here, see MVI_FLAG.
HRESULT CheckColumn(PropertyTag tag) {
    const PropertyType type = TypeOf(tag);
    if ((type & MVI_FLAG) == MVI_FLAG)
        return MAPI_E_TOO_COMPLEX;
    return type == PT_UNSPECIFIED || type == PT_ERROR || !IsPropertyType(type) ? MAPI_E_INVALID_PARAMETER
                                                                               : S_OK;
}

bool CanSortBy(const SSortOrder& order) {
    const PropertyType type = TypeOf(order.ulPropTag);
    return SUCCEEDED(CheckColumn(order.ulPropTag)) && type != PT_OBJECT && type != PT_NULL &&
           !(type & MV_FLAG) && order.ulOrder <= TABLE_SORT_DESCEND;
}

class Table final : public Object<IMAPITable> {
public:
    Table(std::unique_ptr<TableRows> rows, bool wide) : m_rows(std::move(rows)), m_wide(wide) {
        for (const PropertyTag tag : m_rows.Source().DefaultColumns())
            m_columns.push_back(WithTextWidth(tag, wide));
    }

    HRESULT STDMETHODCALLTYPE GetLastError(HRESULT status, ULONG flags, MAPIERROR** error) override {
        return Call(L"GetLastError", Outputs(error),
                    [&] { return DescribeFailure(Failure(), status, flags, error); });
    }
    HRESULT STDMETHODCALLTYPE Advise(ULONG, IMAPIAdviseSink*, ULONG*) override {
        return NotSupported(L"Advise");
    }
    HRESULT STDMETHODCALLTYPE Unadvise(ULONG) override { return NotSupported(L"Unadvise"); }
    HRESULT STDMETHODCALLTYPE GetStatus(ULONG* status, ULONG* type) override {
        return Call(L"GetStatus", Outputs(status, type), [&] { return TellStatus(status, type); });
    }
    HRESULT STDMETHODCALLTYPE SetColumns(SPropTagArray* tags, ULONG flags) override {
        return Call(L"SetColumns", [&] { return SetColumnsTo(tags, flags); });
    }
    HRESULT STDMETHODCALLTYPE QueryColumns(ULONG flags, SPropTagArray** tags) override {
        return Call(L"QueryColumns", Outputs(tags), [&] { return TellColumns(flags, tags); });
    }
    HRESULT STDMETHODCALLTYPE GetRowCount(ULONG flags, ULONG* count) override {
        return Call(L"GetRowCount", Outputs(count), [&] { return TellRowCount(flags, count); });
    }
    HRESULT STDMETHODCALLTYPE SeekRow(BOOKMARK origin, LONG count, LONG* sought) override {
        return Call(L"SeekRow", Outputs(sought), [&] { return Seek(origin, count, sought); });
    }
    HRESULT STDMETHODCALLTYPE SeekRowApprox(ULONG numerator, ULONG denominator) override {
        return Call(L"SeekRowApprox", [&] { return SeekApprox(numerator, denominator); });
    }
    HRESULT STDMETHODCALLTYPE QueryPosition(ULONG* row, ULONG* numerator, ULONG* denominator) override {
        return Call(L"QueryPosition", Outputs(row, numerator, denominator),
                    [&] { return TellPosition(row, numerator, denominator); });
    }
    HRESULT STDMETHODCALLTYPE FindRow(SRestriction* restriction, BOOKMARK origin, ULONG flags) override {
        return Call(L"FindRow", [&] { return Find(restriction, origin, flags); });
    }
    HRESULT STDMETHODCALLTYPE Restrict(SRestriction* restriction, ULONG flags) override {
        return Call(L"Restrict", [&] { return RestrictTo(restriction, flags); });
    }
    HRESULT STDMETHODCALLTYPE CreateBookmark(BOOKMARK* bookmark) override {
        return Call(L"CreateBookmark", Outputs(bookmark), [&]() -> HRESULT {
            if (!bookmark)
                return MAPI_E_INVALID_PARAMETER;
            *bookmark = m_rows.CreateBookmark();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE FreeBookmark(BOOKMARK bookmark) override {
        return Call(L"FreeBookmark", [&] { return m_rows.FreeBookmark(bookmark); });
    }
    HRESULT STDMETHODCALLTYPE SortTable(SSortOrderSet* orders, ULONG flags) override {
        return Call(L"SortTable", [&] { return SortBy(orders, flags); });
    }
    HRESULT STDMETHODCALLTYPE QuerySortOrder(SSortOrderSet** orders) override {
        return Call(L"QuerySortOrder", Outputs(orders), [&] { return TellSortOrder(orders); });
    }
    HRESULT STDMETHODCALLTYPE QueryRows(LONG count, ULONG flags, SRowSet** rows) override {
        return Call(L"QueryRows", Outputs(rows), [&] { return Query(count, flags, rows); });
    }
    HRESULT STDMETHODCALLTYPE Abort() override {
        return Call(L"Abort", [] { return S_OK; }); // nothing is ever under way
    }
    HRESULT STDMETHODCALLTYPE ExpandRow(ULONG, BYTE*, ULONG, ULONG, SRowSet**, ULONG*) override {
        return NotSupported(L"ExpandRow");
    }
    HRESULT STDMETHODCALLTYPE CollapseRow(ULONG, BYTE*, ULONG, ULONG*) override {
        return NotSupported(L"CollapseRow");
    }
    HRESULT STDMETHODCALLTYPE WaitForCompletion(ULONG, ULONG, ULONG* status) override {
        return Call(L"WaitForCompletion", [&] {
            if (status)
                *status = TBLSTAT_COMPLETE;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetCollapseState(ULONG, ULONG, BYTE*, ULONG*, BYTE**) override {
        return NotSupported(L"GetCollapseState");
    }
    HRESULT STDMETHODCALLTYPE SetCollapseState(ULONG, ULONG, BYTE*, BOOKMARK*) override {
        return NotSupported(L"SetCollapseState");
    }

private:
    static HRESULT TellStatus(ULONG* status, ULONG* type) {
        if (!status || !type)
            return MAPI_E_INVALID_PARAMETER;
        *status = TBLSTAT_COMPLETE;
        *type = TBLTYPE_DYNAMIC;
        return S_OK;
    }

    HRESULT SetColumnsTo(const SPropTagArray* tags, ULONG flags) {
        if (!tags || tags->cValues == 0)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~kDeferral)
            return MAPI_E_UNKNOWN_FLAGS;
        for (const ULONG tag : TagsOf(*tags))
            if (const HRESULT status = CheckColumn(tag); FAILED(status))
                return status;
        const auto wanted = TagsOf(*tags);
        m_columns.assign(wanted.begin(), wanted.end());
        return S_OK;
    }

    HRESULT TellColumns(ULONG flags, SPropTagArray** tags) {
        if (!tags)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~TBL_ALL_COLUMNS)
            return MAPI_E_UNKNOWN_FLAGS;
        *tags = NewTagArray(flags & TBL_ALL_COLUMNS ? AllColumns() : m_columns);
        return S_OK;
    }

    /// The columns that every table of the sort has, and what the rows have besides.
    std::vector<PropertyTag> AllColumns() {
        const auto standard = m_rows.Source().DefaultColumns();
        std::vector<PropertyTag> columns(standard.begin(), standard.end());
        for (const PropertyTag tag : m_rows.TagsOfRows())
            if (std::ranges::find(columns, IdOf(tag), IdOf) == columns.end())
                columns.push_back(tag);
        for (PropertyTag& tag : columns)
            tag = WithTextWidth(tag, m_wide);
        return columns;
    }

    HRESULT TellRowCount(ULONG flags, ULONG* count) {
        if (!count)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~TBL_NOWAIT)
            return MAPI_E_UNKNOWN_FLAGS;
        *count = static_cast<ULONG>(m_rows.Count());
        return S_OK;
    }

    HRESULT Seek(BOOKMARK origin, LONG count, LONG* sought) {
        std::size_t start = 0;
        const HRESULT status = m_rows.Locate(origin, start);
        if (FAILED(status))
            return status;
        const auto last = static_cast<std::int64_t>(m_rows.Count());
        const auto from = static_cast<std::int64_t>(start);
        const std::int64_t to = std::clamp<std::int64_t>(from + count, 0, last);
        m_rows.MoveTo(static_cast<std::size_t>(to));
        if (sought)
            *sought = static_cast<LONG>(to - from);
        return status;
    }

    HRESULT SeekApprox(ULONG numerator, ULONG denominator) {
        if (denominator == 0)
            return MAPI_E_INVALID_PARAMETER;
        const std::uint64_t rows = m_rows.Count();
        m_rows.MoveTo(static_cast<std::size_t>(std::min(rows, rows * numerator / denominator)));
        return S_OK;
    }

    HRESULT TellPosition(ULONG* row, ULONG* numerator, ULONG* denominator) {
        if (!row || !numerator || !denominator)
            return MAPI_E_INVALID_PARAMETER;
        const auto position = static_cast<ULONG>(m_rows.Position());
        *row = position;
        *numerator = position;
        *denominator = std::max(static_cast<ULONG>(m_rows.Count()), 1ul);
        return S_OK;
    }

    HRESULT Find(const SRestriction* source, BOOKMARK origin, ULONG flags) {
        if (flags & ~DIR_BACKWARD)
            return MAPI_E_UNKNOWN_FLAGS;
        std::unique_ptr<Restriction> restriction;
        if (const HRESULT status = TakeRestriction(source, restriction); FAILED(status))
            return status;
        std::size_t start = 0;
        const HRESULT status = m_rows.Locate(origin, start);
        if (FAILED(status))
            return status;
        const auto found = m_rows.Find(*restriction, start, (flags & DIR_BACKWARD) != 0);
        if (!found)
            return MAPI_E_NOT_FOUND;
        m_rows.MoveTo(*found);
        return status;
    }

    HRESULT RestrictTo(const SRestriction* source, ULONG flags) {
        if (flags & ~kDeferral)
            return MAPI_E_UNKNOWN_FLAGS;
        std::unique_ptr<Restriction> restriction;
        if (source)
            if (const HRESULT status = TakeRestriction(source, restriction); FAILED(status))
                return status;
        m_rows.Restrict(std::move(restriction));
        return S_OK;
    }

    HRESULT SortBy(const SSortOrderSet* orders, ULONG flags) {
        if (!orders || orders->cCategories > orders->cSorts || orders->cExpanded > orders->cCategories)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~kDeferral)
            return MAPI_E_UNKNOWN_FLAGS;
        const std::span wanted(orders->aSort, orders->cSorts);
        if (orders->cCategories > 0 || !std::ranges::all_of(wanted, CanSortBy))
            return MAPI_E_TOO_COMPLEX;
        m_rows.Sort({wanted.begin(), wanted.end()});
        return S_OK;
    }

    HRESULT TellSortOrder(SSortOrderSet** orders) {
        if (!orders)
            return MAPI_E_INVALID_PARAMETER;
        const std::vector<SSortOrder>& current = m_rows.SortOrders();
        auto* made = static_cast<SSortOrderSet*>(NewBuffer(CbNewSSortOrderSet(current.size())));
        made->cSorts = static_cast<ULONG>(current.size());
        made->cCategories = 0;
        made->cExpanded = 0;
        std::ranges::copy(current, made->aSort);
        *orders = made;
        return S_OK;
    }

    /// A negative count reads the rows before the position, in their order, and leaves the position at the
    /// first of them.
    HRESULT Query(LONG count, ULONG flags, SRowSet** rows) {
        if (!rows || count == 0)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~TBL_NOADVANCE)
            return MAPI_E_UNKNOWN_FLAGS;
        const auto last = static_cast<std::int64_t>(m_rows.Count());
        const auto position = static_cast<std::int64_t>(m_rows.Position());
        const auto most = static_cast<std::int64_t>(
            std::min<std::size_t>(WantedDeviations().mostRowsAtOnce, std::numeric_limits<LONG>::max()));
        const std::int64_t wanted = std::clamp<std::int64_t>(count, -most, most);
        const std::int64_t other = std::clamp<std::int64_t>(position + wanted, 0, last);
        const auto [first, end] = std::minmax(position, other);
        auto made = NewRowSet(static_cast<std::size_t>(end - first));
        for (std::int64_t row = first; row < end; ++row)
            made->aRow[made->cRows++] = ReadRow(static_cast<std::size_t>(row));
        if (!(flags & TBL_NOADVANCE))
            m_rows.MoveTo(static_cast<std::size_t>(other));
        *rows = made.release();
        return S_OK;
    }

    SRow ReadRow(std::size_t row) {
        std::vector<Property> values;
        values.reserve(m_columns.size());
        for (const PropertyTag tag : m_columns) {
            if (TypeOf(tag) == PT_NULL) // keeps a place in the row free
                values.push_back({IdOf(tag), mailbox::Null()});
            else
                values.push_back({IdOf(tag), m_rows.Read(row, tag)});
        }
        return {0, static_cast<ULONG>(values.size()), NewPropArray(values)};
    }

    RowList m_rows;
    bool m_wide;
    std::vector<PropertyTag> m_columns;
};

} // namespace

IMAPITable* MakeTable(std::unique_ptr<TableRows> rows, bool wide) {
    return new Table(std::move(rows), wide);
}

} // namespace standin::mapi
