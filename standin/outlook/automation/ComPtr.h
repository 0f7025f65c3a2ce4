// The owning reference to COM objects, those of this library's classes among them.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <cstddef>
#include <utility>

namespace standin::outlook {

/// Holds one reference, or nothing.
template <class T>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    /// A reference of its own.
    ComPtr(T* object) : m_object(object) {
        if (m_object)
            m_object->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.m_object) {}
    ComPtr(ComPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    template <class U>
    ComPtr(const ComPtr<U>& other) : ComPtr(static_cast<T*>(other.Get())) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~ComPtr() {
        if (m_object)
            m_object->Release();
    }

    /// Takes over the caller's reference.
    static ComPtr Adopt(T* object) {
        ComPtr adopted;
        adopted.m_object = object;
        return adopted;
    }
    /// Gives the reference to the caller.
    T* Detach() { return std::exchange(m_object, nullptr); }
    /// For functions that give a reference out. Only while it holds nothing.
    T** Out() { return &m_object; }

    T* Get() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    T* m_object = nullptr;
};

} // namespace standin::outlook
