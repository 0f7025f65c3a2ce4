// IDispatch for all objects.
#include "standin/outlook/automation/Object.h"

#include "standin/outlook/automation/Binding.h"
#include "standin/outlook/session/Session.h"
#include "standin/watch/Graves.h"

#include <algorithm>

namespace standin::outlook {
namespace {

constexpr const wchar_t* kSource = L"Microsoft Outlook";
/// What Outlook puts into wCode beside every scode.
constexpr WORD kCode = 0x1000;
constexpr WORD kPutFlags = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

std::int64_t g_liveObjects = 0;
/// The interface of the object whose memory is given back next.
const wchar_t* g_dead = L"IDispatch";

/// For clients that ask for an error object in place of the EXCEPINFO.
void SetThreadError(const Failure& failure, REFIID iid) {
    ComPtr<ICreateErrorInfo> created;
    ComPtr<IErrorInfo> info;
    if (FAILED(CreateErrorInfo(created.Out())) ||
        FAILED(created->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(info.Out()))))
        return;
    created->SetGUID(iid);
    created->SetSource(const_cast<LPOLESTR>(kSource));
    created->SetDescription(const_cast<LPOLESTR>(failure.description.c_str()));
    SetErrorInfo(0, info.Get());
}

bool IsKnown(const Member* member) {
    return member && member->since <= MajorVersion();
}

/// The name of a call in traces.
const wchar_t* NameOf(const Member* member, DISPID id, WORD flags) {
    if (id == DISPID_NEWENUM)
        return L"_NewEnum";
    if (!member)
        return L"Invoke";
    return flags & kPutFlags ? member->putName.c_str() : member->name.c_str();
}

/// Engines that don't know which of the two it is ask for both.
bool MayPut(const Member& member, WORD flags) {
    const bool holdsObject = member.type.type == VT_DISPATCH;
    return member.access == Access::GetPut &&
           flags & (holdsObject ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT);
}

} // namespace

/// What Invoke was asked.
struct Object::Request {
    DISPID id;
    const Member* member;
    WORD flags;
    LCID locale;
    DISPPARAMS& parameters;
    UINT* badArgument;
};

Object::Object(const Kind& kind) : m_kind(kind), m_binding(Binding::Of(kind)), m_alive(g_liveObjects) {
}

Object::~Object() {
    constexpr std::int64_t kThisOne = 1;
    if (g_liveObjects == kThisOne)
        LastObjectGone();
    g_dead = m_kind.name;
}

void* Object::operator new(std::size_t size) {
    return ::operator new(size);
}

void Object::operator delete(void* memory, std::size_t size) {
    Bury(memory, size, {g_dead, RPC_E_DISCONNECTED});
}

std::int64_t LiveObjects() {
    return g_liveObjects;
}

LiveCount CountObject() {
    return LiveCount(g_liveObjects);
}

std::int32_t Object::Class() const {
    return m_kind.objectClass;
}

const Interface& Object::Model() const {
    return m_binding.Model();
}

const Row* Object::RowOf(const Member& member) const {
    return m_binding.RowOf(member);
}

STDMETHODIMP Object::QueryInterface(REFIID iid, void** object) {
    Crossing call(Side::Outlook, m_kind.name, L"QueryInterface");
    if (!object)
        return call.Return(E_POINTER);
    *object = nullptr;
    if (call.Fails())
        return call.Status();
    if (iid == IID_ISupportErrorInfo)
        *object = static_cast<ISupportErrorInfo*>(this);
    else if (iid == kOwnObject)
        *object = this;
    else if (iid == IID_IUnknown || iid == IID_IDispatch ||
             (m_kind.interfaceId && iid == InterfaceId(m_kind.interfaceId)))
        *object = static_cast<IDispatch*>(this);
    else
        return call.Return(E_NOINTERFACE);
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) Object::AddRef() {
    return ++m_references;
}

STDMETHODIMP_(ULONG) Object::Release() {
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

STDMETHODIMP Object::GetTypeInfoCount(UINT* count) {
    if (!count)
        return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP Object::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info)
        *info = nullptr;
    return DISP_E_BADINDEX;
}

STDMETHODIMP Object::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    Crossing call(Side::Outlook, m_kind.name, L"GetIDsOfNames");
    if (!names || !ids || count == 0)
        return call.Return(E_INVALIDARG);
    std::fill_n(ids, count, DISPID_UNKNOWN);
    if (call.Fails())
        return call.Status();
    if (iid != IID_NULL)
        return call.Return(DISP_E_UNKNOWNINTERFACE);
    return call.Return(Guarded([&] { return FindNames(names, count, ids); }));
}

