// The properties of an exception's item, by their number.
#include "session/COutlookFuncs.h"

#include "NotOpen.h"

#include "frame/ErrorCodes.h"
#include "mapi/Diagnostics.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

/// A text of the property by a key that scripts use.
struct PropertyKey {
    const wchar_t* key;
    const wchar_t* member;
    bool isTruth = false; ///< "True" or "False"
};
constexpr std::array kPropertyKeys{
    PropertyKey{L"Class", L"Class"},
    PropertyKey{L"Formula", L"Formula"},
    PropertyKey{L"Is User Property", L"IsUserProperty", true},
    PropertyKey{L"Name", L"Name"},
    PropertyKey{L"Type", L"Type"},
    PropertyKey{L"Validation Formula", L"ValidationFormula"},
    PropertyKey{L"Validation Text", L"ValidationText"},
    PropertyKey{L"Value", L"Value"},
};

} // namespace

std::wstring COutlookFuncs::OpenExceptItemProps() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"OpenExceptItemProps");
    if (!m_objRecurrencePattern) {
        return operation.Fail(error::kNoRecord, kPatternNotOpen);
    }
    if (!m_objException) {
        return operation.Fail(error::kNoRecord, kExceptionNotOpen);
    }
    m_objItemProperties.Set(m_objException.GetProperty(L"ItemProperties"));
    return kSuccessText;
}

std::wstring COutlookFuncs::RPEIGetPropertyCount() {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"RPEIGetPropertyCount");
    if (!m_objException) {
        return operation.Fail(error::kNoRecord, kExceptionNotOpen);
    }
    _variant_t properties;
    if (const HRESULT status = m_objException.TryGet(L"ItemProperties", properties); FAILED(status)) {
        return mapi_HResultName(status);
    }
    m_objItemProperties.Set(properties);
    return m_objItemProperties ? FormatText(L"%ld", m_objItemProperties.GetLong(L"Count"))
                               : std::wstring(L"0");
}

std::wstring COutlookFuncs::RPEIOpenPropertyAt(std::int32_t index) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"RPEIOpenPropertyAt");
    if (!m_objException) {
        return operation.Fail(error::kNoRecord, L"Must open recurrence pattern exception item first");
    }
    if (!m_objItemProperties) {
        return kEndText;
    }
    m_objItemProperty.Set(m_objItemProperties.Call(L"Item", {outlook::LongValue(index)}));
    return kSuccessText;
}

std::wstring COutlookFuncs::RPEIGetPropertyData(const std::wstring& key) {
    if (!BeginOperation()) {
        return kErrorText;
    }
    Operation operation(L"RPEIGetPropertyData");
    if (!m_objItemProperty) {
        return operation.Fail(error::kNoRecord,
                              L"Must open recurrence pattern exception item property first");
    }
    const PropertyKey* known = FindByWord(kPropertyKeys, &PropertyKey::key, key);
    if (!known) {
        return operation.Fail(error::kFieldName);
    }
    if (known->isTruth) {
        return m_objItemProperty.GetBool(known->member) ? L"True" : L"False";
    }
    return m_objItemProperty.GetText(known->member);
}

} // namespace varden
