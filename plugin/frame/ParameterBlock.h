// The block in which the host hands over a lifecycle message and takes its result.
#pragma once

#include <cstddef>
#include <cstdint>

namespace varden {

enum class HostMessage : std::uint8_t {
    Init = 0,
    Idle = 1,
    Shutdown = 4,
    AppPreferences = 5,
    GetString = 7,
};

/// Owned by the host; only the named fields are used.
struct ParameterBlock {
    std::int16_t extnVersion; ///< on Init: the host's plug-in interface version
    std::uint8_t unused2[11];
    std::uint8_t whichCall; ///< the HostMessage
    std::uint8_t unused14;
    std::uint8_t parm1;  ///< on Idle: the idle level; on GetString: the string id
    std::uint32_t parm2; ///< on GetString: the language, ignored
    std::uint32_t unused20;
    std::uint32_t parm3; ///< on GetString: the buffer's capacity in UTF-16 units
    std::uint32_t unused28;
    std::uint64_t instanceID; ///< the library's module handle
    std::int64_t result;      ///< on Init: takes the result; on GetString: the address of the buffer
};

static_assert(offsetof(ParameterBlock, whichCall) == 13);
static_assert(offsetof(ParameterBlock, parm1) == 15);
static_assert(offsetof(ParameterBlock, parm2) == 16);
static_assert(offsetof(ParameterBlock, parm3) == 24);
static_assert(offsetof(ParameterBlock, instanceID) == 32);
static_assert(offsetof(ParameterBlock, result) == 40);

} // namespace varden
