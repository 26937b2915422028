// SPDX-License-Identifier: MIT
#include "export/biff8/SheetNames.h"

#include "export/biff8/UTF8ToUTF16Converter.h"

#include <algorithm>
#include <cstdint>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

namespace vellumo::biff8 {

namespace {

constexpr std::size_t maximumUnits = 31;

std::u16string folded(const std::u16string& name)
{
    // Folding makes at most three units of one.
    std::u16string result(name.size() * 3, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const auto length = u_strFoldCase(result.data(), static_cast<std::int32_t>(result.size()), name.data(),
        static_cast<std::int32_t>(name.size()), U_FOLD_CASE_DEFAULT, &status);
    if (U_FAILURE(status)) return name;
    result.resize(static_cast<std::size_t>(length));
    return result;
}

bool isForbidden(char16_t unit)
{
    return unit < 0x20 || std::u16string_view(u":\\/?*[]").find(unit) != std::u16string_view::npos;
}

bool isLoneSurrogate(const std::u16string& name, std::size_t at)
{
    if (U16_IS_LEAD(name[at])) return at + 1 == name.size() || !U16_IS_TRAIL(name[at + 1]);
    return U16_IS_TRAIL(name[at]) && (at == 0 || !U16_IS_LEAD(name[at - 1]));
}

void replaceForbidden(std::u16string& name)
{
    for (std::size_t i = 0; i < name.size(); ++i)
        if (isForbidden(name[i]) || isLoneSurrogate(name, i)) name[i] = u'_';
}

// Length of a number in parentheses at the end, 0 if there is none. A number so long that the name could not keep a
// character in front of it does not count.
std::size_t numberLength(const std::u16string& name)
{
    constexpr std::size_t longest = 12;
    if (!name.ends_with(u')')) return 0;
    const auto open = name.rfind(u'(');
    if (open == std::u16string::npos || open + 2 == name.size() || name.size() - open > longest) return 0;
    const auto isDigit = [](char16_t unit) { return unit >= u'0' && unit <= u'9'; };
    return std::all_of(name.begin() + static_cast<std::ptrdiff_t>(open) + 1, name.end() - 1, isDigit)
        ? name.size() - open
        : 0;
}

std::u16string joined(std::u16string base, const std::u16string& tail)
{
    auto length = std::min(base.size(), maximumUnits - tail.size());
    if (length < base.size() && length > 0 && U16_IS_LEAD(base[length - 1])) --length;
    base.resize(length);
    base += tail;
    if (base.front() == u'\'') base.front() = u'_';
    if (base.back() == u'\'') base.back() = u'_';
    return base;
}

std::u16string counterText(unsigned counter)
{
    const auto digits = std::to_string(counter);
    std::u16string text(1, u'_');
    text.append(digits.begin(), digits.end());
    return text;
}

} // namespace

std::optional<std::u16string> SheetNames::claim(std::string_view name)
{
    auto base = UTF8ToUTF16Converter(name);
    if (!base || base->empty()) return std::nullopt;
    replaceForbidden(*base);
    const auto tail = base->substr(base->size() - numberLength(*base));
    base->resize(base->size() - tail.size());
    auto candidate = joined(*base, tail);
    for (unsigned counter = 2; folded(candidate) == u"history" || !m_taken.insert(folded(candidate)).second; ++counter)
        candidate = joined(*base, tail + counterText(counter));
    return candidate;
}

void SheetNames::release(const std::u16string& name) { m_taken.erase(folded(name)); }

} // namespace vellumo::biff8
