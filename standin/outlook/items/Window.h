// The window in which an item is shown.
#pragma once

#include <windows.h>

#include <string>

namespace standin::outlook {

/// An item's window, in place of Outlook's inspector: what the item is called, and its text, to be read.
/// Closed by its user, or with this object.
class ItemWindow {
public:
    ItemWindow() = default;
    ~ItemWindow() { Close(); }
    ItemWindow(const ItemWindow&) = delete;
    ItemWindow& operator=(const ItemWindow&) = delete;

    /// Shows the item; `modal`: until the user closes the window. Raises E_FAIL where the system has no
    /// desktop to show it on.
    void Show(const std::wstring& title, const std::wstring& text, bool modal);
    void Close();

private:
    HWND m_window = nullptr;
};

} // namespace standin::outlook
