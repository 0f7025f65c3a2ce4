// The steps of a function call, in their order.
#include "CallShell.h"

#include "ComErrorText.h"
#include "ErrorCodes.h"
#include "InputHooks.h"
#include "LastError.h"
#include "PlugInLog.h"
#include "ProcessObjects.h"

#include <algorithm>
#include <array>
#include <exception>
#include <optional>

namespace varden {

namespace {

constexpr std::array kTrueWords{L"TRUE", L"1", L"YES", L"ON", L"Y"};

/// The log level at which every function begins, and at which a caught exception is told.
constexpr int kFunctionLevel = 1;

ScriptText FetchText(const host::DataVect* vector, std::int32_t index) {
    const host::Text* text = host::DataVectAtAsText(vector, index);
    const std::int32_t capacity = host::TextGetSize(text) + 1;
    if (capacity <= 1) {
        return std::nullopt;
    }
    std::wstring buffer(static_cast<std::size_t>(capacity), L'\0');
    host::TextGetUnicode(text, buffer.data(), 0, capacity);
    return std::wstring(buffer.c_str());
}

bool IsTrueWord(const ScriptText& word) {
    return word &&
           std::ranges::any_of(kTrueWords, [&](const wchar_t* yes) { return EqualIgnoringCase(*word, yes); });
}

Argument Fetch(ArgumentForm form, const host::DataVect* vector, std::int32_t index) {
    Argument argument;
    if (host::DataVectSize(vector) <= index) {
        return argument;
    }
    argument.present = true;
    switch (form) {
    case ArgumentForm::Number:
        argument.number = host::FixPtAsLong(host::DataVectAtAsNumber(vector, index));
        break;
    case ArgumentForm::HostBoolean:
        argument.flag = host::DataVectAtAsBoolean(vector, index);
        break;
    case ArgumentForm::FlagWord:
        argument.text = FetchText(vector, index);
        argument.flag = IsTrueWord(argument.text);
        argument.present = argument.text.has_value();
        break;
    default:
        argument.text = FetchText(vector, index);
        argument.present = argument.text.has_value();
        break;
    }
    return argument;
}

Arguments FetchArguments(const FunctionRow& row, const host::DataVect* vector) {
    Arguments arguments;
    for (const ArgumentRow& argument : row.arguments) {
        if (argument.form == ArgumentForm::None) {
            break;
        }
        const std::int32_t first = static_cast<std::int32_t>(arguments.size());
        const std::int32_t last =
            argument.form == ArgumentForm::RepeatedText ? host::DataVectSize(vector) : first + 1;
        for (std::int32_t index = first; index < last; ++index) {
            arguments.push_back(Fetch(argument.form, vector, index));
        }
    }
    return arguments;
}

std::wstring LoggedValue(const ArgumentRow& row, const Argument& argument) {
    switch (row.form) {
    case ArgumentForm::HiddenText:
        return L"HIDDEN";
    case ArgumentForm::Number:
        return FormatText(L"%d", argument.number);
    case ArgumentForm::FlagWord:
    case ArgumentForm::HostBoolean:
        return argument.flag ? L"true" : L"false";
    default:
        return argument.text.value_or(L"");
    }
}

/// The log lines of one function. Nothing is written for a function without the trait, nor without a log.
class FunctionLog {
public:
    explicit FunctionLog(const FunctionRow& row) : m_row(row) {}

    /// The functions that log in detail begin before the count test, the others behind the hooks.
    void BeginDetailed() const {
        if (m_row.detail && Begin()) {
            LogLine(m_row.detail->testing);
        }
    }

    void BeginPlain() const {
        if (!m_row.detail) {
            Begin();
        }
    }

    void Parameters(const Arguments& arguments) const {
        if (!IsOn()) {
            return;
        }
        if (m_row.detail && m_row.detail->hasValue && !arguments.empty() && arguments.front().present) {
            LogLine(m_row.detail->hasValue);
        }
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            const ArgumentRow& row = m_row.arguments[std::min(i, std::size(m_row.arguments) - 1)];
            if (arguments[i].present && row.logName) {
                SessionLog()->LogParam(row.logName, LoggedValue(row, arguments[i]));
            }
        }
    }

    void Detail(const wchar_t* line) const {
        if (m_row.detail) {
            LogLine(line);
        }
    }

