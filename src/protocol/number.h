#pragma once

#include <algorithm>
#include <boost/lexical_cast.hpp>
#include <charconv>
#include <concepts>
#include <string_view>

/// The decimal integer that `text` holds: an optional sign, then digits only. The text is read alike under every
/// locale, which is why no stream and no lexical cast does it. A minus sign makes an unsigned number wrap around.
/// Throws `boost::bad_lexical_cast` when the text is anything else or out of the type's range.
template <std::integral Integer>
Integer parseInteger(std::string_view text)
{
    const bool negative = text.starts_with('-');
    std::string_view digits = text.substr(negative || text.starts_with('+') ? 1 : 0);
    if (negative && std::signed_integral<Integer>) digits = text;

    Integer value{};
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool doubleSign = digits.data() != text.data() && digits.starts_with('-');
    if (problem != std::errc{} || end != digits.data() + digits.size() || doubleSign)
        throw boost::bad_lexical_cast(typeid(std::string_view), typeid(Integer));
    return negative && std::unsigned_integral<Integer> ? static_cast<Integer>(Integer{0} - value) : value;
}
