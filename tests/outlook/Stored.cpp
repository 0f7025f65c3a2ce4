// Looks at stored properties through the PropertyAccessor.
#include "Stored.h"

#include <algorithm>
#include <filesystem>

namespace outlook_tests {

std::wstring Tag(std::uint32_t tag) {
    return L"http://schemas.microsoft.com/mapi/proptag/0x" + Hex(tag);
}

std::wstring Id(std::uint32_t set, std::uint32_t idAndType) {
    return L"http://schemas.microsoft.com/mapi/id/{" + Hex(set) + L"-0000-0000-C000-000000000046}/" +
           Hex(idAndType);
}

_variant_t Stored(const Object& item, const std::wstring& property) {
    return item.Child(L"PropertyAccessor").TryCall(L"GetProperty", {property}).value;
}

std::wstring StoredText(const Object& item, const std::wstring& property) {
    return AsText(Stored(item, property));
}

void ExpectStored(const Object& item, const Facts& facts, Where where) {
    const testing::ScopedTrace trace(where.file_name(), static_cast<int>(where.line()), "expected here");
    for (const Is& fact : facts)
        ExpectValue(Stored(item, fact.member), fact);
}

void Store(const Object& item, const std::wstring& property, const Value& value) {
    item.Child(L"PropertyAccessor").Call(L"SetProperty", {property, value});
}

_variant_t Bytes(const std::vector<unsigned char>& bytes) {
    _variant_t value;
    value.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    value.vt = VT_ARRAY | VT_UI1;
    std::ranges::copy(bytes, static_cast<unsigned char*>(value.parray->pvData));
    return value;
}

Object KindTest::New(const Value& type, int folder) const {
    return Items(folder).Child(L"Add", {type});
}

Object KindTest::Reopened(const Object& item) const {
    item.Call(L"Save");
    return NameSpace().Child(L"GetItemFromID", {item.Text(L"EntryID")});
}

Object KindTest::OpenReal(const wchar_t* file) const {
    const std::filesystem::path path =
        std::filesystem::absolute(std::filesystem::path(VARDEN_MSG_FOLDER) / file);
    if (!std::filesystem::exists(path))
        return {};
    return Application().Child(L"CreateItemFromTemplate", {path.wstring()});
}

} // namespace outlook_tests
