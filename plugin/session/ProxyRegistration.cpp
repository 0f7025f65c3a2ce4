// The registration of the class that marshals MAPI's interfaces between Outlook and this process.
#include "ProxyRegistration.h"

#include <windows.h>

#include <array>
#include <string>

namespace varden {

namespace {

constexpr const wchar_t* kProxyClass = L"{4D2F086C-6EA3-101B-A18A-00AA00446E07}";
constexpr const wchar_t* kSessionInterface = L"{00020300-0000-0000-C000-000000000046}";
constexpr const wchar_t* kAccountInterface = L"{00067070-0000-0000-C000-000000000046}";

struct InterfaceRow {
    const wchar_t* id;
    const wchar_t* name;
};

/// Marshalled by the proxy class. The odd capitals of two names belong to the registration.
constexpr std::array kProxyInterfaces{
    InterfaceRow{L"{00020300-0000-0000-C000-000000000046}", L"IMAPISession"},
    InterfaceRow{L"{00020301-0000-0000-C000-000000000046}", L"IMAPITable"},
    InterfaceRow{L"{00020302-0000-0000-C000-000000000046}", L"IMAPIAdviseSink"},
    InterfaceRow{L"{00020303-0000-0000-C000-000000000046}", L"IMAPIProp"},
    InterfaceRow{L"{00020304-0000-0000-C000-000000000046}", L"IProfSect"},
    InterfaceRow{L"{00020305-0000-0000-C000-000000000046}", L"IMAPIStatus"},
    InterfaceRow{L"{00020306-0000-0000-C000-000000000046}", L"IMAPIMsgStore"},
    InterfaceRow{L"{00020307-0000-0000-C000-000000000046}", L"Imessage"},
    InterfaceRow{L"{00020308-0000-0000-C000-000000000046}", L"Iattachment"},
    InterfaceRow{L"{00020309-0000-0000-C000-000000000046}", L"IAddrBook"},
    InterfaceRow{L"{0002030A-0000-0000-C000-000000000046}", L"IMailUser"},
    InterfaceRow{L"{0002030B-0000-0000-C000-000000000046}", L"IMAPIContainer"},
    InterfaceRow{L"{0002030C-0000-0000-C000-000000000046}", L"IMAPIFolder"},
    InterfaceRow{L"{0002030D-0000-0000-C000-000000000046}", L"IABContainer"},
    InterfaceRow{L"{0002030E-0000-0000-C000-000000000046}", L"IDistList"},
    InterfaceRow{L"{0002031B-0000-0000-C000-000000000046}", L"IMAPIControl"},
    InterfaceRow{L"{0002031C-0000-0000-C000-000000000046}", L"IProfAdmin"},
    InterfaceRow{L"{0002031D-0000-0000-C000-000000000046}", L"IMsgServiceAdmin"},
    InterfaceRow{L"{0002031E-0000-0000-C000-000000000046}", L"IMAPISpoolerService"},
    InterfaceRow{L"{0002031F-0000-0000-C000-000000000046}", L"IMAPIProgress"},
    InterfaceRow{L"{00020321-0000-0000-C000-000000000046}", L"IMAPIViewContext"},
    InterfaceRow{L"{00020322-0000-0000-C000-000000000046}", L"IMAPIFormMgr"},
    InterfaceRow{L"{00020324-0000-0000-C000-000000000046}", L"IMAPIFormInfo"},
    InterfaceRow{L"{00020326-0000-0000-C000-000000000046}", L"IMAPIFormRegistry"},
    InterfaceRow{L"{00020327-0000-0000-C000-000000000046}", L"IMAPIForm"},
    InterfaceRow{L"{0002032A-0000-0000-C000-000000000046}", L"IPersistMessage"},
    InterfaceRow{L"{0002032B-0000-0000-C000-000000000046}", L"IMAPIViewAdviseSink"},
    InterfaceRow{L"{0002032E-0000-0000-C000-000000000046}", L"IMAPIFormContainer"},
    InterfaceRow{L"{0002032F-0000-0000-C000-000000000046}", L"IMAPIFormAdviseSink"},
    InterfaceRow{L"{00020346-0000-0000-C000-000000000046}", L"IMAPILogonRemote"},
    InterfaceRow{L"{00020349-0000-0000-C000-000000000046}", L"IMAPIProfAdminRemote"},
    InterfaceRow{L"{00020350-0000-0000-C000-000000000046}", L"IMAPIFormFactory"},
    InterfaceRow{L"{00020370-0000-0000-C000-000000000046}", L"IMAPIMessageSite"},
};

/// How one view of the registry is looked at and written.
struct RegistryView {
    const wchar_t* prefix; ///< in front of "CLSID\\" and "Interface\\"
    REGSAM testClass;      ///< access with which the class is looked for
    REGSAM write;
};

constexpr RegistryView kNativeView{L"", KEY_QUERY_VALUE, KEY_ALL_ACCESS};
constexpr RegistryView k32BitView{L"Wow6432Node\\", KEY_READ, KEY_ALL_ACCESS | KEY_WOW64_32KEY};

enum class ProcessView { Native, ThirtyTwoBit, Unknown };

/// Whether this process sees the registry of 32-bit programs on a 64-bit system.
ProcessView CurrentView() {
    using IsWow64ProcessFunction = BOOL(WINAPI*)(HANDLE, PBOOL);
    const auto isWow64Process = reinterpret_cast<IsWow64ProcessFunction>(
        GetProcAddress(GetModuleHandleW(L"kernel32"), "IsWow64Process"));
    BOOL isWow64 = FALSE;
    if (isWow64Process && !isWow64Process(GetCurrentProcess(), &isWow64)) {
        return ProcessView::Unknown;
    }
    return isWow64 ? ProcessView::ThirtyTwoBit : ProcessView::Native;
}

std::wstring ClassPath(const RegistryView& view) {
    return std::wstring(view.prefix) + L"CLSID\\" + kProxyClass;
}

std::wstring InterfacePath(const RegistryView& view, const wchar_t* id) {
    return std::wstring(view.prefix) + L"Interface\\" + id;
}

bool KeyExists(const std::wstring& path, REGSAM access) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, access, &key) != ERROR_SUCCESS) {
        return false;
    }
    RegCloseKey(key);
    return true;
}

