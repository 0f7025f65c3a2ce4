// The kinds of attachment, and the message in an embedded one.
#pragma once

#include "mapi/InterfaceIds.h"
#include "mapi/Ownership.h"
#include "mapi/Tags.h"

namespace varden {

/// The values of PR_ATTACH_METHOD ([MS-OXCMSG] 2.2.2.9) that are treated apart.
enum AttachMethod : long {
    kNoAttachment = 0,
    kByValue = 1,
    kByReferenceOnly = 4,
    kEmbeddedMessage = 5,
    kOleObject = 6,
};

/// Opens the message in an embedded one for reading.
inline HRESULT OpenEmbedded(IAttach& attachment, mapi::Pointer<IMessage>& message) {
    return attachment.OpenProperty(mapi::tag::kAttachDataObject, &mapi::kIidMessage, 0, 0,
                                   message.OutAs<IUnknown>());
}

} // namespace varden
