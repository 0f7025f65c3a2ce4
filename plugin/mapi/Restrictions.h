// Restrictions and rows of MAPI tables.
#pragma once

#include "Ownership.h"

#include <array>
#include <string>

namespace varden::mapi {

/// Opens a store at its server and not at its local copy (MDB_ONLINE, which the platform's headers don't
/// name).
inline constexpr ULONG kMdbOnline = 0x00000100;

/// A property that a restriction compares with. The text must outlive it.
SPropValue TextProperty(ULONG tag, std::wstring& text);
SPropValue BooleanProperty(ULONG tag, bool truth);

/// Rows that have the property, with this value: RES_AND of RES_EXIST and RES_PROPERTY with RELOP_EQ.
class ExistsAndEquals {
public:
    explicit ExistsAndEquals(const SPropValue& value);
    ExistsAndEquals(const ExistsAndEquals&) = delete;
    ExistsAndEquals& operator=(const ExistsAndEquals&) = delete;

    LPSRestriction Get() { return &m_and; }

private:
    SPropValue m_value;
    std::array<SRestriction, 2> m_terms{};
    SRestriction m_and{};
};

/// The value of exactly this tag in the first row; null when there is no row, or the row lacks the property.
const SPropValue* FindInRow(const RowSet& rows, ULONG tag);

} // namespace varden::mapi