/// The class and a sample of the interfaces stand for all.
bool IsRegistered(const RegistryView& view) {
    return KeyExists(ClassPath(view), view.testClass) &&
           KeyExists(InterfacePath(view, kSessionInterface), KEY_QUERY_VALUE) &&
           KeyExists(InterfacePath(view, kAccountInterface), KEY_QUERY_VALUE);
}

/// Writes default values one by one. A value that can't be written doesn't keep the others from being
/// written.
class RegistrationWriter {
public:
    explicit RegistrationWriter(const RegistryView& view) : m_access(view.write) {}

    void Write(const std::wstring& path, std::wstring_view value) {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, nullptr, 0, m_access, nullptr, &key, nullptr);
        const std::wstring text(value);
        const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
        if (RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes) !=
            ERROR_SUCCESS) {
            m_isComplete = false;
        }
        if (key) {
            RegCloseKey(key);
        }
    }

    bool IsComplete() const { return m_isComplete; }

private:
    REGSAM m_access;
    bool m_isComplete = true;
};

/// Writes the whole registration, also over what is there. Whether all of it could be written.
bool Register(const RegistryView& view) {
    RegistrationWriter writer(view);
    writer.Write(ClassPath(view), L"MAPIPSFactory");
    writer.Write(ClassPath(view) + L"\\InprocServer32", L"mapi32.dll");
    for (const InterfaceRow& row : kProxyInterfaces) {
        const std::wstring path = InterfacePath(view, row.id);
        writer.Write(path, row.name);
        writer.Write(path + L"\\ProxyStubClsid", kProxyClass);
        writer.Write(path + L"\\ProxyStubClsid32", kProxyClass);
    }
    const std::wstring account = InterfacePath(view, kAccountInterface);
    writer.Write(account, L"IOlkAccountInfo");
    writer.Write(account + L"\\NumMethods", L"4");
    writer.Write(account + L"\\ProxyStubClsid32", L"{0006729A-0000-0000-C000-000000000046}");
    RegFlushKey(HKEY_CLASSES_ROOT);
    return writer.IsComplete();
}

} // namespace

void CheckMapiProxyRegistration() {
    const ProcessView process = CurrentView();
    if (process == ProcessView::Unknown) {
        return;
    }
    const RegistryView& view = process == ProcessView::ThirtyTwoBit ? k32BitView : kNativeView;
    if (!IsRegistered(view)) {
        // A user without the rights gets no message here: what is missing shows when the MAPI session is
        // asked for.
        static_cast<void>(Register(view));
    }
}

} // namespace varden
