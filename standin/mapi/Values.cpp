// Layout of property values in MAPI's memory.
#include "standin/mapi/Values.h"

#include "standin/mapi/Buffers.h"

#include <algorithm>
#include <cstring>

namespace standin::mapi {
namespace {

using mailbox::Bytes;
using mailbox::PropertyTag;
using mailbox::Value;

constexpr std::size_t kAlignment = 8;

constexpr std::size_t Aligned(std::size_t size) {
    return (size + kAlignment - 1) & ~(kAlignment - 1);
}

template <class T>
constexpr bool kIsText = std::is_same_v<T, std::string> || std::is_same_v<T, std::wstring>;
template <class T>
constexpr bool kIsVariable = kIsText<T> || std::is_same_v<T, Bytes>;

/// How the elements of a multi-valued property stand in its array.
template <class T>
struct ArrayElement {
    using Type = T;
};
template <>
struct ArrayElement<std::string> {
    using Type = LPSTR;
};
template <>
struct ArrayElement<std::wstring> {
    using Type = LPWSTR;
};
template <>
struct ArrayElement<Bytes> {
    using Type = SBinary;
};
// Of the same layout as CURRENCY, double and FILETIME.
static_assert(sizeof(mailbox::Currency) == sizeof(CURRENCY) && sizeof(mailbox::AppTime) == sizeof(double) &&
              sizeof(mailbox::SysTime) == sizeof(FILETIME));

template <class T>
std::size_t RoomForPart(const T&) {
    return std::is_same_v<T, GUID> ? Aligned(sizeof(GUID)) : 0;
}
template <class T>
std::size_t RoomForPart(const std::basic_string<T>& text) {
    return Aligned((text.size() + 1) * sizeof(T));
}
std::size_t RoomForPart(const Bytes& bytes) {
    return Aligned(bytes.size());
}
template <class T>
std::size_t RoomForPart(const std::vector<T>& values) {
    std::size_t room = Aligned(values.size() * sizeof(typename ArrayElement<T>::Type));
    if constexpr (kIsVariable<T>)
        for (const T& value : values)
            room += RoomForPart(value);
    return room;
}

void* Put(const void* data, std::size_t size, std::byte*& room) {
    if (size == 0)
        return nullptr;
    void* place = room;
    std::memcpy(place, data, size);
    room += Aligned(size);
    return place;
}

template <class T>
T* PutText(const std::basic_string<T>& text, std::byte*& room) {
    return static_cast<T*>(Put(text.c_str(), (text.size() + 1) * sizeof(T), room));
}

SBinary PutBytes(const Bytes& bytes, std::byte*& room) {
    return {static_cast<ULONG>(bytes.size()), static_cast<LPBYTE>(Put(bytes.data(), bytes.size(), room))};
}

/// All arrays of the union have the layout of this one.
SBinary& ArrayOf(SPropValue& target) {
    return target.Value.bin;
}

/// Puts each alternative of Value into the union.
struct Layer {
    SPropValue& target;
    std::byte*& room;

    void operator()(mailbox::Null) const {}
    void operator()(mailbox::ObjectMark) const {}
    void operator()(std::int16_t value) const { target.Value.i = value; }
    void operator()(std::int32_t value) const { target.Value.l = value; }
    void operator()(float value) const { target.Value.flt = value; }
    void operator()(double value) const { target.Value.dbl = value; }
    void operator()(mailbox::Currency value) const { target.Value.cur.int64 = value.tenThousandths; }
    void operator()(mailbox::AppTime value) const { target.Value.at = value.days; }
    void operator()(mailbox::ErrorValue value) const { target.Value.err = value.status; }
    void operator()(bool value) const { target.Value.b = value; }
    void operator()(std::int64_t value) const { target.Value.li.QuadPart = value; }
    void operator()(mailbox::SysTime value) const {
        target.Value.ft = {static_cast<DWORD>(value.ticks), static_cast<DWORD>(value.ticks >> 32)};
    }
    void operator()(const std::string& text) const { target.Value.lpszA = PutText(text, room); }
    void operator()(const std::wstring& text) const { target.Value.lpszW = PutText(text, room); }
    void operator()(const GUID& guid) const {
        target.Value.lpguid = static_cast<GUID*>(Put(&guid, sizeof guid, room));
    }
    void operator()(const Bytes& bytes) const { target.Value.bin = PutBytes(bytes, room); }
    /// What has no count is its pointer alone.
    void operator()(const mailbox::NullPointer& pointer) const {
        if (pointer.type == PT_BINARY || (pointer.type & MV_FLAG))
            ArrayOf(target) = {pointer.count, nullptr};
        else
            target.Value.lpszW = nullptr;
    }

