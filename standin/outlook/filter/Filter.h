// Filters of Items.Restrict and Items.Find: Outlook's own language, and the plain part of DASL behind
// "@SQL=".
#pragma once

#include "standin/mailbox/Folder.h"

#include <memory>
#include <string>

namespace standin::outlook {

/// A filter, ready to look at messages.
class Filter {
public:
    virtual ~Filter() = default;
    virtual bool Matches(const mailbox::MessageProperties& message) const = 0;
};

/// Reads a filter on the items of a folder:
///
///     [LastName] = 'Hansen' And ([Start] >= '1/31/2025 3:30 PM' Or Not [UnRead] = True)
///
/// Properties are those of FindField. Text stands in single or double quotes, which are doubled within; text
/// compares without case. Numbers go with and without quotes. A date is text in the form of the user's locale
/// and counts by the minute, and here, though not in DASL, a time with seconds compares with nothing; empty
/// text is no date. True, False, Yes, No, On and Off go without quotes; within quotes every text but the
/// empty one is True, as in Outlook. Keywords equal a text if one of them does.
///
/// Behind "@SQL=": properties by schema name in double quotes; the same operators; LIKE with % at the ends;
/// IS NULL and IS NOT NULL; ci_startswith and ci_phrasematch. A property that an item hasn't got matches
/// nothing but IS NULL.
///
/// Raises "Condition is not valid." for anything else.
std::shared_ptr<const Filter> ParseFilter(const std::wstring& text, const mailbox::Folder& folder);

} // namespace standin::outlook
