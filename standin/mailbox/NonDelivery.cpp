// Non-delivery reports.
#include "standin/mailbox/NonDelivery.h"

#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Tags.h"

namespace standin::mailbox {
namespace {

constexpr wchar_t kReporter[] = L"System Administrator";

std::wstring TextFor(const std::vector<PropertyBag>& unreached) {
    std::wstring text = L"Your message did not reach some or all of the intended recipients.\r\n\r\n";
    for (const PropertyBag& row : unreached)
        text += row.GetOr<PR_DISPLAY_NAME_W>(L"(no name)") + L"\r\n    No such recipient could be found.\r\n";
    return text;
}

} // namespace

Content MakeNonDeliveryReport(const Content& sent, std::vector<PropertyBag> unreached) {
    const PropertyBag& original = sent.properties;
    const std::wstring subject = original.GetOr<PR_SUBJECT_W>({});
    const std::wstring text = TextFor(unreached);
    Content report;
    PropertyBag& bag = report.properties;
    bag.Set<PR_MESSAGE_CLASS_W>(L"REPORT." + original.GetOr<PR_MESSAGE_CLASS_W>(L"IPM.Note") + L".NDR");
    bag.Set<PR_SUBJECT_W>(L"Undeliverable: " + subject);
    bag.Set<PR_SUBJECT_PREFIX_W>(L"Undeliverable: ");
    bag.Set<PR_ORIGINAL_SUBJECT_W>(subject);
    if (const SysTime* submitted = original.Get<PR_CLIENT_SUBMIT_TIME>())
        bag.Set<PR_ORIGINAL_SUBMIT_TIME>(*submitted);
    bag.Set<PR_REPORT_TEXT_W>(text);
    bag.Set<PR_BODY_W>(text);
    bag.Set<PR_SENDER_NAME_W>(kReporter);
    bag.Set<PR_SENT_REPRESENTING_NAME_W>(kReporter);
    for (const PropertyTag time : {PR_REPORT_TIME, PR_CLIENT_SUBMIT_TIME, PR_MESSAGE_DELIVERY_TIME,
                                   PR_CREATION_TIME, PR_LAST_MODIFICATION_TIME})
        bag.Put(time, Now());
    bag.Set<PR_MESSAGE_FLAGS>(0);
    bag.Set<PR_IMPORTANCE>(IMPORTANCE_NORMAL);
    bag.Set<PR_SENSITIVITY>(SENSITIVITY_NONE);
    bag.Set<PR_SEARCH_KEY>(BytesOf(NewGuid()));
    report.recipients = std::move(unreached);
    return report;
}

} // namespace standin::mailbox
