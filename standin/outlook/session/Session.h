// The one Outlook of this process: its world, its switches, whether it is logged on.
#pragma once

#include "standin/mailbox/Mailbox.h"
#include "standin/outlook/Control.h"
#include "standin/outlook/automation/ComPtr.h"

namespace standin::outlook {

class Object;

/// What hosts can set, see Control.
struct Switches {
    std::wstring versionText = L"16.0.17328.20004";
    HRESULT logonRefusal = S_OK;
    bool withholdNamespace = false;
    bool withholdMapiObject = false;
    bool closeWindowsAtOnce = false;
    std::wstring unknownClass;
};

Switches& TheSwitches();
/// The number in front of the version text's first point; 0 where there is none.
int MajorVersion();

/// The mailbox. Without a host that says otherwise it is taken, when it is first needed, from the folder that
/// the environment variable VARDEN_MAILBOX names, and is the sample world where there is none. Raises
/// CO_E_SERVER_EXEC_FAILURE if that folder can't be opened; the reason goes to standard error.
mailbox::Mailbox& World();
/// Puts another world in place, in which nobody is logged on.
void SetWorld(std::unique_ptr<mailbox::Mailbox> world);
/// From now on the environment has no say.
void HostedByControl();

/// Logs on. A session that is logged on stays as it is, whatever profile is asked for; an empty profile is
/// the default one. Raises MAPI_E_FAILONEPROVIDER for a profile that isn't there, and the status of a
/// refusal.
void LogOn(const std::wstring& profile);
void LogOff();
/// The session has a store open from now on, until it ends, and Outlook's names are known in it (see
/// EnterKnownNames). The stores of the profile are open as soon as it is logged on.
void OpenStore(mailbox::Store& store);
/// What isn't open in the session can't be reached by its entry id alone.
bool IsOpen(const mailbox::Store& store);
/// What members that need a session do first: Outlook logs on to the default profile by itself.
mailbox::Mailbox& LoggedOnWorld();

/// The application and namespace objects: the same ones for as long as somebody holds them.
ComPtr<Object> TheApplication();
ComPtr<Object> TheNameSpace();

/// Outlook ends with its last object, and its session with it.
void LastObjectGone();

} // namespace standin::outlook
