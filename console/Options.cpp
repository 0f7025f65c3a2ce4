// The table of options.
#include "Options.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace standin::console {

const wchar_t* const kUsage = LR"(varden [options] SCRIPT.fms   runs a script
varden [options]              a prompt: one step or expression a line

  --plugin FILE      the plug-in; VardenBridge.fmx64 beside this program if not given
  --mailbox DIR      the folder that holds the mailbox; a sample mailbox in memory if not given
  --version-text T   Outlook's version text
  --no-outlook       no Outlook is registered
  --fail N=STATUS    the N-th Outlook or MAPI call of the script fails with this HRESULT (hexadecimal)
  --trace FILE       writes a line for each call that the plug-in makes
  --counts           tells how many calls the script has made, and what is still alive at the end
  --functions        lists the plug-in's functions: id, minimum, maximum, prototype
)";

namespace {

constexpr std::size_t kLongestNumber = 18;
constexpr std::size_t kLongestStatus = 8;

bool ConsistsOf(std::wstring_view text, std::wstring_view characters, std::size_t longest) {
    return !text.empty() && text.size() <= longest &&
           text.find_first_not_of(characters) == std::wstring_view::npos;
}

PlannedFailure ParseFailure(const std::wstring& text) {
    const std::size_t sign = std::min(text.find(L'='), text.size());
    const std::wstring number = text.substr(0, sign);
    std::wstring status = text.substr(std::min(sign + 1, text.size()));
    if (status.starts_with(L"0x") || status.starts_with(L"0X")) {
        status.erase(0, 2);
    }
    if (!ConsistsOf(number, L"0123456789", kLongestNumber) ||
        !ConsistsOf(status, L"0123456789abcdefABCDEF", kLongestStatus) || std::stoull(number) == 0) {
        throw Mistake(L"--fail takes N=STATUS, such as 3=80040111");
    }
    return {std::stoull(number), static_cast<HRESULT>(std::stoul(status, nullptr, 16))};
}

struct OptionForm {
    std::wstring_view name;
    bool takesValue;
    void (*apply)(Options& options, const std::wstring& value);
};

constexpr std::array kForms{
    OptionForm{L"--plugin", true,
               [](Options& options, const std::wstring& value) { options.plugin = value; }},
    OptionForm{L"--mailbox", true,
               [](Options& options, const std::wstring& value) { options.mailbox = value; }},
    OptionForm{L"--version-text", true,
               [](Options& options, const std::wstring& value) { options.versionText = value; }},
    OptionForm{L"--no-outlook", false,
               [](Options& options, const std::wstring&) { options.withoutOutlook = true; }},
    OptionForm{L"--fail", true,
               [](Options& options, const std::wstring& value) { options.failure = ParseFailure(value); }},
    OptionForm{L"--trace", true, [](Options& options, const std::wstring& value) { options.trace = value; }},
    OptionForm{L"--counts", false, [](Options& options, const std::wstring&) { options.counts = true; }},
    OptionForm{L"--functions", false,
               [](Options& options, const std::wstring&) { options.functions = true; }},
    OptionForm{L"--help", false, [](Options& options, const std::wstring&) { options.help = true; }},
};

} // namespace

Options ParseOptions(const std::vector<std::wstring>& arguments) {
    Options options;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const auto form = std::ranges::find(kForms, std::wstring_view(*argument), &OptionForm::name);
        if (form != kForms.end()) {
            if (form->takesValue && argument + 1 == arguments.end()) {
                throw Mistake(*argument + L" takes a value");
            }
            form->apply(options, form->takesValue ? *++argument : std::wstring());
        } else if (argument->starts_with(L"--")) {
            throw Mistake(L"unknown option " + *argument);
        } else if (!options.script.empty() || argument->empty()) {
            throw Mistake(L"one script at a time");
        } else {
            options.script = *argument;
        }
    }
    return options;
}

} // namespace standin::console
