// AppointmentItem: the members of appointments beyond those of all items.
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

constexpr std::array<Row, 0> kRows{};

} // namespace

const ItemKind kAppointmentItem{
    .kind = {L"AppointmentItem", 0x00063033, 26, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Appointment",
    .itemType = 1,
    .home = mailbox::kCalendar,
};

} // namespace standin::outlook
