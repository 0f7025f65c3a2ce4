// Lists of people in messages.
#include "standin/outlook/objects/RecipientList.h"

#include "standin/mailbox/ByteOrder.h"
#include "standin/mailbox/EntryId.h"
#include "standin/outlook/automation/Failure.h"
#include "standin/outlook/session/Session.h"

#include <algorithm>
#include <utility>

namespace standin::outlook {
namespace {

using mailbox::Bytes;
using mailbox::OpenMessage;
using mailbox::PropertyBag;
using RowList = std::vector<PropertyBag>;

class MessageRecipients final : public RecipientList {
public:
    explicit MessageRecipients(std::shared_ptr<OpenMessage> message) : m_message(std::move(message)) {}

    const RowList& Rows() const override { return m_message->Recipients(); }
    std::uint32_t Add(PropertyBag row) override {
        std::uint32_t rowId = 0;
        Check(m_message->AddRecipient(std::move(row), &rowId));
        return rowId;
    }
    void Replace(std::uint32_t rowId, PropertyBag row) override {
        Check(m_message->ReplaceRecipient(rowId, std::move(row)));
    }
    void Remove(std::uint32_t rowId) override { Check(m_message->RemoveRecipient(rowId)); }
    mailbox::NamedProperties& Names() const override { return m_message->Names(); }

private:
    std::shared_ptr<OpenMessage> m_message;
};

/// A FlatEntryList ([MS-OXCDATA] 2.3.3): count, size of what follows, and entry ids, each with its size in
/// front and filled up to a multiple of four.
constexpr std::size_t kAlignment = 4;

std::vector<Bytes> TakeEntryIds(std::span<const std::uint8_t> list) {
    mailbox::ByteReader in(list);
    const auto count = in.Take<std::uint32_t>();
    in.Skip(sizeof(std::uint32_t));
    std::vector<Bytes> ids;
    for (std::uint32_t i = 0; i < count && in.Ok(); ++i) {
        const auto size = in.Take<std::uint32_t>();
        if (!in.Ok() || size > in.Left())
            break;
        const auto id = list.last(in.Left()).first(size);
        ids.emplace_back(id.begin(), id.end());
        in.Skip(std::min<std::size_t>(in.Left(), (size + kAlignment - 1) / kAlignment * kAlignment));
    }
    return ids;
}

Bytes MakeEntryList(const std::vector<Bytes>& ids) {
    mailbox::ByteWriter entries;
    for (const Bytes& id : ids) {
        entries.Add(static_cast<std::uint32_t>(id.size())).AddBytes(id.data(), id.size());
        entries.AddZeros((kAlignment - id.size() % kAlignment) % kAlignment);
    }
    const Bytes all = entries.Take();
    mailbox::ByteWriter list;
    list.Add(static_cast<std::uint32_t>(ids.size())).Add(static_cast<std::uint32_t>(all.size()));
    return list.AddBytes(all.data(), all.size()).Take();
}

/// The row that an entry id stands for.
PropertyBag RowOf(const Bytes& entryId) {
    PropertyBag row;
    const auto oneOff = mailbox::ParseOneOffEntryId(entryId);
    std::shared_ptr<mailbox::AddressEntry> entry;
    if (oneOff && oneOff->address.empty())
        row.Set<PR_DISPLAY_NAME_W>(oneOff->name);
    else if (SUCCEEDED(LoggedOnWorld().Addresses().Open(entryId, entry)))
        row = entry->RecipientProperties();
    else
        row.Set<PR_ENTRYID>(entryId);
    row.Set<PR_RECIPIENT_TYPE>(MAPI_TO);
    return row;
}

Bytes EntryIdOf(const PropertyBag& row) {
    const Bytes* id = row.Get<PR_ENTRYID>();
    return id ? *id : mailbox::MakeOneOffEntryId(row.GetOr<PR_DISPLAY_NAME_W>(L""), L"", L"");
}

/// The message keeps no row ids. The list remembers whom it gave which.
class ReplyRecipients final : public RecipientList {
public:
    explicit ReplyRecipients(std::shared_ptr<OpenMessage> message) : m_message(std::move(message)) {}

    const RowList& Rows() const override {
        Follow();
        m_rows.clear();
        for (const Person& person : m_people) {
            m_rows.push_back(RowOf(person.entryId));
            m_rows.back().Set<PR_ROWID>(static_cast<std::int32_t>(person.rowId));
        }
        return m_rows;
    }
    std::uint32_t Add(PropertyBag row) override {
        RowList rows = Rows();
        m_people.push_back({++m_lastRowId, EntryIdOf(row)});
        rows.push_back(std::move(row));
        Write(rows);
        return m_lastRowId;
    }
    void Replace(std::uint32_t rowId, PropertyBag row) override {
        RowList rows = Rows();
        const std::size_t place = PlaceOf(rowId);
        m_people[place].entryId = EntryIdOf(row);
        rows[place] = std::move(row);
        Write(rows);
    }
    void Remove(std::uint32_t rowId) override {
        RowList rows = Rows();
        const auto place = static_cast<std::ptrdiff_t>(PlaceOf(rowId));
        m_people.erase(m_people.begin() + place);
        rows.erase(rows.begin() + place);
        Write(rows);
    }
    mailbox::NamedProperties& Names() const override { return m_message->Names(); }

private:
    struct Person {
        std::uint32_t rowId = 0;
        Bytes entryId;
    };

    /// Takes over what others have written: whom they left in the message keeps his row id.
    void Follow() const {
        std::vector<Person> before = std::exchange(m_people, {});
        for (Bytes& id : TakeEntryIds(m_message->Get<PR_REPLY_RECIPIENT_ENTRIES>().value_or(Bytes()))) {
            const auto same = std::ranges::find(before, id, &Person::entryId);
            const bool isNew = same == before.end();
            m_people.push_back({isNew ? ++m_lastRowId : same->rowId, std::move(id)});
            if (!isNew)
                before.erase(same);
        }
    }
    std::size_t PlaceOf(std::uint32_t rowId) const {
        const auto person = std::ranges::find(m_people, rowId, &Person::rowId);
        if (person == m_people.end())
            throw Failure(MAPI_E_NOT_FOUND);
        return static_cast<std::size_t>(person - m_people.begin());
    }
    void Write(const RowList& rows) {
        std::vector<Bytes> ids;
        std::wstring names;
        for (const PropertyBag& row : rows) {
            ids.push_back(EntryIdOf(row));
            names += (names.empty() ? L"" : L"; ") + row.GetOr<PR_DISPLAY_NAME_W>(L"");
        }
        Check(m_message->Write(PR_REPLY_RECIPIENT_ENTRIES, MakeEntryList(ids)));
        Check(m_message->Write(PR_REPLY_RECIPIENT_NAMES_W, names));
    }

    std::shared_ptr<OpenMessage> m_message;
    mutable std::vector<Person> m_people; // in the order of the message
    mutable std::uint32_t m_lastRowId = 0;
    mutable RowList m_rows;
};

} // namespace

std::shared_ptr<RecipientList> RecipientsOf(std::shared_ptr<OpenMessage> message) {
    return std::make_shared<MessageRecipients>(std::move(message));
}

std::shared_ptr<RecipientList> ReplyRecipientsOf(std::shared_ptr<OpenMessage> message) {
    return std::make_shared<ReplyRecipients>(std::move(message));
}

} // namespace standin::outlook
