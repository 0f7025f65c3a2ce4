// PropertyAccessor: MAPI properties of an object by their schema names.
#pragma once

#include "standin/mailbox/PropertyObject.h"
#include "standin/outlook/automation/Object.h"

#include <functional>

namespace standin::outlook {

class PropertyAccessorObject final : public Object {
public:
    /// `owner` is the object that it belongs to; `changed` is called after each change.
    PropertyAccessorObject(ComPtr<Object> owner, std::shared_ptr<mailbox::PropertyObject> properties,
                           std::function<void()> changed = {});

    ComPtr<Object> Parent() override { return m_owner; }
    mailbox::PropertyObject& Properties() const { return *m_properties; }
    void NoteChange() const;

private:
    ComPtr<Object> m_owner;
    std::shared_ptr<mailbox::PropertyObject> m_properties;
    std::function<void()> m_changed;
};

} // namespace standin::outlook
