// Import tables of loaded libraries.
#include "ImportSpy.h"

#include <cstring>
#include <map>

namespace varden::tests {

namespace {

template <typename T>
T* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<T*>(reinterpret_cast<char*>(module) + offset);
}

struct SetHook {
    HOOKPROC procedure = nullptr;
    HINSTANCE module = nullptr;
};

struct Hooks {
    int held = 0;
    int set = 0;
    std::map<int, SetHook> last;
};

Hooks g_hooks;

using SetFunction = decltype(&SetWindowsHookExW);
using UnhookFunction = decltype(&UnhookWindowsHookEx);
SetFunction g_set = SetWindowsHookExW;
UnhookFunction g_unhook = UnhookWindowsHookEx;

HHOOK WINAPI SpySet(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
    ++g_hooks.set;
    const HHOOK hook = g_set(type, procedure, module, thread);
    if (hook) {
        ++g_hooks.held;
        g_hooks.last[type] = {procedure, module};
    }
    return hook;
}

BOOL WINAPI SpyUnhook(HHOOK hook) {
    const BOOL released = g_unhook(hook);
    if (released) {
        --g_hooks.held;
    }
    return released;
}

} // namespace

void* ReplaceImport(HMODULE module, const char* library, const char* function, void* replacement) {
    const auto* dos = At<IMAGE_DOS_HEADER>(module, 0);
    const auto* headers = At<IMAGE_NT_HEADERS64>(module, static_cast<DWORD>(dos->e_lfanew));
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* import = At<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress); import->Name != 0;
         ++import) {
        if (_stricmp(At<char>(module, import->Name), library) != 0) {
            continue;
        }
        auto* name = At<IMAGE_THUNK_DATA64>(module, import->OriginalFirstThunk);
        auto* address = At<IMAGE_THUNK_DATA64>(module, import->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            const auto* byName = At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
            if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal) || std::strcmp(byName->Name, function) != 0) {
                continue;
            }
            DWORD protection = 0;
            VirtualProtect(&address->u1.Function, sizeof address->u1.Function, PAGE_READWRITE, &protection);
            void* original = reinterpret_cast<void*>(address->u1.Function);
            address->u1.Function = reinterpret_cast<ULONGLONG>(replacement);
            VirtualProtect(&address->u1.Function, sizeof address->u1.Function, protection, &protection);
            return original;
        }
    }
    return nullptr;
}

HookSpy::HookSpy(HMODULE plugin) {
    g_hooks = {};
    ReplaceImport(plugin, "user32.dll", "SetWindowsHookExW", reinterpret_cast<void*>(SpySet));
    ReplaceImport(plugin, "user32.dll", "UnhookWindowsHookEx", reinterpret_cast<void*>(SpyUnhook));
}

int HookSpy::Held() {
    return g_hooks.held;
}

int HookSpy::Set() {
    return g_hooks.set;
}

HOOKPROC HookSpy::Procedure(int type) {
    return g_hooks.last[type].procedure;
}

HINSTANCE HookSpy::Module(int type) {
    return g_hooks.last[type].module;
}

} // namespace varden::tests
