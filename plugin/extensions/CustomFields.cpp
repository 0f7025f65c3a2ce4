// Custom fields: written through the item's user properties, read back through MAPI as named properties.
#include "session/COutlookFuncs.h"

#include "CustomFieldValues.h"

#include "frame/ErrorCodes.h"
#include "mapi/PropertyCatalogue.h"
#include "session/Operation.h"

#include <array>

namespace varden {

namespace {

/// A new property of an item, of a number of OlUserPropertyType, that is entered in its folder's list as
/// well; nothing when none came back. Raises as Outlook refuses it.
outlook::Reference AddProperty(const outlook::Reference& properties, const std::wstring& name, long type) {
    return outlook::Reference(
        outlook::kUserProperty,
        properties.Call(L"Add", {outlook::TextValue(name), outlook::LongValue(type), outlook::BoolValue(true),
                                 outlook::MissingArgument()}));
}

} // namespace

std::wstring COutlookFuncs::SetCustonFieldData(const ScriptText& fieldName, const ScriptText& data,
                                               const std::wstring& type) {
    Operation operation(L"SetCustonFieldData");
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!fieldName) {
        return operation.Fail(error::kFieldNameMissing);
    }
    const CustomFieldType* fieldType = FindCustomFieldType(type);
    if (!fieldType) {
        return operation.Fail(error::kCustomFieldTypeWord);
    }
    static constexpr std::array kinds{ItemKind::Contact,
                                      ItemKind::Appointment,
                                      ItemKind::Task,
                                      ItemKind::Mail,
                                      ItemKind::Note,
                                      ItemKind::Post,
                                      ItemKind::Journal,
                                      ItemKind::DistList,
                                      ItemKind::Meeting,
                                      ItemKind::TaskRequest,
                                      ItemKind::Report,
                                      ItemKind::Remote,
                                      ItemKind::Document,
                                      ItemKind::Sharing,
                                      ItemKind::Storage,
                                      ItemKind::TaskRequestAccept,
                                      ItemKind::TaskRequestDecline,
                                      ItemKind::TaskRequestUpdate};
    const outlook::Reference* item = FirstHeld(kinds);
    if (!item) {
        return operation.Fail(error::kNoRecord);
    }
    if (item == &m_objNoteItem) {
        return operation.Fail(error::kNoCustomFields);
    }
    const outlook::Reference properties(outlook::kUserProperties, item->GetProperty(L"UserProperties"));
    if (!properties) {
        return operation.Fail(error::kNoUserProperties);
    }
    _variant_t found;
    if (const HRESULT status = properties.TryCall(L"Find", {outlook::TextValue(*fieldName)}, found);
        FAILED(status)) {
        return operation.Fail(error::kMapi, status, L"Unable to access user properties field");
    }
    outlook::Reference property(outlook::kUserProperty, found);
    if (!property) {
        property = AddProperty(properties, *fieldName, fieldType->number);
    }
    if (!property) {
        return operation.Fail(error::kMapi, L"Unable to create custom field");
    }
    _variant_t value;
    if (!MakeCustomFieldValue(fieldType->form, data.value_or(L""), value)) {
        return operation.Fail(error::kMapi, L"Cannot create SAFEARRAY for Keywords.");
    }
    if (const HRESULT status = property.TryPut(L"Value", value); FAILED(status)) {
        return operation.Fail(error::kMapi, status, L"Failed to set Custom Field Value");
    }
    return kSuccessText;
}

std::wstring COutlookFuncs::GetCustomFieldData(const ScriptText& fieldName) {
    Operation operation(L"GetCustomFieldData");
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!m_objCurrentFolder) {
        return operation.Fail(error::kNoFolder);
    }
    if (!fieldName) {
        return operation.Fail(error::kFieldNameMissing);
    }
    ULONG tag = 0;
    if (!mapi_PublicStringToPropTag(*fieldName, tag, m_pMessage.Get())) {
        return operation.Fail(error::kCustomFieldMissing);
    }
    if (PROP_ID(tag) == 0) {
        return operation.Fail(error::kCustomFieldMissing, L"Field does not have an ID");
    }
    SizedSPropTagArray(1, tags) = {1, {CHANGE_PROP_TYPE(tag, PT_UNSPECIFIED)}};
    ULONG count = 0;
    mapi::Block<SPropValue> value;
    const HRESULT status =
        m_pMessage->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), MAPI_UNICODE, &count, value.Out());
    if (status != S_OK && status != MAPI_W_ERRORS_RETURNED) {
        return operation.Fail(error::kCustomFieldMissing, status, L"Error getting custom filed value");
    }
    operation.ExitAs(L"GetCustomFiledData");
    return CustomFieldText(*value);
}

/// Enters the field in the folder's list, by way of an item of the folder or of one that is never saved.
std::wstring COutlookFuncs::CreateCustomField(const ScriptText& fieldName, const ScriptText& type) {
    Operation operation(L"CreateCustomField");
    operation.OptionalParam(L"strFieldName", fieldName);
    operation.OptionalParam(L"strFieldType", type);
    if (!BeginOperation()) {
        return operation.Failed();
    }
    if (!m_objCurrentFolder) {
        return operation.Fail(error::kNoFolder);
    }
    ReleaseItems();
    if (!fieldName) {
        return operation.Fail(error::kFieldNameMissing);
    }
    const CustomFieldType* fieldType = FindCustomFieldType(type.value_or(L""));
    if (!fieldType) {
        return operation.Fail(error::kCustomFieldType);
    }
    LogLine(L"obtained property type");
    try {
        m_objCurrentItem = outlook::DispatchOf(m_objItems.Count() > 0
                                                   ? m_objItems.Item(1)
                                                   : m_objItems.Call(L"Add", {outlook::MissingArgument()}));
        LogLine(L"added item to items list");
        return AddToFolderFields(*fieldName, fieldType->number, operation);
    } catch (const _com_error& caught) {
        return operation.FailCom(caught);
    }
}

std::wstring COutlookFuncs::AddToFolderFields(const std::wstring& name, long type, Operation& operation) {
    const auto fail = [&](std::int32_t code, const wchar_t* reason = L"") {
        ReleaseItems();
        return operation.Fail(code, reason);
    };
    static constexpr std::array kinds{
        ItemKind::Mail,        ItemKind::Contact,           ItemKind::Appointment,
        ItemKind::TaskRequest, ItemKind::TaskRequestAccept, ItemKind::TaskRequestDecline,
        ItemKind::Task,        ItemKind::Journal,           ItemKind::Post,
        ItemKind::Report,      ItemKind::Meeting,           ItemKind::DistList};
    const auto kind = std::ranges::find_if(
        kinds, [&](ItemKind candidate) { return SUCCEEDED(Item(candidate).Query(m_objCurrentItem)); });
    if (kind == kinds.end()) {
        return fail(error::kItemKind);
    }
    const outlook::Reference properties(outlook::kUserProperties, Item(*kind).GetProperty(L"UserProperties"));
    LogLine(L"obtained a new user properties item");
    if (!properties) {
        return fail(error::kNoUserProperties);
    }
    LogLine(L"user properties item is valid");
    if (!AddProperty(properties, name, type)) {
        return fail(error::kNoUserProperties, L"Unable to create custom property");
    }
    ReleaseItems();
    LogLine(L"created a new user property");
    return kSuccessText;
}

} // namespace varden
