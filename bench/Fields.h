// The fields that the jobs read and write, as scripts and as Outlook name them.
#pragma once

#include <array>
#include <string>

namespace varden::bench {

struct Field {
    const wchar_t* name;
    const wchar_t* member;
};

inline constexpr std::array kContactFields{
    Field{L"First Name", L"FirstName"},
    Field{L"Last Name", L"LastName"},
    Field{L"Company", L"CompanyName"},
    Field{L"Department", L"Department"},
    Field{L"Job Title", L"JobTitle"},
    Field{L"Business Address Street", L"BusinessAddressStreet"},
    Field{L"Business Address City", L"BusinessAddressCity"},
    Field{L"Business Address State", L"BusinessAddressState"},
    Field{L"Business Address Postal Code", L"BusinessAddressPostalCode"},
    Field{L"Business Phone", L"BusinessTelephoneNumber"},
    Field{L"Home Phone", L"HomeTelephoneNumber"},
    Field{L"Mobile Phone", L"MobileTelephoneNumber"},
    Field{L"Pager", L"PagerNumber"},
    Field{L"Assistant's Name", L"AssistantName"},
    Field{L"Spouse", L"Spouse"},
    Field{L"Nickname", L"NickName"},
    Field{L"Profession", L"Profession"},
    Field{L"Manager's Name", L"ManagerName"},
    Field{L"Office Location", L"OfficeLocation"},
    Field{L"Web Page", L"WebPage"},
};

inline constexpr std::array kPatternFields{
    Field{L"Day of Month", L"DayOfMonth"},
    Field{L"Day of Week Mask", L"DayOfWeekMask"},
    Field{L"Duration", L"Duration"},
    Field{L"End Time", L"EndTime"},
    Field{L"Instance", L"Instance"},
    Field{L"Interval", L"Interval"},
    Field{L"Month of Year", L"MonthOfYear"},
    Field{L"No End Date", L"NoEndDate"},
    Field{L"Occurrences", L"Occurrences"},
    Field{L"Pattern End Date", L"PatternEndDate"},
    Field{L"Pattern Start Date", L"PatternStartDate"},
    Field{L"Recurrence Type", L"RecurrenceType"},
    Field{L"Regenerate", L"Regenerate"},
    Field{L"Start Time", L"StartTime"},
};

inline constexpr int kCustomFields = 10;
inline std::wstring CustomFieldName(int index) {
    return L"Measure " + std::to_wstring(index);
}

inline constexpr const wchar_t* kSomeText = L"Some text";
inline constexpr const wchar_t* kAddressee = L"Back Office";

} // namespace varden::bench
