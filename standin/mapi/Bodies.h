// The body of a message in its three forms. A store keeps the form that was written last and derives the
// others from it when they are read ([MS-OXBBODY]).
#pragma once

#include "standin/mailbox/Message.h"

namespace standin::mapi {

// [MS-OXCMSG] 2.2.1.58. PR_RTF_IN_SYNC is the platform's.
inline constexpr mailbox::PropertyTag kPrNativeBodyInfo = PROP_TAG(PT_LONG, 0x1016);

/// The form in which the body is kept: the values of PR_NATIVE_BODY_INFO ([MS-OXCMSG] 2.2.1.58).
enum class NativeBody : std::int32_t { None = 0, PlainText = 1, Rtf = 2, Html = 3 };

/// The form that a message's body is kept in. A message that came with several forms has the best of them:
/// RTF in sync with the text before HTML, HTML before RTF, RTF before plain text ([MS-OXBBODY] 2.1.3.1).
NativeBody NativeBodyOf(const mailbox::PropertyObject& message);

/// Whether the tag is one of the body's properties, which ReadBody and WriteBody are for.
bool IsBodyProperty(mailbox::PropertyTag tag);

/// Reads PR_BODY (either width), PR_HTML (as binary in the code page of PR_INTERNET_CPID, or as text),
/// PR_RTF_COMPRESSED, PR_NATIVE_BODY_INFO or PR_RTF_IN_SYNC. A form that the message doesn't keep is derived
/// from the one it keeps. MAPI_E_NOT_FOUND: the message has no body, or denies the property.
HRESULT ReadBody(const mailbox::PropertyObject& message, mailbox::PropertyTag tag, mailbox::Value& value);
/// Writes PR_BODY, PR_HTML or PR_RTF_COMPRESSED: it becomes the form that is kept, and the others go.
/// MAPI_E_COMPUTED for PR_NATIVE_BODY_INFO; otherwise as PropertyObject::Write.
HRESULT WriteBody(mailbox::PropertyObject& message, mailbox::PropertyTag tag, mailbox::Value value);
/// Takes the body away in all its forms.
HRESULT EraseBody(mailbox::PropertyObject& message);
/// Makes one of the forms that a message came with the one that is kept; `changed`: it wasn't yet. Nothing
/// for a form that it hasn't got.
HRESULT MakeNative(mailbox::PropertyObject& message, NativeBody form, bool& changed);

/// Whether the tag is one of the three forms, whatever its type.
bool IsBodyForm(mailbox::PropertyTag tag);
/// A message's tags together with those of the body that are there by derivation, in ascending order.
std::vector<mailbox::PropertyTag> WithBodyTags(const mailbox::PropertyObject& message,
                                               std::vector<mailbox::PropertyTag> tags);
/// The tags that go into a copy of a message, together with the body's text: who reads a copy may know no
/// other form.
std::vector<mailbox::PropertyTag> WithBodyToCopy(const mailbox::PropertyObject& message,
                                                 std::vector<mailbox::PropertyTag> tags);

} // namespace standin::mapi
