// SPDX-License-Identifier: MIT
#include "export/sql/ExactNames.h"

#include "text/CaseFold.h"

#include <algorithm>
#include <fmt/format.h>

namespace vellumo {

namespace {

bool startsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }
bool isBeyondBasicPlane(char byte) { return static_cast<unsigned char>(byte) >= 0xF0; }

std::size_t lengthOf(std::string_view name, const ExactDialectFacts& facts)
{
    return facts.countsNameBytes ? name.size() : static_cast<std::size_t>(std::ranges::count_if(name, startsCharacter));
}

// Whole characters of at most that length.
std::string_view cut(std::string_view name, std::size_t length, const ExactDialectFacts& facts)
{
    while (lengthOf(name, facts) > length) {
        do {
            const bool isWhole = startsCharacter(name.back());
            name.remove_suffix(1);
            if (isWhole) break;
        } while (!name.empty());
    }
    return name;
}

// Eight digits that another name hardly has.
std::string fingerprint(std::string_view name)
{
    std::uint32_t hash = 2166136261U;
    for (const char byte : name)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
    return fmt::format("_{:08x}", hash);
}

std::string withEnd(std::string_view name, std::string_view end, const ExactDialectFacts& facts)
{
    const auto length =
        facts.longestName == 0 ? name.size() : facts.longestName - std::min(facts.longestName, end.size());
    return std::string(cut(name, length, facts)).append(end);
}

bool isReserved(std::string_view name, NameUse use, const ExactDialectFacts& facts)
{
    return use == NameUse::Column && facts.reserved.find(' ' + lowerCase(name) + ' ') != facts.reserved.npos;
}

// Something that the server does not take in a name.
bool isForeign(std::string_view name, const ExactDialectFacts& facts)
{
    if (facts.longestName != 0 && lengthOf(name, facts) > facts.longestName) return true;
    return facts.isBasicPlaneOnly && (name.ends_with(' ') || std::ranges::any_of(name, isBeyondBasicPlane));
}

// The characters beyond the basic plane, each with the bytes that follow its first, as one "_".
std::string onBasicPlane(std::string_view name)
{
    std::string kept;
    bool isDropping = false;
    for (const char byte : name) {
        if (startsCharacter(byte)) isDropping = isBeyondBasicPlane(byte);
        if (!isDropping)
            kept += byte;
        else if (isBeyondBasicPlane(byte))
            kept += '_';
    }
    return kept;
}

std::string fitted(std::string_view name, NameUse use, const ExactDialectFacts& facts)
{
    const auto& prefix = facts.reservedTablePrefix;
    if (!prefix.empty() && use != NameUse::Column && lowerCase(name).starts_with(prefix))
        return '_' + std::string(name);
    if (!isForeign(name, facts) && !isReserved(name, use, facts)) return std::string(name);
    return withEnd(facts.isBasicPlaneOnly ? onBasicPlane(name) : std::string(name), fingerprint(name), facts);
}

} // namespace

std::string exactName(std::string_view name, NameUse use, const ExactDialectFacts& facts, TakenNames& taken)
{
    const auto wanted = fitted(name, use, facts);
    auto given = wanted;
    for (int number = 2; !taken.insert(lowerCase(given)).second; ++number)
        given = withEnd(wanted, '_' + std::to_string(number), facts);
    return given;
}

std::string fillTemplate(std::string_view text, std::initializer_list<TemplateField> fields)
{
    std::string filled;
    while (!text.empty()) {
        const auto* field =
            std::ranges::find_if(fields, [&](const TemplateField& f) { return text.starts_with(f.name); });
        const bool isField = field != fields.end();
        filled += isField ? field->value : text.substr(0, 1);
        text.remove_prefix(isField ? field->name.size() : 1);
    }
    return filled;
}

} // namespace vellumo
