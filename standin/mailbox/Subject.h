// The parts of a subject ([MS-OXCMSG] 2.2.1.9, 2.2.1.10).
#pragma once

#include <string>
#include <string_view>

namespace standin::mailbox {

struct SubjectParts {
    std::wstring_view prefix;     ///< "RE: " with its blank; empty for none
    std::wstring_view normalized; ///< what is left without it
};

/// Splits a subject. `stated` is the prefix that somebody set, and counts if the subject begins with it;
/// otherwise up to three characters, none of them a digit or a blank, before a colon and a blank are the
/// prefix.
SubjectParts SplitSubject(std::wstring_view subject, std::wstring_view stated);

} // namespace standin::mailbox
