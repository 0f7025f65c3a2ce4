// The limit: just the calls that a job needs, each member's DISPID asked for once.
#include "Clients.h"

#include <ole2.h>

#include <comdef.h>
#include <mapix.h>

#include <array>
#include <stdexcept>
#include <utility>
#include <vector>

namespace varden::bench {

namespace {

template <class T>
class Held {
public:
    Held() = default;
    Held(Held&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~Held() {
        if (m_object) {
            m_object->Release();
        }
    }
    Held& operator=(Held other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    T* operator->() const { return m_object; }
    T* Get() const { return m_object; }
    T** Out() { return &m_object; }

private:
    T* m_object = nullptr;
};

void Check(HRESULT status) {
    if (FAILED(status)) {
        throw std::runtime_error("a call failed");
    }
}

struct Member {
    const wchar_t* name;
    DISPID id = DISPID_UNKNOWN;
};

DISPID IdOf(IDispatch& object, Member& member) {
    if (member.id == DISPID_UNKNOWN) {
        auto* name = const_cast<wchar_t*>(member.name);
        Check(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &member.id));
    }
    return member.id;
}

void Put(IDispatch& object, Member& member, _variant_t value) {
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&value, &put, 1, 1};
    Check(object.Invoke(IdOf(object, member), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                        &parameters, nullptr, nullptr, nullptr));
}

_variant_t Invoke(IDispatch& object, Member& member, std::initializer_list<_variant_t> arguments = {}) {
    const DISPID id = IdOf(object, member);
    DISPPARAMS parameters{const_cast<_variant_t*>(arguments.begin()), nullptr,
                          static_cast<UINT>(arguments.size()), 0};
    _variant_t result;
    Check(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                        &parameters, &result, nullptr, nullptr));
    return result;
}

constexpr GUID InterfaceId(unsigned long first) {
    return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}
/// The kinds of item in the order in which the plug-in tells them apart; mail is the last one needed.
constexpr std::array kKinds{InterfaceId(0x00063033), InterfaceId(0x00063021), InterfaceId(0x00063081),
                            InterfaceId(0x00063020), InterfaceId(0x00063022), InterfaceId(0x00063034)};
constexpr GUID kContact = kKinds[1];
constexpr GUID kMapiSession = InterfaceId(0x00020300), kMessage = InterfaceId(0x00020307);
constexpr ULONG kPrSmtpAddress = PROP_TAG(PT_UNICODE, 0x39FE);

/// A function of MAPI32. Some have a decorated name too, or only that one.
template <class Function>
Function Mapi(const char* name, const char* decorated = "") {
    static const HMODULE library = LoadLibraryW(L"MAPI32.dll");
    FARPROC function = GetProcAddress(library, name);
    if (!function) {
        function = GetProcAddress(library, decorated);
    }
    if (!function) {
        throw std::runtime_error("MAPI32 lacks a function");
    }
    return reinterpret_cast<Function>(function);
}

const auto& GetOneProp() {
    static const auto function =
        Mapi<HRESULT(WINAPI*)(IMAPIProp*, ULONG, SPropValue**)>("HrGetOneProp", "HrGetOneProp@12");
    return function;
}
void FreeBuffer(void* block) {
    static const auto function = Mapi<ULONG(WINAPI*)(void*)>("MAPIFreeBuffer");
    function(block);
}

} // namespace

