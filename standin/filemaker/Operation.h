// One call of an FM operation: the crossing, the error record, and the test of every handle.
#pragma once

#include "Objects.h"
#include "standin/watch/Watch.h"

#include <string>

namespace standin::filemaker {

/// A call of an operation for the time it lasts. While Runs() is false the operation does nothing and answers
/// 0.
///
///     std::uint32_t FM_Text_GetSize(const Text* text, ErrorRecord* error) {
///         Operation call(L"FM_Text", L"GetSize", error);
///         const auto* object = call.Find<TextObject>(text);
///         return object ? ... : 0;
///     }
class Operation {
public:
    Operation(const wchar_t* sort, const wchar_t* member, ErrorRecord* error);

    bool Runs() const { return m_runs; }

    /// The live object behind a handle; null, with the violation told, when there is none, and null when the
    /// operation does not run.
    template <typename Object>
    Object* Find(const typename Object::Handle* handle) {
        if (!m_runs) {
            return nullptr;
        }
        Object* object = Objects().Of<Object>().Find(handle);
        if (!object) {
            Violate(Objects().Describe(Shelf<Object>::Key(handle)) + L" where a " + Object::kWord +
                    L" is wanted");
        }
        return object;
    }

    /// The same for an object that is to be changed: it must be the plug-in's own.
    template <typename Object>
    Object* FindOwn(typename Object::Handle* handle) {
        Object* object = Find<Object>(handle);
        if (object && !Objects().Of<Object>().BelongsTo(handle, Owner::PlugIn)) {
            Violate(std::wstring(L"a ") + Object::kWord + L" that belongs to FileMaker");
            return nullptr;
        }
        return object;
    }

    /// Ends an object of the plug-in's, also where the operation is to fail: nobody can try that again.
    template <typename Object>
    void Delete(typename Object::Handle* handle) {
        m_runs = m_runs || m_crossing.Fails();
        if (FindOwn<Object>(handle)) {
            Objects().Of<Object>().Remove(handle);
        }
    }

    /// Tells the watch of a broken rule.
    void Violate(const std::wstring& what);

private:
    const wchar_t* m_sort;
    const wchar_t* m_member;
    Crossing m_crossing;
    bool m_runs;
};

} // namespace standin::filemaker
