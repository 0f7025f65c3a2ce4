// The rows of each sort of table.
#include "standin/mapi/TableSources.h"

#include "standin/mapi/Bodies.h"
#include "standin/mapi/FixedProperties.h"

#include "standin/mailbox/Tags.h"

#include <algorithm>

namespace standin::mapi {
namespace {

using mailbox::Bytes;
using mailbox::IdOf;
using mailbox::PropertyBag;
using mailbox::PropertyObject;
using mailbox::PropertyTag;
using mailbox::Value;

std::uint64_t g_partsReplaced = 0;

/// A number that differs when any of these does.
std::uint64_t Mixed(std::uint64_t first, std::uint64_t second) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    return (first ^ 0xCBF29CE484222325) * kPrime ^ second * kPrime;
}

class Stores final : public TableRows {
public:
    explicit Stores(mailbox::Mailbox& mailbox) : m_mailbox(mailbox) {}

    std::uint64_t Version() const override { return m_mailbox.ProfileStores().size(); }
    std::vector<Row> Fetch() const override {
        std::vector<Row> rows;
        for (const mailbox::Store* store : m_mailbox.ProfileStores()) // they live as long as the mailbox
            rows.push_back(
                {std::shared_ptr<const PropertyObject>(std::shared_ptr<void>(), store), rows.size()});
        return rows;
    }
    std::span<const PropertyTag> DefaultColumns() const override {
        static constexpr PropertyTag kColumns[] = {
            PR_INSTANCE_KEY, PR_RECORD_KEY,   PR_ENTRYID,        PR_DISPLAY_NAME_W,    PR_DEFAULT_STORE,
            PR_OBJECT_TYPE,  PR_MDB_PROVIDER, PR_RESOURCE_FLAGS, PR_PROVIDER_DISPLAY_W};
        return kColumns;
    }
    HRESULT Read(const PropertyObject& row, PropertyTag tag, Value& value) const override {
        const auto& store = static_cast<const mailbox::Store&>(row);
        if (IdOf(tag) == IdOf(PR_ENTRYID) && store.RowWithoutEntryId())
            return MAPI_E_NOT_FOUND;
        return row.Read(tag, value);
    }

private:
    mailbox::Mailbox& m_mailbox;
};

class Folders final : public TableRows {
public:
    Folders(std::shared_ptr<mailbox::Folder> folder, bool deep) : m_folder(std::move(folder)), m_deep(deep) {}

    std::uint64_t Version() const override {
        return m_deep ? DeepVersion(*m_folder) : m_folder->HierarchyVersion();
    }
    std::vector<Row> Fetch() const override {
        std::vector<Row> rows;
        Add(*m_folder, rows);
        return rows;
    }
    std::span<const PropertyTag> DefaultColumns() const override {
        static constexpr PropertyTag kColumns[] = {
            PR_ENTRYID,     PR_DISPLAY_NAME_W,    PR_INSTANCE_KEY,  PR_DEPTH,
            PR_OBJECT_TYPE, PR_FOLDER_TYPE,       PR_CONTENT_COUNT, PR_CONTENT_UNREAD,
            PR_SUBFOLDERS,  PR_CONTAINER_CLASS_W, PR_COMMENT_W,     PR_PARENT_ENTRYID};
        return kColumns;
    }
    HRESULT Read(const PropertyObject& row, PropertyTag tag, Value& value) const override {
        if (tag != PR_DEPTH)
            return row.Read(tag, value);
        value = DepthOf(static_cast<const mailbox::Folder&>(row));
        return S_OK;
    }

private:
    static std::uint64_t DeepVersion(const mailbox::Folder& folder) {
        std::uint64_t version = folder.HierarchyVersion();
        for (const auto& subfolder : folder.Subfolders())
            version = Mixed(version, DeepVersion(*subfolder));
        return version;
    }
    void Add(const mailbox::Folder& folder, std::vector<Row>& rows) const {
        for (const auto& subfolder : folder.Subfolders()) {
            rows.push_back({subfolder, subfolder->Id()});
            if (m_deep)
                Add(*subfolder, rows);
        }
    }
    std::int32_t DepthOf(const mailbox::Folder& row) const {
        std::int32_t depth = 0;
        for (const mailbox::Folder* each = &row; each && each != m_folder.get(); each = each->Parent())
            ++depth;
        return depth;
    }

