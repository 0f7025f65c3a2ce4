// MAPIInitialize, the current mailbox, the counts.
#include "standin/mapi/Process.h"

#include "standin/mapi/Views.h"
#include "standin/watch/Watch.h"

#include <utility>

namespace standin::mapi {
namespace {

std::int64_t g_initializations = 0;
std::int64_t g_objects = 0;
std::int64_t g_buffers = 0;
mailbox::Mailbox* g_mailbox = nullptr;
SessionPointer g_callersSession;

} // namespace

HRESULT Initialize() {
    ++g_initializations;
    return S_OK;
}

void Uninitialize() {
    if (g_initializations == 0)
        return;
    --g_initializations;
    if (g_initializations == 0 && g_objects > 0)
        ReportViolation(L"MAPIUninitialize while " + std::to_wstring(g_objects) +
                        L" objects are not released yet");
}

bool IsInitialized() {
    return g_initializations > 0;
}

const SessionPointer& CallersSession() {
    return g_callersSession;
}

SessionScope::SessionScope(SessionPointer session)
    : m_before(std::exchange(g_callersSession, std::move(session))) {
}

SessionScope::~SessionScope() {
    g_callersSession = std::move(m_before);
}

std::int64_t& LiveObjects() {
    return g_objects;
}

std::int64_t& LiveBuffers() {
    return g_buffers;
}

void ReportViolation(const std::wstring& text) {
    if (Watch* watch = CurrentWatch())
        watch->Violation(text);
}

void SetMailbox(mailbox::Mailbox* mailbox) {
    g_mailbox = mailbox;
}

mailbox::Mailbox* CurrentMailbox() {
    return g_mailbox;
}

Counts Live() {
    return {g_objects, g_buffers, g_initializations};
}

} // namespace standin::mapi
