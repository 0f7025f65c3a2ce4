// Restrictions and rows of MAPI tables.
#include "Restrictions.h"

#include <algorithm>

namespace varden::mapi {

SPropValue TextProperty(ULONG tag, std::wstring& text) {
    SPropValue property{};
    property.ulPropTag = tag;
    property.Value.lpszW = text.data();
    return property;
}

SPropValue BooleanProperty(ULONG tag, bool truth) {
    SPropValue property{};
    property.ulPropTag = tag;
    property.Value.b = truth;
    return property;
}

ExistsAndEquals::ExistsAndEquals(const SPropValue& value) : m_value(value) {
    m_terms[0].rt = RES_EXIST;
    m_terms[0].res.resExist.ulPropTag = value.ulPropTag;
    m_terms[1].rt = RES_PROPERTY;
    m_terms[1].res.resProperty.relop = RELOP_EQ;
    m_terms[1].res.resProperty.ulPropTag = value.ulPropTag;
    m_terms[1].res.resProperty.lpProp = &m_value;
    m_and.rt = RES_AND;
    m_and.res.resAnd.cRes = static_cast<ULONG>(m_terms.size());
    m_and.res.resAnd.lpRes = m_terms.data();
}

const SPropValue* FindInRow(const RowSet& rows, ULONG tag) {
    if (rows.Rows().empty()) {
        return nullptr;
    }
    const SRow& row = rows.Rows().front();
    const std::span values(row.lpProps, row.cValues);
    const auto found = std::ranges::find(values, tag, &SPropValue::ulPropTag);
    return found == values.end() ? nullptr : &*found;
}

} // namespace varden::mapi
