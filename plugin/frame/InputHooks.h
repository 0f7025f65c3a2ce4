// Keyboard and mouse input of the host's thread, blocked while the engine works.
#pragma once

namespace varden {

/// Holds the two hooks for as long as it lives. There is one pair of handles for the process: a second object
/// would take the first one's place.
class InputHooks {
public:
    InputHooks();
    ~InputHooks();
    InputHooks(const InputHooks&) = delete;
    InputHooks& operator=(const InputHooks&) = delete;
};

} // namespace varden
