// Between RTF and the other forms of a body, as far as a store needs it. RTF is bytes in the code page that
// it names itself.
#pragma once

#include "standin/mailbox/Property.h"

#include <span>

namespace standin::mapi {

/// The text that RTF shows, lines ended by CR LF.
std::wstring TextOfRtf(std::span<const std::uint8_t> rtf);
/// The HTML that RTF was made from ([MS-OXRTFEX]); nothing where it was made from something else.
std::optional<std::wstring> HtmlOfRtf(std::span<const std::uint8_t> rtf);

mailbox::Bytes RtfOfText(std::wstring_view text);
/// RTF that has the HTML in it ([MS-OXRTFEX] 2.1).
mailbox::Bytes RtfOfHtml(std::wstring_view html);

} // namespace standin::mapi
