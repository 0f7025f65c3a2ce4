// The functions of a hosted plug-in, for the script language.
#pragma once

#include "Externals.h"
#include "standin/filemaker/Host.h"

namespace standin::console {

class PluginFunctions final : public Externals {
public:
    explicit PluginFunctions(filemaker::Host& host) : m_host(host) {}

    std::optional<ExternalFunction> Find(std::wstring_view name) const override;
    /// "?" when the function answers an error, as FileMaker has it.
    Value Call(const ExternalFunction& function, const std::vector<Value>& arguments) override;

private:
    filemaker::Host& m_host;
};

} // namespace standin::console
