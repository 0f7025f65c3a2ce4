// Contacts and lists.
#include "Bench.h"
#include "DirectClient.h"
#include "Jobs.h"
#include "Mailbox.h"
#include "OtherProcess.h"

#include <cstdio>
#include <functional>

namespace varden::bench {

/// Each client begins with an empty folder: a fuller one takes longer on disk.
void MeasureWrite() {
    constexpr int kContacts = 2'000;
    std::printf("write: contacts of twenty fields each, saved to disk\n");
    for (const Pace& pace : PacesOf(kContacts)) {
        const auto measure = [&](const std::function<int(Bench&)>& work) {
            Bench bench;
            bench.KeepOnDisk();
            bench.Plugin().LogOn();
            return bench.Measure(pace.microseconds, [&] { return work(bench); });
        };
        const auto byPlugin = [&](Bench& bench) { return bench.Plugin().WriteContacts(pace.records); };
        PrintPace(pace);
        const Cost limit = measure([&](Bench&) { return DirectClient().WriteContacts(pace.records); });
        PrintCost("C++ client (the limit)", limit, limit);
        PrintCost("plug-in", measure(byPlugin), limit);
        const auto withoutHooks = [&](Bench& bench) {
            const WithoutHooks none;
            return byPlugin(bench);
        };
        PrintCost("plug-in without its hooks", measure(withoutHooks), limit);
        Bench bench;
        PrintScript(L"write.vbs", bench.KeepOnDisk(), pace, limit);
    }
}

void MeasureDelete() {
    std::printf("delete: VARD_DeleteAllRecords by the count of records\n");
    for (const int mails : {1'000, 2'000, 4'000}) {
        Bench bench;
        AddMails(FolderNamed(bench.World(), L"Inbox"), mails);
        bench.Plugin().LogOn();
        bench.Plugin().Call(L"VARD_OpenFolder", {L"/Inbox"});
        const Cost cost = bench.Measure(0, [&] {
            bench.Plugin().Call(L"VARD_DeleteAllRecords", {L"no"});
            return mails;
        });
        std::printf("  %6d mails %10.1f us %8.3f calls a record\n", mails, cost.microseconds, cost.calls);
    }
}

void MeasureCustom() {
    constexpr int kContacts = 1'000;
    Bench bench;
    bench.Plugin().LogOn();
    std::printf("custom: contacts of ten custom fields each\n");
    DirectClient direct;
    direct.WriteCustomFields(1); // enters the fields in the folder's list
    for (const Pace& pace : PacesOf(kContacts)) {
        bench.Compare(
            pace, [&] { return direct.WriteCustomFields(pace.records); },
            [&] { return bench.Plugin().WriteCustomFields(pace.records); });
    }
}

void MeasureMembers() {
    constexpr int kMembers = 1'000;
    Bench bench;
    PluginClient& plugin = bench.Plugin();
    plugin.LogOn();
    plugin.Call(L"VARD_OpenFolder", {L"/Contacts"});
    plugin.Call(L"VARD_NewRecord", {L"Distribution List"});
    std::printf("members: added to a distribution list\n");
    for (int i = 1; i <= kMembers; ++i) {
        const std::wstring name = L"Customer " + std::to_wstring(i);
        const Cost cost = bench.Measure(0, [&] {
            plugin.Call(L"VARD_AddOneOffMember",
                        {name, L"c" + std::to_wstring(i) + L"@example.com", L"SMTP"});
            return 1;
        });
        if (i <= 2 || i == kMembers) {
            std::printf("  member %4d %10.1f us %8.0f calls\n", i, cost.microseconds, cost.calls);
        }
    }
}

} // namespace varden::bench
