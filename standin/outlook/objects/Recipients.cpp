// The recipients of an item: adding, removing, resolving.
#include "standin/outlook/objects/Recipients.h"

#include "standin/mailbox/Platform.h"

#include <algorithm>

namespace standin::outlook {
namespace {

std::uint32_t RowIdOf(const mailbox::PropertyBag& row) {
    return static_cast<std::uint32_t>(row.GetOr<PR_ROWID>(0));
}

ComPtr<RecipientObject> Add(RecipientsObject& recipients, const Arguments& arguments) {
    const std::wstring name = arguments.Text(0);
    if (name.empty())
        throw InvalidValue();
    return recipients.Recipient(recipients.List().Add(UnresolvedRecipient(name)));
}

void Remove(RecipientsObject& recipients, const Arguments& arguments) {
    const std::int32_t place = arguments.Number(0);
    if (place < 1 || place > recipients.Count())
        throw IndexOutOfBounds();
    RecipientList& list = recipients.List();
    list.Remove(RowIdOf(list.Rows()[static_cast<std::size_t>(place - 1)]));
}

bool ResolveEach(RecipientsObject& recipients) {
    bool all = true;
    for (std::int32_t place = 1; place <= recipients.Count(); ++place)
        all &= recipients.Recipient(RowIdOf(recipients.List().Rows()[static_cast<std::size_t>(place - 1)]))
                   ->Resolve();
    return all;
}

constexpr Row kRows[] = {
    {L"Add", Get<Add>},
    {L"Remove", Get<Remove>},
    {L"ResolveAll", Get<ResolveEach>},
};

const Kind kKind{L"Recipients", 0x0006303B, 17, kRows, kCollectionRows};

} // namespace

RecipientsObject::RecipientsObject(ComPtr<Object> owner, std::shared_ptr<RecipientList> list)
    : Collection(kKind), m_owner(std::move(owner)), m_list(std::move(list)) {
}

std::int32_t RecipientsObject::Count() {
    return static_cast<std::int32_t>(m_list->Rows().size());
}

_variant_t RecipientsObject::At(std::int32_t place) {
    return Result(Recipient(RowIdOf(m_list->Rows()[static_cast<std::size_t>(place - 1)])));
}

_variant_t RecipientsObject::Named(const std::wstring& name) {
    const auto& rows = m_list->Rows();
    const auto row = std::ranges::find_if(rows, [&](const mailbox::PropertyBag& each) {
        return mailbox::SameIgnoringCase(each.GetOr<PR_DISPLAY_NAME_W>(L""), name);
    });
    if (row == rows.end())
        throw Failure(MAPI_E_NOT_FOUND);
    return Result(Recipient(RowIdOf(*row)));
}

ComPtr<RecipientObject> RecipientsObject::Recipient(std::uint32_t rowId) const {
    return Make<RecipientObject>(m_owner, m_list, rowId);
}

bool ResolveAll(const std::shared_ptr<RecipientList>& list) {
    return ResolveEach(*Make<RecipientsObject>(nullptr, list).Get());
}

} // namespace standin::outlook
