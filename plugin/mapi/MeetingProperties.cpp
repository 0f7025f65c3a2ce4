// The tables of meeting messages ([MS-OXOCAL] names the properties by these numbers).
#include "MeetingProperties.h"

#include "Diagnostics.h"
#include "NamedTags.h"
#include "PropertySets.h"
#include "Tags.h"

#include "fields/Conversions.h"
#include "frame/PlugInLog.h"

#include <array>
#include <optional>
#include <string>

namespace varden::mapi {

namespace {

constexpr NumberedName M(LONG id) {
    return {&propertyset::kMeeting, id};
}
constexpr NumberedName A(LONG id) {
    return {&propertyset::kAppointment, id};
}
constexpr NumberedName C(LONG id) {
    return {&propertyset::kCommon, id};
}
constexpr NumberedName K(LONG id) {
    return {&propertyset::kCalendarAssistant, id};
}

/// Where the value of a property comes from.
enum class ValueFrom : std::uint8_t {
    False,        ///< boolean false
    Zero,         ///< long 0
    ShortZero,    ///< 16-bit 0
    Constant,     ///< a long
    TimeProperty, ///< a time of the old message, or the fallback
    TextProperty, ///< a text of the old message; nothing without one
    OldLong,      ///< the old message's own value as a long, or the constant
    OldBoolean,   ///< its own, or false
    OldBinary,    ///< its own, or an empty one
    OldText,      ///< its own, or empty
    OldAsTime,    ///< its own, relabelled as a time; long 0 when missing
    OneMore,      ///< its own long plus 1; 1 when missing
    Now,          ///< the present time
    OldLocation,  ///< the text of the row before it
    None,         ///< no value is made
};

struct ValueRow {
    NumberedName name;
    ValueFrom from;
    ULONG tag = 0; ///< of the property that the value is taken from
    long constant = 0;
};

constexpr ULONG kLastModification = 0x30080040;

constexpr std::array kPreparedValues{
    ValueRow{M(26), ValueFrom::TimeProperty, kLastModification},
    ValueRow{M(28), ValueFrom::Zero},
    ValueRow{M(24), ValueFrom::ShortZero},
    ValueRow{M(25), ValueFrom::ShortZero},
    ValueRow{M(17), ValueFrom::ShortZero},
    ValueRow{M(18), ValueFrom::ShortZero},
    ValueRow{M(19), ValueFrom::ShortZero},
    ValueRow{M(20), ValueFrom::ShortZero},
    ValueRow{M(9), ValueFrom::False},
    ValueRow{M(4), ValueFrom::False},
    ValueRow{M(5), ValueFrom::False},
    ValueRow{M(10), ValueFrom::False},
    ValueRow{M(23), ValueFrom::Zero},
    ValueRow{M(22), ValueFrom::Zero},
    ValueRow{M(21), ValueFrom::Zero},
    ValueRow{M(15), ValueFrom::Zero},
    ValueRow{M(16), ValueFrom::Zero},
    ValueRow{M(12), ValueFrom::Zero},
    ValueRow{M(13), ValueFrom::Zero},
    ValueRow{M(14), ValueFrom::Zero},
    ValueRow{M(36), ValueFrom::TextProperty, tag::kMessageClass},
    ValueRow{A(33297), ValueFrom::TimeProperty, tag::kEndDate},
    ValueRow{A(33296), ValueFrom::TimeProperty, tag::kEndDate},
    ValueRow{A(33298), ValueFrom::TimeProperty, tag::kStartDate},
    ValueRow{A(33295), ValueFrom::TimeProperty, tag::kStartDate},
    ValueRow{A(33334), ValueFrom::TimeProperty, tag::kStartDate},
    ValueRow{A(33333), ValueFrom::TimeProperty, tag::kEndDate},
    ValueRow{A(33303), ValueFrom::OldAsTime},
    ValueRow{A(33348), ValueFrom::False},
    ValueRow{A(33283), ValueFrom::OneMore},
    ValueRow{C(33339), ValueFrom::TextProperty, tag::kDisplayTo},
    ValueRow{C(33340), ValueFrom::TextProperty, tag::kDisplayCc},
};

constexpr std::array kCalendarEntryValues{
    ValueRow{M(3), ValueFrom::OldBinary},
    ValueRow{M(35), ValueFrom::OldBinary},
    ValueRow{A(33312), ValueFrom::Now},
    ValueRow{A(33285), ValueFrom::Constant, 0, 2},
    ValueRow{A(33304), ValueFrom::Constant, 0, 3},
};

constexpr std::array kResponseValues{
    ValueRow{M(3), ValueFrom::OldBinary},
    ValueRow{M(5), ValueFrom::OldBoolean},
    ValueRow{M(9), ValueFrom::None},
    ValueRow{M(10), ValueFrom::OldBoolean},
    ValueRow{K(21), ValueFrom::OldLong, 0, 0},
    ValueRow{M(26), ValueFrom::TimeProperty, kLastModification},
    ValueRow{M(35), ValueFrom::OldBinary},
    ValueRow{M(36), ValueFrom::TextProperty, tag::kMessageClass},
    ValueRow{A(33281), ValueFrom::OldLong, 0, 0},
    ValueRow{A(33285), ValueFrom::OldLong, 0, -1},
    ValueRow{A(33287), ValueFrom::Zero},
    ValueRow{A(33288), ValueFrom::OldText},
    ValueRow{M(2), ValueFrom::OldLocation},
    ValueRow{A(33293), ValueFrom::TimeProperty, tag::kStartDate},
    ValueRow{A(33294), ValueFrom::TimeProperty, tag::kEndDate},
    ValueRow{A(33303), ValueFrom::Zero},
    ValueRow{C(34070), ValueFrom::TimeProperty, tag::kStartDate},
    ValueRow{C(34071), ValueFrom::TimeProperty, tag::kEndDate},
};

/// The row of kResponseValues that tells whether there is a recurrence to copy.
constexpr std::size_t kIsRecurringRow = 1;

struct TypedName {
    NumberedName name;
    ULONG type;
};

constexpr std::array kRecurrenceNames{
    TypedName{A(33331), PT_BINARY}, TypedName{A(33302), PT_BINARY}, TypedName{A(33376), PT_BINARY},
    TypedName{M(5), PT_BOOLEAN},    TypedName{M(12), PT_LONG},      TypedName{A(33332), PT_UNICODE},
};

/// The change-tracking properties of a former version, which a first request must not carry.
constexpr std::array kFirstRequestExclusions{
    TypedName{A(33282), PT_SYSTIME}, TypedName{M(4), PT_BOOLEAN},  TypedName{M(6), PT_UNICODE},
    TypedName{M(7), PT_UNICODE},     TypedName{M(8), PT_UNICODE},  TypedName{M(9), PT_BOOLEAN},
    TypedName{M(11), PT_BOOLEAN},    TypedName{M(12), PT_LONG},    TypedName{M(28), PT_LONG},
    TypedName{M(13), PT_LONG},       TypedName{M(14), PT_LONG},    TypedName{M(15), PT_LONG},
    TypedName{M(16), PT_LONG},       TypedName{M(17), PT_I2},      TypedName{M(18), PT_I2},
    TypedName{M(19), PT_I2},         TypedName{M(20), PT_I2},      TypedName{M(21), PT_LONG},
    TypedName{M(22), PT_LONG},       TypedName{M(23), PT_LONG},    TypedName{M(24), PT_I2},
    TypedName{M(25), PT_I2},         TypedName{M(29), PT_UNICODE}, TypedName{C(34070), PT_SYSTIME},
    TypedName{C(34071), PT_SYSTIME},
};

/// What no message that is sent takes over: the recipient table, who sent the appointment, its icon and last
/// verb.
constexpr std::array<ULONG, 11> kExclusions{0x0E12000D, 0x0C1E001F, 0x0C1F001F, 0x0C190102,
                                            0x0C1A001F, 0x0C1D0102, 0x003B0102, 0x0C17000B,
                                            0x10800003, 0x10810003, 0x10820040};

/// A property value with what its pointers point at.
class OwnedValue {
public:
    /// Takes the value of the property; whether it could be read.
    bool Read(IMessage& message, ULONG readTag) { return SUCCEEDED(TryRead(message, readTag)); }
    HRESULT TryRead(IMessage& message, ULONG readTag) { return GetOneProp(&message, readTag, m_block.Out()); }
    SPropValue& Make(ULONG type) {
        m_block = AllocateBlock<SPropValue>();
        m_block->ulPropTag = type;
        return *m_block;
    }
    SPropValue& operator*() const { return *m_block; }
    SPropValue* operator->() const { return m_block.get(); }
    ULONG Type() const { return PROP_TYPE(m_block->ulPropTag); }

