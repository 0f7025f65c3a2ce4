// Entries of the address book, and the user of an Exchange entry.
#pragma once

#include "standin/mailbox/AddressBook.h"
#include "standin/outlook/automation/Object.h"

namespace standin::outlook {

using EntryPtr = std::shared_ptr<mailbox::AddressEntry>;

/// AddressEntry and ExchangeUser: two interfaces over the same entry, with a table of members each.
class EntryObject : public Object {
public:
    const EntryPtr& Entry() const { return m_entry; }
    ComPtr<Object> Parent() override;

protected:
    EntryObject(const Kind& kind, EntryPtr entry) : Object(kind), m_entry(std::move(entry)) {}

private:
    EntryPtr m_entry;
};

class AddressEntryObject final : public EntryObject {
public:
    explicit AddressEntryObject(EntryPtr entry);
};

class ExchangeUserObject final : public EntryObject {
public:
    explicit ExchangeUserObject(EntryPtr entry);
};

} // namespace standin::outlook
