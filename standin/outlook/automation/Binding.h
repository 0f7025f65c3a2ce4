// The rows of a kind of object, found by the members of its interface.
#pragma once

#include "standin/outlook/automation/Row.h"

namespace standin::outlook {

class Binding {
public:
    /// Raises std::logic_error for a kind that the object model doesn't know, or an own row that it hasn't.
    explicit Binding(const Kind& kind);

    /// Made at the first use of the kind.
    static const Binding& Of(const Kind& kind);

    const Interface& Model() const { return m_model; }
    const Row* RowOf(const Member& member) const { return m_rows[m_model.IndexOf(member)]; }

private:
    void Enter(std::span<const Row> table);

    const Interface& m_model;
    std::vector<const Row*> m_rows; // by the place of the member
};

} // namespace standin::outlook
