// Messages on storages.
#include "standin/mapi/MessageOnStorage.h"

#include "standin/mapi/MessageView.h"

#include "standin/mailbox/Msg.h"

#include <string_view>
#include <unordered_set>

namespace standin::mapi {

/// What the messages of a session look at is there as long as any of them.
struct MessageSession {
    std::shared_ptr<bool> isAlive = std::make_shared<bool>(true);
    LiveCount count{LiveObjects()};
};

namespace {

std::unordered_set<MessageSession*> g_sessions;

struct TaskMemoryFreer {
    void operator()(wchar_t* text) const { CoTaskMemFree(text); }
};

/// What of a storage belongs to a message ([MS-OXMSG] 2.2).
bool IsOfMessage(std::wstring_view name) {
    static constexpr std::wstring_view kBeginnings[] = {
        L"__properties_version1.0", L"__nameid_version1.0",  L"__substg1.0_",
        L"__recip_version1.0_",     L"__attach_version1.0_",
    };
    return std::ranges::any_of(kBeginnings,
                               [name](std::wstring_view each) { return name.starts_with(each); });
}

HRESULT ElementsOf(IStorage& storage, std::vector<std::wstring>& names) {
    IEnumSTATSTG* opened = nullptr;
    if (const HRESULT status = storage.EnumElements(0, nullptr, 0, &opened); FAILED(status))
        return status;
    const Held<IEnumSTATSTG> elements(opened);
    STATSTG element{};
    while (elements->Next(1, &element, nullptr) == S_OK) {
        const std::unique_ptr<wchar_t, TaskMemoryFreer> name(element.pwcsName);
        names.emplace_back(name.get());
    }
    return S_OK;
}

/// The storage that a message is saved to.
class StorageTarget final : public mailbox::MessageTarget {
public:
    StorageTarget(IStorage& storage, bool commits) : m_storage(Hold(&storage)), m_commits(commits) {}

    HRESULT Save(const mailbox::ContentPtr& content) override {
        // The class of the storage is its owner's to say.
        return mailbox::WriteMsg(*content, m_names, m_storage.get(),
                                 {.setClass = false, .commit = m_commits});
    }
    mailbox::NamedProperties& Names() override { return m_names; }

private:
    Held<IStorage> m_storage;
    bool m_commits;
    mailbox::NamedProperties m_names;
};

class StorageMessageView final : public MessageView {
public:
    StorageMessageView(std::shared_ptr<mailbox::OpenMessage> message, const StorageMessageRequest& request)
        : MessageView(std::move(message)), m_released(request.released), m_callerData(request.callerData),
          m_sessionIsAlive(request.session ? request.session->isAlive : nullptr) {}

protected:
    HRESULT Usable() const override {
        const bool isOver = m_sessionIsAlive && !*m_sessionIsAlive;
        return isOver ? MAPI_E_INVALID_OBJECT : MessageView::Usable();
    }
    void LastRelease() override {
        if (m_released)
            m_released(m_callerData, this);
    }

private:
    MessageReleased m_released;
    ULONG m_callerData;
    std::shared_ptr<const bool> m_sessionIsAlive;
};

bool IsOpenForWriting(IStorage& storage) {
    STATSTG statistics{};
    return SUCCEEDED(storage.Stat(&statistics, STATFLAG_NONAME)) &&
           (statistics.grfMode & (STGM_WRITE | STGM_READWRITE)) != 0;
}

} // namespace

MessageSession* NewMessageSession() {
    auto session = std::make_unique<MessageSession>();
    g_sessions.insert(session.get());
    return session.release();
}

void EndMessageSession(MessageSession* session) {
    if (g_sessions.erase(session) == 0) {
        ReportViolation(L"CloseIMsgSession: no message session, or one that is closed already");
        return;
    }
    const std::unique_ptr<MessageSession> owned(session);
    *owned->isAlive = false;
}

HRESULT OpenMessageOnStorage(const StorageMessageRequest& request, IMessage** message) {
    if (!request.storage || !message)
        return MAPI_E_INVALID_PARAMETER;
    if (request.session && !g_sessions.contains(request.session))
        return MAPI_E_INVALID_OBJECT;
    std::vector<std::wstring> names;
    if (const HRESULT status = ElementsOf(*request.storage, names); FAILED(status))
        return mailbox::StatusFromStorage(status);
    auto target = std::make_shared<StorageTarget>(*request.storage, request.commits);
    mailbox::ContentPtr content;
    if (std::ranges::any_of(names, IsOfMessage)) {
        auto read = std::make_shared<mailbox::Content>();
        if (const HRESULT status = mailbox::ReadMsg(request.storage, target->Names(), *read); FAILED(status))
            return status;
        content = std::move(read);
    }
    const auto access = IsOpenForWriting(*request.storage) ? mailbox::Access::Modify : mailbox::Access::Read;
    auto open = mailbox::OpenMessage::ForTarget(std::move(target), std::move(content), access);
    *message = new StorageMessageView(std::move(open), request);
    return S_OK;
}

} // namespace standin::mapi
