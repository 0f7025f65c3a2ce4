// Damaged MSG files are refused or read as far as they go: they never end or hang the program.
#include "standin/mailbox/Msg.h"
#include "tests/mailbox/Support.h"

#include <cstring>
#include <random>

namespace standin::mailbox::test {
namespace {

/// Files of different make: an appointment, attachments, a message in a message, one that is damaged already.
constexpr const char* kFiles[] = {"appointment-daily.msg", "attachment-files.msg", "message-in-message.msg",
                                  "msgClassContact.msg", "damaged-1.msg"};

void TryToRead(const Bytes& file) {
    NamedProperties names;
    Content content;
    Bytes written;
    if (SUCCEEDED(ReadMsgBytes(file, names, content))) {
        EXPECT_EQ(WriteMsgBytes(content, names, written), S_OK) << "what could be read must be writable";
    }
}

TEST(DamagedMsgFiles, CutOffAnywhereOrWithBitsAndWordsChanged) {
    const std::filesystem::path folder = MsgFolder();
    if (folder.empty())
        GTEST_SKIP();
    std::mt19937 random(20251122);
    for (const char* name : kFiles) {
        const Bytes whole = ReadFile(folder / name);
        for (std::size_t size = 0; size < whole.size(); size += 1 + whole.size() / 97)
            TryToRead(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        for (int round = 0; round < 400; ++round) {
            Bytes damaged = whole;
            for (int changes = 0; changes < 1 + round % 8; ++changes) {
                const std::size_t position = random() % (damaged.size() - 4);
                const std::uint32_t word = random() % 3 == 0 ? 0xFFFFFFFF : random();
                if (random() % 2)
                    damaged[position] ^= static_cast<std::uint8_t>(1 << random() % 8);
                else
                    std::memcpy(&damaged[position], &word, sizeof word);
            }
            TryToRead(damaged);
        }
    }
}

} // namespace
} // namespace standin::mailbox::test
