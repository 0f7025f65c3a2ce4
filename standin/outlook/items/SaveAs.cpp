// Items as files: MSG and plain text.
#include "standin/outlook/items/SaveAs.h"

#include "standin/mailbox/Folder.h"
#include "standin/mailbox/Msg.h"
#include "standin/mapi/Bodies.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace standin::outlook {
namespace {

void SaveAsMsg(const mailbox::OpenMessage& message, const std::wstring& path) {
    mailbox::Bytes file;
    Check(mailbox::WriteMsgBytes(message.Current(), message.Names(), file));
    WriteOutFile(path, file);
}

/// In the system's code page, as Outlook writes it.
void SaveAsText(const mailbox::OpenMessage& message, const std::wstring& path) {
    mailbox::Value body;
    mapi::ReadBody(message, PR_BODY_W, body);
    const std::wstring* text = std::get_if<std::wstring>(&body);
    const std::wstring whole = L"Subject:\t" + message.Get<PR_SUBJECT_W>().value_or(L"") + L"\r\n\r\n" +
                               (text ? *text : std::wstring()) + L"\r\n";
    const std::string narrow = mailbox::Narrow(whole, CP_ACP);
    WriteOutFile(path, {reinterpret_cast<const std::uint8_t*>(narrow.data()), narrow.size()});
}

struct Format {
    std::int32_t number; ///< OlSaveAsType
    void (*save)(const mailbox::OpenMessage& message, const std::wstring& path);
};

constexpr std::int32_t kMsg = 3;
constexpr Format kFormats[] = {{0, SaveAsText}, {2, SaveAsMsg}, {kMsg, SaveAsMsg}, {9, SaveAsMsg}};

} // namespace

void SaveItemAs(ItemObject& item, const Arguments& arguments) {
    constexpr std::size_t kPath = 0, kType = 1;
    const std::int32_t number = arguments.Number(kType, kMsg);
    if (!ObjectModel::Get().HasValue(L"OlSaveAsType", number))
        throw InvalidValue();
    const auto format = std::ranges::find(kFormats, number, &Format::number);
    if (format == std::end(kFormats))
        throw NotBuilt(L"SaveAs of type " + std::to_wstring(number));
    format->save(item.Message(), arguments.Text(kPath));
}

mailbox::Content ReadMsgFile(const std::wstring& path, mailbox::NamedProperties& names) {
    CheckAbsolute(path);
    ComPtr<IStorage> storage;
    const HRESULT status =
        StgOpenStorage(path.c_str(), nullptr, STGM_READ | STGM_SHARE_DENY_WRITE, nullptr, 0, storage.Out());
    if (FAILED(status))
        throw Failure(status,
                      L"Cannot open file: " + path +
                          L". The file may not exist, you may not have permission to open it, or it may "
                          L"be open in another program.");
    mailbox::Content content;
    Check(mailbox::ReadMsg(storage.Get(), names, content));
    return content;
}

void CheckAbsolute(const std::wstring& path) {
    if (!std::filesystem::path(path).is_absolute())
        throw FileNotFound();
}

Failure FileNotFound() {
    return {HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND),
            L"Cannot find this file. Verify the path and file name are correct."};
}

void WriteOutFile(const std::wstring& path, std::span<const std::uint8_t> bytes) {
    CheckAbsolute(path);
    std::ofstream file(path.c_str(), std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        throw Failure(HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND), L"Cannot save the file " + path + L".");
}

} // namespace standin::outlook
