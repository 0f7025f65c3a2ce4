// Looks at stored properties through the PropertyAccessor.
#include "Stored.h"

namespace outlook_tests {
namespace {

std::wstring Number(std::uint32_t number) {
    wchar_t text[16] = L"";
    swprintf(text, std::size(text), L"%08X", number);
    return text;
}

} // namespace

std::wstring Tag(std::uint32_t tag) {
    return L"http://schemas.microsoft.com/mapi/proptag/0x" + Number(tag);
}

std::wstring Id(std::uint32_t set, std::uint32_t idAndType) {
    return L"http://schemas.microsoft.com/mapi/id/{" + Number(set) + L"-0000-0000-C000-000000000046}/" +
           Number(idAndType);
}

_variant_t Stored(const Object& item, const std::wstring& property) {
    return item.Child(L"PropertyAccessor").TryCall(L"GetProperty", {Value(property)}).value;
}

std::wstring StoredText(const Object& item, const std::wstring& property) {
    return Shown(Stored(item, property));
}

void Store(const Object& item, const std::wstring& property, const _variant_t& value) {
    item.Child(L"PropertyAccessor").Call(L"SetProperty", {Value(property), value});
}

_variant_t Bytes(std::initializer_list<unsigned char> bytes) {
    _variant_t value;
    value.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    value.vt = VT_ARRAY | VT_UI1;
    std::copy(bytes.begin(), bytes.end(), static_cast<unsigned char*>(value.parray->pvData));
    return value;
}

std::wstring Hex(const _variant_t& bytes) {
    if (bytes.vt != (VT_ARRAY | VT_UI1))
        return L"no bytes";
    std::wstring text;
    const auto* first = static_cast<const unsigned char*>(bytes.parray->pvData);
    for (ULONG i = 0; i < bytes.parray->rgsabound[0].cElements; ++i)
        text += Number(first[i]).substr(6);
    return text;
}

std::wstring Shown(const _variant_t& value) {
    if (value.vt == (VT_ARRAY | VT_UI1))
        return Hex(value);
    if (value.vt & VT_ARRAY) {
        std::wstring text;
        for (LONG i = 0; i < static_cast<LONG>(value.parray->rgsabound[0].cElements); ++i) {
            _variant_t element;
            SafeArrayGetElement(value.parray, &i, &element);
            text += (i ? L" | " : L"") + Shown(element);
        }
        return text;
    }
    _variant_t text, given = value;
    const bool isText = SUCCEEDED(VariantChangeTypeEx(&text, &given, LOCALE_INVARIANT, 0, VT_BSTR));
    return isText ? std::wstring(text.bstrVal, SysStringLen(text.bstrVal)) : L"?";
}

Object KindTest::New(const _variant_t& type, int folder) const {
    return DefaultFolder(folder).Child(L"Items").Child(L"Add", {type});
}

Object KindTest::Reopened(const Object& item) const {
    item.Call(L"Save");
    return NameSpace().Child(L"GetItemFromID", {Value(item.Text(L"EntryID"))});
}

} // namespace outlook_tests
