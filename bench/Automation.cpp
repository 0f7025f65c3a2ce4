// Automation calls and MAPI32's functions.
#include "Automation.h"

namespace varden::bench {

namespace {

DISPID IdOf(IDispatch& object, Member& member) {
    if (member.id == DISPID_UNKNOWN) {
        auto* name = const_cast<wchar_t*>(member.name);
        Check(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &member.id));
    }
    return member.id;
}

} // namespace

void Check(HRESULT status) {
    if (FAILED(status)) {
        throw std::runtime_error("a call of the C++ client failed");
    }
}

void Put(IDispatch& object, Member& member, _variant_t value) {
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&value, &put, 1, 1};
    Check(object.Invoke(IdOf(object, member), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                        &parameters, nullptr, nullptr, nullptr));
}

_variant_t Invoke(IDispatch& object, Member& member, std::initializer_list<_variant_t> arguments) {
    const DISPID id = IdOf(object, member);
    DISPPARAMS parameters{const_cast<_variant_t*>(arguments.begin()), nullptr,
                          static_cast<UINT>(arguments.size()), 0};
    _variant_t result;
    Check(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                        &parameters, &result, nullptr, nullptr));
    return result;
}

Held<IDispatch> Object(IDispatch& object, Member& member, std::initializer_list<_variant_t> arguments) {
    const _variant_t value = Invoke(object, member, arguments);
    Check(value.vt == VT_DISPATCH && value.pdispVal ? S_OK : E_POINTER);
    Held<IDispatch> result;
    (*result.Out() = value.pdispVal)->AddRef();
    return result;
}

_variant_t Missing() {
    return {DISP_E_PARAMNOTFOUND, VT_ERROR};
}

Held<IMessage> MessageOf(IDispatch& item, Member& mapiObject) {
    const _variant_t object = Invoke(item, mapiObject);
    Held<IMessage> message;
    Check(object.punkVal->QueryInterface(InterfaceId(0x00020307), reinterpret_cast<void**>(message.Out())));
    return message;
}

Held<IDispatch> ItemOf(const _variant_t& item, std::span<const GUID> kinds) {
    Held<IDispatch> found;
    for (const GUID& kind : kinds) {
        if (SUCCEEDED(item.pdispVal->QueryInterface(kind, reinterpret_cast<void**>(found.Out())))) {
            return found;
        }
    }
    throw std::runtime_error("an item of another kind than expected");
}

FARPROC MapiAddress(const char* name, const char* decorated) {
    static const HMODULE library = LoadLibraryW(L"MAPI32.dll");
    FARPROC function = GetProcAddress(library, name);
    if (!function) {
        function = GetProcAddress(library, decorated);
    }
    if (!function) {
        throw std::runtime_error("MAPI32 lacks a function");
    }
    return function;
}

void GetOneProp(IMAPIProp& object, ULONG tag, Block<SPropValue>& value) {
    static const auto function =
        Mapi<HRESULT(WINAPI*)(IMAPIProp*, ULONG, SPropValue**)>("HrGetOneProp", "HrGetOneProp@12");
    Check(function(&object, tag, value.Out()));
}

} // namespace varden::bench