    std::shared_ptr<mailbox::Folder> m_folder;
    bool m_deep;
};

/// A bag of a message's recipients for a restriction on them.
class BagRow final : public RestrictedRow {
public:
    explicit BagRow(const PropertyBag& bag) : m_bag(bag) {}
    HRESULT Read(PropertyTag tag, Value& value) const override { return m_bag.Read(tag, value); }
    bool AnyRowOf(PropertyTag, const std::function<bool(const RestrictedRow&)>&) const override {
        return false;
    }

private:
    const PropertyBag& m_bag;
};

// [MS-OXCTABL] 2.2.1: what a contents table shows of one value.
constexpr std::size_t kMostCharacters = 255;
constexpr std::size_t kMostBytes = 510;

template <class Character>
void Cut(Value& value) {
    auto* text = std::get_if<std::basic_string<Character>>(&value);
    if (text && text->size() > kMostCharacters)
        text->resize(kMostCharacters);
}

class Messages final : public TableRows {
public:
    Messages(std::shared_ptr<mailbox::Folder> folder, bool associated)
        : m_folder(std::move(folder)), m_associated(associated) {}

    std::uint64_t Version() const override { return m_folder->ContentsVersion(); }
    std::vector<Row> Fetch() const override {
        std::vector<Row> rows;
        const auto& messages = m_associated ? m_folder->AssociatedMessages() : m_folder->Messages();
        rows.reserve(messages.size());
        for (const mailbox::Message* message : messages)
            rows.push_back({message->shared_from_this(), message->Id()});
        return rows;
    }
    std::span<const PropertyTag> DefaultColumns() const override {
        static constexpr PropertyTag kColumns[] = {
            PR_ENTRYID,
            PR_INSTANCE_KEY,
            PR_RECORD_KEY,
            PR_PARENT_ENTRYID,
            PR_MESSAGE_CLASS_W,
            PR_SUBJECT_W,
            PR_SENDER_NAME_W,
            PR_DISPLAY_TO_W,
            PR_DISPLAY_CC_W,
            PR_CLIENT_SUBMIT_TIME,
            PR_MESSAGE_FLAGS,
            PR_MESSAGE_SIZE,
            PR_HASATTACH,
            PR_IMPORTANCE,
            PR_SENSITIVITY,
            PR_CREATION_TIME,
            PR_MESSAGE_DELIVERY_TIME,
            PR_LAST_MODIFICATION_TIME,
            PR_OBJECT_TYPE,
        };
        return kColumns;
    }
    HRESULT Read(const PropertyObject& row, PropertyTag tag, Value& value) const override {
        return IsBodyProperty(tag) ? ReadBody(row, tag, value) : row.Read(tag, value);
    }
    /// Text is cut, other long values are refused.
    HRESULT Shorten(Value& value) const override {
        Cut<wchar_t>(value);
        Cut<char>(value);
        const auto* bytes = std::get_if<Bytes>(&value);
        return bytes && bytes->size() > kMostBytes ? MAPI_E_NOT_ENOUGH_MEMORY : TableRows::Shorten(value);
    }
    bool AnyRowOf(const PropertyObject& row, PropertyTag subobject,
                  const std::function<bool(const RestrictedRow&)>& test) const override {
        const mailbox::Content& content = static_cast<const mailbox::Message&>(row).Current();
        if (subobject == PR_MESSAGE_RECIPIENTS)
            return std::ranges::any_of(content.recipients,
                                       [&](const PropertyBag& each) { return test(BagRow(each)); });
        return std::ranges::any_of(content.attachments,
                                   [&](const auto& each) { return test(BagRow(each->properties)); });
    }

private:
    std::shared_ptr<mailbox::Folder> m_folder;
    bool m_associated;
};

/// Of recipients and attachments the model doesn't count the changes: those that replace one are noted here,
/// the others show in where the list is and how long.
template <class List>
std::uint64_t VersionOf(const List& list) {
    return Mixed(Mixed(reinterpret_cast<std::uintptr_t>(list.data()), list.size()), g_partsReplaced);
}

class Recipients final : public TableRows {
public:
    explicit Recipients(std::shared_ptr<mailbox::OpenMessage> message) : m_message(std::move(message)) {}

