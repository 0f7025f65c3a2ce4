// The attachments of an item: adding files and items, removing.
#include "standin/outlook/objects/Attachments.h"

#include "standin/mailbox/Files.h"
#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/calendar/ExceptionMessages.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/SaveAs.h"

#include <algorithm>
#include <filesystem>

namespace standin::outlook {
namespace {

using mailbox::Bytes;
using mailbox::Content;
using mailbox::OpenAttachment;
using mailbox::OpenMessage;

constexpr std::int32_t kNotInTheText = -1;

std::shared_ptr<OpenAttachment> Begin(OpenMessage& message, std::int32_t method,
                                      const std::wstring& displayName, std::int32_t position) {
    std::shared_ptr<OpenAttachment> open;
    Check(message.CreateAttachment(open));
    Check(open->Write(PR_ATTACH_METHOD, method));
    Check(open->Write(PR_RENDERING_POSITION, position));
    Check(open->Write(PR_DISPLAY_NAME_W, displayName));
    Check(open->Write(PR_ATTACH_ENCODING, Bytes()));
    Check(open->Write(mailbox::kPrAttachFlags, std::int32_t{0}));
    Check(open->Write(mailbox::kPrAttachmentHidden, false));
    return open;
}

/// The name in the form that file systems of old had: eight characters, a point, three.
std::wstring ShortName(const std::filesystem::path& name) {
    constexpr std::size_t kBase = 8, kExtension = 4, kKept = 6;
    std::wstring base = name.stem().wstring(), extension = name.extension().wstring();
    const auto isOdd = [](wchar_t c) { return c <= L' ' || c > L'~' || c == L'.' || c == L','; };
    const bool fits =
        base.size() <= kBase && extension.size() <= kExtension && std::ranges::none_of(base, isOdd);
    if (fits)
        return base + extension;
    std::erase_if(base, isOdd);
    return base.substr(0, kKept) + L"~1" + extension.substr(0, kExtension);
}

void WriteNames(OpenAttachment& attachment, const std::filesystem::path& path) {
    Check(attachment.Write(PR_ATTACH_LONG_FILENAME_W, path.filename().wstring()));
    Check(attachment.Write(PR_ATTACH_FILENAME_W, ShortName(path.filename())));
    Check(attachment.Write(PR_ATTACH_EXTENSION_W, path.extension().wstring()));
}

std::wstring ShownName(const AttachmentNames& names) {
    return names.displayName.empty() ? std::filesystem::path(names.path).filename().wstring()
                                     : names.displayName;
}

/// Raises for a path that leads to no file, as Outlook does it.
void CheckFile(const std::wstring& path) {
    CheckAbsolute(path);
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        throw FileNotFound();
    if (attributes & FILE_ATTRIBUTE_DIRECTORY)
        throw Failure(E_ACCESSDENIED);
}

/// What Add was asked for.
struct Request {
    std::wstring path = {};
    ComPtr<ItemObject> item = {}; ///< null: a file
    std::int32_t position;
    std::wstring displayName;
};

std::uint32_t AddByValue(OpenMessage& message, const Request& request) {
    Bytes bytes;
    if (FAILED(mailbox::ReadWholeFile(mailbox::LongPath(request.path), bytes)))
        throw Failure(E_ACCESSDENIED);
    return AttachBytes(message, {request.path, request.displayName}, std::move(bytes), request.position);
}

std::uint32_t AddByReference(OpenMessage& message, const Request& request) {
    const auto open =
        Begin(message, ATTACH_BY_REF_ONLY, ShownName({request.path, request.displayName}), request.position);
    WriteNames(*open, request.path);
    Check(open->Write(PR_ATTACH_PATHNAME_W, request.path));
    Check(open->Write(PR_ATTACH_LONG_PATHNAME_W, request.path));
    Check(open->Save());
    return open->Number();
}

/// A file must be an MSG file.
std::uint32_t AddEmbedded(OpenMessage& message, const Request& request) {
    if (request.item) {
        const OpenMessage& source = request.item->Message();
        return AttachMessage(message, source.Current(), source.Names(), request.displayName);
    }
    return AttachMessage(message, ReadMsgFile(request.path, message.Names()), message.Names(),
                         request.displayName);
}

struct TypeRow {
    AttachmentType type;
    std::uint32_t (*add)(OpenMessage& message, const Request& request);
};

constexpr TypeRow kTypes[] = {
    {AttachmentType::ByValue, AddByValue},
    {AttachmentType::ByReference, AddByReference},
    {AttachmentType::EmbeddedItem, AddEmbedded},
};

/// An item can be embedded only, whatever type is given for it.
ComPtr<AttachmentObject> Add(AttachmentsObject& attachments, const Arguments& arguments) {
    constexpr std::size_t kSource = 0, kType = 1, kPosition = 2, kDisplayName = 3;
    const auto number = static_cast<AttachmentType>(
        arguments.Number(kType, static_cast<std::int32_t>(AttachmentType::ByValue)));
    Request request{.position = arguments.Number(kPosition, kNotInTheText),
                    .displayName = arguments.Text(kDisplayName, L"")};
    if (arguments[kSource].vt == VT_DISPATCH)
        request.item = arguments.As<ItemObject>(kSource);
    else
        request.path = arguments.Text(kSource, L"");
    if (!ObjectModel::Get().HasValue(L"OlAttachmentType", static_cast<std::int32_t>(number)))
        throw InvalidValue();
    const auto row = std::ranges::find(kTypes, number, &TypeRow::type);
    if (row == std::end(kTypes))
        throw NotBuilt(L"attachments of OLE objects");
    if (!request.item)
        CheckFile(request.path);
    const auto add = request.item ? AddEmbedded : row->add;
    return attachments.Attachment(add(*attachments.Message(), request));
}

void Remove(AttachmentsObject& attachments, const Arguments& arguments) {
    const std::int32_t place = arguments.Number(0);
    if (place < 1 || place > attachments.Count())
        throw IndexOutOfBounds();
    OpenMessage& message = *attachments.Message();
    const auto shown = calendar::ShownAttachments(message);
    Check(message.RemoveAttachment(shown[static_cast<std::size_t>(place - 1)]->number));
}

constexpr Row kRows[] = {
    {L"Add", Get<Add>},
    {L"Remove", Get<Remove>},
};

const Kind kKind{L"Attachments", 0x0006303C, 18, kRows, kCollectionRows};

} // namespace

std::uint32_t AttachBytes(OpenMessage& message, const AttachmentNames& names, Bytes bytes,
                          std::int32_t position) {
    const auto open = Begin(message, ATTACH_BY_VALUE, ShownName(names), position);
    WriteNames(*open, names.path);
    Check(open->Write(PR_ATTACH_DATA_BIN, std::move(bytes)));
    Check(open->Save());
    return open->Number();
}

std::uint32_t AttachMessage(OpenMessage& message, const Content& content,
                            const mailbox::NamedProperties& from, const std::wstring& displayName) {
    const std::wstring subject = content.properties.GetOr<PR_SUBJECT_W>(L"");
    const auto open =
        Begin(message, ATTACH_EMBEDDED_MSG, displayName.empty() ? subject : displayName, kNotInTheText);
    std::shared_ptr<OpenMessage> embedded;
    Check(open->Embedded(true, mailbox::Access::Modify, embedded));
    Content* copy = nullptr;
    Check(embedded->EditContent(copy));
    *copy = mailbox::RemapContent(content, from, message.Names());
    Check(embedded->Save());
    Check(open->Save());
    return open->Number();
}

void CopyAttachments(const OpenMessage& from, OpenMessage& to) {
    const Content remapped = mailbox::RemapContent(from.Current(), from.Names(), to.Names());
    Content* content = nullptr;
    Check(to.EditContent(content));
    content->attachments = remapped.attachments;
}

AttachmentsObject::AttachmentsObject(ComPtr<Object> owner, std::shared_ptr<OpenMessage> message)
    : Collection(kKind), m_owner(std::move(owner)), m_message(std::move(message)) {
}

std::int32_t AttachmentsObject::Count() {
    return static_cast<std::int32_t>(calendar::ShownAttachments(*m_message).size());
}

_variant_t AttachmentsObject::At(std::int32_t place) {
    return Result(
        Attachment(calendar::ShownAttachments(*m_message)[static_cast<std::size_t>(place - 1)]->number));
}

_variant_t AttachmentsObject::Named(const std::wstring& name) {
    const auto all = calendar::ShownAttachments(*m_message);
    const auto found = std::ranges::find_if(all, [&](const mailbox::AttachmentPtr& each) {
        return mailbox::SameIgnoringCase(each->properties.GetOr<PR_ATTACH_LONG_FILENAME_W>(L""), name);
    });
    if (found == all.end())
        throw Failure(MAPI_E_NOT_FOUND);
    return Result(Attachment((*found)->number));
}

ComPtr<AttachmentObject> AttachmentsObject::Attachment(std::uint32_t number) const {
    return Make<AttachmentObject>(m_owner, m_message, number);
}

} // namespace standin::outlook
