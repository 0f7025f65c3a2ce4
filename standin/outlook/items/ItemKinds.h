// The eighteen kinds of item: which message is which, and what makes them different.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/outlook/automation/Row.h"

namespace standin::outlook {

/// A kind of item.
struct ItemKind {
    Kind kind;
    /// What new items of the kind are; empty for a kind that nobody creates.
    const wchar_t* messageClass = L"";
    /// OlItemType, for kinds that can be created by number.
    std::optional<std::int32_t> itemType = std::nullopt;
    /// Where items of the kind belong, as an OlDefaultFolders number.
    std::int32_t home = 0;
    /// Fills a new item with what Outlook fills it with, beyond its class; null for nothing.
    void (*begin)(mailbox::OpenMessage& message) = nullptr;
    /// Brings properties that follow from others up to date before each save; null for nothing.
    void (*complete)(mailbox::OpenMessage& message) = nullptr;
    /// OlObjectClass, for a kind whose items differ in it; null for the kind's own.
    std::int32_t (*objectClass)(const mailbox::MessageProperties& message) = nullptr;
};

// One source each, in items/kinds.
extern const ItemKind kAppointmentItem;
extern const ItemKind kContactItem;
extern const ItemKind kDistListItem;
extern const ItemKind kDocumentItem;
extern const ItemKind kJournalItem;
extern const ItemKind kMailItem;
extern const ItemKind kMeetingItem;
extern const ItemKind kNoteItem;
extern const ItemKind kPostItem;
extern const ItemKind kRemoteItem;
extern const ItemKind kReportItem;
extern const ItemKind kSharingItem;
extern const ItemKind kStorageItem;
extern const ItemKind kTaskItem;
extern const ItemKind kTaskRequestItem;
extern const ItemKind kTaskRequestAcceptItem;
extern const ItemKind kTaskRequestDeclineItem;
extern const ItemKind kTaskRequestUpdateItem;

/// All of them.
std::span<const ItemKind* const> AllItemKinds();

/// The kind of a message: a storage item if it is associated, otherwise by its class, the longest one that it
/// is or descends from ("IPM.Note.Custom" is a mail). Classes that no kind has are mail, as custom forms are.
const ItemKind& KindOf(const mailbox::MessageProperties& message, bool associated);
const ItemKind& KindOfClass(std::wstring_view messageClass);
/// The kind that has this OlItemType number; null for none.
const ItemKind* KindOfItemType(std::int32_t itemType);

/// Whether a class is another one or descends from it.
bool DescendsFrom(std::wstring_view messageClass, std::wstring_view ancestor);

/// What all kinds have.
extern const std::span<const Row> kCommonItemRows;

} // namespace standin::outlook
