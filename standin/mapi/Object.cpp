// The graveyard of objects.
#include "standin/mapi/Object.h"

#include <array>
#include <cstring>
#include <deque>
#include <utility>

namespace standin::mapi {
namespace {

constexpr std::size_t kMostGraves = 4096;
constexpr std::size_t kMostMethods = 64; // more than any interface here has
constexpr int kDead = 0xDD;

/// What lies where an object was.
struct Grave {
    const void* methods;
    const wchar_t* interfaceName;
};

std::deque<void*> g_graves; // oldest first

/// Stands in for every method. Its caller cleans the stack up, whatever the parameters are.
template <std::size_t index>
HRESULT STDMETHODCALLTYPE DeadMethod(const Grave* grave) {
    constexpr std::size_t kAddRef = 1;
    constexpr std::size_t kRelease = 2;
    const wchar_t* what = index == kRelease  ? L"released too often"
                          : index == kAddRef ? L"referenced after its last release"
                                             : L"used after its last release";
    ReportViolation(std::wstring(grave->interfaceName) + L": " + what);
    return index == kAddRef || index == kRelease ? S_OK : MAPI_E_INVALID_OBJECT;
}

template <std::size_t... index>
constexpr auto DeadMethods(std::index_sequence<index...>) {
    return std::array<HRESULT(STDMETHODCALLTYPE*)(const Grave*), sizeof...(index)>{&DeadMethod<index>...};
}

constexpr auto kDeadMethods = DeadMethods(std::make_index_sequence<kMostMethods>());

} // namespace

void Bury(void* memory, std::size_t size, const wchar_t* interfaceName) {
    std::memset(memory, kDead, size);
    new (memory) Grave{kDeadMethods.data(), interfaceName};
    g_graves.push_back(memory);
    if (g_graves.size() > kMostGraves) {
        ::operator delete(g_graves.front());
        g_graves.pop_front();
    }
}

} // namespace standin::mapi
