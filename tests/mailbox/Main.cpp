// Runs the tests, or what they need of a second process.
#include "tests/mailbox/Programs.h"

#include <gtest/gtest.h>

#include <string_view>

int wmain(int count, wchar_t** arguments) {
    using namespace standin::mailbox::test;
    const std::wstring_view wanted = count == 3 ? arguments[1] : L"";
    if (wanted == L"--save-without-end")
        return SaveWithoutEnd(arguments[2]);
    if (wanted == L"--write-messages")
        return WriteMessages(arguments[2]);
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
