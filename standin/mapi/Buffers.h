// MAPI's memory: blocks that callers free, and blocks chained to them. Every block is known, so that its
// wrong use is noticed.
#pragma once

#include <windows.h>

#include <memory>

namespace standin::mapi {

/// What memory is filled with before anything is put there. Odd, and neither zero nor a pointer into
/// anything: a value read too early shows itself.
inline constexpr int kUnsetByte = 0xCD;

/// A new block, filled with a pattern. MAPI_E_NOT_INITIALIZED before MAPIInitialize, E_INVALIDARG for a null
/// `block`, MAPI_E_NOT_ENOUGH_MEMORY.
HRESULT AllocateBuffer(ULONG size, void** block);
/// A block that is freed together with `root`. A `root` that is no live block of AllocateBuffer is a
/// violation and answers E_INVALIDARG.
HRESULT AllocateMore(ULONG size, void* root, void** block);
/// Frees a block of AllocateBuffer with all that is chained to it; null is nothing to free. Violations: a
/// block freed before, one that is chained, one that is none; one that was written to past its end; any after
/// the last MAPIUninitialize. A freed block is filled with a pattern and kept back for a while; writing to it
/// is a violation that is noticed later.
ULONG FreeBuffer(void* block);

/// Whether this is a live block of AllocateBuffer, which may be freed by itself.
bool IsRootBuffer(const void* block);

/// Looks at the freed blocks that are kept back, reports those that were written to, and lets go of all.
void CheckFreedBuffers();

/// A block for the stand-in's own use: throws std::bad_alloc where AllocateBuffer fails.
void* NewBuffer(std::size_t size);
void* NewMore(std::size_t size, void* root);

/// Owns a block until it is handed to a caller.
struct BufferFreer {
    void operator()(void* block) const { FreeBuffer(block); }
};
template <class T>
using Buffer = std::unique_ptr<T, BufferFreer>;

} // namespace standin::mapi
