// Late-bound references to Outlook's automation objects.
#pragma once

#include "ComPointers.h"

#include <initializer_list>
#include <map>
#include <string>

namespace varden::outlook {

/// One automation interface: its id, and the DISPIDs that Outlook has given for its members. Outlook is
/// another process, and asking costs as much as a call, so each member is asked for once in the life of this
/// process.
class Interface {
public:
    explicit Interface(const IID& iid) : m_iid(iid) {}
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;

    const IID& Id() const { return m_iid; }
    /// The member's DISPID, asked of `object` the first time. Fails with the object's status; a failure isn't
    /// kept.
    HRESULT IdOf(IDispatch& object, const wchar_t* member, DISPID& id);

private:
    IID m_iid;
    std::map<std::wstring, DISPID, std::less<>> m_ids;
};

using Values = std::initializer_list<_variant_t>;

/// An object held by one of its interfaces, or nothing. Member access raises _com_error: E_POINTER when
/// nothing is held, otherwise the status, source and description that the object gave. The Try forms give the
/// status back.
class Reference {
public:
    explicit Reference(Interface& type) : m_type(&type) {}
    /// Holds the object of an automation result; nothing when the result is none.
    Reference(Interface& type, const _variant_t& object) : m_type(&type) { Set(object); }

    explicit operator bool() const { return m_object != nullptr; }
    bool IsHeld() const { return m_object != nullptr; }
    IDispatch* Get() const { return m_object; }

    /// The object as an argument of a call.
    _variant_t AsValue() const { return _variant_t(m_object.GetInterfacePtr()); }

    void Release() { m_object = nullptr; }
    void Set(const _variant_t& object);
    /// Lets go of what is held and asks `object` for this reference's interface. E_NOINTERFACE leaves nothing
    /// held.
    HRESULT Query(IUnknown* object);

    _variant_t GetProperty(const wchar_t* member) const;
    std::wstring GetText(const wchar_t* member) const;
    long GetLong(const wchar_t* member) const;
    bool GetBool(const wchar_t* member) const;
    DATE GetDate(const wchar_t* member) const;
    void PutProperty(const wchar_t* member, const _variant_t& value) const;
    _variant_t Call(const wchar_t* member, Values arguments = {}) const;

    HRESULT TryGet(const wchar_t* member, _variant_t& value) const;
    HRESULT TryPut(const wchar_t* member, const _variant_t& value) const;
    HRESULT TryCall(const wchar_t* member, Values arguments, _variant_t& result) const;

private:
    struct Failure;
    Failure Invoke(WORD kind, const wchar_t* member, Values arguments, VARIANT* result) const;

    Interface* m_type;
    IDispatchPtr m_object;
};

/// The object of an automation result; null when the result is none.
IUnknownPtr UnknownOf(const _variant_t& object);
IDispatchPtr DispatchOf(const _variant_t& object);

/// The argument that stands for one left out.
_variant_t MissingArgument();
/// A text argument; up to its first terminator, as automation callers pass it.
_variant_t TextValue(const std::wstring& text);
/// An integer argument of 32 bits.
_variant_t LongValue(long number);
/// A truth argument.
_variant_t BoolValue(bool truth);
/// A date argument: days since 30 December 1899.
_variant_t DateValue(DATE date);

} // namespace varden::outlook
