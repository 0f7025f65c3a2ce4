// Writing and reading little-endian binary layouts.
#pragma once

#include "standin/mailbox/Property.h"

#include <cstring>
#include <span>

namespace standin::mailbox {

/// Puts a layout together field by field.
class ByteWriter {
public:
    template <class T>
    ByteWriter& Add(const T& field) {
        static_assert(std::is_trivially_copyable_v<T>);
        return AddBytes(&field, sizeof field);
    }
    ByteWriter& AddBytes(const void* data, std::size_t size) {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        m_bytes.insert(m_bytes.end(), bytes, bytes + size);
        return *this;
    }
    /// Text with its NUL.
    template <class T>
    ByteWriter& AddText(std::basic_string_view<T> text) {
        return AddBytes(text.data(), text.size() * sizeof(T)).Add(T{});
    }
    ByteWriter& AddZeros(std::size_t count) {
        m_bytes.resize(m_bytes.size() + count);
        return *this;
    }
    std::size_t Size() const { return m_bytes.size(); }
    Bytes Take() { return std::move(m_bytes); }

private:
    Bytes m_bytes;
};

/// Takes a layout apart. A read past the end gives zeros and is remembered: test Ok() at the end.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    template <class T>
    T Take() {
        static_assert(std::is_trivially_copyable_v<T>);
        T field{};
        if (m_bytes.size() < sizeof(T)) {
            m_ok = false;
            return field;
        }
        std::memcpy(&field, m_bytes.data(), sizeof(T));
        m_bytes = m_bytes.subspan(sizeof(T));
        return field;
    }
    /// Text up to its NUL, which must be there.
    template <class T>
    std::basic_string<T> TakeText() {
        std::basic_string<T> text;
        for (T unit = Take<T>(); m_ok && unit != T{}; unit = Take<T>())
            text += unit;
        return text;
    }
    void Skip(std::size_t count) {
        m_ok = m_ok && count <= m_bytes.size();
        m_bytes = m_bytes.subspan(m_ok ? count : m_bytes.size());
    }
    std::size_t Left() const { return m_bytes.size(); }
    bool Ok() const { return m_ok; }

private:
    std::span<const std::uint8_t> m_bytes;
    bool m_ok = true;
};

} // namespace standin::mailbox
