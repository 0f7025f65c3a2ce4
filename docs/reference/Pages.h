// The pages of the reference, written from the plug-in's own tables.
#pragma once

#include <string>

namespace varden::reference {

/// Each is a page in Markdown, UTF-8 once written.
std::wstring FunctionsPage();
std::wstring FieldsPage();
std::wstring ErrorsPage();

} // namespace varden::reference
