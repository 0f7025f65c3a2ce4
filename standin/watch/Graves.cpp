// The graveyard of COM objects.
#include "Graves.h"

#include "Watch.h"

#include <array>
#include <cstring>
#include <new>
#include <utility>

namespace standin {
namespace {

constexpr std::size_t kMostGraves = 4096;
constexpr std::size_t kMostMethods = 64; // more than any interface here has
constexpr std::size_t kInterfaces = 2;
constexpr int kDead = 0xDD;

/// What lies where an object was.
struct Grave {
    const void* methods[kInterfaces]; // where the pointers to an object's interfaces point
    Epitaph epitaph;
};

/// From the next place on the oldest first. Nothing that is destroyed: objects die until the very end of the
/// process.
constinit std::array<void*, kMostGraves> g_graves{};
constinit std::size_t g_nextGrave = 0;

void Report(const Epitaph& epitaph, const wchar_t* what) {
    if (Watch* watch = CurrentWatch())
        watch->Violation(std::wstring(epitaph.interfaceName) + L": " + what);
}

/// Stands in for every method. Its caller cleans the stack up, whatever the parameters are.
template <std::size_t place, std::size_t index>
HRESULT STDMETHODCALLTYPE DeadMethod(const void* const* self) {
    constexpr std::size_t kAddRef = 1;
    constexpr std::size_t kRelease = 2;
    const Epitaph& epitaph = reinterpret_cast<const Grave*>(self - place)->epitaph;
    Report(epitaph, index == kRelease  ? L"released too often"
                    : index == kAddRef ? L"referenced after its last release"
                                       : L"used after its last release");
    return index == kAddRef || index == kRelease ? S_OK : epitaph.answer;
}

template <std::size_t place, std::size_t... index>
constexpr auto DeadMethods(std::index_sequence<index...>) {
    return std::array<HRESULT(STDMETHODCALLTYPE*)(const void* const*), sizeof...(index)>{
        &DeadMethod<place, index>...};
}

constexpr auto kFirst = DeadMethods<0>(std::make_index_sequence<kMostMethods>());
constexpr auto kSecond = DeadMethods<1>(std::make_index_sequence<kMostMethods>());

} // namespace

void Bury(void* memory, std::size_t size, const Epitaph& epitaph) {
    if (size < sizeof(Grave))
        return ::operator delete(memory);
    std::memset(memory, kDead, size);
    new (memory) Grave{{kFirst.data(), kSecond.data()}, epitaph};
    ::operator delete(std::exchange(g_graves[g_nextGrave], memory));
    g_nextGrave = (g_nextGrave + 1) % kMostGraves;
}

} // namespace standin
