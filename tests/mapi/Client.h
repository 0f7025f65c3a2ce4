// A client of MAPI as plug-ins are, and the ground that the tests of the MAPI stand-in stand on.
#pragma once

#include "standin/mailbox/Mailbox.h"
#include "standin/mapi/Functions.h"
#include "standin/mapi/Interfaces.h"
#include "standin/mapi/Views.h"
#include "standin/watch/Watch.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

namespace mapi_tests {

using standin::mailbox::Bytes;
using Texts = std::vector<std::wstring>;

/// One reference to an interface.
template <class Interface>
class Ref {
public:
    Ref() = default;
    explicit Ref(Interface* object) : m_object(object) {}
    Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    Ref& operator=(Ref&& other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Ref() { Clear(); }

    Interface* operator->() const { return m_object; }
    operator Interface*() const { return m_object; }
    /// For out parameters, of this type or as IUnknown.
    Interface** operator&() { return Clear(), &m_object; }
    IUnknown** Unknown() { return Clear(), reinterpret_cast<IUnknown**>(&m_object); }
    void Clear() {
        if (m_object)
            std::exchange(m_object, nullptr)->Release();
    }

private:
    Interface* m_object = nullptr;
};

/// One MAPI buffer.
template <class T>
class Block {
public:
    Block() = default;
    Block(const Block&) = delete;
    ~Block() { MAPIFreeBuffer(m_block); }
    T** operator&() { return MAPIFreeBuffer(std::exchange(m_block, nullptr)), &m_block; }
    T* operator->() const { return m_block; }
    T& operator[](std::size_t index) const { return m_block[index]; }
    T* Get() const { return m_block; }
    explicit operator bool() const { return m_block != nullptr; }

private:
    T* m_block = nullptr;
};

/// A list of tags for a parameter.
class Tags {
public:
    Tags(std::initializer_list<ULONG> tags) : m_memory{static_cast<ULONG>(tags.size())} {
        m_memory.insert(m_memory.end(), tags);
    }
    operator SPropTagArray*() { return reinterpret_cast<SPropTagArray*>(m_memory.data()); }

private:
    std::vector<ULONG> m_memory;
};

/// A row set, freed as clients free it.
class Rows {
public:
    Rows() = default;
    /// All rows of a table, from its beginning, with these columns.
    Rows(IMAPITable* table, Tags columns);
    Rows(const Rows&) = delete;
    ~Rows() { FreeProws(m_rows); }
    SRowSet** operator&() { return FreeProws(std::exchange(m_rows, nullptr)), &m_rows; }
    ULONG Count() const { return m_rows->cRows; }
    const SPropValue& At(ULONG row, ULONG column) const { return m_rows->aRow[row].lpProps[column]; }
    const SRow& Row(ULONG row) const { return m_rows->aRow[row]; }
    SRowSet* Release() { return std::exchange(m_rows, nullptr); }

private:
    SRowSet* m_rows = nullptr;
};

// Property values for parameters. What they point to is the caller's.
SPropValue Text(ULONG tag, const wchar_t* text);
SPropValue Narrow(ULONG tag, const char* text);
SPropValue Long(ULONG tag, LONG number);
SPropValue Truth(ULONG tag, bool truth);
SPropValue Binary(ULONG tag, const Bytes& bytes);

// Restrictions. What they point to is the caller's; the tag is the value's unless another is given.
SRestriction Property(ULONG relation, SPropValue& value, ULONG tag = 0);
SRestriction Content(ULONG level, SPropValue& value, ULONG tag = 0);
SRestriction Exist(ULONG tag);
SRestriction Not(SRestriction& part);
/// RES_AND or RES_OR.
SRestriction List(ULONG kind, std::span<SRestriction> parts);

// One property of an object, by HrGetOneProp or HrSetOneProp. Missing ones fail the test.
std::wstring GetText(IMAPIProp* object, ULONG tag);
LONG GetLong(IMAPIProp* object, ULONG tag);
Bytes GetBinary(IMAPIProp* object, ULONG tag);
/// The status of reading it.
HRESULT ReadStatus(IMAPIProp* object, ULONG tag);
HRESULT Set(IMAPIProp* object, SPropValue value);
/// The scode that SetProps notes for the property; S_OK for none.
HRESULT Problem(IMAPIProp* object, SPropValue value);

Bytes BytesOf(std::string_view text);
/// Those of an entry id that was handed out.
Bytes BytesOf(ULONG size, const Block<ENTRYID>& id);
// An entry id as parameters have it.
ULONG Size(const Bytes& id);
ENTRYID* Id(const Bytes& id);
/// Opens an entry through a session, a store, a folder or the address book.
template <class Opener, class Interface>
HRESULT OpenEntry(const Opener& opener, const Bytes& id, ULONG flags, Ref<Interface>& object,
                  ULONG* type = nullptr) {
    ULONG ignored = 0;
    return opener->OpenEntry(Size(id), Id(id), nullptr, flags, type ? type : &ignored, object.Unknown());
}

/// The rest of a stream.
Bytes ReadAll(IStream* stream);
void WriteAll(IStream* stream, const Bytes& bytes);
HRESULT OpenStream(IMAPIProp* object, ULONG tag, ULONG flags, Ref<IStream>& stream);
/// For those that can be opened.
Ref<IStream> OpenStream(IMAPIProp* object, ULONG tag, ULONG flags = 0);

/// The table that a method of the object gives.
template <class Holder, class Interface>
Ref<IMAPITable> Table(const Holder& object, HRESULT (STDMETHODCALLTYPE Interface::*open)(ULONG, IMAPITable**),
                      ULONG flags = MAPI_UNICODE) {
    Ref<IMAPITable> table;
    EXPECT_EQ(((*object).*open)(flags, &table), S_OK);
    return table;
}
ULONG RowCount(IMAPITable* table);
/// The texts of one column of a table, from where it stands; "-" where there is none.
Texts Column(IMAPITable* table, ULONG tag);

/// An address list of one entry with these properties, made as documented: each entry's in a buffer of its
/// own.
class AddressList {
public:
    AddressList(std::initializer_list<std::initializer_list<SPropValue>> entries);
    AddressList(const AddressList&) = delete;
    ~AddressList() { FreePadrlist(m_list); }
    operator ADRLIST*() const { return m_list; }
    /// A property of an entry; null for none.
    const SPropValue* Find(ULONG entry, ULONG tag) const;
    ULONG Size(ULONG entry = 0) const { return m_list->aEntries[entry].cValues; }

private:
    ADRLIST* m_list = nullptr;
};

/// A fresh sample world with a session on it, between MAPIInitialize and MAPIUninitialize. At the end nothing
/// may be left alive, and no rule broken but those that the test has looked at.
class MapiTest : public testing::Test {
protected:
    MapiTest();
    ~MapiTest() override;

