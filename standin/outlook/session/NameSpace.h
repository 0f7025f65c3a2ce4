// The MAPI name space: the session as scripts see it.
#pragma once

#include "standin/outlook/automation/Object.h"

namespace standin::outlook {

class NameSpaceObject final : public Object {
public:
    NameSpaceObject();
    ComPtr<Object> Parent() override;

    /// The MAPI session behind it: the same object each time.
    const ComPtr<IUnknown>& MapiSession();

protected:
    ~NameSpaceObject() override;

private:
    ComPtr<IUnknown> m_mapiSession;
};

} // namespace standin::outlook
