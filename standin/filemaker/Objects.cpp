// The heap of FileMaker's objects.
#include "Objects.h"

namespace standin::filemaker {

std::wstring Heap::Describe(std::uint64_t handle) const {
    if (handle == 0) {
        return L"null";
    }
    std::wstring description = L"no object of FileMaker's";
    const auto look = [&]<typename Object>(const Shelf<Object>& shelf) {
        if (shelf.HasGiven(handle)) {
            description = std::wstring(L"a ") + Object::kWord +
                          (shelf.IsLive(handle) ? L"" : L" that is no longer alive");
        }
    };
    std::apply([&](const auto&... shelf) { (look(shelf), ...); }, m_shelves);
    return description;
}

std::size_t Heap::PlugInObjects() const {
    return std::apply([](const auto&... shelf) { return (shelf.PlugInObjects() + ...); }, m_shelves);
}

void Heap::DropPlugInObjects() {
    std::apply([](auto&... shelf) { (shelf.RemoveAll(Owner::PlugIn), ...); }, m_shelves);
}

void Heap::RemoveVector(const DataVect* handle) {
    const DataVectObject* vector = Of<DataVectObject>().Find(handle);
    if (!vector) {
        return;
    }
    for (const auto& [index, text] : vector->texts) {
        Of<TextObject>().Remove(text);
    }
    for (const auto& [index, number] : vector->numbers) {
        Of<FixPtObject>().Remove(number);
    }
    Of<DataVectObject>().Remove(handle);
}

Heap& Objects() {
    static Heap heap;
    return heap;
}

} // namespace standin::filemaker
