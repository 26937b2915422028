#include "text/LowerCase.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace vellumo {

std::string lowerCase(std::string_view text)
{
    auto wide = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    std::string lower;
    wide.toLower(icu::Locale::getRoot()).toUTF8String(lower);
    return lower;
}

} // namespace vellumo
