// Reads schema names.
#include "standin/outlook/objects/SchemaNames.h"

#include "standin/mailbox/Platform.h"
#include "standin/mailbox/Tags.h"
#include "standin/outlook/items/PropertySets.h"

#include <algorithm>
#include <memory>

namespace standin::outlook {
namespace {

constexpr std::wstring_view kMapi = L"http://schemas.microsoft.com/mapi/";
/// A text name has no type in it.
constexpr mailbox::PropertyType kTypeOfTextNames = PT_UNICODE;
constexpr std::size_t kGuidLength = 38;

struct KnownName {
    std::wstring_view name;
    mailbox::PropertyTag tag;
};

constexpr KnownName kKnownNames[] = {
    {L"urn:schemas:httpmail:subject", PR_SUBJECT_W},
    {L"urn:schemas:mailheader:subject", PR_SUBJECT_W},
    {L"urn:schemas:httpmail:normalizedsubject", PR_NORMALIZED_SUBJECT_W},
    {L"urn:schemas:httpmail:thread-topic", PR_CONVERSATION_TOPIC_W},
    {L"urn:schemas:httpmail:textdescription", PR_BODY_W},
    {L"urn:schemas:httpmail:fromname", PR_SENT_REPRESENTING_NAME_W},
    {L"urn:schemas:httpmail:sendername", PR_SENDER_NAME_W},
    {L"urn:schemas:httpmail:fromemail", PR_SENT_REPRESENTING_EMAIL_ADDRESS_W},
    {L"urn:schemas:httpmail:senderemail", PR_SENDER_EMAIL_ADDRESS_W},
    {L"urn:schemas:httpmail:displayto", PR_DISPLAY_TO_W},
    {L"urn:schemas:httpmail:displaycc", PR_DISPLAY_CC_W},
    {L"urn:schemas:httpmail:date", PR_CLIENT_SUBMIT_TIME},
    {L"urn:schemas:httpmail:datereceived", PR_MESSAGE_DELIVERY_TIME},
    {L"urn:schemas:httpmail:importance", PR_IMPORTANCE},
    {L"urn:schemas:httpmail:hasattachment", PR_HASATTACH},
    {L"DAV:getlastmodified", PR_LAST_MODIFICATION_TIME},
    {L"DAV:creationdate", PR_CREATION_TIME},
    {L"DAV:displayname", PR_DISPLAY_NAME_W},
    {L"urn:schemas:contacts:cn", PR_DISPLAY_NAME_W},
    {L"urn:schemas:contacts:givenName", PR_GIVEN_NAME_W},
    {L"urn:schemas:contacts:sn", PR_SURNAME_W},
    {L"urn:schemas:contacts:o", PR_COMPANY_NAME_W},
};

/// Eight hexadecimal digits, with 0x in front or not.
std::optional<std::uint32_t> Hexadecimal(std::wstring_view text) {
    constexpr std::size_t kDigits = 8;
    if (text.starts_with(L"0x") || text.starts_with(L"0X"))
        text.remove_prefix(2);
    if (text.size() != kDigits || text.find_first_not_of(L"0123456789abcdefABCDEF") != text.npos)
        return std::nullopt;
    return static_cast<std::uint32_t>(std::wcstoul(std::wstring(text).c_str(), nullptr, 16));
}

bool IsType(std::uint32_t type) {
    return std::ranges::find(mailbox::kTypeOfAlternative, type) != mailbox::kTypeOfAlternative.end();
}

/// "{guid}/" in front of a name: the set; the text is left without it.
std::optional<GUID> TakeSet(std::wstring_view& text) {
    if (text.size() <= kGuidLength || text[kGuidLength] != L'/')
        return std::nullopt;
    const std::optional<GUID> set = mailbox::GuidFromText(std::wstring(text.substr(0, kGuidLength)));
    text.remove_prefix(kGuidLength + 1);
    return set;
}

bool ReadTag(std::wstring_view text, SchemaProperty& property) {
    const std::optional<std::uint32_t> tag = Hexadecimal(text);
    if (!tag || !IsType(mailbox::TypeOf(*tag)) || mailbox::IsNamed(*tag))
        return false;
    property.stored.tag = *tag;
    return true;
}

/// The number and the type in one: 8554001F.
bool ReadNumber(std::wstring_view text, SchemaProperty& property) {
    const std::optional<GUID> set = TakeSet(text);
    const std::optional<std::uint32_t> number = Hexadecimal(text);
    if (!set || !number || !IsType(mailbox::TypeOf(*number)))
        return false;
    property.set = *set;
    property.stored.set = &property.set;
    property.stored.number = mailbox::IdOf(*number);
    property.stored.tag = mailbox::TypeOf(*number);
    return true;
}

/// The type may follow: name/0x0000001F.
bool ReadName(std::wstring_view text, SchemaProperty& property) {
    const std::optional<GUID> set = TakeSet(text);
    if (!set || text.empty())
        return false;
    std::uint32_t type = kTypeOfTextNames;
    if (const std::size_t slash = text.rfind(L'/'); slash != text.npos) {
        const std::optional<std::uint32_t> given = Hexadecimal(text.substr(slash + 1));
        if (given && IsType(*given)) {
            type = *given;
            text = text.substr(0, slash);
        }
    }
    property.set = *set;
    property.name = text;
    property.stored.set = &property.set;
    property.stored.name = property.name.c_str();
    property.stored.tag = type;
    return true;
}

struct Form {
    std::wstring_view word;
    bool (*read)(std::wstring_view text, SchemaProperty& property);
};

constexpr Form kForms[] = {{L"proptag/", ReadTag}, {L"id/", ReadNumber}, {L"string/", ReadName}};

bool ReadMapiName(std::wstring_view text, SchemaProperty& property) {
    const auto form =
        std::ranges::find_if(kForms, [&](const Form& each) { return text.starts_with(each.word); });
    return form != std::end(kForms) && form->read(text.substr(form->word.size()), property);
}

bool ReadKnownName(std::wstring_view text, SchemaProperty& property) {
    const auto known = std::ranges::find_if(
        kKnownNames, [&](const KnownName& each) { return mailbox::SameIgnoringCase(each.name, text); });
    if (known == std::end(kKnownNames))
        return false;
    property.stored.tag = known->tag;
    return true;
}

} // namespace

std::unique_ptr<SchemaProperty> ParseSchemaName(std::wstring_view name) {
    auto property = std::make_unique<SchemaProperty>();
    const bool isMapi = mailbox::SameIgnoringCase(name.substr(0, kMapi.size()), kMapi);
    const bool isRead =
        isMapi ? ReadMapiName(name.substr(kMapi.size()), *property) : ReadKnownName(name, *property);
    return isRead ? std::move(property) : nullptr;
}

} // namespace standin::outlook