    void SetLong(long number) { Make(PT_LONG).Value.l = number; }
    void SetTime(const FILETIME& time) { Make(PT_SYSTIME).Value.ft = time; }
    void SetEmptyText() { Make(PT_UNICODE).Value.lpszW = const_cast<LPWSTR>(L""); }

private:
    Block<SPropValue> m_block;
};

FILETIME Now() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return now;
}

/// The value of a row; none for a row that has none. `ownTag` is the row's own tag on the old message,
/// `before` that of the row before it.
std::optional<OwnedValue> MakeValue(const ValueRow& row, IMessage& old, ULONG ownTag, ULONG before) {
    OwnedValue value;
    switch (row.from) {
    case ValueFrom::False:
        value.Make(PT_BOOLEAN).Value.b = FALSE;
        break;
    case ValueFrom::Zero:
        value.SetLong(0);
        break;
    case ValueFrom::ShortZero:
        value.Make(PT_I2).Value.i = 0;
        break;
    case ValueFrom::Constant:
        value.SetLong(row.constant);
        break;
    case ValueFrom::TimeProperty:
        if (!value.Read(old, row.tag)) {
            value.SetTime(kNoTime);
        }
        break;
    case ValueFrom::Now:
        value.SetTime(Now());
        break;
    case ValueFrom::TextProperty:
        if (const HRESULT status = value.TryRead(old, row.tag); FAILED(status)) {
            LogLine(mapi_HResultName(status));
            return std::nullopt;
        }
        break;
    case ValueFrom::OldLong:
        if (!value.Read(old, ownTag) || value.Type() != PT_LONG) {
            value.SetLong(row.constant);
        }
        break;
    case ValueFrom::OldBoolean:
        if (!value.Read(old, ownTag) || value.Type() != PT_BOOLEAN) {
            value.Make(PT_BOOLEAN).Value.b = FALSE;
        }
        break;
    case ValueFrom::OldBinary:
        if (!value.Read(old, ownTag) || value.Type() != PT_BINARY) {
            value.Make(PT_BINARY);
        }
        break;
    case ValueFrom::OldText:
    case ValueFrom::OldLocation: {
        const ULONG textTag = row.from == ValueFrom::OldText ? ownTag : before;
        if (!value.Read(old, CHANGE_PROP_TYPE(textTag, PT_UNICODE))) { // untyped it comes in the code page
            value.SetEmptyText();
        }
        break;
    }
    case ValueFrom::OldAsTime:
        if (value.Read(old, ownTag)) {
            if (value.Type() == PT_LONG) {
                value->Value.ft.dwHighDateTime = 0; // the time's other half, which a long hasn't got
            }
            value->ulPropTag = PT_SYSTIME; // a wrong label that is kept
        } else {
            value.SetLong(0);
        }
        break;
    case ValueFrom::OneMore:
        value.SetLong(value.Read(old, ownTag) && value.Type() == PT_LONG ? value->Value.l + 1 : 1);
        break;
    default:
        return std::nullopt;
    }
    return value;
}

/// The values of rows; none for a row that has none.
template <std::size_t Count>
using Values = std::array<std::optional<OwnedValue>, Count>;

/// Writes the rows' values to `target`, made from `old`, under the tags that the names have on each. Gives
/// the values; none at all when a look-up fails.
template <std::size_t Count>
Values<Count> WriteRows(const std::array<ValueRow, Count>& rows, IMessage& old, IMessage& target) {
    std::array<NumberedName, Count> names;
    std::ranges::transform(rows, names.begin(), &ValueRow::name);
    const std::vector<ULONG> oldTags = FindTags(names, old);
    const std::vector<ULONG> targetTags = &old == &target ? oldTags : FindTags(names, target);
    Values<Count> values;
    if (oldTags.size() != Count || targetTags.size() != Count) {
        return values;
    }
    const auto untyped = [](ULONG namedTag) { return CHANGE_PROP_TYPE(namedTag, PT_UNSPECIFIED); };
    for (std::size_t i = 0; i < Count; ++i) {
        const ULONG before = i == 0 ? 0 : untyped(oldTags[i - 1]);
        auto& value = values[i];
        value = MakeValue(rows[i], old, untyped(oldTags[i]), before);
        if (value) {
            (*value)->ulPropTag = CHANGE_PROP_TYPE(targetTags[i], value->Type());
            if (const HRESULT status = SetOneProp(&target, &**value); FAILED(status)) {
                LogLine(mapi_HResultName(status));
            }
        }
    }
    return values;
}

template <std::size_t Count>
std::vector<ULONG> TypedTags(const std::array<TypedName, Count>& rows, IMessage& message) {
    std::array<NumberedName, Count> names;
    std::ranges::transform(rows, names.begin(), &TypedName::name);
    std::vector<ULONG> tags = FindTags(names, message);
    for (std::size_t i = 0; i < tags.size(); ++i) {
        tags[i] = CHANGE_PROP_TYPE(tags[i], rows[i].type);
    }
    return tags;
}

} // namespace