    std::uint64_t Version() const override { return VersionOf(m_message->Recipients()); }
    std::vector<Row> Fetch() const override {
        std::vector<Row> rows;
        for (const PropertyBag& recipient : m_message->Recipients())
            rows.push_back({std::make_shared<FixedProperties>(recipient, m_message->Names()),
                            static_cast<std::uint64_t>(recipient.GetOr<PR_ROWID>(-1))});
        return rows;
    }
    std::span<const PropertyTag> DefaultColumns() const override {
        static constexpr PropertyTag kColumns[] = {
            PR_ROWID,   PR_RECIPIENT_TYPE, PR_DISPLAY_NAME_W, PR_ADDRTYPE_W,   PR_EMAIL_ADDRESS_W,
            PR_ENTRYID, PR_SEARCH_KEY,     PR_OBJECT_TYPE,    PR_DISPLAY_TYPE, PR_RESPONSIBILITY,
        };
        return kColumns;
    }

private:
    std::shared_ptr<mailbox::OpenMessage> m_message;
};

/// An attachment as a row: with its number and size, and without its data.
class AttachmentRow final : public PropertyObject {
public:
    AttachmentRow(mailbox::AttachmentPtr attachment, mailbox::NamedProperties& names)
        : m_attachment(std::move(attachment)), m_names(names) {}

    const PropertyBag& Stored() const override { return m_attachment->properties; }
    mailbox::NamedProperties& Names() const override { return m_names; }

protected:
    std::span<const mailbox::ComputedProperty> Computed() const override {
        static constexpr mailbox::ComputedProperty kRows[] = {
            {PR_ATTACH_SIZE, Size, nullptr}, {PR_ATTACH_NUM, Number, nullptr},
            {PR_INSTANCE_KEY, Key, nullptr}, {PR_RECORD_KEY, Key, nullptr},
            {PR_OBJECT_TYPE, Type, nullptr}, {PR_ATTACH_DATA_BIN, Nothing, nullptr},
        };
        return kRows;
    }
    HRESULT CheckWritable() const override { return E_ACCESSDENIED; }
    PropertyBag& Edit() override { std::abort(); } // nobody comes past CheckWritable

private:
    static const mailbox::Attachment& Of(const PropertyObject& row) {
        return *static_cast<const AttachmentRow&>(row).m_attachment;
    }
    static bool Size(const PropertyObject& row, Value& value) {
        const mailbox::Attachment& attachment = Of(row);
        std::uint64_t size = mailbox::SizeOf(attachment.properties);
        size += attachment.embedded ? mailbox::SizeOf(*attachment.embedded) : 0;
        size += attachment.oleStorage ? attachment.oleStorage->size() : 0;
        value = static_cast<std::int32_t>(size);
        return true;
    }
    static bool Number(const PropertyObject& row, Value& value) {
        value = static_cast<std::int32_t>(Of(row).number);
        return true;
    }
    static bool Key(const PropertyObject& row, Value& value) {
        value = mailbox::MakeInstanceKey(Of(row).number);
        return true;
    }
    static bool Type(const PropertyObject&, Value& value) {
        value = std::int32_t{MAPI_ATTACH};
        return true;
    }
    static bool Nothing(const PropertyObject&, Value&) { return false; }

    mailbox::AttachmentPtr m_attachment;
    mailbox::NamedProperties& m_names;
};

class Attachments final : public TableRows {
public:
    explicit Attachments(std::shared_ptr<mailbox::OpenMessage> message) : m_message(std::move(message)) {}

