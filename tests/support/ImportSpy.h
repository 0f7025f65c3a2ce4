// Watching what a loaded library imports from Windows.
#pragma once

#include <windows.h>

namespace varden::tests {

/// Puts another function in the place of one that the module imports by name, and gives the one that was
/// there; null when the module doesn't import it.
void* ReplaceImport(HMODULE module, const char* library, const char* function, void* replacement);

/// The input hooks that a plug-in sets and releases, as Windows sees it. One at a time; the hooks are really
/// set.
class HookSpy {
public:
    explicit HookSpy(HMODULE plugin);
    HookSpy(const HookSpy&) = delete;
    HookSpy& operator=(const HookSpy&) = delete;

    /// Hooks set and not released.
    static int Held();
    /// Hooks ever set, since the spy was made.
    static int Set();
    /// The procedure of the hook of this type (WH_KEYBOARD, WH_MOUSE) that was set last, and the module it
    /// was set for.
    static HOOKPROC Procedure(int type);
    static HINSTANCE Module(int type);
};

} // namespace varden::tests
