// What a process that is ended while it saves writes in each round, so that half a save can be told.
#pragma once

#include <string>

namespace standin::mailbox::test {

inline std::wstring SubjectOfRound(int round) {
    return std::wstring(1, static_cast<wchar_t>(L'a' + round % 26));
}
inline std::wstring BodyOfRound(int round) {
    return std::wstring(20000, SubjectOfRound(round)[0]);
}

} // namespace standin::mailbox::test
