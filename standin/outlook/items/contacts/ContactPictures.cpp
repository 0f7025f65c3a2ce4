// The picture of a contact, an attachment of a name of its own, and its business card.
#include "standin/mailbox/Files.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/SaveAs.h"
#include "standin/outlook/items/contacts/ContactTopics.h"
#include "standin/outlook/objects/Attachments.h"

#include <algorithm>

namespace standin::outlook {
namespace {

using mailbox::Bytes;
using mailbox::OpenMessage;

constexpr StoredProperty kHasPicture{.tag = PT_BOOLEAN, .set = &kPsAddress, .number = 0x8015};
constexpr StoredProperty kCardDefinition{.tag = PT_BINARY, .set = &kPsAddress, .number = 0x8040};
constexpr mailbox::PropertyTag kPrAttachmentContactPhoto = PROP_TAG(PT_BOOLEAN, 0x7FFF);
constexpr const wchar_t* kPictureName = L"ContactPicture.jpg";
constexpr std::int32_t kNotInTheText = -1;

/// How files of pictures begin.
constexpr std::string_view kSignatures[] = {"\xFF\xD8\xFF", "\x89PNG", "GIF8", "BM"};

bool IsPicture(const Bytes& file) {
    const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
    return std::ranges::any_of(kSignatures, [text](std::string_view each) { return text.starts_with(each); });
}

void RemovePicture(ItemObject& item) {
    OpenMessage& message = item.Message();
    std::vector<std::uint32_t> numbers;
    for (const mailbox::AttachmentPtr& each : message.Attachments())
        if (each->properties.GetOr<kPrAttachmentContactPhoto>(false))
            numbers.push_back(each->number);
    for (const std::uint32_t number : numbers)
        Check(message.RemoveAttachment(number));
    WriteValue(message, kHasPicture, false);
}

/// In place of the one that is there. The file is kept as it is, also if it is no JPEG.
void AddPicture(ItemObject& item, const Arguments& arguments) {
    CheckAbsolute(arguments.Text(0));
    Bytes file;
    if (FAILED(mailbox::ReadWholeFile(mailbox::LongPath(arguments.Text(0)), file)))
        throw FileNotFound();
    if (!IsPicture(file))
        throw InvalidValue();
    RemovePicture(item);
    OpenMessage& message = item.Message();
    const std::uint32_t number = AttachBytes(message, {kPictureName, L""}, std::move(file), kNotInTheText);
    std::shared_ptr<mailbox::OpenAttachment> picture;
    Check(message.OpenAttachmentNumber(number, mailbox::Access::Modify, picture));
    Check(picture->Write(kPrAttachmentContactPhoto, true));
    Check(picture->Save());
    WriteValue(message, kHasPicture, true);
}

/// The card has Outlook's own layout again.
void ResetBusinessCard(ItemObject& item) {
    RemoveValue(item.Message(), kCardDefinition);
}

constexpr std::int32_t kOutlookCard = 0; // OlBusinessCardType

// Layouts, images and vCards of business cards are made by Outlook's card designer, which is not here.
constexpr Row kRows[] = {
    Named(L"HasPicture", kFlag, PT_BOOLEAN, kPsAddress, 0x8015),
    {L"AddPicture", Get<AddPicture>},
    {L"BusinessCardType", Always<kOutlookCard>},
    {L"RemovePicture", Get<RemovePicture>},
    {L"ResetBusinessCard", Get<ResetBusinessCard>},
};

} // namespace

constinit const std::span<const Row> kContactPictureRows = kRows;

} // namespace standin::outlook
