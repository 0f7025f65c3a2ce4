// Attachments of the current record: added through the object model, read through MAPI.
#include "session/COutlookFuncs.h"

#include "AttachmentKinds.h"

#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "session/Operation.h"

#include <io.h>

#include <array>

namespace varden {

namespace {

namespace tag = mapi::tag;

constexpr long kOlByValue = 1;
constexpr long kPosition = 15000;

constexpr const wchar_t* kBadIndex = L"Unable to open attachment at provided index";
constexpr const wchar_t* kMsgExtension = L".msg";

struct ClassExtension {
    std::wstring_view classBegins;
    const wchar_t* extension;
};

/// By the front of an embedded message's class. The extensions are labels: what is saved is always an MSG
/// file.
constexpr std::array kClassExtensions{
    ClassExtension{L"ipm.note", kMsgExtension},
    ClassExtension{L"ipm.post", kMsgExtension},
    ClassExtension{L"ipm.contact", L".vcf"},
    ClassExtension{L"ipm.appointment", L".ics"},
};

const wchar_t* ExtensionFor(const std::wstring& messageClass) {
    for (const ClassExtension& known : kClassExtensions) {
        if (EqualIgnoringCase(std::wstring_view(messageClass).substr(0, known.classBegins.size()),
                              known.classBegins)) {
            return known.extension;
        }
    }
    return kMsgExtension;
}

/// The text with the extension behind it, unless its first four characters are the extension: the front is
/// looked at, not the end.
std::wstring WithExtension(const std::wstring& text, const std::wstring& extension) {
    const bool beginsSo = EqualIgnoringCase(std::wstring_view(text).substr(0, extension.size()), extension);
    return beginsSo ? text : text + extension;
}

std::wstring TextOf(IMAPIProp& object, ULONG textTag) {
    mapi::Block<SPropValue> value;
    const bool read = SUCCEEDED(mapi::GetOneProp(&object, textTag, value.Out())) && value->Value.lpszW;
    return read ? value->Value.lpszW : std::wstring();
}

long LongOf(IMAPIProp& object, ULONG longTag, long otherwise) {
    mapi::Block<SPropValue> value;
    return SUCCEEDED(mapi::GetOneProp(&object, longTag, value.Out())) ? value->Value.l : otherwise;
}

/// What an attachment goes by, with the extension that its kind adds; no name when it has none.
struct AttachmentName {
    std::wstring name;
    std::wstring extension;
};

AttachmentName NameOfEmbedded(IAttach& attachment) {
    mapi::Pointer<IMessage> message;
    if (FAILED(OpenEmbedded(attachment, message))) {
        return {};
    }
    const wchar_t* extension = ExtensionFor(TextOf(message.Required(), tag::kMessageClass));
    return {TextOf(message.Required(), tag::kSubject), extension};
}

/// A short name falls back on the long one, whereas the long name has no fallback.
AttachmentName NameOfFile(IAttach& attachment, bool truncated) {
    std::wstring name;
    if (truncated) {
        name = TextOf(attachment, tag::kAttachFilename);
    }
    return {name.empty() ? TextOf(attachment, tag::kAttachLongFilename) : name, {}};
}

} // namespace

HRESULT COutlookFuncs::OpenAttachment(std::int32_t index, mapi::Pointer<IAttach>& attachment) {
    return m_pMessage->OpenAttach(static_cast<ULONG>(index) - 1, nullptr, MAPI_BEST_ACCESS, attachment.Out());
}

std::wstring COutlookFuncs::AddAttachment(const std::wstring& path, const std::wstring& name) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"AddAttachement");
    if (path.empty()) {
        return operation.Fail(error::kAttachmentPathMissing, L"Can not retrieve MAPI interface for item.");
    }
    constexpr int exists = 0;
    if (path.find(L'/') != std::wstring::npos || _waccess(path.c_str(), exists) != 0) {
        return operation.Fail(error::kPath);
    }
    static constexpr std::array kinds{ItemKind::Appointment,
                                      ItemKind::Contact,
                                      ItemKind::DistList,
                                      ItemKind::Document,
                                      ItemKind::Journal,
                                      ItemKind::Mail,
                                      ItemKind::Meeting,
                                      ItemKind::Note,
                                      ItemKind::Post,
                                      ItemKind::Remote,
                                      ItemKind::Report,
                                      ItemKind::Sharing,
                                      ItemKind::Task,
                                      ItemKind::TaskRequestAccept,
                                      ItemKind::TaskRequestDecline,
                                      ItemKind::TaskRequestUpdate,
                                      ItemKind::TaskRequest,
                                      ItemKind::Storage};
    const outlook::Reference* item = FirstHeld(kinds);
    if (!item) {
        return operation.Fail(error::kNoRecord);
    }
    const outlook::Reference attachments(outlook::kAttachments, item->GetProperty(L"Attachments"));
    attachments.Call(L"Add", {outlook::TextValue(path), outlook::LongValue(kOlByValue),
                              outlook::LongValue(kPosition), outlook::TextValue(name)});
    item->Call(L"Save");
    return kSuccessText;
}

