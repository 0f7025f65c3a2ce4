// The page of fields: a table for each kind of record, from the vocabularies.
#include "Pages.h"

#include "extensions/CustomFieldValues.h"
#include "fields/ToDoFields.h"
#include "fields/Vocabularies.h"
#include "mapi/Tags.h"
#include "recurrence/PatternFields.h"

#include <algorithm>
#include <array>

namespace varden::reference {

namespace {

struct Section {
    std::wstring_view title;
    const Vocabulary& (*vocabulary)();
    bool hasRecipients = true; ///< the recipients are read as on every record
};

constexpr std::array kSections{
    Section{L"Mail", MailVocabulary},
    Section{L"Contact", ContactVocabulary, false},
    Section{L"Appointment", AppointmentVocabulary},
    Section{L"Task", TaskVocabulary, false},
    Section{L"Note", NoteVocabulary, false},
    Section{L"Journal entry", JournalVocabulary},
    Section{L"Post", PostVocabulary},
    Section{L"Distribution list", DistListVocabulary},
    Section{L"Meeting message", MeetingVocabulary},
    Section{L"Report", ReportVocabulary},
    Section{L"Task request", TaskRequestVocabulary},
    Section{L"Task request accepted", TaskRequestAcceptVocabulary},
    Section{L"Task request declined", TaskRequestDeclineVocabulary},
    Section{L"Task request update", TaskRequestUpdateVocabulary},
    Section{L"Document", DocumentVocabulary},
    Section{L"Remote item", RemoteVocabulary},
    Section{L"Sharing message", SharingVocabulary},
    Section{L"Storage item", StorageVocabulary},
};

std::wstring Words(std::span<const EnumWord> words) {
    std::wstring text;
    for (const EnumWord& word : words) {
        text += (text.empty() ? L"`" : L", `") + std::wstring(word.word) + L"`";
    }
    return text;
}

/// The words of a list, and the one for all other values.
std::wstring Words(const EnumWords& words) {
    const std::wstring text = Words(words.words);
    return *words.otherwise ? text + L", otherwise `" + words.otherwise + L"`" : text;
}

std::wstring Reading(const FieldGet& get) {
    switch (get.conversion) {
    case GetBy::UnknownName:
        return L"";
    case GetBy::Date:
        return L"date, `None` for none";
    case GetBy::DateBlank:
    case GetBy::MapiTime:
        return L"date, empty for none";
    case GetBy::Boolean:
        return L"`True` or `False`";
    case GetBy::Integer:
        return L"number";
    case GetBy::Words:
        return Words(*get.words);
    case GetBy::MapiBinary:
        return get.tag == mapi::tag::kHtml ? L"text" : L"hexadecimal";
    case GetBy::Text:
    case GetBy::MapiText:
    case GetBy::MapiOne:
    case GetBy::Named:
    case GetBy::Special:
        return L"text";
    }
    return L"";
}

std::wstring Choices(const EnumChoice& choice) {
    std::wstring letters;
    for (const EnumLetter& each : choice.letters) {
        letters +=
            (letters.empty() ? L"a word that begins with `" : L", `") + std::wstring(1, each.letter) + L"`";
    }
    const std::wstring words = Words(choice.words) + (choice.ignoresCase ? L", in any case" : L"");
    return letters + (letters.empty() || choice.words.empty() ? L"" : L"; ") + words;
}

std::wstring Writing(const FieldSet& set) {
    switch (set.conversion) {
    case SetBy::UnknownName:
    case SetBy::Refused:
        return L"";
    case SetBy::Text:
    case SetBy::Special:
        return L"text";
    case SetBy::Date:
        return L"date, empty or `None` for none";
    case SetBy::FlagT:
        return L"true if it begins with `T`";
    case SetBy::Long:
        return L"number";
    case SetBy::Choice:
        return Choices(*set.choice);
    }
    return L"";
}

/// How the field of a record reads: what every record has comes before what its kind has.
std::wstring Reading(const FieldRow& row, bool hasRecipients) {
    const auto common = std::ranges::find(CommonFields(), row.name, &FieldRow::name);
    constexpr std::array<std::wstring_view, 3> recipients{L"To", L"Cc", L"Bcc"};
    const bool isOfRecipients = std::ranges::count(recipients, row.name) != 0;
    const bool isCommon = common != CommonFields().end() && (hasRecipients || !isOfRecipients) &&
                          common->get.conversion != GetBy::UnknownName;
    return Reading(isCommon ? common->get : row.get);
}

/// The names that one side takes in any case, told in that side's column.
std::wstring WithCase(const std::wstring& text, bool isInAnyCase) {
    return isInAnyCase ? text + L"; the name in any case" : text;
}

std::wstring Table(std::span<const FieldRow> fields, bool hasRecipients = true) {
    std::wstring table = L"| Field | Reads as | Is written as |\n|---|---|---|\n";
    for (const FieldRow& row : fields) {
        const std::wstring reading = Reading(row, hasRecipients), writing = Writing(row.set);
        if (!reading.empty() || !writing.empty()) {
            table.append(L"| `").append(row.name).append(L"` | ");
            table.append(WithCase(reading, row.isReadInAnyCase)).append(L" | ");
            table.append(WithCase(writing, row.isWrittenInAnyCase)).append(L" |\n");
        }
    }
    return table + L"\n";
}

std::wstring SectionText(const Section& section) {
    const Vocabulary& vocabulary = section.vocabulary();
    std::wstring text = L"## " + std::wstring(section.title) + L"\n\n";
    if (vocabulary.ignoresBlanks) {
        text += L"Blanks in a name don't count: `All Day Event` is `AllDayEvent`.\n\n";
    }
    return text + Table(vocabulary.fields, section.hasRecipients);
}

std::wstring_view PatternText(PatternForm form) {
    switch (form) {
    case PatternForm::Integer:
        return L"number";
    case PatternForm::DayMask:
        return L"names of days";
    case PatternForm::Time:
        return L"time";
    case PatternForm::LowTruth:
    case PatternForm::HighTruth:
        return L"true or false";
    case PatternForm::Date:
        return L"date";
    case PatternForm::Type:
        return L"`Daily`, `Weekly`, `Monthly`, `Nth Month`, `Yearly`, `Nth Year`";
    }
    return L"";
}

} // namespace

std::wstring FieldsPage() {
    std::wstring page =
        L"# Fields\n\n"
        L"Names are compared exactly, with case, but where a table says otherwise. An empty column: the "
        L"field can't be read,\nor can't be written. Dates are texts as the user's locale writes them.\n\n"
        L"What can be written isn't always kept: Outlook has its own rules for what goes together.\n\n"
        L"## Every record\n\n"
        L"Read before the fields of the record's own kind. `To`, `Cc` and `Bcc` aren't read on contacts, "
        L"tasks and notes.\n`Contacts` is written on contacts, appointments and their occurrences, tasks, "
        L"journal entries, posts and sharing\nmessages.\n\n" +
        Table(CommonFields()) +
        L"## Marked as task\n\n"
        L"Mails, contacts and what else Outlook lets a user flag for follow-up, from version 12 "
        L"on.\n\n" +
        Table(ToDoFields());
    for (const Section& section : kSections) {
        page += SectionText(section);
    }
    page += L"## Recurrence pattern\n\nWhile a pattern is open. Names are taken in any case, to read also "
            L"without "
            L"their blanks. For the day of week mask `weekdays`\nis taken too. While an exception is open, "
            L"`Deleted` reads as `true` or `false`, and `Original Date` as a date.\n\n| Field | Reads and is "
            L"written as "
            L"|\n|---|---|\n";
    for (const PatternField& field : PatternFields()) {
        page += L"| `" + std::wstring(field.name) + L"` | " + std::wstring(PatternText(field.form)) + L" |\n";
    }
    page += L"\n## Custom fields\n\nBy their names, with `VARD_SetCustomFieldData` and "
            L"`VARD_GetCustomFieldData`. The "
            L"types, in any case:\n";
    std::wstring separator;
    for (const CustomFieldType& type : CustomFieldTypes()) {
        page += separator + L"`" + type.word + L"`";
        separator = L", ";
    }
    page += L".\nKeywords have a return between them.\n";
    return page;
}

} // namespace varden::reference
