// An object of properties that nobody changes: what the model has no object for.
#pragma once

#include "standin/mailbox/PropertyObject.h"

namespace standin::mapi {

class FixedProperties final : public mailbox::PropertyObject {
public:
    /// `names` is that of the object's store or address book, which outlives it.
    FixedProperties(mailbox::PropertyBag properties, mailbox::NamedProperties& names)
        : m_properties(std::move(properties)), m_names(names) {}

    const mailbox::PropertyBag& Stored() const override { return m_properties; }
    mailbox::NamedProperties& Names() const override { return m_names; }

protected:
    std::span<const mailbox::ComputedProperty> Computed() const override { return {}; }
    HRESULT CheckWritable() const override { return E_ACCESSDENIED; }
    mailbox::PropertyBag& Edit() override { return m_properties; } // nobody comes past CheckWritable

private:
    mailbox::PropertyBag m_properties;
    mailbox::NamedProperties& m_names;
};

} // namespace standin::mapi
