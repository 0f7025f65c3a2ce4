// The host's operations on its objects: one small function for each, which raises for the two errors that the
// host reports, and owning types for the objects that the plug-in makes.
#pragma once

#include <cstdint>
#include <string>

namespace varden::host {

// Opaque objects of the host.
struct Text;
struct QuadChar;
struct DataVect;
struct FixPt;
struct Data;
struct Locale;
struct ExprEnv;

/// A function that a script can call, as the host calls it. The result is always 0.
using ExternalFunction = std::int16_t (*)(std::int16_t functionId, const ExprEnv* environment,
                                          const DataVect* arguments, Data* result);

/// How a value was entered; the plug-in answers text only.
inline constexpr std::int32_t kNativeTypeText = 1;

// Each of these raises std::bad_alloc when the host reports that it is out of memory, and std::exception when
// it reports any other failure of its own.

std::int32_t TextGetSize(const Text* text);
/// Copies at most `count` UTF-16 units from `start` on.
void TextGetUnicode(const Text* text, wchar_t* buffer, std::int32_t start, std::int32_t count);
std::int32_t DataVectSize(const DataVect* vector);
/// The text stays the vector's own.
const Text* DataVectAtAsText(const DataVect* vector, std::int32_t index);
/// The number stays the vector's own.
const FixPt* DataVectAtAsNumber(const DataVect* vector, std::int32_t index);
bool DataVectAtAsBoolean(const DataVect* vector, std::int32_t index);
std::int32_t FixPtAsLong(const FixPt* number);
const Locale* DataGetLocale(const Data* data);
void DataSetAsText(Data* data, const Text* text, const Locale* locale, std::int32_t nativeType);

/// A text of the host's that the plug-in owns.
class OwnedText {
public:
    OwnedText();
    ~OwnedText();
    OwnedText(const OwnedText&) = delete;
    OwnedText& operator=(const OwnedText&) = delete;

    const Text* Get() const { return m_text; }
    /// Replaces the content by the text up to its terminator.
    void Assign(const wchar_t* unicode);
    /// Position of the first occurrence at or behind `start`, negative when there is none.
    std::int32_t Find(const OwnedText& what, std::int32_t start) const;
    void Delete(std::int32_t position, std::int32_t count);

private:
    Text* m_text;
};

/// The four characters that name the plug-in to the host.
class PluginId {
public:
    PluginId();
    ~PluginId();
    PluginId(const PluginId&) = delete;
    PluginId& operator=(const PluginId&) = delete;

    void Register(std::int16_t id, const OwnedText& name, const OwnedText& prototype, std::int16_t minimum,
                  std::int16_t maximum, std::uint32_t flags, ExternalFunction function) const;
    void Unregister(std::int16_t id) const;

private:
    QuadChar* m_id;
};

} // namespace varden::host
