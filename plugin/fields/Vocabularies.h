// The field vocabularies, one for each kind of item. Those of an appointment and of a task serve an open
// occurrence of a recurring one too.
#pragma once

#include "FieldTable.h"

namespace varden {

const Vocabulary& AppointmentVocabulary();
const Vocabulary& ContactVocabulary();
const Vocabulary& DistListVocabulary();
const Vocabulary& DocumentVocabulary();
const Vocabulary& JournalVocabulary();
const Vocabulary& MailVocabulary();
const Vocabulary& MeetingVocabulary();
const Vocabulary& NoteVocabulary();
const Vocabulary& PostVocabulary();
const Vocabulary& RemoteVocabulary();
const Vocabulary& ReportVocabulary();
const Vocabulary& SharingVocabulary();
const Vocabulary& StorageVocabulary();
const Vocabulary& TaskVocabulary();
const Vocabulary& TaskRequestVocabulary();
const Vocabulary& TaskRequestAcceptVocabulary();
const Vocabulary& TaskRequestDeclineVocabulary();
const Vocabulary& TaskRequestUpdateVocabulary();

} // namespace varden
