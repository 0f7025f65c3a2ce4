// Mails read and sent, attachments.
#include "Bench.h"
#include "DirectClient.h"
#include "Jobs.h"
#include "Mailbox.h"
#include "OtherProcess.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace varden::bench {

void MeasureWalk() {
    constexpr int kMails = 10'000;
    Bench bench;
    const std::wstring mailbox = bench.KeepOnDisk();
    AddMails(FolderNamed(bench.World(), L"Inbox"), kMails);
    bench.Plugin().LogOn();
    std::printf("walk: an Inbox of %d mails, five fields each\n", kMails);
    DirectClient direct;
    std::vector<Pace> paces = PacesOf(kMails);
    paces.push_back({0, kMails});
    for (const Pace& pace : paces) {
        const Cost limit = bench.Compare(
            pace, [&] { return direct.WalkInbox(pace.records); },
            [&] { return bench.Plugin().WalkInbox(pace.records); });
        PrintScript(L"walk.vbs", mailbox, pace, limit);
    }
}

/// What a record costs when as many walks as make 50,000 records are made, the quickest of three times: other
/// work on the machine can only slow it down.
template <class Client>
Cost CostOfWalks(Bench& bench, Client& client) {
    constexpr int kRecords = 50'000;
    constexpr int kTimes = 3;
    Cost quickest;
    for (int time = 0; time < kTimes; ++time) {
        const Cost cost = bench.Measure(0, [&] {
            int records = 0;
            while (records < kRecords) {
                records += client.WalkInbox(kRecords);
            }
            return records;
        });
        if (time == 0 || cost.microseconds < quickest.microseconds) {
            quickest = cost;
        }
    }
    return quickest;
}

void MeasureGrowth() {
    std::printf("growth: the walk by the size of the Inbox, without input hooks\n");
    Cost firstLimit;
    Cost first;
    for (const int mails : {1'000, 10'000, 50'000}) {
        Bench bench;
        AddMails(FolderNamed(bench.World(), L"Inbox"), mails);
        bench.Plugin().LogOn();
        DirectClient direct;
        const WithoutHooks none;
        const Cost limit = CostOfWalks(bench, direct);
        const Cost cost = CostOfWalks(bench, bench.Plugin());
        firstLimit = firstLimit.calls > 0 ? firstLimit : limit;
        first = first.calls > 0 ? first : cost;
        std::printf("  %6d mails\n", mails);
        PrintCost("C++ client", limit, firstLimit);
        PrintCost("plug-in", cost, first);
    }
    constexpr int kFolders = 10'000;
    Bench bench;
    AddSubfolders(FolderNamed(bench.World(), L"Inbox"), kFolders);
    bench.Plugin().LogOn();
    const Cost cost = bench.Measure(0, [&] {
        bench.Plugin().Call(L"VARD_GetFirstFolder");
        return kFolders;
    });
    std::printf("  %6d folders, VARD_GetFirstFolder: %.1f us, %.3f calls a folder\n", kFolders,
                cost.microseconds, cost.calls);
}

void MeasureSend() {
    constexpr int kMails = 500;
    constexpr std::size_t kAttachment = 100 * 1024;
    Bench bench;
    bench.KeepOnDisk();
    bench.Plugin().LogOn();
    const std::wstring file = FileOf(kAttachment);
    DirectClient direct;
    std::printf("send: %d mails with an attachment of 100 KiB, kept on disk\n", kMails);
    direct.SendMails(1, file);
    bench.Plugin().SendMails(1, file);
    for (const Pace& pace : PacesOf(kMails)) {
        bench.Compare(
            pace, [&] { return direct.SendMails(pace.records, file); },
            [&] { return bench.Plugin().SendMails(pace.records, file); });
    }
}

/// Each client's best of some rounds, since the disk's speed varies more than the clients do.
void MeasureAttachment() {
    constexpr int kRounds = 5;
    constexpr std::size_t kAttachment = 100 * 1024 * 1024;
    Bench bench;
    PluginClient& plugin = bench.Plugin();
    plugin.LogOn();
    plugin.Call(L"VARD_OpenFolder", {L"/Drafts"});
    plugin.Call(L"VARD_NewRecord", {L"Mail"});
    plugin.Call(L"VARD_AddAttachment", {FileOf(kAttachment), L"large"});
    const std::wstring id = plugin.Call(L"VARD_SaveRecord", {L"DontSend"});
    plugin.Call(L"VARD_OpenRecord", {id});
    const std::filesystem::path target = std::filesystem::temp_directory_path() / L"varden-bench-copy.bin";
    DirectClient direct;
    const std::size_t before = PeakBytes();
    Cost limit, cost;
    std::size_t peakOfDirect = 0;
    for (int i = 0; i < kRounds; ++i) {
        const Cost round = bench.Measure(0, [&] { return direct.SaveAttachment(target.string()); });
        limit = i == 0 || round.microseconds < limit.microseconds ? round : limit;
    }
    peakOfDirect = PeakBytes();
    for (int i = 0; i < kRounds; ++i) {
        const Cost round = bench.Measure(0, [&] {
            plugin.Call(L"VARD_SaveAttachment", {target.wstring(), L"1"});
            return 1;
        });
        cost = i == 0 || round.microseconds < cost.microseconds ? round : cost;
    }
    std::printf("attachment: 100 MiB saved to a file\n");
    PrintCost("C++ client (the limit)", limit, limit);
    PrintCost("plug-in", cost, limit);
    std::printf("  the most memory: %.1f MiB more for the C++ client, then %.1f MiB more for the plug-in\n",
                static_cast<double>(peakOfDirect - before) / (1024 * 1024),
                static_cast<double>(PeakBytes() - peakOfDirect) / (1024 * 1024));
    std::filesystem::remove(target);
}

} // namespace varden::bench
