// The words for a COM exception.
#include "ComErrorText.h"

#include "Text.h"
#include "outlook/ComPointers.h"

namespace varden {

std::wstring ComErrorText(const _com_error& error) {
    return FormatText(L"Error: %08lx\nMessage:%ls\nSource:%ls\nDesc:%ls",
                      static_cast<unsigned long>(error.Error()), error.ErrorMessage(),
                      BstrText(error.Source()).c_str(), ComErrorDescription(error).c_str());
}

std::wstring ComErrorDescription(const _com_error& error) {
    return BstrText(error.Description());
}

} // namespace varden
