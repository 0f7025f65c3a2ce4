// The page of functions: prototypes and counts are the plug-in's, the words beside them stand here.
#include "Pages.h"

#include "frame/FunctionCatalogue.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

namespace varden::reference {

namespace {

struct Description {
    std::int16_t id;
    std::wstring_view does;    ///< with its arguments
    std::wstring_view answers; ///< beside "!!ERROR!!"
};

constexpr std::wstring_view kZero = L"`0`";

constexpr std::array kDescriptions{
    Description{151, L"Tells the plug-in's version: `SHORT` for the number alone.", L"the version"},
    Description{152,
                L"Logs on to Outlook with a profile's name and, where it has one, its password. Every script "
                L"begins with it. "
                L"A second call begins a new session.",
                kZero},
    Description{153,
                L"Makes a store's top folder the root folder, below which paths lie. The name is the store's "
                L"as Outlook shows it.",
                kZero},
    Description{154,
                L"Opens a folder by its path, and makes it the current folder: `/Inbox/Customers` below the "
                L"root folder, `Customers` below the current one. A filter is cleared.",
                kZero},
    Description{
        155,
        L"Makes a new record in the current folder, or without one in the folder that Outlook has for it. "
        L"It becomes the current record, unsaved but for a note: "
        L"`Contacts`, `Calendar`, `Tasks`, `Task Request`, `Mail`, `Note`, `Journal`, `Post`, "
        L"`Distribution List`; without a word, of the kind that belongs into the folder.",
        kZero},
    Description{156, L"Writes a field of the current record, see the page of fields.", kZero},
    Description{
        157,
        L"Saves the current record. A mail is sent unless the word is `DontSend`; an appointment goes "
        L"out as a meeting request with `Send`, and is answered with `ApptResponse`. With `keep open` "
        L"the record stays current, as it does without a word; a mail that was sent doesn't, and "
        L"appointments "
        L"know no `keep open`.",
        L"the record's id"},
    Description{158,
                L"Deletes a record by its id; for good if the second argument begins with `Y`, `T` or `1`.",
                kZero},
    Description{159,
                L"Deletes all records of the current folder; private ones and distribution lists stay where "
                L"their flag is true.",
                kZero},
    Description{160, L"Opens a record by its id, and makes it the current one.", kZero},
    Description{161, L"Reads a field of the current record, see the page of fields.", L"the field's text"},
    Description{162, L"Compares a field with a text.", L"`0` if they are the same, `1` if not"},
    Description{163, L"Opens the first record of the current folder that passes the filter.",
                L"the record's id, or `End`"},
    Description{164, L"Opens the next one.", L"the record's id, or `End`"},
    Description{165, L"Counts the records of the list that is walked.", L"the count"},
    Description{166, L"Takes stock of all folders below the root folder and makes the first the current one.",
                L"the folder's path, or `End`"},
    Description{167, L"Makes the next folder of the stock the current one.", L"the folder's path, or `End`"},
    Description{168, L"Tells the id of the current folder.", L"the id"},
    Description{169, L"Moves the current record into another folder, of this or another store.",
                L"the record's new id"},
    Description{170, L"Empties the Deleted Items folder.", kZero},
    Description{171, L"Attaches a file to the current record under a name.", kZero},
    Description{172,
                L"Tells the name of an attachment, counted from 1; the short name if the second argument is "
                L"`true`.",
                L"the name"},
    Description{173, L"Saves an attachment, counted from 1, into a file.", kZero},
    Description{174, L"Counts the attachments of the current record.", L"the count"},
    Description{175,
                L"Writes a custom field of the current record, and makes it where there is none, of the type "
                L"that is named, otherwise a text.",
                kZero},
    Description{176, L"Reads a custom field of the current record.", L"the field's text"},
    Description{177, L"Makes the first store's top folder the root folder.", L"the store's name, or `End`"},
    Description{178, L"Makes the next one the root folder.", L"the store's name, or `End`"},
    Description{179, L"Tells what kind of record belongs into the current folder.", L"the word for the kind"},
    Description{180, L"Tells the name of the current folder.", L"the name"},
    Description{181,
                L"Makes a folder, with all folders that are missing on its path, and opens it. The type is "
                L"one of `Contact`, `Post`, "
                L"`Calendar`, `Mail`, `Tasks`, `Note`, `Journal`.",
                kZero},
    Description{184, L"Sets a filter: records changed after this time stamp.", kZero},
    Description{185, L"Sets a filter in Outlook's own language, such as `[Importance] = 2`.", kZero},
    Description{182,
                L"Makes and sends a mail in one call. Several recipients and several attachments (paths of "
                L"files) have commas between them.",
                kZero},
    Description{183,
                L"Opens the default folder of another mailbox that is shared with the user: the mailbox's "
                L"name, and the "
                L"folder's number in Outlook (6 for the Inbox, 9 Calendar, 10 Contacts ...).",
                kZero},
    Description{190, L"Saves the current record as an MSG file.", kZero},
    Description{191, L"Shows the current record in a window of Outlook's.", kZero},
    Description{192, L"Makes a custom field in the current folder.", kZero},
    Description{194,
                L"Tells the name of the folder that Outlook uses for a purpose: `Inbox`, `Sent Mail`, "
                L"`Calendar`, `Root` ...",
                L"the folder's name"},
    Description{196,
                L"Adds a member that is in no address book to the current distribution list: name, address, "
                L"type of the address (`SMTP`).",
                kZero},
    Description{197, L"Deletes the current record; for good if the flag is true.", kZero},
    Description{200,
                L"Opens the occurrence of a recurring appointment at a date and time. Fields then are the "
                L"occurrence's.",
                kZero},
    Description{201, L"Takes the recurrence from the current record.", kZero},
    Description{202, L"Counts the exceptions of the open pattern.", L"the count"},
    Description{203,
                L"Opens the recurrence pattern of the current appointment or task, and makes it recurring if "
                L"it wasn't. Fields of the pattern can then be read and written.",
                kZero},
    Description{204, L"Opens the first exception of the open pattern.", L"`0`, or `End`"},
    Description{205, L"Opens the next one.", L"`0`, or `End`"},
    Description{206, L"Opens an exception by its place, counted from 1.", kZero},
    Description{207,
                L"Closes the open occurrence, also that of an exception; saves its changes first if the flag "
                L"is true.",
                kZero},
    Description{208,
                L"Closes the open pattern; saves the open occurrence first if the flag is true. The "
                L"pattern's own changes are saved with the record.",
                kZero},
    Description{213, L"Deletes the occurrence at a date and time.", kZero},
    Description{193,
                L"Tells why the last function failed: as text, or its code if the argument is any word but "
                L"`text`.",
                L"the reason"},
    Description{214, L"Tells Outlook's version.", L"the version"},
    Description{215, L"Opens an MSG file as the current record.", kZero},
    Description{218, L"Tells the size of an attachment, counted from 1, in bytes.",
                L"the size; of an attached message with `.msg` behind it"},
};

/// Row `id` of the string table; empty where there is none.
std::wstring Prototype(std::int16_t id) {
    wchar_t text[2048];
    const int length = LoadStringW(GetModuleHandleW(nullptr), static_cast<UINT>(id), text, 2048);
    return {text, static_cast<std::size_t>(length)};
}

} // namespace

std::wstring FunctionsPage() {
    std::wstring page =
        L"# Functions\n\n"
        L"Each answers a text. A failure is the text `!!ERROR!!`, and `VARD_GetLastError` tells "
        L"why, see [errors](errors.md).\n"
        L"Flags are true for `TRUE`, `1`, `YES`, `ON`, `Y` in any case, and false for everything "
        L"else;\n`VARD_Display` takes what FileMaker takes for true. Arguments whose\nnames begin with `opt` "
        L"can be left out.\n\n"
        L"| Function | Does | Answers |\n|---|---|---|\n";
    for (const FunctionRow& row : RegisteredFunctions()) {
        const std::wstring prototype = Prototype(row.id);
        if (prototype.empty()) {
            continue; // has no name, so that no script can call it
        }
        const auto found = std::ranges::find(kDescriptions, row.id, &Description::id);
        if (found == kDescriptions.end()) {
            throw std::logic_error("a function has no description");
        }
        page += L"| `" + prototype + L"` | " + std::wstring(found->does) + L" | " +
                std::wstring(found->answers) + L" |\n";
    }
    return page;
}

} // namespace varden::reference
