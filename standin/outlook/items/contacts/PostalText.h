// Postal addresses as a whole, and in their parts.
#pragma once

#include <string>
#include <string_view>

namespace standin::outlook {

struct PostalParts {
    std::wstring street, city, state, postalCode, country;
    bool operator==(const PostalParts&) const = default;
};

/// Street, below it "City, State  PostalCode", below it the country, as Outlook in English writes it. The
/// user's own country is left out.
std::wstring ComposeAddress(const PostalParts& parts);
/// The parts of an address in that form; what is in no such form is the street. The line with the city is the
/// last or the last but one, and has a comma, or a postal code of the United States at its end.
PostalParts ParseAddress(std::wstring_view text);

} // namespace standin::outlook