    template <class T>
    void operator()(const std::vector<T>& values) const {
        using Element = typename ArrayElement<T>::Type;
        const std::size_t size = values.size() * sizeof(Element);
        ArrayOf(target) = {static_cast<ULONG>(values.size()), nullptr};
        if (values.empty())
            return;
        ArrayOf(target).lpb = reinterpret_cast<LPBYTE>(room);
        if constexpr (kIsVariable<T>) {
            auto* elements = reinterpret_cast<Element*>(room);
            room += Aligned(size);
            for (const T& value : values)
                *elements++ = Part(value);
        } else {
            Put(values.data(), size, room);
        }
    }

private:
    template <class T>
    T* Part(const std::basic_string<T>& text) const {
        return PutText(text, room);
    }
    SBinary Part(const Bytes& bytes) const { return PutBytes(bytes, room); }
};

template <class T>
HRESULT TakeText(const T* text, Value& value) {
    if (!text)
        return MAPI_E_INVALID_PARAMETER;
    value = std::basic_string<T>(text);
    return S_OK;
}

HRESULT TakeBytes(const SBinary& binary, Bytes& bytes) {
    if (binary.cb > 0 && !binary.lpb)
        return MAPI_E_INVALID_PARAMETER;
    bytes.assign(binary.lpb, binary.lpb + binary.cb);
    return S_OK;
}

HRESULT TakeElement(LPSTR from, std::string& to) {
    return from ? (to = from, S_OK) : MAPI_E_INVALID_PARAMETER;
}
HRESULT TakeElement(LPWSTR from, std::wstring& to) {
    return from ? (to = from, S_OK) : MAPI_E_INVALID_PARAMETER;
}
HRESULT TakeElement(const SBinary& from, Bytes& to) {
    return TakeBytes(from, to);
}
template <class T>
HRESULT TakeElement(const T& from, T& to) {
    to = from;
    return S_OK;
}

template <class T>
HRESULT TakeArray(const SPropValue& property, Value& value) {
    const auto& [count, data] = property.Value.bin;
    if (count > 0 && !data)
        return MAPI_E_INVALID_PARAMETER;
    std::vector<T> values(count);
    for (ULONG i = 0; i < count; ++i) {
        typename ArrayElement<T>::Type element;
        std::memcpy(&element, data + i * sizeof element, sizeof element);
        if (const HRESULT status = TakeElement(element, values[i]); FAILED(status))
            return status;
    }
    value = std::move(values);
    return S_OK;
}

HRESULT TakeGuid(const GUID* guid, Value& value) {
    if (!guid)
        return MAPI_E_INVALID_PARAMETER;
    value = *guid;
    return S_OK;
}

HRESULT TakeBinary(const SBinary& binary, Value& value) {
    Bytes bytes;
    const HRESULT status = TakeBytes(binary, bytes);
    value = std::move(bytes);
    return status;
}

template <class T>
HRESULT Take(T&& from, Value& value) {
    value = std::forward<T>(from);
    return S_OK;
}

} // namespace

std::size_t RoomFor(const Value& value) {
    return std::visit([](const auto& part) { return RoomForPart(part); }, value);
}

void LayOut(const mailbox::Property& property, SPropValue& target, std::byte*& room) {
    // What the value doesn't fill stays unset: who reads another member of the union than that of the type
    // finds no number there.
    std::memset(&target, kUnsetByte, sizeof target);
    target.ulPropTag = property.Tag();
    std::visit(Layer{target, room}, property.value);
}

SPropValue* NewPropArray(std::span<const mailbox::Property> properties) {
    if (properties.empty())
        return nullptr;
    std::size_t size = properties.size() * sizeof(SPropValue);
    for (const mailbox::Property& property : properties)
        size += RoomFor(property.value);
    auto* array = static_cast<SPropValue*>(NewBuffer(size));
    auto* room = reinterpret_cast<std::byte*>(array + properties.size());
    for (std::size_t i = 0; i < properties.size(); ++i)
        LayOut(properties[i], array[i], room);
    return array;
}

SPropTagArray* NewTagArray(std::span<const PropertyTag> tags) {
    auto* array = static_cast<SPropTagArray*>(NewBuffer(CbNewSPropTagArray(tags.size())));
    array->cValues = static_cast<ULONG>(tags.size());
    std::ranges::copy(tags, array->aulPropTag);
    return array;
}

LPTSTR NewText(std::wstring_view text, bool wide, void* root) {
    const auto copy = [root](const auto& source) {
        const std::size_t size = (source.size() + 1) * sizeof(source[0]);
        void* block = root ? NewMore(size, root) : NewBuffer(size);
        return static_cast<LPTSTR>(std::memcpy(block, source.c_str(), size));
    };
    return wide ? copy(std::wstring(text)) : copy(mailbox::Narrow(text, CP_ACP));
}

void GiveEntryId(const Bytes& entryId, ULONG* size, ENTRYID** buffer) {
    *buffer = static_cast<ENTRYID*>(std::memcpy(NewBuffer(entryId.size()), entryId.data(), entryId.size()));
    *size = static_cast<ULONG>(entryId.size());
}

SPropProblemArray* NewProblems(std::span<const SPropProblem> problems) {
    if (problems.empty())
        return nullptr;
    auto* array = static_cast<SPropProblemArray*>(NewBuffer(CbNewSPropProblemArray(problems.size())));
    array->cProblem = static_cast<ULONG>(problems.size());
    std::ranges::copy(problems, array->aProblem);
    return array;
}

HRESULT TakeValue(const SPropValue& property, Value& value) {
    const auto& from = property.Value;
    switch (PROP_TYPE(property.ulPropTag)) {
    case PT_NULL:
        return Take(mailbox::Null(), value);
    case PT_OBJECT:
        return Take(mailbox::ObjectMark(), value);
    case PT_ERROR:
        return Take(mailbox::ErrorValue{from.err}, value);
    case PT_I2:
        return Take(std::int16_t{from.i}, value);
    case PT_LONG:
        return Take(std::int32_t{from.l}, value);
    case PT_R4:
        return Take(from.flt, value);
    case PT_DOUBLE:
        return Take(from.dbl, value);
    case PT_CURRENCY:
        return Take(mailbox::Currency{from.cur.int64}, value);
    case PT_APPTIME:
        return Take(mailbox::AppTime{from.at}, value);
    case PT_BOOLEAN:
        return Take(from.b != 0, value);
    case PT_I8:
        return Take(std::int64_t{from.li.QuadPart}, value);
    case PT_SYSTIME:
        return Take(mailbox::SysTime{std::uint64_t{from.ft.dwHighDateTime} << 32 | from.ft.dwLowDateTime},
                    value);
    case PT_STRING8:
        return TakeText(from.lpszA, value);
    case PT_UNICODE:
        return TakeText(from.lpszW, value);
    case PT_CLSID:
        return TakeGuid(from.lpguid, value);
    case PT_BINARY:
        return TakeBinary(from.bin, value);
    case PT_MV_I2:
        return TakeArray<std::int16_t>(property, value);
    case PT_MV_LONG:
        return TakeArray<std::int32_t>(property, value);
    case PT_MV_R4:
        return TakeArray<float>(property, value);
    case PT_MV_DOUBLE:
        return TakeArray<double>(property, value);
    case PT_MV_CURRENCY:
        return TakeArray<mailbox::Currency>(property, value);
    case PT_MV_APPTIME:
        return TakeArray<mailbox::AppTime>(property, value);
    case PT_MV_I8:
        return TakeArray<std::int64_t>(property, value);
    case PT_MV_STRING8:
        return TakeArray<std::string>(property, value);
    case PT_MV_UNICODE:
        return TakeArray<std::wstring>(property, value);
    case PT_MV_SYSTIME:
        return TakeArray<mailbox::SysTime>(property, value);
    case PT_MV_CLSID:
        return TakeArray<GUID>(property, value);
    case PT_MV_BINARY:
        return TakeArray<Bytes>(property, value);
    default:
        return MAPI_E_INVALID_TYPE;
    }
}

bool IsPropertyType(mailbox::PropertyType type) {
    return type == PT_UNSPECIFIED ||
           std::ranges::find(mailbox::kTypeOfAlternative, type) != mailbox::kTypeOfAlternative.end();
}

PropertyTag WithTextWidth(PropertyTag tag, bool wide) {
    const mailbox::PropertyType type = mailbox::TypeOf(tag);
    if (!mailbox::IsText(type))
        return tag;
    return mailbox::MakeTag(mailbox::IdOf(tag), (type & MV_FLAG) | (wide ? PT_UNICODE : PT_STRING8));
}

std::span<const ULONG> TagsOf(const SPropTagArray& tags) {
    return {tags.aulPropTag, tags.cValues};
}

std::span<const std::uint8_t> BytesAt(ULONG size, const void* data) {
    return {static_cast<const std::uint8_t*>(data), data ? size : 0};
}

std::wstring TextAt(const void* text, bool wide) {
    if (!text)
        return {};
    return wide ? std::wstring(static_cast<const wchar_t*>(text))
                : mailbox::Widen(static_cast<const char*>(text), CP_ACP);
}

} // namespace standin::mapi
