// FMWrapper.dll from its host's side: where calls are told, where functions are registered, and the objects
// of a call. Used by the host library alone.
#pragma once

#include "Operations.h"
#include "Value.h"
#include "standin/watch/Watch.h"

#include <cstdint>
#include <string>
#include <vector>

namespace standin::filemaker {

/// Keeps the functions that plug-ins register.
class Registrar {
public:
    virtual ~Registrar() = default;
    virtual void Register(const RegisteredFunction& function) = 0;
    /// Whether there was such a function.
    virtual bool Unregister(const std::string& pluginId, std::int16_t id) = 0;
};

/// The handles of one call of a plug-in's function.
struct CallObjects {
    const ExprEnv* environment = nullptr;
    const DataVect* arguments = nullptr;
    Data* result = nullptr;
};

/// What a function left in its result.
struct ResultData {
    std::wstring text;
    std::int32_t nativeType = 0; ///< NativeType, or 0 when nothing was stored
    std::uint32_t locale = 0;    ///< language id of the locale that the text was stored with, or 0
};

/// One object for the life of the library.
class Control {
public:
    virtual void SetWatch(Watch* watch) = 0;
    /// Gives the registrar that was set before; null: registering is refused.
    virtual Registrar* SetRegistrar(Registrar* registrar) = 0;

    /// Makes the objects of a call, which live until EndCall.
    virtual CallObjects BeginCall(const std::vector<Value>& arguments, std::uint32_t locale) = 0;
    virtual ResultData EndCall(const CallObjects& call) = 0;

    /// Objects that plug-ins have made and not deleted.
    virtual std::size_t LiveObjects() const = 0;
    /// Ends those objects: their plug-in is gone.
    virtual void DropPlugInObjects() = 0;

protected:
    ~Control() = default;
};

extern "C" FMWRAPPER_OPERATION Control* StandinFileMakerControl();

} // namespace standin::filemaker
