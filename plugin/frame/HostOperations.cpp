// The operations that FMWrapper.dll exports, and the error record that each takes last.
#include "HostOperations.h"

#include <exception>
#include <new>
#include <type_traits>

namespace varden::host {

namespace {

/// What the host writes an operation's failure into.
struct ErrorRecord {
    std::int32_t version = 1;
    std::int32_t code = 0;
};

constexpr std::int32_t kOutOfMemory = 1;
constexpr std::int32_t kFailed = 2;

} // namespace

extern "C" {
QuadChar* FM_QuadChar_Constructor2(char a, char b, char c, char d, ErrorRecord* error);
void FM_QuadChar_Delete(QuadChar* id, ErrorRecord* error);
Text* FM_Text_Constructor1(ErrorRecord* error);
void FM_Text_Delete(Text* text, ErrorRecord* error);
void FM_Text_AssignUnicode(Text* text, const wchar_t* unicode, ErrorRecord* error);
std::uint32_t FM_Text_GetSize(const Text* text, ErrorRecord* error);
void FM_Text_GetUnicode(const Text* text, wchar_t* buffer, std::int32_t start, std::int32_t count,
                        ErrorRecord* error);
std::uint32_t FM_Text_Find(const Text* text, const Text* what, std::uint32_t start, ErrorRecord* error);
void FM_Text_DeleteText(Text* text, std::uint32_t position, std::uint32_t count, ErrorRecord* error);
std::uint32_t FM_DataVect_Size(const DataVect* vector, ErrorRecord* error);
const Text* FM_DataVect_AtAsText(const DataVect* vector, std::uint32_t index, ErrorRecord* error);
const FixPt* FM_DataVect_AtAsNumber(const DataVect* vector, std::uint32_t index, ErrorRecord* error);
std::uint8_t FM_DataVect_AtAsBoolean(const DataVect* vector, std::uint32_t index, ErrorRecord* error);
std::int32_t FM_FixPt_AsLong(const FixPt* number, ErrorRecord* error);
const Locale* FM_Data_GetLocale(const Data* data, ErrorRecord* error);
std::int16_t FM_Data_SetAsText(Data* data, const Text* text, const Locale* locale, std::int32_t nativeType,
                               ErrorRecord* error);
std::int16_t FM_ExprEnv_RegisterExternalFunction(const QuadChar* pluginId, std::int16_t functionId,
                                                 const Text* name, const Text* prototype,
                                                 std::int16_t minimum, std::int16_t maximum,
                                                 std::uint32_t flags, ExternalFunction function,
                                                 ErrorRecord* error);
std::int16_t FM_ExprEnv_UnRegisterExternalFunction(const QuadChar* pluginId, std::int16_t functionId,
                                                   ErrorRecord* error);
}

namespace {

void RaiseFor(const ErrorRecord& record) {
    switch (record.code) {
    case kOutOfMemory:
        throw std::bad_alloc();
    case kFailed:
        throw std::exception();
    default:
        break;
    }
}

/// Calls the operation with a fresh error record behind its arguments, and raises what the record tells.
template <typename Operation, typename... Arguments>
auto Checked(Operation operation, Arguments... arguments) {
    ErrorRecord record;
    if constexpr (std::is_void_v<std::invoke_result_t<Operation, Arguments..., ErrorRecord*>>) {
        operation(arguments..., &record);
        RaiseFor(record);
    } else {
        const auto result = operation(arguments..., &record);
        RaiseFor(record);
        return result;
    }
}

/// The same for an operation whose failure nobody can act upon any more: the host keeps the object.
template <typename Operation, typename Object>
void Dispose(Operation operation, Object* object) {
    ErrorRecord record;
    operation(object, &record);
}

} // namespace

std::int32_t TextGetSize(const Text* text) {
    return static_cast<std::int32_t>(Checked(FM_Text_GetSize, text));
}

void TextGetUnicode(const Text* text, wchar_t* buffer, std::int32_t start, std::int32_t count) {
    Checked(FM_Text_GetUnicode, text, buffer, start, count);
}

std::int32_t DataVectSize(const DataVect* vector) {
    return static_cast<std::int32_t>(Checked(FM_DataVect_Size, vector));
}

const Text* DataVectAtAsText(const DataVect* vector, std::int32_t index) {
    return Checked(FM_DataVect_AtAsText, vector, index);
}

const FixPt* DataVectAtAsNumber(const DataVect* vector, std::int32_t index) {
    return Checked(FM_DataVect_AtAsNumber, vector, index);
}

bool DataVectAtAsBoolean(const DataVect* vector, std::int32_t index) {
    return Checked(FM_DataVect_AtAsBoolean, vector, index) != 0;
}

std::int32_t FixPtAsLong(const FixPt* number) {
    return Checked(FM_FixPt_AsLong, number);
}

const Locale* DataGetLocale(const Data* data) {
    return Checked(FM_Data_GetLocale, data);
}

void DataSetAsText(Data* data, const Text* text, const Locale* locale, std::int32_t nativeType) {
    Checked(FM_Data_SetAsText, data, text, locale, nativeType);
}

OwnedText::OwnedText() : m_text(Checked(FM_Text_Constructor1)) {
}

OwnedText::~OwnedText() {
    Dispose(FM_Text_Delete, m_text);
}

void OwnedText::Assign(const wchar_t* unicode) {
    Checked(FM_Text_AssignUnicode, m_text, unicode);
}

std::int32_t OwnedText::Find(const OwnedText& what, std::int32_t start) const {
    return static_cast<std::int32_t>(Checked(FM_Text_Find, static_cast<const Text*>(m_text), what.Get(),
                                             static_cast<std::uint32_t>(start)));
}

void OwnedText::Delete(std::int32_t position, std::int32_t count) {
    Checked(FM_Text_DeleteText, m_text, static_cast<std::uint32_t>(position),
            static_cast<std::uint32_t>(count));
}

PluginId::PluginId() : m_id(Checked(FM_QuadChar_Constructor2, 'V', 'A', 'R', 'D')) {
}

PluginId::~PluginId() {
    Dispose(FM_QuadChar_Delete, m_id);
}

void PluginId::Register(std::int16_t id, const OwnedText& name, const OwnedText& prototype,
                        std::int16_t minimum, std::int16_t maximum, std::uint32_t flags,
                        ExternalFunction function) const {
    Checked(FM_ExprEnv_RegisterExternalFunction, static_cast<const QuadChar*>(m_id), id, name.Get(),
            prototype.Get(), minimum, maximum, flags, function);
}

void PluginId::Unregister(std::int16_t id) const {
    ErrorRecord record; // a function that the host keeps is its own affair
    FM_ExprEnv_UnRegisterExternalFunction(m_id, id, &record);
}

} // namespace varden::host
