// Registry entries of the Outlook stand-in, and the lock file by which programs take turns with them.
#include "Registration.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <system_error>

namespace standin::outlook {

namespace {

constexpr const wchar_t* kClasses = L"Software\\Classes\\";
constexpr const wchar_t* kTitle = L"Microsoft Outlook Application";
// The published class id of Outlook's application object.
constexpr const wchar_t* kClassId = L"{0006F03A-0000-0000-C000-000000000046}";
constexpr const wchar_t* kLatest = L"Outlook.Application.16";
constexpr const wchar_t* kVersionIndependent = L"Outlook.Application";
constexpr std::array kAllProgIds{L"Outlook.Application.16", L"Outlook.Application.15",
                                 L"Outlook.Application.14", L"Outlook.Application.12",
                                 L"Outlook.Application.11", kVersionIndependent};

bool g_held = false;

bool Contains(const std::vector<std::wstring>& progIds, std::wstring_view progId) {
    return std::ranges::find(progIds, progId) != progIds.end();
}

void Check(LSTATUS status, const char* what) {
    if (status != ERROR_SUCCESS) {
        throw std::system_error(static_cast<int>(status), std::system_category(), what);
    }
}

/// Writes a text below the classes; an empty name is the key's default value.
void Write(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
    const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    Check(RegSetKeyValueW(HKEY_LOCAL_MACHINE, (kClasses + key).c_str(), name, REG_SZ, text.c_str(), size),
          "writing the registration");
}

/// The key's default value; empty where there is none.
std::wstring Read(const std::wstring& key) {
    wchar_t text[256];
    DWORD size = sizeof text;
    const LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, (kClasses + key).c_str(), nullptr, RRF_RT_REG_SZ,
                                        nullptr, text, &size);
    return status == ERROR_SUCCESS ? text : L"";
}

void Remove(const std::wstring& key) {
    const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, (kClasses + key).c_str());
    Check(status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status, "removing the registration");
}

/// Makes these ProgIDs exist and no others; touches what is right already as little as COM does.
void SetProgIds(const std::vector<std::wstring>& progIds) {
    for (const std::wstring progId : kAllProgIds) {
        const bool wanted = Contains(progIds, progId);
        const std::wstring classKey = progId + L"\\CLSID";
        if (wanted == (Read(classKey) == kClassId)) {
            continue;
        }
        if (wanted) {
            Write(progId, nullptr, kTitle);
            Write(classKey, nullptr, kClassId);
        } else {
            Remove(progId);
        }
    }
}

HRESULT Status(const std::system_error& error) {
    return HRESULT_FROM_WIN32(static_cast<DWORD>(error.code().value()));
}

} // namespace

HRESULT EnterServer(const std::wstring& libraryFile) {
    const std::wstring classKey = std::wstring(L"CLSID\\") + kClassId;
    try {
        Write(classKey, nullptr, kTitle);
        Write(classKey + L"\\InprocServer32", nullptr, libraryFile);
        Write(classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
        Write(classKey + L"\\ProgID", nullptr, kLatest);
        Write(classKey + L"\\VersionIndependentProgID", nullptr, kVersionIndependent);
        SetProgIds(kOrdinaryProgIds);
    } catch (const std::system_error& error) {
        return Status(error);
    }
    return S_OK;
}

HRESULT RemoveServer() {
    try {
        SetProgIds({});
        Remove(std::wstring(L"CLSID\\") + kClassId);
    } catch (const std::system_error& error) {
        return Status(error);
    }
    return S_OK;
}

/// The lock that programs of one prefix take turns by: a file in the prefix's temporary folder.
class Registration::Turn {
public:
    explicit Turn(bool exclusive) {
        if (g_held) {
            throw std::logic_error("this program holds a registration already");
        }
        wchar_t folder[MAX_PATH + 1];
        GetTempPathW(static_cast<DWORD>(std::size(folder)), folder);
        const std::wstring path = std::wstring(folder) + L"varden-registration.lock";
        m_file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
        OVERLAPPED start{};
        if (m_file == INVALID_HANDLE_VALUE ||
            !LockFileEx(m_file, exclusive ? LOCKFILE_EXCLUSIVE_LOCK : 0, 0, 1, 0, &start)) {
            const auto error = static_cast<LSTATUS>(GetLastError());
            Close();
            Check(error, "waiting for the registration");
        }
        g_held = true;
    }
    ~Turn() {
        Close();
        g_held = false;
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    void Close() {
        if (m_file != INVALID_HANDLE_VALUE) {
            CloseHandle(m_file);
        }
    }

    HANDLE m_file = INVALID_HANDLE_VALUE;
};

Registration::Registration(std::vector<std::wstring> progIds) {
    std::ranges::sort(progIds);
    for (const std::wstring& progId : progIds) {
        if (std::ranges::find(kAllProgIds, progId) == kAllProgIds.end()) {
            throw std::invalid_argument("not a ProgID of Outlook's application");
        }
    }
    std::vector<std::wstring> ordinary = kOrdinaryProgIds;
    std::ranges::sort(ordinary);
    m_ordinary = progIds == ordinary;
    m_turn = std::make_unique<Turn>(!m_ordinary);
    SetProgIds(progIds);
}

Registration::~Registration() {
    if (m_ordinary) {
        return;
    }
    try {
        SetProgIds(kOrdinaryProgIds);
    } catch (const std::system_error&) {
        // The next program to start puts them back.
    }
}

} // namespace standin::outlook
