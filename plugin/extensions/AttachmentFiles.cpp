// Attachments saved to files.
#include "session/COutlookFuncs.h"

#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "mapi/InterfaceIds.h"
#include "mapi/MsgFile.h"
#include "mapi/Tags.h"
#include "session/Operation.h"

#include <io.h>

#include <array>

namespace varden {

namespace {

namespace tag = mapi::tag;

using Stream = mapi::Pointer<IStream>;

/// The values of PR_ATTACH_METHOD that write a file. Attachments by reference write none.
enum AttachMethod : long { kByValue = 1, kEmbeddedMessage = 5, kOleObject = 6 };

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
HRESULT OpenFileStream(const std::wstring& path, Stream& stream) {
    std::string narrow = Narrow(path);
    return mapi::OpenStreamOnFile(reinterpret_cast<LPALLOCATEBUFFER>(mapi::AllocateBuffer.Address()),
                                  reinterpret_cast<LPFREEBUFFER>(mapi::FreeBuffer.Address()),
                                  STGM_CREATE | STGM_READWRITE, narrow.data(), nullptr, stream.Out());
}

HRESULT OpenData(IAttach& attachment, ULONG dataTag, const IID& iid, Stream& stream) {
    return attachment.OpenProperty(dataTag, &iid, 0, 0, stream.OutAs<IUnknown>());
}

HRESULT CopyToFile(const Stream& data, const Stream& file, ULONG size) {
    ULARGE_INTEGER bytes{};
    bytes.QuadPart = size;
    const HRESULT status = data->CopyTo(file.Get(), bytes, nullptr, nullptr);
    return FAILED(status) ? status : file->Commit(STGC_DEFAULT);
}

/// The file that a save writes. Once begun it stays only if it is finished, so that nobody takes half an
/// attachment for the whole. Stands before what has the file open, which must have let go of it by the end.
class TargetFile {
public:
    explicit TargetFile(const std::wstring& path) : m_path(path) {}
    ~TargetFile() {
        if (m_isUnfinished) {
            DeleteFileW(m_path.c_str());
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
    const std::wstring& m_path;
    bool m_isUnfinished = false;
};

SaveResult SaveStream(const Stream& data, const std::wstring& path, ULONG size, const CopyTexts& texts) {
    TargetFile target(path);
    Stream file;
    if (const HRESULT status = target.Begun(OpenFileStream(path, file)); FAILED(status)) {
        return {status, texts.noFile};
    }
    const HRESULT status = target.Finished(CopyToFile(data, file, size));
    return {status, FAILED(status) ? texts.notCopied : L""};
}

SaveResult SaveByValue(IAttach& attachment, const std::wstring& path, ULONG size) {
    TargetFile target(path);
    Stream file;
    if (const HRESULT status = target.Begun(OpenFileStream(path, file)); FAILED(status)) {
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
    const std::span columns(values.get(), count);
    const ULONG size = static_cast<ULONG>(columns[sizeColumn].Value.l);
    SaveResult result;
    switch (columns[methodColumn].ulPropTag == tag::kAttachMethod ? columns[methodColumn].Value.l : 0) {
    case kByValue:
        result = SaveByValue(attachment.Required(), path, size);
        break;
    case kEmbeddedMessage: {
        mapi::Pointer<IMessage> message;
        result.status = attachment->OpenProperty(tag::kAttachDataObject, &mapi::kIidMessage, 0, 0,
                                                 message.OutAs<IUnknown>());
        if (SUCCEEDED(result.status)) {
            return mapi_SaveToMSG(message.Get(), path);
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
