// The window in which an item is shown.
#include "standin/outlook/items/Window.h"

#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/automation/Module.h"

namespace standin::outlook {
namespace {

constexpr const wchar_t* kClassName = L"VardenOutlookItem";

/// The text fills the window.
LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_SIZE)
        MoveWindow(GetWindow(window, GW_CHILD), 0, 0, LOWORD(second), HIWORD(second), TRUE);
    return DefWindowProcW(window, message, first, second);
}

void RegisterWindowClass() {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = Procedure;
    description.hInstance = ThisModule();
    description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // IDC_ARROW
    description.lpszClassName = kClassName;
    RegisterClassExW(&description);
}

void RunUntilClosed(HWND window) {
    MSG message;
    while (IsWindow(window) && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace

void ItemWindow::Show(const std::wstring& title, const std::wstring& text, bool modal) {
    Close();
    RegisterWindowClass();
    m_window =
        CreateWindowExW(0, kClassName, title.c_str(), WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, ThisModule(), nullptr);
    if (!m_window)
        throw Failure(E_FAIL);
    CreateWindowExW(0, L"EDIT", text.c_str(), WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_READONLY,
                    0, 0, 0, 0, m_window, nullptr, ThisModule(), nullptr);
    ShowWindow(m_window, SW_SHOWNORMAL);
    if (modal)
        RunUntilClosed(m_window);
}

void ItemWindow::Close() {
    if (m_window && IsWindow(m_window))
        DestroyWindow(m_window);
    m_window = nullptr;
}

} // namespace standin::outlook
