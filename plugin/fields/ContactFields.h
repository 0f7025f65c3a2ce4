// The field vocabulary of a contact.
#pragma once

#include "FieldTable.h"

namespace varden {

const Vocabulary& ContactVocabulary();

} // namespace varden
