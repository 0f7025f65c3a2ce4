// An attachment: what it is called, where it stands, saving it as a file.
#include "standin/outlook/objects/Attachment.h"

#include "standin/mailbox/Msg.h"
#include "standin/mailbox/Platform.h"
#include "standin/mapi/Views.h"
#include "standin/outlook/calendar/ExceptionMessages.h"
#include "standin/outlook/items/SaveAs.h"
#include "standin/outlook/objects/PropertyAccessor.h"

#include <algorithm>
#include <filesystem>

namespace standin::outlook {
namespace {

using mailbox::Access;
using mailbox::Bytes;
using mailbox::OpenAttachment;

constexpr std::int32_t kNotInTheText = -1;
constexpr std::int32_t kNotBlocked = 0; // OlAttachmentBlockLevel

template <mailbox::PropertyTag tag>
std::wstring Text(const OpenAttachment& attachment) {
    return attachment.Get<tag>().value_or(L"");
}

std::wstring EmbeddedSubject(const OpenAttachment& attachment) {
    const auto& embedded = attachment.Current().embedded;
    return embedded ? embedded->properties.GetOr<PR_SUBJECT_W>(L"") : std::wstring();
}

/// An item has the name of a file that it could be saved in.
std::wstring FileNameOf(const OpenAttachment& attachment) {
    for (const std::wstring& name :
         {Text<PR_ATTACH_LONG_FILENAME_W>(attachment), Text<PR_ATTACH_FILENAME_W>(attachment)})
        if (!name.empty())
            return name;
    return attachment.Current().embedded ? EmbeddedSubject(attachment) + L".msg" : std::wstring();
}

std::wstring FileName(AttachmentObject& attachment) {
    return FileNameOf(*attachment.Open(Access::Read));
}

std::wstring DisplayName(AttachmentObject& attachment) {
    const auto open = attachment.Open(Access::Read);
    const std::wstring name = Text<PR_DISPLAY_NAME_W>(*open);
    return name.empty() ? FileNameOf(*open) : name;
}

template <class T>
void WriteProperty(AttachmentObject& attachment, mailbox::PropertyTag tag, T value) {
    const auto open = attachment.Open(Access::Modify);
    Check(open->Write(tag, std::move(value)));
    Check(open->Save());
}

void SetDisplayName(AttachmentObject& attachment, const Arguments& value) {
    WriteProperty(attachment, PR_DISPLAY_NAME_W, value.Text(0));
}

std::wstring PathName(AttachmentObject& attachment) {
    const auto open = attachment.Open(Access::Read);
    const std::wstring path = Text<PR_ATTACH_LONG_PATHNAME_W>(*open);
    return path.empty() ? Text<PR_ATTACH_PATHNAME_W>(*open) : path;
}

std::int32_t Position(AttachmentObject& attachment) {
    return attachment.Open(Access::Read)->Get<PR_RENDERING_POSITION>().value_or(kNotInTheText);
}

void SetPosition(AttachmentObject& attachment, const Arguments& value) {
    WriteProperty(attachment, PR_RENDERING_POSITION, value.Number(0));
}

std::int32_t Size(AttachmentObject& attachment) {
    return attachment.Open(Access::Read)->Get<PR_ATTACH_SIZE>().value_or(0);
}

std::int32_t Type(AttachmentObject& attachment) {
    switch (attachment.Open(Access::Read)->Get<PR_ATTACH_METHOD>().value_or(ATTACH_BY_VALUE)) {
    case ATTACH_BY_REFERENCE:
    case ATTACH_BY_REF_RESOLVE:
    case ATTACH_BY_REF_ONLY:
        return static_cast<std::int32_t>(AttachmentType::ByReference);
    case ATTACH_EMBEDDED_MSG:
        return static_cast<std::int32_t>(AttachmentType::EmbeddedItem);
    case ATTACH_OLE:
        return static_cast<std::int32_t>(AttachmentType::Ole);
    default:
        return static_cast<std::int32_t>(AttachmentType::ByValue);
    }
}

std::int32_t Index(AttachmentObject& attachment) {
    return attachment.Place();
}

void Delete(AttachmentObject& attachment) {
    attachment.Remove();
}

/// What a file of the attachment holds. There is none for a reference and an OLE object.
Bytes FileBytes(const OpenAttachment& attachment) {
    if (const auto& embedded = attachment.Current().embedded) {
        Bytes file;
        Check(mailbox::WriteMsgBytes(*embedded, attachment.Names(), file));
        return file;
    }
    if (std::optional<Bytes> data = attachment.Get<PR_ATTACH_DATA_BIN>())
        return std::move(*data);
    throw Failure(MAPI_E_NO_SUPPORT, L"Outlook cannot do this action on this type of attachment.");
}

void SaveAsFile(AttachmentObject& attachment, const Arguments& arguments) {
    WriteOutFile(arguments.Text(0), FileBytes(*attachment.Open(Access::Read)));
}

std::wstring GetTemporaryFilePath(AttachmentObject& attachment) {
    const auto open = attachment.Open(Access::Read);
    const Bytes bytes = FileBytes(*open);
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / mailbox::TextOfGuid(mailbox::NewGuid());
    std::filesystem::create_directory(folder);
    // A name that leads elsewhere leads nowhere: its last part counts.
    std::wstring path = (folder / std::filesystem::path(FileNameOf(*open)).filename()).wstring();
    WriteOutFile(path, bytes);
    return path;
}

ComPtr<PropertyAccessorObject> Accessor(AttachmentObject& attachment) {
    const auto open = attachment.Open(Access::Modify);
    return Make<PropertyAccessorObject>(ComPtr<Object>(&attachment), open, [open] { Check(open->Save()); });
}

ComPtr<IUnknown> MapiObject(AttachmentObject& attachment) {
    return ComPtr<IUnknown>::Adopt(mapi::MakeAttachment(attachment.Open(Access::Modify)));
}

constexpr Row kRows[] = {
    {L"BlockLevel", Always<kNotBlocked>},
    {L"Delete", Get<Delete>},
    {L"DisplayName", Get<DisplayName>, Put<SetDisplayName>},
    {L"FileName", Get<FileName>},
    {L"GetTemporaryFilePath", Get<GetTemporaryFilePath>},
    {L"Index", Get<Index>},
    {L"MAPIOBJECT", Get<MapiObject>},
    {L"PathName", Get<PathName>},
    {L"Position", Get<Position>, Put<SetPosition>},
    {L"PropertyAccessor", Get<Accessor>},
    {L"SaveAsFile", Get<SaveAsFile>},
    {L"Size", Get<Size>},
    {L"Type", Get<Type>},
};

constexpr Kind kKind{L"Attachment", 0x00063007, 5, kRows};

} // namespace

AttachmentObject::AttachmentObject(ComPtr<Object> owner, std::shared_ptr<mailbox::OpenMessage> message,
                                   std::uint32_t number)
    : Object(kKind), m_owner(std::move(owner)), m_message(std::move(message)), m_number(number) {
}

/// Where the item is open for reading only, so is the attachment.
std::shared_ptr<OpenAttachment> AttachmentObject::Open(mailbox::Access access) const {
    std::shared_ptr<OpenAttachment> open;
    Check(m_message->OpenAttachmentNumber(m_number, m_message->IsWritable() ? access : mailbox::Access::Read,
                                          open));
    return open;
}

std::int32_t AttachmentObject::Place() const {
    const auto all = calendar::ShownAttachments(*m_message);
    const auto found = std::ranges::find(all, m_number, [](const auto& each) { return each->number; });
    if (found == all.end())
        throw Failure(MAPI_E_NOT_FOUND);
    return static_cast<std::int32_t>(found - all.begin()) + 1;
}

void AttachmentObject::Remove() {
    Check(m_message->RemoveAttachment(m_number));
}

} // namespace standin::outlook
