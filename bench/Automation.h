// The tools of a program that calls Outlook and MAPI itself, with every DISPID kept.
#pragma once

#include <ole2.h>

#include <comdef.h>
#include <mapix.h>

#include <initializer_list>
#include <span>
#include <stdexcept>
#include <utility>

namespace varden::bench {

/// Raises std::runtime_error for a failed status.
void Check(HRESULT status);

/// A reference that is let go of at its end.
template <class T>
class Held {
public:
    Held() = default;
    Held(Held&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~Held() {
        if (m_object) {
            m_object->Release();
        }
    }
    Held& operator=(Held other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    T* Get() const { return m_object; }
    T** Out() { return &m_object; }
    template <class Base>
    Base** OutAs() {
        return reinterpret_cast<Base**>(&m_object);
    }

private:
    T* m_object = nullptr;
};

/// A member of one kind of object; its DISPID is asked for at the first use.
struct Member {
    const wchar_t* name;
    DISPID id = DISPID_UNKNOWN;
};

/// Puts a property, or calls a method or gets a property. The arguments stand in Automation's order, the last
/// one first. Raise std::runtime_error for a call that failed.
void Put(IDispatch& object, Member& member, _variant_t value);
_variant_t Invoke(IDispatch& object, Member& member, std::initializer_list<_variant_t> arguments = {});
/// The same, for a member that answers an object.
Held<IDispatch> Object(IDispatch& object, Member& member, std::initializer_list<_variant_t> arguments = {});
/// An argument that is left out.
_variant_t Missing();

/// An interface id of Outlook's or MAPI's, by its first 32 bits.
constexpr GUID InterfaceId(unsigned long first) {
    return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}
/// An item's message: its MAPIOBJECT, asked for IMessage.
Held<IMessage> MessageOf(IDispatch& item, Member& mapiObject);
/// The item as one of the kinds, asked for in their order.
Held<IDispatch> ItemOf(const _variant_t& item, std::span<const GUID> kinds);

/// A function of MAPI32. Some have a decorated name too, or only that one.
FARPROC MapiAddress(const char* name, const char* decorated);
template <class Function>
Function Mapi(const char* name, const char* decorated = "") {
    return reinterpret_cast<Function>(MapiAddress(name, decorated));
}
/// A block that MAPI handed out, given back at its end.
template <class T>
class Block {
public:
    Block() = default;
    ~Block() {
        static const auto free = Mapi<ULONG(WINAPI*)(void*)>("MAPIFreeBuffer");
        free(m_data);
    }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    T* operator->() const { return m_data; }
    T* Get() const { return m_data; }
    T** Out() { return &m_data; }

private:
    T* m_data = nullptr;
};
/// Reads one property.
void GetOneProp(IMAPIProp& object, ULONG tag, Block<SPropValue>& value);

} // namespace varden::bench
