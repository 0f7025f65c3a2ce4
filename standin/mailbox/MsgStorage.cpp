// What reader and writer of MSG need of the platform's structured storage.
#include "standin/mailbox/Msg.h"
#include "standin/mailbox/MsgLayout.h"

#include <cstring>
#include <cwchar>

namespace standin::mailbox {
namespace {

constexpr std::pair<HRESULT, HRESULT> kStatuses[] = {
    {STG_E_FILENOTFOUND, MAPI_E_NOT_FOUND},
    {STG_E_PATHNOTFOUND, MAPI_E_NOT_FOUND},
    {STG_E_ACCESSDENIED, MAPI_E_NO_ACCESS},
    {STG_E_SHAREVIOLATION, MAPI_E_NO_ACCESS},
    {STG_E_LOCKVIOLATION, MAPI_E_NO_ACCESS},
    {STG_E_DISKISWRITEPROTECTED, MAPI_E_NO_ACCESS},
    {STG_E_INSUFFICIENTMEMORY, MAPI_E_NOT_ENOUGH_MEMORY},
    {STG_E_MEDIUMFULL, MAPI_E_NOT_ENOUGH_DISK},
    {STG_E_TOOMANYOPENFILES, MAPI_E_NOT_ENOUGH_RESOURCES},
    {STG_E_INVALIDHEADER, MAPI_E_CORRUPT_DATA},
    {STG_E_FILEALREADYEXISTS, MAPI_E_CORRUPT_DATA},
    {STG_E_OLDFORMAT, MAPI_E_CORRUPT_DATA},
    {STG_E_OLDDLL, MAPI_E_CORRUPT_DATA},
    {STG_E_DOCFILECORRUPT, MAPI_E_CORRUPT_DATA},
    {STG_E_READFAULT, MAPI_E_DISK_ERROR},
    {STG_E_WRITEFAULT, MAPI_E_DISK_ERROR},
    {STG_E_SEEKERROR, MAPI_E_DISK_ERROR},
};

} // namespace

HRESULT StatusFromStorage(HRESULT status) {
    for (const auto& [storageStatus, mapiStatus] : kStatuses)
        if (status == storageStatus)
            return mapiStatus;
    const bool isStorage = FAILED(status) && HRESULT_FACILITY(status) == FACILITY_STORAGE;
    return isStorage ? MAPI_E_CALL_FAILED : status;
}

HRESULT OpenStorageBytes(std::span<const std::uint8_t> bytes, ILockBytes** memory, IStorage** storage) {
    constexpr DWORD kMode = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
    constexpr std::size_t kLargestSector = 4096; // a last sector that was cut short ends in zeros
    const std::size_t size = (bytes.size() + kLargestSector - 1) / kLargestSector * kLargestSector;
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
    if (!block)
        return E_OUTOFMEMORY;
    if (!bytes.empty()) {
        std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
        GlobalUnlock(block);
    }
    if (const HRESULT status = CreateILockBytesOnHGlobal(block, TRUE, memory); FAILED(status)) {
        GlobalFree(block);
        return status;
    }
    return bytes.empty() ? StgCreateDocfileOnILockBytes(*memory, STGM_CREATE | kMode, 0, storage)
                         : StgOpenStorageOnILockBytes(*memory, nullptr, kMode, nullptr, 0, storage);
}

HRESULT BytesOfStorage(ILockBytes* memory, Bytes& bytes) {
    STATSTG state{};
    if (const HRESULT status = memory->Stat(&state, STATFLAG_NONAME); FAILED(status))
        return status;
    bytes.resize(static_cast<std::size_t>(state.cbSize.QuadPart));
    ULONG read = 0;
    return memory->ReadAt({}, bytes.data(), static_cast<ULONG>(bytes.size()), &read);
}

namespace msg {

std::wstring ValueName(PropertyTag tag) {
    wchar_t name[32];
    std::swprintf(name, std::size(name), L"%ls%08X", kValuePrefix, tag);
    return name;
}

std::wstring ValueName(PropertyTag tag, std::uint32_t index) {
    wchar_t suffix[16];
    std::swprintf(suffix, std::size(suffix), L"-%08X", index);
    return ValueName(tag) + suffix;
}

std::wstring PartName(const wchar_t* prefix, std::uint32_t index) {
    wchar_t number[16];
    std::swprintf(number, std::size(number), L"%08X", index);
    return std::wstring(prefix) + number;
}

std::optional<Bytes> ReadStream(IStorage* storage, const std::wstring& name, std::uint64_t& budget) {
    constexpr ULONG kChunk = 1 << 20;
    StreamPointer stream;
    const HRESULT opened =
        storage->OpenStream(name.c_str(), nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream);
    if (opened == STG_E_FILENOTFOUND)
        return std::nullopt;
    Need(opened);
    STATSTG state{};
    Need(stream->Stat(&state, STATFLAG_NONAME));
    if (state.cbSize.QuadPart > budget)
        throw Failure{MAPI_E_CORRUPT_DATA};
    budget -= state.cbSize.QuadPart;
    Bytes bytes;
    for (std::uint64_t left = state.cbSize.QuadPart; left > 0;) {
        const ULONG wanted = static_cast<ULONG>(std::min<std::uint64_t>(left, kChunk));
        ULONG read = 0;
        bytes.resize(bytes.size() + wanted);
        Need(stream->Read(bytes.data() + bytes.size() - wanted, wanted, &read));
        if (read != wanted)
            throw Failure{MAPI_E_CORRUPT_DATA};
        left -= wanted;
    }
    return bytes;
}

void WriteStream(IStorage* storage, const std::wstring& name, const void* data, std::size_t size) {
    StreamPointer stream;
    Need(storage->CreateStream(name.c_str(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0,
                               &stream));
    if (size == 0)
        return;
    ULONG written = 0;
    Need(stream->Write(data, static_cast<ULONG>(size), &written));
    if (written != size)
        throw Failure{MAPI_E_NOT_ENOUGH_DISK};
}

} // namespace msg
} // namespace standin::mailbox
