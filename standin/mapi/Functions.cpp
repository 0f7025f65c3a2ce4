// The exported functions.
#include "standin/mapi/Functions.h"

#include "standin/mapi/Buffers.h"
#include "standin/mapi/Comparison.h"
#include "standin/mapi/ConversationIndex.h"
#include "standin/mapi/FileStream.h"
#include "standin/mapi/MessageOnStorage.h"
#include "standin/mapi/Object.h"
#include "standin/mapi/RtfStream.h"
#include "standin/mapi/Values.h"

#include "standin/mailbox/EntryId.h"

#include <cstring>

using namespace standin;
using namespace standin::mapi;

namespace {

// Newer than the platform's headers.
constexpr ULONG kNoCoInit = 0x8; // MAPI_NO_COINIT

/// One call of an exported function.
template <class Work>
HRESULT Exported(const wchar_t* name, Work&& work) {
    Crossing call(Side::Mapi, L"MAPI32", name);
    return call.Fails() ? call.Status() : call.Return(Guarded(work));
}
template <class Work>
HRESULT Exported(const wchar_t* name, const Outputs&, Work&& work) {
    return Exported(name, std::forward<Work>(work));
}

/// One that needs MAPIInitialize.
template <class Work>
HRESULT ExportedWhenInitialized(const wchar_t* name, const Outputs&, Work&& work) {
    return Exported(name, [&]() -> HRESULT { return IsInitialized() ? work() : MAPI_E_NOT_INITIALIZED; });
}

void FreeRows(SRowSet* rows) {
    if (!rows)
        return;
    for (ULONG i = 0; i < rows->cRows; ++i)
        FreeBuffer(rows->aRow[i].lpProps);
    FreeBuffer(rows);
}

/// Frees a row set while it is being put together.
struct RowSetFreer {
    void operator()(SRowSet* rows) const { FreeRows(rows); }
};
using RowSet = std::unique_ptr<SRowSet, RowSetFreer>;

HRESULT PrepareTable(IMAPITable& table, SPropTagArray* columns, SRestriction* restriction,
                     SSortOrderSet* order) {
    HRESULT status = columns ? table.SetColumns(columns, TBL_BATCH) : S_OK;
    if (SUCCEEDED(status) && restriction)
        status = table.Restrict(restriction, TBL_BATCH);
    if (SUCCEEDED(status) && order)
        status = table.SortTable(order, TBL_BATCH);
    if (SUCCEEDED(status))
        status = table.SeekRow(BOOKMARK_BEGINNING, 0, nullptr);
    return status;
}

/// The rows of both, in the memory of a new set.
RowSet Joined(RowSet first, RowSet second) {
    RowSet all(static_cast<SRowSet*>(NewBuffer(CbNewSRowSet(first->cRows + second->cRows))));
    all->cRows = 0;
    for (SRowSet* part : {first.get(), second.get()}) {
        std::copy_n(part->aRow, part->cRows, all->aRow + all->cRows);
        all->cRows += part->cRows;
        part->cRows = 0;
    }
    return all;
}

/// MAPI_E_TABLE_TOO_BIG: more rows than `most`, if that isn't 0.
HRESULT QueryToEnd(IMAPITable& table, ULONG most, RowSet& rows) {
    constexpr LONG kRowsAtOnce = 50000;
    for (;;) {
        SRowSet* read = nullptr;
        if (const HRESULT status = table.QueryRows(kRowsAtOnce, 0, &read); FAILED(status))
            return status;
        RowSet part(read);
        const bool isLast = part->cRows == 0;
        if (!rows)
            rows = std::move(part);
        else if (!isLast)
            rows = Joined(std::move(rows), std::move(part));
        if (most != 0 && rows->cRows > most)
            return MAPI_E_TABLE_TOO_BIG;
        if (isLast)
            return S_OK;
    }
}

/// Without MAPI_UNICODE, as the library does it: a tag without a type gives narrow text.
HRESULT GetOne(IMAPIProp* object, ULONG tag, SPropValue** property) {
    if (!object || !property)
        return MAPI_E_INVALID_PARAMETER;
    SPropTagArray tags{1, {tag}};
    ULONG count = 0;
    SPropValue* read = nullptr;
    if (const HRESULT status = object->GetProps(&tags, 0, &count, &read); FAILED(status))
        return status;
    Buffer<SPropValue> value(read);
    if (PROP_TYPE(value->ulPropTag) == PT_ERROR)
        return value->Value.err;
    *property = value.release();
    return S_OK;
}

HRESULT SetOne(IMAPIProp* object, SPropValue* property) {
    if (!object || !property)
        return MAPI_E_INVALID_PARAMETER;
    SPropProblemArray* found = nullptr;
    if (const HRESULT status = object->SetProps(1, property, &found); FAILED(status))
        return status;
    const Buffer<SPropProblemArray> problems(found);
    return problems ? problems->aProblem[0].scode : S_OK;
}

HRESULT CreateIndex(ULONG parentSize, const BYTE* parent, ULONG* size, BYTE** index) {
    if (!size || !index || (parentSize > 0 && !parent))
        return MAPI_E_INVALID_PARAMETER;
    const auto made = MakeConversationIndex(BytesAt(parentSize, parent));
    if (!made)
        return MAPI_E_INVALID_PARAMETER;
    *index = static_cast<BYTE*>(std::memcpy(NewBuffer(made->size()), made->data(), made->size()));
    *size = static_cast<ULONG>(made->size());
    return S_OK;
}

HRESULT CheckInitialization(const MAPIINIT* parameters) {
    if (!parameters)
        return S_OK;
    if (parameters->ulVersion != MAPI_INIT_VERSION)
        return MAPI_E_VERSION;
    const ULONG known = MAPI_MULTITHREAD_NOTIFICATIONS | kNoCoInit | MAPI_NT_SERVICE;
    return parameters->ulFlags & ~known ? MAPI_E_UNKNOWN_FLAGS : S_OK;
}

} // namespace

