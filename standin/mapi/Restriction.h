// Restrictions: what a table's rows must meet.
#pragma once

#include "standin/mailbox/PropertyObject.h"
#include "standin/mapi/Interfaces.h"

#include <functional>
#include <memory>

namespace standin::mapi {

/// A row as restrictions look at it.
class RestrictedRow {
public:
    virtual HRESULT Read(mailbox::PropertyTag tag, mailbox::Value& value) const = 0;
    /// The rows of a table within the row: PR_MESSAGE_RECIPIENTS or PR_MESSAGE_ATTACHMENTS. Calls `test` for
    /// each until one passes.
    virtual bool AnyRowOf(mailbox::PropertyTag subobject,
                          const std::function<bool(const RestrictedRow&)>& test) const = 0;

protected:
    ~RestrictedRow() = default;
};

/// A restriction, in memory of its own.
class Restriction {
public:
    virtual ~Restriction() = default;
    /// A property that the row hasn't got meets nothing but RES_NOT and an absent RES_EXIST.
    virtual bool IsMetBy(const RestrictedRow& row) const = 0;
};

/// Takes a caller's restriction over. E_INVALIDARG: a null pointer. MAPI_E_TOO_COMPLEX: two types that differ
/// (of a tag and its value, or of two tags), bits of what is no PT_LONG, and what no table here can do
/// (RELOP_RE, unknown kinds, content of numbers, nesting beyond measure).
HRESULT TakeRestriction(const SRestriction* source, std::unique_ptr<Restriction>& restriction);

} // namespace standin::mapi
