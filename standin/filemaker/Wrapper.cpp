// The host's switches of FMWrapper.dll.
#include "Wrapper.h"

#include "Control.h"
#include "Objects.h"

#include <utility>

namespace standin::filemaker {

namespace {

class WrapperControl final : public Control {
public:
    void SetWatch(Watch* watch) override { SetCurrentWatch(watch); }
    Registrar* SetRegistrar(Registrar* registrar) override { return std::exchange(m_registrar, registrar); }
    CallObjects BeginCall(const std::vector<Value>& arguments, std::uint32_t locale) override;
    ResultData EndCall(const CallObjects& call) override;
    std::size_t LiveObjects() const override { return Objects().PlugInObjects(); }
    void DropPlugInObjects() override { Objects().DropPlugInObjects(); }

    Registrar* CurrentRegistrar() const { return m_registrar; }

private:
    Registrar* m_registrar = nullptr;
};

CallObjects WrapperControl::BeginCall(const std::vector<Value>& arguments, std::uint32_t locale) {
    Heap& heap = Objects();
    CallObjects call;
    call.environment = heap.Of<ExprEnvObject>().Add({}, Owner::Host);
    call.arguments = heap.Of<DataVectObject>().Add({arguments, {}, {}}, Owner::Host);
    const Locale* ofResult = heap.Of<LocaleObject>().Add({locale}, Owner::Host);
    call.result = heap.Of<DataObject>().Add({ofResult, {}, 0, 0}, Owner::Host);
    return call;
}

ResultData WrapperControl::EndCall(const CallObjects& call) {
    Heap& heap = Objects();
    const DataObject data = *heap.Of<DataObject>().Find(call.result);
    heap.Of<DataObject>().Remove(call.result);
    heap.Of<LocaleObject>().Remove(data.locale);
    heap.RemoveVector(call.arguments);
    heap.Of<ExprEnvObject>().Remove(call.environment);
    return {data.text, data.nativeType, data.usedLanguage};
}

WrapperControl& TheControl() {
    static WrapperControl control;
    return control;
}

} // namespace

Registrar* CurrentRegistrar() {
    return TheControl().CurrentRegistrar();
}

Control* StandinFileMakerControl() {
    return &TheControl();
}

} // namespace standin::filemaker
