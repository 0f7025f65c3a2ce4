// Writes the pages of the reference into a folder: varden_reference FOLDER.
#include "Pages.h"

#include "frame/LastError.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace varden::reference {

std::wstring ErrorsPage() {
    constexpr int kLowest = -2000;
    const std::wstring_view undefined = ErrorMessage(kLowest);
    std::wstring page =
        L"# Errors\n\n"
        L"`VARD_GetLastError` gives the message, `VARD_GetLastError( \"code\" )` the code. A number "
        L"of Windows' or MAPI's and a further text\nmay follow the message on lines of their own.\n\n"
        L"| Code | Message |\n|---|---|\n";
    for (int code = 0; code > kLowest; --code) {
        if (const std::wstring_view message = ErrorMessage(code); message != undefined) {
            page += L"| " + std::to_wstring(code) + L" | " + std::wstring(message) + L" |\n";
        }
    }
    return page + L"| 1 | Unhandled exception in function |\n"
                  L"| 2 | the exceptions of a recurrence pattern can't be reached |\n"
                  L"| 999 | a failure of Outlook's, told by the further text |\n";
}

namespace {

std::string Utf8(const std::wstring& text) {
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

struct Page {
    const char* file;
    std::wstring (*write)();
};
constexpr std::array kPages{Page{"functions.md", FunctionsPage}, Page{"fields.md", FieldsPage},
                            Page{"errors.md", ErrorsPage}};

} // namespace

} // namespace varden::reference

int main(int count, char** arguments) {
    using namespace varden::reference;
    if (count != 2) {
        std::fputs("varden_reference FOLDER\n", stderr);
        return 2;
    }
    for (const Page& page : kPages) {
        std::ofstream(std::filesystem::path(arguments[1]) / page.file, std::ios::binary)
            << Utf8(page.write());
    }
    return 0;
}
