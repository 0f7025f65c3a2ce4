// Following the chains and the directory tree of a compound file once, with the eyes open.
#include "standin/mailbox/CompoundCheck.h"

#include "standin/mailbox/Property.h"

#include <algorithm>
#include <cstring>

namespace standin::mailbox {
namespace {

// [MS-CFB] 2.1, 2.2, 2.6.
constexpr std::uint64_t kSignature = 0xE11AB1A1E011CFD0;
constexpr std::uint32_t kLastRegularSector = 0xFFFFFFFA;
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kNoStream = 0xFFFFFFFF;
constexpr std::size_t kHeaderFatSectors = 109;
constexpr std::size_t kMiniSectorSize = 64;
constexpr std::uint32_t kMiniStreamCutoff = 4096;

#pragma pack(push, 1)
struct Header {
    std::uint64_t signature;
    std::uint8_t classId[16];
    std::uint16_t minorVersion;
    std::uint16_t majorVersion;
    std::uint16_t byteOrder;
    std::uint16_t sectorShift;
    std::uint16_t miniSectorShift;
    std::uint8_t reserved[6];
    std::uint32_t directorySectors;
    std::uint32_t fatSectors;
    std::uint32_t firstDirectorySector;
    std::uint32_t transaction;
    std::uint32_t miniStreamCutoff;
    std::uint32_t firstMiniFatSector;
    std::uint32_t miniFatSectors;
    std::uint32_t firstDifatSector;
    std::uint32_t difatSectors;
    std::uint32_t fat[kHeaderFatSectors];
};
static_assert(sizeof(Header) == 512);

struct DirectoryEntry {
    enum Type : std::uint8_t { Unused = 0, Storage = 1, Stream = 2, Root = 5 };
    char16_t name[32];
    std::uint16_t nameSize; // in bytes, with its NUL
    Type type;
    std::uint8_t color;
    std::uint32_t left;
    std::uint32_t right;
    std::uint32_t child;
    std::uint8_t classId[16];
    std::uint32_t state;
    std::uint64_t created;
    std::uint64_t modified;
    std::uint32_t firstSector;
    std::uint64_t size;
};
static_assert(sizeof(DirectoryEntry) == 128);
#pragma pack(pop)

class Checker {
public:
    explicit Checker(std::span<const std::uint8_t> file) : m_file(file) {}

    bool Check() { return ReadHeader() && ReadFat() && ReadDirectory() && ReadMiniFat() && CheckTree(); }

private:
    bool ReadHeader() {
        if (m_file.size() < sizeof m_header)
            return false;
        std::memcpy(&m_header, m_file.data(), sizeof m_header);
        const bool isVersion3 = m_header.majorVersion == 3 && m_header.sectorShift == 9;
        const bool isVersion4 = m_header.majorVersion == 4 && m_header.sectorShift == 12;
        if (m_header.signature != kSignature || m_header.byteOrder != 0xFFFE ||
            m_header.miniSectorShift != 6 || m_header.miniStreamCutoff != kMiniStreamCutoff ||
            (!isVersion3 && !isVersion4))
            return false;
        m_sectorSize = std::size_t{1} << m_header.sectorShift;
        m_sectors = m_file.size() < m_sectorSize ? 0 : (m_file.size() - 1) / m_sectorSize;
        return true;
    }

    /// A sector's content; the end of the last one may be missing, as if it were zeros.
    bool Append(std::uint32_t sector, Bytes& content) const {
        if (sector >= m_sectors)
            return false;
        const std::span<const std::uint8_t> rest = m_file.subspan((std::size_t{sector} + 1) * m_sectorSize);
        const std::span<const std::uint8_t> part = rest.first(std::min(rest.size(), m_sectorSize));
        content.insert(content.end(), part.begin(), part.end());
        content.resize(content.size() + m_sectorSize - part.size());
        return true;
    }

    static std::vector<std::uint32_t> Words(const Bytes& content) {
        std::vector<std::uint32_t> words(content.size() / sizeof(std::uint32_t));
        std::memcpy(words.data(), content.data(), words.size() * sizeof(std::uint32_t));
        return words;
    }

    /// Where the parts of the FAT are: in the header, then in a chain of sectors whose last word is the next.
    bool ReadFat() {
        std::vector<std::uint32_t> places(std::begin(m_header.fat), std::end(m_header.fat));
        std::uint32_t next = m_header.firstDifatSector;
        if (m_header.difatSectors > m_sectors || m_header.fatSectors > m_sectors)
            return false;
        for (std::uint32_t i = 0; i < m_header.difatSectors; ++i) {
            Bytes sector;
            if (!Append(next, sector))
                return false;
            const std::vector<std::uint32_t> words = Words(sector);
            places.insert(places.end(), words.begin(), words.end() - 1);
            next = words.back();
        }
        if (m_header.fatSectors > places.size())
            return false;
        Bytes content;
        for (std::uint32_t i = 0; i < m_header.fatSectors; ++i)
            if (!Append(places[i], content))
                return false;
        m_fat = Words(content);
        return true;
    }

