// ReportItem: the members of reports beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kReportItem{
    .kind = {L"ReportItem", 0x00063026, 46, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"REPORT",
};

} // namespace standin::outlook
