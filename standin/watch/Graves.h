// Graves: where dead COM objects lie for a while, so that whoever still uses one is found out.
#pragma once

#include <windows.h>

#include <cstddef>

namespace standin {

/// What an object leaves behind.
struct Epitaph {
    const wchar_t* interfaceName; ///< as violations call it
    HRESULT answer;               ///< of every method but AddRef and Release
};

/// Keeps the memory of a dead object back for a while: takes over what its operator delete was given. The
/// memory began with the tables of methods of the object's interfaces, two at most; every method of them is
/// in place and reports its call as a violation.
void Bury(void* memory, std::size_t size, const Epitaph& epitaph);

} // namespace standin
