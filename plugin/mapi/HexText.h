// Entry ids and other blobs as scripts see them: two upper-case hexadecimal digits a byte.
#pragma once

#include <windows.h>

#include <mapidefs.h>

#include <string>
#include <vector>

namespace varden::mapi {

/// Empty for an empty blob.
std::wstring HexText(const SBinary& binary);

/// The bytes of a hexadecimal text, half its length; empty for a text that is none.
std::vector<BYTE> BytesFromHex(const std::wstring& hexadecimal);

} // namespace varden::mapi
