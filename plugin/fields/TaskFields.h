// The field vocabulary of a task, which serves an open occurrence of a recurring one too.
#pragma once

#include "FieldTable.h"

namespace varden {

const Vocabulary& TaskVocabulary();

} // namespace varden
