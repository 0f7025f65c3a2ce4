// The late-bound client of the tests.
#include "Client.h"

namespace outlook_tests {
namespace {

/// COM, and the registration that the programs of a prefix take turns with, for the life of the program.
void Prepare() {
    static standin::outlook::Registration registration;
    static const HRESULT initialized = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ASSERT_TRUE(SUCCEEDED(initialized));
}

/// A function of MAPI's, which clients look up as they need it.
template <class Function>
Function MapiFunction(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"MAPI32.dll"), name)));
}

std::wstring Take(BSTR text) {
    const std::wstring copy = text ? std::wstring(text, SysStringLen(text)) : std::wstring();
    SysFreeString(text);
    return copy;
}

/// Where GetIDsOfNames knows no such member.
Answer UnknownName() {
    return {.status = DISP_E_UNKNOWNNAME};
}

} // namespace

_variant_t Missing() {
    return _variant_t(DISP_E_PARAMNOTFOUND, VT_ERROR);
}

_variant_t Date(double days) {
    return _variant_t(days, VT_DATE);
}

Value::Value(const Object& object) : _variant_t(object.Raw()) {
}

Object::Object(const _variant_t& value) {
    if (value.vt == VT_DISPATCH)
        m_object = value.pdispVal;
}

bool Object::IsA(std::uint32_t interfaceId) const {
    const IID id{interfaceId, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    _com_ptr_t<_com_IIID<IUnknown, &IID_IUnknown>> answer;
    const HRESULT status = m_object->QueryInterface(id, reinterpret_cast<void**>(&answer));
    EXPECT_EQ(status, answer ? S_OK : E_NOINTERFACE) << std::hex << interfaceId;
    return answer != nullptr;
}

DISPID Object::IdOf(const wchar_t* name) const {
    LPOLESTR names = const_cast<LPOLESTR>(name);
    DISPID id = DISPID_UNKNOWN;
    if (m_object)
        m_object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

Answer Object::Invoke(DISPID id, WORD flags, const Values& arguments) const {
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPID putName = DISPID_PROPERTYPUT;
    const bool isPut = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    DISPPARAMS parameters{reversed.data(), isPut ? &putName : nullptr, static_cast<UINT>(reversed.size()),
                          isPut};
    EXCEPINFO exception{};
    Answer answer;
    answer.status = m_object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &answer.value,
                                     &exception, &answer.badArgument);
    answer.scode = exception.scode;
    answer.source = Take(exception.bstrSource);
    answer.description = Take(exception.bstrDescription);
    return answer;
}

Answer Object::TryGet(const wchar_t* name, const Values& arguments) const {
    const DISPID id = IdOf(name);
    return id == DISPID_UNKNOWN ? UnknownName() : Invoke(id, DISPATCH_PROPERTYGET, arguments);
}

Answer Object::TryPut(const wchar_t* name, const Value& value) const {
    const DISPID id = IdOf(name);
    return id == DISPID_UNKNOWN ? UnknownName() : Invoke(id, DISPATCH_PROPERTYPUT, {value});
}

/// As script engines call: they can't know whether it is a method or a property.
Answer Object::TryCall(const wchar_t* name, const Values& arguments) const {
    const DISPID id = IdOf(name);
    return id == DISPID_UNKNOWN ? UnknownName()
                                : Invoke(id, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments);
}

_variant_t Object::Get(const wchar_t* name) const {
    Answer answer = TryGet(name);
    EXPECT_EQ(answer.Status(), S_OK) << "get " << name << ": " << answer.description;
    return answer.value;
}

void Object::Put(const wchar_t* name, const Value& value) const {
    const Answer answer = TryPut(name, value);
    EXPECT_EQ(answer.Status(), S_OK) << "put " << name << ": " << answer.description;
}

_variant_t Object::Call(const wchar_t* name, const Values& arguments) const {
    Answer answer = TryCall(name, arguments);
    EXPECT_EQ(answer.Status(), S_OK) << "call " << name << ": " << answer.description;
    return answer.value;
}

std::wstring Object::Text(const wchar_t* name) const {
    const _variant_t value = Get(name);
    EXPECT_EQ(value.vt, VT_BSTR) << name;
    return value.vt == VT_BSTR ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal)) : std::wstring();
}

int Object::Number(const wchar_t* name) const {
    const _variant_t value = Get(name);
    EXPECT_EQ(value.vt, VT_I4) << name;
    return value.lVal;
}

bool IsOutOfBounds(const Answer& answer) {
    return answer.Status() == DISP_E_EXCEPTION && answer.description == L"Array index out of bounds.";
}