    std::uint64_t Version() const override { return VersionOf(m_message->Attachments()); }
    std::vector<Row> Fetch() const override {
        std::vector<Row> rows;
        for (const mailbox::AttachmentPtr& attachment : m_message->Attachments())
            rows.push_back(
                {std::make_shared<AttachmentRow>(attachment, m_message->Names()), attachment->number});
        return rows;
    }
    std::span<const PropertyTag> DefaultColumns() const override {
        static constexpr PropertyTag kColumns[] = {
            PR_ATTACH_NUM,
            PR_INSTANCE_KEY,
            PR_RECORD_KEY,
            PR_RENDERING_POSITION,
            PR_ATTACH_FILENAME_W,
            PR_ATTACH_METHOD,
            PR_ATTACH_LONG_FILENAME_W,
            PR_ATTACH_SIZE,
            PR_DISPLAY_NAME_W,
            PR_LAST_MODIFICATION_TIME,
        };
        return kColumns;
    }

private:
    std::shared_ptr<mailbox::OpenMessage> m_message;
};

/// Rows that stay as they are.
class Unchanging final : public TableRows {
public:
    Unchanging(std::vector<Row> rows, std::span<const PropertyTag> columns)
        : m_rows(std::move(rows)), m_columns(columns) {}

    std::uint64_t Version() const override { return 0; }
    std::vector<Row> Fetch() const override { return m_rows; }
    std::span<const PropertyTag> DefaultColumns() const override { return m_columns; }

private:
    std::vector<Row> m_rows;
    std::span<const PropertyTag> m_columns;
};

} // namespace

std::unique_ptr<TableRows> StoreRows(mailbox::Mailbox& mailbox) {
    return std::make_unique<Stores>(mailbox);
}

std::unique_ptr<TableRows> FolderRows(std::shared_ptr<mailbox::Folder> folder, bool deep) {
    return std::make_unique<Folders>(std::move(folder), deep);
}

std::unique_ptr<TableRows> MessageRows(std::shared_ptr<mailbox::Folder> folder, bool associated) {
    return std::make_unique<Messages>(std::move(folder), associated);
}

std::unique_ptr<TableRows> RecipientRows(std::shared_ptr<mailbox::OpenMessage> message) {
    return std::make_unique<Recipients>(std::move(message));
}

std::unique_ptr<TableRows> AttachmentRows(std::shared_ptr<mailbox::OpenMessage> message) {
    return std::make_unique<Attachments>(std::move(message));
}

std::unique_ptr<TableRows> AddressRows(std::vector<std::shared_ptr<mailbox::AddressEntry>> entries) {
    static constexpr PropertyTag kColumns[] = {
        PR_ENTRYID,    PR_INSTANCE_KEY,         PR_RECORD_KEY,  PR_DISPLAY_NAME_W,
        PR_ADDRTYPE_W, PR_EMAIL_ADDRESS_W,      PR_OBJECT_TYPE, PR_DISPLAY_TYPE,
        PR_SEARCH_KEY, mailbox::kPrSmtpAddress, PR_ACCOUNT_W,
    };
    std::vector<TableRows::Row> rows;
    rows.reserve(entries.size());
    for (auto& entry : entries)
        rows.push_back({std::move(entry), rows.size()});
    return std::make_unique<Unchanging>(std::move(rows), kColumns);
}

std::unique_ptr<TableRows> FixedRows(std::vector<PropertyBag> bags, mailbox::NamedProperties& names) {
    static constexpr PropertyTag kColumns[] = {
        PR_ENTRYID,     PR_INSTANCE_KEY, PR_DISPLAY_NAME_W, PR_CONTAINER_FLAGS,
        PR_OBJECT_TYPE, PR_DISPLAY_TYPE, PR_DEPTH,
    };
    std::vector<TableRows::Row> rows;
    rows.reserve(bags.size());
    for (PropertyBag& bag : bags)
        rows.push_back({std::make_shared<FixedProperties>(std::move(bag), names), rows.size()});
    return std::make_unique<Unchanging>(std::move(rows), kColumns);
}

void NoteMessagePartReplaced() {
    ++g_partsReplaced;
}

} // namespace standin::mapi
