#include "cli/WholeNumber.h"

#include "text/Format.h"

#include <charconv>

namespace vellumo {

std::function<std::string(const std::string&)> wholeNumberFrom(std::int64_t minimum)
{
    return [minimum](const std::string& text) {
        std::int64_t number = 0;
        const auto* end = text.data() + text.size();
        const auto result = std::from_chars(text.data(), end, number);
        const bool isValid = result.ec == std::errc() && result.ptr == end && number >= minimum;
        return isValid ? std::string() : localizedFormat("%@ is not a whole number from %ld on", {text, minimum});
    };
}

} // namespace vellumo
