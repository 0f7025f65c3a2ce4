// SharingItem: the members of invitations to shared folders, of requests for them, and of the answers, beyond
// those of all items ([MS-OXSHARE] 2.2).
#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/SpecialFolders.h"
#include "standin/outlook/folders/Folder.h"
#include "standin/outlook/items/Answers.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/items/Sending.h"
#include "standin/outlook/session/Session.h"

#include <algorithm>
#include <cstring>

namespace standin::outlook {
namespace {

using mailbox::Bytes;
using mailbox::MessageProperties;
using mailbox::OpenMessage;

constexpr StoredProperty kProviderGuid{.tag = PT_BINARY, .set = &kPsSharing, .number = 0x8A01};
constexpr StoredProperty kRemoteUid{.tag = PT_UNICODE, .set = &kPsSharing, .number = 0x8A06};
constexpr StoredProperty kLocalType{.tag = PT_UNICODE, .set = &kPsSharing, .number = 0x8A14};
constexpr StoredProperty kFlavor{.tag = PT_LONG, .set = &kPsSharing, .number = 0x8A18};
constexpr StoredProperty kInstanceGuid{.tag = PT_BINARY, .set = &kPsSharing, .number = 0x8A1C};
constexpr StoredProperty kRemoteType{.tag = PT_UNICODE, .set = &kPsSharing, .number = 0x8A1D};

/// OlSharingMsgType.
constexpr std::int32_t kRequest = 1, kInviteAndRequest = 3, kAllowed = 4, kDenied = 5;

/// PidLidSharingFlavor ([MS-OXSHARE] 2.2.2.5) but for the bit that says that the folder is a special one.
constexpr std::int32_t kSpecialFolder = 0x20000;
struct Flavor {
    std::int32_t type; ///< OlSharingMsgType
    std::int32_t bits;
};
constexpr Flavor kFlavors[] = {
    {kRequest, 0x0500}, {2, 0x0310}, {kInviteAndRequest, 0x0710}, {kAllowed, 0x3310}, {kDenied, 0x5100}};

std::int32_t FlavorOf(const MessageProperties& message) {
    return ReadAs<std::int32_t>(message, kFlavor).value_or(0);
}

std::int32_t TypeOf(const MessageProperties& message) {
    const auto flavor = std::ranges::find(kFlavors, FlavorOf(message) & ~kSpecialFolder, &Flavor::bits);
    return flavor == std::end(kFlavors) ? 0 : flavor->type;
}

void SetTypeOf(OpenMessage& message, std::int32_t type) {
    const auto flavor = std::ranges::find(kFlavors, type, &Flavor::type);
    if (flavor == std::end(kFlavors))
        throw InvalidValue();
    WriteValue(message, kFlavor, flavor->bits | (FlavorOf(message) & kSpecialFolder));
}

std::int32_t Type(ItemObject& item) {
    return TypeOf(item.Message());
}

void SetType(ItemObject& item, const Arguments& value) {
    SetTypeOf(item.Message(), value.Number(0));
}

struct FolderKind {
    std::wstring_view containerClass;
    std::int32_t folder; ///< OlDefaultFolders
};
constexpr FolderKind kFolders[] = {
    {L"IPF.Appointment", mailbox::kCalendar}, {L"IPF.Contact", mailbox::kContacts},
    {L"IPF.Journal", mailbox::kJournal},      {L"IPF.StickyNote", mailbox::kNotes},
    {L"IPF.Task", mailbox::kTasks},           {L"IPF.Note", mailbox::kInbox},
};

/// By the class of the folder that it is about; 0 for one of no class that a default folder has.
std::int32_t RequestedFolder(ItemObject& item) {
    std::wstring containerClass = StoredText(item.Message(), kRemoteType);
    if (containerClass.empty())
        containerClass = StoredText(item.Message(), kLocalType);
    const auto row = std::ranges::find_if(
        kFolders, [&](const FolderKind& each) { return DescendsFrom(containerClass, each.containerClass); });
    return row == std::end(kFolders) ? 0 : row->folder;
}

/// Exchange ([MS-OXSHARE] 2.2.2.13), the only provider whose folders are here.
constexpr GUID kExchange = InterfaceId(0x0006F0AE);

std::optional<GUID> ProviderOf(const MessageProperties& message) {
    GUID guid{};
    const auto bytes = ReadAs<Bytes>(message, kProviderGuid);
    if (!bytes || bytes->size() != sizeof guid)
        return std::nullopt;
    std::memcpy(&guid, bytes->data(), sizeof guid);
    return guid;
}

std::int32_t SharingProvider(ItemObject& item) {
    constexpr std::int32_t kUnknown = 0, kProviderExchange = 1; // OlSharingProvider
    return ProviderOf(item.Message()) == kExchange ? kProviderExchange : kUnknown;
}

std::wstring SharingProviderGuid(ItemObject& item) {
    const auto guid = ProviderOf(item.Message());
    return guid ? mailbox::TextOfGuid(*guid) : std::wstring();
}

/// The rights that go with the folder: those of somebody who edits, or of one who reads ([MS-OXCPERM] 2.2.7).
constexpr std::int32_t kMayEdit = 0x20, kEditor = 0x47B, kReviewer = 0x401;

_variant_t ReadWriteAccess(const MessageProperties& message, const StoredProperty& stored) {
    return Result((ReadAs<std::int32_t>(message, stored).value_or(0) & kMayEdit) != 0);
}

void WriteWriteAccess(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    WriteValue(message, stored, call.arguments.Flag(0) ? kEditor : kReviewer);
}

constexpr Conversion kWriteAccess{ReadWriteAccess, WriteWriteAccess};

/// An answer to a request, unsent. Raises for what asks for nothing.
ComPtr<ItemObject> Respond(ItemObject& item, std::int32_t type) {
    const OpenMessage& request = item.Message();
    if (const std::int32_t asked = TypeOf(request); asked != kRequest && asked != kInviteAndRequest)
        throw Failure(E_FAIL, L"The item is not a sharing request.");
    const ComPtr<ItemObject> answer = Answer(item, AnswerKind::Reply);
    OpenMessage& message = answer->Message();
    Check(message.Write(PR_MESSAGE_CLASS_W, std::wstring(kSharingItem.messageClass)));
    for (const StoredProperty& stored : {kProviderGuid, kInstanceGuid, kLocalType, kRemoteType})
        if (std::optional<mailbox::Value> value = ReadValue(request, stored))
            WriteValue(message, stored, std::move(*value));
    WriteValue(message, kFlavor, FlavorOf(request) & kSpecialFolder);
    SetTypeOf(message, type);
    return ItemFor(answer->Shared());
}

/// Tells the one who asked. The folder's permissions are the server's.
void Allow(ItemObject& item) {
    SendItem(*Respond(item, kAllowed).Get());
}

ComPtr<ItemObject> Deny(ItemObject& item) {
    return Respond(item, kDenied);
}

/// The folder that an invitation names.
ComPtr<FolderObject> OpenSharedFolder(ItemObject& item) {
    const auto entryId = mailbox::FromHex(StoredText(item.Message(), kRemoteUid));
    mailbox::Folder* folder = entryId ? LoggedOnWorld().FindFolder(*entryId) : nullptr;
    if (!folder)
        throw Failure(MAPI_E_NOT_FOUND);
    return FolderFor(*folder);
}

constexpr Row kRows[] = {
    Named(L"AllowWriteAccess", kWriteAccess, PT_LONG, kPsSharing, 0x8A1B),
    Named(L"RemoteID", kText, PT_UNICODE, kPsSharing, 0x8A06),
    Named(L"RemoteName", kText, PT_UNICODE, kPsSharing, 0x8A05),
    Named(L"RemotePath", kText, PT_UNICODE, kPsSharing, 0x8A04),
    {L"Allow", Get<Allow>},
    {L"Deny", Get<Deny>},
    {L"Forward", Get<ForwardAsIs>},
    {L"OpenSharedFolder", Get<OpenSharedFolder>},
    {L"RequestedFolder", Get<RequestedFolder>},
    {L"SharingProvider", Get<SharingProvider>},
    {L"SharingProviderGuid", Get<SharingProviderGuid>},
    {L"Type", Get<Type>, Put<SetType>},
};

} // namespace

const ItemKind kSharingItem{
    .kind = {L"SharingItem", 0x0006302F, 104, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.Sharing",
};

} // namespace standin::outlook
