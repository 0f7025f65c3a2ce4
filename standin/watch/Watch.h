// Watching and failing: what a stand-in tells of each call that crosses into it, and how the call can be
// made to fail. Knows nothing of what the stand-ins stand in for.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace standin {

/// The three sides that a plug-in calls into.
enum class Side { FileMaker, Outlook, Mapi };
inline constexpr std::size_t kSideCount = 3;

/// The word for a side in traces and counts.
const wchar_t* SideName(Side side);

/// What stand-ins are to do otherwise than they would by themselves, where the platform may do either.
struct Deviations {
    /// IMAPITable::QueryRows gives no more rows than this at a time, however many are asked for.
    std::size_t mostRowsAtOnce = std::numeric_limits<std::size_t>::max();
    /// IMAPIProp::CopyTo and CopyProps note this status as the problem of the first property they copy; S_OK:
    /// they note what there is.
    HRESULT copyProblem = S_OK;
    /// IMAPIProp::SetProps notes MAPI_E_NOT_ENOUGH_MEMORY as the problem of values that take more bytes: a
    /// provider may have them as streams only.
    std::size_t largestValueSet = std::numeric_limits<std::size_t>::max();
};

/// Watches calls. The program that hosts the plug-in owns one and hands its address to every stand-in
/// library, so that one trace holds all sides in order. All calls arrive on one thread.
class Watch {
public:
    virtual ~Watch() = default;

    /// A call from outside begins. Gives the status that it is to answer at once instead of running; S_OK: it
    /// runs.
    virtual HRESULT Begin(Side side, const wchar_t* interfaceName, const wchar_t* member) = 0;
    /// The call that began last ends with this status.
    virtual void End(Side side, const wchar_t* interfaceName, const wchar_t* member, HRESULT status) = 0;
    /// The flags that the call under way was given, for the trace.
    virtual void Flags(std::uint32_t flags) = 0;
    /// A caller broke the platform's rules in a way that the platform answers with memory corruption and not
    /// with a status: a buffer freed twice, an object used after its last release.
    virtual void Violation(const std::wstring& text) = 0;
    /// What the stand-ins are to do otherwise.
    virtual const Deviations& Wanted() const = 0;
};

/// The watch of this library's calls, null while nobody watches. Each library has its own.
Watch* CurrentWatch();
void SetCurrentWatch(Watch* watch);
/// What the watch wants otherwise; nothing while nobody watches.
const Deviations& WantedDeviations();

/// Tells the watch the flags of the call from outside that is under way. Those of a call that the stand-in
/// makes of itself are passed over.
void TellFlags(std::uint32_t flags);

/// One call that crosses into a stand-in, for the time it lasts. Calls that the stand-in makes of itself
/// while a call from outside is under way are part of that call: they are neither counted nor traced, nor can
/// they fail.
///
///     HRESULT Message::SaveChanges(ULONG flags) {
///         Crossing call(Side::Mapi, L"IMessage", L"SaveChanges");
///         if (call.Fails()) return call.Status();
///         return call.Return(Save(flags));
///     }
class Crossing {
public:
    Crossing(Side side, const wchar_t* interfaceName, const wchar_t* member);
    ~Crossing();
    Crossing(const Crossing&) = delete;
    Crossing& operator=(const Crossing&) = delete;

    /// Whether the call is to fail by plan. Status() is then the status to answer.
    bool Fails() const { return m_planned != S_OK; }
    HRESULT Status() const { return m_planned; }
    /// Notes the status for the trace and gives it back.
    HRESULT Return(HRESULT status) { return m_status = status; }

private:
    Side m_side;
    const wchar_t* m_interfaceName;
    const wchar_t* m_member;
    bool m_outermost;
    HRESULT m_planned = S_OK;
    HRESULT m_status = S_OK;
};

/// Counts objects of one sort that are alive: a member of each object.
///
///     class Message { LiveCount m_alive{g_liveMessages}; };
class LiveCount {
public:
    explicit LiveCount(std::int64_t& counter) : m_counter(counter) { ++m_counter; }
    LiveCount(const LiveCount& other) : m_counter(other.m_counter) { ++m_counter; }
    LiveCount& operator=(const LiveCount&) = delete;
    ~LiveCount() { --m_counter; }

private:
    std::int64_t& m_counter;
};

/// The watch that hosting programs use: counts, writes a trace, plans failures, collects violations.
class Recorder final : public Watch {
public:
    ~Recorder() override;

    /// Forgets counts, violations and deviations; a planned failure is cancelled.
    void Reset();
    std::uint64_t Calls(Side side) const { return m_calls[static_cast<std::size_t>(side)]; }
    const std::vector<std::wstring>& Violations() const { return m_violations; }

    /// Of the calls on these sides from now on, the `number`-th (from 1) answers `status`.
    void FailCall(std::uint64_t number, HRESULT status, const std::vector<Side>& sides);
    /// The `number`-th call (from 1) of this member from now on answers `status`: "IMAPITable::SetColumns".
    void FailMember(std::wstring interfaceAndMember, HRESULT status, std::uint64_t number = 1);
    /// The same for one member more, counted from now on as well; what is planned stays.
    void AlsoFailMember(std::wstring interfaceAndMember, HRESULT status, std::uint64_t number = 1);
    /// Whether the planned failure has come to pass.
    bool HasFailed() const { return m_hasFailed; }

    /// What the stand-ins do otherwise from now on.
    Deviations& Deviate() { return m_deviations; }

    /// Every call from now on takes at least this long, as it does where Outlook is another process.
    void SetRoundTrip(double microseconds) { m_roundTrip = microseconds; }

    /// Writes a line per call to the file (UTF-8): side, interface, member, status in hexadecimal, and the
    /// flags in hexadecimal where the call tells them; tabs between.
    bool StartTrace(const std::wstring& path);
    void StopTrace();
    /// Keeps the lines in memory for a test; Lines() gives them as "MAPI IMessage::SaveChanges 00000000",
    /// flags behind a further blank.
    void KeepLines(bool keep) { m_keepLines = keep; }
    const std::vector<std::wstring>& Lines() const { return m_lines; }

    HRESULT Begin(Side side, const wchar_t* interfaceName, const wchar_t* member) override;
    void End(Side side, const wchar_t* interfaceName, const wchar_t* member, HRESULT status) override;
    void Flags(std::uint32_t flags) override { m_flags = flags; }
    void Violation(const std::wstring& text) override;
    const Deviations& Wanted() const override { return m_deviations; }

private:
    struct Plan {
        std::array<bool, kSideCount> sides{};
        std::wstring member; ///< empty: any on the sides
        std::uint64_t callsToFailure = 0;
        HRESULT status = S_OK;

        bool Counts(Side side, const wchar_t* interfaceName, const wchar_t* member) const;
    };
    HRESULT PlannedStatus(Side side, const wchar_t* interfaceName, const wchar_t* member);

    std::array<std::uint64_t, kSideCount> m_calls{};
    std::vector<Plan> m_plans; // those whose failure is still to come
    bool m_hasFailed = false;
    Deviations m_deviations;
    double m_roundTrip = 0;
    std::optional<std::uint32_t> m_flags; // of the call under way
    std::FILE* m_trace = nullptr;
    bool m_keepLines = false;
    std::vector<std::wstring> m_lines;
    std::vector<std::wstring> m_violations;
};

} // namespace standin