void PrepareMeetingProperties(IMessage& message) {
    WriteRows(kPreparedValues, message, message);
}

Block<SPropTagArray> ExcludedFromRequest(SendKind kind, IMessage& appointment) {
    std::vector<ULONG> excluded;
    if (kind == SendKind::FirstRequest) {
        excluded = TypedTags(kFirstRequestExclusions, appointment);
    }
    excluded.insert(excluded.end(), kExclusions.begin(), kExclusions.end());
    if (kind == SendKind::FirstRequest) {
        excluded.push_back(tag::kConversationIndex);
    }
    auto tags = AllocateBlock<SPropTagArray>(CbNewSPropTagArray(excluded.size()));
    tags->cValues = static_cast<ULONG>(excluded.size());
    std::ranges::copy(excluded, tags->aulPropTag);
    return tags;
}

void StampCalendarEntry(IMessage& meeting, IMessage& entry) {
    WriteRows(kCalendarEntryValues, meeting, entry);
}

void CopyResponseNames(IMessage& entry, IMessage& response) {
    const auto values = WriteRows(kResponseValues, entry, response);
    const auto& isRecurring = values[kIsRecurringRow];
    if (!isRecurring || !(*isRecurring)->Value.b) {
        return;
    }
    // The response is written under the entry's tags: its own names aren't looked up here.
    for (const ULONG recurrenceTag : TypedTags(kRecurrenceNames, entry)) {
        OwnedValue value;
        if (value.Read(entry, recurrenceTag)) {
            SetOneProp(&response, &*value);
        }
    }
}

} // namespace varden::mapi
