// Attachments saved to files.
#include "session/COutlookFuncs.h"

#include "AttachmentKinds.h"

#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "mapi/MsgFile.h"
#include "session/Operation.h"

#include <io.h>

#include <array>

namespace varden {

namespace {

namespace tag = mapi::tag;

using Stream = mapi::Pointer<IStream>;

/// How a save went: the status of its last step, and the words for one that failed.
struct SaveResult {
    HRESULT status = S_OK;
    std::wstring text;
};

struct CopyTexts {
    const wchar_t* noFile;
    const wchar_t* notCopied;
};

/// A stream onto a new file, in place of one of that name. MAPI takes the path in the ANSI code page.
HRESULT OpenFileStream(std::string& path, Stream& stream) {
    return mapi::OpenStreamOnFile(reinterpret_cast<LPALLOCATEBUFFER>(mapi::AllocateBuffer.Address()),
                                  reinterpret_cast<LPFREEBUFFER>(mapi::FreeBuffer.Address()),
                                  STGM_CREATE | STGM_READWRITE, path.data(), nullptr, stream.Out());
}

HRESULT OpenData(IAttach& attachment, ULONG dataTag, const IID& iid, Stream& stream) {
    return attachment.OpenProperty(dataTag, &iid, 0, 0, stream.OutAs<IUnknown>());
}

/// Copies so many bytes, or as many as there are.
HRESULT CopyToFile(const Stream& data, const Stream& file, ULONG size) {
    ULARGE_INTEGER bytes{};
    bytes.QuadPart = size;
    const HRESULT status = data->CopyTo(file.Get(), bytes, nullptr, nullptr);
    return FAILED(status) ? status : file->Commit(STGC_DEFAULT);
}

void DeleteFileOf(const std::wstring& path) {
    DeleteFileW(path.c_str());
}

void DeleteFileOf(const std::string& path) {
    DeleteFileA(path.c_str());
}

/// The file that a save writes. Once begun it stays only if it is finished, so that nobody takes half an
/// attachment for the whole. It goes by the very path, wide or narrow, that it was made under: where the ANSI
/// code page lacks a character the two aren't the same file. Stands before what has the file open, which must
/// have let go of it by the end.
template <typename Path>
class TargetFile {
public:
    explicit TargetFile(const Path& path) : m_path(path) {}
    ~TargetFile() {
        if (m_isUnfinished) {
            DeleteFileOf(m_path);
        }
    }
    TargetFile(const TargetFile&) = delete;
    TargetFile& operator=(const TargetFile&) = delete;

