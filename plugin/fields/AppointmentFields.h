// The field vocabulary of an appointment, which serves an open occurrence of a recurring one too.
#pragma once

#include "FieldTable.h"

namespace varden {

const Vocabulary& AppointmentVocabulary();

} // namespace varden
