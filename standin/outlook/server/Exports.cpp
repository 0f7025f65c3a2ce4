// What the library exports: COM's entry points, and the way to its switches. MAPI's functions are exported
// beside them by VardenOutlook.def.
#include "standin/outlook/automation/Module.h"
#include "standin/outlook/registration/Registration.h"
#include "standin/outlook/server/ClassFactory.h"
#include "standin/outlook/server/ControlImplementation.h"

namespace standin::outlook {
namespace {

HMODULE g_module = nullptr;

/// The class of Outlook's application object.
constexpr GUID kApplicationClass{0x0006F03A, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
/// COM finds the library in the system folder, as MAPI32.dll does.
constexpr const wchar_t* kLibraryFile = L"vardenoutlook.dll";

} // namespace

HMODULE ThisModule() {
    return g_module;
}

} // namespace standin::outlook

using namespace standin::outlook;

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        g_module = module;
        DisableThreadLibraryCalls(module);
    }
    return TRUE;
}

HRESULT WINAPI DllGetClassObject(REFCLSID classId, REFIID iid, LPVOID* object) {
    if (!object)
        return E_POINTER;
    *object = nullptr;
    return classId == kApplicationClass ? TheClassFactory().QueryInterface(iid, object)
                                        : CLASS_E_CLASSNOTAVAILABLE;
}

/// The world lives as long as the library, as Outlook's own process does.
HRESULT WINAPI DllCanUnloadNow() {
    return S_FALSE;
}

HRESULT WINAPI DllRegisterServer() {
    return EnterServer(kLibraryFile);
}

HRESULT WINAPI DllUnregisterServer() {
    return RemoveServer();
}

/// The switches, see Control.h.
Control* WINAPI GetOutlookControl() {
    return &TheControl();
}

} // extern "C"
