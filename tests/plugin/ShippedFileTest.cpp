// The file that ships: what it exports, what it needs, how it is protected; and what its start mends in the
// registry.
#include "ScriptTest.h"

#include <winver.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>

namespace varden::tests {
namespace {

/// The file as the loader maps it, without running any of it.
class ShippedFileTest : public testing::Test {
protected:
    void SetUp() override {
        m_module = LoadLibraryExW(Path().c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
        ASSERT_TRUE(m_module);
    }
    void TearDown() override { FreeLibrary(m_module); }

    static std::wstring Path() { return FileBeside(kShippedPlugin); }
    template <typename T>
    const T* At(DWORD offset) const {
        return reinterpret_cast<const T*>(reinterpret_cast<const char*>(m_module) + offset);
    }
    const IMAGE_NT_HEADERS64& Headers() const {
        return *At<IMAGE_NT_HEADERS64>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
    }
    DWORD Directory(int index) const { return Headers().OptionalHeader.DataDirectory[index].VirtualAddress; }

private:
    HMODULE m_module = nullptr;
};

TEST_F(ShippedFileTest, ExportsOneFunctionAndNeedsTheSystemAndFileMakerOnly) {
    const auto& exports = *At<IMAGE_EXPORT_DIRECTORY>(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT));
    ASSERT_EQ(exports.NumberOfNames, 1u);
    EXPECT_EQ(exports.NumberOfFunctions, 1u);
    EXPECT_STREQ(At<char>(*At<DWORD>(exports.AddressOfNames)), "FMExternCallProc");

    const std::set<std::string> allowed{"FMWRAPPER.DLL", "KERNEL32.DLL", "USER32.DLL",  "ADVAPI32.DLL",
                                        "OLE32.DLL",     "OLEAUT32.DLL", "SHELL32.DLL", "MSVCRT.DLL"};
    for (auto* import = At<IMAGE_IMPORT_DESCRIPTOR>(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT)); import->Name;
         ++import) {
        std::string name = At<char>(import->Name);
        std::ranges::transform(name, name.begin(), [](char c) { return static_cast<char>(std::toupper(c)); });
        EXPECT_TRUE(allowed.contains(name)) << name;
    }
}

TEST_F(ShippedFileTest, IsProtectedVersionedAndSmall) {
    constexpr WORD kProtection = IMAGE_DLLCHARACTERISTICS_NX_COMPAT | IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE |
                                 IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA;
    EXPECT_EQ(Headers().OptionalHeader.DllCharacteristics & kProtection, kProtection);
    const auto bytes = std::filesystem::file_size(Path());
    EXPECT_LT(bytes, 2u * 1024 * 1024);

    DWORD unused = 0;
    std::vector<char> resource(GetFileVersionInfoSizeW(Path().c_str(), &unused));
    ASSERT_TRUE(GetFileVersionInfoW(Path().c_str(), 0, static_cast<DWORD>(resource.size()), resource.data()));
    VS_FIXEDFILEINFO* version = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueW(resource.data(), L"\\", reinterpret_cast<void**>(&version), &size));
    EXPECT_EQ(version->dwFileVersionMS, 7u << 16);
    EXPECT_EQ(version->dwFileVersionLS, 0u);
}

constexpr const wchar_t* kProxyClass = L"CLSID\\{4D2F086C-6EA3-101B-A18A-00AA00446E07}";
constexpr const wchar_t* kMessage = L"Interface\\{00020307-0000-0000-C000-000000000046}";
constexpr const wchar_t* kAccountInfo = L"Interface\\{00067070-0000-0000-C000-000000000046}";

std::wstring DefaultValue(const std::wstring& key) {
    wchar_t text[100]{};
    DWORD bytes = sizeof text;
    return RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &bytes) ==
                   ERROR_SUCCESS
               ? text
               : L"(none)";
}

void StartAndEnd() {
    Plugin plugin;
    plugin.End();
}

TEST(RegistrationRepairTest, WritesEverythingWhereOneOfThreeKeysIsMissingAndNothingOtherwise) {
    StartAndEnd();
    const std::wstring message = kMessage;
    for (const wchar_t* missing :
         {kProxyClass, L"Interface\\{00020300-0000-0000-C000-000000000046}", kAccountInfo}) {
        RegSetKeyValueW(HKEY_CLASSES_ROOT, kMessage, nullptr, REG_SZ, L"changed", 16);
        StartAndEnd();
        EXPECT_EQ(DefaultValue(kMessage), L"changed"); // all three are there: nothing is touched
        ASSERT_EQ(RegDeleteTreeW(HKEY_CLASSES_ROOT, missing), ERROR_SUCCESS);
        StartAndEnd();
        EXPECT_EQ(DefaultValue(kProxyClass), L"MAPIPSFactory");
        EXPECT_EQ(DefaultValue(std::wstring(kProxyClass) + L"\\InprocServer32"), L"mapi32.dll");
        EXPECT_EQ(DefaultValue(kMessage), L"Imessage");
        EXPECT_EQ(DefaultValue(message + L"\\ProxyStubClsid"), L"{4D2F086C-6EA3-101B-A18A-00AA00446E07}");
        EXPECT_EQ(DefaultValue(message + L"\\ProxyStubClsid32"), L"{4D2F086C-6EA3-101B-A18A-00AA00446E07}");
        EXPECT_EQ(DefaultValue(std::wstring(kAccountInfo) + L"\\NumMethods"), L"4");
        EXPECT_EQ(DefaultValue(std::wstring(kAccountInfo) + L"\\ProxyStubClsid32"),
                  L"{0006729A-0000-0000-C000-000000000046}");
    }
}

} // namespace
} // namespace varden::tests
