// FileMaker as a plug-in sees it: loads a plug-in file, sends it FileMaker's messages, keeps the functions
// that it registers, and calls them.
#pragma once

#include "Function.h"
#include "Value.h"
#include "standin/watch/Watch.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standin::outlook {
class Control;
}

namespace standin::filemaker {

/// FileMaker's messages to a plug-in.
enum class Message : std::uint8_t { Init = 0, Idle = 1, Shutdown = 4, AppPreferences = 5, GetString = 7 };

/// The texts that FileMaker asks a plug-in for.
inline constexpr std::uint8_t kPlugInName = 128, kPlugInDescription = 129, kPlugInOptions = 131;

/// What a plug-in says of itself in its options: four characters that name it, a 1, and six flags, Y for yes.
struct PlugInOptions {
    std::string id;
    bool preferences = false;     ///< the sixth character: its preferences can be opened
    bool initAndShutdown = false; ///< the eighth
    bool idle = false;            ///< the ninth
};

/// Nothing for a text that isn't a plug-in's options.
std::optional<PlugInOptions> ReadOptions(std::wstring_view text);

/// The interface version that Init tells the plug-in unless another is wanted.
inline constexpr std::int16_t kInterfaceVersion = 62;

/// What a plug-in gave for a text.
struct StringAnswer {
    std::wstring text; ///< up to the terminator, or all that was written
    std::size_t written =
        0; ///< count of units up to the last one that the plug-in wrote, terminator included
};

/// What a plug-in's function answered.
struct Answer {
    std::int16_t error = 0; ///< the function's own result
    std::wstring text;
    std::int32_t nativeType = 0; ///< NativeType, or 0 when the function stored no text
    std::uint32_t locale = 0;    ///< language id of the locale that the text was stored with, 0 when none was
};

/// A call that FileMaker does not let through to the plug-in.
class CallRefused : public std::exception {
public:
    explicit CallRefused(std::wstring reason) : m_reason(std::move(reason)) {}
    const wchar_t* Reason() const { return m_reason.c_str(); }
    const char* what() const noexcept override { return "call refused by the host"; }

private:
    std::wstring m_reason;
};

/// Hosts one plug-in. While it lives, the watch is told of every call that the plug-in makes into FileMaker
/// and into Outlook or MAPI. Its end sends Shutdown, if Init was accepted and it is still due, and unloads
/// the plug-in. The plug-in gets those messages only that its options ask for. Violations, beyond those of
/// the operations: a second function of the same name, and one under another id than the options have.
class Host {
public:
    explicit Host(Watch& watch);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// Asks the plug-in for its options. Gives why it could not be loaded; an empty text when it is loaded.
    [[nodiscard]] std::wstring Load(const std::wstring& file);

    /// The result as it stands in the parameter block, all 64 bits: from 1 on the interface version that the
    /// plug-in was made for. Any other refuses to work with this host, 0 by saying nothing or by not wanting
    /// Init.
    std::int64_t Init(std::int16_t version = kInterfaceVersion);
    void Shutdown();
    void Idle(std::uint8_t level);
    void AppPreferences();
    /// Any message by its number, with nothing in its parameters.
    void Send(std::uint8_t message);
    /// Asks for a text with a buffer of this capacity in UTF-16 units. Writing behind it is a violation.
    StringAnswer GetString(std::uint8_t id, std::size_t capacity = 4096);

    /// What is registered now, in the order of registration.
    const std::vector<RegisteredFunction>& Functions() const;
    /// Every id that the plug-in asked to unregister, in order, registered or not.
    const std::vector<std::int16_t>& Unregistered() const;
    /// What was registered when the last Shutdown was over. No violation: FileMaker lets go of it with the
    /// plug-in. Until then it can be called.
    const std::vector<std::int16_t>& LeftRegistered() const;
    /// By name, without regard to case, or by id; null when there is none. An empty name names nothing.
    const RegisteredFunction* Find(std::wstring_view name) const;
    const RegisteredFunction* Find(std::int16_t id) const;

    /// Calls a function as a calculation does. Raises CallRefused for a function that is not registered and
    /// for a count of arguments outside the registered minimum and maximum. What the function throws passes
    /// through.
    Answer Call(std::wstring_view name, const std::vector<Value>& arguments = {});
    Answer Call(std::int16_t id, const std::vector<Value>& arguments = {});
    /// The same with any count of arguments.
    Answer CallUnchecked(std::wstring_view name, const std::vector<Value>& arguments = {});
    Answer CallUnchecked(std::int16_t id, const std::vector<Value>& arguments = {});

    /// The locale of the result data of the calls to come (a language id); 0x0409 at first.
    void SetLocale(std::uint32_t language);

    /// Objects of FileMaker's that the plug-in has made and not deleted.
    std::size_t LiveObjects() const;

    /// The Outlook stand-in's switches; null where no such stand-in is entered.
    outlook::Control* Outlook() const;

private:
    class Plugin;
    std::unique_ptr<Plugin> m_plugin;
};

} // namespace standin::filemaker
