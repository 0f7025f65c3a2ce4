// IStorage and its streams, forwarded.
#include "standin/mapi/StorageView.h"

#include "standin/mailbox/Msg.h"

namespace standin::mapi {
namespace {

/// What Commit of the outermost storage does.
using Committer = std::function<HRESULT(IStorage& storage, DWORD flags)>;

bool WantsToWrite(DWORD mode) {
    return (mode & (STGM_WRITE | STGM_READWRITE)) != 0;
}

/// A stream of a storage.
class StorageStream final : public Object<IStream> {
public:
    explicit StorageStream(Held<IStream> inner) : m_inner(std::move(inner)) {}

    HRESULT STDMETHODCALLTYPE Read(void* data, ULONG size, ULONG* read) override {
        return Call(L"Read", Outputs(read), [&] { return m_inner->Read(data, size, read); });
    }
    HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG size, ULONG* written) override {
        return Call(L"Write", Outputs(written), [&] { return m_inner->Write(data, size, written); });
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override {
        return Call(L"Seek", Outputs(position), [&] { return m_inner->Seek(move, origin, position); });
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override {
        return Call(L"SetSize", [&] { return m_inner->SetSize(size); });
    }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                     ULARGE_INTEGER* written) override {
        return Call(L"CopyTo", [&] { return m_inner->CopyTo(target, size, read, written); });
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override {
        return Call(L"Commit", [&] { return m_inner->Commit(flags); });
    }
    HRESULT STDMETHODCALLTYPE Revert() override {
        return Call(L"Revert", [&] { return m_inner->Revert(); });
    }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) override {
        return Call(L"LockRegion", [&] { return m_inner->LockRegion(offset, size, type); });
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) override {
        return Call(L"UnlockRegion", [&] { return m_inner->UnlockRegion(offset, size, type); });
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* statistics, DWORD flags) override {
        return Call(L"Stat", [&] { return m_inner->Stat(statistics, flags); });
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override {
        return Call(L"Clone", Outputs(clone), [&]() -> HRESULT {
            if (!clone)
                return STG_E_INVALIDPOINTER;
            IStream* made = nullptr;
            const HRESULT status = m_inner->Clone(&made);
            if (SUCCEEDED(status))
                *clone = new StorageStream(Held<IStream>(made));
            return status;
        });
    }

private:
    Held<IStream> m_inner;
};

class StorageView final : public Object<IStorage> {
public:
    StorageView(Held<IStorage> inner, bool writable, Committer commit)
        : m_inner(std::move(inner)), m_writable(writable), m_commit(std::move(commit)) {}

    HRESULT STDMETHODCALLTYPE CreateStream(LPCOLESTR name, DWORD mode, DWORD reserved1, DWORD reserved2,
                                           IStream** stream) override {
        return Change(L"CreateStream", Outputs(stream), [&] {
            return GiveStream(stream, [&](IStream** made) {
                return m_inner->CreateStream(name, mode, reserved1, reserved2, made);
            });
        });
    }
    HRESULT STDMETHODCALLTYPE OpenStream(LPCOLESTR name, void* reserved1, DWORD mode, DWORD reserved2,
                                         IStream** stream) override {
        return Call(L"OpenStream", Outputs(stream), [&]() -> HRESULT {
            if (!m_writable && WantsToWrite(mode))
                return STG_E_ACCESSDENIED;
            return GiveStream(stream, [&](IStream** opened) {
                return m_inner->OpenStream(name, reserved1, mode, reserved2, opened);
            });
        });
    }
    HRESULT STDMETHODCALLTYPE CreateStorage(LPCOLESTR name, DWORD mode, DWORD reserved1, DWORD reserved2,
                                            IStorage** storage) override {
        return Change(L"CreateStorage", Outputs(storage), [&] {
            return GiveStorage(storage, [&](IStorage** made) {
                return m_inner->CreateStorage(name, mode, reserved1, reserved2, made);
            });
        });
    }
    HRESULT STDMETHODCALLTYPE OpenStorage(LPCOLESTR name, IStorage* priority, DWORD mode, SNB excluded,
                                          DWORD reserved, IStorage** storage) override {
        return Call(L"OpenStorage", Outputs(storage), [&]() -> HRESULT {
            if (!m_writable && WantsToWrite(mode))
                return STG_E_ACCESSDENIED;
            return GiveStorage(storage, [&](IStorage** opened) {
                return m_inner->OpenStorage(name, priority, mode, excluded, reserved, opened);
            });
        });
    }
    HRESULT STDMETHODCALLTYPE CopyTo(DWORD count, const IID* excluded, SNB names, IStorage* target) override {
        return Call(L"CopyTo", [&] { return m_inner->CopyTo(count, excluded, names, target); });
    }
    HRESULT STDMETHODCALLTYPE MoveElementTo(LPCOLESTR name, IStorage* target, LPCOLESTR newName,
                                            DWORD flags) override {
        return Change(L"MoveElementTo", [&] { return m_inner->MoveElementTo(name, target, newName, flags); });
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override {
        return Call(L"Commit", [&] { return m_commit ? m_commit(*m_inner, flags) : m_inner->Commit(flags); });
    }
    HRESULT STDMETHODCALLTYPE Revert() override {
        return Call(L"Revert", [&] { return m_inner->Revert(); });
    }
    HRESULT STDMETHODCALLTYPE EnumElements(DWORD reserved1, void* reserved2, DWORD reserved3,
                                           IEnumSTATSTG** elements) override {
        return Call(L"EnumElements", Outputs(elements),
                    [&] { return m_inner->EnumElements(reserved1, reserved2, reserved3, elements); });
    }
    HRESULT STDMETHODCALLTYPE DestroyElement(LPCOLESTR name) override {
        return Change(L"DestroyElement", [&] { return m_inner->DestroyElement(name); });
    }
    HRESULT STDMETHODCALLTYPE RenameElement(LPCOLESTR name, LPCOLESTR newName) override {
        return Change(L"RenameElement", [&] { return m_inner->RenameElement(name, newName); });
    }
    HRESULT STDMETHODCALLTYPE SetElementTimes(LPCOLESTR name, const FILETIME* created,
                                              const FILETIME* accessed, const FILETIME* modified) override {
        return Change(L"SetElementTimes",
                      [&] { return m_inner->SetElementTimes(name, created, accessed, modified); });
    }
    HRESULT STDMETHODCALLTYPE SetClass(REFCLSID classId) override {
        return Change(L"SetClass", [&] { return m_inner->SetClass(classId); });
    }
    HRESULT STDMETHODCALLTYPE SetStateBits(DWORD bits, DWORD mask) override {
        return Change(L"SetStateBits", [&] { return m_inner->SetStateBits(bits, mask); });
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* statistics, DWORD flags) override {
        return Call(L"Stat", [&] { return m_inner->Stat(statistics, flags); });
    }

private:
    template <class Work>
    HRESULT Change(const wchar_t* member, Work&& work) {
        return Call(member, [&]() -> HRESULT { return m_writable ? work() : STG_E_ACCESSDENIED; });
    }
    template <class Work>
    HRESULT Change(const wchar_t* member, const Outputs&, Work&& work) {
        return Change(member, std::forward<Work>(work));
    }

    /// Hands out what `open` gets from the storage itself, in the form that clients get it in.
    template <class Open>
    static HRESULT GiveStream(IStream** stream, Open open) {
        if (!stream)
            return STG_E_INVALIDPOINTER;
        IStream* inner = nullptr;
        const HRESULT status = open(&inner);
        if (SUCCEEDED(status))
            *stream = new StorageStream(Held<IStream>(inner));
        return status;
    }
    template <class Open>
    HRESULT GiveStorage(IStorage** storage, Open open) const {
        if (!storage)
            return STG_E_INVALIDPOINTER;
        IStorage* inner = nullptr;
        const HRESULT status = open(&inner);
        if (SUCCEEDED(status))
            *storage = new StorageView(Held<IStorage>(inner), m_writable, nullptr);
        return status;
    }

    Held<IStorage> m_inner;
    bool m_writable;
    Committer m_commit;
};

} // namespace

HRESULT OpenBytesAsStorage(const mailbox::Bytes& bytes, ByteKeeper keep, IUnknown** storage) {
    ILockBytes* memory = nullptr;
    IStorage* opened = nullptr;
    const HRESULT status = mailbox::OpenStorageBytes(bytes, &memory, &opened);
    if (FAILED(status))
        return mailbox::StatusFromStorage(status);
    const bool writable = keep != nullptr;
    const std::shared_ptr<ILockBytes> held(memory, Releaser());
    auto commit = [held, keep = std::move(keep)](IStorage& inner, DWORD flags) -> HRESULT {
        if (!keep)
            return STG_E_ACCESSDENIED;
        if (const HRESULT failed = inner.Commit(flags); FAILED(failed))
            return failed;
        mailbox::Bytes kept;
        const HRESULT read = mailbox::BytesOfStorage(held.get(), kept);
        return FAILED(read) ? read : keep(kept);
    };
    *storage = new StorageView(Held<IStorage>(opened), writable, std::move(commit));
    return S_OK;
}

} // namespace standin::mapi
