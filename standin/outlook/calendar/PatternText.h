// Recurrence patterns in words.
#pragma once

#include "standin/outlook/recurrence/Series.h"

#include <string>

namespace standin::outlook::calendar {

/// PidLidRecurrencePattern ([MS-OXOCAL] 2.2.1.46): "every Monday from 9:00 AM to 9:30 AM".
std::wstring PatternText(const recurrence::Series& series);

} // namespace standin::outlook::calendar
