// ReportItem: the members of reports beyond those of all items.
#include "standin/outlook/items/ItemKinds.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/ItemTopics.h"

namespace standin::outlook {
namespace {

/// A report without a body shows what the server wrote about it.
_variant_t ReadReportBody(const mailbox::MessageProperties& message, const StoredProperty& stored) {
    _variant_t body = kBody.read(message, stored);
    return TextOf(body).empty() ? Result(message.Get<PR_REPORT_TEXT_W>().value_or(L"")) : body;
}

void WriteReportBody(mailbox::OpenMessage& message, const StoredProperty& stored, const Call& call) {
    kBody.write(message, stored, call);
}

constexpr Conversion kReportBody{ReadReportBody, WriteReportBody};

constexpr Row kRows[] = {
    Stored(L"Body", kReportBody, PR_BODY_W),
};

} // namespace

const ItemKind kReportItem{
    .kind = {L"ReportItem", 0x00063026, 46, kRows, kCommonItemRows, kItemTopics},
    .messageClass = L"REPORT",
};

} // namespace standin::outlook
