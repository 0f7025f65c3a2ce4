// Properties too long for one value, read as streams: texts, blobs, bodies.
#include "session/COutlookFuncs.h"

#include "frame/PlugInLog.h"
#include "mapi/Diagnostics.h"
#include "mapi/HexText.h"
#include "mapi/Tags.h"

#include <algorithm>

namespace varden {

namespace {

struct OpenFailure {
    HRESULT status;
    const wchar_t* text;
};

constexpr std::array kOpenFailures{
    OpenFailure{E_ACCESSDENIED, L"The caller has insufficient permissions to access the property."},
    OpenFailure{E_NOINTERFACE, L"Interface not supported"},
    OpenFailure{MAPI_E_NO_SUPPORT,
                L"The object cannot provide access to this property through the requested interface."},
    OpenFailure{E_INVALIDARG, L"The property type in the tag is set to PT_UNSPECIFIED."},
};

using Stream = mapi::Pointer<IStream>;

HRESULT OpenStream(IMessage& message, ULONG tag, Stream& stream) {
    return message.OpenProperty(tag, &IID_IStream, 0, 0, stream.OutAs<IUnknown>());
}

/// The words for a property that could not be opened, or `otherwise`.
std::wstring OpenFailureText(HRESULT status, const std::wstring& otherwise) {
    const auto row = std::ranges::find(kOpenFailures, status, &OpenFailure::status);
    return row == kOpenFailures.end() ? otherwise : row->text;
}

/// The whole of a stream by one read of the size that it tells.
std::string ReadWhole(const Stream& stream) {
    STATSTG statistics{};
    stream->Stat(&statistics, STATFLAG_NONAME);
    std::string bytes(static_cast<std::size_t>(statistics.cbSize.QuadPart), '\0');
    ULONG read = 0;
    stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read);
    bytes.resize(std::min<std::size_t>(read, bytes.size()));
    return bytes;
}

/// The rest of a stream whose size isn't known ahead, block by block until one comes back short.
std::string ReadBlocks(const Stream& stream) {
    constexpr ULONG blockSize = 0x10000;
    std::string bytes;
    ULONG read = 0;
    do {
        const std::size_t start = bytes.size();
        bytes.resize(start + blockSize);
        read = 0;
        if (FAILED(stream->Read(bytes.data() + start, blockSize, &read))) {
            read = 0;
        }
        bytes.resize(start + std::min(read, blockSize));
    } while (read == blockSize);
    return bytes;
}

/// Text in the system's ANSI code page, up to its terminator.
std::wstring WidenAnsi(const std::string& bytes) {
    const std::string text = bytes.substr(0, bytes.find('\0'));
    const int length = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

} // namespace

bool COutlookFuncs::mapi_GetTextField(ULONG tag, std::wstring& text, IMessage* message) {
    const LoggedOperation log(L"mapi_GetTextField");
    const auto fail = [&](const std::wstring& reason) {
        text = reason;
        LogLine(L"Returning %ls", text.c_str());
        return false;
    };
    if (!message) {
        return false;
    }
    Stream stream;
    const HRESULT status = OpenStream(*message, tag, stream);
    LogLine(L"attempted to open property");
    if (status == MAPI_E_NOT_FOUND) {
        text.clear();
        return true;
    }
    if (FAILED(status)) {
        return fail(OpenFailureText(status, L"Unknown Error"));
    }
    if (!stream) {
        return fail(L"Unable to open field as stream");
    }
    const std::string bytes = ReadWhole(stream);
    text.assign(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    text.resize(std::min(text.find(L'\0'), text.size()));
    // A carriage return is the line end that scripts expect. The last character goes too: of a text that ends
    // in a line end that is the carriage return left over, of any other a character of its own.
    std::erase(text, L'\n');
    if (!text.empty()) {
        text.pop_back();
    }
    return true;
}

bool COutlookFuncs::mapi_GetBinaryField(ULONG tag, std::wstring& text, IMessage* message) {
    const LoggedOperation log(L"mapi_GetBinaryField");
    const auto fail = [&](const std::wstring& reason) {
        text = reason;
        LogLine(L"Returning %ls", text.c_str());
        return false;
    };
    if (!message) {
        return fail(L"No Message Opened");
    }
    Stream stream;
    const HRESULT status = OpenStream(m_pMessage.Required(), tag, stream); // whichever message was passed
    text.clear();
    if (status == MAPI_E_NOT_FOUND) {
        return true;
    }
    if (FAILED(status)) {
        return fail(OpenFailureText(status, mapi_HResultToText(status)));
    }
    if (!stream) {
        return true;
    }
    if (tag == mapi::tag::kRtfCompressed) {
        Stream rtf;
        if (const HRESULT wrapped = mapi::WrapCompressedRtfStream(stream.Get(), 0, rtf.Out());
            FAILED(wrapped)) {
            return fail(mapi_HResultToText(wrapped));
        }
        text = Widen(ReadBlocks(rtf));
        return true;
    }
    std::string bytes = ReadWhole(stream);
    const SBinary binary{static_cast<ULONG>(bytes.size()), reinterpret_cast<LPBYTE>(bytes.data())};
    text = tag == mapi::tag::kHtml ? WidenAnsi(bytes) : mapi::HexText(binary);
    return true;
}

} // namespace varden
