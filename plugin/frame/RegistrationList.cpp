// What Init registers: the published functions.
#include "FunctionCatalogue.h"

namespace varden {

std::span<const FunctionRow> RegisteredFunctions() {
    return AllFunctions().first(kPublishedFunctionCount);
}

} // namespace varden
