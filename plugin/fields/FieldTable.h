// The form of a field vocabulary: a table of names, and by which conversion each is read and written. A table
// stands in the source of its kind of item and can be held against the documentation row by row.
#pragma once

#include "Conversions.h"
#include "outlook/Reference.h"

#include <mapidefs.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace varden {

class COutlookFuncs;
struct FieldRow;

/// What a field call works on.
struct FieldContext {
    COutlookFuncs& engine;
    const outlook::Reference& item; ///< the record, or its open occurrence; none for a field of every kind
    IMessage* message;              ///< the MAPI view of the same; null where it has none
};

/// Reads a field that no common conversion fits. Gives its text, or "!!ERROR!!" with the last error set.
using FieldGetter = std::wstring (*)(const FieldContext& context, const FieldRow& row);
/// Writes such a field. False with the last error set when the value is refused.
using FieldSetter = bool (*)(const FieldContext& context, const FieldRow& row, const std::wstring& data);

enum class GetBy : std::uint8_t {
    UnknownName,
    Text,
    Date,
    DateBlank,
    Boolean,
    Integer,
    Words,
    MapiText,
    MapiBinary,
    MapiOne,
    MapiTime,
    Named,
    Special,
};

struct FieldGet {
    GetBy conversion = GetBy::UnknownName;
    const wchar_t* member =
        nullptr;   ///< of the object model; for Named, the catalogue's name if it isn't the field's
    ULONG tag = 0; ///< for the MAPI conversions; 0: the catalogue's
    const EnumWords* words = nullptr;
    FieldGetter special = nullptr;
};

enum class SetBy : std::uint8_t {
    UnknownName,
    Refused,
    Text,
    Date,
    FlagT,
    Long,
    Choice,
    Special,
};

struct FieldSet {
    SetBy conversion = SetBy::UnknownName;
    const wchar_t* member = nullptr;
    const EnumChoice* choice = nullptr;
    FieldSetter special = nullptr;
    std::int32_t refusal = 0; ///< the error code of a refused name
};

struct FieldRow {
    std::wstring_view name;
    FieldGet get;
    FieldSet set = {};
    bool isWrittenInAnyCase = false; ///< the setter compares the name without regard to case
    bool isReadInAnyCase = false;    ///< the getter does
};

/// The readings, by the words of the documentation.
namespace get {

/// The string property as it stands.
constexpr FieldGet text(const wchar_t* member) {
    return {.conversion = GetBy::Text, .member = member};
}
/// The date property; "None" for the no-date value.
constexpr FieldGet date(const wchar_t* member) {
    return {.conversion = GetBy::Date, .member = member};
}
/// The date property; empty for the no-date value.
constexpr FieldGet dateBlank(const wchar_t* member) {
    return {.conversion = GetBy::DateBlank, .member = member};
}
/// "True" or "False".
constexpr FieldGet boolean(const wchar_t* member) {
    return {.conversion = GetBy::Boolean, .member = member};
}
/// The long property in decimal.
constexpr FieldGet integer(const wchar_t* member) {
    return {.conversion = GetBy::Integer, .member = member};
}
/// The word for the long property.
constexpr FieldGet words(const wchar_t* member, const EnumWords& words) {
    return {.conversion = GetBy::Words, .member = member, .words = &words};
}
/// A long text through MAPI; a failure is an error.
constexpr FieldGet mapiText(ULONG tag) {
    return {.conversion = GetBy::MapiText, .tag = tag};
}
/// A blob through MAPI: RTF and HTML as the texts that they are, any other hexadecimal. A failure is an
/// error.
constexpr FieldGet mapiBinary(ULONG tag) {
    return {.conversion = GetBy::MapiBinary, .tag = tag};
}
/// One property through MAPI, taken as a text whatever it is; a failure is the empty text.
constexpr FieldGet mapiOne(ULONG tag) {
    return {.conversion = GetBy::MapiOne, .tag = tag};
}
/// A time through MAPI; a failure is the empty text. Without a tag, the catalogue's for the field.
constexpr FieldGet mapiTime(ULONG tag = 0) {
    return {.conversion = GetBy::MapiTime, .tag = tag};
}
/// As mapiOne, by the catalogue's tag for the field or for `name`; a name that can't be resolved is the empty
/// text.
constexpr FieldGet named(const wchar_t* name = nullptr) {
    return {.conversion = GetBy::Named, .member = name};
}
constexpr FieldGet special(FieldGetter getter) {
    return {.conversion = GetBy::Special, .special = getter};
}
inline constexpr FieldGet unknownName{};

} // namespace get

