// Fields that several kinds of item read or write in a way of their own.
#include "SharedFields.h"

#include "frame/ErrorCodes.h"
#include "frame/Text.h"
#include "mapi/Tags.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

/// The colours: clear, purple, orange, green, yellow, blue, red.
constexpr std::array kFlagIconByLetter{EnumLetter{L'C', 0}, EnumLetter{L'P', 1}, EnumLetter{L'O', 2},
                                       EnumLetter{L'G', 3}, EnumLetter{L'Y', 4}, EnumLetter{L'B', 5},
                                       EnumLetter{L'R', 6}};
constexpr EnumChoice kFlagIconLetters{kFlagIconByLetter, {}};

constexpr long kFlagMarked = 2;

mapi::PropertyUnion LongProperty(long number) {
    mapi::PropertyUnion value{};
    value.l = number;
    return value;
}

constexpr std::array kDownloadState{EnumWord{0, L"Header Only"}};
constexpr std::array kMarkForDownload{EnumWord{1, L"unmarked"}, EnumWord{2, L"download"},
                                      EnumWord{3, L"copy"}, EnumWord{4, L"delete"}};

/// Line ends become line feeds: first every pair of carriage return and line feed, then every carriage return
/// left.
std::wstring WithLineFeeds(const std::wstring& text) {
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n';
        if (!isPair) {
            result += text[i] == L'\r' ? L'\n' : text[i];
        }
    }
    return result;
}

} // namespace

constexpr EnumWords kDownloadStateWords{kDownloadState, L"Full Item"};
constexpr EnumWords kMarkForDownloadWords{kMarkForDownload};

std::wstring GetTruthOrEmpty(const FieldContext& context, const FieldRow& row) {
    return context.item.GetBool(row.get.member) ? L"True" : L"";
}

std::wstring GetInFolder(const FieldContext& context, const FieldRow&) {
    return context.engine.CurrentFolder().Name();
}

std::wstring GetBodyWithLineFeeds(const FieldContext& context, const FieldRow&) {
    mapi::PropertyBlock block;
    if (SUCCEEDED(context.engine.mapi_GetOneProp(mapi::tag::kBody, block, context.message))) {
        return WithLineFeeds(block.AsText());
    }
    std::wstring text;
    return context.engine.mapi_GetTextField(mapi::tag::kBody, text, context.message)
               ? text
               : Fail(error::kMapi, text);
}

/// A number, unlike the letters by which it is written.
std::wstring GetFlagIcon(const FieldContext& context, const FieldRow&) {
    mapi::PropertyBlock block;
    if (FAILED(context.engine.mapi_GetOneProp(mapi::tag::kFlagIcon, block, context.message))) {
        return L"None";
    }
    if (const long icon = block.AsLong().value_or(0); icon != 0) {
        return FormatText(L"%ld", icon);
    }
    const std::wstring status = WordFor(context.item.GetLong(L"FlagStatus"), kFlagStatusWords);
    return status == L"Complete" ? status : std::wstring();
}

/// Marks the item, whatever the letter: one that stands for no colour gives none.
bool SetFlagIcon(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    context.engine.mapi_SetOneProp(mapi::tag::kFlagStatus, LongProperty(kFlagMarked), context.message);
    const long icon = Choose(data, kFlagIconLetters).value_or(0);
    context.engine.mapi_SetOneProp(mapi::tag::kFlagIcon, LongProperty(icon), context.message);
    context.item.Call(L"Save");
    return true;
}

bool SetFlagStatus(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    const auto status = Choose(data, kFlagStatusLetters);
    if (!status) {
        return Refuse(error::kFieldValue);
    }
    context.item.PutProperty(L"FlagStatus", outlook::LongValue(*status));
    context.item.Call(L"Save");
    if (*status < kFlagMarked) {
        context.engine.mapi_SetOneProp(mapi::tag::kFlagIcon, LongProperty(*status), context.message);
    }
    return true;
}

} // namespace varden
