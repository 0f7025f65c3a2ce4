// The operations that FMWrapper.dll exports to plug-ins. Each takes an error record last, set up as version 1
// and code 0. A failure writes 1 (out of memory) or 2 (any other) as its code; the operation then answers 0
// or null and has done nothing, except that a Delete has ended its object all the same.
//
// A handle that is not live, or not of the kind wanted, is a violation of the caller's: it is told to the
// watch, nothing is done, and the answer is 0 or null; kRefused where the operation answers an error.
#pragma once

#include "Function.h"

#include <cstdint>

#ifdef FMWRAPPER_IMPLEMENTATION
#define FMWRAPPER_OPERATION __declspec(dllexport)
#else
#define FMWRAPPER_OPERATION __declspec(dllimport)
#endif

namespace standin::filemaker {

struct ErrorRecord {
    std::int32_t version = 1;
    std::int32_t code = 0;
};

/// What FM_Text_Find answers when there is nothing to be found.
inline constexpr std::uint32_t kNotFound = 0xFFFFFFFF;

/// What the operations that answer an error answer when they refuse.
inline constexpr std::int16_t kRefused = -1;

extern "C" {

/// The id of a plug-in, to be deleted by the caller.
FMWRAPPER_OPERATION QuadChar* FM_QuadChar_Constructor2(char first, char second, char third, char fourth,
                                                       ErrorRecord* error);
FMWRAPPER_OPERATION void FM_QuadChar_Delete(QuadChar* id, ErrorRecord* error);

/// An empty text, to be deleted by the caller.
FMWRAPPER_OPERATION Text* FM_Text_Constructor1(ErrorRecord* error);
/// Deletes a text that the caller made; no other.
FMWRAPPER_OPERATION void FM_Text_Delete(Text* text, ErrorRecord* error);
/// Replaces the content by UTF-16 up to its terminator.
FMWRAPPER_OPERATION void FM_Text_AssignUnicode(Text* text, const wchar_t* unicode, ErrorRecord* error);
/// In UTF-16 units.
FMWRAPPER_OPERATION std::uint32_t FM_Text_GetSize(const Text* text, ErrorRecord* error);
/// Copies the units from `start` on, at most `count`, without a terminator. Nothing is written for a start
/// behind the text.
FMWRAPPER_OPERATION void FM_Text_GetUnicode(const Text* text, wchar_t* buffer, std::uint32_t start,
                                            std::uint32_t count, ErrorRecord* error);
/// Position of the first occurrence at or behind `start`, by exact comparison; kNotFound when there is none,
/// when `start` lies behind the text, and for an empty text to be found.
FMWRAPPER_OPERATION std::uint32_t FM_Text_Find(const Text* text, const Text* what, std::uint32_t start,
                                               ErrorRecord* error);
/// Takes out `count` units, or what there is of them; nothing for a position behind the text.
FMWRAPPER_OPERATION void FM_Text_DeleteText(Text* text, std::uint32_t position, std::uint32_t count,
                                            ErrorRecord* error);

/// The count of arguments.
FMWRAPPER_OPERATION std::uint32_t FM_DataVect_Size(const DataVect* vector, ErrorRecord* error);
/// The argument as text, owned by the vector; an empty text for an index behind the last.
FMWRAPPER_OPERATION const Text* FM_DataVect_AtAsText(const DataVect* vector, std::uint32_t index,
                                                     ErrorRecord* error);
/// The argument as number, owned by the vector; 0 for an index behind the last.
FMWRAPPER_OPERATION const FixPt* FM_DataVect_AtAsNumber(const DataVect* vector, std::uint32_t index,
                                                        ErrorRecord* error);
/// 1 for an argument whose number is not 0; 0 for an index behind the last.
FMWRAPPER_OPERATION std::uint8_t FM_DataVect_AtAsBoolean(const DataVect* vector, std::uint32_t index,
                                                         ErrorRecord* error);

/// Cut towards zero; a number outside 32 bits gives the nearest end of their range.
FMWRAPPER_OPERATION std::int32_t FM_FixPt_AsLong(const FixPt* number, ErrorRecord* error);

/// The data's locale, owned by the data.
FMWRAPPER_OPERATION const Locale* FM_Data_GetLocale(const Data* data, ErrorRecord* error);
/// Makes the data this text, entered in this locale as this native type. Refuses (kRefused) a type that is
/// none.
FMWRAPPER_OPERATION std::int16_t FM_Data_SetAsText(Data* data, const Text* text, const Locale* locale,
                                                   std::int32_t nativeType, ErrorRecord* error);

/// Makes a function known to calculations. An id that the plug-in has registered already gets the new
/// function in place of the old. Refuses (kRefused) a minimum that is negative or above the maximum; a
/// maximum of -1 is none.
FMWRAPPER_OPERATION std::int16_t
FM_ExprEnv_RegisterExternalFunction(const QuadChar* pluginId, std::int16_t functionId, const Text* name,
                                    const Text* prototype, std::int16_t minimum, std::int16_t maximum,
                                    std::uint32_t flags, ExternalFunction function, ErrorRecord* error);
/// Refuses (kRefused) an id that is not registered.
FMWRAPPER_OPERATION std::int16_t
FM_ExprEnv_UnRegisterExternalFunction(const QuadChar* pluginId, std::int16_t functionId, ErrorRecord* error);
}

} // namespace standin::filemaker
