// How a property of a message shows as an item's property, and is written from it. One conversion serves the
// rows of every kind.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/outlook/automation/Row.h"

namespace standin::outlook {

/// Reads the value as the item shows it, also when the message hasn't got it. Writes a value that has the
/// member's type; raises E_INVALIDARG for one that the property can't take, and the model's refusals.
struct Conversion {
    _variant_t (*read)(const mailbox::MessageProperties& message, const StoredProperty& stored);
    void (*write)(mailbox::OpenMessage& message, const StoredProperty& stored, const Call& call);
};

extern const Conversion kText; ///< text; missing: empty
extern const Conversion
    kNumber;                   ///< PT_LONG; missing: the row's fallback; enumerations take their values only
extern const Conversion kFlag; ///< PT_BOOLEAN; missing: the row's fallback
extern const Conversion
    kTime; ///< PT_SYSTIME in UTC as local time; missing and 4501: no date, which removes it
extern const Conversion kAsStored;  ///< PT_SYSTIME as it stands: dates of tasks, properties in UTC; as kTime
extern const Conversion kSavedTime; ///< as kTime; a message that a store never saved has no date
extern const Conversion kSavedNumber; ///< as kNumber; a message that a store never saved has the fallback
extern const Conversion kHex;         ///< PT_BINARY as hexadecimal text; missing: empty
extern const Conversion kKeywords;    ///< PT_MV_UNICODE as text with ", " between
extern const Conversion kNames;       ///< PT_MV_UNICODE as text with "; " between: names have commas in them
extern const Conversion kPercent;     ///< PT_DOUBLE from 0 to 1 as whole percents
extern const Conversion kBody;        ///< the body as plain text, whatever form it is kept in
extern const Conversion kUnread;      ///< the read flag, turned round

/// The tag of a row's property in the message's store. 0: a named property that the store has no id for; with
/// `create` it gets one.
mailbox::PropertyTag TagOf(const mailbox::PropertyObject& object, const StoredProperty& stored,
                           bool create = false);

/// The value of a row's property as it is stored; nothing if the message hasn't got it with the row's type.
std::optional<mailbox::Value> ReadValue(const mailbox::PropertyObject& object, const StoredProperty& stored);
/// Writes it. Raises what the model refuses.
void WriteValue(mailbox::PropertyObject& object, const StoredProperty& stored, mailbox::Value value);
/// Removes it, if it is there.
void RemoveValue(mailbox::PropertyObject& object, const StoredProperty& stored);

/// The value as its type, or nothing.
template <class T>
std::optional<T> ReadAs(const mailbox::PropertyObject& object, const StoredProperty& stored) {
    std::optional<mailbox::Value> value = ReadValue(object, stored);
    T* native = value ? std::get_if<T>(&*value) : nullptr;
    return native ? std::optional<T>(std::move(*native)) : std::nullopt;
}

/// The text of a row's property; empty if the message hasn't got it.
inline std::wstring StoredText(const mailbox::PropertyObject& object, const StoredProperty& stored) {
    return ReadAs<std::wstring>(object, stored).value_or(L"");
}

/// Times of the model, UTC, as automation dates and back, by whole seconds as Outlook does it: cut off one
/// way, rounded the other. Local time by the rules of the present time zone; 4501 is no date in any.
/// A date that a time can't hold (see HasTime) gives the nearest that it can.
Date LocalDate(mailbox::SysTime time);
Date UtcDate(mailbox::SysTime time);
mailbox::SysTime TimeOfLocal(Date date);
mailbox::SysTime TimeOfUtc(Date date);
/// Whether there is a time for the date: the years 1601 to 9999.
bool HasTime(Date date);

/// A date of a client's as Outlook takes it: 1 April 1601 to 31 August 4500, or kNoDate. Raises E_INVALIDARG
/// for any other.
Date CheckedDate(Date date);
/// The same for the value of a property.
inline Date GivenDate(const Arguments& value) {
    return CheckedDate(value.Days(0));
}

/// "a, b; c" as its parts, without blanks around them and without empty ones.
std::vector<std::wstring> SplitKeywords(std::wstring_view text);
std::wstring JoinKeywords(const std::vector<std::wstring>& keywords);

} // namespace standin::outlook
