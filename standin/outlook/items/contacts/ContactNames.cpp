// The names of contacts. Outlook keeps them together: the full name and its parts, the subject, and what the
// contact is filed under.
#include "standin/mailbox/Tags.h"
#include "standin/outlook/items/ItemRows.h"
#include "standin/outlook/items/contacts/ContactTopics.h"
#include "standin/outlook/items/contacts/FileAs.h"

namespace standin::outlook {
namespace {

using mailbox::MessageProperties;
using mailbox::OpenMessage;

constexpr StoredProperty kFileUnder{.tag = PT_UNICODE, .set = &kPsAddress, .number = 0x8005};
constexpr StoredProperty kFileUnderId{.tag = PT_LONG, .set = &kPsAddress, .number = 0x8006};
constexpr StoredProperty kFileUnderList{.tag = PT_MV_LONG, .set = &kPsAddress, .number = 0x8026};

template <mailbox::PropertyTag tag>
std::wstring Text(const MessageProperties& message) {
    return message.Get<tag>().value_or(L"");
}

NameParts NameOf(const MessageProperties& message) {
    return {.title = Text<PR_DISPLAY_NAME_PREFIX_W>(message),
            .first = Text<PR_GIVEN_NAME_W>(message),
            .middle = Text<PR_MIDDLE_NAME_W>(message),
            .last = Text<PR_SURNAME_W>(message),
            .suffix = Text<PR_GENERATION_W>(message)};
}

std::wstring CompanyOf(const MessageProperties& message) {
    return Text<PR_COMPANY_NAME_W>(message);
}

/// Brings what the contact is filed under in line with its name and company, unless somebody chose a text.
/// One without a name is filed under the company.
void FollowFiling(OpenMessage& message) {
    constexpr std::int32_t kCompany = 0x3A16;
    const bool isFiled = !StoredText(message, kFileUnder).empty();
    const std::int32_t number =
        ReadAs<std::int32_t>(message, kFileUnderId).value_or(isFiled ? kOwnFileAs : kLastCommaFirst);
    if (number == kOwnFileAs)
        return;
    const NameParts name = NameOf(message);
    const std::wstring company = CompanyOf(message);
    const std::wstring text = MakeFileAs(number, name, company);
    WriteValue(message, kFileUnder, text.empty() ? MakeFileAs(kCompany, name, company) : text);
    WriteValue(message, kFileUnderId, number);
    std::vector<std::int32_t> offered;
    constexpr std::size_t kOffered = 5;
    for (const FileAsForm& form : FileAsForms().first(kOffered))
        offered.push_back(form.number);
    WriteValue(message, kFileUnderList, offered);
}

/// The subject is the name without its title.
void FollowName(OpenMessage& message) {
    const std::wstring before = Text<PR_SUBJECT_W>(message);
    const std::wstring after = PlainNameOf(NameOf(message));
    Check(message.Write(PR_SUBJECT_PREFIX_W, std::wstring()));
    Check(message.Write(PR_SUBJECT_W, after));
    RenameEmailAddresses(message, before, after);
    FollowFiling(message);
}

void FollowParts(OpenMessage& message) {
    Check(message.Write(PR_DISPLAY_NAME_W, FullNameOf(NameOf(message))));
    FollowName(message);
}

/// The name stays as it was written; its parts are read from it.
void FollowFullName(OpenMessage& message) {
    const NameParts name = ParseName(Text<PR_DISPLAY_NAME_W>(message));
    Check(message.Write(PR_DISPLAY_NAME_PREFIX_W, name.title));
    Check(message.Write(PR_GIVEN_NAME_W, name.first));
    Check(message.Write(PR_MIDDLE_NAME_W, name.middle));
    Check(message.Write(PR_SURNAME_W, name.last));
    Check(message.Write(PR_GENERATION_W, name.suffix));
    FollowName(message);
}

/// A text that is one of the forms follows the name from now on; any other stays.
void FollowFileAs(OpenMessage& message) {
    const std::wstring text = ReadAs<std::wstring>(message, kFileUnder).value_or(L"");
    WriteValue(message, kFileUnderId, FindFileAs(text, NameOf(message), CompanyOf(message)));
}

template <std::int32_t number>
_variant_t ReadForm(const MessageProperties& message, const StoredProperty&) {
    return Result(MakeFileAs(number, NameOf(message), CompanyOf(message)));
}

/// The name in one of the forms, worked out.
template <std::int32_t number>
constexpr Conversion kForm{ReadForm<number>, nullptr};

template <std::int32_t number>
constexpr Row InForm(const wchar_t* name) {
    return Stored(name, kForm<number>, PR_DISPLAY_NAME_W);
}

constexpr Row kRows[] = {
    Then<FollowParts>(Stored(L"Title", kText, PR_DISPLAY_NAME_PREFIX_W)),
    Then<FollowParts>(Stored(L"FirstName", kText, PR_GIVEN_NAME_W)),
    Then<FollowParts>(Stored(L"MiddleName", kText, PR_MIDDLE_NAME_W)),
    Then<FollowParts>(Stored(L"LastName", kText, PR_SURNAME_W)),
    Then<FollowParts>(Stored(L"Suffix", kText, PR_GENERATION_W)),
    Then<FollowFullName>(Stored(L"FullName", kText, PR_DISPLAY_NAME_W)),
    Then<FollowFiling>(Stored(L"CompanyName", kText, PR_COMPANY_NAME_W)),
    Then<FollowFileAs>(Named(L"FileAs", kText, PT_UNICODE, kPsAddress, 0x8005)),
    Stored(L"Initials", kText, PR_INITIALS_W),
    Stored(L"NickName", kText, PR_NICKNAME_W),
    Named(L"YomiCompanyName", kText, PT_UNICODE, kPsAddress, 0x802E),
    Named(L"YomiFirstName", kText, PT_UNICODE, kPsAddress, 0x802C),
    Named(L"YomiLastName", kText, PT_UNICODE, kPsAddress, 0x802D),
    InForm<0x8018>(L"CompanyAndFullName"),
    InForm<0x8032>(L"CompanyLastFirstNoSpace"),
    InForm<0x8033>(L"CompanyLastFirstSpaceOnly"),
    InForm<0x8019>(L"FullNameAndCompany"),
    InForm<0x8036>(L"LastFirstAndSuffix"),
    InForm<0x8030>(L"LastFirstNoSpace"),
    InForm<0x8038>(L"LastFirstNoSpaceAndSuffix"),
    InForm<0x8034>(L"LastFirstNoSpaceCompany"),
    InForm<0x8031>(L"LastFirstSpaceOnly"),
    InForm<0x8035>(L"LastFirstSpaceOnlyCompany"),
    InForm<kLastCommaFirst>(L"LastNameAndFirstName"),
};

} // namespace

constinit const std::span<const Row> kContactNameRows = kRows;

} // namespace standin::outlook
