// IMessage on the working copy of a message.
#pragma once

#include "standin/mailbox/Message.h"
#include "standin/mapi/PropObject.h"

namespace standin::mapi {

class MessageView : public TransactedObject<IMessage> {
public:
    explicit MessageView(std::shared_ptr<mailbox::OpenMessage> message);

    HRESULT STDMETHODCALLTYPE GetAttachmentTable(ULONG flags, IMAPITable** table) override;
    HRESULT STDMETHODCALLTYPE OpenAttach(ULONG number, const IID* iid, ULONG flags,
                                         IAttach** attach) override;
    HRESULT STDMETHODCALLTYPE CreateAttach(const IID* iid, ULONG flags, ULONG* number,
                                           IAttach** attach) override;
    HRESULT STDMETHODCALLTYPE DeleteAttach(ULONG number, ULONG, IMAPIProgress*, ULONG flags) override;
    HRESULT STDMETHODCALLTYPE GetRecipientTable(ULONG flags, IMAPITable** table) override;
    HRESULT STDMETHODCALLTYPE ModifyRecipients(ULONG flags, ADRLIST* changes) override;
    HRESULT STDMETHODCALLTYPE SubmitMessage(ULONG flags) override;
    HRESULT STDMETHODCALLTYPE SetReadFlag(ULONG flags) override;

    mailbox::OpenMessage& Message() const { return *m_message; }

    mailbox::PropertyObject& Properties() const override { return *m_message; }
    HRESULT CheckWritable() const override;
    HRESULT Read(mailbox::PropertyTag tag, mailbox::Value& value) const override;
    HRESULT Write(mailbox::PropertyTag tag, mailbox::Value value) override;
    HRESULT Erase(mailbox::PropertyTag tag) override;
    std::vector<mailbox::PropertyTag> Tags() const override;
    std::vector<mailbox::PropertyTag> TagsToCopy() const override;
    HRESULT BeginCopy(std::span<const mailbox::PropertyTag> tags) override;
    HRESULT CopySubobjects(PropertySide& target, const CopyFilter& filter) const override;
    HRESULT OpenObject(mailbox::PropertyTag tag, REFIID iid, ULONG flags, IUnknown** object) override;

protected:
    HRESULT SaveNow(bool force) override { return m_message->Save(force); }

private:
    HRESULT Submit(ULONG flags);
    HRESULT SetRead(ULONG flags);

    std::shared_ptr<mailbox::OpenMessage> m_message;
};

} // namespace standin::mapi
