// The members of contacts, in a table for each topic.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/outlook/automation/Row.h"

namespace standin::outlook {

extern const std::span<const Row> kContactNameRows;    ///< FullName, FileAs, CompanyName ...
extern const std::span<const Row> kContactAddressRows; ///< HomeAddress, MailingAddressCity ...
extern const std::span<const Row> kContactEmailRows;   ///< Email1Address ...
extern const std::span<const Row> kContactPictureRows; ///< HasPicture, AddPicture ...

/// The contact is called otherwise from now on: the display names of its e-mail addresses that were made from
/// its name follow it.
void RenameEmailAddresses(mailbox::OpenMessage& message, const std::wstring& oldName,
                          const std::wstring& newName);

} // namespace standin::outlook
