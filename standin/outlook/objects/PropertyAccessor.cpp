// PropertyAccessor: reading, writing and removing properties by schema name, and its conversions.
#include "standin/outlook/objects/PropertyAccessor.h"

#include "standin/mailbox/EntryId.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/objects/PropertyValues.h"
#include "standin/outlook/objects/SchemaNames.h"

namespace standin::outlook {
namespace {

std::unique_ptr<SchemaProperty> PropertyNamed(const std::wstring& name) {
    std::unique_ptr<SchemaProperty> property = ParseSchemaName(name);
    if (!property)
        throw Failure(E_INVALIDARG, L"The property \"" + name + L"\" is unknown or cannot be found.");
    return property;
}

_variant_t GetProperty(PropertyAccessorObject& accessor, const Arguments& arguments) {
    const std::wstring name = arguments.Text(0);
    const auto value = ReadValue(accessor.Properties(), PropertyNamed(name)->stored);
    if (!value)
        throw Failure(MAPI_E_NOT_FOUND, L"The property \"" + name + L"\" is unknown or cannot be found.");
    return VariantOf(*value);
}

void SetProperty(PropertyAccessorObject& accessor, const Arguments& arguments) {
    const auto property = PropertyNamed(arguments.Text(0));
    std::optional<mailbox::Value> value = ValueOf(arguments[1], mailbox::TypeOf(property->stored.tag));
    if (!value)
        throw Failure(DISP_E_TYPEMISMATCH, L"Cannot convert value to the requested data type.");
    WriteValue(accessor.Properties(), property->stored, std::move(*value));
}

void DeleteProperty(PropertyAccessorObject& accessor, const Arguments& arguments) {
    const auto property = PropertyNamed(arguments.Text(0));
    const mailbox::PropertyTag tag = TagOf(accessor.Properties(), property->stored);
    Check(tag ? accessor.Properties().Erase(tag) : MAPI_E_NOT_FOUND);
}

std::wstring BinaryToString(PropertyAccessorObject&, const Arguments& arguments) {
    const std::optional<mailbox::Bytes> bytes = BytesOfArray(arguments[0]);
    if (!bytes)
        throw InvalidValue();
    return mailbox::ToHex(*bytes);
}

_variant_t StringToBinary(PropertyAccessorObject&, const Arguments& arguments) {
    const std::optional<mailbox::Bytes> bytes = mailbox::FromHex(arguments.Text(0));
    if (!bytes)
        throw InvalidValue();
    return ByteArray(*bytes);
}

Date LocalTimeToUtc(PropertyAccessorObject&, const Arguments& arguments) {
    return UtcDate(TimeOfLocal(arguments.Days(0)));
}

Date UtcToLocalTime(PropertyAccessorObject&, const Arguments& arguments) {
    return LocalDate(TimeOfUtc(arguments.Days(0)));
}

constexpr Row kRows[] = {
    {L"BinaryToString", Get<BinaryToString>}, {L"DeleteProperty", Get<DeleteProperty>},
    {L"GetProperty", Get<GetProperty>},       {L"LocalTimeToUTC", Get<LocalTimeToUtc>},
    {L"SetProperty", Get<SetProperty>},       {L"StringToBinary", Get<StringToBinary>},
    {L"UTCToLocalTime", Get<UtcToLocalTime>},
};

const Kind kKind{L"PropertyAccessor", 0x0006302D, 112, kRows};

} // namespace

PropertyAccessorObject::PropertyAccessorObject(ComPtr<Object> owner,
                                               std::shared_ptr<mailbox::PropertyObject> properties)
    : Object(kKind), m_owner(std::move(owner)), m_properties(std::move(properties)) {
}

} // namespace standin::outlook