std::wstring COutlookFuncs::GetAttachmentCount() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetAttachmentCount");
    const auto fail = [&](HRESULT status, const std::wstring& reason) {
        return operation.Fail(error::kMapi, status, reason + L' ' + mapi_HResultToText(status));
    };
    mapi::Pointer<IMAPITable> table;
    if (const HRESULT status = m_pMessage->GetAttachmentTable(MAPI_UNICODE, table.Out()); FAILED(status)) {
        return fail(status, L"Unable to get attachments table");
    }
    SizedSPropTagArray(1, columns) = {1, {tag::kEntryId}};
    mapi::RowSet rows;
    if (const HRESULT status = mapi::QueryAllRows(table.Get(), reinterpret_cast<LPSPropTagArray>(&columns),
                                                  nullptr, nullptr, 0, rows.Out());
        FAILED(status)) {
        return fail(status, L"Unable to get attachments table rows");
    }
    return FormatText(L"%d", static_cast<int>(rows.Rows().size()));
}

std::wstring COutlookFuncs::GetAttachmentName(std::int32_t index, bool truncated) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetAttachmentName");
    try {
        mapi::Pointer<IAttach> attachment;
        if (const HRESULT status = OpenAttachment(index, attachment); FAILED(status)) {
            return operation.Fail(error::kMapi, status, L"Unable to open attachments");
        }
        const long method = LongOf(attachment.Required(), tag::kAttachMethod, kNoAttachment);
        if (method == kNoAttachment) {
            return operation.Fail(error::kMapi, L"Unable to open attachments");
        }
        const AttachmentName found = method == kEmbeddedMessage
                                         ? NameOfEmbedded(attachment.Required())
                                         : NameOfFile(attachment.Required(), truncated);
        if (found.name.empty()) {
            return operation.Fail(error::kMapi, L"Unable to access attachment name ");
        }
        return found.extension.empty() ? found.name : WithExtension(found.name, found.extension);
    } catch (...) {
        return operation.Fail(error::kMapi, kBadIndex);
    }
}

/// The size of an embedded message bears an extension, as its name does.
std::wstring COutlookFuncs::GetAttachmentSize(std::int32_t index) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"GetAttachmentSize");
    try {
        mapi::Pointer<IAttach> attachment;
        if (const HRESULT status = OpenAttachment(index, attachment); FAILED(status)) {
            return operation.Fail(error::kMapi, status, L"Unable to open attachments");
        }
        const long method = LongOf(attachment.Required(), tag::kAttachMethod, kNoAttachment);
        if (method == kNoAttachment) {
            return operation.Fail(error::kMapi, L"Unable to open attachments");
        }
        mapi::Block<SPropValue> size;
        if (const HRESULT status = mapi::GetOneProp(attachment.Get(), tag::kAttachSize, size.Out());
            FAILED(status)) {
            return operation.Fail(error::kMapi, status, L"Unable to access attachment size ");
        }
        const std::wstring text = FormatText(L"%d", static_cast<int>(size->Value.l));
        return method == kEmbeddedMessage ? WithExtension(text, kMsgExtension) : text;
    } catch (...) {
        return operation.Fail(error::kMapi, kBadIndex);
    }
}

} // namespace varden
