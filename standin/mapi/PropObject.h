// Objects whose interface is an IMAPIProp.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/mapi/Errors.h"
#include "standin/mapi/Object.h"
#include "standin/mapi/PropertySide.h"

namespace standin::mapi {

/// IMAPIProp for any interface that derives from it.
template <class Interface>
class PropObject : public Object<Interface>, public PropertySide {
public:
    HRESULT STDMETHODCALLTYPE GetLastError(HRESULT status, ULONG flags, MAPIERROR** error) override {
        return this->Call(L"GetLastError", Outputs(error),
                          [&] { return DescribeFailure(this->Failure(), status, flags, error); });
    }
    HRESULT STDMETHODCALLTYPE SaveChanges(ULONG flags) override {
        return this->Call(L"SaveChanges", [&] { return Save(flags); });
    }
    HRESULT STDMETHODCALLTYPE GetProps(SPropTagArray* tags, ULONG flags, ULONG* count,
                                       SPropValue** values) override {
        return this->Call(L"GetProps", Outputs(count, values),
                          [&] { return properties::GetProps(*this, tags, flags, count, values); });
    }
    HRESULT STDMETHODCALLTYPE GetPropList(ULONG flags, SPropTagArray** tags) override {
        return this->Call(L"GetPropList", Outputs(tags),
                          [&] { return properties::GetPropList(*this, flags, tags); });
    }
    HRESULT STDMETHODCALLTYPE OpenProperty(ULONG tag, const IID* iid, ULONG, ULONG flags,
                                           IUnknown** object) override {
        return this->Call(L"OpenProperty", Outputs(object),
                          [&] { return properties::OpenProperty(*this, tag, iid, flags, object); });
    }
    HRESULT STDMETHODCALLTYPE SetProps(ULONG count, SPropValue* values,
                                       SPropProblemArray** problems) override {
        return this->Call(L"SetProps", Outputs(problems),
                          [&] { return properties::SetProps(*this, count, values, problems); });
    }
    HRESULT STDMETHODCALLTYPE DeleteProps(SPropTagArray* tags, SPropProblemArray** problems) override {
        return this->Call(L"DeleteProps", Outputs(problems),
                          [&] { return properties::DeleteProps(*this, tags, problems); });
    }
    HRESULT STDMETHODCALLTYPE CopyTo(ULONG excludedCount, const IID* excluded, SPropTagArray* tags, ULONG,
                                     IMAPIProgress*, const IID* iid, void* target, ULONG flags,
                                     SPropProblemArray** problems) override {
        return this->Call(L"CopyTo", Outputs(problems), [&] {
            return properties::CopyTo(*this, excludedCount, excluded, tags, iid, target, flags, problems);
        });
    }
    HRESULT STDMETHODCALLTYPE CopyProps(SPropTagArray* tags, ULONG, IMAPIProgress*, const IID* iid,
                                        void* target, ULONG flags, SPropProblemArray** problems) override {
        return this->Call(L"CopyProps", Outputs(problems),
                          [&] { return properties::CopyProps(*this, tags, iid, target, flags, problems); });
    }
    HRESULT STDMETHODCALLTYPE GetNamesFromIDs(SPropTagArray** tags, GUID* set, ULONG flags, ULONG* count,
                                              MAPINAMEID*** names) override {
        return this->Call(L"GetNamesFromIDs", Outputs(count, names),
                          [&] { return properties::GetNamesFromIDs(*this, tags, set, flags, count, names); });
    }
    HRESULT STDMETHODCALLTYPE GetIDsFromNames(ULONG count, MAPINAMEID** names, ULONG flags,
                                              SPropTagArray** tags) override {
        return this->Call(L"GetIDsFromNames", Outputs(tags),
                          [&] { return properties::GetIDsFromNames(*this, count, names, flags, tags); });
    }

    IUnknown& Unknown() override { return *this; }
    bool IsInterface(REFIID iid) const override { return Offers<Interface>(&iid); }

protected:
    void* MoreInterfaces(REFIID iid) override {
        return iid == kIidPropertySide ? static_cast<PropertySide*>(this) : nullptr;
    }
};

/// The ways in which SaveChanges can leave an object open; one of them at most.
inline constexpr ULONG kKeepOpen = KEEP_OPEN_READONLY | KEEP_OPEN_READWRITE;

inline HRESULT CheckSaveFlags(ULONG flags) {
    if (flags & ~(kKeepOpen | FORCE_SAVE | MAPI_DEFERRED_ERRORS))
        return MAPI_E_UNKNOWN_FLAGS;
    return (flags & kKeepOpen) == kKeepOpen ? MAPI_E_INVALID_PARAMETER : S_OK;
}

/// An object that is saved by SaveChanges, and may be at an end with it.
template <class Interface>
class TransactedObject : public PropObject<Interface> {
public:
    /// `left` is shared by all objects for one and the same open thing.
    explicit TransactedObject(bool writable,
                              std::shared_ptr<mailbox::LeftOpen> left = std::make_shared<mailbox::LeftOpen>())
        : m_writable(writable), m_left(std::move(left)) {}

    HRESULT CheckWritable() const override {
        return m_writable && m_left->forWriting ? S_OK : E_ACCESSDENIED;
    }

    HRESULT Save(ULONG flags) override {
        HRESULT status = CheckSaveFlags(flags);
        if (SUCCEEDED(status))
            status = this->CheckWritable();
        if (SUCCEEDED(status))
            status = SaveNow((flags & FORCE_SAVE) != 0);
        if (FAILED(status))
            return status;
        m_left->forWriting = (flags & KEEP_OPEN_READONLY) == 0;
        m_left->atAll = (flags & kKeepOpen) != 0;
        return status;
    }

protected:
    virtual HRESULT SaveNow(bool force) = 0;
    HRESULT Usable() const override { return m_left->atAll ? S_OK : MAPI_E_INVALID_OBJECT; }

private:
    bool m_writable;
    std::shared_ptr<mailbox::LeftOpen> m_left;
};

/// An object whose changes take effect at once: there is nothing for SaveChanges to do.
template <class Interface>
class DirectObject : public PropObject<Interface> {
public:
    DirectObject(std::shared_ptr<mailbox::PropertyObject> properties, bool writable)
        : m_properties(std::move(properties)), m_writable(writable) {}

    mailbox::PropertyObject& Properties() const override { return *m_properties; }
    HRESULT CheckWritable() const override { return m_writable ? S_OK : E_ACCESSDENIED; }
    HRESULT Save(ULONG flags) override {
        const HRESULT status = CheckSaveFlags(flags);
        return FAILED(status) ? status : CheckWritable();
    }

private:
    std::shared_ptr<mailbox::PropertyObject> m_properties;
    bool m_writable;
};

} // namespace standin::mapi