    Ref<IMsgStore> OpenStore(std::size_t index = 0, ULONG flags = MAPI_BEST_ACCESS);
    Ref<IMAPIFolder> OpenFolder(const wchar_t* name, ULONG flags = MAPI_BEST_ACCESS);
    Ref<IAddrBook> OpenAddressBook();
    /// A new message, not yet saved.
    Ref<IMessage> NewMessageIn(const wchar_t* folder);
    Ref<IMessage> NewMessage() { return NewMessageIn(L"Inbox"); }
    /// One that is saved, with a subject.
    Ref<IMessage> NewMessage(const wchar_t* subject);
    /// A new attachment with this file name, not yet saved.
    static Ref<IAttach> NewAttach(IMessage* message, const wchar_t* name);
    Ref<IMessage> Reopen(IMessage* message, ULONG flags = 0);

    standin::mailbox::Mailbox& World() { return *m_world; }
    standin::mailbox::Store& Store(std::size_t index = 0) { return *m_world->AllStores()[index]; }
    standin::mailbox::Folder& Folder(std::wstring_view name) {
        return *Store().IpmSubtree().FindSubfolder(name);
    }
    /// The working copy of a message in the Inbox, to put into it what no client could.
    std::shared_ptr<standin::mailbox::OpenMessage> MakeMessage();
    IMAPISession* Session() { return m_session; }
    standin::Recorder& Watch() { return m_watch; }
    /// The rules broken so far, which the end of the test then passes over.
    Texts TakeViolations();

private:
    standin::Recorder m_watch;
    std::unique_ptr<standin::mailbox::Mailbox> m_world;
    Ref<IMAPISession> m_session;
};

std::ostream& operator<<(std::ostream& out, const Texts& texts);

} // namespace mapi_tests
