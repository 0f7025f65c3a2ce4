// The enumerators of collections.
#include "standin/outlook/automation/Enumerator.h"

#include "standin/watch/Graves.h"

#include <algorithm>

namespace standin::outlook {
namespace {

class Enumerator final : public IEnumVARIANT {
public:
    Enumerator(ComPtr<Collection> collection, std::int32_t place)
        : m_collection(std::move(collection)), m_place(place) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        Crossing call(Side::Outlook, kName, L"QueryInterface");
        if (!object)
            return call.Return(E_POINTER);
        *object = nullptr;
        if (call.Fails())
            return call.Status();
        if (iid != IID_IUnknown && iid != IID_IEnumVARIANT)
            return call.Return(E_NOINTERFACE);
        *object = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++m_references; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    static void operator delete(void* memory, std::size_t size) {
        Bury(memory, size, {kName, RPC_E_DISCONNECTED});
    }

    STDMETHODIMP Next(ULONG count, VARIANT* values, ULONG* fetched) override {
        Crossing call(Side::Outlook, kName, L"Next");
        if (fetched)
            *fetched = 0;
        if (call.Fails())
            return call.Status();
        if (!values || (count > 1 && !fetched))
            return call.Return(E_POINTER);
        ULONG got = 0;
        const HRESULT status = Guarded([&] { return Fetch(count, values, got); });
        if (fetched)
            *fetched = got;
        return call.Return(status);
    }
    STDMETHODIMP Skip(ULONG count) override {
        Crossing call(Side::Outlook, kName, L"Skip");
        if (call.Fails())
            return call.Status();
        return call.Return(Guarded([&] {
            const auto left = static_cast<ULONG>(std::max(m_collection->Count() - m_place, 0));
            m_place += static_cast<std::int32_t>(std::min(count, left));
            return count <= left ? S_OK : S_FALSE;
        }));
    }
    STDMETHODIMP Reset() override {
        Crossing call(Side::Outlook, kName, L"Reset");
        if (call.Fails())
            return call.Status();
        m_place = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumVARIANT** copy) override {
        Crossing call(Side::Outlook, kName, L"Clone");
        if (!copy)
            return call.Return(E_POINTER);
        *copy = nullptr;
        if (call.Fails())
            return call.Status();
        return call.Return(Guarded([&] {
            *copy = new Enumerator(m_collection, m_place);
            return S_OK;
        }));
    }

private:
    static constexpr const wchar_t* kName = L"IEnumVARIANT";

    HRESULT Fetch(ULONG count, VARIANT* values, ULONG& got) {
        for (; got < count && m_place < m_collection->Count(); ++got)
            values[got] = m_collection->At(++m_place).Detach();
        return got == count ? S_OK : S_FALSE;
    }

    LiveCount m_alive = CountObject();
    ComPtr<Collection> m_collection;
    std::int32_t m_place;   // of the element that came last
    ULONG m_references = 1; // the maker's
};

} // namespace

ComPtr<IUnknown> MakeEnumerator(ComPtr<Collection> collection) {
    return ComPtr<IUnknown>::Adopt(new Enumerator(std::move(collection), 0));
}

} // namespace standin::outlook
