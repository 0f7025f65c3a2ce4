// Between the model's values and MAPI's SPropValue.
#pragma once

#include "standin/mailbox/Property.h"

#include <span>

namespace standin::mapi {

/// The bytes that a value needs beside its SPropValue.
std::size_t RoomFor(const mailbox::Value& value);
/// Values that need more than this are to be had as streams only: GetProps and tables answer
/// MAPI_E_NOT_ENOUGH_MEMORY in their place, as Exchange does.
inline constexpr std::size_t kLargestValue = 32 * 1024;
/// Lays a value out as an SPropValue; `room` is where its data goes, and is moved on behind them. A
/// NullPointer becomes just that: a null pointer with its count.
void LayOut(const mailbox::Property& property, SPropValue& target, std::byte*& room);

/// The properties as one MAPI buffer; null for none.
SPropValue* NewPropArray(std::span<const mailbox::Property> properties);
/// Tags as one MAPI buffer.
SPropTagArray* NewTagArray(std::span<const mailbox::PropertyTag> tags);
/// Text as part of another MAPI buffer, or as its own for a null `root`: wide, or in the ANSI code page.
LPTSTR NewText(std::wstring_view text, bool wide, void* root);
/// An entry id as a MAPI buffer.
void GiveEntryId(const mailbox::Bytes& entryId, ULONG* size, ENTRYID** buffer);
/// Problems as one MAPI buffer; null for none.
SPropProblemArray* NewProblems(std::span<const SPropProblem> problems);

/// The value that a caller handed over. MAPI_E_INVALID_PARAMETER: a null pointer where data should be.
/// MAPI_E_INVALID_TYPE: no property type.
HRESULT TakeValue(const SPropValue& property, mailbox::Value& value);

/// Whether this is a property type of [MS-OXCDATA] 2.11.1 that MAPI takes in a tag, PT_UNSPECIFIED included.
bool IsPropertyType(mailbox::PropertyType type);
/// The tag with text of the other width, where it is text: `wide` for PT_UNICODE.
mailbox::PropertyTag WithTextWidth(mailbox::PropertyTag tag, bool wide);
std::span<const ULONG> TagsOf(const SPropTagArray& tags);
/// Bytes by count and pointer; nothing for a null pointer.
std::span<const std::uint8_t> BytesAt(ULONG size, const void* data);
/// Text of a LPTSTR parameter, whose width a flag decides. Empty for null.
std::wstring TextAt(const void* text, bool wide);

} // namespace standin::mapi
