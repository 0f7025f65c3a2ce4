// Recipients: of an item, or on their own.
#include "standin/outlook/objects/Recipient.h"

#include "standin/mailbox/EntryId.h"
#include "standin/mailbox/Mailbox.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/items/Conversions.h"
#include "standin/outlook/objects/PropertyAccessor.h"
#include "standin/outlook/session/Session.h"

#include <algorithm>

namespace standin::outlook {
namespace {

constexpr mailbox::PropertyTag kPrTrackStatusTime = PROP_TAG(PT_SYSTIME, 0x5FFB); // [MS-OXPROPS] 2.915
constexpr mailbox::PropertyTag kPrAutoResponse = PROP_TAG(PT_UNICODE, 0x5FE0);
constexpr mailbox::PropertyTag kPrSendable = PROP_TAG(PT_BOOLEAN, 0x5FDE);
/// MAPI_P1 and MAPI_SUBMITTED are marks on PR_RECIPIENT_TYPE.
constexpr std::int32_t kTypeWithoutMarks = 0x0F;
constexpr std::int32_t kHighestType = 3;

template <mailbox::PropertyTag tag>
std::wstring Text(RecipientObject& recipient) {
    return recipient.Properties().GetOr<tag>(L"");
}

template <mailbox::PropertyTag tag>
void SetText(RecipientObject& recipient, const Arguments& value) {
    mailbox::PropertyBag row = recipient.Properties();
    row.Set<tag>(value.Text(0));
    recipient.Replace(std::move(row));
}

template <mailbox::PropertyTag tag>
std::int32_t Number(RecipientObject& recipient) {
    return recipient.Properties().GetOr<tag>(0);
}

std::wstring EntryId(RecipientObject& recipient) {
    const mailbox::Bytes* id = recipient.Properties().Get<PR_ENTRYID>();
    return id ? mailbox::ToHex(*id) : std::wstring();
}

bool Resolved(RecipientObject& recipient) {
    return recipient.IsResolved();
}

bool Resolve(RecipientObject& recipient) {
    return recipient.Resolve();
}

std::int32_t Type(RecipientObject& recipient) {
    return recipient.Properties().GetOr<PR_RECIPIENT_TYPE>(MAPI_TO) & kTypeWithoutMarks;
}

void SetType(RecipientObject& recipient, const Arguments& value) {
    const std::int32_t type = value.Number(0);
    if (type < 0 || type > kHighestType)
        throw InvalidValue();
    mailbox::PropertyBag row = recipient.Properties();
    row.Set<PR_RECIPIENT_TYPE>(type);
    recipient.Replace(std::move(row));
}

ComPtr<AddressEntryObject> AddressEntry(RecipientObject& recipient) {
    return Make<AddressEntryObject>(recipient.Entry());
}

void SetAddressEntry(RecipientObject& recipient, const Arguments& value) {
    recipient.SetEntry(*value.As<AddressEntryObject>(0)->Entry());
}

std::int32_t DisplayType(RecipientObject& recipient) {
    return recipient.Properties().GetOr<PR_DISPLAY_TYPE>(DT_MAILUSER);
}

std::int32_t Index(RecipientObject& recipient) {
    return recipient.Place();
}

void Delete(RecipientObject& recipient) {
    recipient.Remove();
}

/// OlTrackingStatus: what came back from the recipient's system about the message.
void SetTrackingStatus(RecipientObject& recipient, const Arguments& value) {
    if (!ObjectModel::Get().HasValue(L"OlTrackingStatus", value.Number(0)))
        throw InvalidValue();
    mailbox::PropertyBag row = recipient.Properties();
    row.Set<mailbox::kPrRecipientTrackStatus>(value.Number(0));
    recipient.Replace(std::move(row));
}

Date TrackingStatusTime(RecipientObject& recipient) {
    const mailbox::SysTime* time = recipient.Properties().Get<kPrTrackStatusTime>();
    return time ? LocalDate(*time) : kNoDate;
}

void SetTrackingStatusTime(RecipientObject& recipient, const Arguments& value) {
    const Date date = GivenDate(value);
    mailbox::PropertyBag row = recipient.Properties();
    if (date == kNoDate)
        row.Remove(kPrTrackStatusTime);
    else
        row.Set<kPrTrackStatusTime>(TimeOfLocal(date));
    recipient.Replace(std::move(row));
}

bool Sendable(RecipientObject& recipient) {
    return recipient.Properties().GetOr<kPrSendable>(true);
}

void SetSendable(RecipientObject& recipient, const Arguments& value) {
    mailbox::PropertyBag row = recipient.Properties();
    row.Set<kPrSendable>(value.Flag(0));
    recipient.Replace(std::move(row));
}

/// The row as an object with properties. Changes go back into it at once.
class RowProperties final : public mailbox::PropertyObject {
public:
    explicit RowProperties(ComPtr<RecipientObject> recipient) : m_recipient(std::move(recipient)) {}