void Expect(const Object& object, const Facts& facts, Where where) {
    const testing::ScopedTrace trace(where.file_name(), static_cast<int>(where.line()), "expected here");
    for (const Is& fact : facts)
        ExpectValue(object.Get(fact.member.c_str()), fact);
}

void ExpectValue(const _variant_t& value, const Is& fact) {
    EXPECT_EQ(value.vt, fact.value.vt) << fact.member;
    EXPECT_EQ(AsText(value), AsText(fact.value)) << fact.member;
}

void PutAll(const Object& object, const Facts& facts) {
    for (const Is& fact : facts)
        object.Put(fact.member.c_str(), fact.value);
}

void ExpectRefused(const Object& object, HRESULT status, const Facts& facts, Where where) {
    const testing::ScopedTrace trace(where.file_name(), static_cast<int>(where.line()), "expected here");
    for (const Is& fact : facts)
        EXPECT_EQ(object.TryPut(fact.member.c_str(), fact.value).Status(), status)
            << fact.member << ' ' << AsText(fact.value);
}

std::wstring Hex(std::uint32_t number, int digits) {
    wchar_t text[16] = L"";
    swprintf(text, std::size(text), L"%0*X", digits, number);
    return text;
}

std::wstring AsText(const _variant_t& value) {
    if (value.vt & VT_ARRAY) {
        const bool isBytes = value.vt == (VT_ARRAY | VT_UI1);
        std::wstring all;
        for (LONG i = 0; i < static_cast<LONG>(value.parray->rgsabound[0].cElements); ++i) {
            if (isBytes)
                all += Hex(static_cast<const unsigned char*>(value.parray->pvData)[i], 2);
            else {
                _variant_t element;
                SafeArrayGetElement(value.parray, &i, &element);
                all += (i ? L" | " : L"") + AsText(element);
            }
        }
        return all;
    }
    _variant_t text, given = value;
    const HRESULT status = VariantChangeTypeEx(&text, &given, LOCALE_INVARIANT, 0, VT_BSTR);
    EXPECT_EQ(status, S_OK) << "a value of type " << value.vt;
    return SUCCEEDED(status) ? std::wstring(text.bstrVal, SysStringLen(text.bstrVal)) : std::wstring();
}

OutlookTest::OutlookTest() : m_control(standin::outlook::OutlookControl()) {
    Prepare();
    if (!m_control)
        throw std::runtime_error("the stand-in for Outlook is not entered in this prefix");
    m_control->Reset();
    EXPECT_EQ(MapiFunction<HRESULT(STDAPICALLTYPE*)(void*)>("MAPIInitialize")(nullptr), S_OK);
    m_before = m_control->Live();
    m_control->SetWatch(&m_watch);
}

OutlookTest::~OutlookTest() {
    EXPECT_EQ(m_control->Live().outlookObjects, m_before.outlookObjects);
    EXPECT_EQ(m_control->Live(), m_before);
    MapiFunction<void(STDAPICALLTYPE*)()>("MAPIUninitialize")();
    for (const std::wstring& violation : m_watch.Violations())
        ADD_FAILURE() << violation;
    m_control->SetWatch(nullptr);
    m_control->Reset();
}

Object OutlookTest::Application() const {
    IDispatch* object = nullptr;
    CLSID id{};
    EXPECT_EQ(CLSIDFromProgID(L"Outlook.Application", &id), S_OK);
    EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IDispatch, reinterpret_cast<void**>(&object)),
              S_OK);
    return Object(_variant_t(object, false));
}

Object OutlookTest::NameSpace() const {
    const Object nameSpace = QuietNameSpace();
    nameSpace.Call(L"Logon", {L"Outlook"});
    return nameSpace;
}

Object OutlookTest::DefaultFolder(int number) const {
    return NameSpace().Child(L"GetDefaultFolder", {number});
}

Object OutlookTest::AddItem(const Object& folder, const std::wstring& subject) const {
    const Object item = folder.Child(L"Items").Child(L"Add");
    item.Put(L"Subject", subject);
    item.Call(L"Save");
    return item;
}

Object OutlookTest::Received(const wchar_t* messageClass, void (*fill)(standin::mailbox::PropertyBag&)) {
    standin::mailbox::Content content;
    content.properties.Set<PR_MESSAGE_CLASS_W>(messageClass);
    if (fill)
        fill(content.properties);
    std::shared_ptr<standin::mailbox::Message> message;
    EXPECT_EQ(World().DefaultStore()->SpecialFolder(kInbox)->Receive(std::move(content), false, message),
              S_OK);
    const Object items = Items(kInbox);
    return items.Item(items.Number(L"Count"));
}

} // namespace outlook_tests
