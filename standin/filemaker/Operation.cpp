// What is common to all FM operations.
#include "Operation.h"

namespace standin::filemaker {

Operation::Operation(const wchar_t* sort, const wchar_t* member, ErrorRecord* error)
    : m_sort(sort), m_member(member), m_crossing(Side::FileMaker, sort, member), m_runs(!m_crossing.Fails()) {
    if (!error) {
        Violate(L"no error record");
        m_runs = false;
        return;
    }
    if (error->version != 1 || error->code != 0) {
        Violate(L"an error record that is not set up as version 1 and code 0");
    }
    if (m_crossing.Fails()) {
        error->code = m_crossing.Status();
    }
}

void Operation::Violate(const std::wstring& what) {
    if (Watch* watch = CurrentWatch()) {
        watch->Violation(std::wstring(m_sort) + L'_' + m_member + L": " + what);
    }
}

} // namespace standin::filemaker
