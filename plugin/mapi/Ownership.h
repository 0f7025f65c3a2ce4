// Owners of what MAPI hands out: interfaces, memory blocks, row sets, address lists.
#pragma once

#include "MapiLibrary.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <utility>

namespace varden::mapi {

/// A reference on a MAPI interface. Using an empty one raises Unavailable.
template <typename T>
class Pointer {
public:
    Pointer() = default;
    Pointer(std::nullptr_t) {}
    Pointer(const Pointer& other) : m_object(other.m_object) {
        if (m_object) {
            m_object->AddRef();
        }
    }
    Pointer(Pointer&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~Pointer() { Release(); }
    Pointer& operator=(Pointer other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }

    explicit operator bool() const { return m_object != nullptr; }
    T* Get() const { return m_object; }
    T* operator->() const { return &Required(); }
    T& Required() const {
        if (!m_object) {
            throw Unavailable("no MAPI object");
        }
        return *m_object;
    }

    void Release() {
        if (T* object = std::exchange(m_object, nullptr)) {
            object->Release();
        }
    }
    /// For an operation that hands out a reference; what was held is released first.
    T** Out() {
        Release();
        return &m_object;
    }
    template <typename Other>
    Other** OutAs() {
        Release();
        return reinterpret_cast<Other**>(&m_object);
    }
    /// Asks `object` for the interface; what was held is released first.
    HRESULT Query(IUnknown* object, const IID& iid) {
        Release();
        return object ? object->QueryInterface(iid, reinterpret_cast<void**>(&m_object)) : E_POINTER;
    }

private:
    T* m_object = nullptr;
};

/// The object; raises Unavailable for none.
template <typename T>
T& Present(T* object) {
    if (!object) {
        throw Unavailable("no MAPI object");
    }
    return *object;
}

/// A block of MAPIAllocateBuffer, with all that hangs on it.
template <typename T>
class Block {
public:
    Block() = default;
    Block(std::nullptr_t) {}
    explicit Block(T* block) : m_block(block) {}
    Block(Block&& other) noexcept : m_block(other.release()) {}
    ~Block() { Free(); }
    Block& operator=(Block other) noexcept {
        std::swap(m_block, other.m_block);
        return *this;
    }

    explicit operator bool() const { return m_block != nullptr; }
    T* get() const { return m_block; }
    T* operator->() const { return m_block; }
    T& operator*() const { return *m_block; }
    T& operator[](std::size_t index) const { return m_block[index]; }

    T* release() { return std::exchange(m_block, nullptr); }
    /// For an operation that hands out a block; what was held is freed first.
    T** Out() {
        Free();
        return &m_block;
    }

private:
    void Free() {
        if (T* block = release()) {
            FreeBuffer(block);
        }
    }

    T* m_block = nullptr;
};

/// Zeroed memory of `bytes` bytes, at least a T; raises std::bad_alloc.
template <typename T>
Block<T> AllocateBlock(std::size_t bytes = sizeof(T)) {
    void* memory = nullptr;
    if (FAILED(AllocateBuffer(static_cast<ULONG>(bytes), &memory))) {
        throw std::bad_alloc();
    }
    std::memset(memory, 0, bytes);
    return Block<T>(static_cast<T*>(memory));
}

/// Memory that lives as long as `parent`; raises std::bad_alloc.
template <typename T>
T* AllocateIn(void* parent, std::size_t bytes = sizeof(T)) {
    void* memory = nullptr;
    if (FAILED(AllocateMore(static_cast<ULONG>(bytes), parent, &memory))) {
        throw std::bad_alloc();
    }
    std::memset(memory, 0, bytes);
    return static_cast<T*>(memory);
}

/// The rows of a table query.
class RowSet {
public:
    RowSet() = default;
    ~RowSet() { Free(); }
    RowSet(const RowSet&) = delete;
    RowSet& operator=(const RowSet&) = delete;

    LPSRowSet* Out() {
        Free();
        return &m_rows;
    }
    bool IsPresent() const { return m_rows != nullptr; }
    std::span<SRow> Rows() const {
        return m_rows ? std::span(m_rows->aRow, m_rows->cRows) : std::span<SRow>();
    }
    void Free() {
        if (LPSRowSet rows = std::exchange(m_rows, nullptr)) {
            FreeRows(rows);
        }
    }

private:
    LPSRowSet m_rows = nullptr;
};

/// A list of addresses, each entry with a property array of its own.
struct FreeAddresses {
    void operator()(ADRLIST* list) const { FreeAddressList(list); }
};
using AddressList = std::unique_ptr<ADRLIST, FreeAddresses>;

/// A list of one entry with one text property, its display name. The list and the entry's properties are
/// blocks, as ResolveName wants them, which replaces the properties. Raises std::bad_alloc.
AddressList MakeNameList(const std::wstring& displayName);
/// The same with a second property, the kind of recipient (MAPI_TO and so on).
AddressList MakeRecipientList(const std::wstring& displayName, long recipientType);

} // namespace varden::mapi
