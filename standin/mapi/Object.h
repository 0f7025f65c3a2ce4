// What all COM objects of the MAPI view have in common: references, QueryInterface, the form of a call, and
// what becomes of an object after its last release.
#pragma once

#include "standin/mapi/Interfaces.h"
#include "standin/mapi/Process.h"
#include "standin/watch/Watch.h"

#include <algorithm>
#include <memory>
#include <new>

namespace standin::mapi {

/// Owns one reference to a COM object.
struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using Held = std::unique_ptr<Interface, Releaser>;

template <class Interface>
Held<Interface> Hold(Interface* object) {
    object->AddRef();
    return Held<Interface>(object);
}

/// Keeps the memory of a dead object back for a while, with every method of it in place and reporting the
/// call as a violation.
void Bury(void* memory, std::size_t size, const wchar_t* interfaceName);

/// The last failure of an object, for its GetLastError.
struct LastFailure {
    HRESULT status = S_OK;
    const wchar_t* member = L"";
};

/// Lends `Work` the status for what it may throw.
template <class Work>
HRESULT Guarded(Work&& work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return MAPI_E_NOT_ENOUGH_MEMORY;
    } catch (const std::exception&) {
        return MAPI_E_CALL_FAILED;
    }
}

/// What a call hands out: null or 0 unless the call gives it. A client behind a proxy sees no more of a call
/// that failed.
struct Outputs {
    template <class... Output>
    explicit Outputs(Output*... outputs) {
        (Clear(outputs), ...);
    }

private:
    template <class Output>
    static void Clear(Output* output) {
        if (output)
            *output = {};
    }
};

/// An object that is its interface and nothing else. It derives from the interface alone, so that its memory
/// begins with the table of methods: see Bury.
///
///     HRESULT STDMETHODCALLTYPE SubmitMessage(ULONG flags) override {
///         return this->Call(L"SubmitMessage", [&] { return Submit(flags); });
///     }
template <class Interface>
class Object : public Interface {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const Outputs cleared(object);
        Crossing call(Side::Mapi, Traits::name, L"QueryInterface");
        if (call.Fails())
            return call.Status();
        return call.Return(Query(iid, object));
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        CheckInitialized(L": referenced without MAPIInitialize");
        return ++m_references;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        CheckInitialized(L": released without MAPIInitialize");
        const ULONG left = --m_references;
        if (left == 0) {
            LastRelease();
            delete this;
        }
        return left;
    }

    static void operator delete(void* memory, std::size_t size) { Bury(memory, size, Traits::name); }

protected:
    using Traits = InterfaceTraits<Interface>;

    virtual ~Object() = default;

    /// One call from outside: it may fail by plan, the object may not be usable, and the status is noted.
    template <class Work>
    HRESULT Call(const wchar_t* member, Work&& work) {
        Crossing call(Side::Mapi, Traits::name, member);
        if (call.Fails()) {
            m_lastFailure = {call.Status(), member};
            return call.Status();
        }
        const SessionScope scope(m_session);
        HRESULT status = Callable();
        if (SUCCEEDED(status))
            status = Guarded(work);
        if (FAILED(status))
            m_lastFailure = {status, member};
        return call.Return(status);
    }

    /// The same for one that hands something out.
    template <class Work>
    HRESULT Call(const wchar_t* member, const Outputs&, Work&& work) {
        return Call(member, std::forward<Work>(work));
    }

    /// A method that a client may call but that makes no sense here.
    HRESULT NotSupported(const wchar_t* member, const Outputs& = Outputs()) {
        return Call(member, [] { return MAPI_E_NO_SUPPORT; });
    }

    /// Of the object's session; null for an object of none.
    const SessionPointer& Session() const { return m_session; }
    /// For the session itself: its objects are those that it gives from now on.
    void BeginSession() { m_session = std::make_shared<SessionLife>(); }

    /// Whether methods may be called at this time: S_OK, or what they answer.
    virtual HRESULT Usable() const { return S_OK; }
    /// The object is about to go; it is still whole.
    virtual void LastRelease() {}
    /// An interface beyond those of the traits: null, or the object without a new reference.
    virtual void* MoreInterfaces(REFIID) { return nullptr; }

    const LastFailure& Failure() const { return m_lastFailure; }

private:
    HRESULT Callable() const {
        if (!IsInitialized())
            return MAPI_E_NOT_INITIALIZED;
        return m_session && m_session->isOver ? MAPI_E_END_OF_SESSION : Usable();
    }
    /// The code of an object may be gone after the last MAPIUninitialize.
    static void CheckInitialized(const wchar_t* what) {
        if (!IsInitialized())
            ReportViolation(std::wstring(Traits::name) + what);
    }
    HRESULT Query(REFIID iid, void** object) {
        if (!object)
            return MAPI_E_INVALID_PARAMETER;
        const bool own =
            iid == IID_IUnknown || std::ranges::find(Traits::iids, iid) != std::end(Traits::iids);
        void* found = own ? static_cast<Interface*>(this) : MoreInterfaces(iid);
        if (!found)
            return MAPI_E_INTERFACE_NOT_SUPPORTED;
        AddRef();
        *object = found;
        return S_OK;
    }

    ULONG m_references = 1;
    LastFailure m_lastFailure;
    SessionPointer m_session = CallersSession();
    LiveCount m_alive{LiveObjects()};
};

/// What a method that opens an object does about its interface parameter: null means the object's own.
template <class Interface>
bool Offers(const IID* wanted) {
    using Traits = InterfaceTraits<Interface>;
    return !wanted || *wanted == IID_IUnknown ||
           std::ranges::find(Traits::iids, *wanted) != std::end(Traits::iids);
}

} // namespace standin::mapi
