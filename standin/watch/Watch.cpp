// The crossing and the recorder.
#include "Watch.h"

#include <algorithm>

namespace standin {

namespace {

Watch* g_watch = nullptr;
int g_depth = 0;

void BusyWait(double microseconds) {
    LARGE_INTEGER frequency, start, now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    const auto ticks = static_cast<LONGLONG>(microseconds * static_cast<double>(frequency.QuadPart) / 1e6);
    do {
        QueryPerformanceCounter(&now);
    } while (now.QuadPart - start.QuadPart < ticks);
}

std::string Utf8(const std::wstring& text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0,
                                         nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), narrow.data(), size, nullptr,
                        nullptr);
    return narrow;
}

std::wstring Hexadecimal(std::uint32_t number) {
    wchar_t text[9];
    swprintf(text, std::size(text), L"%08lx", static_cast<unsigned long>(number));
    return text;
}

} // namespace

const wchar_t* SideName(Side side) {
    static constexpr std::array<const wchar_t*, kSideCount> names{L"FM", L"Outlook", L"MAPI"};
    return names[static_cast<std::size_t>(side)];
}

Watch* CurrentWatch() {
    return g_watch;
}

void SetCurrentWatch(Watch* watch) {
    g_watch = watch;
}

const Deviations& WantedDeviations() {
    static const Deviations none;
    return g_watch ? g_watch->Wanted() : none;
}

void TellFlags(std::uint32_t flags) {
    if (g_depth == 1 && g_watch) {
        g_watch->Flags(flags);
    }
}

Crossing::Crossing(Side side, const wchar_t* interfaceName, const wchar_t* member)
    : m_side(side), m_interfaceName(interfaceName), m_member(member), m_outermost(g_depth++ == 0) {
    if (m_outermost && g_watch) {
        m_planned = m_status = g_watch->Begin(side, interfaceName, member);
    }
}

Crossing::~Crossing() {
    --g_depth;
    if (m_outermost && g_watch) {
        g_watch->End(m_side, m_interfaceName, m_member, m_status);
    }
}

Recorder::~Recorder() {
    StopTrace();
}

void Recorder::Reset() {
    m_calls.fill(0);
    m_plans.clear();
    m_hasFailed = false;
    m_deviations = {};
    m_lines.clear();
    m_violations.clear();
}

void Recorder::FailCall(std::uint64_t number, HRESULT status, const std::vector<Side>& sides) {
    Plan plan{.callsToFailure = number, .status = status};
    for (const Side side : sides) {
        plan.sides[static_cast<std::size_t>(side)] = true;
    }
    m_plans = {plan};
    m_hasFailed = false;
}

void Recorder::FailMember(std::wstring interfaceAndMember, HRESULT status, std::uint64_t number) {
    m_plans.clear();
    AlsoFailMember(std::move(interfaceAndMember), status, number);
}

void Recorder::AlsoFailMember(std::wstring interfaceAndMember, HRESULT status, std::uint64_t number) {
    Plan plan{.member = std::move(interfaceAndMember), .callsToFailure = number, .status = status};
    plan.sides.fill(true);
    m_plans.push_back(std::move(plan));
    m_hasFailed = false;
}

bool Recorder::StartTrace(const std::wstring& path) {
    StopTrace();
    m_trace = _wfopen(path.c_str(), L"wb");
    return m_trace != nullptr;
}

void Recorder::StopTrace() {
    if (m_trace) {
        std::fclose(m_trace);
        m_trace = nullptr;
    }
}

bool Recorder::Plan::Counts(Side side, const wchar_t* interfaceName, const wchar_t* called) const {
    return sides[static_cast<std::size_t>(side)] &&
           (member.empty() || member == std::wstring(interfaceName) + L"::" + called);
}

/// Counts the call for every plan that it belongs to. Of several that are due the first decides.
HRESULT Recorder::PlannedStatus(Side side, const wchar_t* interfaceName, const wchar_t* member) {
    HRESULT status = S_OK;
    std::erase_if(m_plans, [&](Plan& plan) {
        if (!plan.Counts(side, interfaceName, member) || --plan.callsToFailure != 0) {
            return false;
        }
        status = status == S_OK ? plan.status : status;
        m_hasFailed = true;
        return true;
    });
    return status;
}

HRESULT Recorder::Begin(Side side, const wchar_t* interfaceName, const wchar_t* member) {
    const auto index = static_cast<std::size_t>(side);
    ++m_calls[index];
    m_flags.reset();
    if (m_roundTrip > 0 && side != Side::FileMaker) {
        BusyWait(m_roundTrip);
    }
    return PlannedStatus(side, interfaceName, member);
}

void Recorder::End(Side side, const wchar_t* interfaceName, const wchar_t* member, HRESULT status) {
    const std::wstring result = Hexadecimal(static_cast<std::uint32_t>(status));
    const std::wstring flags = m_flags ? Hexadecimal(*m_flags) : std::wstring();
    if (m_trace) {
        const std::wstring line = std::wstring(SideName(side)) + L'\t' + interfaceName + L'\t' + member +
                                  L'\t' + result + (m_flags ? L"\t" : L"") + flags + L'\n';
        const std::string narrow = Utf8(line);
        std::fwrite(narrow.data(), 1, narrow.size(), m_trace);
    }
    if (m_keepLines) {
        m_lines.push_back(std::wstring(SideName(side)) + L' ' + interfaceName + L"::" + member + L' ' +
                          result + (m_flags ? L" " : L"") + flags);
    }
}

void Recorder::Violation(const std::wstring& text) {
    m_violations.push_back(text);
}

} // namespace standin