/// The first name is a member's, the others are parameters of it.
HRESULT Object::FindNames(LPOLESTR* names, UINT count, DISPID* ids) const {
    const Member* member = Model().Find(names[0]);
    if (!IsKnown(member))
        return DISP_E_UNKNOWNNAME;
    ids[0] = member->id;
    HRESULT status = S_OK;
    for (UINT i = 1; i < count; ++i) {
        const auto parameter = std::ranges::find_if(member->parameters, [&](const Parameter& each) {
            return CompareStringOrdinal(each.name.c_str(), -1, names[i], -1, TRUE) == CSTR_EQUAL;
        });
        if (parameter == member->parameters.end())
            status = DISP_E_UNKNOWNNAME;
        else
            ids[i] = static_cast<DISPID>(parameter - member->parameters.begin());
    }
    return status;
}

STDMETHODIMP Object::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                            VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    const Member* member = Model().Find(id);
    Crossing call(Side::Outlook, m_kind.name, NameOf(member, id, flags));
    if (call.Fails())
        return Raise(Failure(call.Status()), exception);
    if (iid != IID_NULL)
        return call.Return(DISP_E_UNKNOWNINTERFACE);
    if (!parameters)
        return call.Return(E_POINTER);
    const ComPtr<Object> alive(this); // a member may let go of the last reference
    try {
        _variant_t value;
        const HRESULT status = Run({id, member, flags, locale, *parameters, badArgument}, value);
        if (SUCCEEDED(status) && result)
            *result = value.Detach();
        return call.Return(status);
    } catch (...) {
        const Failure failure = CaughtFailure();
        call.Return(failure.status);
        return Raise(failure, exception);
    }
}

HRESULT Object::Raise(const Failure& failure, EXCEPINFO* exception) const {
    SetThreadError(failure, InterfaceId(m_kind.interfaceId));
    if (exception) {
        *exception = {};
        exception->wCode = kCode;
        exception->scode = failure.status;
        exception->bstrSource = SysAllocString(kSource);
        exception->bstrDescription = SysAllocString(failure.description.c_str());
    }
    return DISP_E_EXCEPTION;
}

HRESULT Object::Run(const Request& request, _variant_t& value) {
    if (request.id == DISPID_NEWENUM) {
        if (!Model().IsCollection())
            return DISP_E_MEMBERNOTFOUND;
        value = Enumerate();
        return S_OK;
    }
    if (!IsKnown(request.member))
        return DISP_E_MEMBERNOTFOUND;
    return request.flags & kPutFlags ? Write(request) : Read(request, value);
}

HRESULT Object::Write(const Request& request) {
    const Member& member = *request.member;
    if (!MayPut(member, request.flags))
        return DISP_E_MEMBERNOTFOUND;
    Arguments arguments;
    if (const HRESULT status =
            arguments.ReadValue(member, request.parameters, request.locale, request.badArgument);
        FAILED(status))
        return status;
    const Row* row = RowOf(member);
    if (!row || !row->put)
        throw NotBuilt(member.name);
    row->put(*this, {member, *row, arguments});
    return S_OK;
}

HRESULT Object::Read(const Request& request, _variant_t& value) {
    const Member& member = *request.member;
    const bool isMethod = member.access == Access::Method;
    if (!(request.flags & (isMethod ? DISPATCH_METHOD : DISPATCH_PROPERTYGET)))
        return DISP_E_MEMBERNOTFOUND;
    Arguments arguments;
    if (isMethod) {
        if (const HRESULT status =
                arguments.ReadCall(member, request.parameters, request.locale, request.badArgument);
            FAILED(status))
            return status;
    }
    _variant_t carried = Carry(member, arguments);
    value.Attach(carried); // an assignment would copy
    if (isMethod || request.parameters.cArgs == 0)
        return S_OK;
    const ComPtr<Object> inner = OwnObject(value);
    if (!inner)
        return DISP_E_BADPARAMCOUNT;
    value.Clear();
    const auto flags = static_cast<WORD>(request.flags | DISPATCH_METHOD);
    const Request onward{DISPID_VALUE,   inner->Model().Default(), flags,
                         request.locale, request.parameters,       request.badArgument};
    return inner->Run(onward, value);
}

_variant_t Object::Carry(const Member& member, const Arguments& arguments) {
    const Row* row = RowOf(member);
    if (!row || !row->get)
        throw NotBuilt(member.name);
    return row->get(*this, {member, *row, arguments});
}

_variant_t Object::Enumerate() {
    throw NotBuilt(L"_NewEnum");
}

STDMETHODIMP Object::InterfaceSupportsErrorInfo(REFIID iid) {
    const bool isOurs =
        iid == IID_IDispatch || (m_kind.interfaceId && iid == InterfaceId(m_kind.interfaceId));
    return isOurs ? S_OK : S_FALSE;
}

} // namespace standin::outlook
