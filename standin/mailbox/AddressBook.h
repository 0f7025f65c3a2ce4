// The address book: the global address list, name resolution, one-off addresses.
#pragma once

#include "standin/mailbox/PropertyObject.h"

#include <memory>

namespace standin::mailbox {

/// An entry of the address list, or a one-off address. Properties: PR_DISPLAY_NAME, PR_ACCOUNT (the alias),
/// PR_ADDRTYPE, PR_EMAIL_ADDRESS, PR_SMTP_ADDRESS, PR_ENTRYID, PR_SEARCH_KEY, PR_OBJECT_TYPE, PR_DISPLAY_TYPE
/// and what else an Exchange user has.
class AddressEntry final : public PropertyObject {
public:
    AddressEntry(PropertyBag properties, std::shared_ptr<NamedProperties> names, bool isOneOff);

    bool IsOneOff() const { return m_isOneOff; }
    bool IsDistributionList() const;
    Bytes EntryId() const;
    std::wstring Name() const;
    std::wstring AddressType() const;
    /// PR_EMAIL_ADDRESS: an X.500 name for type EX.
    std::wstring Address() const;
    std::wstring SmtpAddress() const;

    /// The members of a distribution list.
    const std::vector<std::shared_ptr<AddressEntry>>& Members() const { return m_members; }
    void SetMembers(std::vector<std::shared_ptr<AddressEntry>> members) { m_members = std::move(members); }

    /// The properties that a recipient of this address has in a message's recipient row, but for
    /// PR_RECIPIENT_TYPE.
    PropertyBag RecipientProperties() const;

    const PropertyBag& Stored() const override { return m_properties; }
    NamedProperties& Names() const override { return *m_names; }

protected:
    std::span<const ComputedProperty> Computed() const override;
    HRESULT CheckWritable() const override;
    PropertyBag& Edit() override;

private:
    PropertyBag m_properties;
    std::shared_ptr<NamedProperties> m_names;
    std::vector<std::shared_ptr<AddressEntry>> m_members;
    bool m_isOneOff;
};

/// What a new entry of the global address list is to have; the rest follows from it.
struct AddressEntryDescription {
    std::wstring name;
    std::wstring alias;
    std::wstring smtpAddress;
    bool isDistributionList = false;
    PropertyBag more; ///< further properties
};

/// The global address list, in its order.
class AddressBook {
public:
    AddressBook();

    const std::vector<std::shared_ptr<AddressEntry>>& Entries() const { return m_entries; }
    std::shared_ptr<AddressEntry> Add(const AddressEntryDescription& description);
    void Clear() { m_entries.clear(); }

    /// Resolves a name: the whole display name, alias or SMTP address (or X.500 name) of one entry, then the
    /// beginning of display names, case ignored. MAPI_E_AMBIGUOUS_RECIP: several. MAPI_E_NOT_FOUND: none,
    /// unless the text has an @: that resolves as a one-off SMTP address.
    HRESULT Resolve(std::wstring_view text, std::shared_ptr<AddressEntry>& entry) const;
    /// Opens an entry or a one-off by its entry id. MAPI_E_NOT_FOUND: an entry that is no longer there.
    /// MAPI_E_INVALID_ENTRYID: no entry id of an address.
    HRESULT Open(std::span<const std::uint8_t> entryId, std::shared_ptr<AddressEntry>& entry) const;
    /// The entry with this address: an X.500 name for type EX, otherwise an SMTP address; null for none.
    std::shared_ptr<AddressEntry> FindByAddress(std::wstring_view addressType,
                                                std::wstring_view address) const;
    /// The entry that a recipient row means: by its SMTP address, its address of whatever type, or its entry
    /// id. A one-off for an SMTP address that isn't in the list; null if the row has no address that leads
    /// anywhere.
    std::shared_ptr<AddressEntry> FindRecipient(const PropertyBag& recipient) const;
    /// An address that stands in no address book.
    std::shared_ptr<AddressEntry> MakeOneOff(std::wstring_view name, std::wstring_view addressType,
                                             std::wstring_view address) const;

    /// The container of the global address list.
    std::wstring Name() const { return L"Global Address List"; }
    Bytes EntryId() const;
    NamedProperties& Names() const { return *m_names; }

private:
    std::vector<std::shared_ptr<AddressEntry>> m_entries;
    std::shared_ptr<NamedProperties> m_names;
};

/// PR_SEARCH_KEY of an address: "TYPE:ADDRESS" in upper case, with its NUL.
Bytes AddressSearchKey(std::wstring_view addressType, std::wstring_view address);

} // namespace standin::mailbox
