// The conversions between properties of messages and of items.
#include "standin/outlook/items/Conversions.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mapi/Bodies.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/items/People.h"
#include "standin/outlook/items/PropertySets.h"

#include <cmath>

namespace standin::outlook {
namespace {

using mailbox::MessageProperties;
using mailbox::OpenMessage;
using mailbox::SysTime;
using mailbox::Value;

_variant_t ReadText(const MessageProperties& message, const StoredProperty& stored) {
    return Result(ReadAs<std::wstring>(message, stored).value_or(L""));
}

void WriteText(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    WriteValue(message, stored, call.arguments.Text(0));
}

_variant_t ReadNumber(const MessageProperties& message, const StoredProperty& stored) {
    return Result(ReadAs<std::int32_t>(message, stored).value_or(stored.fallback));
}

void WriteNumber(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    const std::int32_t number = call.arguments.Number(0);
    if (!ObjectModel::Get().HasValue(call.member.type.of, number))
        throw InvalidValue();
    WriteValue(message, stored, number);
}

_variant_t ReadFlag(const MessageProperties& message, const StoredProperty& stored) {
    return Result(ReadAs<bool>(message, stored).value_or(stored.fallback != 0));
}

void WriteFlag(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    WriteValue(message, stored, call.arguments.Flag(0));
}

template <Date (*convert)(SysTime)>
_variant_t ReadTime(const MessageProperties& message, const StoredProperty& stored) {
    const std::optional<SysTime> time = ReadAs<SysTime>(message, stored);
    return Result(time ? convert(*time) : kNoDate);
}

template <SysTime (*convert)(Date)>
void WriteTime(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    const Date date = GivenDate(call.arguments);
    if (date == kNoDate)
        return RemoveValue(message, stored);
    WriteValue(message, stored, convert(date));
}

bool IsUnsaved(const MessageProperties& message) {
    return message.IsInStore() && !message.SavedMessage();
}

_variant_t ReadSavedTime(const MessageProperties& message, const StoredProperty& stored) {
    return IsUnsaved(message) ? Result(kNoDate) : ReadTime<LocalDate>(message, stored);
}

_variant_t ReadSavedNumber(const MessageProperties& message, const StoredProperty& stored) {
    return IsUnsaved(message) ? Result(stored.fallback) : ReadNumber(message, stored);
}

_variant_t ReadHex(const MessageProperties& message, const StoredProperty& stored) {
    const auto bytes = ReadAs<mailbox::Bytes>(message, stored);
    return Result(bytes ? mailbox::ToHex(*bytes) : std::wstring());
}

_variant_t ReadKeywords(const MessageProperties& message, const StoredProperty& stored) {
    return Result(JoinKeywords(
        ReadAs<std::vector<std::wstring>>(message, stored).value_or(std::vector<std::wstring>())));
}

void WriteKeywords(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    std::vector<std::wstring> keywords = SplitKeywords(call.arguments.Text(0));
    if (keywords.empty())
        return RemoveValue(message, stored);
    WriteValue(message, stored, std::move(keywords));
}

_variant_t ReadNames(const MessageProperties& message, const StoredProperty& stored) {
    std::wstring text;
    for (const std::wstring& name :
         ReadAs<std::vector<std::wstring>>(message, stored).value_or(std::vector<std::wstring>()))
        text += (text.empty() ? L"" : L"; ") + name;
    return Result(text);
}

void WriteNames(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    std::vector<std::wstring> names = SplitNames(call.arguments.Text(0));
    if (names.empty())
        return RemoveValue(message, stored);
    WriteValue(message, stored, std::move(names));
}

_variant_t ReadPercent(const MessageProperties& message, const StoredProperty& stored) {
    return Result(static_cast<std::int32_t>(std::lround(ReadAs<double>(message, stored).value_or(0) * 100)));
}

void WritePercent(OpenMessage& message, const StoredProperty& stored, const Call& call) {
    const std::int32_t percent = call.arguments.Number(0);
    if (percent < 0 || percent > 100)
        throw InvalidValue();
    WriteValue(message, stored, percent / 100.0);
}

_variant_t ReadBody(const MessageProperties& message, const StoredProperty&) {
    Value value;
    const std::wstring* text =
        SUCCEEDED(mapi::ReadBody(message, PR_BODY_W, value)) ? std::get_if<std::wstring>(&value) : nullptr;
    return Result(text ? *text : std::wstring());
}

void WriteBody(OpenMessage& message, const StoredProperty&, const Call& call) {
    Check(mapi::WriteBody(message, PR_BODY_W, call.arguments.Text(0)));
}

_variant_t ReadUnread(const MessageProperties& message, const StoredProperty&) {
    constexpr std::int32_t kRead = MSGFLAG_READ;
    return Result((message.Get<PR_MESSAGE_FLAGS>().value_or(kRead) & kRead) == 0);
}

void WriteUnread(OpenMessage& message, const StoredProperty&, const Call& call) {
    Check(message.SetRead(!call.arguments.Flag(0)));
}

} // namespace

const Conversion kText{ReadText, WriteText};
const Conversion kNumber{ReadNumber, WriteNumber};
const Conversion kFlag{ReadFlag, WriteFlag};
const Conversion kTime{ReadTime<LocalDate>, WriteTime<TimeOfLocal>};
const Conversion kAsStored{ReadTime<UtcDate>, WriteTime<TimeOfUtc>};
const Conversion kSavedTime{ReadSavedTime, nullptr};
const Conversion kSavedNumber{ReadSavedNumber, nullptr};
const Conversion kHex{ReadHex, nullptr};
const Conversion kKeywords{ReadKeywords, WriteKeywords};
const Conversion kNames{ReadNames, WriteNames};
const Conversion kPercent{ReadPercent, WritePercent};
const Conversion kBody{ReadBody, WriteBody};
const Conversion kUnread{ReadUnread, WriteUnread};

mailbox::PropertyTag TagOf(const mailbox::PropertyObject& object, const StoredProperty& stored, bool create) {
    if (!stored.set)
        return stored.tag;
    mailbox::PropertyName name{*stored.set, stored.number};
    if (stored.name)
        name.id = stored.name;
    const mailbox::PropertyId id = object.Names().Id(name, create);
    return id ? mailbox::MakeTag(id, mailbox::TypeOf(stored.tag)) : 0;
}

std::optional<Value> ReadValue(const mailbox::PropertyObject& object, const StoredProperty& stored) {
    const mailbox::PropertyTag tag = TagOf(object, stored);
    Value value;
    if (!tag || FAILED(object.Read(tag, value)))
        return std::nullopt;
    return value;
}

void WriteValue(mailbox::PropertyObject& object, const StoredProperty& stored, Value value) {
    const mailbox::PropertyTag tag = TagOf(object, stored, true);
    if (!tag)
        throw Failure(E_OUTOFMEMORY); // all ids for names are given away
    Check(object.Write(tag, std::move(value)));
}

void RemoveValue(mailbox::PropertyObject& object, const StoredProperty& stored) {
    const mailbox::PropertyTag tag = TagOf(object, stored);
    const HRESULT status = tag ? object.Erase(tag) : S_OK;
    if (status != MAPI_E_NOT_FOUND)
        Check(status);
}

} // namespace standin::outlook
