// IMAPITable: columns, positions, restrictions, sort orders.
#include "standin/mailbox/Tags.h"
#include "tests/mapi/Client.h"

using namespace standin;

namespace mapi_tests {
namespace {

constexpr ULONG kShade = PROP_TAG(PT_UNICODE, 0x6700);
constexpr ULONG kKeywords = PROP_TAG(PT_MV_UNICODE, 0x6701);
constexpr ULONG kBytes = PROP_TAG(PT_BINARY, 0x6702);

/// The Inbox with five messages, and its contents table.
class TableTest : public MapiTest {
protected:
    TableTest() {
        Add(L"Alpha", 10, L"blue", {L"red", L"green"});
        Add(L"beta", 30, L"Bluebell", {L"Green"});
        Add(L"Gamma", 20, nullptr, {});
        Add(L"delta", 30, L"deep blue", {L"yellow"});
        Add(L"\u00C9clair", -5, L"caf\u00E9", {});
        m_folder = OpenFolder(L"Inbox");
        m_table = Table(m_folder, &IMAPIContainer::GetContentsTable);
    }

    void Add(const wchar_t* subject, LONG importance, const wchar_t* shade,
             std::vector<std::wstring> keywords) {
        const auto message = MakeMessage();
        message->Write(PR_SUBJECT_W, std::wstring(subject));
        message->Write(PR_IMPORTANCE, std::int32_t{importance});
        if (shade)
            message->Write(kShade, std::wstring(shade));
        if (!keywords.empty())
            message->Write(kKeywords, std::move(keywords));
        EXPECT_EQ(message->Save(), S_OK);
    }

    Texts Restricted(SRestriction restriction) {
        EXPECT_EQ(m_table->Restrict(&restriction, 0), S_OK);
        return Column(m_table, PR_SUBJECT_W);
    }
    std::wstring Next() {
        Rows rows;
        EXPECT_EQ(m_table->SetColumns(Tags{PR_SUBJECT_W}, 0), S_OK);
        EXPECT_EQ(m_table->QueryRows(1, TBL_NOADVANCE, &rows), S_OK);
        return rows.Count() == 0 ? L"(end)" : rows.At(0, 0).Value.lpszW;
    }

