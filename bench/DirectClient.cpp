// The jobs in Outlook's and MAPI's own calls.
#include "DirectClient.h"

#include "Fields.h"

#include <array>
#include <memory>
#include <vector>

namespace varden::bench {

namespace {

enum DefaultFolder : long { kOutbox = 4, kInbox = 6, kCalendar = 9, kContacts = 10, kDrafts = 16 };
enum ItemType : long { kMailItem = 0, kContactItem = 2 };

/// The kinds of item in the order in which they are told apart; mail is the last one needed.
constexpr std::array kKinds{InterfaceId(0x00063033), InterfaceId(0x00063021), InterfaceId(0x00063081),
                            InterfaceId(0x00063020), InterfaceId(0x00063022), InterfaceId(0x00063034)};
constexpr GUID kAppointment = kKinds[0], kContact = kKinds[1], kMail = kKinds[5];
constexpr ULONG kPrSmtpAddress = PROP_TAG(PT_UNICODE, 0x39FE);

// The members, by the kind of object that has them.
Member g_items{L"Items"}, g_folderItem{L"Item"}, g_count{L"Count"}, g_add{L"Add"};
Member g_mailMapiObject{L"MAPIOBJECT"}, g_contactMapiObject{L"MAPIOBJECT"};
Member g_contactSave{L"Save"}, g_contactEntryId{L"EntryID"};

struct FreeList {
    void operator()(ADRLIST* list) const {
        static const auto free = Mapi<void(WINAPI*)(ADRLIST*)>("FreePadrlist", "FreePadrlist@4");
        free(list);
    }
};

template <std::size_t Size>
std::vector<Member> MembersOf(const std::array<Field, Size>& fields) {
    std::vector<Member> members;
    members.reserve(Size);
    for (const Field& field : fields) {
        members.push_back({field.member});
    }
    return members;
}

std::vector<BYTE> BytesOf(const _bstr_t& hexadecimal) {
    std::vector<BYTE> bytes;
    const std::wstring digits(static_cast<const wchar_t*>(hexadecimal), hexadecimal.length());
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes.push_back(static_cast<BYTE>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

void ReadSender(IMAPISession& session, IMessage& message) {
    Held<IAddrBook> addressBook;
    Check(session.OpenAddressBook(0, nullptr, 0, addressBook.Out()));
    Block<SPropValue> sender, address;
    GetOneProp(message, PR_SENDER_ENTRYID, sender);
    ULONG type = 0;
    Held<IMAPIProp> entry;
    Check(addressBook->OpenEntry(sender->Value.bin.cb, reinterpret_cast<ENTRYID*>(sender->Value.bin.lpb),
                                 nullptr, 0, &type, entry.OutAs<IUnknown>()));
    GetOneProp(*entry, kPrSmtpAddress, address);
}

/// The recipients of the message, all their columns, resolved, and put back.
void ResolveRecipients(IMAPISession& session, IMessage& message) {
    Held<IMAPITable> table;
    Check(message.GetRecipientTable(MAPI_UNICODE, table.Out()));
    Held<IAddrBook> addressBook;
    Check(session.OpenAddressBook(0, nullptr, AB_NO_DIALOG, addressBook.Out()));
    Block<SPropTagArray> columns;
    Check(table->QueryColumns(TBL_ALL_COLUMNS, columns.Out()));
    Check(table->SetColumns(columns.Get(), 0));
    ULONG count = 0;
    Check(table->GetRowCount(0, &count));
    Check(table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr));
    SRowSet* rows = nullptr;
    Check(table->QueryRows(static_cast<LONG>(count), 0, &rows));
    const std::unique_ptr<ADRLIST, FreeList> list(reinterpret_cast<ADRLIST*>(rows));
    Check(addressBook->ResolveName(0, MAPI_UNICODE, nullptr, list.get()));
    Check(message.ModifyRecipients(MODRECIP_MODIFY, list.get()));
}

void Submit(IMsgStore& store, IMessage& message) {
    SizedSPropTagArray(1, tags) = {1, {PR_IPM_SENTMAIL_ENTRYID}};
    ULONG count = 0;
    Block<SPropValue> sentItems;
    Check(store.GetProps(reinterpret_cast<SPropTagArray*>(&tags), 0, &count, sentItems.Out()));
    SPropValue target = *sentItems.Get();
    target.ulPropTag = PR_SENTMAIL_ENTRYID;
    Check(message.SetProps(1, &target, nullptr));
    Check(message.SubmitMessage(0));
}

} // namespace

DirectClient::DirectClient() {
    CLSID classId;
    Check(CLSIDFromProgID(L"Outlook.Application", &classId));
    Check(CoCreateInstance(classId, nullptr, CLSCTX_ALL, IID_IDispatch,
                           reinterpret_cast<void**>(m_application.Out())));
    static Member getNamespace{L"GetNamespace"}, logon{L"Logon"}, mapiObject{L"MAPIOBJECT"};
    m_nameSpace = Object(*m_application, getNamespace, {L"MAPI"});
    Invoke(*m_nameSpace, logon, {L"Outlook"});
    MAPIINIT_0 options{};
    Check(Mapi<HRESULT(WINAPI*)(void*)>("MAPIInitialize")(&options));
    const _variant_t object = Invoke(*m_nameSpace, mapiObject);
    Check(object.punkVal->QueryInterface(InterfaceId(0x00020300), reinterpret_cast<void**>(m_session.Out())));
    static Member storeId{L"StoreID"};
    std::vector<BYTE> id = BytesOf(_bstr_t(Invoke(*DefaultFolder(kInbox), storeId)));
    Check(m_session->OpenMsgStore(0, static_cast<ULONG>(id.size()), reinterpret_cast<ENTRYID*>(id.data()),
                                  nullptr, MAPI_BEST_ACCESS | MDB_NO_DIALOG, m_store.Out()));
}

DirectClient::~DirectClient() {
    m_store = {};
    m_session = {};
    Mapi<void(WINAPI*)()>("MAPIUninitialize")();
}

Held<IDispatch> DirectClient::DefaultFolder(long number) {
    static Member getDefaultFolder{L"GetDefaultFolder"};
    return Object(*m_nameSpace, getDefaultFolder, {number});
}

Held<IDispatch> DirectClient::ItemsOf(long folder) {
    return Object(*DefaultFolder(folder), g_items);
}

Held<IDispatch> DirectClient::FirstItem(long folder, const GUID& kind) {
    return ItemOf(Invoke(*ItemsOf(folder), g_folderItem, {1L}), std::span(&kind, 1));
}

Held<IDispatch> DirectClient::NewItem(long folder, long type, const GUID& kind, Member& mapiObject) {
    Held<IDispatch> item = ItemOf(Invoke(*ItemsOf(folder), g_add, {type}), std::span(&kind, 1));
    MessageOf(*item, mapiObject);
    return item;
}

int DirectClient::WalkInbox(int most) {
    static Member entryId{L"EntryID"}, subject{L"Subject"}, importance{L"Importance"};
    const auto items = ItemsOf(kInbox);
    int i = 0;
    while (i < most && i < Invoke(*items, g_count).lVal) {
        const Held<IDispatch> mail = ItemOf(Invoke(*items, g_folderItem, {static_cast<long>(++i)}), kKinds);
        Invoke(*mail, entryId);
        const Held<IMessage> message = MessageOf(*mail, g_mailMapiObject);
        Invoke(*mail, subject);
        ReadSender(*m_session, *message);
        Block<SPropValue> received, body;
        GetOneProp(*message, PR_MESSAGE_DELIVERY_TIME, received);
        Invoke(*mail, importance);
        GetOneProp(*message, PR_BODY_W, body);
    }
    return i;
}

int DirectClient::SendMails(int count, const std::wstring& attachment) {
    static Member version{L"Version"}, to{L"To"}, subject{L"Subject"}, body{L"Body"}, move{L"Move"},
        attachments{L"Attachments"}, addAttachment{L"Add"};
    for (int i = 0; i < count; ++i) {
        const Held<IDispatch> mail = NewItem(kDrafts, kMailItem, kMail, g_mailMapiObject);
        Put(*mail, to, kAddressee);
        Invoke(*Object(*mail, attachments), addAttachment,
               {Missing(), Missing(), Missing(), attachment.c_str()});
        Put(*mail, subject, kSomeText);
        Put(*mail, body, kSomeText);
        Invoke(*m_application, version); // the body's form depends on it
        const Held<IDispatch> outbox = DefaultFolder(kOutbox);
        const Held<IDispatch> moved = Object(*mail, move, {outbox.Get()});
        const Held<IMessage> message = MessageOf(*moved, g_mailMapiObject);
        ResolveRecipients(*m_session, *message);
        Submit(*m_store, *message);
    }
    return count;
}

int DirectClient::SaveAttachment(const std::string& target) {
    static const auto openStream =
        Mapi<HRESULT(WINAPI*)(LPALLOCATEBUFFER, LPFREEBUFFER, ULONG, LPSTR, LPSTR, LPSTREAM*)>(
            "OpenStreamOnFile");
    static const auto allocate = Mapi<LPALLOCATEBUFFER>("MAPIAllocateBuffer");
    static const auto free = Mapi<LPFREEBUFFER>("MAPIFreeBuffer");
    const Held<IDispatch> mail = FirstItem(kDrafts, kMail);
    const Held<IMessage> message = MessageOf(*mail, g_mailMapiObject);
    Held<IAttach> attachment;
    Check(message->OpenAttach(0, nullptr, MAPI_BEST_ACCESS, attachment.Out()));
    Held<IStream> file, data;
    std::string path = target;
    Check(openStream(allocate, free, STGM_CREATE | STGM_READWRITE, path.data(), nullptr, file.Out()));
    Check(attachment->OpenProperty(PR_ATTACH_DATA_BIN, &IID_IStream, 0, 0, data.OutAs<IUnknown>()));
    ULARGE_INTEGER all{};
    all.QuadPart = ~0ull;
    Check(data->CopyTo(file.Get(), all, nullptr, nullptr));
    Check(file->Commit(STGC_DEFAULT));
    return 1;
}

int DirectClient::WriteContacts(int count) {
    static std::vector<Member> fields = MembersOf(kContactFields);
    for (int i = 0; i < count; ++i) {
        const Held<IDispatch> contact = NewItem(kContacts, kContactItem, kContact, g_contactMapiObject);
        for (Member& field : fields) {
            Put(*contact, field, kSomeText);
        }
        Invoke(*contact, g_contactSave);
        Invoke(*contact, g_contactEntryId);
    }
    return count;
}

int DirectClient::WriteCustomFields(int count) {
    static Member userProperties{L"UserProperties"}, find{L"Find"}, add{L"Add"}, value{L"Value"};
    constexpr long textType = 1;
    for (int i = 0; i < count; ++i) {
        const Held<IDispatch> contact = NewItem(kContacts, kContactItem, kContact, g_contactMapiObject);
        for (int field = 0; field < kCustomFields; ++field) {
            const std::wstring name = CustomFieldName(field);
            const auto properties = Object(*contact, userProperties);
            Invoke(*properties, find, {name.c_str()}); // finds none
            const auto property = Object(*properties, add, {Missing(), true, textType, name.c_str()});
            Put(*property, value, kSomeText);
        }
        Invoke(*contact, g_contactSave);
        Invoke(*contact, g_contactEntryId);
    }
    return count;
}

int DirectClient::ReadPattern(int rounds) {
    static std::vector<Member> fields = MembersOf(kPatternFields);
    static Member getPattern{L"GetRecurrencePattern"}, getExceptions{L"Exceptions"}, count{L"Count"},
        item{L"Item"}, deleted{L"Deleted"}, appointmentItem{L"AppointmentItem"};
    const Held<IDispatch> appointment = FirstItem(kCalendar, kAppointment);
    for (int i = 0; i < rounds; ++i) {
        const auto pattern = Object(*appointment, getPattern);
        for (Member& field : fields) {
            Invoke(*pattern, field);
        }
        const auto exceptions = Object(*pattern, getExceptions);
        for (long at = 1; at <= Invoke(*exceptions, count).lVal; ++at) {
            const auto exception = Object(*exceptions, item, {at});
            if (!static_cast<bool>(Invoke(*exception, deleted))) {
                Object(*exception, appointmentItem);
            }
        }
    }
    return rounds;
}

} // namespace varden::bench
