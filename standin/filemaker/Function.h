// A plug-in's function as FileMaker calls it and keeps it.
#pragma once

#include <cstdint>
#include <string>

namespace standin::filemaker {

// Objects behind handles. A handle's value is never used again, so that a dead one is always known.
struct Text;
struct FixPt;
struct Data;
struct DataVect;
struct QuadChar;
struct Locale;
struct ExprEnv;

/// An answer other than 0 is an error of the calculation.
using ExternalFunction = std::int16_t (*)(std::int16_t functionId, const ExprEnv* environment,
                                          const DataVect* arguments, Data* result);

/// A function as a plug-in registered it.
struct RegisteredFunction {
    std::string pluginId; ///< four characters
    std::int16_t id = 0;
    std::wstring name; ///< empty: can be called by its id alone
    std::wstring prototype;
    std::int16_t minimum = 0;
    std::int16_t maximum = 0; ///< -1: none
    std::uint32_t flags = 0;
    ExternalFunction function = nullptr;
};

} // namespace standin::filemaker
