// Reads the table of the object model from the library's resources.
#include "standin/outlook/automation/ObjectModel.h"

#include "standin/outlook/automation/Module.h"
#include "standin/outlook/data/Resources.h"

#include <algorithm>
#include <stdexcept>

namespace standin::outlook {
namespace {

struct TypeWord {
    std::wstring_view word;
    VARTYPE type;
};

constexpr TypeWord kTypeWords[] = {
    {L"-", VT_EMPTY},         {L"BSTR", VT_BSTR},       {L"DATE", VT_DATE},         {L"I4", VT_I4},
    {L"OBJECT", VT_DISPATCH}, {L"VARIANT", VT_VARIANT}, {L"VARIANT_BOOL", VT_BOOL}, {L"", VT_VARIANT},
};

struct AccessWord {
    std::wstring_view word;
    Access access;
};

constexpr AccessWord kAccessWords[] = {
    {L"get", Access::Get},
    {L"get/put", Access::GetPut},
    {L"method", Access::Method},
};

/// Members that DISPID_VALUE stands for, the first that an interface has.
constexpr std::wstring_view kDefaultMembers[] = {L"Item", L"Value", L"Name", L"Subject", L"DisplayName"};

/// An enumeration whose numbers are added up.
constexpr std::wstring_view kFlagEnumeration = L"OlDaysOfWeek";

[[noreturn]] void Damaged(std::wstring_view line) {
    throw std::runtime_error("object model table: " + std::string(line.begin(), line.end()));
}

std::wstring Lower(std::wstring_view name) {
    std::wstring lower(name);
    std::ranges::transform(lower, lower.begin(),
                           [](wchar_t c) { return c >= L'A' && c <= L'Z' ? c | 0x20 : c; });
    return lower;
}

std::wstring_view Trim(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L" \r");
    return first == text.npos ? std::wstring_view()
                              : text.substr(first, text.find_last_not_of(L" \r") - first + 1);
}

std::vector<std::wstring_view> Split(std::wstring_view text, wchar_t separator) {
    std::vector<std::wstring_view> parts;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        parts.push_back(Trim(text.substr(start, end - start)));
        start = end + 1;
    }
    return parts;
}

/// The lines below the heading.
std::vector<std::wstring_view> Rows(std::wstring_view table) {
    std::vector<std::wstring_view> lines = Split(table, L'\n');
    lines.erase(lines.begin());
    std::erase(lines, std::wstring_view());
    return lines;
}

std::wstring_view WithoutUnderscore(std::wstring_view name) {
    return name.starts_with(L'_') ? name.substr(1) : name;
}

TypeName ReadType(std::wstring_view text) {
    const std::size_t colon = std::min(text.find(L':'), text.size());
    const auto row = std::ranges::find(kTypeWords, text.substr(0, colon), &TypeWord::word);
    if (row == std::end(kTypeWords))
        Damaged(text);
    const std::wstring_view of = text.substr(std::min(colon + 1, text.size()));
    return {row->type, std::wstring(WithoutUnderscore(of))};
}

/// "name:TYPE", in brackets if it can be left out.
Parameter ReadParameter(std::wstring_view text) {
    const bool optional = text.starts_with(L'[') && text.ends_with(L']');
    if (optional)
        text = text.substr(1, text.size() - 2);
    const std::size_t colon = std::min(text.find(L':'), text.size());
    return {std::wstring(text.substr(0, colon)), ReadType(text.substr(std::min(colon + 1, text.size()))),
            optional};
}

Member ReadMember(std::wstring_view line, const std::vector<std::wstring_view>& fields) {
    Member member;
    member.name = fields[1];
    member.putName = L"put_" + member.name;
    const auto access = std::ranges::find(kAccessWords, fields[2], &AccessWord::word);
    if (access == std::end(kAccessWords))
        Damaged(line);
    member.access = access->access;
    member.type = ReadType(fields[3]);
    member.since = std::stoi(std::wstring(fields[4]));
    if (!fields[5].empty())
        for (const std::wstring_view parameter : Split(fields[5], L';'))
            member.parameters.push_back(ReadParameter(parameter));
    if (member.parameters.size() > kMostParameters)
        Damaged(line);
    return member;
}

