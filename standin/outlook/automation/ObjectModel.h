// The object model as a table: the interfaces that Outlook's objects have, their members and enumerations.
// What isn't in the table doesn't exist. The table is data/outlook-object-model.tsv, a resource of the
// library.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace standin::outlook {

enum class Access { Get, GetPut, Method };

/// An automation type: BSTR, I4 (of an enumeration), OBJECT (of an interface) ...
struct TypeName {
    VARTYPE type = VT_VARIANT; ///< VT_EMPTY: a method that gives nothing back
    std::wstring of;           ///< the enumeration or interface; empty where there is none
};

struct Parameter {
    std::wstring name;
    TypeName type;
    bool optional = false;
};

struct Member {
    std::wstring name;
    std::wstring putName; ///< how traces call the writing of a property
    Access access = Access::Get;
    TypeName type;
    int since = 0; ///< the major version that brought it
    std::vector<Parameter> parameters;
    DISPID id = DISPID_UNKNOWN;
};

/// More arguments than this has no method.
inline constexpr std::size_t kMostParameters = 4;

/// One interface. DISPIDs are its own: an id taken from another interface names no member here.
class Interface {
public:
    explicit Interface(std::wstring name, std::uint16_t number) : m_name(std::move(name)), m_number(number) {}

    const std::wstring& Name() const { return m_name; }
    const std::vector<Member>& Members() const { return m_members; }
    /// Case ignored; null for a name that the interface doesn't have.
    const Member* Find(std::wstring_view name) const;
    /// Null for an id that isn't this interface's.
    const Member* Find(DISPID id) const;
    /// The place of a member in Members().
    std::size_t IndexOf(const Member& member) const { return (member.id & 0xFFFF) - 1u; }
    /// What DISPID_VALUE stands for; null for none.
    const Member* Default() const { return m_default; }
    /// Whether For Each walks it.
    bool IsCollection() const { return Find(L"Item") && Find(L"Count"); }

    void Add(Member member);
    void Complete();

private:
    std::wstring m_name;
    std::uint16_t m_number;
    std::vector<Member> m_members;
    std::unordered_map<std::wstring, std::size_t> m_byName; // in lower case
    const Member* m_default = nullptr;
};

class ObjectModel {
public:
    /// The model of this library, read at the first call. Raises std::runtime_error if its data are damaged.
    static const ObjectModel& Get();

    /// By name, with or without the underscore that some interfaces begin with; null for one that isn't
    /// described.
    const Interface* Find(std::wstring_view name) const;
    const std::vector<std::unique_ptr<Interface>>& Interfaces() const { return m_interfaces; }
    /// Whether a number is one of the enumeration's. Of an unknown enumeration every number is.
    bool HasValue(const std::wstring& enumeration, std::int32_t value) const;

private:
    ObjectModel();
    void ReadMembers(std::wstring_view table);
    void ReadEnumerations(std::wstring_view table);

    std::vector<std::unique_ptr<Interface>> m_interfaces;
    std::map<std::wstring, std::vector<std::int32_t>> m_enumerations;
};

} // namespace standin::outlook
