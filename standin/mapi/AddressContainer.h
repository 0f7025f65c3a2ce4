// IMAPIContainer and what is like it in IABContainer and IDistList: the containers of addresses.
#pragma once

#include "standin/mapi/Entries.h"
#include "standin/mapi/PropObject.h"
#include "standin/mapi/ResolveNames.h"
#include "standin/mapi/Table.h"
#include "standin/mapi/TableSources.h"

namespace standin::mapi {

/// A container that holds addresses and can't be changed by clients: the members of IMAPIContainer, and those
/// that IABContainer and IDistList both have after them.
template <class Interface>
class AddressContainer : public DirectObject<Interface> {
public:
    AddressContainer(mailbox::AddressBook& book, std::shared_ptr<mailbox::PropertyObject> properties)
        : DirectObject<Interface>(std::move(properties), false), m_book(book) {}

    HRESULT STDMETHODCALLTYPE GetContentsTable(ULONG flags, IMAPITable** table) override {
        return this->Call(L"GetContentsTable", Outputs(table), [&]() -> HRESULT {
            if (!table)
                return MAPI_E_INVALID_PARAMETER;
            if (flags & ~(MAPI_UNICODE | MAPI_DEFERRED_ERRORS))
                return MAPI_E_UNKNOWN_FLAGS;
            std::unique_ptr<TableRows> rows = Contents();
            if (!rows)
                return MAPI_E_NO_SUPPORT;
            *table = MakeTable(std::move(rows), (flags & MAPI_UNICODE) != 0);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetHierarchyTable(ULONG flags, IMAPITable** table) override {
        return this->Call(L"GetHierarchyTable", Outputs(table), [&]() -> HRESULT {
            if (!table)
                return MAPI_E_INVALID_PARAMETER;
            if (flags & ~(MAPI_UNICODE | MAPI_DEFERRED_ERRORS | CONVENIENT_DEPTH))
                return MAPI_E_UNKNOWN_FLAGS;
            std::unique_ptr<TableRows> rows = Lists();
            if (!rows)
                return MAPI_E_NO_SUPPORT;
            *table = MakeTable(std::move(rows), (flags & MAPI_UNICODE) != 0);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, ENTRYID* entryId, const IID* iid, ULONG flags,
                                        ULONG* type, IUnknown** object) override {
        return this->Call(L"OpenEntry", Outputs(type, object), [&]() -> HRESULT {
            EntryRequest request;
            if (const HRESULT status = TakeEntryRequest(size, entryId, iid, flags, type, object, request);
                FAILED(status))
                return status;
            if (request.entryId.empty())
                return MAPI_E_INVALID_ENTRYID;
            return OpenAddressBookEntry(m_book, request);
        });
    }
    HRESULT STDMETHODCALLTYPE SetSearchCriteria(SRestriction*, ENTRYLIST*, ULONG) override {
        return this->NotSupported(L"SetSearchCriteria");
    }
    HRESULT STDMETHODCALLTYPE GetSearchCriteria(ULONG, SRestriction**, ENTRYLIST**, ULONG*) override {
        return this->NotSupported(L"GetSearchCriteria");
    }
    HRESULT STDMETHODCALLTYPE CreateEntry(ULONG, ENTRYID*, ULONG, IMAPIProp** entry) override {
        return Refused(L"CreateEntry", Outputs(entry));
    }
    HRESULT STDMETHODCALLTYPE CopyEntries(ENTRYLIST*, ULONG, IMAPIProgress*, ULONG) override {
        return Refused(L"CopyEntries");
    }
    HRESULT STDMETHODCALLTYPE DeleteEntries(ENTRYLIST*, ULONG) override { return Refused(L"DeleteEntries"); }
    HRESULT STDMETHODCALLTYPE ResolveNames(SPropTagArray* tags, ULONG flags, ADRLIST* list,
                                           FlagList* flagList) override {
        return this->Call(L"ResolveNames", [&]() -> HRESULT {
            if (!list || !flagList)
                return MAPI_E_INVALID_PARAMETER;
            if (flags & ~MAPI_UNICODE)
                return MAPI_E_UNKNOWN_FLAGS;
            if (!Resolves())
                return MAPI_E_NO_SUPPORT;
            return ResolveListWithFlags(m_book, tags, (flags & MAPI_UNICODE) != 0, *list, *flagList);
        });
    }

protected:
    /// The addresses in it, and the lists in it; null for what such a container doesn't have.
    virtual std::unique_ptr<TableRows> Contents() const = 0;
    virtual std::unique_ptr<TableRows> Lists() const = 0;
    /// Whether names can be looked up in it.
    virtual bool Resolves() const = 0;

    mailbox::AddressBook& Book() const { return m_book; }

private:
    /// Administrators change these, clients don't.
    HRESULT Refused(const wchar_t* member, const Outputs& = Outputs()) {
        return this->Call(member, [] { return E_ACCESSDENIED; });
    }

    mailbox::AddressBook& m_book;
};

} // namespace standin::mapi
