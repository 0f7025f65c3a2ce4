// What all automation objects of the stand-in are: IDispatch over the object model's table and the rows of
// their kind.
#pragma once

#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/automation/Row.h"
#include "standin/watch/Watch.h"

#include <memory>

namespace standin::outlook {

class Binding;

/// Answered by this library's objects only, with the Object itself.
inline constexpr GUID kOwnObject{
    0x8c2f0a51, 0x6d0e, 0x4b5f, {0x9a, 0x3c, 0x5e, 0x21, 0x77, 0x08, 0xd4, 0xb6}};

/// An automation object. Members are found by their names in the object model, case ignored; a name that came
/// with a later version than the version text says is unknown (DISP_E_UNKNOWNNAME). Invoke answers:
///
/// - DISP_E_MEMBERNOTFOUND: no such member, a read-only property written, a method written or read as a
///   property, a property called as a method;
/// - DISP_E_BADPARAMCOUNT and the other statuses of Arguments;
/// - DISP_E_EXCEPTION: the member itself failed, or its planned failure came; the status is the scode.
///
/// Objects are put by reference (PROPERTYPUTREF, Set in scripts), everything else by value.
///
/// A property with arguments hands them to the default member of the object that it gives, as automation
/// does.
class Object : public IDispatch, public ISupportErrorInfo {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    static void* operator new(std::size_t size);
    /// Whoever still calls it after its last release breaks a rule, see Bury.
    static void operator delete(void* memory, std::size_t size);

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override;

    /// The object's Parent; null for an object without one.
    virtual ComPtr<Object> Parent() = 0;
    /// OlObjectClass.
    virtual std::int32_t Class() const;

    const Interface& Model() const;
    /// The row that carries a member out; null for none.
    const Row* RowOf(const Member& member) const;

protected:
    explicit Object(const Kind& kind);
    virtual ~Object();

    /// What DISPID_NEWENUM answers; raises for an object that isn't a collection.
    virtual _variant_t Enumerate();

private:
    struct Request;
    HRESULT Run(const Request& request, _variant_t& value);
    HRESULT Write(const Request& request);
    HRESULT Read(const Request& request, _variant_t& value);
    _variant_t Carry(const Member& member, const Arguments& arguments);
    HRESULT Raise(const Failure& failure, EXCEPINFO* exception) const;
    HRESULT FindNames(LPOLESTR* names, UINT count, DISPID* ids) const;

    const Kind& m_kind;
    const Binding& m_binding;
    LiveCount m_alive;
    ULONG m_references = 0;
};

/// How many automation objects are alive.
std::int64_t LiveObjects();
/// Counts one more of them, for objects that aren't Objects.
LiveCount CountObject();

/// A new object, with its first reference.
template <class T, class... A>
ComPtr<T> Make(A&&... arguments) {
    return ComPtr<T>(new T(std::forward<A>(arguments)...));
}

} // namespace standin::outlook
