// The message filter.
#include "MessageFilter.h"

#include "outlook/ComPointers.h"

namespace varden {

namespace {

/// Waits for a busy Outlook for as long as it takes, without asking the user, and lets messages wait that
/// arrive in the meantime.
class MessageFilter final : public IMessageFilter {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) {
            return E_POINTER;
        }
        if (iid != IID_IUnknown && iid != IID_IMessageFilter) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IMessageFilter*>(this);
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }

    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override {
        return SERVERCALL_ISHANDLED;
    }

    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD, DWORD rejection) override {
        constexpr DWORD cancel = static_cast<DWORD>(-1);
        constexpr DWORD retryAfterMilliseconds = 100;
        return rejection == SERVERCALL_RETRYLATER ? retryAfterMilliseconds : cancel;
    }

    DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override { return PENDINGMSG_WAITDEFPROCESS; }

private:
    ~MessageFilter() = default;

    ULONG m_references = 0;
};

IMessageFilterPtr& ThreadFilter() {
    // Not destroyed with the library: by then the thread's apartment is gone.
    static auto& filter = *new IMessageFilterPtr;
    return filter;
}

} // namespace

void InstallMessageFilter() {
    if (ThreadFilter()) {
        CoRegisterMessageFilter(nullptr, nullptr);
    } else {
        ThreadFilter() = new MessageFilter;
    }
    CoRegisterMessageFilter(ThreadFilter(), nullptr);
}

void RemoveMessageFilter() {
    if (ThreadFilter()) {
        CoRegisterMessageFilter(nullptr, nullptr);
        ThreadFilter() = nullptr;
    }
}

} // namespace varden
