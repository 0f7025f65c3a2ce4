// The registry entries by which COM finds the Outlook stand-in, and the turn-taking of the programs that want
// them different: the entries belong to the whole prefix, the wish for a machine without Outlook to one
// program.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace standin::outlook {

/// The names under which the stand-in is registered in the ordinary case.
inline const std::vector<std::wstring> kOrdinaryProgIds{L"Outlook.Application.16", L"Outlook.Application"};

/// Enters the class of Outlook's application object, served by the library file (a name in the system folder,
/// or a path), and the ordinary ProgIDs. What DllRegisterServer of that library does.
HRESULT EnterServer(const std::wstring& libraryFile);
/// Takes the class and every ProgID out again.
HRESULT RemoveServer();

/// Held by every program that hosts a plug-in, for as long as it does: fixes which ProgIDs exist meanwhile.
///
/// With the ordinary ProgIDs any number of programs go on side by side, and what an aborted program has left
/// behind is put right. Any other choice has the prefix to itself: it waits until the other programs have
/// ended, they wait for it, and the ordinary entries are back at its end. A program may hold one at a time.
class Registration {
public:
    /// `progIds` out of Outlook.Application and Outlook.Application.16, .15, .14, .12, .11; an empty list
    /// means a machine without Outlook. Raises std::invalid_argument for another name, std::logic_error while
    /// the program holds one already, std::system_error when the registry or the lock fails.
    explicit Registration(std::vector<std::wstring> progIds = kOrdinaryProgIds);
    ~Registration();
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

private:
    class Turn;
    std::unique_ptr<Turn> m_turn;
    bool m_ordinary;
};

} // namespace standin::outlook
