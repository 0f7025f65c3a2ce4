// Writing header lines: encoded words, quoted names, dates, folding.
#include "standin/mailbox/InternetHeaders.h"

#include "standin/mailbox/Tags.h"

#include <algorithm>
#include <cwchar>

namespace standin::mailbox {
namespace {

using namespace std::string_view_literals;

constexpr std::wstring_view kFold = L"\r\n "sv;

std::wstring Base64(std::string_view bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::wstring text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t j = 0; j < 3; ++j)
            group = group << 8 | (i + j < bytes.size() ? static_cast<unsigned char>(bytes[i + j]) : 0);
        for (std::size_t j = 0; j < 4; ++j)
            text += i + j > bytes.size() ? L'=' : static_cast<wchar_t>(kDigits[group >> (18 - 6 * j) & 63]);
    }
    return text;
}

bool IsPlain(wchar_t unit) {
    return unit >= L' ' && unit < 127;
}

/// RFC 2047: what a header can't hold as it is, in encoded words of at most 75 characters.
std::wstring EncodeText(std::wstring_view text) {
    constexpr std::size_t kMostBytes = 45;
    if (std::ranges::all_of(text, IsPlain))
        return std::wstring(text);
    std::wstring encoded;
    std::string word;
    const auto flush = [&] {
        encoded += (encoded.empty() ? L""sv : kFold);
        encoded += L"=?utf-8?B?" + Base64(word) + L"?=";
        word.clear();
    };
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t units = IS_HIGH_SURROGATE(text[i]) && i + 1 < text.size() ? 2 : 1;
        const std::string character = Narrow(text.substr(i, units), CP_UTF8);
        if (word.size() + character.size() > kMostBytes)
            flush();
        word += character;
        i += units;
    }
    flush();
    return encoded;
}

/// A name before an address: bare words, a quoted string, or encoded.
std::wstring EncodePhrase(std::wstring_view name) {
    constexpr std::wstring_view kSpecials = L"()<>[]:;@\\,.\"";
    if (!std::ranges::all_of(name, IsPlain) || name.find_first_of(kSpecials) == std::wstring_view::npos)
        return EncodeText(name);
    std::wstring quoted = L"\"";
    for (const wchar_t unit : name) {
        if (unit == L'"' || unit == L'\\')
            quoted += L'\\';
        quoted += unit;
    }
    return quoted + L"\"";
}

std::wstring MailboxOf(std::wstring_view name, std::wstring_view address) {
    if (name.empty() || name == address)
        return std::wstring(address);
    return EncodePhrase(name) + L" <" + std::wstring(address) + L">";
}

std::wstring AddressOf(const PropertyBag& recipient) {
    return recipient.GetOr<kPrSmtpAddress>(recipient.GetOr<PR_EMAIL_ADDRESS_W>({}));
}

std::wstring AddressList(const Content& message, std::int32_t type) {
    std::wstring list;
    for (const PropertyBag& row : message.recipients) {
        if ((row.GetOr<PR_RECIPIENT_TYPE>(MAPI_TO) & 0x0F) != type)
            continue;
        list += (list.empty() ? L""sv : L",\r\n "sv);
        list += MailboxOf(row.GetOr<PR_DISPLAY_NAME_W>({}), AddressOf(row));
    }
    return list;
}

std::wstring DateText(SysTime time) {
    constexpr const wchar_t* kDays[] = {L"Sun", L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat"};
    constexpr const wchar_t* kMonths[] = {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                                          L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};
    const FILETIME file{static_cast<DWORD>(time.ticks), static_cast<DWORD>(time.ticks >> 32)};
    SYSTEMTIME date{};
    if (!FileTimeToSystemTime(&file, &date))
        return {};
    wchar_t text[40];
    std::swprintf(text, std::size(text), L"%ls, %02u %ls %u %02u:%02u:%02u +0000", kDays[date.wDayOfWeek],
                  date.wDay, kMonths[date.wMonth - 1], date.wYear, date.wHour, date.wMinute, date.wSecond);
    return text;
}

std::wstring_view ContentType(const Content& message) {
    if (!message.attachments.empty())
        return L"multipart/mixed;\r\n boundary=\"_000_\"";
    return message.properties.Contains(kPrHtml) ? L"text/html; charset=\"utf-8\""
                                                : L"text/plain; charset=\"utf-8\"";
}

} // namespace

std::wstring MakeInternetHeaders(const Content& message) {
    const PropertyBag& properties = message.properties;
    const std::wstring sender =
        MailboxOf(properties.GetOr<PR_SENDER_NAME_W>({}), properties.GetOr<kPrSenderSmtpAddress>({}));
    const std::wstring from = MailboxOf(properties.GetOr<PR_SENT_REPRESENTING_NAME_W>({}),
                                        properties.GetOr<kPrSentRepresentingSmtpAddress>(
                                            properties.GetOr<PR_SENT_REPRESENTING_EMAIL_ADDRESS_W>({})));
    const SysTime submitted = properties.GetOr<PR_CLIENT_SUBMIT_TIME>({});
    const SysTime delivered = properties.GetOr<PR_MESSAGE_DELIVERY_TIME>(submitted);
    const bool important = properties.GetOr<PR_IMPORTANCE>(IMPORTANCE_NORMAL) == IMPORTANCE_HIGH;
    const std::pair<std::wstring_view, std::wstring> lines[] = {
        {L"Received", L"from mail.example.com by mail.example.com;\r\n " + DateText(delivered)},
        {L"From", from},
        {L"Sender", sender == from ? std::wstring() : sender},
        {L"To", AddressList(message, MAPI_TO)},
        {L"Cc", AddressList(message, MAPI_CC)},
        {L"Subject", EncodeText(properties.GetOr<PR_SUBJECT_W>({}))},
        {L"Date", DateText(submitted)},
        {L"Message-ID", properties.GetOr<kPrInternetMessageId>({})},
        {L"In-Reply-To", properties.GetOr<kPrInReplyToId>({})},
        {L"References", properties.GetOr<kPrInternetReferences>({})},
        {L"Importance", important ? L"high" : L""},
        {L"MIME-Version", L"1.0"},
        {L"Content-Type", std::wstring(ContentType(message))},
    };
    std::wstring text;
    for (const auto& [name, content] : lines)
        if (!content.empty())
            text += std::wstring(name) + L": " + content + L"\r\n";
    return text + L"\r\n";
}

} // namespace standin::mailbox
