// IAttach.
#include "standin/mapi/PropObject.h"
#include "standin/mapi/StorageView.h"
#include "standin/mapi/Stream.h"
#include "standin/mapi/TableSources.h"
#include "standin/mapi/Views.h"

namespace standin::mapi {
namespace {

using mailbox::Access;
using mailbox::Bytes;
using mailbox::OpenAttachment;
using mailbox::OpenMessage;
using mailbox::PropertyTag;

class AttachView final : public TransactedObject<IAttach> {
public:
    explicit AttachView(std::shared_ptr<OpenAttachment> attachment)
        : TransactedObject(attachment->IsWritable()), m_attachment(std::move(attachment)) {}

    mailbox::PropertyObject& Properties() const override { return *m_attachment; }

    HRESULT OpenObject(PropertyTag tag, REFIID iid, ULONG flags, IUnknown** object) override {
        if (mailbox::IdOf(tag) != mailbox::IdOf(PR_ATTACH_DATA_OBJ))
            return MAPI_E_INTERFACE_NOT_SUPPORTED;
        if (iid == kIidStreamDocfile && HasMethod(ATTACH_OLE))
            return OpenAsDocfile(flags, object);
        if (tag != PR_ATTACH_DATA_OBJ)
            return MAPI_E_INTERFACE_NOT_SUPPORTED;
        if (iid == kIidMessage && HasMethod(ATTACH_EMBEDDED_MSG))
            return OpenEmbedded(flags, object);
        if (iid == kIidStorage && HasMethod(ATTACH_OLE))
            return OpenStorage(flags, object);
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
    }

    HRESULT CopySubobjects(PropertySide& target, const CopyFilter& filter) const override {
        const auto* view = dynamic_cast<AttachView*>(&target);
        if (!view || !filter.Wants(PR_ATTACH_DATA_OBJ))
            return S_OK;
        OpenAttachment& to = *view->m_attachment;
        const bool isOccupied = to.Current().embedded || to.Current().oleStorage;
        if (filter.keepExisting && isOccupied)
            return S_OK;
        if (const auto& storage = m_attachment->OleStorage())
            return to.SetOleStorage(*storage);
        return m_attachment->Current().embedded ? CopyEmbedded(to) : S_OK;
    }

protected:
    HRESULT SaveNow(bool) override {
        NoteMessagePartReplaced();
        return m_attachment->Save();
    }

private:
    /// [MS-OXCMSG] 2.2.2.9: the method says which interface PR_ATTACH_DATA_OBJ has.
    bool HasMethod(std::uint32_t method) const {
        return m_attachment->Stored().GetOr<PR_ATTACH_METHOD>(NO_ATTACHMENT) ==
               static_cast<std::int32_t>(method);
    }

    HRESULT OpenEmbedded(ULONG flags, IUnknown** object) {
        std::shared_ptr<OpenMessage> message;
        const HRESULT status = m_attachment->Embedded(
            (flags & MAPI_CREATE) != 0, flags & MAPI_MODIFY ? Access::Modify : Access::Read, message);
        if (SUCCEEDED(status))
            *object = MakeMessage(std::move(message));
        return status;
    }

    /// What keeps an OLE object's bytes; it keeps the attachment alive.
    auto Keep() const {
        return [attachment = m_attachment](const Bytes& bytes) { return attachment->SetOleStorage(bytes); };
    }

    /// The bytes that there are, or none where a new object is asked for.
    HRESULT OleBytes(ULONG flags, Bytes& bytes) const {
        if (flags & MAPI_CREATE)
            return S_OK;
        const auto& storage = m_attachment->OleStorage();
        if (!storage)
            return MAPI_E_NOT_FOUND;
        bytes = *storage;
        return S_OK;
    }

    HRESULT OpenAsDocfile(ULONG flags, IUnknown** object) {
        Bytes bytes;
        if (const HRESULT status = OleBytes(flags, bytes); FAILED(status))
            return status;
        *object = flags & MAPI_MODIFY ? new MemoryStream(std::move(bytes), Keep())
                                      : new MemoryStream(std::move(bytes));
        return S_OK;
    }

    HRESULT OpenStorage(ULONG flags, IUnknown** object) {
        Bytes bytes;
        if (const HRESULT status = OleBytes(flags, bytes); FAILED(status))
            return status;
        return OpenBytesAsStorage(bytes, flags & MAPI_MODIFY ? Keep() : ByteKeeper(), object);
    }

    HRESULT CopyEmbedded(OpenAttachment& to) const {
        std::shared_ptr<OpenMessage> message;
        if (const HRESULT status = to.Embedded(true, Access::Modify, message); FAILED(status))
            return status;
        mailbox::Content* content = nullptr;
        if (const HRESULT status = message->EditContent(content); FAILED(status))
            return status;
        *content =
            mailbox::RemapContent(*m_attachment->Current().embedded, m_attachment->Names(), to.Names());
        return message->Save(true);
    }

    std::shared_ptr<OpenAttachment> m_attachment;
};

} // namespace

IAttach* MakeAttachment(std::shared_ptr<OpenAttachment> attachment) {
    return new AttachView(std::move(attachment));
}

} // namespace standin::mapi
