// The body of items in its forms. They keep each other company: what is written last is kept, the others
// follow.
#include "standin/mailbox/Tags.h"
#include "standin/mapi/Bodies.h"
#include "standin/mapi/RtfCompression.h"
#include "standin/outlook/items/Item.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"
#include "standin/outlook/objects/PropertyValues.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

using mailbox::MessageProperties;
using mailbox::OpenMessage;
using mailbox::PropertyTag;
using mailbox::Value;

/// OlBodyFormat.
constexpr std::int32_t kUnspecified = 0, kPlain = 1, kHtml = 2, kRich = 3;
/// The form that a message without a body is meant to get; the numbers are those of OlBodyFormat.
constexpr PropertyTag kPrMessageEditorFormat = PROP_TAG(PT_LONG, 0x5909); // [MS-OXPROPS] 2.788

_variant_t ReadHtml(const MessageProperties& message, const StoredProperty&) {
    Value value;
    const std::wstring* html = SUCCEEDED(mapi::ReadBody(message, mailbox::kPrBodyHtml, value))
                                   ? std::get_if<std::wstring>(&value)
                                   : nullptr;
    return Result(html ? *html : std::wstring());
}

void WriteHtml(OpenMessage& message, const StoredProperty&, const Call& call) {
    Check(mapi::WriteBody(message, mailbox::kPrBodyHtml, call.arguments.Text(0)));
}

constexpr Conversion kHtmlBody{ReadHtml, WriteHtml};

/// Up to version 12 nobody knows the format of an item that has no body yet; later it is the one that the
/// user writes in.
std::int32_t FormatOf(const MessageProperties& message) {
    constexpr int kVersionThatKnows = 14;
    constexpr std::int32_t kFormatOfNative[] = {kUnspecified, kPlain, kRich, kHtml};
    const mapi::NativeBody native = mapi::NativeBodyOf(message);
    if (native != mapi::NativeBody::None)
        return kFormatOfNative[static_cast<std::size_t>(native)];
    const std::int32_t ownFormat = MajorVersion() < kVersionThatKnows ? kUnspecified : kHtml;
    return message.Get<kPrMessageEditorFormat>().value_or(ownFormat);
}

_variant_t ReadFormat(const MessageProperties& message, const StoredProperty&) {
    return Result(FormatOf(message));
}

/// The body changes its form; of HTML and rich text only the text is left in the others.
void WriteFormat(OpenMessage& message, const StoredProperty&, const Call& call) {
    constexpr PropertyTag kForms[] = {0, PR_BODY_W, mailbox::kPrBodyHtml, PR_RTF_COMPRESSED};
    const std::int32_t format = call.arguments.Number(0);
    if (format < kPlain || format > kRich)
        throw InvalidValue();
    Check(message.Write(kPrMessageEditorFormat, format));
    const PropertyTag form = kForms[format];
    Value body;
    if (FormatOf(message) != format && SUCCEEDED(mapi::ReadBody(message, form, body)))
        Check(mapi::WriteBody(message, form, std::move(body)));
}

constexpr Conversion kBodyFormat{ReadFormat, WriteFormat};

/// The bytes of the RTF.
_variant_t RtfBody(ItemObject& item) {
    Value value;
    mailbox::Bytes rtf;
    if (SUCCEEDED(mapi::ReadBody(item.Message(), PR_RTF_COMPRESSED, value)))
        if (const auto* compressed = std::get_if<mailbox::Bytes>(&value))
            Check(mapi::DecompressRtf(*compressed, rtf));
    return ByteArray(rtf);
}

void SetRtfBody(ItemObject& item, const Arguments& value) {
    const std::optional<mailbox::Bytes> rtf = BytesOfArray(value[0]);
    if (!rtf)
        throw InvalidValue();
    Check(mapi::WriteBody(item.Message(), PR_RTF_COMPRESSED, mapi::CompressRtf(*rtf)));
}

constexpr std::int32_t kWesternEuropean = 1252;

constexpr Row kRows[] = {
    Stored(L"BodyFormat", kBodyFormat, kPrMessageEditorFormat),
    Stored(L"HTMLBody", kHtmlBody, mailbox::kPrBodyHtml),
    Stored(L"InternetCodepage", kNumber, mailbox::kPrInternetCodepage, kWesternEuropean),
    {L"RTFBody", Get<RtfBody>, Put<SetRtfBody>},
};

} // namespace

constinit const std::span<const Row> kBodyRows = kRows;

} // namespace standin::outlook
