// Hosting a plug-in: the parameter block, the function table, and calls.
#include "Host.h"

#include "Control.h"
#include "ParameterBlock.h"
#include "standin/outlook/Control.h"

#include <algorithm>
#include <utility>

namespace standin::filemaker {

namespace {

struct FreeModule {
    void operator()(HMODULE module) const { FreeLibrary(module); }
};
using Module = std::unique_ptr<std::remove_pointer_t<HMODULE>, FreeModule>;

outlook::Control* FindOutlook() {
#ifdef WITH_OUTLOOK_STANDIN
    return outlook::OutlookControl();
#else
    return nullptr;
#endif
}

std::wstring SystemMessage(DWORD error) {
    wchar_t text[512];
    DWORD size = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                text, static_cast<DWORD>(std::size(text)), nullptr);
    while (size > 0 && (text[size - 1] == L'\r' || text[size - 1] == L'\n')) {
        --size;
    }
    return size > 0 ? std::wstring(text, size) : L"error " + std::to_wstring(error);
}

std::wstring FullPath(const std::wstring& file) {
    wchar_t path[32768];
    const DWORD size = GetFullPathNameW(file.c_str(), static_cast<DWORD>(std::size(path)), path, nullptr);
    return size > 0 && size < std::size(path) ? std::wstring(path, size) : file;
}

/// What FileMaker gives a plug-in room for its options.
constexpr std::size_t kOptionsCapacity = 256;

bool SameName(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

/// The objects of one call, for the time of the call.
class CallScope {
public:
    CallScope(Control& control, const std::vector<Value>& arguments, std::uint32_t locale)
        : m_control(control), m_objects(control.BeginCall(arguments, locale)) {}
    ~CallScope() {
        if (m_objects.result) {
            m_control.EndCall(m_objects);
        }
    }
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

    const CallObjects& Objects() const { return m_objects; }
    ResultData End() { return m_control.EndCall(std::exchange(m_objects, CallObjects())); }

private:
    Control& m_control;
    CallObjects m_objects;
};

/// Registrations go to this host's table while its plug-in has the word.
class RegistrarScope {
public:
    RegistrarScope(Control& control, Registrar* registrar)
        : m_control(control), m_former(control.SetRegistrar(registrar)) {}
    ~RegistrarScope() { m_control.SetRegistrar(m_former); }
    RegistrarScope(const RegistrarScope&) = delete;
    RegistrarScope& operator=(const RegistrarScope&) = delete;

private:
    Control& m_control;
    Registrar* m_former;
};

} // namespace

/// The plug-in that a host holds, and what it has registered.
class Host::Plugin final : public Registrar {
public:
    explicit Plugin(Watch& watch)
        : m_watch(watch), m_control(*StandinFileMakerControl()), m_outlook(FindOutlook()) {
        m_control.SetWatch(&watch);
        if (m_outlook) {
            m_outlook->SetWatch(&watch);
        }
    }

    ~Plugin() override {
        if (m_initialised) {
            Shutdown();
        }
        m_module.reset();
        m_control.DropPlugInObjects();
        m_control.SetWatch(nullptr);
        if (m_outlook) {
            m_outlook->SetWatch(nullptr);
        }
    }

    std::wstring Load(const std::wstring& file);
    bool ReadOwnOptions();
    std::int64_t Init(std::int16_t version);
    void Shutdown();
    StringAnswer GetString(std::uint8_t id, std::size_t capacity);
    /// Gives the block as the plug-in left it.
    ParameterBlock Send(ParameterBlock block);
    Answer Call(const RegisteredFunction& function, const std::vector<Value>& arguments);

    void Register(const RegisteredFunction& function) override;
    bool Unregister(const std::string& pluginId, std::int16_t id) override;

    const RegisteredFunction* Find(auto matches) const {
        const auto found = std::ranges::find_if(m_functions, matches);
        return found == m_functions.end() ? nullptr : &*found;
    }

