// Outlook's application object.
#pragma once

#include "standin/outlook/automation/Object.h"

namespace standin::outlook {

class ApplicationObject final : public Object {
public:
    ApplicationObject();
    ComPtr<Object> Parent() override { return nullptr; }

protected:
    ~ApplicationObject() override;
};

} // namespace standin::outlook
