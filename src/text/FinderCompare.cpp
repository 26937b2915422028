// SPDX-License-Identifier: MIT
#include "text/FinderCompare.h"

#include <memory>
#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

namespace vellumo {

namespace {

// One rule "&'X'='x'" for each wide or narrow form: Unicode's default order tells them apart at the same level as
// upper and lower case, and only the latter may count here.
std::u16string widthRules()
{
    UErrorCode status = U_ZERO_ERROR;
    const auto* normalizer = unorm2_getNFKDInstance(&status);
    std::u16string rules;
    const auto addRule = [&](UChar32 form) {
        const auto type = u_getIntPropertyValue(form, UCHAR_DECOMPOSITION_TYPE);
        if (type != U_DT_WIDE && type != U_DT_NARROW) return;
        UChar plain[8];
        UErrorCode failed = U_ZERO_ERROR;
        const auto length = unorm2_getRawDecomposition(normalizer, form, plain, 8, &failed);
        if (U_FAILURE(failed) || length <= 0) return;
        rules += u"&'";
        for (int i = 0; i < length; ++i) {
            // An apostrophe inside quotes is written twice.
            if (plain[i] == u'\'') rules += u'\'';
            rules += plain[i];
        }
        rules += u"'='";
        rules += static_cast<char16_t>(form);
        rules += u'\'';
    };
    if (U_FAILURE(status)) return rules;
    addRule(0x3000);
    for (UChar32 form = 0xFF01; form <= 0xFFEF; ++form)
        addRule(form);
    return rules;
}

struct CollatorDeleter {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};
using CollatorPtr = std::unique_ptr<UCollator, CollatorDeleter>;

CollatorPtr makeCollator()
{
    const auto rules = widthRules();
    UErrorCode status = U_ZERO_ERROR;
    CollatorPtr collator(ucol_openRules(
        rules.data(), static_cast<std::int32_t>(rules.size()), UCOL_ON, UCOL_TERTIARY, nullptr, &status));
    if (U_FAILURE(status)) return nullptr;
    ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
    ucol_setAttribute(collator.get(), UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, &status);
    return U_FAILURE(status) ? nullptr : std::move(collator);
}

// Shared by all threads: an open collator is only read. Null when ICU's data is missing; texts then order by bytes.
const UCollator* finderCollator()
{
    static const auto collator = makeCollator();
    return collator.get();
}

std::u16string toUtf16(std::string_view text)
{
    std::u16string out(text.size(), u'\0'); // never more units than bytes
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(out.data(), static_cast<std::int32_t>(out.size()), &length, text.data(),
        static_cast<std::int32_t>(text.size()), 0xFFFD, nullptr, &status);
    out.resize(U_FAILURE(status) ? 0 : static_cast<std::size_t>(length));
    return out;
}

} // namespace

int finderCompare(std::string_view left, std::string_view right)
{
    const auto* collator = finderCollator();
    if (collator == nullptr) return left < right ? -1 : left > right ? 1 : 0;
    const auto a = toUtf16(left);
    const auto b = toUtf16(right);
    return ucol_strcoll(
        collator, a.data(), static_cast<std::int32_t>(a.size()), b.data(), static_cast<std::int32_t>(b.size()));
}

void appendFinderSortKey(std::string_view text, std::string& key)
{
    const auto* collator = finderCollator();
    if (collator == nullptr) {
        key += text;
        return;
    }
    const auto units = toUtf16(text);
    const auto start = key.size();
    // Most keys take 2 to 3 bytes a unit; the call tells the length where this does not do.
    key.resize(start + 3 * units.size() + 16);
    const auto fill = [&] {
        return static_cast<std::size_t>(ucol_getSortKey(collator, units.data(), static_cast<std::int32_t>(units.size()),
            reinterpret_cast<std::uint8_t*>(key.data() + start), static_cast<std::int32_t>(key.size() - start)));
    };
    auto length = fill();
    if (length > key.size() - start) {
        key.resize(start + length);
        length = fill();
    }
    key.resize(start + (length > 0 ? length - 1 : 0)); // without ICU's terminating zero
}

} // namespace vellumo
