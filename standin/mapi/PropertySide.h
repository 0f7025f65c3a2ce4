// What the functions of IMAPIProp need of the object that they work for. They exist once; each kind of object
// brings one of these.
#pragma once

#include "standin/mailbox/PropertyObject.h"
#include "standin/mapi/Interfaces.h"

namespace standin::mapi {

/// Which parts of an object a copy gets, and what it may replace.
struct CopyFilter {
    std::vector<mailbox::PropertyId> ids;
    bool idsAreWanted = false;  ///< the ids are those to copy; otherwise those to leave out
    bool withProperties = true; ///< what is plain property
    bool withSubobjects = true; ///< recipients, attachments, what is embedded
    bool keepExisting = false;  ///< what the target has already stays as it is

    bool Wants(mailbox::PropertyTag tag) const;
};

/// An object with properties, as IMAPIProp sees it.
class PropertySide {
public:
    virtual mailbox::PropertyObject& Properties() const = 0;
    /// The object itself, for those who must keep it alive.
    virtual IUnknown& Unknown() = 0;
    /// Whether an object of this kind answers to the interface.
    virtual bool IsInterface(REFIID iid) const = 0;
    /// S_OK, or why nothing can be written: E_ACCESSDENIED, MAPI_E_SUBMITTED.
    virtual HRESULT CheckWritable() const = 0;

    // As the members of PropertyObject; text is listed as PT_UNICODE.
    virtual HRESULT Read(mailbox::PropertyTag tag, mailbox::Value& value) const;
    virtual HRESULT Write(mailbox::PropertyTag tag, mailbox::Value value);
    virtual HRESULT Erase(mailbox::PropertyTag tag);
    virtual std::vector<mailbox::PropertyTag> Tags() const;

    /// The properties that go into a copy of the object, and putting one of them there without any care for
    /// what it means to the others.
    virtual std::vector<mailbox::PropertyTag> TagsToCopy() const;
    virtual HRESULT WriteCopied(mailbox::PropertyTag tag, mailbox::Value value);
    /// Before properties under these tags are copied here: makes room for them.
    virtual HRESULT BeginCopy(std::span<const mailbox::PropertyTag>) { return S_OK; }
    /// Copies what the object has beside its properties to another.
    virtual HRESULT CopySubobjects(PropertySide&, const CopyFilter&) const { return S_OK; }

    /// SaveChanges, with its flags.
    virtual HRESULT Save(ULONG flags) = 0;
    /// OpenProperty for whatever is no stream of text or bytes: `iid` is an interface other than IStream.
    /// MAPI_E_INTERFACE_NOT_SUPPORTED: the object has nothing under this interface.
    virtual HRESULT OpenObject(mailbox::PropertyTag tag, REFIID iid, ULONG flags, IUnknown** object);

protected:
    ~PropertySide() = default;
};

/// The id under which QueryInterface gives the PropertySide of an object of this library: for objects that
/// come back as parameters.
inline constexpr IID kIidPropertySide{
    0x6A2F0E5B, 0x9C14, 0x4D6E, {0x8B, 0x1F, 0x33, 0x5E, 0x70, 0xA4, 0xD2, 0x19}};

/// The members of IMAPIProp. Parameters and statuses are those of the interface.
namespace properties {

/// Whether an id can have a value on this object. MAPI_E_INVALID_PARAMETER: an id that stands for nothing, or
/// one that belongs to no name.
HRESULT CheckId(const PropertySide& side, mailbox::PropertyTag tag);

HRESULT GetProps(const PropertySide& side, const SPropTagArray* tags, ULONG flags, ULONG* count,
                 SPropValue** values);
HRESULT GetPropList(const PropertySide& side, ULONG flags, SPropTagArray** tags);
HRESULT SetProps(PropertySide& side, ULONG count, const SPropValue* values, SPropProblemArray** problems);
HRESULT DeleteProps(PropertySide& side, const SPropTagArray* tags, SPropProblemArray** problems);
HRESULT OpenProperty(PropertySide& side, ULONG tag, const IID* iid, ULONG flags, IUnknown** object);
HRESULT CopyTo(const PropertySide& side, ULONG excludedCount, const IID* excluded, const SPropTagArray* tags,
               const IID* iid, void* target, ULONG flags, SPropProblemArray** problems);
HRESULT CopyProps(const PropertySide& side, const SPropTagArray* tags, const IID* iid, void* target,
                  ULONG flags, SPropProblemArray** problems);
HRESULT GetNamesFromIDs(const PropertySide& side, SPropTagArray** tags, const GUID* set, ULONG flags,
                        ULONG* count, MAPINAMEID*** names);
HRESULT GetIDsFromNames(const PropertySide& side, ULONG count, MAPINAMEID** names, ULONG flags,
                        SPropTagArray** tags);

} // namespace properties
} // namespace standin::mapi