    void BeforeCall() const {
        if (m_row.detail) {
            LogLine(m_row.detail->before);
        }
    }

    void AfterCall() const {
        if (m_row.detail) {
            LogLine(m_row.detail->after);
        }
    }

    void HooksDetail(const wchar_t* line) const {
        if (m_row.detail && m_row.detail->tellsHooks) {
            LogLine(line);
        }
    }

    void Caught(const wchar_t* line, const std::wstring& message) const {
        if (IsOn()) {
            SessionLog()->SetLevel(kFunctionLevel);
            SessionLog()->WriteLine(line);
            SessionLog()->WriteLine(message);
        }
    }

    void Returning(const std::wstring& answer) const {
        if (IsOn()) {
            LogLine(L"Returning %ls", answer.c_str());
            SessionLog()->FunctionExit(L"");
        }
    }

private:
    bool IsOn() const { return (m_row.traits & kLogged) != 0 && SessionLog(); }

    bool Begin() const {
        if (!IsOn()) {
            return false;
        }
        SessionLog()->SetLevel(kFunctionLevel);
        SessionLog()->FunctionEnter(m_row.logName);
        return true;
    }

    const FunctionRow& m_row;
};

/// The engine call under guard. A caught exception replaces fields of the last error one by one: the code of
/// a COM failure stays what it was, 0 as a rule, and the extra text of any other exception stays too.
std::wstring GuardedCall(const FunctionRow& row, const Arguments& arguments, const FunctionLog& log) {
    LastErrorRecord& record = LastError();
    try {
        log.BeforeCall();
        std::wstring answer = row.call(arguments);
        log.AfterCall();
        return answer;
    } catch (const _com_error& caught) {
        record.extra = L"";
        record.message = ComErrorText(caught);
        log.Caught(L"COM ERROR CAUGHT", *record.message);
    } catch (...) {
        record.code = error::kUnhandledException;
        record.message = L"Unhandled exception in function";
        log.Caught(L"UNKKNOWNEXCEPTION CAUGHT", *record.message);
    }
    return kErrorText;
}

/// The text that the answer goes into. None when the host can't make one: then no answer can reach it.
std::optional<host::OwnedText> MakeResultText() {
    try {
        return std::optional<host::OwnedText>(std::in_place);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

/// The answer becomes the host's result, in the locale that the host placed there. A host that fails at this
/// keeps the result as it was.
void StoreResult(const std::wstring& answer, host::OwnedText& text, host::Data* result) {
    try {
        text.Assign(answer.c_str());
        host::DataSetAsText(result, text.Get(), host::DataGetLocale(result), host::kNativeTypeText);
    } catch (const std::exception&) {
        LogLine(L"The host did not take the result");
    }
}

} // namespace

std::int16_t RunFunction(const FunctionRow& row, const host::DataVect* vector, host::Data* result) {
    auto text = MakeResultText();
    if (!text) {
        return 0;
    }
    if (!IsStarted()) { // a function that the host still lists behind Shutdown
        StoreResult(kErrorText, *text, result);
        return 0;
    }
    const FunctionLog log(row);
    log.BeginDetailed();
    if (!row.handler.Lets(host::DataVectSize(vector))) {
        SetLastErrorRecord(error::kParameterCount, 0, LastError(), L"");
        StoreResult(kErrorText, *text, result);
        return 0;
    }
    Arguments arguments = FetchArguments(row, vector);

    log.HooksDetail(L"Setting hooks...");
    std::optional<InputHooks> hooks;
    if ((row.traits & kHooks) != 0) {
        hooks.emplace();
    }
    log.HooksDetail(L"Hooks set.");
    log.BeginPlain();
    log.Parameters(arguments);

    const std::wstring answer =
        (row.traits & kGuarded) != 0 ? GuardedCall(row, arguments, log) : row.call(arguments);
    if ((row.traits & kNoResult) == 0) {
        StoreResult(answer, *text, result);
    }
    log.Detail(L"Clearing parameter value(s) (if any)");
    arguments.clear();
    if (row.detail) {
        log.Returning(answer);
        log.Detail(L"Releasing hooks...");
        hooks.reset();
        log.Detail(L"Hooks released.");
        log.Detail(L"Returning to FileMaker.");
    } else {
        hooks.reset();
        log.Returning(answer);
    }
    return 0;
}

} // namespace varden
