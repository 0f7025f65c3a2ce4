// Which ProgIDs of Outlook exist while a program runs, and whose turn it is.
#include "Places.h"
#include "standin/outlook/registration/Registration.h"

#include <gtest/gtest.h>

#include <objbase.h>

#include <memory>
#include <stdexcept>

using standin::outlook::Registration;

namespace {

constexpr const wchar_t* kProgIds[] = {L"Outlook.Application.16", L"Outlook.Application.15",
                                       L"Outlook.Application.14", L"Outlook.Application.12",
                                       L"Outlook.Application.11", L"Outlook.Application"};

/// The ProgIDs by which COM finds Outlook's published class.
std::vector<std::wstring> Existing() {
    std::vector<std::wstring> existing;
    for (const wchar_t* progId : kProgIds) {
        CLSID found{};
        const CLSID outlook{0x0006F03A, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
        if (SUCCEEDED(CLSIDFromProgID(progId, &found)) && found == outlook) {
            existing.push_back(progId);
        }
    }
    return existing;
}

const std::vector<std::wstring> kOrdinary{L"Outlook.Application.16", L"Outlook.Application"};

TEST(Registration, LastsForTheLifeOfTheObject) {
    const std::vector<std::wstring> choices[] = {
        {},
        {L"Outlook.Application.11"},
        {L"Outlook.Application.15", L"Outlook.Application.14", L"Outlook.Application.12"},
        {L"Outlook.Application"},
    };
    for (const auto& choice : choices) {
        {
            const Registration registration(choice);
            EXPECT_EQ(Existing(), choice);
        }
        EXPECT_EQ(Existing(), kOrdinary);
    }
}

TEST(Registration, PutsRightWhatAnAbortedProgramLeft) {
    const TemporaryFile endless("Loop\nEnd Loop");
    ConsoleProcess console({L"--no-outlook", endless.Path()});
    while (console.IsRunning() && !Existing().empty()) {
        Sleep(10);
    }
    ASSERT_TRUE(console.IsRunning());
    console.Abort();
    const Registration registration;
    EXPECT_EQ(Existing(), kOrdinary);
}

TEST(Registration, RefusesNamesThatAreNotOutlooksAndASecondOneAtATime) {
    EXPECT_THROW(Registration({L"Word.Application"}), std::invalid_argument);
    const Registration registration;
    EXPECT_THROW(Registration(), std::logic_error);
}

TEST(Registration, WithoutOutlookWaitsForTheOthers) {
    const TemporaryFile script("TP_HasProgId( \"Outlook.Application\" )");
    auto registration = std::make_unique<Registration>();
    EXPECT_EQ(RunConsole({script.Path()}).output, "1\n") << "the ordinary case waits for nobody";
    ConsoleProcess console({L"--no-outlook", script.Path()});
    Sleep(1500);
    EXPECT_TRUE(console.IsRunning());
    EXPECT_EQ(Existing(), kOrdinary);
    registration.reset();
    EXPECT_EQ(console.Wait().output, "0\n");
    EXPECT_EQ(RunConsole({script.Path()}).output, "1\n");
}

} // namespace
