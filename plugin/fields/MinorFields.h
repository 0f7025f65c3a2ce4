// The field vocabularies of the smaller kinds of item.
#pragma once

#include "FieldTable.h"

namespace varden {

const Vocabulary& NoteVocabulary();
const Vocabulary& JournalVocabulary();
const Vocabulary& PostVocabulary();
const Vocabulary& MeetingVocabulary();
const Vocabulary& ReportVocabulary();
const Vocabulary& TaskRequestVocabulary();
const Vocabulary& TaskRequestAcceptVocabulary();
const Vocabulary& TaskRequestDeclineVocabulary();
const Vocabulary& TaskRequestUpdateVocabulary();
const Vocabulary& DistListVocabulary();
const Vocabulary& DocumentVocabulary();
const Vocabulary& RemoteVocabulary();
const Vocabulary& SharingVocabulary();
const Vocabulary& StorageVocabulary();

} // namespace varden
