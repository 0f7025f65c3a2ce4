// A client of MAPI as plug-ins are, and the ground that the tests of the MAPI stand-in stand on.
#pragma once

#include "standin/mailbox/Mailbox.h"
#include "standin/mapi/Functions.h"
#include "standin/mapi/Interfaces.h"
#include "standin/mapi/Views.h"
#include "standin/watch/Watch.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace mapi_tests {

using standin::mailbox::Bytes;

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
    Interface* Get() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
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
    Block(Block&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) {}
    ~Block() { MAPIFreeBuffer(m_block); }
    T** operator&() { return MAPIFreeBuffer(std::exchange(m_block, nullptr)), &m_block; }
    T* operator->() const { return m_block; }
    T& operator[](std::size_t index) const { return m_block[index]; }
    T* Get() const { return m_block; }
    explicit operator bool() const { return m_block != nullptr; }

private:
    T* m_block = nullptr;
};

/// A row set, freed as clients free it.
class Rows {
public:
    Rows() = default;
    Rows(const Rows&) = delete;
    ~Rows() { FreeProws(m_rows); }
    SRowSet** operator&() { return FreeProws(std::exchange(m_rows, nullptr)), &m_rows; }
    ULONG Count() const { return m_rows->cRows; }
    const SPropValue& At(ULONG row, ULONG column) const { return m_rows->aRow[row].lpProps[column]; }
    const SRow& Row(ULONG row) const { return m_rows->aRow[row]; }
    SRowSet* Get() const { return m_rows; }
    SRowSet* Release() { return std::exchange(m_rows, nullptr); }

private:
    SRowSet* m_rows = nullptr;
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

// Property values for parameters. What they point to is the caller's.
SPropValue Text(ULONG tag, const wchar_t* text);
SPropValue Long(ULONG tag, LONG number);
SPropValue Truth(ULONG tag, bool truth);
SPropValue Time(ULONG tag, std::uint64_t ticks);
SPropValue Binary(ULONG tag, const Bytes& bytes);

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
/// The rest of a stream.
Bytes ReadAll(IStream* stream);
void WriteAll(IStream* stream, const Bytes& bytes);
HRESULT OpenStream(IMAPIProp* object, ULONG tag, ULONG flags, Ref<IStream>& stream);

ULONG RowCount(IMAPITable* table);
/// The texts of one column of a table, from where it stands; "-" where there is none.
std::vector<std::wstring> Column(IMAPITable* table, ULONG tag);

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
    /// A new message in the Inbox, not yet saved.
    Ref<IMessage> NewMessage();
    /// One that is saved, with a subject.
    Ref<IMessage> NewMessage(const wchar_t* subject);
    Ref<IMessage> Reopen(IMessage* message, ULONG flags = 0);

    standin::mailbox::Mailbox& World() { return *m_world; }
    standin::mailbox::Store& Store(std::size_t index = 0) { return *m_world->AllStores()[index]; }
    standin::mailbox::Folder& Folder(std::wstring_view name) {
        return *Store().IpmSubtree().FindSubfolder(name);
    }
    /// The working copy of a message in the Inbox, to put into it what no client could.
    std::shared_ptr<standin::mailbox::OpenMessage> MakeMessage();
    IMAPISession* Session() { return m_session.Get(); }
    standin::Recorder& Watch() { return m_watch; }
    /// The rules broken so far, which the end of the test then passes over.
    std::vector<std::wstring> TakeViolations();

private:
    standin::Recorder m_watch;
    std::unique_ptr<standin::mailbox::Mailbox> m_world;
    Ref<IMAPISession> m_session;
};

std::ostream& operator<<(std::ostream& out, const std::vector<std::wstring>& texts);

} // namespace mapi_tests
