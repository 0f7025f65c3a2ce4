// Short ways to call MAPI.
#include "tests/mapi/Client.h"

#include <algorithm>
#include <cstring>

using namespace standin;

namespace mapi_tests {

SPropValue Text(ULONG tag, const wchar_t* text) {
    SPropValue value{};
    value.ulPropTag = tag;
    value.Value.lpszW = const_cast<wchar_t*>(text);
    return value;
}

SPropValue Long(ULONG tag, LONG number) {
    SPropValue value{};
    value.ulPropTag = tag;
    value.Value.l = number;
    return value;
}

SPropValue Truth(ULONG tag, bool truth) {
    SPropValue value{};
    value.ulPropTag = tag;
    value.Value.b = truth;
    return value;
}

SPropValue Time(ULONG tag, std::uint64_t ticks) {
    SPropValue value{};
    value.ulPropTag = tag;
    value.Value.ft = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    return value;
}

SPropValue Binary(ULONG tag, const Bytes& bytes) {
    SPropValue value{};
    value.ulPropTag = tag;
    value.Value.bin = {static_cast<ULONG>(bytes.size()), const_cast<BYTE*>(bytes.data())};
    return value;
}

std::wstring GetText(IMAPIProp* object, ULONG tag) {
    Block<SPropValue> value;
    EXPECT_EQ(HrGetOneProp(object, tag, &value), S_OK) << std::hex << tag;
    return value ? value->Value.lpszW : L"";
}

LONG GetLong(IMAPIProp* object, ULONG tag) {
    Block<SPropValue> value;
    EXPECT_EQ(HrGetOneProp(object, tag, &value), S_OK) << std::hex << tag;
    return value ? value->Value.l : -1;
}

Bytes GetBinary(IMAPIProp* object, ULONG tag) {
    Block<SPropValue> value;
    EXPECT_EQ(HrGetOneProp(object, tag, &value), S_OK) << std::hex << tag;
    return value ? Bytes(value->Value.bin.lpb, value->Value.bin.lpb + value->Value.bin.cb) : Bytes();
}

HRESULT ReadStatus(IMAPIProp* object, ULONG tag) {
    Block<SPropValue> value;
    return HrGetOneProp(object, tag, &value);
}

HRESULT Set(IMAPIProp* object, SPropValue value) {
    return HrSetOneProp(object, &value);
}

HRESULT Problem(IMAPIProp* object, SPropValue value) {
    Block<SPropProblemArray> problems;
    EXPECT_EQ(object->SetProps(1, &value, &problems), S_OK);
    if (!problems)
        return S_OK;
    EXPECT_EQ(problems->cProblem, 1u);
    EXPECT_EQ(problems->aProblem[0].ulIndex, 0u);
    EXPECT_EQ(problems->aProblem[0].ulPropTag, value.ulPropTag);
    return problems->aProblem[0].scode;
}

Bytes BytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

Bytes ReadAll(IStream* stream) {
    Bytes all;
    std::uint8_t part[1000];
    ULONG read = 0;
    while (SUCCEEDED(stream->Read(part, sizeof part, &read)) && read > 0)
        all.insert(all.end(), part, part + read);
    return all;
}

void WriteAll(IStream* stream, const Bytes& bytes) {
    ULONG written = 0;
    EXPECT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written), S_OK);
    EXPECT_EQ(written, bytes.size());
}

HRESULT OpenStream(IMAPIProp* object, ULONG tag, ULONG flags, Ref<IStream>& stream) {
    return object->OpenProperty(tag, &mapi::kIidStream, 0, flags, stream.Unknown());
}

ULONG RowCount(IMAPITable* table) {
    ULONG count = 0;
    EXPECT_EQ(table->GetRowCount(0, &count), S_OK);
    return count;
}

std::vector<std::wstring> Column(IMAPITable* table, ULONG tag) {
    EXPECT_EQ(table->SetColumns(Tags{tag}, 0), S_OK);
    Rows rows;
    EXPECT_EQ(table->QueryRows(1000, 0, &rows), S_OK);
    std::vector<std::wstring> texts;
    for (ULONG i = 0; i < rows.Count(); ++i)
        texts.push_back(rows.At(i, 0).ulPropTag == tag ? rows.At(i, 0).Value.lpszW : L"-");
    return texts;
}

