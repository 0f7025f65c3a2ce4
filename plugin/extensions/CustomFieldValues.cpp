// The types of custom fields, and their values as text.
#include "CustomFieldValues.h"

#include "fields/Conversions.h"
#include "frame/Text.h"
#include "outlook/ComPointers.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace varden {

namespace {

constexpr std::array kTypes{
    CustomFieldType{L"Currency", 14, CustomFieldForm::Currency},
    CustomFieldType{L"Date", 5, CustomFieldForm::Date},
    CustomFieldType{L"Time", 5, CustomFieldForm::Date},
    CustomFieldType{L"DateTime", 5, CustomFieldForm::Date},
    CustomFieldType{L"Duration", 7, CustomFieldForm::Integer},
    CustomFieldType{L"Keywords", 11, CustomFieldForm::Keywords},
    CustomFieldType{L"Number", 3, CustomFieldForm::Number},
    CustomFieldType{L"Percent", 12, CustomFieldForm::Number},
    CustomFieldType{L"Text", 1, CustomFieldForm::Text},
    CustomFieldType{L"YesNo", 6, CustomFieldForm::YesNo},
};

constexpr wchar_t kSeparator = L'\r';

/// One element more than the separators, empty ones included. A separator in the first place doesn't count.
bool MakeKeywords(const std::wstring& text, _variant_t& value) {
    std::wstring_view rest = text;
    if (rest.starts_with(kSeparator)) {
        rest.remove_prefix(1);
    }
    const auto separators = static_cast<ULONG>(std::ranges::count(rest, kSeparator));
    SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, separators + 1);
    if (!array) {
        return false;
    }
    value.vt = VT_ARRAY | VT_BSTR;
    value.parray = array;
    for (LONG index = 0; index <= static_cast<LONG>(separators); ++index) {
        const std::size_t end = std::min(rest.find(kSeparator), rest.size());
        const _bstr_t element(std::wstring(rest.substr(0, end)).c_str());
        SafeArrayPutElement(array, &index, static_cast<BSTR>(element));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return true;
}

bool IsYes(const std::wstring& text) {
    return EqualIgnoringCase(text, L"true") || EqualIgnoringCase(text, L"yes");
}

std::wstring CurrencyText(const CURRENCY& currency) {
    BSTR text = nullptr;
    if (FAILED(VarBstrFromCy(currency, LOCALE_USER_DEFAULT, 0, &text))) {
        return {};
    }
    return BstrText(_bstr_t(text, false));
}

/// Local date and time with the year in four digits; empty for Outlook's mark for no date.
std::wstring TimeText(const FILETIME& time) {
    constexpr ULONG fourDigitYears = VAR_FOURDIGITYEARS;
    auto local = LocalTime(time);
    if (!local || CompareFileTime(&time, &kNoTime) == 0) {
        return {};
    }
    DATE date = 0;
    BSTR text = nullptr;
    if (!SystemTimeToVariantTime(&*local, &date) || date == kNoDate ||
        FAILED(VarBstrFromDate(date, LOCALE_USER_DEFAULT, fourDigitYears, &text))) {
        return {};
    }
    return BstrText(_bstr_t(text, false));
}

} // namespace

std::span<const CustomFieldType> CustomFieldTypes() {
    return kTypes;
}

const CustomFieldType* FindCustomFieldType(const std::wstring& word) {
    return FindByWord(kTypes, &CustomFieldType::word, word);
}

bool MakeCustomFieldValue(CustomFieldForm form, const std::wstring& text, _variant_t& value) {
    switch (form) {
    case CustomFieldForm::Currency: {
        CURRENCY currency;
        if (SUCCEEDED(VarCyFromStr(const_cast<LPOLESTR>(text.c_str()), LOCALE_USER_DEFAULT, 0, &currency))) {
            value = _variant_t(currency);
        }
        return true;
    }
    case CustomFieldForm::Date:
        if (const auto date = ParseDate(text)) {
            value = _variant_t(*date, VT_DATE);
        }
        return true;
    case CustomFieldForm::Integer:
        value = _variant_t(LeadingNumber(text), VT_I4);
        return true;
    case CustomFieldForm::Keywords:
        return MakeKeywords(text, value);
    case CustomFieldForm::Number:
        value = _variant_t(std::wcstod(text.c_str(), nullptr));
        return true;
    case CustomFieldForm::YesNo:
        value = _variant_t(IsYes(text));
        return true;
    default:
        value = _variant_t(text.c_str());
        return true;
    }
}

std::wstring CustomFieldText(const SPropValue& property) {
    const auto& value = property.Value;
    std::wstring text;
    switch (PROP_TYPE(property.ulPropTag)) {
    case PT_MV_UNICODE:
        for (ULONG i = 0; value.MVszW.lppszW && i < value.MVszW.cValues; ++i) {
            text += i == 0 ? L"" : L"\r";
            text += value.MVszW.lppszW[i] ? value.MVszW.lppszW[i] : L"";
        }
        return text;
    case PT_MV_STRING8: // a return behind each, the last one too
        for (ULONG i = 0; value.MVszA.lppszA && i < value.MVszA.cValues; ++i) {
            text += Widen(value.MVszA.lppszA[i] ? value.MVszA.lppszA[i] : "") + kSeparator;
        }
        return text;
    case PT_LONG:
        return FormatText(L"%ld", value.l);
    case PT_DOUBLE:
        return FormatText(L"%f", value.dbl);
    case PT_CURRENCY:
        return CurrencyText(value.cur);
    case PT_BOOLEAN:
        return value.b ? L"True" : L"False";
    case PT_STRING8:
        return Widen(value.lpszA ? value.lpszA : "");
    case PT_UNICODE:
        return value.lpszW ? value.lpszW : L"";
    case PT_SYSTIME:
        return TimeText(value.ft);
    default:
        return {};
    }
}

} // namespace varden
