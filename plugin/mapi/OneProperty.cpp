// Reading and writing one property of a message.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "frame/PlugInLog.h"
#include "session/Operation.h"

#include <algorithm>
#include <cwchar>

namespace varden {

namespace {

constexpr const wchar_t* kListSeparator = L";";

/// The tag with the type under which the message stores the property; of type PT_ERROR when it doesn't.
ULONG StoredTag(ULONG tag, IMessage& message) {
    SizedSPropTagArray(1, tags) = {1, {tag}};
    ULONG count = 0;
    mapi::Block<SPropValue> values;
    message.GetProps(reinterpret_cast<LPSPropTagArray>(&tags), MAPI_UNICODE, &count, values.Out());
    return values ? values->ulPropTag : tag;
}

/// The elements of a list. Their count is one more than the separators behind the first character, whereas
/// empty pieces are passed over: what the count is too high by is filled up with empty texts.
void FillList(SPropValue& property, const std::wstring& text) {
    const auto separators = text.empty() ? 0 : std::count(text.begin() + 1, text.end(), kListSeparator[0]);
    auto& list = property.Value.MVszW;
    list.cValues = static_cast<ULONG>(separators) + 1;
    list.lppszW = mapi::AllocateIn<LPWSTR>(&property, list.cValues * sizeof(LPWSTR));
    const std::vector<std::wstring> pieces = SplitText(text, kListSeparator);
    for (ULONG i = 0; i < list.cValues; ++i) {
        const std::wstring piece = i < pieces.size() ? pieces[i] : std::wstring();
        const std::size_t bytes = (piece.size() + 1) * sizeof(wchar_t);
        list.lppszW[i] = mapi::AllocateIn<wchar_t>(&property, bytes);
        std::memcpy(list.lppszW[i], piece.c_str(), bytes);
    }
}

/// Writes the property and saves the message. `noted` is a refusal that stands already.
Stored WriteProperty(SPropValue& property, HRESULT noted, IMessage& message) {
    LogLine(L"obtained property type");
    const HRESULT written = mapi::SetOneProp(&message, &property);
    if (FAILED(written)) {
        Fail(error::kMapi, written, L"");
        if (written != E_INVALIDARG && written != MAPI_E_COMPUTED) {
            return Stored::No;
        }
        noted = written;
    }
    LogLine(L"set the property");
    const HRESULT saved = message.SaveChanges(KEEP_OPEN_READWRITE);
    LogLine(L"saved the changes!!");
    if (FAILED(saved)) {
        Fail(error::kMapi, saved, L"");
        return Stored::No;
    }
    return FAILED(noted) ? Stored::Refused : Stored::Yes;
}

} // namespace

Stored COutlookFuncs::mapi_SetOneProp(ULONG tag, const std::wstring& text, IMessage* message) {
    const LoggedOperation log(L"mapi_SetOneProp");
    const auto property = mapi::AllocateBlock<SPropValue>();
    property->ulPropTag = PROP_TYPE(tag) == PT_UNSPECIFIED ? StoredTag(tag, mapi::Present(message)) : tag;
    std::string narrow;
    HRESULT noted = S_OK;
    switch (PROP_TYPE(property->ulPropTag)) {
    case PT_UNICODE:
        property->Value.lpszW = const_cast<LPWSTR>(text.c_str());
        break;
    case PT_STRING8:
        narrow = Narrow(text);
        property->Value.lpszA = narrow.data();
        break;
    case PT_MV_UNICODE:
        FillList(*property, text);
        break;
    default:
        noted = E_INVALIDARG;
        break;
    }
    return WriteProperty(*property, noted, mapi::Present(message));
}

Stored COutlookFuncs::mapi_SetOneProp(ULONG tag, const mapi::PropertyUnion& value, IMessage* message) {
    const LoggedOperation log(L"mapi_SetOneProp");
    const auto property = mapi::AllocateBlock<SPropValue>();
    property->ulPropTag = PROP_TYPE(tag) == PT_UNSPECIFIED ? StoredTag(tag, mapi::Present(message)) : tag;
    property->Value = value;
    return WriteProperty(*property, S_OK, mapi::Present(message));
}

HRESULT COutlookFuncs::mapi_GetOneProp(ULONG tag, mapi::PropertyBlock& block, IMAPIProp* message) {
    const LoggedOperation log(L"mapi_GetOneProp");
    block.Clear();
    if (!message) {
        return E_INVALIDARG;
    }
    mapi::Block<SPropValue> property;
    const HRESULT status = mapi::GetOneProp(message, tag, property.Out());
    return FAILED(status) ? status : block.Assign(*property);
}

} // namespace varden
