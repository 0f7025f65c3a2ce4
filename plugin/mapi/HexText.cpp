// Blobs as hexadecimal text, and back.
#include "HexText.h"

#include "MapiLibrary.h"

#include "frame/Text.h"

namespace varden::mapi {

std::wstring HexText(const SBinary& binary) {
    if (!binary.lpb) {
        return {};
    }
    std::string hexadecimal(binary.cb * 2 + 2, '\0');
    HexFromBin(binary.lpb, static_cast<int>(binary.cb), hexadecimal.data());
    return Widen(hexadecimal.c_str());
}

std::vector<BYTE> BytesFromHex(const std::wstring& hexadecimal) {
    std::string digits = Narrow(hexadecimal);
    std::vector<BYTE> bytes(digits.size() / 2);
    if (bytes.empty() || !BinFromHex(digits.data(), bytes.data())) {
        return {};
    }
    return bytes;
}

} // namespace varden::mapi