AddressList::AddressList(std::initializer_list<std::initializer_list<SPropValue>> entries) {
    void* memory = nullptr;
    EXPECT_EQ(MAPIAllocateBuffer(static_cast<ULONG>(CbNewADRLIST(entries.size())), &memory), S_OK);
    m_list = static_cast<ADRLIST*>(memory);
    m_list->cEntries = 0;
    for (const auto& properties : entries) {
        const std::size_t size = properties.size() * sizeof(SPropValue);
        EXPECT_EQ(MAPIAllocateBuffer(static_cast<ULONG>(size), &memory), S_OK);
        std::copy(properties.begin(), properties.end(), static_cast<SPropValue*>(memory));
        m_list->aEntries[m_list->cEntries++] = {0, static_cast<ULONG>(properties.size()),
                                                static_cast<SPropValue*>(memory)};
    }
}

const SPropValue* AddressList::Find(ULONG entry, ULONG tag) const {
    const ADRENTRY& found = m_list->aEntries[entry];
    for (ULONG i = 0; i < found.cValues; ++i)
        if (found.rgPropVals[i].ulPropTag == tag)
            return &found.rgPropVals[i];
    return nullptr;
}

MapiTest::MapiTest() : m_world(mailbox::MakeSampleWorld()) {
    SetCurrentWatch(&m_watch);
    EXPECT_EQ(MAPIInitialize(nullptr), S_OK);
    mapi::SetMailbox(m_world.get());
    m_session = Ref<IMAPISession>(mapi::MakeSession());
}

MapiTest::~MapiTest() {
    m_session.Clear();
    const mapi::Counts left = mapi::Live();
    EXPECT_EQ(left.objects, 0);
    EXPECT_EQ(left.buffers, 0);
    MAPIUninitialize();
    EXPECT_EQ(mapi::Live().sessions, 0);
    EXPECT_EQ(m_watch.Violations(), std::vector<std::wstring>());
    SetCurrentWatch(nullptr);
    mapi::SetMailbox(nullptr);
}

Ref<IMsgStore> MapiTest::OpenStore(std::size_t index, ULONG flags) {
    Bytes id = Store(index).EntryId();
    Ref<IMsgStore> store;
    EXPECT_EQ(Session()->OpenMsgStore(0, static_cast<ULONG>(id.size()), reinterpret_cast<ENTRYID*>(id.data()),
                                      nullptr, flags, &store),
              S_OK);
    return store;
}

Ref<IMAPIFolder> MapiTest::OpenFolder(const wchar_t* name, ULONG flags) {
    Bytes id = Folder(name).EntryId();
    Ref<IMAPIFolder> folder;
    ULONG type = 0;
    EXPECT_EQ(Session()->OpenEntry(static_cast<ULONG>(id.size()), reinterpret_cast<ENTRYID*>(id.data()),
                                   nullptr, flags, &type, folder.Unknown()),
              S_OK);
    EXPECT_EQ(type, MAPI_FOLDER);
    return folder;
}

Ref<IAddrBook> MapiTest::OpenAddressBook() {
    Ref<IAddrBook> book;
    EXPECT_EQ(Session()->OpenAddressBook(0, nullptr, AB_NO_DIALOG, &book), S_OK);
    return book;
}

Ref<IMessage> MapiTest::NewMessage() {
    Ref<IMessage> message;
    EXPECT_EQ(OpenFolder(L"Inbox")->CreateMessage(nullptr, 0, &message), S_OK);
    return message;
}

Ref<IMessage> MapiTest::NewMessage(const wchar_t* subject) {
    Ref<IMessage> message = NewMessage();
    EXPECT_EQ(Set(message.Get(), Text(PR_SUBJECT_W, subject)), S_OK);
    EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    return message;
}

Ref<IMessage> MapiTest::Reopen(IMessage* message, ULONG flags) {
    Bytes id = GetBinary(message, PR_ENTRYID);
    Ref<IMessage> opened;
    ULONG type = 0;
    EXPECT_EQ(Session()->OpenEntry(static_cast<ULONG>(id.size()), reinterpret_cast<ENTRYID*>(id.data()),
                                   nullptr, flags, &type, opened.Unknown()),
              S_OK);
    EXPECT_EQ(type, MAPI_MESSAGE);
    return opened;
}

std::shared_ptr<mailbox::OpenMessage> MapiTest::MakeMessage() {
    std::shared_ptr<mailbox::OpenMessage> message;
    EXPECT_EQ(Folder(L"Inbox").CreateMessage(false, message), S_OK);
    return message;
}

std::vector<std::wstring> MapiTest::TakeViolations() {
    std::vector<std::wstring> violations = m_watch.Violations();
    m_watch.Reset();
    return violations;
}

std::ostream& operator<<(std::ostream& out, const std::vector<std::wstring>& texts) {
    for (const std::wstring& text : texts)
        out << mailbox::Narrow(text, CP_UTF8) << " | ";
    return out;
}

} // namespace mapi_tests
