// The working copy of an attachment, and its computed properties.
#include "standin/mailbox/ComputedRows.h"
#include "standin/mailbox/Message.h"

namespace standin::mailbox {
namespace {

const OpenAttachment& Of(const PropertyObject& object) {
    return static_cast<const OpenAttachment&>(object);
}

const Store* StoreOf(const PropertyObject& object) {
    const Folder* folder = Of(object).Message().ParentFolder();
    return folder ? &folder->Store() : nullptr;
}

bool Size(const PropertyObject& object, Value& value) {
    const Attachment& attachment = Of(object).Current();
    std::uint64_t size = SizeOf(attachment.properties);
    if (attachment.embedded)
        size += SizeOf(*attachment.embedded);
    if (attachment.oleStorage)
        size += attachment.oleStorage->size();
    return Give(value, static_cast<std::int32_t>(size));
}

bool Number(const PropertyObject& object, Value& value) {
    return Give(value, static_cast<std::int32_t>(Of(object).Number()));
}

bool AccessLevel(const PropertyObject& object, Value& value) {
    return Give(value, std::int32_t{Of(object).IsWritable()});
}

bool RecordKey(const PropertyObject& object, Value& value) {
    return Give(value, MakeInstanceKey(Of(object).Number()));
}

/// One id for bytes and for objects: PR_ATTACH_DATA_BIN, PR_ATTACH_DATA_OBJ.
bool Data(const PropertyObject& object, Value& value) {
    const Attachment& attachment = Of(object).Current();
    if (attachment.embedded || attachment.oleStorage)
        return Give(value, ObjectMark{});
    const Value* stored = attachment.properties.Find(PR_ATTACH_DATA_BIN);
    return stored && Give(value, *stored);
}

HRESULT SetData(PropertyObject&, Value& value) {
    return std::holds_alternative<Bytes>(value) ? S_OK : MAPI_E_INVALID_TYPE;
}

constexpr ComputedProperty kRows[] = {
    {PR_ATTACH_SIZE, Size, nullptr},
    {PR_ATTACH_NUM, Number, nullptr},
    {PR_ACCESS_LEVEL, AccessLevel, nullptr},
    {PR_MAPPING_SIGNATURE, MappingSignature<StoreOf>, nullptr},
    {PR_RECORD_KEY, RecordKey, nullptr},
    {PR_OBJECT_TYPE, GiveNumber<MAPI_ATTACH>, nullptr},
    {PR_STORE_SUPPORT_MASK, SupportMask<StoreOf>, nullptr},
    {PR_ATTACH_DATA_BIN, Data, SetData, true},
};
static_assert(IsAscending(kRows));

/// Saves an embedded message into its attachment, which it keeps open.
class EmbeddedTarget final : public MessageTarget {
public:
    EmbeddedTarget(std::shared_ptr<OpenAttachment> attachment, std::function<void(const ContentPtr&)> store)
        : m_attachment(std::move(attachment)), m_store(std::move(store)) {}

    HRESULT Save(const ContentPtr& content) override {
        m_store(content);
        return S_OK;
    }
    NamedProperties& Names() override { return m_attachment->Names(); }

private:
    std::shared_ptr<OpenAttachment> m_attachment;
    std::function<void(const ContentPtr&)> m_store;
};

} // namespace

OpenAttachment::OpenAttachment(std::shared_ptr<OpenMessage> message, Attachment attachment, Access access,
                               bool isNew)
    : m_message(std::move(message)), m_attachment(std::move(attachment)), m_access(access), m_isNew(isNew) {
}

NamedProperties& OpenAttachment::Names() const {
    return m_message->Names();
}

std::span<const ComputedProperty> OpenAttachment::Computed() const {
    return kRows;
}

HRESULT OpenAttachment::CheckWritable() const {
    return m_access == Access::Modify ? S_OK : E_ACCESSDENIED;
}

PropertyBag& OpenAttachment::Edit() {
    return m_attachment.properties;
}

/// Bytes, an embedded message and an OLE object replace each other: there is one property id for them.
HRESULT OpenAttachment::Changed() {
    if (m_attachment.properties.Contains(PR_ATTACH_DATA_BIN)) {
        m_attachment.embedded.reset();
        m_attachment.oleStorage.reset();
    }
    return S_OK;
}

HRESULT OpenAttachment::Save() {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    m_attachment.properties.Set<PR_LAST_MODIFICATION_TIME>(Now());
    const HRESULT status = m_message->StoreAttachment(m_attachment, m_isNew);
    if (SUCCEEDED(status))
        m_isNew = false;
    return status;
}

HRESULT OpenAttachment::Embedded(bool create, Access access, std::shared_ptr<OpenMessage>& message) {
    if (create || access == Access::Modify)
        if (const HRESULT status = CheckWritable(); FAILED(status))
            return status;
    if (!create && !m_attachment.embedded)
        return MAPI_E_NOT_FOUND;
    auto store = [this](const ContentPtr& content) {
        m_attachment.properties.Remove(PR_ATTACH_DATA_BIN);
        m_attachment.oleStorage.reset();
        m_attachment.embedded = content;
    };
    auto target = std::make_shared<EmbeddedTarget>(shared_from_this(), std::move(store));
    message = OpenMessage::ForTarget(std::move(target), create ? nullptr : m_attachment.embedded,
                                     create ? Access::Modify : access);
    return S_OK;
}

HRESULT OpenAttachment::SetOleStorage(Bytes bytes) {
    if (const HRESULT status = CheckWritable(); FAILED(status))
        return status;
    m_attachment.properties.Remove(PR_ATTACH_DATA_BIN);
    m_attachment.embedded.reset();
    m_attachment.oleStorage = std::make_shared<const Bytes>(std::move(bytes));
    return S_OK;
}

} // namespace standin::mailbox
