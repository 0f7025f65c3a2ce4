// The stream of verbs in which a mail keeps its voting buttons.
#include "standin/outlook/items/Voting.h"

#include "standin/mailbox/ByteOrder.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/items/People.h"

namespace standin::outlook {
namespace {

using mailbox::ByteReader;
using mailbox::ByteWriter;

constexpr std::uint16_t kVersion = 0x0102, kVersion2 = 0x0104;
/// VerbType: what other verbs (reply, forward ...) have there is no voting button.
constexpr std::uint32_t kVote = 4;
constexpr std::size_t kLongestName = 255;

void AddNarrow(ByteWriter& out, const std::string& text) {
    out.Add(static_cast<std::uint8_t>(text.size())).AddBytes(text.data(), text.size());
}

void AddWide(ByteWriter& out, const std::wstring& text) {
    out.Add(static_cast<std::uint8_t>(text.size())).AddBytes(text.data(), text.size() * sizeof(wchar_t));
}

/// VoteOption ([MS-OXOMSG] 2.2.1.74.1). Whoever votes is asked whether to send the answer at once.
void AddOption(ByteWriter& out, const std::wstring& name, std::uint32_t id) {
    constexpr std::uint8_t kNone = 0;
    constexpr std::uint32_t kNothing = 0, kAsk = 2, kInternal4 = 1, kInternal5 = 2, kInternal6 = 0xFFFFFFFF;
    const std::string narrow = mailbox::Narrow(name, CP_ACP).substr(0, kLongestName);
    out.Add(kVote);
    AddNarrow(out, narrow);
    AddNarrow(out, "IPM.Note");
    out.Add(kNone);
    AddNarrow(out, narrow);
    out.Add(kNothing)
        .Add(kNone)
        .Add(kNothing)
        .Add(kInternal4)
        .Add(kAsk)
        .Add(kInternal5)
        .Add(id)
        .Add(kInternal6);
}

template <class T>
std::basic_string<T> TakeText(ByteReader& in) {
    std::basic_string<T> text;
    const auto length = in.Take<std::uint8_t>();
    for (std::size_t i = 0; i < length && in.Ok(); ++i)
        text += in.Take<T>();
    return text;
}

/// Whether it is a voting button.
bool TakeOption(ByteReader& in) {
    constexpr std::size_t kRest = 4 + 1 + 6 * 4;
    const bool isVote = in.Take<std::uint32_t>() == kVote;
    for (int text = 0; text < 4; ++text)
        TakeText<char>(in);
    in.Skip(kRest);
    return isVote;
}

_variant_t ReadOptions(const mailbox::MessageProperties& message, const StoredProperty& stored) {
    std::wstring text;
    if (const auto stream = ReadAs<mailbox::Bytes>(message, stored))
        for (const std::wstring& option : ParseVerbStream(*stream))
            text += (text.empty() ? L"" : L";") + option;
    return Result(text);
}

void WriteOptions(mailbox::OpenMessage& message, const StoredProperty& stored, const Call& call) {
    std::vector<std::wstring> options = SplitNames(call.arguments.Text(0));
    if (options.empty())
        return RemoveValue(message, stored);
    for (const std::wstring& option : options)
        if (option.size() > kLongestName)
            throw InvalidValue();
    WriteValue(message, stored, MakeVerbStream(options));
}

} // namespace

constinit const Conversion kVotingOptions{ReadOptions, WriteOptions};

mailbox::Bytes MakeVerbStream(const std::vector<std::wstring>& options) {
    ByteWriter out;
    out.Add(kVersion).Add(static_cast<std::uint32_t>(options.size()));
    std::uint32_t id = 0;
    for (const std::wstring& option : options)
        AddOption(out, option, ++id);
    out.Add(kVersion2);
    for (const std::wstring& option : options) {
        AddWide(out, option);
        AddWide(out, option);
    }
    return out.Take();
}

/// The names are taken from behind the verbs, where they are Unicode.
std::vector<std::wstring> ParseVerbStream(std::span<const std::uint8_t> stream) {
    ByteReader in(stream);
    if (in.Take<std::uint16_t>() != kVersion)
        return {};
    std::vector<bool> isVote;
    for (auto left = in.Take<std::uint32_t>(); left > 0 && in.Ok(); --left)
        isVote.push_back(TakeOption(in));
    if (in.Take<std::uint16_t>() != kVersion2)
        return {};
    std::vector<std::wstring> options;
    for (const bool wanted : isVote) {
        std::wstring name = TakeText<wchar_t>(in);
        TakeText<wchar_t>(in);
        if (wanted)
            options.push_back(std::move(name));
    }
    return in.Ok() ? options : std::vector<std::wstring>();
}

} // namespace standin::outlook
