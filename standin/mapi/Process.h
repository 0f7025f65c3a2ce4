// What belongs to the process as a whole: MAPIInitialize, and the counts of what is alive.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

namespace standin::mapi {

/// MAPIInitialize and MAPIUninitialize. The second may come too often, which real MAPI takes in silence. The
/// last one is a violation while there are objects left.
HRESULT Initialize();
void Uninitialize();
/// Between the first MAPIInitialize and the last MAPIUninitialize: only then are buffers and the methods of
/// objects to be had.
bool IsInitialized();

/// A session, as the objects know it that were got through it: once it is logged off, they are at an end too.
struct SessionLife {
    bool isOver = false;
};
using SessionPointer = std::shared_ptr<SessionLife>;

/// The session of the object whose method is running; null outside methods, and for objects of no session.
const SessionPointer& CallersSession();

/// Makes a session the caller's while a method of one of its objects runs.
class SessionScope {
public:
    explicit SessionScope(SessionPointer session);
    ~SessionScope();
    SessionScope(const SessionScope&) = delete;
    SessionScope& operator=(const SessionScope&) = delete;

private:
    SessionPointer m_before;
};

/// Counts of live objects and of live buffers, for LiveCount.
std::int64_t& LiveObjects();
std::int64_t& LiveBuffers();

/// Tells the watch that a caller broke a rule which MAPI answers with memory corruption.
void ReportViolation(const std::wstring& text);

} // namespace standin::mapi
