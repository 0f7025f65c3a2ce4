// The class factory of the application object.
#include "standin/outlook/server/ClassFactory.h"

#include "standin/outlook/automation/Object.h"
#include "standin/outlook/session/Session.h"

namespace standin::outlook {
namespace {

/// Never released for good. Gives the one application object there is, as Outlook does.
class ClassFactory final : public IClassFactory {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (!object)
            return E_POINTER;
        const bool known = iid == IID_IUnknown || iid == IID_IClassFactory;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        Crossing call(Side::Outlook, L"ClassFactory", L"CreateInstance");
        if (!object)
            return call.Return(E_POINTER);
        *object = nullptr;
        if (call.Fails())
            return call.Status();
        return call.Return(outer ? CLASS_E_NOAGGREGATION : Create(iid, object));
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

private:
    static HRESULT Create(REFIID iid, void** object) {
        return Guarded([&] {
            World(); // an Outlook whose mailbox doesn't open doesn't start
            return TheApplication()->QueryInterface(iid, object);
        });
    }
};

} // namespace

IClassFactory& TheClassFactory() {
    static ClassFactory factory;
    return factory;
}

} // namespace standin::outlook
