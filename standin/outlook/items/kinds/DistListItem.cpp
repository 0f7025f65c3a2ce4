// DistListItem: the members of distribution lists beyond those of all items ([MS-OXOCNTC] 2.2.2).
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/items/Completion.h"
#include "standin/outlook/items/DistListMembers.h"
#include "standin/outlook/items/Filing.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/objects/PropertyValues.h"
#include "standin/outlook/objects/Recipients.h"

#include <algorithm>

namespace standin::outlook {
namespace {

using mailbox::Bytes;
using mailbox::MessageProperties;
using mailbox::OpenMessage;

constexpr StoredProperty kName{.tag = PT_UNICODE, .set = &kPsAddress, .number = 0x8053};
constexpr StoredProperty kFileUnder{.tag = PT_UNICODE, .set = &kPsAddress, .number = 0x8005};

/// A list has one name, in all the places where contacts have theirs.
void WriteName(OpenMessage& message, const std::wstring& name) {
    Check(message.Write(PR_SUBJECT_PREFIX_W, std::wstring()));
    Check(message.Write(PR_SUBJECT_W, name));
    Check(message.Write(PR_DISPLAY_NAME_W, name));
    WriteValue(message, kName, name);
    WriteValue(message, kFileUnder, name);
}

void FollowName(OpenMessage& message) {
    WriteName(message, StoredText(message, kName));
}

void FollowSubject(OpenMessage& message) {
    WriteName(message, message.Get<PR_SUBJECT_W>().value_or(L""));
}

/// Entry ids as an array of arrays of bytes.
_variant_t ReadIds(const MessageProperties& message, const StoredProperty& stored) {
    const auto value = ReadValue(message, stored);
    return value ? VariantOf(*value) : _variant_t();
}

void WriteIds(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    if (!(call.arguments[0].vt & VT_ARRAY))
        throw InvalidValue();
    std::vector<Bytes> ids;
    for (const _variant_t& element : ElementsOf(call.arguments[0])) {
        std::optional<Bytes> id = BytesOfArray(element);
        if (!id)
            throw InvalidValue();
        ids.push_back(std::move(*id));
    }
    WriteValue(message, stored, std::move(ids));
}

constexpr Conversion kEntryIds{ReadIds, WriteIds};

bool SamePerson(const mailbox::AddressEntry& left, const mailbox::AddressEntry& right) {
    return mailbox::SameIgnoringCase(left.AddressType(), right.AddressType()) &&
           mailbox::SameIgnoringCase(left.Address(), right.Address());
}

auto Find(const std::vector<ListMember>& members, const mailbox::AddressEntry& person) {
    return std::ranges::find_if(members, [&person](const ListMember& member) {
        const auto entry = EntryOf(member);
        return entry && SamePerson(*entry, person);
    });
}

/// Somebody who is in it already isn't entered twice.
void Add(OpenMessage& message, RecipientObject& recipient) {
    const EntryPtr person = recipient.Entry();
    std::vector<ListMember> members = ReadMembers(message);
    if (Find(members, *person) != members.end())
        return;
    members.push_back(MakeMember(*person));
    WriteMembers(message, members);
}

void Remove(OpenMessage& message, RecipientObject& recipient) {
    const EntryPtr person = recipient.Entry();
    std::vector<ListMember> members = ReadMembers(message);
    const auto member = Find(members, *person);
    if (member == members.end())
        throw Failure(MAPI_E_NOT_FOUND);
    members.erase(member);
    WriteMembers(message, members);
}

using Change = void (*)(OpenMessage& message, RecipientObject& recipient);

template <Change change>
void ChangeOne(ItemObject& item, const Arguments& arguments) {
    change(item.Message(), *arguments.As<RecipientObject>(0).Get());
}

/// All of them or, if one of them can't be, none.
template <Change change>
void ChangeAll(ItemObject& item, const Arguments& arguments) {
    const ComPtr<RecipientsObject> recipients = arguments.As<RecipientsObject>(0);
    const std::vector<ListMember> before = ReadMembers(item.Message());
    try {
        for (std::int32_t place = 1; place <= recipients->Count(); ++place) {
            const ComPtr<Object> recipient = OwnObject(recipients->At(place));
            change(item.Message(), static_cast<RecipientObject&>(*recipient.Get()));
        }
    } catch (const Failure&) {
        WriteMembers(item.Message(), before);
        throw;
    }
}

/// A member that leads nowhere has its name only, as far as there is one.
ComPtr<RecipientObject> GetMember(ItemObject& item, const Arguments& arguments) {
    const std::vector<ListMember> members = ReadMembers(item.Message());
    const auto index = static_cast<std::size_t>(arguments.Number(0)) - 1;
    if (index >= members.size())
        throw IndexOutOfBounds();
    const auto entry = EntryOf(members[index]);
    mailbox::PropertyBag row = entry ? entry->RecipientProperties() : UnresolvedRecipient(L"");
    row.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
    return Make<RecipientObject>(std::move(row));
}

std::int32_t MemberCount(ItemObject& item) {
    return static_cast<std::int32_t>(ReadMembers(item.Message()).size());
}

void Begin(OpenMessage& message) {
    constexpr std::int32_t kIcon = 0x202;
    BeginFiled(message, kIcon);
    EnterAuthor(message);
}

/// Other programs write members without their one-offs and checksum.
void Complete(OpenMessage& message) {
    std::vector<ListMember> members = ReadMembers(message);
    for (ListMember& member : members)
        if (const auto entry = member.oneOff.empty() ? EntryOf(member) : nullptr)
            member.oneOff = MakeMember(*entry).oneOff;
    WriteMembers(message, members);
    CompleteConversation(message);
}

constexpr Row kRows[] = {
    Named(L"CheckSum", kNumber, PT_LONG, kPsAddress, 0x804C),
    Then<FollowName>(Named(L"DLName", kText, PT_UNICODE, kPsAddress, 0x8053)),
    Named(L"Members", kEntryIds, PT_MV_BINARY, kPsAddress, 0x8055),
    Named(L"OneOffMembers", kEntryIds, PT_MV_BINARY, kPsAddress, 0x8054),
    Then<FollowSubject>(Stored(L"Subject", kText, PR_SUBJECT_W)),
    {L"AddMember", Get<ChangeOne<Add>>},
    {L"AddMembers", Get<ChangeAll<Add>>},
    {L"GetMember", Get<GetMember>},
    {L"MemberCount", Get<MemberCount>},
    {L"RemoveMember", Get<ChangeOne<Remove>>},
    {L"RemoveMembers", Get<ChangeAll<Remove>>},
};

} // namespace

const ItemKind kDistListItem{
    .kind = {L"DistListItem", 0x00063081, 69, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.DistList",
    .itemType = 7,
    .home = mailbox::kContacts,
    .begin = Begin,
    .complete = Complete,
};

} // namespace standin::outlook
