// The field vocabulary of a mail.
#pragma once

#include "FieldTable.h"

namespace varden {

const Vocabulary& MailVocabulary();

} // namespace varden