    Ref<IMAPIFolder> m_folder;
    Ref<IMAPITable> m_table;
};

const Texts kAll{L"Alpha", L"beta", L"Gamma", L"delta", L"\u00C9clair"};

TEST_F(TableTest, RowsHaveTheColumnsThatAreSet) {
    ASSERT_EQ(m_table->SetColumns(Tags{PR_SUBJECT_A, kShade, PR_NULL, PR_IMPORTANCE}, 0), S_OK);
    Block<SPropTagArray> columns;
    ASSERT_EQ(m_table->QueryColumns(0, &columns), S_OK);
    EXPECT_EQ(columns->cValues, 4u);
    Rows rows;
    ASSERT_EQ(m_table->QueryRows(3, 0, &rows), S_OK);
    ASSERT_EQ(rows.Count(), 3u);
    EXPECT_EQ(rows.Row(2).cValues, 4u);
    EXPECT_STREQ(rows.At(2, 0).Value.lpszA, "Gamma");
    EXPECT_EQ(rows.At(2, 1).ulPropTag, CHANGE_PROP_TYPE(kShade, PT_ERROR));
    EXPECT_EQ(rows.At(2, 1).Value.err, MAPI_E_NOT_FOUND);
    EXPECT_EQ(rows.At(2, 2).ulPropTag, PR_NULL);
    EXPECT_EQ(rows.At(2, 3).Value.l, 20);
}

TEST_F(TableTest, AllColumnsAreThoseOfTheTableAndOfItsRows) {
    for (const ULONG flags : {ULONG{0}, ULONG{MAPI_UNICODE}}) {
        const Ref<IMAPITable> table = Table(m_folder, &IMAPIContainer::GetContentsTable, flags);
        Block<SPropTagArray> columns;
        ASSERT_EQ(table->QueryColumns(TBL_ALL_COLUMNS, &columns), S_OK);
        const std::vector<ULONG> tags(columns->aulPropTag, columns->aulPropTag + columns->cValues);
        const auto has = [&](ULONG tag) { return std::count(tags.begin(), tags.end(), tag); };
        EXPECT_EQ(has(flags ? PR_SUBJECT_W : PR_SUBJECT_A), 1);
        EXPECT_EQ(has(flags ? kShade : CHANGE_PROP_TYPE(kShade, PT_STRING8)), 1);
        EXPECT_EQ(has(PR_ENTRYID), 1);
        EXPECT_EQ(has(PR_MESSAGE_RECIPIENTS), 0);
        EXPECT_EQ(table->SetColumns(columns.Get(), 0), S_OK);
    }
}

TEST_F(TableTest, TheCursorMovesBothWays) {
    const std::tuple<BOOKMARK, LONG, LONG, const wchar_t*> cases[] = {
        {BOOKMARK_BEGINNING, 0, 0, L"Alpha"},   {BOOKMARK_BEGINNING, 2, 2, L"Gamma"},
        {BOOKMARK_CURRENT, -1, -1, L"beta"},    {BOOKMARK_CURRENT, -9, -1, L"Alpha"},
        {BOOKMARK_END, -1, -1, L"\u00C9clair"}, {BOOKMARK_END, 0, 0, L"(end)"},
        {BOOKMARK_BEGINNING, 99, 5, L"(end)"},
    };
    for (const auto& [origin, count, expected, next] : cases) {
        LONG sought = 0;
        ASSERT_EQ(m_table->SeekRow(origin, count, &sought), S_OK);
        EXPECT_EQ(sought, expected);
        EXPECT_EQ(Next(), next);
    }
    EXPECT_EQ(m_table->SeekRow(77, 0, nullptr), MAPI_E_INVALID_BOOKMARK);
    EXPECT_EQ(m_table->SeekRowApprox(1, 0), MAPI_E_INVALID_PARAMETER);
    ASSERT_EQ(m_table->SeekRowApprox(2, 5), S_OK);
    ULONG row = 0, numerator = 0, denominator = 0;
    ASSERT_EQ(m_table->QueryPosition(&row, &numerator, &denominator), S_OK);
    EXPECT_EQ(row, 2u);
    EXPECT_EQ(numerator * 5, denominator * 2);
}

TEST_F(TableTest, QueryRowsReadsForwardsAndBackwards) {
    ASSERT_EQ(m_table->SetColumns(Tags{PR_SUBJECT_W}, 0), S_OK);
    const auto read = [&](LONG count, ULONG flags) {
        Rows rows;
        EXPECT_EQ(m_table->QueryRows(count, flags, &rows), S_OK);
        Texts texts;
        for (ULONG i = 0; i < rows.Count(); ++i)
            texts.push_back(rows.At(i, 0).Value.lpszW);
        return texts;
    };
    EXPECT_EQ(read(2, TBL_NOADVANCE), (Texts{L"Alpha", L"beta"}));
    EXPECT_EQ(read(2, 0), (Texts{L"Alpha", L"beta"}));
    EXPECT_EQ(read(2, 0), (Texts{L"Gamma", L"delta"}));
    EXPECT_EQ(read(-3, TBL_NOADVANCE), (Texts{L"beta", L"Gamma", L"delta"}));
    EXPECT_EQ(read(-3, 0), (Texts{L"beta", L"Gamma", L"delta"}));
    EXPECT_EQ(Next(), L"beta");
    EXPECT_EQ(read(-9, 0), Texts{L"Alpha"});
    EXPECT_EQ(read(99, 0), kAll);
    EXPECT_EQ(read(1, 0), Texts());
    Watch().Deviate().mostRowsAtOnce = 2;
    EXPECT_EQ(read(-9, 0).size(), 2u) << "a provider may give fewer at a time";
    ASSERT_EQ(m_table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr), S_OK);
    EXPECT_EQ(read(99, 0), (Texts{L"Alpha", L"beta"}));
    EXPECT_EQ(read(99, 0), (Texts{L"Gamma", L"delta"}));
    Rows every;
    EXPECT_EQ(HrQueryAllRows(m_table, nullptr, nullptr, nullptr, 0, &every), S_OK);
    EXPECT_EQ(every.Count(), kAll.size());
    SRowSet* rows = nullptr;
    EXPECT_EQ(m_table->QueryRows(0, 0, &rows), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(m_table->QueryRows(1, 8, &rows), MAPI_E_UNKNOWN_FLAGS);
}

TEST_F(TableTest, EveryRestrictionKindPicksItsRows) {
    SPropValue thirty = Long(PR_IMPORTANCE, 30);
    SPropValue alpha = Text(PR_SUBJECT_W, L"ALPHA");
    SPropValue alphaNarrow = Narrow(PR_SUBJECT_A, "alpha");
    SPropValue blue = Text(kShade, L"blue");
    SPropValue cafe = Text(kShade, L"cafe");
    SPropValue green = Text(CHANGE_PROP_TYPE(kKeywords, PT_UNICODE), L"green");
    SRestriction hasShade = Exist(kShade);
    SRestriction isThirty = Property(RELOP_EQ, thirty);
    std::vector<SRestriction> both{hasShade, isThirty}, none;
    const SRestriction mask{RES_BITMASK, {.resBitMask = {BMR_NEZ, PR_IMPORTANCE, 2}}};
    const SRestriction noMask{RES_BITMASK, {.resBitMask = {BMR_EQZ, PR_IMPORTANCE, 2}}};
    const SRestriction size{RES_SIZE, {.resSize = {RELOP_GT, PR_SUBJECT_W, 10}}};
    const SRestriction pair{RES_COMPAREPROPS, {.resCompareProps = {RELOP_EQ, PR_IMPORTANCE, PR_IMPORTANCE}}};
    const SRestriction comment{RES_COMMENT, {.resComment = {0, &isThirty, nullptr}}};
    const std::tuple<const char*, SRestriction, Texts> cases[] = {
        {"equal", isThirty, {L"beta", L"delta"}},
        {"not equal", Property(RELOP_NE, thirty), {L"Alpha", L"Gamma", L"\u00C9clair"}},
        {"less", Property(RELOP_LT, thirty), {L"Alpha", L"Gamma", L"\u00C9clair"}},
        {"at least", Property(RELOP_GE, thirty), {L"beta", L"delta"}},
        {"text without case", Property(RELOP_EQ, alpha), {L"Alpha"}},
        {"narrow text", Property(RELOP_EQ, alphaNarrow), {L"Alpha"}},
        {"missing is never unequal", Property(RELOP_NE, blue), {L"beta", L"delta", L"\u00C9clair"}},
        {"any entry", Property(RELOP_EQ, green, kKeywords), {L"Alpha", L"beta"}},
        {"whole text", Content(FL_FULLSTRING, blue), {L"Alpha"}},
        {"prefix", Content(FL_PREFIX, blue), {L"Alpha"}},
        {"prefix without case", Content(FL_PREFIX | FL_IGNORECASE, blue), {L"Alpha", L"beta"}},
        {"substring", Content(FL_SUBSTRING, blue), {L"Alpha", L"delta"}},
        {"substring, loose", Content(FL_SUBSTRING | FL_LOOSE, blue), {L"Alpha", L"beta", L"delta"}},
        {"accents", Content(FL_FULLSTRING, cafe), {}},
        {"accents ignored", Content(FL_FULLSTRING | FL_IGNORENONSPACE, cafe), {L"\u00C9clair"}},
        {"content of an entry", Content(FL_PREFIX | FL_IGNORECASE, green, kKeywords), {L"Alpha", L"beta"}},
        {"exist", hasShade, {L"Alpha", L"beta", L"delta", L"\u00C9clair"}},
        {"not", Not(hasShade), {L"Gamma"}},
        {"and", List(RES_AND, both), {L"beta", L"delta"}},
        {"or", List(RES_OR, both), {L"Alpha", L"beta", L"delta", L"\u00C9clair"}},
        {"and of nothing", List(RES_AND, none), kAll},
        {"or of nothing", List(RES_OR, none), {}},
        {"bits set", mask, {L"Alpha", L"beta", L"delta", L"\u00C9clair"}},
        {"bits clear", noMask, {L"Gamma"}},
        {"size", size, {L"Alpha", L"Gamma", L"delta", L"\u00C9clair"}},
        {"two properties", pair, kAll},
        {"comment", comment, {L"beta", L"delta"}},
    };
    for (const auto& [name, restriction, rows] : cases)
        EXPECT_EQ(Restricted(restriction), rows) << name;
    ASSERT_EQ(m_table->Restrict(nullptr, 0), S_OK);
    EXPECT_EQ(RowCount(m_table), 5u);
}

TEST_F(TableTest, BinaryIsComparedByteByByte) {
    const auto message = MakeMessage();
    message->Write(PR_SUBJECT_W, std::wstring(L"bytes"));
    message->Write(kBytes, Bytes{1, 0x80, 3});
    ASSERT_EQ(message->Save(), S_OK);
    const Bytes shorter{1, 0x80}, inner{0x80, 3}, small{1, 0x7F, 9};
    SPropValue prefix = Binary(kBytes, shorter), part = Binary(kBytes, inner), less = Binary(kBytes, small);
    EXPECT_EQ(Restricted(Content(FL_PREFIX, prefix)), Texts{L"bytes"});
    EXPECT_EQ(Restricted(Content(FL_PREFIX, part)), Texts());
    EXPECT_EQ(Restricted(Content(FL_SUBSTRING, part)), Texts{L"bytes"});
    EXPECT_EQ(Restricted(Property(RELOP_GT, prefix)), Texts{L"bytes"});
    EXPECT_EQ(Restricted(Property(RELOP_GT, less)), Texts{L"bytes"});
}

TEST_F(TableTest, RestrictionsLookIntoRecipientsAndAttachments) {
    const auto message = MakeMessage();
    message->Write(PR_SUBJECT_W, std::wstring(L"mail"));
    mailbox::PropertyBag row;
    row.Set<PR_DISPLAY_NAME_W>(L"Ann");
    message->AddRecipient(row);
    std::shared_ptr<mailbox::OpenAttachment> attachment;
    message->CreateAttachment(attachment);
    attachment->Write(PR_ATTACH_LONG_FILENAME_W, std::wstring(L"list.txt"));
    attachment->Save();
    ASSERT_EQ(message->Save(), S_OK);

    SPropValue ann = Text(PR_DISPLAY_NAME_W, L"ann"), list = Text(PR_ATTACH_LONG_FILENAME_W, L"list.txt");
    SRestriction isAnn = Property(RELOP_EQ, ann), isList = Property(RELOP_EQ, list);
    const auto having = [&](ULONG part, SRestriction& restriction) {
        return Restricted({RES_SUBRESTRICTION, {.resSub = {part, &restriction}}});
    };
    EXPECT_EQ(having(PR_MESSAGE_RECIPIENTS, isAnn), Texts{L"mail"});
    EXPECT_EQ(having(PR_MESSAGE_ATTACHMENTS, isAnn), Texts());
    EXPECT_EQ(having(PR_MESSAGE_ATTACHMENTS, isList), Texts{L"mail"});
}

TEST_F(TableTest, RestrictionsThatCantBeAreRefused) {
    SPropValue text = Text(PR_SUBJECT_W, L"x"), number = Long(PR_IMPORTANCE, 1),
               null = Text(PR_SUBJECT_W, nullptr);
    SRestriction exist = Exist(kShade), cycle = Not(cycle);
    const std::pair<SRestriction, HRESULT> cases[] = {
        {{99, {}}, MAPI_E_TOO_COMPLEX},
        {Property(RELOP_RE, text), MAPI_E_TOO_COMPLEX},
        {Content(FL_PREFIX, number), MAPI_E_TOO_COMPLEX},
        {Content(7, text), MAPI_E_TOO_COMPLEX},
        {{RES_SUBRESTRICTION, {.resSub = {PR_SUBJECT_W, &exist}}}, MAPI_E_TOO_COMPLEX},
        {cycle, MAPI_E_TOO_COMPLEX},
        {{RES_NOT, {}}, MAPI_E_INVALID_PARAMETER},
        {{RES_PROPERTY, {.resProperty = {RELOP_EQ, PR_SUBJECT_W, nullptr}}}, MAPI_E_INVALID_PARAMETER},
        {Property(RELOP_EQ, null), MAPI_E_INVALID_PARAMETER},
        {Property(RELOP_EQ, text, PR_IMPORTANCE), MAPI_E_TOO_COMPLEX},
        {{RES_BITMASK, {.resBitMask = {BMR_EQZ, PR_SUBJECT_W, 1}}}, MAPI_E_TOO_COMPLEX},
        {{RES_COMPAREPROPS, {.resCompareProps = {RELOP_EQ, PR_SUBJECT_W, PR_IMPORTANCE}}},
         MAPI_E_TOO_COMPLEX},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(&row - cases);
        SRestriction restriction = row.first;
        EXPECT_EQ(m_table->Restrict(&restriction, 0), row.second);
        EXPECT_EQ(m_table->FindRow(&restriction, BOOKMARK_BEGINNING, 0), row.second);
    }
    EXPECT_EQ(RowCount(m_table), 5u);
}

TEST_F(TableTest, FindRowGoesToTheRow) {
    SPropValue thirty = Long(PR_IMPORTANCE, 30), none = Long(PR_IMPORTANCE, 31);
    SRestriction isThirty = Property(RELOP_EQ, thirty), isNone = Property(RELOP_EQ, none);
    ASSERT_EQ(m_table->FindRow(&isThirty, BOOKMARK_BEGINNING, 0), S_OK);
    EXPECT_EQ(Next(), L"beta");
    EXPECT_EQ(m_table->FindRow(&isThirty, BOOKMARK_CURRENT, 0), S_OK);
    EXPECT_EQ(Next(), L"beta") << "the row that it starts from counts";
    ASSERT_EQ(m_table->SeekRow(BOOKMARK_CURRENT, 1, nullptr), S_OK);
    ASSERT_EQ(m_table->FindRow(&isThirty, BOOKMARK_CURRENT, 0), S_OK);
    EXPECT_EQ(Next(), L"delta");
    ASSERT_EQ(m_table->FindRow(&isThirty, BOOKMARK_END, DIR_BACKWARD), S_OK);
    EXPECT_EQ(Next(), L"delta");
    EXPECT_EQ(m_table->FindRow(&isNone, BOOKMARK_BEGINNING, 0), MAPI_E_NOT_FOUND);
    EXPECT_EQ(Next(), L"delta") << "a search in vain moves nothing";
    EXPECT_EQ(m_table->FindRow(nullptr, BOOKMARK_BEGINNING, 0), MAPI_E_INVALID_PARAMETER);
}

TEST_F(TableTest, SortsByOneColumnAfterTheOther) {
    SizedSSortOrderSet(2, order) = {
        2, 0, 0, {{PR_IMPORTANCE, TABLE_SORT_DESCEND}, {PR_SUBJECT_W, TABLE_SORT_ASCEND}}};
    auto* set = reinterpret_cast<SSortOrderSet*>(&order);
    ASSERT_EQ(m_table->SortTable(set, 0), S_OK);
    EXPECT_EQ(Column(m_table, PR_SUBJECT_W), (Texts{L"beta", L"delta", L"Gamma", L"Alpha", L"\u00C9clair"}));
    Block<SSortOrderSet> current;
    ASSERT_EQ(m_table->QuerySortOrder(&current), S_OK);
    EXPECT_EQ(current->cSorts, 2u);
    EXPECT_EQ(current->aSort[1].ulPropTag, PR_SUBJECT_W);

    order = {1, 0, 0, {{kShade, TABLE_SORT_ASCEND}}};
    ASSERT_EQ(m_table->SortTable(set, 0), S_OK);
    EXPECT_EQ(Column(m_table, PR_SUBJECT_W).front(), L"Gamma") << "what is missing comes first";
    order = {0, 0, 0, {}};
    ASSERT_EQ(m_table->SortTable(set, 0), S_OK);
    EXPECT_EQ(Column(m_table, PR_SUBJECT_W), kAll);
    order = {1, 1, 0, {{kShade, TABLE_SORT_ASCEND}}};
    EXPECT_EQ(m_table->SortTable(set, 0), MAPI_E_TOO_COMPLEX);
    EXPECT_EQ(m_table->SortTable(nullptr, 0), MAPI_E_INVALID_PARAMETER);
}

TEST_F(TableTest, BookmarksStayWithTheirRow) {
    BOOKMARK mark = 0;
    ASSERT_EQ(m_table->SeekRow(BOOKMARK_BEGINNING, 2, nullptr), S_OK);
    ASSERT_EQ(m_table->CreateBookmark(&mark), S_OK);
    mailbox::Folder& inbox = Folder(L"Inbox");
    inbox.RemoveMessage(*inbox.Messages()[0]);
    ASSERT_EQ(m_table->SeekRow(mark, 0, nullptr), S_OK);
    EXPECT_EQ(Next(), L"Gamma");
    inbox.RemoveMessage(*inbox.Messages()[1]);
    EXPECT_EQ(m_table->SeekRow(mark, 0, nullptr), MAPI_W_POSITION_CHANGED);
    EXPECT_EQ(m_table->FreeBookmark(mark), S_OK);
    EXPECT_EQ(m_table->FreeBookmark(mark), MAPI_E_INVALID_BOOKMARK);
    EXPECT_EQ(m_table->SeekRow(mark, 0, nullptr), MAPI_E_INVALID_BOOKMARK);
    EXPECT_EQ(m_table->FreeBookmark(BOOKMARK_END), S_OK);
    ASSERT_EQ(m_table->CreateBookmark(&mark), S_OK);
    ASSERT_EQ(m_table->Restrict(nullptr, 0), S_OK);
    EXPECT_EQ(m_table->SeekRow(mark, 0, nullptr), MAPI_E_INVALID_BOOKMARK);
}

TEST_F(TableTest, ComingsAndGoingsShow) {
    ASSERT_EQ(m_table->SeekRow(BOOKMARK_BEGINNING, 3, nullptr), S_OK);
    mailbox::Folder& inbox = Folder(L"Inbox");
    inbox.RemoveMessage(*inbox.Messages()[0]);
    EXPECT_EQ(RowCount(m_table), 4u);
    EXPECT_EQ(Next(), L"delta");
    Add(L"new", 0, nullptr, {});
    EXPECT_EQ(RowCount(m_table), 5u);
    SPropValue zero = Long(PR_IMPORTANCE, 0);
    EXPECT_EQ(Restricted(Property(RELOP_EQ, zero)), Texts{L"new"});
    Add(L"newer", 0, nullptr, {});
    EXPECT_EQ(RowCount(m_table), 2u) << "in a restricted table too";
}

TEST_F(TableTest, LongTextIsCutAndLongBinaryRefusedInContents) {
    const auto message = MakeMessage();
    message->Write(PR_SUBJECT_W, std::wstring(300, L'x') + L"end");
    message->Write(kBytes, Bytes(511));
    ASSERT_EQ(message->Save(), S_OK);
    const Rows rows(m_table, {PR_SUBJECT_W, kBytes});
    EXPECT_EQ(std::wstring(rows.At(5, 0).Value.lpszW).size(), 255u);
    EXPECT_EQ(rows.At(5, 1).ulPropTag, CHANGE_PROP_TYPE(kBytes, PT_ERROR));
    EXPECT_EQ(rows.At(5, 1).Value.err, MAPI_E_NOT_ENOUGH_MEMORY);
    SPropValue end = Text(PR_SUBJECT_W, L"end");
    EXPECT_EQ(Restricted(Content(FL_SUBSTRING, end)).size(), 1u) << "restrictions look at it all";
}

TEST_F(TableTest, WhatNoTableHereDoesIsRefused) {
    ULONG connection = 0, status = 1, type = 9;
    SRowSet* rows = nullptr;
    EXPECT_EQ(m_table->Advise(fnevTableModified, nullptr, &connection), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(m_table->Unadvise(1), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(m_table->ExpandRow(0, nullptr, 0, 0, &rows, nullptr), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(m_table->CollapseRow(0, nullptr, 0, nullptr), MAPI_E_NO_SUPPORT);
    EXPECT_EQ(m_table->SetColumns(nullptr, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(m_table->SetColumns(Tags{PROP_TAG(PT_UNSPECIFIED, 0x37)}, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(m_table->SetColumns(Tags{PROP_TAG(PT_ERROR, 0x37)}, 0), MAPI_E_INVALID_PARAMETER);
    EXPECT_EQ(m_table->SetColumns(Tags{MVI_PROP(kKeywords)}, 0), MAPI_E_TOO_COMPLEX);
    EXPECT_EQ(m_table->SetColumns(Tags{PR_SUBJECT_W}, 8), MAPI_E_UNKNOWN_FLAGS);
    EXPECT_EQ(m_table->GetStatus(&status, &type), S_OK);
    EXPECT_EQ(status, TBLSTAT_COMPLETE);
}

TEST_F(TableTest, HrQueryAllRowsRestrictsSortsAndLimits) {
    SPropValue thirty = Long(PR_IMPORTANCE, 30);
    SRestriction isThirty = Property(RELOP_EQ, thirty);
    SizedSSortOrderSet(1, order) = {1, 0, 0, {{PR_SUBJECT_W, TABLE_SORT_DESCEND}}};
    m_table->SeekRow(BOOKMARK_END, 0, nullptr);
    Rows rows;
    ASSERT_EQ(HrQueryAllRows(m_table, Tags{PR_SUBJECT_W}, &isThirty, reinterpret_cast<SSortOrderSet*>(&order),
                             2, &rows),
              S_OK);
    ASSERT_EQ(rows.Count(), 2u);
    EXPECT_STREQ(rows.At(0, 0).Value.lpszW, L"delta");
    EXPECT_EQ(HrQueryAllRows(m_table, nullptr, nullptr, nullptr, 1, &rows), MAPI_E_TABLE_TOO_BIG);
    SPropValue none = Long(PR_IMPORTANCE, 31);
    SRestriction isNone = Property(RELOP_EQ, none);
    ASSERT_EQ(HrQueryAllRows(m_table, nullptr, &isNone, nullptr, 0, &rows), S_OK);
    EXPECT_EQ(rows.Count(), 0u);
}

} // namespace
} // namespace mapi_tests
