// Streams of compressed RTF.
#include "standin/mapi/RtfStream.h"

#include "standin/mapi/Bodies.h"
#include "standin/mapi/MessageView.h"
#include "standin/mapi/RtfCompression.h"
#include "standin/mapi/Stream.h"

#include <array>

namespace standin::mapi {
namespace {

using mailbox::Bytes;

// The flags of RTFSync.
constexpr ULONG kRtfChanged = 1;
constexpr ULONG kBodyChanged = 2;

HRESULT ReadToEnd(IStream& stream, Bytes& bytes) {
    std::array<std::uint8_t, 16384> part;
    for (;;) {
        ULONG read = 0;
        const HRESULT status = stream.Read(part.data(), static_cast<ULONG>(part.size()), &read);
        if (FAILED(status) || read == 0)
            return FAILED(status) ? status : S_OK;
        bytes.insert(bytes.end(), part.begin(), part.begin() + read);
    }
}

HRESULT Refuse() {
    return E_NOTIMPL;
}

/// RTF on its way through the compression, which goes from the beginning to the end: such a stream is read,
/// or written and committed, and knows neither its size nor another position.
class RtfStream final : public MemoryStream {
public:
    using MemoryStream::MemoryStream;

    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER* position) override {
        return Call(L"Seek", Outputs(position), Refuse);
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return Call(L"SetSize", Refuse); }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* statistics, DWORD) override {
        return Call(L"Stat", Outputs(statistics), Refuse);
    }
};

HRESULT ReplaceAll(IStream& stream, const Bytes& bytes) {
    if (const HRESULT status = stream.Seek({}, STREAM_SEEK_SET, nullptr); FAILED(status))
        return status;
    if (const HRESULT status = stream.SetSize({}); FAILED(status))
        return status;
    return stream.Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
}

} // namespace

HRESULT WrapRtfStream(IStream* compressed, ULONG flags, IStream** stream) {
    if (!compressed || !stream)
        return MAPI_E_INVALID_PARAMETER;
    // RTF has no width, so that MAPI_UNICODE says nothing here.
    if (flags & ~(MAPI_MODIFY | STORE_UNCOMPRESSED_RTF | MAPI_UNICODE))
        return MAPI_E_UNKNOWN_FLAGS;
    if (flags & MAPI_MODIFY) {
        const bool compresses = (flags & STORE_UNCOMPRESSED_RTF) == 0;
        const std::shared_ptr<IStream> target(Hold(compressed).release(), Releaser());
        *stream = new RtfStream({}, [target, compresses](const Bytes& rtf) {
            return ReplaceAll(*target, compresses ? CompressRtf(rtf) : WrapRtf(rtf));
        });
        return S_OK;
    }
    Bytes bytes;
    if (const HRESULT status = ReadToEnd(*compressed, bytes); FAILED(status))
        return status;
    Bytes rtf;
    if (const HRESULT status = DecompressRtf(bytes, rtf); FAILED(status))
        return status;
    *stream = new RtfStream(std::move(rtf));
    return S_OK;
}

HRESULT SyncRtf(IMessage* message, ULONG flags, BOOL* updated) {
    if (!message || !updated)
        return MAPI_E_INVALID_PARAMETER;
    if (flags & ~(kRtfChanged | kBodyChanged))
        return MAPI_E_UNKNOWN_FLAGS;
    void* side = nullptr;
    if (FAILED(message->QueryInterface(kIidPropertySide, &side)))
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    const Held<IMessage> held(message);
    const auto* view = dynamic_cast<MessageView*>(static_cast<PropertySide*>(side));
    if (!view)
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    if (const HRESULT status = view->CheckWritable(); FAILED(status))
        return status;
    bool changed = false;
    HRESULT status = S_OK;
    if (flags & kRtfChanged)
        status = MakeNative(view->Message(), NativeBody::Rtf, changed);
    else if (flags & kBodyChanged)
        status = MakeNative(view->Message(), NativeBody::PlainText, changed);
    *updated = changed;
    return status;
}

} // namespace standin::mapi
