// The value of one property, copied out of MAPI.
#pragma once

#include <windows.h>

#include <mapidefs.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varden::mapi {

/// A value as MAPI holds it beside its tag.
using PropertyUnion = _PV;

/// A value in the memory form of its type: 2 bytes for a short or a boolean, 4 for a long, 8 for a time, a
/// wide text with its terminator for every text (the elements of a list joined by carriage returns), and for
/// a blob its count. Types without a value (null, error, object) give no block.
class PropertyBlock {
public:
    PropertyBlock() = default;

    /// Copies the value. E_INVALIDARG for a type that no field has.
    HRESULT Assign(const SPropValue& property);
    void Clear();

    bool HasBlock() const { return !m_bytes.empty(); }
    /// The block as a wide text up to its terminator or its end, whatever its type: a number reads as the
    /// characters of its code units. Empty without a block.
    std::wstring AsText() const;
    /// The first unit of the block, 0 without one.
    wchar_t FirstUnit() const;
    /// The number; none unless the stored type is a long.
    std::optional<long> AsLong() const;
    /// The time; none unless the stored type is one.
    std::optional<FILETIME> AsTime() const;
    /// The bytes of a blob; empty for every other type.
    std::span<const std::byte> Blob() const { return m_blob; }

private:
    void AssignBytes(const void* bytes, std::size_t count);
    void AssignText(const std::wstring& text);

    ULONG m_type = PT_UNSPECIFIED;
    std::vector<std::byte> m_bytes;
    std::vector<std::byte> m_blob;
};

} // namespace varden::mapi
