// A message class of every kind of item that a folder can hold.
#pragma once

#include <array>

namespace varden::tests {

inline constexpr std::array kItemClasses{L"IPM.Appointment",
                                         L"IPM.Contact",
                                         L"IPM.DistList",
                                         L"IPM.Document.txtfile",
                                         L"IPM.Activity",
                                         L"IPM.Note",
                                         L"IPM.Schedule.Meeting.Request",
                                         L"IPM.StickyNote",
                                         L"IPM.Post",
                                         L"IPM.Remote",
                                         L"REPORT.IPM.Note.NDR",
                                         L"IPM.Sharing",
                                         L"IPM.Task",
                                         L"IPM.TaskRequest.Accept",
                                         L"IPM.TaskRequest.Decline",
                                         L"IPM.TaskRequest",
                                         L"IPM.TaskRequest.Update"};

} // namespace varden::tests
