// Between HTML and plain text, as far as a store needs it to give a message's body in either form.
#pragma once

#include <string>
#include <string_view>

namespace standin::mapi {

/// The text that HTML shows: tags gone, blanks run together, blocks and line breaks as CR LF, characters in
/// place of their references. No layout.
std::wstring TextOfHtml(std::wstring_view html);
/// A page that shows the text: all in ASCII, other characters by number.
std::wstring HtmlOfText(std::wstring_view text);

} // namespace standin::mapi
