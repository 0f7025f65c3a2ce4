// Keeping one form of a body, deriving the others.
#include "standin/mapi/Bodies.h"

#include "standin/mapi/Html.h"
#include "standin/mapi/Rtf.h"
#include "standin/mapi/RtfCompression.h"

#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace standin::mapi {
namespace {

using mailbox::Bytes;
using mailbox::IdOf;
using mailbox::kPrHtml;
using mailbox::PropertyId;
using mailbox::PropertyObject;
using mailbox::PropertyTag;
using mailbox::PropertyType;
using mailbox::TypeOf;
using mailbox::Value;

/// What a store keeps of a body.
constexpr PropertyTag kKept[] = {PR_BODY_W, PR_RTF_COMPRESSED, kPrHtml, PR_RTF_IN_SYNC, kPrNativeBodyInfo};

constexpr PropertyId kText = IdOf(PR_BODY_W);
constexpr PropertyId kHtml = IdOf(kPrHtml);
constexpr PropertyId kRtf = IdOf(PR_RTF_COMPRESSED);
constexpr PropertyId kInSync = IdOf(PR_RTF_IN_SYNC);
constexpr PropertyId kNative = IdOf(kPrNativeBodyInfo);

/// A form that is stored with a type that it can have.
bool HasForm(const PropertyObject& message, PropertyTag form) {
    const Value* value = message.Stored().Find(form);
    if (!value || std::holds_alternative<mailbox::NullPointer>(*value))
        return false;
    const PropertyType type = mailbox::TypeOf(*value);
    return IdOf(form) == kText ? mailbox::IsText(type)
                               : type == PT_BINARY || (IdOf(form) == kHtml && mailbox::IsText(type));
}

/// The code page of PR_HTML.
UINT HtmlCodePage(const PropertyObject& message) {
    constexpr std::int32_t kWesternEuropean = 1252;
    return static_cast<UINT>(message.Stored().GetOr<mailbox::kPrInternetCodepage>(kWesternEuropean));
}

Bytes Encode(std::wstring_view text, UINT codePage) {
    const std::string narrow = mailbox::Narrow(text, codePage);
    return {narrow.begin(), narrow.end()};
}

std::wstring Decode(const Bytes& bytes, UINT codePage) {
    return mailbox::Widen({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, codePage);
}

// What is kept, as text or RTF.

std::wstring StoredText(const PropertyObject& message) {
    Value value;
    const HRESULT status = message.Stored().Read(PR_BODY_W, value);
    return SUCCEEDED(status) ? std::get<std::wstring>(value) : std::wstring();
}

std::wstring StoredHtml(const PropertyObject& message) {
    if (const Bytes* bytes = message.Stored().Get<kPrHtml>())
        return Decode(*bytes, HtmlCodePage(message));
    Value value;
    const HRESULT status = message.Stored().Read(mailbox::kPrBodyHtml, value);
    return SUCCEEDED(status) ? std::get<std::wstring>(value) : std::wstring();
}

HRESULT StoredRtf(const PropertyObject& message, Bytes& rtf) {
    const Bytes* compressed = message.Stored().Get<PR_RTF_COMPRESSED>();
    return compressed ? DecompressRtf(*compressed, rtf) : MAPI_E_NOT_FOUND;
}

/// The body as text, as HTML and as RTF, from whatever form is kept.
HRESULT DeriveText(const PropertyObject& message, NativeBody native, std::wstring& text) {
    if (native == NativeBody::Html) {
        text = TextOfHtml(StoredHtml(message));
        return S_OK;
    }
    Bytes rtf;
    const HRESULT status = StoredRtf(message, rtf);
    if (SUCCEEDED(status))
        text = TextOfRtf(rtf);
    return status;
}

HRESULT DeriveHtml(const PropertyObject& message, NativeBody native, std::wstring& html) {
    if (native == NativeBody::PlainText) {
        html = HtmlOfText(StoredText(message));
        return S_OK;
    }
    Bytes rtf;
    const HRESULT status = StoredRtf(message, rtf);
    if (SUCCEEDED(status))
        html = HtmlOfRtf(rtf).value_or(HtmlOfText(TextOfRtf(rtf)));
    return status;
}

Bytes DeriveRtf(const PropertyObject& message, NativeBody native) {
    return CompressRtf(native == NativeBody::Html ? RtfOfHtml(StoredHtml(message))
                                                  : RtfOfText(StoredText(message)));
}

/// A form that isn't kept.
HRESULT Derive(const PropertyObject& message, PropertyId form, Value& value) {
    const NativeBody native = NativeBodyOf(message);
    if (native == NativeBody::None)
        return MAPI_E_NOT_FOUND;
    if (form == kRtf) {
        value = DeriveRtf(message, native);
        return S_OK;
    }
    std::wstring text;
    const HRESULT status =
        form == kText ? DeriveText(message, native, text) : DeriveHtml(message, native, text);
    if (SUCCEEDED(status))
        value = std::move(text);
    return status;
}

/// HTML is binary and text: whichever is asked for.
HRESULT ConvertHtml(const PropertyObject& message, PropertyType wanted, Value& value) {
    const bool wantsBinary = wanted == PT_BINARY || wanted == PT_UNSPECIFIED;
    if (const auto* bytes = std::get_if<Bytes>(&value); bytes && !wantsBinary)
        value = Decode(*bytes, HtmlCodePage(message));
    else if (const auto* text = std::get_if<std::wstring>(&value); text && wantsBinary)
        value = Encode(*text, HtmlCodePage(message));
    return S_OK;
}

HRESULT ReadForm(const PropertyObject& message, PropertyTag tag, Value& value) {
    const PropertyId id = IdOf(tag);
    const bool isKept = HasForm(message, tag);
    const HRESULT status =
        isKept ? message.Read(mailbox::MakeTag(id, PT_UNSPECIFIED), value) : Derive(message, id, value);
    if (FAILED(status))
        return status;
    if (id == kHtml)
        ConvertHtml(message, TypeOf(tag), value);
    auto converted = mailbox::ConvertValue(value, TypeOf(tag), CP_ACP);
    if (!converted)
        return MAPI_E_NOT_FOUND;
    value = std::move(*converted);
    return S_OK;
}

template <class T>
HRESULT Give(PropertyTag tag, T what, Value& value) {
    value = what;
    return TypeOf(tag) == PT_UNSPECIFIED || TypeOf(tag) == mailbox::TypeOf(value) ? S_OK : MAPI_E_NOT_FOUND;
}

/// HTML that comes as text is kept in the message's code page. One that has none yet, and text that the
/// western European one can't hold, become UTF-8.
HRESULT EncodeHtml(PropertyObject& message, Value& value) {
    const auto* text = std::get_if<std::wstring>(&value);
    if (!text)
        return std::holds_alternative<Bytes>(value) ? S_OK : MAPI_E_UNEXPECTED_TYPE;
    const UINT codePage = HtmlCodePage(message);
    const Bytes bytes = Encode(*text, codePage);
    if (Decode(bytes, codePage) == *text) {
        value = bytes;
        return S_OK;
    }
    value = Encode(*text, CP_UTF8);
    return message.Write(mailbox::kPrInternetCodepage, std::int32_t{CP_UTF8});
}

HRESULT EraseOther(PropertyObject& message, PropertyId kept) {
    for (const PropertyTag tag : kKept) {
        if (IdOf(tag) == kept || !message.Stored().Contains(tag))
            continue;
        if (const HRESULT status = message.Erase(tag); FAILED(status) && status != MAPI_E_NOT_FOUND)
            return status;
    }
    return S_OK;
}

void AddTag(std::vector<PropertyTag>& tags, PropertyTag tag) {
    if (std::ranges::find(tags, IdOf(tag), IdOf) == tags.end())
        tags.push_back(tag);
}

} // namespace

NativeBody NativeBodyOf(const PropertyObject& message) {
    const bool text = HasForm(message, PR_BODY_W);
    const bool rtf = HasForm(message, PR_RTF_COMPRESSED);
    const bool html = HasForm(message, kPrHtml);
    if (rtf && (!html || message.Stored().GetOr<PR_RTF_IN_SYNC>(false)))
        return NativeBody::Rtf;
    if (html)
        return NativeBody::Html;
    return text ? NativeBody::PlainText : NativeBody::None;
}

bool IsBodyForm(PropertyTag tag) {
    return IdOf(tag) == kText || IdOf(tag) == kHtml || IdOf(tag) == kRtf;
}

bool IsBodyProperty(PropertyTag tag) {
    return IsBodyForm(tag) || IdOf(tag) == kInSync || IdOf(tag) == kNative;
}

HRESULT ReadBody(const PropertyObject& message, PropertyTag tag, Value& value) {
    if (IsBodyForm(tag))
        return ReadForm(message, tag, value);
    const NativeBody native = NativeBodyOf(message);
    if (IdOf(tag) == kNative)
        return Give(tag, static_cast<std::int32_t>(native), value);
    return native == NativeBody::None ? MAPI_E_NOT_FOUND : Give(tag, native == NativeBody::Rtf, value);
}

HRESULT WriteBody(PropertyObject& message, PropertyTag tag, Value value) {
    const PropertyId id = IdOf(tag);
    if (id == kNative)
        return MAPI_E_COMPUTED;
    if (id == kInSync)
        return message.Write(tag, std::move(value));
    if (const auto* narrow = std::get_if<std::string>(&value))
        value = mailbox::Widen(*narrow, CP_ACP);
    if (id == kText && !std::holds_alternative<std::wstring>(value))
        return MAPI_E_UNEXPECTED_TYPE;
    if (id == kRtf && !std::holds_alternative<Bytes>(value))
        return MAPI_E_UNEXPECTED_TYPE;
    if (id == kHtml)
        if (const HRESULT status = EncodeHtml(message, value); FAILED(status))
            return status;
    const HRESULT status = message.Write(tag, std::move(value));
    return FAILED(status) ? status : EraseOther(message, id);
}

HRESULT EraseBody(PropertyObject& message) {
    constexpr PropertyId kNone = 0;
    return EraseOther(message, kNone);
}

HRESULT MakeNative(PropertyObject& message, NativeBody form, bool& changed) {
    const PropertyTag tag = form == NativeBody::Rtf    ? PR_RTF_COMPRESSED
                            : form == NativeBody::Html ? kPrHtml
                                                       : PR_BODY_W;
    changed = HasForm(message, tag) && NativeBodyOf(message) != form;
    return changed ? EraseOther(message, IdOf(tag)) : S_OK;
}

std::vector<PropertyTag> WithBodyTags(const PropertyObject& message, std::vector<PropertyTag> tags) {
    if (NativeBodyOf(message) == NativeBody::None)
        return tags;
    for (const PropertyTag form : {PR_BODY_W, PR_RTF_COMPRESSED})
        if (!message.Stored().Contains(form))
            AddTag(tags, form);
    AddTag(tags, PR_RTF_IN_SYNC);
    AddTag(tags, kPrNativeBodyInfo);
    std::ranges::sort(tags);
    return tags;
}

std::vector<PropertyTag> WithBodyToCopy(const PropertyObject& message, std::vector<PropertyTag> tags) {
    const NativeBody native = NativeBodyOf(message);
    if (native == NativeBody::Html || native == NativeBody::Rtf)
        AddTag(tags, PR_BODY_W);
    if (native == NativeBody::Rtf)
        AddTag(tags, PR_RTF_IN_SYNC);
    std::ranges::sort(tags);
    return tags;
}

} // namespace standin::mapi
