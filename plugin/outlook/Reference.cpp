// Member access through IDispatch, and the exceptions that its failures become.
#include "Reference.h"

#include <algorithm>
#include <vector>

namespace varden::outlook {

namespace {

/// What IDispatch::Invoke tells of an exception; the texts are the caller's to free.
class ExceptionInfo {
public:
    ExceptionInfo() = default;
    ~ExceptionInfo() {
        SysFreeString(m_info.bstrSource);
        SysFreeString(m_info.bstrDescription);
        SysFreeString(m_info.bstrHelpFile);
    }
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;

    EXCEPINFO* Fill() { return &m_info; }

    void Complete() {
        if (m_info.pfnDeferredFillIn) {
            m_info.pfnDeferredFillIn(&m_info);
        }
    }

    HRESULT Status() const {
        if (m_info.scode != 0) {
            return m_info.scode;
        }
        return m_info.wCode != 0 ? _com_error::WCodeToHRESULT(m_info.wCode) : DISP_E_EXCEPTION;
    }

    /// Source and description in the form that a COM exception carries; none when the system can't make it.
    IErrorInfoPtr ErrorInfo() const {
        ICreateErrorInfoPtr created;
        if (FAILED(CreateErrorInfo(&created))) {
            return {};
        }
        created->SetSource(m_info.bstrSource);
        created->SetDescription(m_info.bstrDescription);
        return created;
    }

private:
    EXCEPINFO m_info{};
};

} // namespace

/// How a member access ended.
struct Reference::Failure {
    HRESULT status = S_OK;
    IErrorInfoPtr info;

    void Raise() const {
        if (FAILED(status)) {
            throw _com_error(status, info, true);
        }
    }
};

HRESULT Interface::IdOf(IDispatch& object, const wchar_t* member, DISPID& id) {
    if (const auto known = m_ids.find(std::wstring_view(member)); known != m_ids.end()) {
        id = known->second;
        return S_OK;
    }
    LPOLESTR name = const_cast<LPOLESTR>(member);
    const HRESULT status = object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (SUCCEEDED(status)) {
        m_ids.emplace(member, id);
    }
    return status;
}

void Reference::Set(const _variant_t& object) {
    m_object = object.vt == VT_DISPATCH ? object.pdispVal : nullptr;
}

HRESULT Reference::Query(IUnknown* object) {
    m_object = nullptr;
    if (!object) {
        return E_POINTER;
    }
    return object->QueryInterface(m_type->Id(), reinterpret_cast<void**>(&m_object));
}

Reference::Failure Reference::Invoke(WORD kind, const wchar_t* member, Values arguments,
                                     VARIANT* result) const {
    if (!m_object) {
        return {E_POINTER, {}};
    }
    DISPID id = DISPID_UNKNOWN;
    if (const HRESULT status = m_type->IdOf(*m_object.GetInterfacePtr(), member, id); FAILED(status)) {
        return {status, {}};
    }
    // Automation takes the arguments last first. They are lent, not copied.
    std::vector<VARIANT> reversed(arguments.begin(), arguments.end());
    std::ranges::reverse(reversed);
    DISPID putName = DISPID_PROPERTYPUT;
    const bool isPut = kind == DISPATCH_PROPERTYPUT;
    DISPPARAMS parameters{reversed.data(), isPut ? &putName : nullptr, static_cast<UINT>(reversed.size()),
                          isPut ? 1u : 0u};
    ExceptionInfo exception;
    UINT badArgument = 0;
    const HRESULT status = m_object.GetInterfacePtr()->Invoke(
        id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result, exception.Fill(), &badArgument);
    if (status != DISP_E_EXCEPTION) {
        return {status, {}};
    }
    exception.Complete();
    return {exception.Status(), exception.ErrorInfo()};
}

_variant_t Reference::GetProperty(const wchar_t* member) const {
    _variant_t value;
    Invoke(DISPATCH_PROPERTYGET, member, {}, &value).Raise();
    return value;
}

std::wstring Reference::GetText(const wchar_t* member) const {
    return BstrText(_bstr_t(GetProperty(member)));
}

long Reference::GetLong(const wchar_t* member) const {
    return GetProperty(member);
}

bool Reference::GetBool(const wchar_t* member) const {
    return GetProperty(member);
}

DATE Reference::GetDate(const wchar_t* member) const {
    _variant_t value = GetProperty(member);
    value.ChangeType(VT_DATE);
    return value.date;
}

void Reference::PutProperty(const wchar_t* member, const _variant_t& value) const {
    Invoke(DISPATCH_PROPERTYPUT, member, {value}, nullptr).Raise();
}

_variant_t Reference::Call(const wchar_t* member, Values arguments) const {
    _variant_t result;
    Invoke(DISPATCH_METHOD, member, arguments, &result).Raise();
    return result;
}

HRESULT Reference::TryGet(const wchar_t* member, _variant_t& value) const {
    return Invoke(DISPATCH_PROPERTYGET, member, {}, &value).status;
}

HRESULT Reference::TryPut(const wchar_t* member, const _variant_t& value) const {
    return Invoke(DISPATCH_PROPERTYPUT, member, {value}, nullptr).status;
}

HRESULT Reference::TryCall(const wchar_t* member, Values arguments, _variant_t& result) const {
    return Invoke(DISPATCH_METHOD, member, arguments, &result).status;
}

IUnknownPtr UnknownOf(const _variant_t& object) {
    return object.vt == VT_DISPATCH || object.vt == VT_UNKNOWN ? IUnknownPtr(object.punkVal) : IUnknownPtr();
}

IDispatchPtr DispatchOf(const _variant_t& object) {
    return object.vt == VT_DISPATCH ? IDispatchPtr(object.pdispVal) : IDispatchPtr();
}

_variant_t MissingArgument() {
    return _variant_t(DISP_E_PARAMNOTFOUND, VT_ERROR);
}

_variant_t TextValue(const std::wstring& text) {
    return _variant_t(text.c_str());
}

_variant_t LongValue(long number) {
    return _variant_t(number, VT_I4);
}

_variant_t BoolValue(bool truth) {
    return _variant_t(truth);
}

_variant_t DateValue(DATE date) {
    return _variant_t(date, VT_DATE);
}

} // namespace varden::outlook
