// What all objects with properties have in common: stored properties in a bag, and computed ones as rows of a
// table.
#pragma once

#include "standin/mailbox/NamedProperties.h"
#include "standin/mailbox/Property.h"

#include <span>

namespace standin::mailbox {

class PropertyObject;

/// A property that its object works out or guards. The rows of a kind of object stand in ascending order of
/// id.
struct ComputedProperty {
    PropertyTag tag;
    /// Works the value out; false: the object hasn't got the property. Null: the stored value is the value.
    bool (*get)(const PropertyObject& object, Value& value);
    /// Looks at a client's value before it is stored, and may alter it. S_FALSE: the value is taken care of
    /// and is not to be stored. A failure refuses it. Null: clients are refused with MAPI_E_COMPUTED.
    HRESULT (*set)(PropertyObject& object, Value& value);
    /// Whether clients may remove it.
    bool erasable = false;
};

/// An object with properties, as both views read and write them. Statuses are MAPI's.
class PropertyObject {
public:
    virtual ~PropertyObject() = default;

    /// Reads a property under MAPI's matching rule (see ConvertValue). MAPI_E_NOT_FOUND if there is none that
    /// fits.
    HRESULT Read(PropertyTag tag, Value& value) const;
    /// Writes a property; its type is the value's. Text is kept as Unicode, as the stores do it.
    /// MAPI_E_COMPUTED: clients may not write it. E_ACCESSDENIED: the object is open for reading only.
    /// MAPI_E_OBJECT_DELETED: it is gone. MAPI_E_INVALID_TYPE: a type that can't be stored (PT_ERROR,
    /// PT_OBJECT, PT_NULL), or not for this property. MAPI_E_UNEXPECTED_TYPE: the property is a published one
    /// of another type.
    HRESULT Write(PropertyTag tag, Value value);
    /// What Write says to every value of this tag: MAPI_E_COMPUTED, MAPI_E_UNEXPECTED_TYPE, or S_OK where it
    /// depends on more.
    HRESULT CheckTag(PropertyTag tag) const;
    /// Removes a property. MAPI_E_NOT_FOUND if there is none; otherwise as Write.
    HRESULT Erase(PropertyTag tag);
    /// The tags of all properties that Read would find, in ascending order of id. Text is listed as it is
    /// kept.
    std::vector<PropertyTag> Tags() const;

    /// Read for code that knows the type: the value, or nothing.
    template <PropertyTag tag>
    std::optional<Native<tag>> Get() const {
        Value value;
        if (FAILED(Read(tag, value)))
            return std::nullopt;
        Native<tag>* native = std::get_if<Native<tag>>(&value);
        return native ? std::optional<Native<tag>>(std::move(*native)) : std::nullopt;
    }

    /// The stored properties alone, for looking without a copy.
    virtual const PropertyBag& Stored() const = 0;
    /// The names that the object's ids from 0x8000 on stand for.
    virtual NamedProperties& Names() const = 0;

    /// From now on the object denies having this property, whatever its type: for tests of failures.
    void Withhold(PropertyTag tag) { m_withheld.push_back(IdOf(tag)); }
    void WithholdNothing() { m_withheld.clear(); }

protected:
    /// The rows of this kind of object.
    virtual std::span<const ComputedProperty> Computed() const = 0;
    /// S_OK, or why nothing can be written.
    virtual HRESULT CheckWritable() const = 0;
    /// The bag to write to; only after CheckWritable.
    virtual PropertyBag& Edit() = 0;
    /// Whether published properties have to have their published types here.
    virtual bool NeedsPublishedTypes() const { return true; }
    /// A property was written or removed. A failure takes the change back.
    virtual HRESULT Changed() { return S_OK; }

private:
    const ComputedProperty* Row(PropertyTag tag) const;
    bool IsWithheld(PropertyTag tag) const;
    HRESULT Replace(PropertyTag tag, std::optional<Value> value);

    std::vector<PropertyId> m_withheld;
};

} // namespace standin::mailbox
