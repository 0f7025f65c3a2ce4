// The hooks and their procedures. They swallow what the system offers with a code other than 0, that is,
// looks at the queue that don't remove the message; they look at no key and no button.
#include "InputHooks.h"

#include "ProcessObjects.h"

#include <windows.h>

#include <cstdint>

namespace varden {

namespace {

HHOOK g_keyboardHook = nullptr;
HHOOK g_mouseHook = nullptr;

/// The transition bit of a keyboard message is clear below this: the key is going down.
constexpr std::uint64_t kKeyUp = 0x80000000u;

LRESULT CALLBACK KeyboardProcedure(int code, WPARAM wParam, LPARAM lParam) {
    if (code != 0 && static_cast<std::uint64_t>(lParam) < kKeyUp) {
        return 1;
    }
    CallNextHookEx(g_keyboardHook, code, wParam, lParam);
    return 0; // whatever the next hook answered
}

LRESULT CALLBACK MouseProcedure(int code, WPARAM wParam, LPARAM lParam) {
    if (code != 0) {
        return 1;
    }
    CallNextHookEx(g_mouseHook, code, wParam, lParam);
    return 0;
}

} // namespace

InputHooks::InputHooks() {
    const DWORD thread = GetCurrentThreadId();
    // Names no module, so that none is passed: the hook is the thread's own. The system looks far for such a
    // name, so it is asked once.
    static const HMODULE keyboardModule = GetModuleHandleW(L"KeyBoard");
    g_keyboardHook = SetWindowsHookExW(WH_KEYBOARD, KeyboardProcedure, keyboardModule, thread);
    g_mouseHook = SetWindowsHookExW(WH_MOUSE, MouseProcedure, ModuleHandle(), thread);
}

InputHooks::~InputHooks() {
    UnhookWindowsHookEx(g_keyboardHook);
    UnhookWindowsHookEx(g_mouseHook);
}

} // namespace varden