extern "C" {

__declspec(dllexport) HRESULT WINAPI MAPIInitialize(LPVOID parameters) {
    return Exported(L"MAPIInitialize", [&] {
        const HRESULT status = CheckInitialization(static_cast<const MAPIINIT*>(parameters));
        return FAILED(status) ? status : Initialize();
    });
}

__declspec(dllexport) void WINAPI MAPIUninitialize() {
    Crossing call(Side::Mapi, L"MAPI32", L"MAPIUninitialize");
    Uninitialize();
    if (!IsInitialized())
        CheckFreedBuffers();
}

__declspec(dllexport) SCODE WINAPI MAPIAllocateBuffer(ULONG size, LPVOID* buffer) {
    return Exported(L"MAPIAllocateBuffer", Outputs(buffer), [&] { return AllocateBuffer(size, buffer); });
}

__declspec(dllexport) SCODE WINAPI MAPIAllocateMore(ULONG size, LPVOID object, LPVOID* buffer) {
    return Exported(L"MAPIAllocateMore", Outputs(buffer), [&] { return AllocateMore(size, object, buffer); });
}

__declspec(dllexport) ULONG WINAPI MAPIFreeBuffer(LPVOID buffer) {
    return FreeBuffer(buffer);
}

__declspec(dllexport) HRESULT WINAPI HrGetOneProp(LPMAPIPROP object, ULONG tag, LPSPropValue* property) {
    return Exported(L"HrGetOneProp", Outputs(property), [&] { return GetOne(object, tag, property); });
}

__declspec(dllexport) HRESULT WINAPI HrSetOneProp(LPMAPIPROP object, LPSPropValue property) {
    return Exported(L"HrSetOneProp", [&] { return SetOne(object, property); });
}

__declspec(dllexport) HRESULT WINAPI
    HrQueryAllRows(LPMAPITABLE table, LPSPropTagArray columns, LPSRestriction restriction,
                   LPSSortOrderSet order, LONG mostRows, LPSRowSet* rows) {
    return Exported(L"HrQueryAllRows", Outputs(rows), [&]() -> HRESULT {
        if (!table || !rows || mostRows < 0)
            return MAPI_E_INVALID_PARAMETER;
        if (const HRESULT status = PrepareTable(*table, columns, restriction, order); FAILED(status))
            return status;
        RowSet read;
        const HRESULT status = QueryToEnd(*table, static_cast<ULONG>(mostRows), read);
        if (SUCCEEDED(status))
            *rows = read.release();
        return status;
    });
}

__declspec(dllexport) void WINAPI FreePadrlist(LPADRLIST list) {
    if (!list)
        return;
    for (ULONG i = 0; i < list->cEntries; ++i)
        FreeBuffer(list->aEntries[i].rgPropVals);
    FreeBuffer(list);
}

__declspec(dllexport) void WINAPI FreeProws(LPSRowSet rows) {
    FreeRows(rows);
}

__declspec(dllexport) ULONG WINAPI UlPropSize(LPSPropValue property) {
    mailbox::Value value;
    if (!property || FAILED(TakeValue(*property, value)))
        return 0;
    return static_cast<ULONG>(PropertySize(value));
}

__declspec(dllexport) void WINAPI HexFromBin(LPBYTE bytes, int size, LPSTR text) {
    for (const wchar_t digit : mailbox::ToHex(BytesAt(static_cast<ULONG>(std::max(size, 0)), bytes)))
        *text++ = static_cast<char>(digit);
    *text = '\0';
}

__declspec(dllexport) BOOL WINAPI FBinFromHex(LPSTR text, LPBYTE bytes) {
    const HRESULT status = Exported(L"FBinFromHex", [&]() -> HRESULT {
        const auto read = text && bytes ? mailbox::FromHex(TextAt(text, false)) : std::nullopt;
        if (!read)
            return MAPI_E_INVALID_PARAMETER;
        std::ranges::copy(*read, bytes);
        return S_OK;
    });
    return SUCCEEDED(status);
}

__declspec(dllexport) SCODE WINAPI
    ScCreateConversationIndex(ULONG parentSize, LPBYTE parent, ULONG* size, LPBYTE* index) {
    return ExportedWhenInitialized(L"ScCreateConversationIndex", Outputs(size, index),
                                   [&] { return CreateIndex(parentSize, parent, size, index); });
}

__declspec(dllexport) LPMALLOC WINAPI MAPIGetDefaultMalloc() {
    LPMALLOC memory = nullptr;
    const HRESULT status = Exported(L"MAPIGetDefaultMalloc", [&] { return CoGetMalloc(1, &memory); });
    return SUCCEEDED(status) ? memory : nullptr;
}

__declspec(dllexport) HRESULT WINAPI
    OpenStreamOnFile(LPALLOCATEBUFFER allocate, LPFREEBUFFER free, ULONG flags, LPSTR fileName, LPSTR prefix,
                     LPSTREAM* stream) {
    return ExportedWhenInitialized(L"OpenStreamOnFile", Outputs(stream), [&]() -> HRESULT {
        if (!allocate || !free)
            return MAPI_E_INVALID_PARAMETER;
        return OpenFileStream(flags, fileName, prefix, stream);
    });
}

__declspec(dllexport) HRESULT WINAPI
    WrapCompressedRTFStream(LPSTREAM compressed, ULONG flags, LPSTREAM* uncompressed) {
    return ExportedWhenInitialized(L"WrapCompressedRTFStream", Outputs(uncompressed),
                                   [&] { return WrapRtfStream(compressed, flags, uncompressed); });
}

__declspec(dllexport) HRESULT WINAPI RTFSync(LPMESSAGE message, ULONG flags, BOOL* updated) {
    return ExportedWhenInitialized(L"RTFSync", Outputs(updated),
                                   [&] { return SyncRtf(message, flags, updated); });
}

__declspec(dllexport) SCODE WINAPI OpenIMsgSession(LPMALLOC memory, ULONG flags, LPMSGSESS* session) {
    return ExportedWhenInitialized(L"OpenIMsgSession", Outputs(session), [&]() -> HRESULT {
        if (!memory || !session)
            return MAPI_E_INVALID_PARAMETER;
        if (flags != 0)
            return MAPI_E_UNKNOWN_FLAGS;
        *session = reinterpret_cast<LPMSGSESS>(NewMessageSession());
        return S_OK;
    });
}

__declspec(dllexport) void WINAPI CloseIMsgSession(LPMSGSESS session) {
    Crossing call(Side::Mapi, L"MAPI32", L"CloseIMsgSession");
    if (session)
        EndMessageSession(reinterpret_cast<MessageSession*>(session));
}

__declspec(dllexport) SCODE WINAPI
    OpenIMsgOnIStg(LPMSGSESS session, LPALLOCATEBUFFER allocate, LPALLOCATEMORE allocateMore,
                   LPFREEBUFFER free, LPMALLOC memory, LPVOID, LPSTORAGE storage, MSGCALLRELEASE* released,
                   ULONG callerData, ULONG flags, LPMESSAGE* message) {
    return ExportedWhenInitialized(L"OpenIMsgOnIStg", Outputs(message), [&]() -> HRESULT {
        if (!allocate || !allocateMore || !free || !memory)
            return MAPI_E_INVALID_PARAMETER;
        if (flags & ~(IMSG_NO_ISTG_COMMIT | MAPI_UNICODE))
            return MAPI_E_UNKNOWN_FLAGS;
        return OpenMessageOnStorage({.session = reinterpret_cast<MessageSession*>(session),
                                     .storage = storage,
                                     .released = released,
                                     .callerData = callerData,
                                     .commits = (flags & IMSG_NO_ISTG_COMMIT) == 0},
                                    message);
    });
}

} // extern "C"