/// The writings, by the words of the documentation.
namespace set {

/// The data as it stands.
constexpr FieldSet text(const wchar_t* member) {
    return {.conversion = SetBy::Text, .member = member};
}
/// A date; empty and "None" store the no-date value.
constexpr FieldSet date(const wchar_t* member) {
    return {.conversion = SetBy::Date, .member = member};
}
/// True when the data begins with a capital T.
constexpr FieldSet flagT(const wchar_t* member) {
    return {.conversion = SetBy::FlagT, .member = member};
}
/// The number that the data begins with.
constexpr FieldSet number(const wchar_t* member) {
    return {.conversion = SetBy::Long, .member = member};
}
/// The number that a letter or word of the data picks.
constexpr FieldSet choice(const wchar_t* member, const EnumChoice& choice) {
    return {.conversion = SetBy::Choice, .member = member, .choice = &choice};
}
/// A name that is known and can't be written here, with the error code that says so.
constexpr FieldSet refused(std::int32_t code) {
    return {.conversion = SetBy::Refused, .refusal = code};
}
/// `member` is for the setter's use.
constexpr FieldSet special(FieldSetter setter, const wchar_t* member = nullptr) {
    return {.conversion = SetBy::Special, .member = member, .special = setter};
}
inline constexpr FieldSet unknownName{};
/// One of the names that are refused for every kind of item before its vocabulary is looked at.
inline constexpr FieldSet readOnly{};

} // namespace set

/// The fields of one kind of item.
struct Vocabulary {
    const wchar_t* getterName;           ///< in the log
    const wchar_t* setterName = nullptr; ///< in the log; null for a setter that doesn't log
    std::span<const FieldRow> fields;
    bool hasToDoFields = false;    ///< the to-do family belongs to the kind
    bool cutsLineFeeds = false;    ///< the getter takes every line feed out of its result
    bool usesItemsMessage = false; ///< the item's own message is taken anew, since it may be an occurrence's
    bool ignoresBlanks = false;    ///< blanks are taken out of a name before it is looked for
    bool tellsFields = false;      ///< the setter logs the name of the field that it sets
};

/// The fields that are read through MAPI whatever the kind of record: only the recipients', "To", "Cc" and
/// "Bcc", aren't read on a task, a note or a contact. The one that is written is "Contacts", on the kinds
/// that have linked contacts.
std::span<const FieldRow> CommonFields();

/// The text of the field, or "!!ERROR!!" with the last error set: -1022 for a name that the kind can't read.
std::wstring ReadField(const Vocabulary& vocabulary, const std::wstring& name, const FieldContext& context);

/// The text of a row, which may belong to no kind.
std::wstring ReadRow(const FieldRow& row, const FieldContext& context);

/// The catalogue's tag for a name on the context's message; none for one that can't be resolved, or where
/// there is no message.
std::optional<ULONG> CatalogueTag(std::wstring_view name, const FieldContext& context);

/// Writes the names of linked contacts.
bool SetLinkedContacts(const FieldContext& context, const FieldRow& row, const std::wstring& data);

/// Records the failure; false, as a setter answers.
bool Refuse(std::int32_t code, std::wstring_view detail = L"");

/// Writes the field. False with the last error set: -1022 for a name that the kind can't write, -1089 for a
/// value that is refused.
bool WriteField(const Vocabulary& vocabulary, const std::wstring& name, const std::wstring& data,
                const FieldContext& context);

} // namespace varden
