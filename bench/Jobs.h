// The jobs by their names on the command line.
#pragma once

#include <string_view>

namespace varden::bench {

struct Job {
    std::string_view name;
    void (*run)();
};

void MeasureShell();      ///< functions that never reach the engine
void MeasureWalk();       ///< mails read
void MeasureGrowth();     ///< the same by the size of the folder
void MeasureSend();       ///< mails sent with an attachment
void MeasureAttachment(); ///< a large attachment saved
void MeasureWrite();      ///< contacts written
void MeasureDelete();     ///< records deleted
void MeasureCustom();     ///< custom fields written
void MeasureMembers();    ///< members added to a distribution list
void MeasurePattern();    ///< a recurrence pattern read
void MeasureAttendees();  ///< meeting requests sent
void MeasureMemory();     ///< what stays behind a million calls

} // namespace varden::bench
