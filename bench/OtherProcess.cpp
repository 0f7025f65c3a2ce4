// An object that answers calls in a process of its own.
#include "OtherProcess.h"

#include <windows.h>

#include <ole2.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

namespace varden::bench {

namespace {

/// Answers every member with a number.
class Answering final : public IDispatch {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IDispatch ? this : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        if (result) {
            result->vt = VT_I4;
            result->lVal = 1;
        }
        return S_OK;
    }
};

void Check(bool ok) {
    if (!ok) {
        throw std::runtime_error("the cost of a call to another process can't be measured");
    }
}

struct Stream {
    Stream() { Check(SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, &object))); }
    ~Stream() { object->Release(); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    IStream* object = nullptr;
};

std::vector<char> MarshalledBytes(IUnknown& object) {
    const Stream stream;
    Check(SUCCEEDED(
        CoMarshalInterface(stream.object, IID_IDispatch, &object, MSHCTX_LOCAL, nullptr, MSHLFLAGS_NORMAL)));
    ULARGE_INTEGER end;
    Check(SUCCEEDED(stream.object->Seek({}, STREAM_SEEK_CUR, &end)));
    Check(SUCCEEDED(stream.object->Seek({}, STREAM_SEEK_SET, nullptr)));
    std::vector<char> bytes(end.QuadPart);
    Check(SUCCEEDED(stream.object->Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr)));
    return bytes;
}

IDispatch* Unmarshalled(const std::vector<char>& bytes) {
    const Stream stream;
    Check(SUCCEEDED(stream.object->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr)));
    Check(SUCCEEDED(stream.object->Seek({}, STREAM_SEEK_SET, nullptr)));
    IDispatch* object = nullptr;
    Check(SUCCEEDED(CoUnmarshalInterface(stream.object, IID_IDispatch, reinterpret_cast<void**>(&object))));
    return object;
}

} // namespace

void ServeObject(const std::wstring& file) {
    Answering object;
    const std::vector<char> bytes = MarshalledBytes(object);
    const std::filesystem::path part = file + L".part";
    std::ofstream(part, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    std::filesystem::rename(part, file);
    while (std::filesystem::exists(file)) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 200, QS_ALLINPUT);
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
    }
}

double MeasureRoundTrip() {
    constexpr int kCalls = 1000;
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / (L"varden-bench-" + std::to_wstring(GetCurrentProcessId()));
    std::wstring command = L"\"" + std::wstring(program) + L"\" --serve \"" + file.wstring() + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process;
    Check(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                         &process));
    for (int i = 0; i < 200 && !std::filesystem::exists(file); ++i) {
        Sleep(50);
    }
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    in.close();
    IDispatch* object = Unmarshalled(bytes);
    DISPPARAMS none{};
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kCalls; ++i) {
        VARIANT result{};
        Check(SUCCEEDED(object->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &none, &result, nullptr, nullptr)));
    }
    const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - start;
    object->Release();
    std::filesystem::remove(file);
    WaitForSingleObject(process.hProcess, 5000);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return taken.count() / kCalls;
}

std::vector<Pace> PacesOf(int records) {
    constexpr double kOnWindowsAtMost = 100;
    return {{MeasureRoundTrip(), records / 10}, {kOnWindowsAtMost, records}};
}

void PrintPace(const Pace& pace) {
    std::printf(" %d records, each call %.0f us long at least\n", pace.records, pace.microseconds);
}

} // namespace varden::bench
