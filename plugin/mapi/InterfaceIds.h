// The ids of the MAPI and storage interfaces that the engine asks for.
#pragma once

#include <windows.h>

namespace varden::mapi {

/// The ids of MAPI's interfaces differ in their first 32 bits only.
constexpr IID MapiIid(unsigned long first) {
    return {first, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
}

inline constexpr IID kIidSession = MapiIid(0x00020300);
inline constexpr IID kIidMsgStore = MapiIid(0x00020306);
inline constexpr IID kIidMessage = MapiIid(0x00020307);
inline constexpr IID kIidAttachment = MapiIid(0x00020308);
inline constexpr IID kIidFolder = MapiIid(0x0002030C);
inline constexpr IID kIidStreamDocfile = MapiIid(0x0002032C);

} // namespace varden::mapi
