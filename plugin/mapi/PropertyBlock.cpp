// Copying a value by its type.
#include "PropertyBlock.h"

#include "frame/Text.h"

#include <algorithm>
#include <cstring>

namespace varden::mapi {

namespace {

/// The elements with a carriage return between them. Every element but the first loses the white space at its
/// ends.
template <typename Character, typename ToWide>
std::wstring Joined(ULONG count, Character* const* elements, ToWide toWide) {
    std::wstring text;
    for (ULONG i = 0; elements && i < count; ++i) {
        text += i == 0 ? toWide(elements[i]) : L'\r' + Trimmed(toWide(elements[i]));
    }
    return text;
}

} // namespace

void PropertyBlock::Clear() {
    m_type = PT_UNSPECIFIED;
    m_bytes.clear();
    m_blob.clear();
}

void PropertyBlock::AssignBytes(const void* bytes, std::size_t count) {
    const auto* first = static_cast<const std::byte*>(bytes);
    m_bytes.assign(first, first + count);
}

void PropertyBlock::AssignText(const std::wstring& text) {
    AssignBytes(text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

HRESULT PropertyBlock::Assign(const SPropValue& property) {
    Clear();
    m_type = PROP_TYPE(property.ulPropTag);
    const auto& value = property.Value;
    const auto narrow = [](LPCSTR text) { return text ? Widen(text) : std::wstring(); };
    const auto wide = [](LPCWSTR text) { return text ? std::wstring(text) : std::wstring(); };
    switch (m_type) {
    case PT_UNSPECIFIED:
    case PT_NULL:
    case PT_ERROR:
    case PT_OBJECT:
        break;
    case PT_I2:
    case PT_BOOLEAN:
        AssignBytes(&value, 2);
        break;
    case PT_LONG:
    case PT_R4:
        AssignBytes(&value, 4);
        break;
    case PT_DOUBLE:
    case PT_APPTIME:
    case PT_I8:
    case PT_SYSTIME:
        AssignBytes(&value, 8);
        break;
    case PT_STRING8:
        AssignText(narrow(value.lpszA));
        break;
    case PT_UNICODE:
        AssignText(wide(value.lpszW));
        break;
    case PT_CLSID:
        if (!value.lpguid) {
            return E_INVALIDARG;
        }
        AssignBytes(value.lpguid, sizeof(GUID));
        break;
    case PT_BINARY:
        AssignBytes(&value.bin.cb, sizeof value.bin.cb);
        if (const auto* blob = reinterpret_cast<const std::byte*>(value.bin.lpb)) {
            m_blob.assign(blob, blob + value.bin.cb);
        }
        break;
    case PT_MV_STRING8:
        AssignText(Joined(value.MVszA.cValues, value.MVszA.lppszA, narrow));
        break;
    case PT_MV_UNICODE:
        AssignText(Joined(value.MVszW.cValues, value.MVszW.lppszW, wide));
        break;
    default:
        return E_INVALIDARG;
    }
    return S_OK;
}

std::wstring PropertyBlock::AsText() const {
    std::wstring text(m_bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), m_bytes.data(), text.size() * sizeof(wchar_t));
    return text.substr(0, text.find(L'\0'));
}

wchar_t PropertyBlock::FirstUnit() const {
    wchar_t unit = L'\0';
    if (m_bytes.size() >= sizeof unit) {
        std::memcpy(&unit, m_bytes.data(), sizeof unit);
    }
    return unit;
}

std::optional<long> PropertyBlock::AsLong() const {
    if (m_type != PT_LONG) {
        return std::nullopt;
    }
    long number = 0;
    std::memcpy(&number, m_bytes.data(), sizeof number);
    return number;
}

std::optional<FILETIME> PropertyBlock::AsTime() const {
    if (m_type != PT_SYSTIME) {
        return std::nullopt;
    }
    FILETIME time;
    std::memcpy(&time, m_bytes.data(), sizeof time);
    return time;
}

} // namespace varden::mapi
