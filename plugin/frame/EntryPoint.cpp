// The entry point that the host calls for every lifecycle message, with start-up and teardown.
#include "FunctionCatalogue.h"
#include "MessageFilter.h"
#include "ParameterBlock.h"
#include "PlugInLog.h"
#include "ProcessObjects.h"
#include "session/COutlookFuncs.h"
#include "session/ProxyRegistration.h"

#include <ole2.h>

#include <ctime>
#include <exception>
#include <optional>
#include <utility>

namespace varden {

namespace {

/// The block of the most recent message.
const ParameterBlock* g_block = nullptr;

HMODULE g_module = nullptr;

constexpr std::int16_t kOldestHost = 50;
constexpr std::int16_t kNewestHost = 255;
constexpr std::int32_t kDoNotLoad = -1;
/// The interface version that Init answers.
constexpr std::int32_t kInterfaceVersion = 53;

/// Whether this library has an apartment to give back.
bool g_hasApartment = false;

/// All functions show in all of the host's calculation dialogs and may be evaluated on a server.
constexpr std::uint32_t kFunctionFlags = 0xFF01;

// Everything in this range is unregistered, whether it was registered or not. One registered id lies outside.
constexpr std::int16_t kFirstUnregistered = 148;
constexpr std::int16_t kLastUnregistered = 218;

HMODULE ResourceModule() {
    return reinterpret_cast<HMODULE>(static_cast<std::uintptr_t>(g_block->instanceID));
}

std::wstring LoadText(UINT row) {
    wchar_t buffer[2048] = {};
    LoadStringW(ResourceModule(), row, buffer, static_cast<int>(std::size(buffer)));
    return buffer;
}

/// Enters functions in the host's list.
class Registrar {
public:
    Registrar() { m_parenthesis.Assign(L"("); }

    /// The name is the prototype up to the first parenthesis. A function that the host doesn't take is left
    /// out.
    void Register(const FunctionRow& row) {
        try {
            const std::wstring text = LoadText(static_cast<UINT>(row.id));
            m_name.Assign(text.c_str());
            const std::int32_t end = m_name.Find(m_parenthesis, 0);
            const auto length = static_cast<std::int32_t>(text.size());
            if (end >= 0 && end < length) {
                m_name.Delete(end, length - end);
            }
            m_prototype.Assign(LoadText(static_cast<UINT>(row.id)).c_str());
            m_pluginId.Register(row.id, m_name, m_prototype, row.host.minimum, row.host.maximum,
                                kFunctionFlags, HandlerOf(row));
        } catch (const std::exception&) {
            return;
        }
    }

private:
    host::PluginId m_pluginId;
    host::OwnedText m_name;
    host::OwnedText m_prototype;
    host::OwnedText m_parenthesis;
};

void StartUp() {
    CheckMapiProxyRegistration();
    g_hasApartment = SUCCEEDED(OleInitialize(nullptr));
    InstallMessageFilter();
    // A second Init without a Shutdown makes new objects and leaves the old ones as they are.
    ProcessObjects& process = Process();
    static_cast<void>(process.m_objFuncs.release());
    process.m_objFuncs = std::make_unique<COutlookFuncs>();
    process.m_objFuncs->m_tStart = std::time(nullptr);
    static_cast<void>(process.lastError.release());
    process.lastError = std::make_unique<LastErrorRecord>();
    static_cast<void>(SessionLog().release());
}

std::int32_t Init(std::int16_t hostVersion) {
    if (hostVersion < kOldestHost || hostVersion > kNewestHost) {
        return kDoNotLoad;
    }
    std::optional<Registrar> registrar;
    try {
        registrar.emplace();
    } catch (const std::exception&) {
        return kDoNotLoad; // the host could not make the texts that the functions are entered with
    }
    for (const FunctionRow& row : RegisteredFunctions()) {
        registrar->Register(row);
    }
    StartUp();
    return kInterfaceVersion;
}

/// None when the host can't make one.
std::optional<host::PluginId> MakePluginId() {
    try {
        return std::optional<host::PluginId>(std::in_place);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

void UnregisterFunctions(const host::PluginId& pluginId) {
    for (std::int16_t id = kFirstUnregistered; id <= kLastUnregistered; ++id) {
        pluginId.Unregister(id);
    }
}

void Shutdown() {
    const std::optional<host::PluginId> pluginId = MakePluginId();
    ProcessObjects& process = Process();
    if (process.m_objFuncs) {
        process.m_objFuncs->LogoffSession();
        process.m_objFuncs.reset();
    }
    process.lastError.reset();
    SessionLog().reset();
    RemoveMessageFilter();
    if (std::exchange(g_hasApartment, false)) {
        OleUninitialize();
    }
    if (pluginId) {
        UnregisterFunctions(*pluginId);
    }
}

/// Writes the text of a string id into the host's buffer.
void GetString(const ParameterBlock& block) {
    constexpr std::uint8_t optionsId = 131;
    constexpr UINT optionsRow = 1;
    const UINT row = block.parm1 == optionsId ? optionsRow : block.parm1;
    LoadStringW(ResourceModule(), row, reinterpret_cast<wchar_t*>(static_cast<std::uintptr_t>(block.result)),
                static_cast<int>(block.parm3));
}

void Dispatch(ParameterBlock& block) {
    switch (static_cast<HostMessage>(block.whichCall)) {
    case HostMessage::Init:
        block.result = Init(block.extnVersion);
        break;
    case HostMessage::Shutdown:
        Shutdown();
        break;
    case HostMessage::GetString:
        GetString(block);
        break;
    case HostMessage::Idle:           // there is nothing to do
    case HostMessage::AppPreferences: // there is no dialog
    default:
        break;
    }
}

} // namespace

ProcessObjects& Process() {
    static auto& objects = *new ProcessObjects;
    return objects;
}

bool IsStarted() {
    return Process().m_objFuncs != nullptr;
}

COutlookFuncs& Engine() {
    return *Process().m_objFuncs;
}

LastErrorRecord& LastError() {
    return *Process().lastError;
}

HMODULE ModuleHandle() {
    return g_module;
}

} // namespace varden

/// The library's one export: takes each lifecycle message and answers in the block. Nothing is raised to the
/// host.
extern "C" void FMExternCallProc(varden::ParameterBlock* block) {
    varden::g_block = block;
    try {
        varden::Dispatch(*block);
    } catch (...) {
        varden::LogLine(L"A lifecycle message ended early");
    }
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) {
        varden::g_module = module;
        DisableThreadLibraryCalls(module);
    }
    return TRUE;
}
