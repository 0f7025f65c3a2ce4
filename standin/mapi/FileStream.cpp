// Files as streams.
#include "standin/mapi/FileStream.h"

#include "standin/mapi/Stream.h"
#include "standin/mapi/Values.h"

namespace standin::mapi {
namespace {

struct StatusOfError {
    DWORD error;
    HRESULT status;
};
constexpr StatusOfError kStatuses[] = {
    {ERROR_FILE_NOT_FOUND, MAPI_E_NOT_FOUND},         {ERROR_PATH_NOT_FOUND, MAPI_E_NOT_FOUND},
    {ERROR_INVALID_NAME, MAPI_E_NOT_FOUND},           {ERROR_BAD_PATHNAME, MAPI_E_NOT_FOUND},
    {ERROR_ACCESS_DENIED, MAPI_E_NO_ACCESS},          {ERROR_SHARING_VIOLATION, MAPI_E_NO_ACCESS},
    {ERROR_WRITE_PROTECT, MAPI_E_NO_ACCESS},          {ERROR_DISK_FULL, MAPI_E_NOT_ENOUGH_DISK},
    {ERROR_HANDLE_DISK_FULL, MAPI_E_NOT_ENOUGH_DISK},
};

HRESULT LastStatus() {
    const auto found = std::ranges::find(kStatuses, ::GetLastError(), &StatusOfError::error);
    return found == std::end(kStatuses) ? MAPI_E_CALL_FAILED : found->status;
}

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using File = std::unique_ptr<void, HandleCloser>;

class FileStream final : public Stream {
public:
    FileStream(File file, DWORD mode) : Stream(mode), m_file(std::move(file)) {}

protected:
    HRESULT SizeNow(std::uint64_t& size) override {
        LARGE_INTEGER now;
        if (!GetFileSizeEx(m_file.get(), &now))
            return LastStatus();
        size = static_cast<std::uint64_t>(now.QuadPart);
        return S_OK;
    }
    HRESULT ReadAt(std::uint64_t offset, void* data, ULONG size, ULONG& read) override {
        if (const HRESULT status = GoTo(offset); FAILED(status))
            return status;
        DWORD count = 0;
        if (!ReadFile(m_file.get(), data, size, &count, nullptr))
            return LastStatus();
        read = count;
        return S_OK;
    }
    HRESULT WriteAt(std::uint64_t offset, const void* data, ULONG size) override {
        if (const HRESULT status = GoTo(offset); FAILED(status))
            return status;
        DWORD count = 0;
        if (!WriteFile(m_file.get(), data, size, &count, nullptr))
            return LastStatus();
        return count == size ? S_OK : MAPI_E_NOT_ENOUGH_DISK;
    }
    HRESULT Resize(std::uint64_t size) override {
        if (const HRESULT status = GoTo(size); FAILED(status))
            return status;
        return SetEndOfFile(m_file.get()) ? S_OK : LastStatus();
    }
    HRESULT Keep() override { return FlushFileBuffers(m_file.get()) ? S_OK : LastStatus(); }

private:
    HRESULT GoTo(std::uint64_t offset) {
        LARGE_INTEGER to;
        to.QuadPart = static_cast<LONGLONG>(offset);
        return SetFilePointerEx(m_file.get(), to, nullptr, FILE_BEGIN) ? S_OK : LastStatus();
    }

    File m_file;
};

/// Makes the file, so that the name is nobody else's.
HRESULT MakeUniqueName(const char* folder, const char* prefix, std::wstring& path) {
    std::wstring in = TextAt(folder, false);
    if (in.empty()) {
        in.resize(MAX_PATH + 1);
        in.resize(GetTempPathW(static_cast<DWORD>(in.size()), in.data()));
    }
    wchar_t name[MAX_PATH];
    if (GetTempFileNameW(in.c_str(), TextAt(prefix, false).c_str(), 0, name) == 0)
        return LastStatus();
    path = name;
    return S_OK;
}

} // namespace

HRESULT OpenFileStream(ULONG flags, const char* fileName, const char* prefix, IStream** stream) {
    const bool isUnique = (flags & kUniqueFileName) != 0;
    if (!stream || (!isUnique && !fileName))
        return MAPI_E_INVALID_PARAMETER;
    std::wstring path;
    const HRESULT status =
        isUnique ? MakeUniqueName(fileName, prefix, path) : (path = TextAt(fileName, false), S_OK);
    if (FAILED(status))
        return status;
    const bool writes = isUnique || (flags & (STGM_WRITE | STGM_READWRITE));
    const bool creates = isUnique || (flags & STGM_CREATE);
    const DWORD access = GENERIC_READ | (writes || creates ? GENERIC_WRITE : 0);
    const DWORD share = FILE_SHARE_READ | (flags & STGM_DELETEONRELEASE ? FILE_SHARE_DELETE : 0);
    const DWORD attributes = flags & STGM_DELETEONRELEASE ? FILE_FLAG_DELETE_ON_CLOSE : FILE_ATTRIBUTE_NORMAL;
    const HANDLE handle =
        CreateFileW(path.c_str(), access | (flags & STGM_DELETEONRELEASE ? DELETE : 0), share, nullptr,
                    creates ? CREATE_ALWAYS : OPEN_EXISTING, attributes, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return LastStatus();
    *stream = new FileStream(File(handle), writes ? STGM_READWRITE : STGM_READ);
    return S_OK;
}

} // namespace standin::mapi
