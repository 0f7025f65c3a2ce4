// The block through which FileMaker's messages and their results pass.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace standin::filemaker {

struct ParameterBlock {
    std::int16_t version = 0; ///< of the host's plug-in interface
    std::uint8_t reserved1[11] = {};
    std::uint8_t whichCall = 0; ///< Message
    std::uint8_t reserved2 = 0;
    std::uint8_t parm1 = 0;  ///< idle level; id of a text
    std::uint32_t parm2 = 0; ///< language id of a text
    std::uint32_t reserved3 = 0;
    std::uint32_t parm3 = 0; ///< capacity of a text's buffer in UTF-16 units
    std::uint32_t reserved4 = 0;
    std::uint64_t instanceId = 0; ///< the plug-in's module handle
    std::uint64_t result = 0;     ///< result of Init; address of a text's buffer
};

static_assert(offsetof(ParameterBlock, whichCall) == 13);
static_assert(offsetof(ParameterBlock, parm1) == 15);
static_assert(offsetof(ParameterBlock, parm2) == 16);
static_assert(offsetof(ParameterBlock, parm3) == 24);
static_assert(offsetof(ParameterBlock, instanceId) == 32);
static_assert(offsetof(ParameterBlock, result) == 40);
static_assert(sizeof(ParameterBlock) == 48);

inline bool EqualExceptResult(const ParameterBlock& a, const ParameterBlock& b) {
    return std::memcmp(&a, &b, offsetof(ParameterBlock, result)) == 0;
}

using EntryPoint = void (*)(ParameterBlock* block);
inline constexpr const char* kEntryPointName = "FMExternCallProc";

} // namespace standin::filemaker
