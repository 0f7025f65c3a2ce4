// The user-defined fields of an item: what there is, and of which type.
#pragma once

#include "standin/mailbox/PropertyObject.h"

#include <span>

namespace standin::outlook {

/// A type of user-defined field.
struct FieldKind {
    std::int32_t number;            ///< OlUserPropertyType
    mailbox::PropertyType property; ///< of the property in which its value is; 0 for one that is worked out
    VARTYPE variant;                ///< of the value that scripts see
    std::uint32_t internalType;     ///< its number in definitions
};

/// Null for a type of which nobody can define fields.
const FieldKind* FindFieldKind(std::int32_t number);

struct FieldDefinition {
    std::wstring name;
    const FieldKind* kind = nullptr;
    std::wstring formula = {}, validationFormula = {}, validationText = {};
};

using FieldDefinitions = std::vector<FieldDefinition>;

/// The definitions that a message carries: PidLidPropertyDefinitionStream. None, for a stream that is
/// damaged.
FieldDefinitions ReadDefinitions(const mailbox::PropertyObject& message);
void WriteDefinitions(mailbox::PropertyObject& message, const FieldDefinitions& definitions);

/// The stream as bytes, in the form that Outlook's reference of item and field storage publishes as
/// "PropertyDefinition stream structure", version 0x0103.
mailbox::Bytes MakeDefinitionStream(const FieldDefinitions& definitions);
FieldDefinitions ParseDefinitionStream(std::span<const std::uint8_t> stream);

} // namespace standin::outlook