    const mailbox::PropertyBag& Stored() const override { return m_recipient->Properties(); }
    mailbox::NamedProperties& Names() const override { return m_recipient->Names(); }

protected:
    std::span<const mailbox::ComputedProperty> Computed() const override { return {}; }
    HRESULT CheckWritable() const override { return S_OK; }
    mailbox::PropertyBag& Edit() override {
        m_edited = Stored();
        return m_edited;
    }
    HRESULT Changed() override {
        m_recipient->Replace(m_edited);
        return S_OK;
    }

private:
    ComPtr<RecipientObject> m_recipient;
    mailbox::PropertyBag m_edited;
};

ComPtr<PropertyAccessorObject> Accessor(RecipientObject& recipient) {
    return Make<PropertyAccessorObject>(ComPtr<Object>(&recipient),
                                        std::make_shared<RowProperties>(ComPtr<RecipientObject>(&recipient)));
}

constexpr Row kRows[] = {
    {L"Address", Get<Text<PR_EMAIL_ADDRESS_W>>},
    {L"AddressEntry", Get<AddressEntry>, Put<SetAddressEntry>},
    {L"AutoResponse", Get<Text<kPrAutoResponse>>, Put<SetText<kPrAutoResponse>>},
    {L"Delete", Get<Delete>},
    {L"DisplayType", Get<DisplayType>},
    {L"EntryID", Get<EntryId>},
    {L"Index", Get<Index>},
    {L"MeetingResponseStatus", Get<Number<mailbox::kPrRecipientTrackStatus>>},
    {L"Name", Get<Text<PR_DISPLAY_NAME_W>>},
    {L"PropertyAccessor", Get<Accessor>},
    {L"Resolve", Get<Resolve>},
    {L"Resolved", Get<Resolved>},
    {L"Sendable", Get<Sendable>, Put<SetSendable>},
    {L"TrackingStatus", Get<Number<mailbox::kPrRecipientTrackStatus>>, Put<SetTrackingStatus>},
    {L"TrackingStatusTime", Get<TrackingStatusTime>, Put<SetTrackingStatusTime>},
    {L"Type", Get<Type>, Put<SetType>},
};

constexpr Kind kKind{L"Recipient", 0x00063045, 4, kRows};

std::int32_t RowIdOf(const mailbox::PropertyBag& row) {
    return row.GetOr<PR_ROWID>(-1);
}

} // namespace

RecipientObject::RecipientObject(mailbox::PropertyBag row) : Object(kKind), m_row(std::move(row)) {
}

RecipientObject::RecipientObject(ComPtr<Object> owner, std::shared_ptr<RecipientList> list,
                                 std::uint32_t rowId)
    : Object(kKind), m_owner(std::move(owner)), m_list(std::move(list)), m_rowId(rowId) {
}

ComPtr<Object> RecipientObject::Parent() {
    return m_owner ? m_owner : TheNameSpace();
}

std::int32_t RecipientObject::Place() const {
    if (!m_list)
        return 0;
    const auto& rows = m_list->Rows();
    const auto row = std::ranges::find(rows, static_cast<std::int32_t>(m_rowId), RowIdOf);
    if (row == rows.end())
        throw Failure(MAPI_E_NOT_FOUND);
    return static_cast<std::int32_t>(row - rows.begin()) + 1;
}

const mailbox::PropertyBag& RecipientObject::Properties() const {
    return m_list ? m_list->Rows()[static_cast<std::size_t>(Place() - 1)] : m_row;
}

void RecipientObject::Replace(mailbox::PropertyBag row) {
    if (m_list)
        return m_list->Replace(m_rowId, std::move(row));
    m_row = std::move(row);
}

void RecipientObject::Remove() {
    if (!m_list)
        throw Failure(MAPI_E_NO_SUPPORT);
    m_list->Remove(m_rowId);
}

bool RecipientObject::Resolve() {
    if (IsResolved())
        return true;
    EntryPtr entry;
    const std::wstring name = Properties().GetOr<PR_DISPLAY_NAME_W>(L"");
    if (FAILED(LoggedOnWorld().Addresses().Resolve(name, entry)))
        return false;
    SetEntry(*entry);
    return true;
}

EntryPtr RecipientObject::Entry() {
    if (!Resolve())
        throw Failure(E_FAIL, L"Outlook does not recognize one or more names.");
    EntryPtr entry;
    Check(LoggedOnWorld().Addresses().Open(*Properties().Get<PR_ENTRYID>(), entry));
    return entry;
}

/// What the row says beyond the address stays.
void RecipientObject::SetEntry(const mailbox::AddressEntry& entry) {
    mailbox::PropertyBag row = Properties();
    for (const mailbox::Property& property : entry.RecipientProperties())
        row.Put(property.Tag(), property.value);
    Replace(std::move(row));
}

mailbox::NamedProperties& RecipientObject::Names() const {
    return m_list ? m_list->Names() : LoggedOnWorld().Addresses().Names();
}

mailbox::PropertyBag UnresolvedRecipient(const std::wstring& name) {
    mailbox::PropertyBag row;
    row.Set<PR_DISPLAY_NAME_W>(name);
    row.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
    return row;
}

} // namespace standin::outlook
