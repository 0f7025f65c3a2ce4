// The names behind the members of all kinds of item, and those behind what has no member.
#include "standin/outlook/items/KnownNames.h"

#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"

namespace standin::outlook {
namespace {

/// Numbers that follow one another in a set.
struct NameRange {
    const GUID* set;
    std::uint32_t first, last;
};

/// [MS-OXPROPS] 2, PidLid properties without a member of their own.
constexpr NameRange kRanges[] = {
    {&kPsAddress, 0x8005, 0x8007},     {&kPsAddress, 0x8015, 0x8015},     {&kPsAddress, 0x8022, 0x8029},
    {&kPsAddress, 0x802E, 0x802F},     {&kPsAddress, 0x8040, 0x8041},     {&kPsAddress, 0x804C, 0x8055},
    {&kPsAddress, 0x8063, 0x8064},     {&kPsAddress, 0x8080, 0x8085},     {&kPsAddress, 0x8090, 0x8095},
    {&kPsAddress, 0x80A0, 0x80A5},     {&kPsAddress, 0x80B2, 0x80B5},     {&kPsAddress, 0x80C2, 0x80C5},
    {&kPsAddress, 0x80D2, 0x80D5},     {&kPsAddress, 0x80DA, 0x80E3},     {&kPsTask, 0x8101, 0x8105},
    {&kPsTask, 0x8107, 0x8109},        {&kPsTask, 0x810F, 0x8113},        {&kPsTask, 0x8115, 0x8117},
    {&kPsTask, 0x8119, 0x811C},        {&kPsTask, 0x811E, 0x8127},        {&kPsTask, 0x8129, 0x812A},
    {&kPsTask, 0x812C, 0x812C},        {&kPsTask, 0x812F, 0x812F},        {&kPsTask, 0x8139, 0x8139},
    {&kPsAppointment, 0x8201, 0x8201}, {&kPsAppointment, 0x8203, 0x8209}, {&kPsAppointment, 0x820A, 0x820E},
    {&kPsAppointment, 0x8211, 0x8219}, {&kPsAppointment, 0x821A, 0x821A}, {&kPsAppointment, 0x8223, 0x8229},
    {&kPsAppointment, 0x822B, 0x822B}, {&kPsAppointment, 0x822E, 0x822E}, {&kPsAppointment, 0x8231, 0x823E},
    {&kPsAppointment, 0x8240, 0x8244}, {&kPsAppointment, 0x8246, 0x8249}, {&kPsAppointment, 0x8250, 0x8254},
    {&kPsAppointment, 0x8256, 0x8260}, {&kPsCommon, 0x8501, 0x8503},      {&kPsCommon, 0x8506, 0x8507},
    {&kPsCommon, 0x850E, 0x850E},      {&kPsCommon, 0x8510, 0x8511},      {&kPsCommon, 0x8514, 0x8514},
    {&kPsCommon, 0x8516, 0x8519},      {&kPsCommon, 0x851C, 0x851F},      {&kPsCommon, 0x8520, 0x8524},
    {&kPsCommon, 0x8530, 0x8530},      {&kPsCommon, 0x8534, 0x853A},      {&kPsCommon, 0x8540, 0x8540},
    {&kPsCommon, 0x8552, 0x8554},      {&kPsCommon, 0x8560, 0x8560},      {&kPsCommon, 0x8578, 0x8578},
    {&kPsCommon, 0x8580, 0x8587},      {&kPsCommon, 0x85A0, 0x85A4},      {&kPsCommon, 0x85BD, 0x85C0},
    {&kPsLog, 0x8706, 0x870C},         {&kPsLog, 0x8712, 0x8712},         {&kPsSharing, 0x8A00, 0x8A29},
    {&kPsMeeting, 0x0001, 0x0014},     {&kPsMeeting, 0x001A, 0x001C},     {&kPsMeeting, 0x0023, 0x002A},
};

void EnterRows(mailbox::NamedProperties& names, std::span<const Row> rows) {
    for (const Row& row : rows) {
        if (!row.stored.set)
            continue;
        mailbox::PropertyName name{*row.stored.set, row.stored.number};
        if (row.stored.name)
            name.id = row.stored.name;
        names.Id(name, true);
    }
}

} // namespace

void EnterKnownNames(mailbox::NamedProperties& names) {
    for (const ItemKind* kind : AllItemKinds()) {
        EnterRows(names, kind->kind.rows);
        EnterRows(names, kind->kind.shared);
        for (const std::span<const Row>* topic : kind->kind.topics)
            EnterRows(names, *topic);
    }
    for (const NameRange& range : kRanges)
        for (std::uint32_t number = range.first; number <= range.last; ++number)
            names.Id({*range.set, number}, true);
}

} // namespace standin::outlook
