// PropertyAccessor: MAPI properties of an object by their schema names.
#pragma once

#include "standin/mailbox/PropertyObject.h"
#include "standin/outlook/automation/Object.h"

namespace standin::outlook {

class PropertyAccessorObject final : public Object {
public:
    /// `owner` is the object that it belongs to.
    PropertyAccessorObject(ComPtr<Object> owner, std::shared_ptr<mailbox::PropertyObject> properties);

    ComPtr<Object> Parent() override { return m_owner; }
    mailbox::PropertyObject& Properties() const { return *m_properties; }

private:
    ComPtr<Object> m_owner;
    std::shared_ptr<mailbox::PropertyObject> m_properties;
};

} // namespace standin::outlook
