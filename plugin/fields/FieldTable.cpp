// Reading and writing a field by its row.
#include "FieldTable.h"

#include "ToDoFields.h"

#include "frame/ErrorCodes.h"
#include "mapi/PropertyCatalogue.h"
#include "session/COutlookFuncs.h"
#include "session/Operation.h"

#include <algorithm>

namespace varden {

namespace {

const FieldRow* FindToRead(std::span<const FieldRow> fields, const std::wstring& name) {
    const auto row = std::ranges::find_if(fields, [&](const FieldRow& known) {
        const bool isNamed = known.isReadInAnyCase ? EqualIgnoringCase(known.name, name) : known.name == name;
        return isNamed && known.get.conversion != GetBy::UnknownName;
    });
    return row == fields.end() ? nullptr : &*row;
}

const FieldRow* FindToWrite(std::span<const FieldRow> fields, const std::wstring& name) {
    const auto row = std::ranges::find_if(fields, [&](const FieldRow& known) {
        const bool isNamed =
            known.isWrittenInAnyCase ? EqualIgnoringCase(known.name, name) : known.name == name;
        return isNamed && known.set.conversion != SetBy::UnknownName;
    });
    return row == fields.end() ? nullptr : &*row;
}

/// Looks in the kind's own fields, then among the to-do fields if the kind has them.
template <typename Find>
const FieldRow* FindIn(const Vocabulary& vocabulary, const std::wstring& given, Find find) {
    const std::wstring name = vocabulary.ignoresBlanks ? Without(given, L' ') : given;
    const FieldRow* row = find(vocabulary.fields, name);
    return row || !vocabulary.hasToDoFields ? row : find(ToDoFields(), name);
}

std::wstring ReadDate(const FieldRow& row, const FieldContext& context, const wchar_t* noDate) {
    const DATE date = context.item.GetDate(row.get.member);
    return date == kNoDate ? noDate : DateText(date);
}

/// The row's own tag, or else the catalogue's.
std::optional<ULONG> TagOf(const FieldRow& row, const FieldContext& context) {
    if (row.get.tag != 0) {
        return row.get.tag;
    }
    return CatalogueTag(row.get.member ? std::wstring_view(row.get.member) : row.name, context);
}

std::wstring ReadOne(const FieldRow& row, const FieldContext& context) {
    const auto tag = TagOf(row, context);
    mapi::PropertyBlock block;
    if (!tag || FAILED(context.engine.mapi_GetOneProp(*tag, block, context.message))) {
        return {};
    }
    return block.AsText();
}

std::wstring ReadTime(const FieldRow& row, const FieldContext& context) {
    LogLine(L"getting datetime prop");
    const auto tag = TagOf(row, context);
    mapi::PropertyBlock block;
    if (!tag || FAILED(context.engine.mapi_GetOneProp(*tag, block, context.message))) {
        LogLine(L"failed to get date time prop");
        return {};
    }
    const auto time = block.AsTime();
    return time ? MapiTimeText(*time) : std::wstring();
}

std::wstring ReadStream(bool read, const std::wstring& text) {
    return read ? text : Fail(error::kMapi, text);
}

bool WriteRow(const FieldRow& row, const std::wstring& data, const FieldContext& context) {
    const outlook::Reference& item = context.item;
    switch (row.set.conversion) {
    case SetBy::Text:
        item.PutProperty(row.set.member, outlook::TextValue(data));
        return true;
    case SetBy::Date: {
        const auto date = ParseDateOrNone(data);
        if (!date) {
            return Refuse(error::kFieldValue);
        }
        item.PutProperty(row.set.member, outlook::DateValue(*date));
        return true;
    }
    case SetBy::FlagT:
        item.PutProperty(row.set.member, outlook::BoolValue(data.starts_with(L'T')));
        return true;
    case SetBy::Long:
        item.PutProperty(row.set.member, outlook::LongValue(LeadingNumber(data)));
        return true;
    case SetBy::Choice: {
        const auto number = Choose(data, *row.set.choice);
        if (!number) {
            return Refuse(error::kFieldValue);
        }
        item.PutProperty(row.set.member, outlook::LongValue(*number));
        return true;
    }
    case SetBy::Special:
        return row.set.special(context, row, data);
    default:
        return Refuse(row.set.refusal);
    }
}

} // namespace

std::optional<ULONG> CatalogueTag(std::wstring_view name, const FieldContext& context) {
    ULONG tag = 0;
    return context.message && mapi_PropTagFromFieldName(name, tag, context.message) ? std::optional(tag)
                                                                                    : std::nullopt;
}

bool SetLinkedContacts(const FieldContext& context, const FieldRow&, const std::wstring& data) {
    return context.engine.SetContacts(data);
}

bool Refuse(std::int32_t code, std::wstring_view detail) {
    Fail(code, detail);
    return false;
}

std::wstring ReadRow(const FieldRow& row, const FieldContext& context) {
    const outlook::Reference& item = context.item;
    std::wstring text;
    switch (row.get.conversion) {
    case GetBy::Text:
        return item.GetText(row.get.member);
    case GetBy::Date:
        return ReadDate(row, context, L"None");
    case GetBy::DateBlank:
        return ReadDate(row, context, L"");
    case GetBy::Boolean:
        return item.GetBool(row.get.member) ? L"True" : L"False";
    case GetBy::Integer:
        return FormatText(L"%ld", item.GetLong(row.get.member));
    case GetBy::Words:
        return WordFor(item.GetLong(row.get.member), *row.get.words);
    case GetBy::MapiText: {
        const bool read = context.engine.mapi_GetTextField(row.get.tag, text, context.message);
        return ReadStream(read, text);
    }
    case GetBy::MapiBinary: {
        const bool read = context.engine.mapi_GetBinaryField(row.get.tag, text, context.message);
        return ReadStream(read, text);
    }
    case GetBy::MapiOne:
    case GetBy::Named:
        return ReadOne(row, context);
    case GetBy::MapiTime:
        return ReadTime(row, context);
    case GetBy::Special:
        return row.get.special(context, row);
    default:
        return {};
    }
}

std::wstring ReadField(const Vocabulary& vocabulary, const std::wstring& name, const FieldContext& context) {
    Operation operation(vocabulary.getterName);
    operation.Param(L"strFieldName", name);
    const FieldRow* row = FindIn(vocabulary, name, FindToRead);
    if (!row) {
        return operation.Fail(error::kFieldName);
    }
    std::wstring text = ReadRow(*row, context);
    return vocabulary.cutsLineFeeds ? Without(std::move(text), L'\n') : text;
}

bool WriteField(const Vocabulary& vocabulary, const std::wstring& name, const std::wstring& data,
                const FieldContext& context) {
    std::optional<LoggedOperation> operation;
    if (vocabulary.setterName) {
        operation.emplace(vocabulary.setterName);
        operation->Param(L"strFieldName", name);
        operation->Param(L"strFieldData", data);
    }
    const FieldRow* row = FindIn(vocabulary, name, FindToWrite);
    if (row && vocabulary.tellsFields && row->set.conversion != SetBy::Refused) {
        LogLine(L"Setting field: " + std::wstring(row->name));
    }
    const bool written = row ? WriteRow(*row, data, context) : Refuse(error::kFieldName);
    if (vocabulary.tellsFields) {
        LogLine(L"Cleaning up before exiting function");
    }
    return written;
}

} // namespace varden
