// PropertyAccessor: reading, writing and removing properties by schema name, and its conversions.
#include "standin/outlook/objects/PropertyAccessor.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Message.h"
#include "standin/mapi/Bodies.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"
#include "standin/outlook/objects/PropertyValues.h"
#include "standin/outlook/objects/SchemaNames.h"

#include <algorithm>

namespace standin::outlook {
namespace {

std::unique_ptr<SchemaProperty> PropertyNamed(const std::wstring& name) {
    std::unique_ptr<SchemaProperty> property = ParseSchemaName(name);
    if (!property)
        throw Failure(E_INVALIDARG, L"The property \"" + name + L"\" is unknown or cannot be found.");
    return property;
}

/// The forms of a message's body keep each other company, see Bodies.h.
bool IsBodyOf(const mailbox::PropertyObject& object, mailbox::PropertyTag tag) {
    return mapi::IsBodyForm(tag) && dynamic_cast<const mailbox::MessageProperties*>(&object);
}

_variant_t Read(PropertyAccessorObject& accessor, const std::wstring& name) {
    const auto property = PropertyNamed(name);
    const mailbox::PropertyTag tag = TagOf(accessor.Properties(), property->stored);
    mailbox::Value value;
    const auto read = IsBodyOf(accessor.Properties(), tag) ? mapi::ReadBody(accessor.Properties(), tag, value)
                      : tag                                ? accessor.Properties().Read(tag, value)
                                                           : MAPI_E_NOT_FOUND;
    if (FAILED(read))
        throw Failure(MAPI_E_NOT_FOUND, L"The property \"" + name + L"\" is unknown or cannot be found.");
    return VariantOf(value);
}

void Write(PropertyAccessorObject& accessor, const std::wstring& name, const VARIANT& variant) {
    const auto property = PropertyNamed(name);
    const mailbox::PropertyType type = mailbox::TypeOf(property->stored.tag);
    std::optional<mailbox::Value> value;
    if (IsOfType(variant, type))
        value = ValueOf(variant, type);
    if (!value)
        throw Failure(DISP_E_TYPEMISMATCH, L"Cannot convert value to the requested data type.");
    if (IsBodyOf(accessor.Properties(), property->stored.tag))
        Check(mapi::WriteBody(accessor.Properties(), property->stored.tag, std::move(*value)));
    else
        WriteValue(accessor.Properties(), property->stored, std::move(*value));
    accessor.NoteChange();
}

/// Sets whose properties are Outlook's own.
constexpr const GUID* kOwnSets[] = {&kPsAppointment, &kPsTask,   &kPsAddress, &kPsCommon,  &kPsLog, &kPsNote,
                                    &kPsReport,      &kPsRemote, &kPsSharing, &kPsMeeting, &kPsMapi};

bool IsBuiltIn(const SchemaProperty& property) {
    return !property.stored.set ||
           std::ranges::any_of(kOwnSets, [&](const GUID* set) { return *set == property.set; });
}

void Erase(PropertyAccessorObject& accessor, const std::wstring& name) {
    const auto property = PropertyNamed(name);
    if (IsBuiltIn(*property))
        throw Failure(E_ACCESSDENIED);
    const mailbox::PropertyTag tag = TagOf(accessor.Properties(), property->stored);
    Check(tag ? accessor.Properties().Erase(tag) : MAPI_E_NOT_FOUND);
    accessor.NoteChange();
}

_variant_t GetProperty(PropertyAccessorObject& accessor, const Arguments& arguments) {
    return Read(accessor, arguments.Text(0));
}

void SetProperty(PropertyAccessorObject& accessor, const Arguments& arguments) {
    Write(accessor, arguments.Text(0), arguments[1]);
}

void DeleteProperty(PropertyAccessorObject& accessor, const Arguments& arguments) {
    Erase(accessor, arguments.Text(0));
}

/// The names of a call on several properties.
std::vector<std::wstring> Names(const Arguments& arguments) {
    auto names = TextsOfArray(arguments[0]);
    if (!names)
        throw InvalidValue();
    return std::move(*names);
}

/// Does something for each of several properties. One that fails doesn't stop the others: its status stands
/// in its place.
template <class F>
_variant_t ForEach(const std::vector<std::wstring>& names, F&& what) {
    std::vector<_variant_t> answers;
    for (std::size_t i = 0; i < names.size(); ++i) {
        try {
            answers.push_back(what(names[i], i));
        } catch (const Failure& failure) {
            answers.emplace_back(failure.status, VT_ERROR);
        }
    }
    return ArrayOf(std::move(answers));
}

_variant_t GetProperties(PropertyAccessorObject& accessor, const Arguments& arguments) {
    return ForEach(Names(arguments),
                   [&](const std::wstring& name, std::size_t) { return Read(accessor, name); });
}

_variant_t SetProperties(PropertyAccessorObject& accessor, const Arguments& arguments) {
    const std::vector<std::wstring> names = Names(arguments);
    const std::vector<_variant_t> values = ElementsOf(arguments[1]);
    if (names.size() != values.size())
        throw InvalidValue();
    return ForEach(names, [&](const std::wstring& name, std::size_t i) {
        Write(accessor, name, values[i]);
        return _variant_t();
    });
}

_variant_t DeleteProperties(PropertyAccessorObject& accessor, const Arguments& arguments) {
    return ForEach(Names(arguments), [&](const std::wstring& name, std::size_t) {
        Erase(accessor, name);
        return _variant_t();
    });
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

Date DateIn(const Arguments& arguments) {
    if (!HasTime(arguments.Days(0)))
        throw InvalidValue();
    return arguments.Days(0);
}

Date LocalTimeToUtc(PropertyAccessorObject&, const Arguments& arguments) {
    return UtcDate(TimeOfLocal(DateIn(arguments)));
}

Date UtcToLocalTime(PropertyAccessorObject&, const Arguments& arguments) {
    return LocalDate(TimeOfUtc(DateIn(arguments)));
}

constexpr Row kRows[] = {
    {L"BinaryToString", Get<BinaryToString>}, {L"DeleteProperties", Get<DeleteProperties>},
    {L"DeleteProperty", Get<DeleteProperty>}, {L"GetProperties", Get<GetProperties>},
    {L"GetProperty", Get<GetProperty>},       {L"LocalTimeToUTC", Get<LocalTimeToUtc>},
    {L"SetProperties", Get<SetProperties>},   {L"SetProperty", Get<SetProperty>},
    {L"StringToBinary", Get<StringToBinary>}, {L"UTCToLocalTime", Get<UtcToLocalTime>},
};

const Kind kKind{L"PropertyAccessor", 0x0006302D, 112, kRows};

} // namespace

PropertyAccessorObject::PropertyAccessorObject(ComPtr<Object> owner,
                                               std::shared_ptr<mailbox::PropertyObject> properties,
                                               std::function<void()> changed)
    : Object(kKind), m_owner(std::move(owner)), m_properties(std::move(properties)),
      m_changed(std::move(changed)) {
}

void PropertyAccessorObject::NoteChange() const {
    if (m_changed)
        m_changed();
}

} // namespace standin::outlook
