// IMAPISession.
#include "standin/mapi/Entries.h"
#include "standin/mapi/Errors.h"
#include "standin/mapi/Table.h"
#include "standin/mapi/TableSources.h"
#include "standin/mapi/Values.h"
#include "standin/mapi/Views.h"

#include "standin/mapi/Buffers.h"

namespace standin::mapi {
namespace {

// Newer than the platform's headers.
constexpr ULONG kOnline = 0x0100; // MDB_ONLINE
constexpr ULONG kCached = 0x0200; // MDB_CACHED

constexpr ULONG kOpenStoreFlags = MDB_NO_DIALOG | MDB_WRITE | MAPI_DEFERRED_ERRORS | MAPI_BEST_ACCESS |
                                  MDB_TEMPORARY | MDB_NO_MAIL | kOnline | kCached;

class SessionView final : public Object<IMAPISession> {
public:
    explicit SessionView(mailbox::Mailbox& mailbox) : m_mailbox(mailbox) { BeginSession(); }

    HRESULT STDMETHODCALLTYPE GetLastError(HRESULT status, ULONG flags, MAPIERROR** error) override {
        return Call(L"GetLastError", Outputs(error),
                    [&] { return DescribeFailure(Failure(), status, flags, error); });
    }
    HRESULT STDMETHODCALLTYPE GetMsgStoresTable(ULONG flags, IMAPITable** table) override {
        return Call(L"GetMsgStoresTable", Outputs(table), [&]() -> HRESULT {
            if (!table)
                return MAPI_E_INVALID_PARAMETER;
            if (flags & ~MAPI_UNICODE)
                return MAPI_E_UNKNOWN_FLAGS;
            *table = MakeTable(StoreRows(m_mailbox), flags & MAPI_UNICODE);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE OpenMsgStore(ULONG_PTR, ULONG size, ENTRYID* entryId, const IID* iid,
                                           ULONG flags, IMsgStore** store) override {
        return Call(L"OpenMsgStore", Outputs(store),
                    [&] { return OpenStore(size, entryId, iid, flags, store); });
    }
    HRESULT STDMETHODCALLTYPE OpenAddressBook(ULONG_PTR, const IID* iid, ULONG flags,
                                              IAddrBook** book) override {
        return Call(L"OpenAddressBook", Outputs(book), [&]() -> HRESULT {
            if (!book)
                return MAPI_E_INVALID_PARAMETER;
            if (flags & ~AB_NO_DIALOG)
                return MAPI_E_UNKNOWN_FLAGS;
            if (!Offers<IAddrBook>(iid))
                return MAPI_E_INTERFACE_NOT_SUPPORTED;
            *book = MakeAddressBook(m_mailbox.Addresses());
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE OpenProfileSection(MAPIUID*, const IID*, ULONG, IProfSect** section) override {
        return NotSupported(L"OpenProfileSection", Outputs(section));
    }
    HRESULT STDMETHODCALLTYPE GetStatusTable(ULONG, IMAPITable** table) override {
        return NotSupported(L"GetStatusTable", Outputs(table));
    }
    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, ENTRYID* entryId, const IID* iid, ULONG flags,
                                        ULONG* type, IUnknown** object) override {
        return Call(L"OpenEntry", Outputs(type, object), [&]() -> HRESULT {
            EntryRequest request;
            if (const HRESULT status = TakeEntryRequest(size, entryId, iid, flags, type, object, request);
                FAILED(status))
                return status;
            return Open(request);
        });
    }
    HRESULT STDMETHODCALLTYPE CompareEntryIDs(ULONG size1, ENTRYID* entryId1, ULONG size2, ENTRYID* entryId2,
                                              ULONG flags, ULONG* result) override {
        return Call(L"CompareEntryIDs", Outputs(result),
                    [&] { return CompareEntryIds(size1, entryId1, size2, entryId2, flags, result); });
    }
    HRESULT STDMETHODCALLTYPE Advise(ULONG, ENTRYID*, ULONG, IMAPIAdviseSink*, ULONG*) override {
        return NotSupported(L"Advise");
    }
    HRESULT STDMETHODCALLTYPE Unadvise(ULONG) override { return NotSupported(L"Unadvise"); }
    HRESULT STDMETHODCALLTYPE MessageOptions(ULONG_PTR, ULONG, LPTSTR, IMessage*) override {
        return NotSupported(L"MessageOptions");
    }
    HRESULT STDMETHODCALLTYPE QueryDefaultMessageOpt(LPTSTR, ULONG, ULONG*, SPropValue**) override {
        return NotSupported(L"QueryDefaultMessageOpt");
    }
    HRESULT STDMETHODCALLTYPE EnumAdrTypes(ULONG flags, ULONG* count, LPTSTR** types) override {
        return Call(L"EnumAdrTypes", Outputs(count, types),
                    [&] { return ListAddressTypes(flags, count, types); });
    }
    HRESULT STDMETHODCALLTYPE QueryIdentity(ULONG* size, ENTRYID** entryId) override {
        return Call(L"QueryIdentity", Outputs(size, entryId), [&] { return TellIdentity(size, entryId); });
    }
    HRESULT STDMETHODCALLTYPE Logoff(ULONG_PTR, ULONG, ULONG) override {
        return Call(L"Logoff", [&] {
            Session()->isOver = true;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE SetDefaultStore(ULONG, ULONG, ENTRYID*) override {
        return NotSupported(L"SetDefaultStore");
    }
    HRESULT STDMETHODCALLTYPE AdminServices(ULONG, IMsgServiceAdmin** services) override {
        return NotSupported(L"AdminServices", Outputs(services));
    }
    HRESULT STDMETHODCALLTYPE ShowForm(ULONG_PTR, IMsgStore*, IMAPIFolder*, const IID*, ULONG, IMessage*,
                                       ULONG, ULONG, ULONG, ULONG, LPSTR) override {
        return NotSupported(L"ShowForm");
    }
    HRESULT STDMETHODCALLTYPE PrepareForm(const IID*, IMessage*, ULONG*) override {
        return NotSupported(L"PrepareForm");
    }

private:
    HRESULT OpenStore(ULONG size, const ENTRYID* entryId, const IID* iid, ULONG flags, IMsgStore** store) {
        TellFlags(flags);
        if (flags & ~kOpenStoreFlags)
            return MAPI_E_UNKNOWN_FLAGS;
        const ULONG entryFlags = (flags & MAPI_BEST_ACCESS) | (flags & MDB_WRITE ? MAPI_MODIFY : 0);
        IUnknown* object = nullptr;
        EntryRequest request;
        if (!store)
            return MAPI_E_INVALID_PARAMETER;
        if (const HRESULT status =
                TakeEntryRequest(size, entryId, iid, entryFlags, nullptr, &object, request);
            FAILED(status))
            return status;
        mailbox::Store* found = m_mailbox.FindStore(request.entryId);
        if (!found)
            return WhyNoStore(request.entryId);
        if (const HRESULT status = OpenFound(*found, request); FAILED(status))
            return status;
        *store = static_cast<IMsgStore*>(object);
        return S_OK;
    }

    static HRESULT OpenFound(mailbox::Store& store, const EntryRequest& request) {
        if (!Offers<IMsgStore>(request.iid))
            return MAPI_E_INTERFACE_NOT_SUPPORTED;
        mailbox::Access access{};
        if (const HRESULT status = AccessFrom(request.flags, !store.IsReadOnly(), access); FAILED(status))
            return status;
        *request.object = MakeStore(store, access);
        if (request.objectType)
            *request.objectType = MAPI_STORE;
        return S_OK;
    }

    HRESULT Open(const EntryRequest& request) {
        if (mailbox::Store* store = m_mailbox.FindStore(request.entryId))
            return OpenFound(*store, request);
        const HRESULT status = OpenStoreEntry(m_mailbox, nullptr, request);
        return status == MAPI_E_UNKNOWN_ENTRYID ? OpenAddressBookEntry(m_mailbox.Addresses(), request)
                                                : status;
    }

    static HRESULT ListAddressTypes(ULONG flags, ULONG* count, LPTSTR** types) {
        static constexpr std::wstring_view kTypes[] = {L"EX", L"SMTP"};
        if (!count || !types)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~MAPI_UNICODE)
            return MAPI_E_UNKNOWN_FLAGS;
        auto* list = static_cast<LPTSTR*>(NewBuffer(std::size(kTypes) * sizeof(LPTSTR)));
        for (std::size_t i = 0; i < std::size(kTypes); ++i)
            list[i] = NewText(kTypes[i], (flags & MAPI_UNICODE) != 0, list);
        *types = list;
        *count = static_cast<ULONG>(std::size(kTypes));
        return S_OK;
    }

    /// The user is who the default store belongs to.
    HRESULT TellIdentity(ULONG* size, ENTRYID** entryId) {
        if (!size || !entryId)
            return MAPI_E_INVALID_PARAMETER;
        const mailbox::Store* store = m_mailbox.DefaultStore();
        const auto user =
            store ? m_mailbox.Addresses().FindByAddress(L"SMTP", store->SmtpAddress()) : nullptr;
        if (!user)
            return MAPI_E_NOT_FOUND;
        GiveEntryId(user->EntryId(), size, entryId);
        return S_OK;
    }

    mailbox::Mailbox& m_mailbox;
};

} // namespace

IMAPISession* MakeSession() {
    mailbox::Mailbox* mailbox = CurrentMailbox();
    return mailbox ? new SessionView(*mailbox) : nullptr;
}

} // namespace standin::mapi
