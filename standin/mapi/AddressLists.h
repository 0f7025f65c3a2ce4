// The properties of the address book's containers.
#pragma once

#include "standin/mailbox/AddressBook.h"
#include "standin/mailbox/EntryId.h"

namespace standin::mapi {

inline mailbox::PropertyBag ListProperties(const mailbox::AddressBook& book) {
    mailbox::PropertyBag bag;
    bag.Set<PR_ENTRYID>(book.EntryId());
    bag.Set<PR_INSTANCE_KEY>(mailbox::MakeInstanceKey(0));
    bag.Set<PR_DISPLAY_NAME_W>(book.Name());
    bag.Set<PR_OBJECT_TYPE>(MAPI_ABCONT);
    bag.Set<PR_DISPLAY_TYPE>(DT_GLOBAL);
    bag.Set<PR_CONTAINER_FLAGS>(AB_RECIPIENTS | AB_UNMODIFIABLE);
    bag.Set<PR_DEPTH>(0);
    return bag;
}

inline mailbox::PropertyBag RootProperties() {
    mailbox::PropertyBag bag;
    bag.Set<PR_OBJECT_TYPE>(MAPI_ABCONT);
    bag.Set<PR_CONTAINER_FLAGS>(AB_SUBCONTAINERS | AB_UNMODIFIABLE);
    return bag;
}

} // namespace standin::mapi
