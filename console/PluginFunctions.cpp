// Calls from calculations into the plug-in.
#include "PluginFunctions.h"

#include "Text.h"

namespace standin::console {

namespace {

Value ResultValue(const filemaker::Answer& answer) {
    if (answer.error != 0) {
        return L"?";
    }
    if (answer.nativeType == static_cast<std::int32_t>(filemaker::NativeType::Number)) {
        const auto number = FixedPoint::FindIn(answer.text);
        return number ? Value(*number) : Value();
    }
    return answer.text;
}

} // namespace

std::optional<ExternalFunction> PluginFunctions::Find(std::wstring_view name) const {
    const filemaker::RegisteredFunction* function = m_host.Find(name);
    if (!function) {
        return std::nullopt;
    }
    return ExternalFunction{function->id, function->name, {function->minimum, function->maximum}};
}

Value PluginFunctions::Call(const ExternalFunction& function, const std::vector<Value>& arguments) {
    try {
        return ResultValue(m_host.Call(function.id, arguments));
    } catch (const filemaker::CallRefused& refused) {
        throw Mistake(refused.Reason());
    } catch (const std::exception& error) {
        throw Mistake(function.name + L" threw an exception: " + FromUtf8(error.what()).value_or(L"?"));
    } catch (...) {
        throw Mistake(function.name + L" threw an exception");
    }
}

} // namespace standin::console
