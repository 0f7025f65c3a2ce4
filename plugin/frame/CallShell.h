// The one outer form of every function that a script can call: count test, arguments, input hooks, engine
// call under guard, result, log. What differs per function is a row.
#pragma once

#include "HostOperations.h"
#include "Text.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace varden {

/// How an argument is taken from the host.
enum class ArgumentForm {
    None,
    Text,         ///< a text; empty and missing are the same
    RepeatedText, ///< this and all further arguments, a text each
    HiddenText,   ///< a text whose value never reaches the log
    Number,       ///< truncated to 32 bits; 0 when missing
    FlagWord,    ///< true for "TRUE", "1", "YES", "ON", "Y" in any case; any other word and a missing one are
                 ///< false
    HostBoolean, ///< by the host's own conversion
};

struct ArgumentRow {
    ArgumentForm form = ArgumentForm::None;
    const wchar_t* logName = nullptr;
};

inline constexpr std::size_t kMaximumArguments = 7;

/// One argument as fetched. Only the member of its form is filled.
struct Argument {
    ScriptText text;
    std::int32_t number = 0;
    bool flag = false;
    bool present = false; ///< whether the host passed it, and, for a text, whether it holds anything
};

using Arguments = std::vector<Argument>;

struct ArgumentCount {
    std::int16_t minimum = 0;
    std::int16_t maximum = 0;

    constexpr bool Lets(std::int32_t count) const { return count >= minimum && count <= maximum; }
};

inline constexpr std::int16_t kAnyCount = 32767;

/// Does the work of a function: calls the engine, gives the answer.
using EngineCall = std::wstring (*)(const Arguments& arguments);

/// The further lines that three of the functions write to the log.
struct DetailedLog {
    const wchar_t* testing;            ///< before the count test
    bool tellsHooks = false;           ///< around the setting of the hooks
    const wchar_t* hasValue = nullptr; ///< when the first argument is present
    const wchar_t* before;             ///< before the engine call
    const wchar_t* after;              ///< behind it
};

/// What a function has of the common form.
enum FunctionTraits : unsigned {
    kHooks = 1,   ///< keyboard and mouse input is blocked around the engine call
    kGuarded = 2, ///< exceptions of the engine call become an answer and a last error
    kLogged = 4,
    kNoResult = 8, ///< the host's result stays as it is
};

inline constexpr unsigned kUsual = kHooks | kGuarded | kLogged;

struct FunctionRow {
    std::int16_t id;        ///< also the string-table row of the prototype
    const wchar_t* logName; ///< on the log's enter line
    ArgumentCount host;     ///< given to the host at registration
    ArgumentCount handler;  ///< what the function itself lets through
    ArgumentRow arguments[kMaximumArguments];
    EngineCall call;
    unsigned traits = kUsual;
    const DetailedLog* detail = nullptr;
};

/// Runs a function: takes the host's argument vector apart, calls the engine, puts the answer into the host's
/// result. The host's own failures while it hands over arguments raise; nothing else leaves. Always 0.
std::int16_t RunFunction(const FunctionRow& row, const host::DataVect* vector, host::Data* result);

} // namespace varden