class DirectClient::Session {
public:
    Session() {
        CLSID classId;
        Check(CLSIDFromProgID(L"Outlook.Application", &classId));
        Check(CoCreateInstance(classId, nullptr, CLSCTX_ALL, IID_IDispatch,
                               reinterpret_cast<void**>(m_application.Out())));
        m_nameSpace = Dispatch(Invoke(*m_application.Get(), m_getNamespace, {L"MAPI"}));
        Invoke(*m_nameSpace.Get(), m_logon, {L"Outlook"});
        MAPIINIT_0 options{};
        Check(Mapi<HRESULT(WINAPI*)(void*)>("MAPIInitialize")(&options));
        const _variant_t object = Invoke(*m_nameSpace.Get(), m_mapiObject);
        Check(object.punkVal->QueryInterface(kMapiSession, reinterpret_cast<void**>(m_session.Out())));
    }
    ~Session() { Mapi<void(WINAPI*)()>("MAPIUninitialize")(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    int WalkInbox() {
        const auto inbox = Dispatch(Invoke(*m_nameSpace.Get(), m_getDefaultFolder, {6L}));
        const auto items = Dispatch(Invoke(*inbox.Get(), m_items));
        int i = 0;
        while (i < Invoke(*items.Get(), m_count).lVal) {
            const _variant_t item = Invoke(*items.Get(), m_item, {static_cast<long>(++i)});
            ReadMail(*item.pdispVal);
        }
        return i;
    }

    int WriteContacts(int count) {
        const _variant_t text(L"Some text");
        for (int i = 0; i < count; ++i) {
            const auto folder = Dispatch(Invoke(*m_nameSpace.Get(), m_getDefaultFolder, {10L}));
            const auto items = Dispatch(Invoke(*folder.Get(), m_items));
            const _variant_t item = Invoke(*items.Get(), m_add, {2L});
            Held<IDispatch> contact;
            Check(item.pdispVal->QueryInterface(kContact, reinterpret_cast<void**>(contact.Out())));
            const _variant_t object = Invoke(*contact.Get(), m_contactMapiObject);
            Held<IMessage> message;
            Check(object.punkVal->QueryInterface(kMessage, reinterpret_cast<void**>(message.Out())));
            for (Member& field : m_contactFields) {
                Put(*contact.Get(), field, text);
            }
            Invoke(*contact.Get(), m_save);
            Invoke(*contact.Get(), m_contactEntryId);
        }
        return count;
    }

private:
    static std::vector<Member> ContactMembers() {
        std::vector<Member> members;
        members.reserve(std::size(kContactFields));
        for (const ContactField& field : kContactFields) {
            members.push_back({field.member});
        }
        return members;
    }

    static Held<IDispatch> Dispatch(const _variant_t& value) {
        Held<IDispatch> object;
        Check(value.pdispVal ? S_OK : E_POINTER);
        (*object.Out() = value.pdispVal)->AddRef();
        return object;
    }

    void ReadMail(IDispatch& item) {
        Held<IDispatch> mail;
        for (const GUID& kind : kKinds) {
            if (SUCCEEDED(item.QueryInterface(kind, reinterpret_cast<void**>(mail.Out())))) {
                break;
            }
        }
        Invoke(*mail.Get(), m_entryId);
        const _variant_t object = Invoke(*mail.Get(), m_mailMapiObject);
        Held<IMessage> message;
        Check(object.punkVal->QueryInterface(kMessage, reinterpret_cast<void**>(message.Out())));
        Invoke(*mail.Get(), m_subject);
        ReadSender(*message.Get());
        ReadOne(*message.Get(), PR_MESSAGE_DELIVERY_TIME);
        Invoke(*mail.Get(), m_importance);
        ReadOne(*message.Get(), PR_BODY_W);
    }

    void ReadSender(IMessage& message) {
        Held<IAddrBook> addressBook;
        Check(m_session->OpenAddressBook(0, nullptr, 0, addressBook.Out()));
        SPropValue* sender = nullptr;
        Check(GetOneProp()(&message, PR_SENDER_ENTRYID, &sender));
        ULONG type = 0;
        Held<IMAPIProp> entry;
        Check(addressBook->OpenEntry(sender->Value.bin.cb, reinterpret_cast<ENTRYID*>(sender->Value.bin.lpb),
                                     nullptr, 0, &type, reinterpret_cast<IUnknown**>(entry.Out())));
        FreeBuffer(sender);
        ReadOne(*entry.Get(), kPrSmtpAddress);
    }

    static void ReadOne(IMAPIProp& object, ULONG tag) {
        SPropValue* value = nullptr;
        Check(GetOneProp()(&object, tag, &value));
        FreeBuffer(value);
    }

    Member m_getNamespace{L"GetNamespace"}, m_logon{L"Logon"}, m_mapiObject{L"MAPIOBJECT"};
    Member m_getDefaultFolder{L"GetDefaultFolder"}, m_items{L"Items"}, m_count{L"Count"}, m_item{L"Item"};
    Member m_entryId{L"EntryID"}, m_mailMapiObject{L"MAPIOBJECT"}, m_subject{L"Subject"},
        m_importance{L"Importance"};
    Member m_add{L"Add"}, m_contactMapiObject{L"MAPIOBJECT"}, m_save{L"Save"}, m_contactEntryId{L"EntryID"};
    std::vector<Member> m_contactFields = ContactMembers();
    Held<IDispatch> m_application, m_nameSpace;
    Held<IMAPISession> m_session;
};

DirectClient::DirectClient() : m_session(std::make_unique<Session>()) {
}

DirectClient::~DirectClient() = default;

int DirectClient::WalkInbox() {
    return m_session->WalkInbox();
}

int DirectClient::WriteContacts(int count) {
    return m_session->WriteContacts(count);
}

} // namespace varden::bench