    /// The number of links of a chain; nothing if it leaves the table or never ends.
    static std::optional<std::size_t>
    ChainLength(std::uint32_t first, const std::vector<std::uint32_t>& table, std::size_t sectors) {
        std::size_t length = 0;
        for (std::uint32_t sector = first; sector != kEndOfChain; sector = table[sector])
            if (sector > kLastRegularSector || sector >= table.size() || sector >= sectors ||
                ++length > sectors)
                return std::nullopt;
        return length;
    }

    bool ReadChain(std::uint32_t first, Bytes& content) const {
        if (!ChainLength(first, m_fat, m_sectors))
            return false;
        for (std::uint32_t sector = first; sector != kEndOfChain; sector = m_fat[sector])
            Append(sector, content);
        return true;
    }

    bool ReadDirectory() {
        Bytes content;
        if (!ReadChain(m_header.firstDirectorySector, content))
            return false;
        m_entries.resize(content.size() / sizeof(DirectoryEntry));
        std::memcpy(m_entries.data(), content.data(), m_entries.size() * sizeof(DirectoryEntry));
        return !m_entries.empty() && m_entries[0].type == DirectoryEntry::Root;
    }

    bool ReadMiniFat() {
        Bytes content;
        if (m_header.miniFatSectors > 0 && !ReadChain(m_header.firstMiniFatSector, content))
            return false;
        m_miniFat = Words(content);
        const DirectoryEntry& root = m_entries[0];
        m_miniSectors = static_cast<std::size_t>(SizeOf(root) / kMiniSectorSize);
        return IsChainLongEnough(root.firstSector, SizeOf(root), m_fat, m_sectors, m_sectorSize);
    }

    /// Version 3 has only the lower half of the size ([MS-CFB] 2.6.1).
    std::uint64_t SizeOf(const DirectoryEntry& entry) const {
        return m_header.majorVersion == 3 ? static_cast<std::uint32_t>(entry.size) : entry.size;
    }

    static bool IsChainLongEnough(std::uint32_t first, std::uint64_t size,
                                  const std::vector<std::uint32_t>& table, std::size_t sectors,
                                  std::size_t sectorSize) {
        if (size == 0)
            return true;
        const std::optional<std::size_t> length = ChainLength(first, table, sectors);
        return length && *length >= (size + sectorSize - 1) / sectorSize;
    }

    bool IsStreamSound(const DirectoryEntry& entry) const {
        const std::uint64_t size = SizeOf(entry);
        return size < kMiniStreamCutoff
                   ? IsChainLongEnough(entry.firstSector, size, m_miniFat, m_miniSectors, kMiniSectorSize)
                   : IsChainLongEnough(entry.firstSector, size, m_fat, m_sectors, m_sectorSize);
    }

    static bool IsNameSound(const DirectoryEntry& entry) {
        const std::size_t units = entry.nameSize / sizeof(char16_t);
        return entry.nameSize % sizeof(char16_t) == 0 && units >= 2 && units <= std::size(entry.name) &&
               entry.name[units - 1] == 0;
    }

    /// Each entry is reached at most once.
    bool CheckTree() {
        std::vector<bool> seen(m_entries.size());
        std::vector<std::uint32_t> open{m_entries[0].child};
        while (!open.empty()) {
            const std::uint32_t index = open.back();
            open.pop_back();
            if (index == kNoStream)
                continue;
            if (index == 0 || index >= m_entries.size() || seen[index] || !IsNameSound(m_entries[index]))
                return false;
            seen[index] = true;
            const DirectoryEntry& entry = m_entries[index];
            open.push_back(entry.left);
            open.push_back(entry.right);
            if (entry.type == DirectoryEntry::Storage)
                open.push_back(entry.child);
            else if (entry.type != DirectoryEntry::Stream || !IsStreamSound(entry))
                return false;
        }
        return true;
    }

    std::span<const std::uint8_t> m_file;
    Header m_header{};
    std::size_t m_sectorSize = 0;
    std::size_t m_sectors = 0;
    std::size_t m_miniSectors = 0;
    std::vector<std::uint32_t> m_fat;
    std::vector<std::uint32_t> m_miniFat;
    std::vector<DirectoryEntry> m_entries;
};

} // namespace

bool IsSoundCompoundFile(std::span<const std::uint8_t> file) {
    return Checker(file).Check();
}

} // namespace standin::mailbox
