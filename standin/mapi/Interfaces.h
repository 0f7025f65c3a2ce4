// The interfaces that the MAPI view implements: their names in traces and their ids.
#pragma once

#include <windows.h>

#include <mapix.h>

#include <objidl.h>

namespace standin::mapi {

/// All ids of MAPI have this form.
constexpr IID MapiIid(unsigned long number) {
    return {number, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}

inline constexpr IID kIidSession = MapiIid(0x00020300);
inline constexpr IID kIidTable = MapiIid(0x00020301);
inline constexpr IID kIidProp = MapiIid(0x00020303);
inline constexpr IID kIidMsgStore = MapiIid(0x00020306);
inline constexpr IID kIidMessage = MapiIid(0x00020307);
inline constexpr IID kIidAttach = MapiIid(0x00020308);
inline constexpr IID kIidAddrBook = MapiIid(0x00020309);
inline constexpr IID kIidMailUser = MapiIid(0x0002030A);
inline constexpr IID kIidContainer = MapiIid(0x0002030B);
inline constexpr IID kIidFolder = MapiIid(0x0002030C);
inline constexpr IID kIidAbContainer = MapiIid(0x0002030D);
inline constexpr IID kIidDistList = MapiIid(0x0002030E);
inline constexpr IID kIidStreamDocfile = MapiIid(0x0002032C);
inline constexpr IID kIidStorage = MapiIid(0x0000000B);
inline constexpr IID kIidStream = MapiIid(0x0000000C);
inline constexpr IID kIidSequentialStream{
    0x0C733A30, 0x2A1C, 0x11CE, {0xAD, 0xE5, 0x00, 0xAA, 0x00, 0x44, 0x77, 0x3D}};

/// For each interface: `name`, and the ids that its objects answer to besides IUnknown.
template <class Interface>
struct InterfaceTraits;

template <>
struct InterfaceTraits<IMAPISession> {
    static constexpr const wchar_t* name = L"IMAPISession";
    static constexpr IID iids[] = {kIidSession};
};
template <>
struct InterfaceTraits<IMAPITable> {
    static constexpr const wchar_t* name = L"IMAPITable";
    static constexpr IID iids[] = {kIidTable};
};
template <>
struct InterfaceTraits<IMsgStore> {
    static constexpr const wchar_t* name = L"IMsgStore";
    static constexpr IID iids[] = {kIidMsgStore, kIidProp};
};
template <>
struct InterfaceTraits<IMAPIFolder> {
    static constexpr const wchar_t* name = L"IMAPIFolder";
    static constexpr IID iids[] = {kIidFolder, kIidContainer, kIidProp};
};
template <>
struct InterfaceTraits<IMessage> {
    static constexpr const wchar_t* name = L"IMessage";
    static constexpr IID iids[] = {kIidMessage, kIidProp};
};
template <>
struct InterfaceTraits<IAttach> {
    static constexpr const wchar_t* name = L"IAttach";
    static constexpr IID iids[] = {kIidAttach, kIidProp};
};
template <>
struct InterfaceTraits<IAddrBook> {
    static constexpr const wchar_t* name = L"IAddrBook";
    static constexpr IID iids[] = {kIidAddrBook, kIidProp};
};
template <>
struct InterfaceTraits<IABContainer> {
    static constexpr const wchar_t* name = L"IABContainer";
    static constexpr IID iids[] = {kIidAbContainer, kIidContainer, kIidProp};
};
template <>
struct InterfaceTraits<IMailUser> {
    static constexpr const wchar_t* name = L"IMailUser";
    static constexpr IID iids[] = {kIidMailUser, kIidProp};
};
template <>
struct InterfaceTraits<IDistList> {
    static constexpr const wchar_t* name = L"IDistList";
    static constexpr IID iids[] = {kIidDistList, kIidContainer, kIidProp};
};
template <>
struct InterfaceTraits<IStream> {
    static constexpr const wchar_t* name = L"IStream";
    static constexpr IID iids[] = {kIidStream, kIidSequentialStream};
};
template <>
struct InterfaceTraits<IStorage> {
    static constexpr const wchar_t* name = L"IStorage";
    static constexpr IID iids[] = {kIidStorage};
};

} // namespace standin::mapi
