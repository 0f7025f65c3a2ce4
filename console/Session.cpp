// Setting up, running, and what is told at the end.
#include "Session.h"

#include "ScriptParser.h"
#include "Text.h"
#include "TextIo.h"
#include "standin/outlook/Control.h"

namespace standin::console {

namespace {

constexpr std::array kSides{Side::FileMaker, Side::Outlook, Side::Mapi};

std::wstring PluginBesideProgram() {
    wchar_t path[32768];
    const DWORD size = GetModuleFileNameW(nullptr, path, static_cast<DWORD>(std::size(path)));
    const std::wstring program(path, size);
    return program.substr(0, program.find_last_of(L"\\/") + 1) + L"VardenBridge.fmx64";
}

std::vector<std::wstring> ProgIdsFor(const Options& options) {
    return options.withoutOutlook ? std::vector<std::wstring>() : outlook::kOrdinaryProgIds;
}

std::wstring Decoded(int number, const std::string& line) {
    auto text = FromUtf8(line);
    if (!text) {
        throw ScriptMistake(number, L"the line is not valid UTF-8");
    }
    return *std::move(text);
}

/// The number of calls by side so far.
std::array<std::uint64_t, kSideCount> CallsOf(const Recorder& recorder) {
    std::array<std::uint64_t, kSideCount> calls{};
    for (const Side side : kSides) {
        calls[static_cast<std::size_t>(side)] = recorder.Calls(side);
    }
    return calls;
}

} // namespace

Session::Session(const Options& options)
    : m_options(options), m_registration(ProgIdsFor(options)), m_runner(m_functions, ShowLine) {
    SetUpOutlook();
    StartPlugin();
}

void Session::SetUpOutlook() {
    outlook::Control* control = m_host.Outlook();
    if (!control) {
        if (m_options.mailbox || m_options.versionText) {
            throw Mistake(L"the Outlook stand-in is not entered here");
        }
        return;
    }
    if (m_options.mailbox) {
        const outlook::OpenReport report = control->OpenMailbox(*m_options.mailbox);
        if (!report.ok) {
            throw Mistake(report.error);
        }
        for (const std::wstring& message : report.leftOut) {
            TellLine(L"left out of the mailbox: " + message);
        }
    }
    if (m_options.versionText) {
        control->SetVersionText(*m_options.versionText);
    }
}

void Session::StartPlugin() {
    if (m_options.trace && !m_recorder.StartTrace(*m_options.trace)) {
        throw Mistake(*m_options.trace + L": the trace can't be written");
    }
    const std::wstring problem =
        m_host.Load(m_options.plugin.empty() ? PluginBesideProgram() : m_options.plugin);
    if (!problem.empty()) {
        throw Mistake(problem);
    }
    if (m_host.Init() < 1) {
        throw Mistake(L"the plug-in refuses to work with this host");
    }
}

int Session::Run() {
    if (m_options.functions) {
        ListFunctions();
        return 0;
    }
    return m_options.script.empty() ? RunPrompt() : RunScript();
}

void Session::ListFunctions() {
    for (const filemaker::RegisteredFunction& function : m_host.Functions()) {
        ShowLine(std::to_wstring(function.id) + L'\t' + std::to_wstring(function.minimum) + L'\t' +
                 std::to_wstring(function.maximum) + L'\t' + function.prototype);
    }
}

void Session::BeginScript() {
    m_callsBefore = CallsOf(m_recorder);
    if (m_options.failure) {
        m_recorder.FailCall(m_options.failure->number, m_options.failure->status,
                            {Side::Outlook, Side::Mapi});
    }
}

int Session::RunScript() {
    const auto lines = ReadLines(m_options.script);
    if (!lines) {
        throw Mistake(m_options.script + L": the script can't be read");
    }
    try {
        ScriptParser parser(m_functions);
        int number = 0;
        for (const std::string& line : *lines) {
            ++number;
            parser.AddLine(number, Decoded(number, line));
        }
        const Block script = parser.Take();
        BeginScript();
        return m_runner.Run(script).value_or(0);
    } catch (const ScriptMistake& mistake) {
        throw Mistake(m_options.script + L":" + std::to_wstring(mistake.Line()) + L": " + mistake.Reason());
    }
}

int Session::RunPrompt() {
    const bool interactive = InputIsInteractive();
    ScriptParser parser(m_functions);
    BeginScript();
    for (int number = 1;; ++number) {
        if (interactive) {
            ShowPrompt(parser.IsComplete() ? L"> " : L"| ");
        }
        const auto line = ReadInputLine();
        if (!line && parser.IsComplete()) {
            return 0;
        }
        try {
            if (line) {
                parser.AddLine(number, Decoded(number, *line));
            }
            if (line && !parser.IsComplete()) {
                continue;
            }
            if (const auto exitNumber = m_runner.Run(parser.Take())) {
                return *exitNumber;
            }
        } catch (const ScriptMistake& mistake) {
            parser.Clear();
            TellLine(L"line " + std::to_wstring(mistake.Line()) + L": " + mistake.Reason());
        }
    }
}

void Session::Close() {
    const auto calls = CallsOf(m_recorder);
    for (std::size_t i = 0; i < calls.size(); ++i) {
        m_callsOfScript[i] = calls[i] - m_callsBefore[i];
    }
    m_host.Shutdown();
    m_recorder.StopTrace();
    for (const std::wstring& violation : m_recorder.Violations()) {
        TellLine(L"rule broken by the plug-in: " + violation);
    }
    if (m_options.failure && !m_options.functions && !m_recorder.HasFailed()) {
        TellLine(L"the planned failure did not come to pass: the script made fewer calls");
    }
    if (m_options.counts) {
        TellCounts();
    }
}

void Session::TellCounts() {
    std::wstring calls = L"calls:";
    for (const Side side : kSides) {
        calls += std::wstring(L" ") + SideName(side) + L" " +
                 std::to_wstring(m_callsOfScript[static_cast<std::size_t>(side)]);
    }
    TellLine(calls);
    const outlook::Control* control = m_host.Outlook();
    const outlook::LiveCounts live = control ? control->Live() : outlook::LiveCounts();
    TellLine(L"alive: FM objects " + std::to_wstring(m_host.LiveObjects()) + L", Outlook objects " +
             std::to_wstring(live.outlookObjects) + L", MAPI objects " + std::to_wstring(live.mapiObjects) +
             L", MAPI buffers " + std::to_wstring(live.mapiBuffers) + L", MAPI sessions " +
             std::to_wstring(live.mapiSessions));
    std::wstring left;
    for (const std::int16_t id : m_host.LeftRegistered()) {
        left += L' ' + std::to_wstring(id);
    }
    if (!left.empty()) {
        TellLine(L"functions still registered after Shutdown:" + left);
    }
}

} // namespace standin::console
