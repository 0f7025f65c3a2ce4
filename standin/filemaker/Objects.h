// What stands behind the handles of FMWrapper.dll.
#pragma once

#include "Operations.h"
#include "Value.h"

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace standin::filemaker {

/// Who made an object, and so who ends it.
enum class Owner { PlugIn, Host };

struct TextObject {
    using Handle = Text;
    static constexpr const wchar_t* kWord = L"text";
    std::wstring content;
};

struct FixPtObject {
    using Handle = FixPt;
    static constexpr const wchar_t* kWord = L"fixed-point number";
    FixedPoint number;
};

struct LocaleObject {
    using Handle = Locale;
    static constexpr const wchar_t* kWord = L"locale";
    std::uint32_t language = 0;
};

struct DataObject {
    using Handle = Data;
    static constexpr const wchar_t* kWord = L"data";
    const Locale* locale = nullptr;
    std::wstring text;
    std::int32_t nativeType = 0;    ///< 0: nothing stored yet
    std::uint32_t usedLanguage = 0; ///< of the locale that the text was stored with
};

struct DataVectObject {
    using Handle = DataVect;
    static constexpr const wchar_t* kWord = L"data vector";
    std::vector<Value> values;
    // What was handed out by index; behind the last argument one shared object, at the index values.size().
    std::map<std::size_t, const Text*> texts;
    std::map<std::size_t, const FixPt*> numbers;
};

struct QuadCharObject {
    using Handle = QuadChar;
    static constexpr const wchar_t* kWord = L"quad-char";
    std::string characters;
};

struct ExprEnvObject {
    using Handle = ExprEnv;
    static constexpr const wchar_t* kWord = L"expression environment";
};

/// The objects of one sort. A handle is a serial number over the sort's own number, never the address of
/// anything: no value comes twice, and a plug-in that looks behind a handle faults.
template <typename Object>
class Shelf {
public:
    using Handle = typename Object::Handle;

    explicit Shelf(std::uint64_t sort) : m_sort(sort) {}

    Handle* Add(Object object, Owner owner) {
        const std::uint64_t key = ++m_lastSerial * kSorts + m_sort;
        m_entries.emplace(key, Entry{std::move(object), owner});
        m_plugInObjects += owner == Owner::PlugIn;
        return reinterpret_cast<Handle*>(key);
    }

    /// Null when there is no such object.
    Object* Find(const Handle* handle) {
        const auto entry = m_entries.find(Key(handle));
        return entry == m_entries.end() ? nullptr : &entry->second.object;
    }

    bool BelongsTo(const Handle* handle, Owner owner) const {
        const auto entry = m_entries.find(Key(handle));
        return entry != m_entries.end() && entry->second.owner == owner;
    }

    void Remove(const Handle* handle) {
        m_plugInObjects -= BelongsTo(handle, Owner::PlugIn);
        m_entries.erase(Key(handle));
    }

    void RemoveAll(Owner owner) {
        std::erase_if(m_entries, [owner](const auto& entry) { return entry.second.owner == owner; });
        m_plugInObjects = owner == Owner::PlugIn ? 0 : m_plugInObjects;
    }

    std::size_t PlugInObjects() const { return m_plugInObjects; }

    /// Whether a handle of any sort is one of this shelf's, dead or alive.
    bool HasGiven(std::uint64_t key) const {
        return key % kSorts == m_sort && key / kSorts >= 1 && key / kSorts <= m_lastSerial;
    }
    bool IsLive(std::uint64_t key) const { return m_entries.contains(key); }

    static std::uint64_t Key(const Handle* handle) { return reinterpret_cast<std::uint64_t>(handle); }

private:
    static constexpr std::uint64_t kSorts = 8;

    struct Entry {
        Object object;
        Owner owner;
    };

    std::uint64_t m_sort;
    std::uint64_t m_lastSerial = 0;
    std::size_t m_plugInObjects = 0;
    std::unordered_map<std::uint64_t, Entry> m_entries;
};

/// All objects of the process.
class Heap {
public:
    template <typename Object>
    Shelf<Object>& Of() {
        return std::get<Shelf<Object>>(m_shelves);
    }

    /// What a handle is that is not a live object of the sort wanted: "a text that was deleted", "a
    /// quad-char".
    std::wstring Describe(std::uint64_t handle) const;

    std::size_t PlugInObjects() const;
    void DropPlugInObjects();

    /// Ends a vector with everything that it has handed out.
    void RemoveVector(const DataVect* handle);

private:
    std::tuple<Shelf<TextObject>, Shelf<FixPtObject>, Shelf<LocaleObject>, Shelf<DataObject>,
               Shelf<DataVectObject>, Shelf<QuadCharObject>, Shelf<ExprEnvObject>>
        m_shelves{Shelf<TextObject>(0),   Shelf<FixPtObject>(1),    Shelf<LocaleObject>(2),
                  Shelf<DataObject>(3),   Shelf<DataVectObject>(4), Shelf<QuadCharObject>(5),
                  Shelf<ExprEnvObject>(6)};
};

/// The heap of this library.
Heap& Objects();

} // namespace standin::filemaker
