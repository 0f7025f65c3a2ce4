// The blocks of MAPI's memory and their books.
#include "standin/mapi/Buffers.h"

#include "standin/mapi/Process.h"

#include <objbase.h>

#include <mapicode.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <limits>
#include <memory>
#include <new>
#include <unordered_map>
#include <vector>

namespace standin::mapi {
namespace {

// As odd as kUnsetByte: for a value read too late.
constexpr int kFreed = 0xDD;
constexpr int kGuard = 0xFD;
constexpr std::size_t kGuardSize = 16;
constexpr std::size_t kMostBytesKeptBack = 4 << 20;

struct Freer {
    void operator()(void* memory) const { std::free(memory); }
};
using Memory = std::unique_ptr<void, Freer>;

struct Block {
    Memory memory;
    std::size_t size = 0;
    void* root = nullptr; // of a chained block
    std::vector<void*> chained;
};

struct FreedBlock {
    Memory memory;
    std::size_t size = 0;
};

std::unordered_map<const void*, Block> g_blocks;
std::deque<FreedBlock> g_freed; // oldest first
std::size_t g_bytesKeptBack = 0;

bool IsFilled(const void* memory, std::size_t size, int pattern) {
    const auto* bytes = static_cast<const std::uint8_t*>(memory);
    return std::all_of(bytes, bytes + size, [pattern](std::uint8_t byte) { return byte == pattern; });
}

void* GuardOf(const Block& block) {
    return static_cast<std::uint8_t*>(block.memory.get()) + block.size;
}

void* Add(std::size_t size, void* root) {
    Memory memory(std::malloc(size + kGuardSize));
    if (!memory)
        throw std::bad_alloc();
    void* address = memory.get();
    std::memset(address, kUnsetByte, size);
    Block& block = g_blocks[address];
    block.memory = std::move(memory);
    block.size = size;
    block.root = root;
    std::memset(GuardOf(block), kGuard, kGuardSize);
    return address;
}

void LetGoOfOldest() {
    const FreedBlock& oldest = g_freed.front();
    if (!IsFilled(oldest.memory.get(), oldest.size, kFreed))
        ReportViolation(L"MAPI buffer written to after MAPIFreeBuffer");
    g_bytesKeptBack -= oldest.size;
    g_freed.pop_front();
}

void KeepBack(Block block) {
    if (!IsFilled(GuardOf(block), kGuardSize, kGuard))
        ReportViolation(L"MAPI buffer written to past its end");
    std::memset(block.memory.get(), kFreed, block.size);
    g_bytesKeptBack += block.size;
    g_freed.push_back({std::move(block.memory), block.size});
    while (g_bytesKeptBack > kMostBytesKeptBack)
        LetGoOfOldest();
}

Block Remove(void* address) {
    return std::move(g_blocks.extract(address).mapped());
}

/// Why an address is none that MAPIFreeBuffer may have.
const wchar_t* ReasonAgainst(const void* address) {
    if (g_blocks.contains(address))
        return L"it is chained to another block";
    const bool freedBefore =
        std::ranges::any_of(g_freed, [&](const FreedBlock& freed) { return freed.memory.get() == address; });
    return freedBefore ? L"it was freed before" : L"it is no MAPI buffer";
}

} // namespace

HRESULT AllocateBuffer(ULONG size, void** block) {
    if (!block)
        return MAPI_E_INVALID_PARAMETER;
    if (!IsInitialized())
        return MAPI_E_NOT_INITIALIZED;
    try {
        *block = NewBuffer(size);
        return S_OK;
    } catch (const std::bad_alloc&) {
        return MAPI_E_NOT_ENOUGH_MEMORY;
    }
}

HRESULT AllocateMore(ULONG size, void* root, void** block) {
    if (!block)
        return MAPI_E_INVALID_PARAMETER;
    if (!IsInitialized())
        return MAPI_E_NOT_INITIALIZED;
    if (!IsRootBuffer(root)) {
        ReportViolation(L"MAPIAllocateMore: the block to chain to is not one of MAPIAllocateBuffer");
        return MAPI_E_INVALID_PARAMETER;
    }
    try {
        *block = NewMore(size, root);
        return S_OK;
    } catch (const std::bad_alloc&) {
        return MAPI_E_NOT_ENOUGH_MEMORY;
    }
}

ULONG FreeBuffer(void* block) {
    if (!block)
        return S_OK;
    if (!IsInitialized())
        ReportViolation(L"MAPIFreeBuffer after the last MAPIUninitialize");
    if (!IsRootBuffer(block)) {
        ReportViolation(std::wstring(L"MAPIFreeBuffer: the block can't be freed: ") + ReasonAgainst(block));
        return static_cast<ULONG>(MAPI_E_INVALID_PARAMETER);
    }
    Block removed = Remove(block);
    for (void* chained : removed.chained)
        KeepBack(Remove(chained));
    KeepBack(std::move(removed));
    --LiveBuffers();
    return S_OK;
}

bool IsRootBuffer(const void* block) {
    const auto found = g_blocks.find(block);
    return found != g_blocks.end() && !found->second.root;
}

void CheckFreedBuffers() {
    while (!g_freed.empty())
        LetGoOfOldest();
}

void* NewBuffer(std::size_t size) {
    void* block = Add(size, nullptr);
    ++LiveBuffers();
    return block;
}

void* NewMore(std::size_t size, void* root) {
    void* block = Add(size, root);
    g_blocks.at(root).chained.push_back(block);
    return block;
}

} // namespace standin::mapi
