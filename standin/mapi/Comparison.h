// The order of property values, and text within text: what restrictions and sort orders rest on.
#pragma once

#include "standin/mailbox/Property.h"

#include <compare>
#include <optional>

namespace standin::mapi {

/// The order of two values of one type. Text is compared without regard to case, as Exchange does it; binary
/// byte by byte, the shorter first. Nothing for values that can't be compared.
std::optional<std::weak_ordering> Compare(const mailbox::Value& left, const mailbox::Value& right);

/// RELOP_LT to RELOP_NE.
bool IsComparison(ULONG relation);
/// Whether the relation holds. Values that can't be compared stand in no relation.
bool Holds(ULONG relation, const mailbox::Value& left, const mailbox::Value& right);

/// RES_CONTENT: whether text or binary holds a pattern at a FL_ level. `value` may be multi-valued: any of
/// its entries will do.
bool HoldsContent(ULONG fuzzyLevel, const mailbox::Value& value, const mailbox::Value& pattern);
/// Whether any entry of a multi-valued property stands in a relation to a single value.
bool AnyHolds(ULONG relation, const mailbox::Value& values, const mailbox::Value& single);

/// The size of a value as RES_SIZE and UlPropSize count it: fixed types by their size, text with its NUL,
/// multi-valued properties by the data of their entries.
std::size_t PropertySize(const mailbox::Value& value);

} // namespace standin::mapi
