// The forms under which a contact may be filed.
#include "standin/outlook/items/contacts/FileAs.h"

#include <algorithm>

namespace standin::outlook {
namespace {

std::wstring GivenNames(const NameParts& name) {
    return JoinTexts({name.first, name.middle}, L" ");
}

std::wstring LastCommaFirst(const NameParts& name, const std::wstring&) {
    return JoinTexts({name.last, GivenNames(name)}, L", ");
}
std::wstring LastFirst(const NameParts& name, const std::wstring&) {
    return JoinTexts({name.last, GivenNames(name)}, L" ");
}
std::wstring LastFirstTogether(const NameParts& name, const std::wstring&) {
    return name.last + GivenNames(name);
}
std::wstring CompanyAlone(const NameParts&, const std::wstring& company) {
    return company;
}
std::wstring FirstToSuffix(const NameParts& name, const std::wstring&) {
    return PlainNameOf(name);
}

using Maker = std::wstring (*)(const NameParts& name, const std::wstring& company);

template <Maker first, Maker second>
std::wstring TwoLines(const NameParts& name, const std::wstring& company) {
    return JoinTexts({first(name, company), second(name, company)}, L"\r\n");
}
template <Maker maker>
std::wstring WithSuffix(const NameParts& name, const std::wstring& company) {
    return JoinTexts({maker(name, company), name.suffix}, L" ");
}

/// Those that Outlook offers come first: of texts that are the same in several forms the first form counts.
constexpr FileAsForm kForms[] = {
    {kLastCommaFirst, LastCommaFirst},
    {0x8037, FirstToSuffix},
    {0x3A16, CompanyAlone},
    {0x8019, TwoLines<LastCommaFirst, CompanyAlone>},
    {0x8018, TwoLines<CompanyAlone, LastCommaFirst>},
    {0x8030, LastFirstTogether},
    {0x8031, LastFirst},
    {0x8032, TwoLines<CompanyAlone, LastFirstTogether>},
    {0x8033, TwoLines<CompanyAlone, LastFirst>},
    {0x8034, TwoLines<LastFirstTogether, CompanyAlone>},
    {0x8035, TwoLines<LastFirst, CompanyAlone>},
    {0x8036, WithSuffix<LastCommaFirst>},
    {0x8038, WithSuffix<LastFirstTogether>},
};

} // namespace

std::span<const FileAsForm> FileAsForms() {
    return kForms;
}

std::wstring MakeFileAs(std::int32_t number, const NameParts& name, const std::wstring& company) {
    const auto form = std::ranges::find(kForms, number, &FileAsForm::number);
    return form == std::end(kForms) ? std::wstring() : form->make(name, company);
}

std::int32_t FindFileAs(const std::wstring& text, const NameParts& name, const std::wstring& company) {
    const auto form = std::ranges::find_if(
        kForms, [&](const FileAsForm& each) { return each.make(name, company) == text; });
    return form == std::end(kForms) || text.empty() ? kOwnFileAs : form->number;
}

} // namespace standin::outlook
