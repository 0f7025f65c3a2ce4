// The switches of the Outlook and MAPI stand-in, for the programs that host it: never for a plug-in.
#pragma once

#include "standin/watch/Watch.h"

#include <string>
#include <vector>

namespace standin::mailbox {
class Mailbox;
}

namespace standin::outlook {

/// What is alive in the stand-in, whoever holds it.
struct LiveCounts {
    std::int64_t outlookObjects = 0; ///< automation objects
    std::int64_t mapiObjects = 0;    ///< MAPI interfaces' objects, streams and storages included
    std::int64_t mapiBuffers = 0;    ///< blocks of MAPIAllocateBuffer not yet freed
    std::int64_t mapiSessions = 0;   ///< MAPIInitialize calls without their MAPIUninitialize
    bool operator==(const LiveCounts&) const = default;
};

/// How opening a mailbox folder went.
struct OpenReport {
    bool ok = false;
    std::wstring error;                ///< why not: file, line and reason, if !ok
    std::vector<std::wstring> leftOut; ///< messages that could not be read: "file: reason"
};

/// The stand-in as its host sees it. One object for the life of the library, obtained by OutlookControl().
class Control {
public:
    /// Calls are told to this watch from now on; null for none.
    virtual void SetWatch(Watch* watch) = 0;
    virtual LiveCounts Live() const = 0;

    /// Puts the sample world in place of what was there, in memory, and every switch back to its default.
    /// Only while nothing of the old world is alive.
    virtual void Reset() = 0;
    /// Takes the mailbox from this folder; an empty or missing folder is filled with the sample world.
    /// On failure the world stays as it was, and the folder too.
    virtual OpenReport OpenMailbox(const std::wstring& folder) = 0;
    /// The world, to be filled and looked at.
    virtual mailbox::Mailbox& World() = 0;

    /// What Application.Version answers. Members that came with a later version don't exist.
    virtual void SetVersionText(const std::wstring& text) = 0;
    /// NameSpace.Logon answers this status, and so does every member that would log on by itself; S_OK for a
    /// logon that works.
    virtual void RefuseLogon(HRESULT status) = 0;
    /// Application.GetNamespace answers success and no object.
    virtual void WithholdNamespace(bool withhold) = 0;
    /// NameSpace.MAPIOBJECT answers success and no object.
    virtual void WithholdMapiObject(bool withhold) = 0;
    /// Display closes its window at once, as tests want it.
    virtual void CloseWindowsAtOnce(bool close) = 0;

    /// Messages of this class, and of classes below it, give objects that are none of the item kinds: they
    /// have the members of a mail, but only IDispatch. Empty: none do.
    virtual void SetUnknownClass(const std::wstring& messageClass) = 0;

protected:
    ~Control() = default;
};

/// Loads the stand-in library, by the name that COM and MAPI32.dll use, and gives its switches; null where it
/// is not entered in this prefix.
Control* OutlookControl();

} // namespace standin::outlook
