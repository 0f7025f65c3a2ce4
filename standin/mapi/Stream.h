// Streams: a base that keeps the position and the form of the calls, and a stream over bytes in memory.
#pragma once

#include "standin/mapi/Object.h"
#include "standin/mapi/PropertySide.h"

#include <functional>

namespace standin::mapi {

/// IStream over something that can be read and written at any offset. Offsets and sizes are bytes.
class Stream : public Object<IStream> {
public:
    HRESULT STDMETHODCALLTYPE Read(void* data, ULONG size, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG size, ULONG* written) override;
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                     ULARGE_INTEGER* written) override;
    HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Revert() override;
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override;
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override;
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* statistics, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override;

protected:
    explicit Stream(DWORD mode) : m_mode(mode) {}

    /// STGM flags: how the stream was opened.
    DWORD Mode() const { return m_mode; }
    bool CanWrite() const { return (m_mode & (STGM_WRITE | STGM_READWRITE)) != 0; }

    virtual HRESULT SizeNow(std::uint64_t& size) = 0;
    virtual HRESULT ReadAt(std::uint64_t offset, void* data, ULONG size, ULONG& read) = 0;
    virtual HRESULT WriteAt(std::uint64_t offset, const void* data, ULONG size) = 0;
    virtual HRESULT Resize(std::uint64_t size) = 0;
    virtual HRESULT Keep() = 0; ///< Commit
    void SetPosition(std::uint64_t position) { m_position = position; }

private:
    HRESULT ReadOn(void* data, ULONG size, ULONG& read);
    HRESULT CopyOn(IStream& target, std::uint64_t size, std::uint64_t& read, std::uint64_t& written);
    HRESULT Move(std::int64_t move, DWORD origin);

    DWORD m_mode;
    std::uint64_t m_position = 0;
};

/// A stream over bytes in memory. What Commit does with them is the opener's to say.
class MemoryStream : public Stream {
public:
    using Keeper = std::function<HRESULT(const mailbox::Bytes&)>;

    /// For reading alone.
    explicit MemoryStream(mailbox::Bytes bytes) : Stream(STGM_READ), m_bytes(std::move(bytes)) {}
    /// For reading and writing.
    MemoryStream(mailbox::Bytes bytes, Keeper keep)
        : Stream(STGM_READWRITE), m_bytes(std::move(bytes)), m_keep(std::move(keep)) {}

    void MoveToEnd() { SetPosition(m_bytes.size()); }

protected:
    HRESULT SizeNow(std::uint64_t& size) override;
    HRESULT ReadAt(std::uint64_t offset, void* data, ULONG size, ULONG& read) override;
    HRESULT WriteAt(std::uint64_t offset, const void* data, ULONG size) override;
    HRESULT Resize(std::uint64_t size) override;
    HRESULT Keep() override;

private:
    mailbox::Bytes m_bytes;
    Keeper m_keep;
};

/// OpenProperty with IStream: the text (without its NUL) or the bytes of a property. What is written is in
/// the property once the stream is committed, and lost otherwise. For writing, a property that can't be
/// written is refused as SetProps refuses it. MAPI_E_NOT_FOUND: there is no such property, and MAPI_CREATE
/// doesn't ask for a new one. MAPI_E_INTERFACE_NOT_SUPPORTED: neither text nor binary.
HRESULT OpenPropertyStream(PropertySide& side, mailbox::PropertyTag tag, ULONG flags, IUnknown** object);

} // namespace standin::mapi
