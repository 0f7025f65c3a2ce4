// IAddrBook.
#include "standin/mapi/AddressLists.h"
#include "standin/mapi/Buffers.h"
#include "standin/mapi/Entries.h"
#include "standin/mapi/FixedProperties.h"
#include "standin/mapi/PropObject.h"
#include "standin/mapi/ResolveNames.h"
#include "standin/mapi/Values.h"
#include "standin/mapi/Views.h"

namespace standin::mapi {
namespace {

using mailbox::AddressBook;

std::shared_ptr<FixedProperties> BookProperties(AddressBook& book) {
    mailbox::PropertyBag bag;
    bag.Set<PR_OBJECT_TYPE>(MAPI_ADDRBOOK);
    return std::make_shared<FixedProperties>(std::move(bag), book.Names());
}

class AddressBookView final : public DirectObject<IAddrBook> {
public:
    explicit AddressBookView(AddressBook& book) : DirectObject(BookProperties(book), false), m_book(book) {}

    HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, ENTRYID* entryId, const IID* iid, ULONG flags,
                                        ULONG* type, IUnknown** object) override {
        return Call(L"OpenEntry", Outputs(type, object), [&]() -> HRESULT {
            EntryRequest request;
            if (const HRESULT status = TakeEntryRequest(size, entryId, iid, flags, type, object, request);
                FAILED(status))
                return status;
            constexpr bool kRoot = true;
            return request.entryId.empty() ? OpenAddressContainer(m_book, kRoot, request)
                                           : OpenAddressBookEntry(m_book, request);
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
    HRESULT STDMETHODCALLTYPE CreateOneOff(LPTSTR name, LPTSTR type, LPTSTR address, ULONG flags, ULONG* size,
                                           ENTRYID** entryId) override {
        return Call(L"CreateOneOff", Outputs(size, entryId), [&]() -> HRESULT {
            if (!type || !address || !size || !entryId)
                return MAPI_E_INVALID_PARAMETER;
            if (flags & ~(MAPI_UNICODE | MAPI_SEND_NO_RICH_INFO))
                return MAPI_E_UNKNOWN_FLAGS;
            const bool wide = (flags & MAPI_UNICODE) != 0;
            const std::wstring addressText = TextAt(address, wide);
            const std::wstring nameText = name ? TextAt(name, wide) : addressText;
            const bool rich = (flags & MAPI_SEND_NO_RICH_INFO) == 0;
            GiveEntryId(mailbox::MakeOneOffEntryId(nameText, TextAt(type, wide), addressText, wide, rich),
                        size, entryId);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE NewEntry(ULONG_PTR, ULONG, ULONG, ENTRYID*, ULONG, ENTRYID*, ULONG*,
                                       ENTRYID**) override {
        return NotSupported(L"NewEntry");
    }
    HRESULT STDMETHODCALLTYPE ResolveName(ULONG_PTR, ULONG flags, LPTSTR, ADRLIST* list) override {
        return Call(L"ResolveName", [&]() -> HRESULT {
            if (!list)
                return MAPI_E_INVALID_PARAMETER;
            if (flags & ~(MAPI_UNICODE | MAPI_DIALOG))
                return MAPI_E_UNKNOWN_FLAGS;
            const HRESULT status = ResolveList(m_book, (flags & MAPI_UNICODE) != 0, *list);
            // The dialog that would ask for the rest is closed as soon as it is open.
            const bool asks = (flags & MAPI_DIALOG) != 0;
            const bool isOpen = status == MAPI_E_NOT_FOUND || status == MAPI_E_AMBIGUOUS_RECIP;
            return asks && isOpen ? MAPI_E_USER_CANCEL : status;
        });
    }
    HRESULT STDMETHODCALLTYPE Address(ULONG_PTR*, ADRPARM*, ADRLIST** list) override {
        return NotSupported(L"Address", Outputs(list));
    }
    HRESULT STDMETHODCALLTYPE Details(ULONG*, LPFNDISMISS, void*, ULONG, ENTRYID*, LPFNBUTTON, void*, LPTSTR,
                                      ULONG) override {
        return NotSupported(L"Details");
    }
    HRESULT STDMETHODCALLTYPE RecipOptions(ULONG_PTR, ULONG, ADRENTRY*) override {
        return NotSupported(L"RecipOptions");
    }
    HRESULT STDMETHODCALLTYPE QueryDefaultRecipOpt(LPTSTR, ULONG, ULONG*, SPropValue**) override {
        return NotSupported(L"QueryDefaultRecipOpt");
    }
    HRESULT STDMETHODCALLTYPE GetPAB(ULONG* size, ENTRYID** entryId) override {
        return Call(L"GetPAB", Outputs(size, entryId),
                    [] { return MAPI_E_NOT_FOUND; }); // there is no personal address book
    }
    HRESULT STDMETHODCALLTYPE SetPAB(ULONG, ENTRYID*) override { return NotSupported(L"SetPAB"); }
    HRESULT STDMETHODCALLTYPE GetDefaultDir(ULONG* size, ENTRYID** entryId) override {
        return Call(L"GetDefaultDir", Outputs(size, entryId), [&]() -> HRESULT {
            if (!size || !entryId)
                return MAPI_E_INVALID_PARAMETER;
            GiveEntryId(m_book.EntryId(), size, entryId);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE SetDefaultDir(ULONG, ENTRYID*) override {
        return NotSupported(L"SetDefaultDir");
    }
    HRESULT STDMETHODCALLTYPE GetSearchPath(ULONG flags, SRowSet** path) override {
        return Call(L"GetSearchPath", Outputs(path), [&] { return TellSearchPath(flags, path); });
    }
    HRESULT STDMETHODCALLTYPE SetSearchPath(ULONG, SRowSet*) override {
        return NotSupported(L"SetSearchPath");
    }
    HRESULT STDMETHODCALLTYPE PrepareRecips(ULONG, SPropTagArray*, ADRLIST*) override {
        return NotSupported(L"PrepareRecips");
    }

private:
    /// Names are looked up in the global address list alone.
    HRESULT TellSearchPath(ULONG flags, SRowSet** path) {
        if (!path)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~MAPI_UNICODE)
            return MAPI_E_UNKNOWN_FLAGS;
        const mailbox::PropertyBag bag = ListProperties(m_book);
        std::vector<mailbox::Property> values;
        for (const mailbox::Property& property : bag) {
            const auto type = mailbox::TypeOf(WithTextWidth(property.Tag(), (flags & MAPI_UNICODE) != 0));
            values.push_back({property.id, *mailbox::ConvertValue(property.value, type, CP_ACP)});
        }
        Buffer<SRowSet> rows(static_cast<SRowSet*>(NewBuffer(CbNewSRowSet(1))));
        rows->cRows = 1;
        rows->aRow[0] = {0, static_cast<ULONG>(values.size()), NewPropArray(values)};
        *path = rows.release();
        return S_OK;
    }

    AddressBook& m_book;
};

} // namespace

IAddrBook* MakeAddressBook(AddressBook& book) {
    return new AddressBookView(book);
}

} // namespace standin::mapi
