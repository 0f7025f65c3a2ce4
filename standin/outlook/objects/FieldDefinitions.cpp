// Definitions of user-defined fields between messages and memory.
#include "standin/outlook/objects/FieldDefinitions.h"

#include "standin/mailbox/ByteOrder.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/items/PropertySets.h"

#include <algorithm>

namespace standin::outlook {
namespace {

using mailbox::ByteReader;
using mailbox::ByteWriter;

constexpr FieldKind kKinds[] = {
    {1, PT_UNICODE, VT_BSTR, 0},      // olText
    {3, PT_DOUBLE, VT_R8, 1},         // olNumber
    {5, PT_SYSTIME, VT_DATE, 5},      // olDateTime
    {6, PT_BOOLEAN, VT_BOOL, 4},      // olYesNo
    {7, PT_LONG, VT_I4, 6},           // olDuration
    {11, PT_MV_UNICODE, VT_BSTR, 13}, // olKeywords
    {12, PT_DOUBLE, VT_R8, 2},        // olPercent
    {14, PT_CURRENCY, VT_CY, 3},      // olCurrency
    {18, PT_UNSPECIFIED, VT_BSTR, 8}, // olFormula
    {19, PT_UNSPECIFIED, VT_BSTR, 7}, // olCombination
    {20, PT_LONG, VT_I4, 14},         // olInteger
};

constexpr StoredProperty kStream{.tag = PT_BINARY, .set = &kPsCommon, .number = 0x8540};

constexpr std::uint16_t kVersion1 = 0x0102, kVersion2 = 0x0103;
/// Custom, shown in print; the third bit is set by every writer.
constexpr std::uint32_t kFlags = 0x45;
/// A length that doesn't fit in a byte follows this one, in two.
constexpr std::uint8_t kLongLength = 0xFF;

void AddLength(ByteWriter& out, std::size_t length) {
    if (length < kLongLength)
        out.Add(static_cast<std::uint8_t>(length));
    else
        out.Add(kLongLength).Add(static_cast<std::uint16_t>(length));
}

std::size_t TakeLength(ByteReader& in) {
    const auto length = in.Take<std::uint8_t>();
    return length == kLongLength ? in.Take<std::uint16_t>() : length;
}

void AddNarrow(ByteWriter& out, const std::wstring& text) {
    const std::string narrow = mailbox::Narrow(text, CP_ACP);
    AddLength(out, narrow.size());
    out.AddBytes(narrow.data(), narrow.size());
}

template <class T>
std::basic_string<T> TakeUnits(ByteReader& in, std::size_t count) {
    std::basic_string<T> text;
    for (std::size_t i = 0; i < count && in.Ok(); ++i)
        text += in.Take<T>();
    return text;
}

std::wstring TakeNarrow(ByteReader& in) {
    return mailbox::Widen(TakeUnits<char>(in, TakeLength(in)), CP_ACP);
}

/// Behind each definition: blocks with their sizes in front, the first with the name once more, the last
/// empty.
void AddSkipBlocks(ByteWriter& out, const std::wstring& name) {
    constexpr std::uint32_t kLast = 0;
    ByteWriter first;
    AddLength(first, name.size());
    first.AddBytes(name.data(), name.size() * sizeof(wchar_t));
    const mailbox::Bytes content = first.Take();
    out.Add(static_cast<std::uint32_t>(content.size())).AddBytes(content.data(), content.size()).Add(kLast);
}

void SkipBlocks(ByteReader& in) {
    for (auto size = in.Take<std::uint32_t>(); size && in.Ok(); size = in.Take<std::uint32_t>())
        in.Skip(size);
}

void AddDefinition(ByteWriter& out, const FieldDefinition& definition) {
    constexpr std::uint32_t kNoDispId = 0;
    out.Add(kFlags).Add(static_cast<std::uint16_t>(definition.kind->variant)).Add(kNoDispId);
    out.Add(static_cast<std::uint16_t>(definition.name.size()));
    out.AddBytes(definition.name.data(), definition.name.size() * sizeof(wchar_t));
    const std::wstring noErrorText;
    for (const std::wstring* text : {&definition.name, &definition.formula, &definition.validationFormula,
                                     &definition.validationText, &noErrorText})
        AddNarrow(out, *text);
    out.Add(definition.kind->internalType);
    AddSkipBlocks(out, definition.name);
}

FieldDefinition TakeDefinition(ByteReader& in, std::uint16_t version) {
    FieldDefinition definition;
    in.Skip(sizeof kFlags + sizeof(std::uint16_t) + sizeof(DISPID));
    definition.name = TakeUnits<wchar_t>(in, in.Take<std::uint16_t>());
    const std::wstring narrowName = TakeNarrow(in);
    if (definition.name.empty())
        definition.name = narrowName;
    definition.formula = TakeNarrow(in);
    definition.validationFormula = TakeNarrow(in);
    definition.validationText = TakeNarrow(in);
    TakeNarrow(in); // what is said when a formula fails
    const auto kind = std::ranges::find(kKinds, in.Take<std::uint32_t>(), &FieldKind::internalType);
    definition.kind = kind == std::end(kKinds) ? nullptr : &*kind;
    if (version == kVersion2)
        SkipBlocks(in);
    return definition;
}

} // namespace

const FieldKind* FindFieldKind(std::int32_t number) {
    const auto kind = std::ranges::find(kKinds, number, &FieldKind::number);
    return kind == std::end(kKinds) ? nullptr : &*kind;
}

mailbox::Bytes MakeDefinitionStream(const FieldDefinitions& definitions) {
    ByteWriter out;
    out.Add(kVersion2).Add(static_cast<std::uint32_t>(definitions.size()));
    for (const FieldDefinition& definition : definitions)
        AddDefinition(out, definition);
    return out.Take();
}

FieldDefinitions ParseDefinitionStream(std::span<const std::uint8_t> stream) {
    ByteReader in(stream);
    const auto version = in.Take<std::uint16_t>();
    const auto count = in.Take<std::uint32_t>();
    if (version != kVersion1 && version != kVersion2)
        return {};
    FieldDefinitions definitions;
    for (std::uint32_t i = 0; i < count && in.Ok(); ++i)
        definitions.push_back(TakeDefinition(in, version));
    if (!in.Ok())
        return {};
    std::erase_if(definitions, [](const FieldDefinition& each) { return !each.kind; });
    return definitions;
}

FieldDefinitions ReadDefinitions(const mailbox::PropertyObject& message) {
    const auto stream = ReadAs<mailbox::Bytes>(message, kStream);
    return stream ? ParseDefinitionStream(*stream) : FieldDefinitions();
}

void WriteDefinitions(mailbox::PropertyObject& message, const FieldDefinitions& definitions) {
    if (definitions.empty())
        return RemoveValue(message, kStream);
    WriteValue(message, kStream, MakeDefinitionStream(definitions));
}

} // namespace standin::outlook
