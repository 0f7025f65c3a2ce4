// Compressed RTF ([MS-OXRTFCP]): the form of PR_RTF_COMPRESSED. Pure functions from bytes to bytes.
#pragma once

#include "standin/mailbox/Property.h"

#include <span>

namespace standin::mapi {

/// The RTF in a compressed stream, or in an uncompressed one that has the header all the same.
/// MAPI_E_CORRUPT_DATA: no such header, a wrong checksum, an end before the end.
HRESULT DecompressRtf(std::span<const std::uint8_t> compressed, mailbox::Bytes& rtf);
/// RTF with header and checksum, compressed.
mailbox::Bytes CompressRtf(std::span<const std::uint8_t> rtf);
/// RTF behind a header that says it is not compressed.
mailbox::Bytes WrapRtf(std::span<const std::uint8_t> rtf);
/// The checksum in the header: CRC-32 with no inversion at either end ([MS-OXRTFCP] 3.1.1.1.1). Distribution
/// lists have it too.
std::uint32_t Checksum(std::span<const std::uint8_t> bytes);

} // namespace standin::mapi