    Watch& m_watch;
    Control& m_control;
    outlook::Control* m_outlook;
    Module m_module;
    EntryPoint m_entryPoint = nullptr;
    PlugInOptions m_options;
    bool m_initialised = false;
    std::uint32_t m_locale = 0x0409;
    std::vector<RegisteredFunction> m_functions;
    std::vector<std::int16_t> m_unregistered;
    std::vector<std::int16_t> m_leftRegistered;
};

std::wstring Host::Plugin::Load(const std::wstring& file) {
    SetErrorMode(SEM_FAILCRITICALERRORS);
    const std::wstring path = FullPath(file);
    m_module.reset(LoadLibraryW(path.c_str()));
    if (!m_module) {
        return path + L": " + SystemMessage(GetLastError());
    }
    m_entryPoint = reinterpret_cast<EntryPoint>(GetProcAddress(m_module.get(), kEntryPointName));
    if (!m_entryPoint) {
        m_module.reset();
        return path + L": no plug-in: it exports no FMExternCallProc";
    }
    if (!ReadOwnOptions()) {
        m_entryPoint = nullptr;
        m_module.reset();
        return path + L": no plug-in: it has no options";
    }
    return {};
}

bool Host::Plugin::ReadOwnOptions() {
    const std::wstring text = GetString(kPlugInOptions, kOptionsCapacity).text;
    const auto options = ReadOptions(text);
    if (!options) {
        return false;
    }
    m_options = *options;
    return true;
}

ParameterBlock Host::Plugin::Send(ParameterBlock block) {
    if (!m_entryPoint) {
        throw CallRefused(L"no plug-in is loaded");
    }
    block.instanceId = reinterpret_cast<std::uint64_t>(m_module.get());
    const ParameterBlock before = block;
    const RegistrarScope scope(m_control, this);
    m_entryPoint(&block);
    if (!EqualExceptResult(before, block)) {
        m_watch.Violation(L"FMExternCallProc: wrote a field of the parameter block that is not the result");
    }
    return block;
}

std::int64_t Host::Plugin::Init(std::int16_t version) {
    if (!m_entryPoint) {
        throw CallRefused(L"no plug-in is loaded");
    }
    if (!m_options.initAndShutdown) {
        return 0;
    }
    const auto result = static_cast<std::int64_t>(
        Send({.version = version, .whichCall = static_cast<std::uint8_t>(Message::Init)}).result);
    m_initialised = m_initialised || result >= 1;
    return result;
}

void Host::Plugin::Shutdown() {
    m_initialised = false;
    if (m_options.initAndShutdown) {
        Send({.whichCall = static_cast<std::uint8_t>(Message::Shutdown)});
    }
    m_leftRegistered.clear();
    for (const RegisteredFunction& function : m_functions) {
        m_leftRegistered.push_back(function.id);
    }
}

StringAnswer Host::Plugin::GetString(std::uint8_t id, std::size_t capacity) {
    // U+FFFF is no character, so a unit that still holds it was not written.
    constexpr wchar_t unwritten = 0xFFFF;
    constexpr std::size_t margin = 64;
    std::wstring buffer(capacity + margin, unwritten);
    Send({.whichCall = static_cast<std::uint8_t>(Message::GetString),
          .parm1 = id,
          .parm3 = static_cast<std::uint32_t>(capacity),
          .result = reinterpret_cast<std::uint64_t>(buffer.data())});
    if (buffer.find_first_not_of(unwritten, capacity) != std::wstring::npos) {
        m_watch.Violation(L"FMExternCallProc: wrote behind the buffer for a text");
    }
    buffer.resize(capacity);
    buffer.resize(buffer.find_last_not_of(unwritten) + 1);
    return {buffer.substr(0, buffer.find(L'\0')), buffer.size()};
}

Answer Host::Plugin::Call(const RegisteredFunction& function, const std::vector<Value>& arguments) {
    const RegistrarScope registering(m_control, this);
    CallScope call(m_control, arguments, m_locale);
    const CallObjects& objects = call.Objects();
    const std::int16_t error =
        function.function(function.id, objects.environment, objects.arguments, objects.result);
    ResultData result = call.End();
    return {error, std::move(result.text), result.nativeType, result.locale};
}

void Host::Plugin::Register(const RegisteredFunction& function) {
    const auto isSame = [&](const RegisteredFunction& other) {
        return other.pluginId == function.pluginId && other.id == function.id;
    };
    const bool isNameTaken = std::ranges::any_of(m_functions, [&](const RegisteredFunction& other) {
        return !function.name.empty() && !isSame(other) && SameName(other.name, function.name);
    });
    if (isNameTaken) {
        m_watch.Violation(L"FM_ExprEnv_RegisterExternalFunction: a second function " + function.name);
    }
    if (function.pluginId != m_options.id) {
        m_watch.Violation(L"FM_ExprEnv_RegisterExternalFunction: a plug-in id that is not in the options");
    }
    const auto same = std::ranges::find_if(m_functions, isSame);
    if (same != m_functions.end()) {
        *same = function;
    } else {
        m_functions.push_back(function);
    }
}

bool Host::Plugin::Unregister(const std::string& pluginId, std::int16_t id) {
    m_unregistered.push_back(id);
    return std::erase_if(m_functions, [&](const RegisteredFunction& function) {
               return function.pluginId == pluginId && function.id == id;
           }) > 0;
}

namespace {

const RegisteredFunction& Known(const RegisteredFunction* function, const std::wstring& name) {
    if (!function) {
        throw CallRefused(L"no function " + name + L" is registered");
    }
    return *function;
}

const RegisteredFunction& Fitting(const RegisteredFunction& function, std::size_t count) {
    const auto given = static_cast<std::ptrdiff_t>(count);
    if (given < function.minimum || (function.maximum >= 0 && given > function.maximum)) {
        throw CallRefused(L"function " + function.name + L" does not take " + std::to_wstring(count) +
                          L" arguments");
    }
    return function;
}

} // namespace

std::optional<PlugInOptions> ReadOptions(std::wstring_view text) {
    constexpr std::size_t kSize = 11, kIdSize = 4, kOne = 4, kPreferences = 5, kInit = 7, kIdle = 8;
    constexpr auto isForeign = [](wchar_t unit) { return unit < 0x20 || unit > 0x7E; };
    if (text.size() != kSize || text[kOne] != L'1' || std::ranges::any_of(text, isForeign)) {
        return std::nullopt;
    }
    std::string id(kIdSize, ' ');
    for (std::size_t i = 0; i < kIdSize; ++i) {
        id[i] = static_cast<char>(text[i]);
    }
    return PlugInOptions{std::move(id), text[kPreferences] == L'Y', text[kInit] == L'Y', text[kIdle] == L'Y'};
}

Host::Host(Watch& watch) : m_plugin(std::make_unique<Plugin>(watch)) {
}

Host::~Host() = default;

std::wstring Host::Load(const std::wstring& file) {
    return m_plugin->Load(file);
}

std::int64_t Host::Init(std::int16_t version) {
    return m_plugin->Init(version);
}

void Host::Shutdown() {
    m_plugin->Shutdown();
}

void Host::Idle(std::uint8_t level) {
    if (m_plugin->m_options.idle) {
        m_plugin->Send({.whichCall = static_cast<std::uint8_t>(Message::Idle), .parm1 = level});
    }
}

void Host::AppPreferences() {
    if (m_plugin->m_options.preferences) {
        Send(static_cast<std::uint8_t>(Message::AppPreferences));
    }
}

void Host::Send(std::uint8_t message) {
    m_plugin->Send({.whichCall = message});
}

StringAnswer Host::GetString(std::uint8_t id, std::size_t capacity) {
    return m_plugin->GetString(id, capacity);
}

const std::vector<RegisteredFunction>& Host::Functions() const {
    return m_plugin->m_functions;
}

const std::vector<std::int16_t>& Host::Unregistered() const {
    return m_plugin->m_unregistered;
}

const std::vector<std::int16_t>& Host::LeftRegistered() const {
    return m_plugin->m_leftRegistered;
}

const RegisteredFunction* Host::Find(std::wstring_view name) const {
    return m_plugin->Find([name](const RegisteredFunction& function) {
        return !name.empty() && SameName(function.name, name);
    });
}

const RegisteredFunction* Host::Find(std::int16_t id) const {
    return m_plugin->Find([id](const RegisteredFunction& function) { return function.id == id; });
}

Answer Host::Call(std::wstring_view name, const std::vector<Value>& arguments) {
    return m_plugin->Call(Fitting(Known(Find(name), std::wstring(name)), arguments.size()), arguments);
}

Answer Host::Call(std::int16_t id, const std::vector<Value>& arguments) {
    return m_plugin->Call(Fitting(Known(Find(id), std::to_wstring(id)), arguments.size()), arguments);
}

Answer Host::CallUnchecked(std::wstring_view name, const std::vector<Value>& arguments) {
    return m_plugin->Call(Known(Find(name), std::wstring(name)), arguments);
}

Answer Host::CallUnchecked(std::int16_t id, const std::vector<Value>& arguments) {
    return m_plugin->Call(Known(Find(id), std::to_wstring(id)), arguments);
}

void Host::SetLocale(std::uint32_t language) {
    m_plugin->m_locale = language;
}

std::size_t Host::LiveObjects() const {
    return m_plugin->m_control.LiveObjects();
}

outlook::Control* Host::Outlook() const {
    return m_plugin->m_outlook;
}

} // namespace standin::filemaker
