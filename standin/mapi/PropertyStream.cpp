// A property as a stream.
#include "standin/mapi/Stream.h"

#include <cstring>

namespace standin::mapi {
namespace {

using mailbox::Bytes;
using mailbox::PropertyTag;
using mailbox::PropertyType;
using mailbox::Value;

template <class T>
Bytes BytesOfText(const std::basic_string<T>& text) {
    Bytes bytes(text.size() * sizeof(T));
    std::memcpy(bytes.data(), text.data(), bytes.size());
    return bytes;
}

/// An odd byte at the end of wide text is none of it.
template <class T>
std::basic_string<T> TextOfBytes(const Bytes& bytes) {
    std::basic_string<T> text(bytes.size() / sizeof(T), T());
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(T));
    return text;
}

/// Text and binary; a null pointer counts as nothing at all.
Bytes StreamOf(const Value& value) {
    if (const auto* bytes = std::get_if<Bytes>(&value))
        return *bytes;
    if (const auto* wide = std::get_if<std::wstring>(&value))
        return BytesOfText(*wide);
    if (const auto* narrow = std::get_if<std::string>(&value))
        return BytesOfText(*narrow);
    return {};
}

Value ValueOf(const Bytes& bytes, PropertyType type) {
    if (type == PT_UNICODE)
        return TextOfBytes<wchar_t>(bytes);
    if (type == PT_STRING8)
        return TextOfBytes<char>(bytes);
    return bytes;
}

} // namespace

HRESULT OpenPropertyStream(PropertySide& side, PropertyTag tag, ULONG flags, IUnknown** object) {
    const PropertyType type = mailbox::TypeOf(tag);
    if (type != PT_UNICODE && type != PT_STRING8 && type != PT_BINARY)
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    if (flags & MAPI_MODIFY)
        for (const HRESULT refused : {properties::CheckId(side, tag), side.Properties().CheckTag(tag)})
            if (FAILED(refused))
                return refused;
    Value value;
    const HRESULT status = side.Read(tag, value);
    if (FAILED(status) && !(status == MAPI_E_NOT_FOUND && (flags & MAPI_CREATE)))
        return status;
    if (!(flags & MAPI_MODIFY)) {
        *object = new MemoryStream(StreamOf(value));
        return S_OK;
    }
    // The stream keeps its object alive.
    std::shared_ptr<IUnknown> owner(Hold(&side.Unknown()).release(), Releaser());
    auto keep = [owner, &side, tag](const Bytes& bytes) -> HRESULT {
        if (const HRESULT refused = side.CheckWritable(); FAILED(refused))
            return refused;
        return side.Write(tag, ValueOf(bytes, mailbox::TypeOf(tag)));
    };
    const bool fresh = (flags & MAPI_CREATE) != 0;
    auto* stream = new MemoryStream(fresh ? Bytes() : StreamOf(value), std::move(keep));
    if (flags & STREAM_APPEND)
        stream->MoveToEnd();
    *object = stream;
    return S_OK;
}

} // namespace standin::mapi
