// IMsgStore.
#include "standin/mapi/Entries.h"
#include "standin/mapi/PropObject.h"
#include "standin/mapi/Values.h"
#include "standin/mapi/Views.h"

#include "standin/mailbox/SpecialFolders.h"

namespace standin::mapi {
namespace {

class StoreView final : public DirectObject<IMsgStore> {
public:
    StoreView(mailbox::Store& store, mailbox::Access access)
        : DirectObject(Unowned(store), access == mailbox::Access::Modify), m_store(store) {}

    HRESULT STDMETHODCALLTYPE Advise(ULONG, ENTRYID*, ULONG, IMAPIAdviseSink*, ULONG*) override {
        return NotSupported(L"Advise");
    }
    HRESULT STDMETHODCALLTYPE Unadvise(ULONG) override { return NotSupported(L"Unadvise"); }
    HRESULT STDMETHODCALLTYPE CompareEntryIDs(ULONG size1, ENTRYID* entryId1, ULONG size2, ENTRYID* entryId2,
                                              ULONG flags, ULONG* result) override {
        return Call(L"CompareEntryIDs", Outputs(result),
                    [&] { return CompareEntryIds(size1, entryId1, size2, entryId2, flags, result); });
    }
    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, ENTRYID* entryId, const IID* iid, ULONG flags,
                                        ULONG* type, IUnknown** object) override {
        return Call(L"OpenEntry", Outputs(type, object), [&]() -> HRESULT {
            EntryRequest request;
            if (const HRESULT status = TakeEntryRequest(size, entryId, iid, flags, type, object, request);
                FAILED(status))
                return status;
            const mailbox::Bytes root = m_store.Root().EntryId();
            if (request.entryId.empty())
                request.entryId = root;
            request.storeIsWritable = SUCCEEDED(CheckWritable());
            return OpenStoreEntry(m_store.Mailbox(), &m_store, request);
        });
    }
    HRESULT STDMETHODCALLTYPE SetReceiveFolder(LPTSTR, ULONG, ULONG, ENTRYID*) override {
        return NotSupported(L"SetReceiveFolder");
    }
    HRESULT STDMETHODCALLTYPE GetReceiveFolder(LPTSTR, ULONG flags, ULONG* size, ENTRYID** entryId,
                                               LPTSTR* explicitClass) override {
        return Call(L"GetReceiveFolder", Outputs(size, entryId, explicitClass),
                    [&] { return TellReceiveFolder(flags, size, entryId, explicitClass); });
    }
    HRESULT STDMETHODCALLTYPE GetReceiveFolderTable(ULONG, IMAPITable** table) override {
        return NotSupported(L"GetReceiveFolderTable", Outputs(table));
    }
    HRESULT STDMETHODCALLTYPE StoreLogoff(ULONG* flags) override {
        return Call(L"StoreLogoff", [&]() -> HRESULT {
            if (!flags)
                return MAPI_E_INVALID_PARAMETER;
            *flags = LOGOFF_COMPLETE;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE AbortSubmit(ULONG size, ENTRYID* entryId, ULONG flags) override {
        return Call(L"AbortSubmit", [&] { return Withdraw(size, entryId, flags); });
    }
    HRESULT STDMETHODCALLTYPE GetOutgoingQueue(ULONG, IMAPITable** table) override {
        return NotSupported(L"GetOutgoingQueue", Outputs(table));
    }
    HRESULT STDMETHODCALLTYPE SetLockState(IMessage*, ULONG) override {
        return NotSupported(L"SetLockState");
    }
    HRESULT STDMETHODCALLTYPE FinishedMsg(ULONG, ULONG, ENTRYID*) override {
        return NotSupported(L"FinishedMsg");
    }
    HRESULT STDMETHODCALLTYPE NotifyNewMail(NOTIFICATION*) override { return NotSupported(L"NotifyNewMail"); }

private:
    /// Stores live as long as their mailbox.
    static std::shared_ptr<mailbox::Store> Unowned(mailbox::Store& store) {
        return {std::shared_ptr<void>(), &store};
    }

    /// Only what waits for its time can be taken back: all else goes out as it is submitted.
    HRESULT Withdraw(ULONG size, const ENTRYID* entryId, ULONG flags) {
        if (size == 0 || !entryId)
            return MAPI_E_INVALID_PARAMETER;
        if (flags != 0)
            return MAPI_E_UNKNOWN_FLAGS;
        const auto message = m_store.Mailbox().FindMessage(BytesAt(size, entryId));
        if (!message || &message->ParentFolder()->Store() != &m_store)
            return MAPI_E_NOT_IN_QUEUE;
        const HRESULT status = CheckWritable();
        return FAILED(status) ? status : message->Withdraw();
    }

    /// Every class is received in the Inbox, for which the class that is set is the empty one.
    HRESULT TellReceiveFolder(ULONG flags, ULONG* size, ENTRYID** entryId, LPTSTR* explicitClass) {
        if (!size || !entryId)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~MAPI_UNICODE)
            return MAPI_E_UNKNOWN_FLAGS;
        const mailbox::Folder* inbox = m_store.SpecialFolder(mailbox::kInbox);
        if (!inbox)
            return MAPI_E_NO_SUPPORT;
        GiveEntryId(inbox->EntryId(), size, entryId);
        if (explicitClass)
            *explicitClass = NewText(L"", (flags & MAPI_UNICODE) != 0, nullptr);
        return S_OK;
    }

    mailbox::Store& m_store;
};

} // namespace

IMsgStore* MakeStore(mailbox::Store& store, mailbox::Access access) {
    return new StoreView(store, access);
}

} // namespace standin::mapi
