// The words for a COM exception.
#include "ComErrorText.h"

#include "Text.h"

namespace varden {

namespace {

std::wstring OrEmpty(const _bstr_t& text) {
    return text.length() != 0 ? std::wstring(text, text.length()) : std::wstring();
}

} // namespace

std::wstring ComErrorText(const _com_error& error) {
    return FormatText(L"Error: %08lx\nMessage:%ls\nSource:%ls\nDesc:%ls",
                      static_cast<unsigned long>(error.Error()), error.ErrorMessage(),
                      OrEmpty(error.Source()).c_str(), ComErrorDescription(error).c_str());
}

std::wstring ComErrorDescription(const _com_error& error) {
    return OrEmpty(error.Description());
}

} // namespace varden
