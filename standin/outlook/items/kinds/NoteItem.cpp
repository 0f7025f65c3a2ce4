// NoteItem: the members of notes beyond those of all items ([MS-OXONOTE] 2.2).
#include "standin/mailbox/SpecialFolders.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/items/Completion.h"
#include "standin/outlook/items/Filing.h"
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

using mailbox::OpenMessage;

constexpr std::int32_t kYellow = 3; // OlNoteColor
constexpr std::int32_t kFirstIcon = 0x300;

constexpr StoredProperty kColor{.tag = PT_LONG, .set = &kPsNote, .number = 0x8B00};

/// Size and place of the window in which Outlook shows a new note, in pixels.
struct WindowPart {
    StoredProperty stored;
    std::int32_t value;
};
constexpr WindowPart kWindow[] = {
    {{.tag = PT_LONG, .set = &kPsNote, .number = 0x8B02}, 200},
    {{.tag = PT_LONG, .set = &kPsNote, .number = 0x8B03}, 166},
    {{.tag = PT_LONG, .set = &kPsNote, .number = 0x8B04}, 80},
    {{.tag = PT_LONG, .set = &kPsNote, .number = 0x8B05}, 80},
};

/// The icon shows the colour.
void FollowColor(OpenMessage& message) {
    const std::int32_t color = ReadAs<std::int32_t>(message, kColor).value_or(kYellow);
    Check(message.Write(mailbox::kPrIconIndex, kFirstIcon + color));
}

/// The subject is the first line of the text.
void FollowBody(OpenMessage& message) {
    constexpr std::size_t kLongest = 255;
    const std::wstring body(TextOf(kBody.read(message, {})));
    const std::size_t end = std::min({body.find_first_of(L"\r\n"), body.size(), kLongest});
    Check(message.Write(PR_SUBJECT_PREFIX_W, std::wstring()));
    Check(message.Write(PR_SUBJECT_W, body.substr(0, end)));
}

void Begin(OpenMessage& message) {
    BeginFiled(message, kFirstIcon + kYellow);
    WriteValue(message, kColor, kYellow);
    for (const WindowPart& part : kWindow)
        WriteValue(message, part.stored, part.value);
}

void Complete(OpenMessage& message) {
    FollowBody(message);
    CompleteConversation(message);
}

constexpr Row kRows[] = {
    Then<FollowBody>(Stored(L"Body", kBody, PR_BODY_W)),
    Then<FollowColor>(Named(L"Color", kNumber, PT_LONG, kPsNote, 0x8B00, kYellow)),
    Named(L"Height", kNumber, PT_LONG, kPsNote, 0x8B03),
    Named(L"Left", kNumber, PT_LONG, kPsNote, 0x8B04),
    Named(L"Top", kNumber, PT_LONG, kPsNote, 0x8B05),
    Named(L"Width", kNumber, PT_LONG, kPsNote, 0x8B02),
};

} // namespace

const ItemKind kNoteItem{
    .kind = {L"NoteItem", 0x00063025, 44, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"IPM.StickyNote",
    .itemType = 5,
    .home = mailbox::kNotes,
    .begin = Begin,
    .complete = Complete,
};

} // namespace standin::outlook