    /// Takes note of how making the file went, and of how the last step of writing it did.
    HRESULT Begun(HRESULT status) {
        m_isUnfinished = SUCCEEDED(status);
        return status;
    }
    HRESULT Finished(HRESULT status) {
        m_isUnfinished = FAILED(status);
        return status;
    }

private:
    const Path& m_path;
    bool m_isUnfinished = false;
};

SaveResult SaveStream(const Stream& data, const std::wstring& path, ULONG size, const CopyTexts& texts) {
    std::string narrow = Narrow(path);
    TargetFile target(narrow);
    Stream file;
    if (const HRESULT status = target.Begun(OpenFileStream(narrow, file)); FAILED(status)) {
        return {status, texts.noFile};
    }
    const HRESULT status = target.Finished(CopyToFile(data, file, size));
    return {status, FAILED(status) ? texts.notCopied : L""};
}

SaveResult SaveByValue(IAttach& attachment, const std::wstring& path, ULONG size) {
    std::string narrow = Narrow(path);
    TargetFile target(narrow);
    Stream file;
    if (const HRESULT status = target.Begun(OpenFileStream(narrow, file)); FAILED(status)) {
        return {status, L"Cannot open stream on file"};
    }
    Stream data;
    if (const HRESULT status = OpenData(attachment, tag::kAttachDataBinary, IID_IStream, data);
        FAILED(status)) {
        return {status, L"Error opening attachment bin property"};
    }
    const HRESULT status = target.Finished(CopyToFile(data, file, size));
    return {status, FAILED(status) ? L"Error copying stream to file" : L""};
}

HRESULT WriteOleStorage(const mapi::Pointer<IStorage>& data, const mapi::Pointer<IStorage>& file) {
    IMalloc* allocator = mapi::DefaultMalloc();
    mapi::MsgSession session;
    mapi::Pointer<IMessage> message;
    HRESULT status = session.Open(allocator);
    if (SUCCEEDED(status)) {
        status = session.OpenMessage(allocator, file.Get(), message);
    }
    if (SUCCEEDED(status)) {
        status = WriteClassStg(file.Get(), mapi::kMailMessageClass);
    }
    if (SUCCEEDED(status)) {
        status = data->CopyTo(0, nullptr, nullptr, file.Get());
    }
    if (SUCCEEDED(status)) {
        status = message->SaveChanges(KEEP_OPEN_READWRITE);
    }
    return SUCCEEDED(status) ? file->Commit(STGC_DEFAULT) : status;
}

/// The object's storage, in a compound file that bears the class of MSG files.
SaveResult SaveOleStorage(const mapi::Pointer<IStorage>& data, const std::wstring& path) {
    TargetFile target(path);
    mapi::Pointer<IStorage> file;
    if (const HRESULT status = target.Begun(mapi::CreateMsgStorage(path, file)); FAILED(status)) {
        return {status, {}};
    }
    return {target.Finished(WriteOleStorage(data, file)), {}};
}

/// An OLE object comes as a compound file's stream, as one in its other property, or as a storage.
SaveResult SaveOleObject(IAttach& attachment, const std::wstring& path, ULONG size) {
    Stream data;
    if (SUCCEEDED(OpenData(attachment, tag::kAttachDataObject, mapi::kIidStreamDocfile, data))) {
        return SaveStream(
            data, path, size,
            {L"Cannot open stream on doc file for data object", L"Cannot copy stream obj to stream file."});
    }
    if (SUCCEEDED(OpenData(attachment, tag::kAttachDataBinary, mapi::kIidStreamDocfile, data))) {
        return SaveStream(
            data, path, size,
            {L"Cannot open stream on doc file for data bin", L"Cannot copy stream bin to stream file."});
    }
    mapi::Pointer<IStorage> storage;
    if (const HRESULT status =
            attachment.OpenProperty(tag::kAttachDataObject, &IID_IStorage, 0, 0, storage.OutAs<IUnknown>());
        FAILED(status)) {
        return {status, L"Failed to open attachment data property"};
    }
    return SaveOleStorage(storage, path);
}

/// A number among values that were asked for together; `otherwise` for one that isn't there.
long LongAt(std::span<const SPropValue> values, std::size_t place, ULONG longTag, long otherwise) {
    return place < values.size() && values[place].ulPropTag == longTag ? values[place].Value.l : otherwise;
}

} // namespace

std::wstring COutlookFuncs::SaveAttachment(const ScriptText& path, std::int32_t index) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"SaveAttachment");
    if (!path) {
        return operation.Fail(error::kSavePathMissing);
    }
    const std::size_t folderEnd = path->rfind(L'\\');
    if (folderEnd == std::wstring::npos) {
        return operation.Fail(error::kPath);
    }
    constexpr int exists = 0;
    constexpr int isWritable = 2;
    const std::wstring folder = path->substr(0, folderEnd);
    if (_waccess(folder.c_str(), exists) != 0) {
        return operation.Fail(error::kFolderMissing);
    }
    if (_waccess(folder.c_str(), isWritable) != 0) {
        return operation.Fail(error::kFolderNotWritable);
    }
    try {
        return WriteAttachment(*path, index, operation);
    } catch (...) {
        return operation.Fail(error::kMapi, L"Unable to open attachment at provided index");
    }
}

std::wstring COutlookFuncs::WriteAttachment(const std::wstring& path, std::int32_t index,
                                            Operation& operation) {
    const auto fail = [&](const SaveResult& result) {
        return operation.Fail(error::kMapi, result.status,
                              result.text + L' ' + mapi_HResultToText(result.status));
    };
    mapi::Pointer<IAttach> attachment;
    if (const HRESULT status = OpenAttachment(index, attachment); FAILED(status)) {
        return fail({status, L"Unable to open attachment"});
    }
    enum Column { sizeColumn, numberColumn, nameColumn, methodColumn, extensionColumn, columnCount };
    SizedSPropTagArray(columnCount, tags) = {columnCount,
                                             {tag::kAttachSize, tag::kAttachNumber, tag::kAttachLongFilename,
                                              tag::kAttachMethod, tag::kAttachExtension}};
    ULONG count = 0;
    mapi::Block<SPropValue> values;
    if (const HRESULT status = attachment->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), MAPI_UNICODE,
                                                    &count, values.Out());
        FAILED(status)) {
        return fail({status, L"Unable to access attachment method "});
    }
    const std::span columns(values.get(), values ? count : 0);
    constexpr long wholeStream = -1; // as the unsigned size that it becomes, more than there can be
    const ULONG size = static_cast<ULONG>(LongAt(columns, sizeColumn, tag::kAttachSize, wholeStream));
    SaveResult result;
    switch (LongAt(columns, methodColumn, tag::kAttachMethod, kNoAttachment)) {
    case kByValue:
        result = SaveByValue(attachment.Required(), path, size);
        break;
    case kByReferenceOnly: {
        // Whoever wants the file finds it there; nothing is copied.
        mapi::Block<SPropValue> pathname;
        mapi::GetOneProp(attachment.Get(), tag::kAttachPathname, pathname.Out());
        break;
    }
    case kEmbeddedMessage: {
        mapi::Pointer<IMessage> message;
        result.status = OpenEmbedded(attachment.Required(), message);
        if (SUCCEEDED(result.status)) {
            return operation.EndedWith(mapi_SaveToMSG(message.Get(), path));
        }
        result.text = L"Failed to open attachment as message";
        break;
    }
    case kOleObject:
        result = SaveOleObject(attachment.Required(), path, size);
        break;
    default:
        break;
    }
    return FAILED(result.status) ? fail(result) : std::wstring(kSuccessText);
}

} // namespace varden
