// The benchmarks: each job done by the plug-in and by the other clients on the same mailbox in the same run.
// Prints microseconds and platform calls per record, and their ratios.
//
//     varden_bench [JOB...]
#include "Jobs.h"
#include "OtherProcess.h"

#include "standin/outlook/registration/Registration.h"

#include <ole2.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <vector>

namespace varden::bench {

namespace {

constexpr std::array kJobs{
    Job{"shell", MeasureShell},           Job{"walk", MeasureWalk},
    Job{"growth", MeasureGrowth},         Job{"send", MeasureSend},
    Job{"attachment", MeasureAttachment}, Job{"write", MeasureWrite},
    Job{"delete", MeasureDelete},         Job{"custom", MeasureCustom},
    Job{"members", MeasureMembers},       Job{"pattern", MeasurePattern},
    Job{"attendees", MeasureAttendees},   Job{"memory", MeasureMemory},
};

} // namespace

} // namespace varden::bench

int main(int count, char** arguments) {
    using namespace varden::bench;
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    CoInitialize(nullptr);
    try {
        const std::vector<std::string_view> words(arguments + 1, arguments + count);
        if (words.size() == 2 && words[0] == "--serve") {
            ServeObject(std::filesystem::path(words[1]).wstring());
            return 0;
        }
        const standin::outlook::Registration registration;
        for (const Job& job : kJobs) {
            if (words.empty() || std::ranges::find(words, job.name) != words.end()) {
                job.run();
            }
        }
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
