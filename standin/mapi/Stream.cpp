// The form of stream calls, and streams in memory.
#include "standin/mapi/Stream.h"

#include <array>
#include <cstring>

namespace standin::mapi {
namespace {

constexpr std::uint64_t kLargestStream = 0x7FFFFFFF;
constexpr std::uint64_t kLastPosition = 0x7FFFFFFFFFFFFFFF; // beyond it a move went below 0

} // namespace

HRESULT Stream::ReadOn(void* data, ULONG size, ULONG& read) {
    read = 0;
    const HRESULT status = ReadAt(m_position, data, size, read);
    m_position += read;
    return status;
}

HRESULT Stream::Read(void* data, ULONG size, ULONG* read) {
    return Call(L"Read", Outputs(read), [&]() -> HRESULT {
        if (!data)
            return STG_E_INVALIDPOINTER;
        ULONG count = 0;
        const HRESULT status = ReadOn(data, size, count);
        if (read)
            *read = count;
        return status;
    });
}

HRESULT Stream::Write(const void* data, ULONG size, ULONG* written) {
    return Call(L"Write", Outputs(written), [&]() -> HRESULT {
        if (written)
            *written = 0;
        if (!data)
            return STG_E_INVALIDPOINTER;
        if (!CanWrite())
            return STG_E_ACCESSDENIED;
        if (const HRESULT status = WriteAt(m_position, data, size); FAILED(status))
            return status;
        m_position += size;
        if (written)
            *written = size;
        return S_OK;
    });
}

HRESULT Stream::Move(std::int64_t move, DWORD origin) {
    std::uint64_t size = 0;
    if (const HRESULT status = SizeNow(size); FAILED(status))
        return status;
    const std::uint64_t origins[] = {0, m_position, size};
    if (origin >= std::size(origins))
        return STG_E_INVALIDFUNCTION;
    const std::uint64_t position = origins[origin] + static_cast<std::uint64_t>(move);
    if (position > kLastPosition)
        return STG_E_INVALIDFUNCTION;
    m_position = position;
    return S_OK;
}

HRESULT Stream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) {
    return Call(L"Seek", Outputs(position), [&] {
        const HRESULT status = Move(move.QuadPart, origin);
        if (position)
            position->QuadPart = m_position;
        return status;
    });
}

HRESULT Stream::SetSize(ULARGE_INTEGER size) {
    return Call(L"SetSize",
                [&]() -> HRESULT { return CanWrite() ? Resize(size.QuadPart) : STG_E_ACCESSDENIED; });
}

HRESULT Stream::CopyOn(IStream& target, std::uint64_t size, std::uint64_t& read, std::uint64_t& written) {
    std::array<std::uint8_t, 16384> part;
    while (size > 0) {
        ULONG count = 0;
        const auto wanted = static_cast<ULONG>(std::min<std::uint64_t>(size, part.size()));
        if (const HRESULT status = ReadOn(part.data(), wanted, count); FAILED(status) || count == 0)
            return status;
        read += count;
        ULONG taken = 0;
        const HRESULT status = target.Write(part.data(), count, &taken);
        written += taken;
        if (FAILED(status))
            return status;
        size -= count;
    }
    return S_OK;
}

HRESULT Stream::CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read, ULARGE_INTEGER* written) {
    return Call(L"CopyTo", Outputs(read, written), [&]() -> HRESULT {
        if (!target)
            return STG_E_INVALIDPOINTER;
        std::uint64_t readCount = 0;
        std::uint64_t writtenCount = 0;
        const HRESULT status = CopyOn(*target, size.QuadPart, readCount, writtenCount);
        if (read)
            read->QuadPart = readCount;
        if (written)
            written->QuadPart = writtenCount;
        return status;
    });
}

HRESULT Stream::Commit(DWORD) {
    return Call(L"Commit", [&] { return CanWrite() ? Keep() : S_OK; });
}

HRESULT Stream::Revert() {
    return NotSupported(L"Revert");
}

HRESULT Stream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return Call(L"LockRegion", [] { return STG_E_INVALIDFUNCTION; });
}

HRESULT Stream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
    return Call(L"UnlockRegion", [] { return STG_E_INVALIDFUNCTION; });
}

HRESULT Stream::Stat(STATSTG* statistics, DWORD) {
    return Call(L"Stat", [&]() -> HRESULT {
        if (!statistics)
            return STG_E_INVALIDPOINTER;
        std::uint64_t size = 0;
        const HRESULT status = SizeNow(size);
        *statistics = {};
        statistics->type = STGTY_STREAM;
        statistics->grfMode = m_mode;
        statistics->cbSize.QuadPart = size;
        return status;
    });
}

HRESULT Stream::Clone(IStream** clone) {
    return NotSupported(L"Clone", Outputs(clone));
}

HRESULT MemoryStream::SizeNow(std::uint64_t& size) {
    size = m_bytes.size();
    return S_OK;
}

HRESULT MemoryStream::ReadAt(std::uint64_t offset, void* data, ULONG size, ULONG& read) {
    if (offset >= m_bytes.size())
        return S_OK;
    read = static_cast<ULONG>(std::min<std::uint64_t>(size, m_bytes.size() - offset));
    std::memcpy(data, m_bytes.data() + offset, read);
    return S_OK;
}

HRESULT MemoryStream::WriteAt(std::uint64_t offset, const void* data, ULONG size) {
    if (offset + size > m_bytes.size())
        if (const HRESULT status = Resize(offset + size); FAILED(status))
            return status;
    std::memcpy(m_bytes.data() + offset, data, size);
    return S_OK;
}

HRESULT MemoryStream::Resize(std::uint64_t size) {
    if (size > kLargestStream)
        return STG_E_MEDIUMFULL;
    m_bytes.resize(static_cast<std::size_t>(size));
    return S_OK;
}

HRESULT MemoryStream::Keep() {
    return m_keep(m_bytes);
}

} // namespace standin::mapi
