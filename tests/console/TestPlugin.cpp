// A plug-in that does with FileMaker's objects what plug-ins do, and what they must not do.
#include "standin/filemaker/Operations.h"
#include "standin/filemaker/ParameterBlock.h"

#include <windows.h>

#include <objbase.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>

using namespace standin::filemaker;

namespace {

int g_calls = 0;
const DataVect* g_lastArguments = nullptr;

void RaiseFor(const ErrorRecord& record) {
    if (record.code != 0) {
        throw std::runtime_error("host error " + std::to_string(record.code));
    }
}

/// Calls an operation and raises the error that it reports.
template <typename Operation, typename... Arguments>
auto Checked(Operation operation, Arguments... arguments) {
    ErrorRecord record;
    if constexpr (std::is_void_v<std::invoke_result_t<Operation, Arguments..., ErrorRecord*>>) {
        operation(arguments..., &record);
        RaiseFor(record);
    } else {
        const auto answer = operation(arguments..., &record);
        RaiseFor(record);
        return answer;
    }
}

/// Deletes an object of FileMaker's whatever comes of it.
template <auto Delete>
struct Deleter {
    template <typename Object>
    void operator()(Object* object) const {
        ErrorRecord record;
        Delete(object, &record);
    }
};
using OwnText = std::unique_ptr<Text, Deleter<FM_Text_Delete>>;
using PluginId = std::unique_ptr<QuadChar, Deleter<FM_QuadChar_Delete>>;

OwnText MakeText(const std::wstring& content) {
    OwnText text(Checked(FM_Text_Constructor1));
    Checked(FM_Text_AssignUnicode, text.get(), content.c_str());
    return text;
}

PluginId MakeId() {
    return PluginId(Checked(FM_QuadChar_Constructor2, 'T', 'E', 'S', 'T'));
}

std::wstring TextAt(const DataVect* arguments, std::uint32_t index) {
    const Text* text = Checked(FM_DataVect_AtAsText, arguments, index);
    std::wstring content(Checked(FM_Text_GetSize, text), L'\0');
    Checked(FM_Text_GetUnicode, text, content.data(), 0U, static_cast<std::uint32_t>(content.size()));
    return content;
}

void Store(Data* result, const std::wstring& content, std::int32_t type) {
    const OwnText text = MakeText(content);
    Checked(FM_Data_SetAsText, result, static_cast<const Text*>(text.get()),
            Checked(FM_Data_GetLocale, result), type);
}

std::wstring Echo(const DataVect* arguments) {
    ++g_calls;
    return TextAt(arguments, 0);
}

/// Each argument as text, whole number and truth.
std::wstring Kinds(const DataVect* arguments) {
    std::wstring kinds;
    for (std::uint32_t i = 0; i < Checked(FM_DataVect_Size, arguments); ++i) {
        const FixPt* number = Checked(FM_DataVect_AtAsNumber, arguments, i);
        kinds += L"[" + TextAt(arguments, i) + L"|" + std::to_wstring(Checked(FM_FixPt_AsLong, number)) +
                 L"|" + std::to_wstring(Checked(FM_DataVect_AtAsBoolean, arguments, i)) + L"]";
    }
    return kinds;
}

std::wstring Throw(const DataVect* arguments) {
    g_lastArguments = arguments;
    if (TextAt(arguments, 0) == L"number") {
        throw 7;
    }
    throw std::runtime_error("broken");
}

std::wstring LeakText(const DataVect*) {
    Checked(FM_Text_Constructor1);
    return L"leaked";
}

std::wstring DeleteTwice(const DataVect*) {
    Text* text = Checked(FM_Text_Constructor1);
    Checked(FM_Text_Delete, text);
    Checked(FM_Text_Delete, text);
    return L"survived";
}

std::wstring SevenInThreeDigits(const DataVect*) {
    return L"007";
}

/// Uses the arguments of the last TP_Throw, which FileMaker has ended since.
std::wstring UseLateArguments(const DataVect*) {
    return std::to_wstring(Checked(FM_DataVect_Size, g_lastArguments));
}

/// How often Echo was called.
std::wstring Calls(const DataVect*) {
    return std::to_wstring(g_calls);
}

/// Whether COM knows the name.
std::wstring HasProgId(const DataVect* arguments) {
    CLSID classId;
    return SUCCEEDED(CLSIDFromProgID(TextAt(arguments, 0).c_str(), &classId)) ? L"1" : L"0";
}

/// Answers what `Answer` gives, as a value of this type and with this error.
template <auto Answer, std::int32_t type = 1, std::int16_t error = 0>
std::int16_t Function(std::int16_t, const ExprEnv*, const DataVect* arguments, Data* result) {
    Store(result, Answer(arguments), type);
    return error;
}

struct FunctionRow {
    std::int16_t id;
    const wchar_t* name;
    const wchar_t* prototype;
    std::int16_t minimum;
    std::int16_t maximum;
    ExternalFunction function;
};
const FunctionRow kFunctions[] = {
    {11, L"TP_Echo", L"TP_Echo( text ; optMore )", 1, 2, Function<Echo>},
    {12, L"TP_Kinds", L"TP_Kinds( … )", 0, -1, Function<Kinds>},
    {13, L"TP_Throw", L"TP_Throw( what )", 1, 1, Function<Throw>},
    {14, L"TP_LeakText", L"TP_LeakText", 0, 0, Function<LeakText>},
    {15, L"TP_DeleteTwice", L"TP_DeleteTwice", 0, 0, Function<DeleteTwice>},
    {16, L"TP_AnswerError", L"TP_AnswerError", 0, 0, Function<SevenInThreeDigits, 1, 5>},
    {17, L"TP_AnswerNumber", L"TP_AnswerNumber", 0, 0, Function<SevenInThreeDigits, 2>},
    {18, L"TP_Calls", L"TP_Calls", 0, 0, Function<Calls>},
    {19, L"TP_HasProgId", L"TP_HasProgId( name )", 1, 1, Function<HasProgId>},
    {20, L"TP_UseLateArguments", L"TP_UseLateArguments", 0, 0, Function<UseLateArguments>},
    {21, L"", L"", 1, 1, Function<Echo>},
};
const FunctionRow kRuleBreaker{22, L"tp_ECHO", L"tp_ECHO( text )", 1, 1, Function<Echo>};

void Register(const FunctionRow& row) {
    const PluginId id = MakeId();
    const OwnText name = MakeText(row.name), prototype = MakeText(row.prototype);
    Checked(FM_ExprEnv_RegisterExternalFunction, static_cast<const QuadChar*>(id.get()), row.id,
            static_cast<const Text*>(name.get()), static_cast<const Text*>(prototype.get()), row.minimum,
            row.maximum, 0xFF01U, row.function);
}

void RegisterAll() {
    for (const FunctionRow& row : kFunctions) {
        Register(row);
    }
}

/// The last function stays registered; one that never was is unregistered.
void UnregisterMost() {
    const PluginId id = MakeId();
    for (std::int16_t function = 10; function <= 20; ++function) {
        Checked(FM_ExprEnv_UnRegisterExternalFunction, static_cast<const QuadChar*>(id.get()), function);
    }
}

/// What a test wants the options to be; by itself the plug-in asks for all messages.
std::wstring Options() {
    wchar_t wanted[16] = L"";
    const DWORD size = GetEnvironmentVariableW(L"TEST_PLUGIN_OPTIONS", wanted, std::size(wanted));
    return size > 0 && size < std::size(wanted) ? wanted : L"TEST1YnYYnn";
}

/// Text 1 fits the buffer, text 2 takes no notice of its size, any other but the options leaves it alone.
void GetString(const ParameterBlock& block) {
    auto* buffer = reinterpret_cast<wchar_t*>(block.result);
    if (block.parm1 == 131) {
        const std::wstring options = Options();
        buffer[options.copy(buffer, block.parm3 - 1)] = L'\0';
        return;
    }
    const std::wstring_view text = L"a plug-in";
    if (block.parm1 == 1) {
        buffer[text.copy(buffer, block.parm3 - 1)] = L'\0';
    } else if (block.parm1 == 2) {
        text.copy(buffer, text.size());
    }
}

} // namespace

extern "C" __declspec(dllexport) void FMExternCallProc(ParameterBlock* block) {
    switch (block->whichCall) {
    case 0:
        if (block->version == 60) {
            break; // answers nothing
        }
        if (block->version < 50) {
            block->result = static_cast<std::uint64_t>(std::int64_t{-1});
            break;
        }
        RegisterAll();
        if (block->version == 61) {
            Register(kRuleBreaker);
        }
        block->result = 53;
        break;
    case 1: // answers the idle level where the version stands
        block->version = block->parm1;
        break;
    case 4:
        UnregisterMost();
        break;
    case 7:
        GetString(*block);
        break;
    default:
        break;
    }
}