/// A resource of ASCII text, as UTF-16.
std::wstring LoadText(int id) {
    const HRSRC place = FindResourceW(ThisModule(), MAKEINTRESOURCEW(id), RT_RCDATA);
    const HGLOBAL block = place ? LoadResource(ThisModule(), place) : nullptr;
    const auto* bytes = block ? static_cast<const unsigned char*>(LockResource(block)) : nullptr;
    if (!bytes)
        throw std::runtime_error("object model table: not in the library's resources");
    return std::wstring(bytes, bytes + SizeofResource(ThisModule(), place));
}

} // namespace

const Member* Interface::Find(std::wstring_view name) const {
    const auto found = m_byName.find(Lower(name));
    return found == m_byName.end() ? nullptr : &m_members[found->second];
}

const Member* Interface::Find(DISPID id) const {
    if (id == DISPID_VALUE)
        return m_default;
    const std::size_t index = (static_cast<std::uint32_t>(id) & 0xFFFF) - 1u;
    const bool isOurs = static_cast<std::uint32_t>(id) >> 16 == m_number && index < m_members.size();
    return isOurs ? &m_members[index] : nullptr;
}

void Interface::Add(Member member) {
    m_byName[Lower(member.name)] = m_members.size();
    m_members.push_back(std::move(member));
    m_members.back().id = m_number << 16 | static_cast<DISPID>(m_members.size());
}

void Interface::Complete() {
    for (const std::wstring_view name : kDefaultMembers) {
        m_default = Find(name);
        if (m_default)
            return;
    }
}

ObjectModel::ObjectModel() {
    ReadMembers(LoadText(IDR_OBJECT_MODEL));
    ReadEnumerations(LoadText(IDR_ENUMERATIONS));
}

const ObjectModel& ObjectModel::Get() {
    static const ObjectModel model;
    return model;
}

void ObjectModel::ReadMembers(std::wstring_view table) {
    constexpr std::size_t kFields = 7;
    for (const std::wstring_view line : Rows(table)) {
        std::vector<std::wstring_view> fields = Split(line, L'\t');
        fields.resize(std::max(fields.size(), kFields));
        if (m_interfaces.empty() || m_interfaces.back()->Name() != fields[0])
            m_interfaces.push_back(std::make_unique<Interface>(
                std::wstring(fields[0]), static_cast<std::uint16_t>(m_interfaces.size() + 1)));
        m_interfaces.back()->Add(ReadMember(line, fields));
    }
    for (const std::unique_ptr<Interface>& each : m_interfaces)
        each->Complete();
}

void ObjectModel::ReadEnumerations(std::wstring_view table) {
    for (const std::wstring_view line : Rows(table)) {
        const std::vector<std::wstring_view> fields = Split(line, L'\t');
        if (fields.size() != 3)
            Damaged(line);
        m_enumerations[std::wstring(fields[0])].push_back(std::stoi(std::wstring(fields[2])));
    }
}

const Interface* ObjectModel::Find(std::wstring_view name) const {
    const auto found = std::ranges::find(m_interfaces, WithoutUnderscore(name),
                                         [](const auto& each) -> std::wstring_view { return each->Name(); });
    return found == m_interfaces.end() ? nullptr : found->get();
}

bool ObjectModel::HasValue(const std::wstring& enumeration, std::int32_t value) const {
    const auto found = m_enumerations.find(enumeration);
    if (found == m_enumerations.end())
        return true;
    if (enumeration != kFlagEnumeration)
        return std::ranges::find(found->second, value) != found->second.end();
    std::int32_t all = 0;
    for (const std::int32_t each : found->second)
        all |= each;
    return (value & ~all) == 0;
}

} // namespace standin::outlook
