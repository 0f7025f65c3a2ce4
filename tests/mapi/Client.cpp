// Short ways to call MAPI.
#include "tests/mapi/Client.h"

#include <algorithm>
#include <cstring>

using namespace standin;

namespace mapi_tests {

SPropValue Text(ULONG tag, const wchar_t* text) {
    return {tag, 0, {.lpszW = const_cast<wchar_t*>(text)}};
}

SPropValue Narrow(ULONG tag, const char* text) {
    return {tag, 0, {.lpszA = const_cast<char*>(text)}};
}

SPropValue Long(ULONG tag, LONG number) {
    return {tag, 0, {.l = number}};
}

SPropValue Truth(ULONG tag, bool truth) {
    return {tag, 0, {.b = truth}};
}

SPropValue Binary(ULONG tag, const Bytes& bytes) {
    return {tag, 0, {.bin = {static_cast<ULONG>(bytes.size()), const_cast<BYTE*>(bytes.data())}}};
}

SRestriction Property(ULONG relation, SPropValue& value, ULONG tag) {
    return {RES_PROPERTY, {.resProperty = {relation, tag ? tag : value.ulPropTag, &value}}};
}

SRestriction Content(ULONG level, SPropValue& value, ULONG tag) {
    return {RES_CONTENT, {.resContent = {level, tag ? tag : value.ulPropTag, &value}}};
}

SRestriction Exist(ULONG tag) {
    return {RES_EXIST, {.resExist = {0, tag, 0}}};
}

SRestriction Not(SRestriction& part) {
    return {RES_NOT, {.resNot = {0, &part}}};
}

SRestriction List(ULONG kind, std::span<SRestriction> parts) {
    return {kind, {.resAnd = {static_cast<ULONG>(parts.size()), parts.data()}}};
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

ULONG Size(const Bytes& id) {
    return static_cast<ULONG>(id.size());
}

ENTRYID* Id(const Bytes& id) {
    return reinterpret_cast<ENTRYID*>(const_cast<BYTE*>(id.data()));
}

Bytes BytesOf(ULONG size, const Block<ENTRYID>& id) {
    const auto* bytes = reinterpret_cast<const BYTE*>(id.Get());
    return {bytes, bytes + size};
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

Ref<IStream> OpenStream(IMAPIProp* object, ULONG tag, ULONG flags) {
    Ref<IStream> stream;
    EXPECT_EQ(OpenStream(object, tag, flags, stream), S_OK);
    return stream;
}

Rows::Rows(IMAPITable* table, Tags columns) {
    EXPECT_EQ(table->SetColumns(columns, 0), S_OK);
    EXPECT_EQ(table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr), S_OK);
    EXPECT_EQ(table->QueryRows(1000, 0, &m_rows), S_OK);
}

ULONG RowCount(IMAPITable* table) {
    ULONG count = 0;
    EXPECT_EQ(table->GetRowCount(0, &count), S_OK);
    return count;
}

Texts Column(IMAPITable* table, ULONG tag) {
    EXPECT_EQ(table->SetColumns(Tags{tag}, 0), S_OK);
    Rows rows;
    EXPECT_EQ(table->QueryRows(1000, 0, &rows), S_OK);
    Texts texts;
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
    EXPECT_EQ(m_watch.Violations(), Texts());
    SetCurrentWatch(nullptr);
    mapi::SetMailbox(nullptr);
}

Ref<IMsgStore> MapiTest::OpenStore(std::size_t index, ULONG flags) {
    const Bytes id = Store(index).EntryId();
    Ref<IMsgStore> store;
    EXPECT_EQ(Session()->OpenMsgStore(0, Size(id), Id(id), nullptr, flags, &store), S_OK);
    return store;
}

Ref<IMAPIFolder> MapiTest::OpenFolder(const wchar_t* name, ULONG flags) {
    Ref<IMAPIFolder> folder;
    ULONG type = 0;
    EXPECT_EQ(OpenEntry(Session(), Folder(name).EntryId(), flags, folder, &type), S_OK);
    EXPECT_EQ(type, MAPI_FOLDER);
    return folder;
}

Ref<IAddrBook> MapiTest::OpenAddressBook() {
    Ref<IAddrBook> book;
    EXPECT_EQ(Session()->OpenAddressBook(0, nullptr, AB_NO_DIALOG, &book), S_OK);
    return book;
}

Ref<IMessage> MapiTest::NewMessageIn(const wchar_t* folder) {
    Ref<IMessage> message;
    EXPECT_EQ(OpenFolder(folder)->CreateMessage(nullptr, 0, &message), S_OK);
    return message;
}

Ref<IMessage> MapiTest::NewMessage(const wchar_t* subject) {
    Ref<IMessage> message = NewMessage();
    EXPECT_EQ(Set(message, Text(PR_SUBJECT_W, subject)), S_OK);
    EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    return message;
}

Ref<IAttach> MapiTest::NewAttach(IMessage* message, const wchar_t* name) {
    ULONG number = 0;
    Ref<IAttach> attach;
    EXPECT_EQ(message->CreateAttach(nullptr, 0, &number, &attach), S_OK);
    EXPECT_EQ(Set(attach, Text(PR_ATTACH_LONG_FILENAME_W, name)), S_OK);
    return attach;
}

Ref<IMessage> MapiTest::Reopen(IMessage* message, ULONG flags) {
    Ref<IMessage> opened;
    ULONG type = 0;
    EXPECT_EQ(OpenEntry(Session(), GetBinary(message, PR_ENTRYID), flags, opened, &type), S_OK);
    EXPECT_EQ(type, MAPI_MESSAGE);
    return opened;
}

std::shared_ptr<mailbox::OpenMessage> MapiTest::MakeMessage() {
    std::shared_ptr<mailbox::OpenMessage> message;
    EXPECT_EQ(Folder(L"Inbox").CreateMessage(false, message), S_OK);
    return message;
}

Texts MapiTest::TakeViolations() {
    Texts violations = m_watch.Violations();
    m_watch.Reset();
    return violations;
}

std::ostream& operator<<(std::ostream& out, const Texts& texts) {
    for (const std::wstring& text : texts)
        out << mailbox::Narrow(text, CP_UTF8) << " | ";
    return out;
}

} // namespace mapi_tests
