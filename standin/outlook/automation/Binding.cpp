// Puts the rows of a kind and the members of its interface together.
#include "standin/outlook/automation/Binding.h"

#include "standin/outlook/automation/Object.h"
#include "standin/outlook/session/Session.h"

#include <memory>
#include <stdexcept>
#include <unordered_map>

namespace standin::outlook {
namespace {

ComPtr<Object> ParentOf(Object& object) {
    return object.Parent();
}

std::int32_t ClassOf(Object& object) {
    return object.Class();
}

ComPtr<Object> ApplicationOf(Object&) {
    return TheApplication();
}

ComPtr<Object> SessionOf(Object&) {
    return TheNameSpace();
}

/// What every object has.
constexpr Row kEveryObject[] = {
    {L"Application", Get<ApplicationOf>},
    {L"Class", Get<ClassOf>},
    {L"Parent", Get<ParentOf>},
    {L"Session", Get<SessionOf>},
};

std::logic_error Unknown(const wchar_t* kind, const wchar_t* member) {
    const std::wstring text = std::wstring(kind) + L"." + member;
    return std::logic_error("not in the object model: " + std::string(text.begin(), text.end()));
}

const Interface& ModelOf(const Kind& kind) {
    if (const Interface* model = ObjectModel::Get().Find(kind.name))
        return *model;
    throw Unknown(kind.name, L"");
}

} // namespace

Binding::Binding(const Kind& kind) : m_model(ModelOf(kind)), m_rows(m_model.Members().size()) {
    for (const Row& row : kind.rows)
        if (!m_model.Find(row.name))
            throw Unknown(kind.name, row.name);
    Enter(kEveryObject);
    Enter(kind.shared);
    for (const std::span<const Row>* topic : kind.topics)
        Enter(*topic);
    Enter(kind.rows);
}

/// Rows that come later replace those of the same name.
void Binding::Enter(std::span<const Row> table) {
    for (const Row& row : table)
        if (const Member* member = m_model.Find(row.name))
            m_rows[m_model.IndexOf(*member)] = &row;
}

const Binding& Binding::Of(const Kind& kind) {
    static std::unordered_map<const Kind*, std::unique_ptr<Binding>> bindings;
    std::unique_ptr<Binding>& binding = bindings[&kind];
    if (!binding)
        binding = std::make_unique<Binding>(kind);
    return *binding;
}

} // namespace standin::outlook
