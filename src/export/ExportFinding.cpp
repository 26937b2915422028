// SPDX-License-Identifier: MIT
#include "export/ExportFinding.h"

#include "text/Format.h"
#include "text/Messages.h"

#include <algorithm>

namespace vellumo {

namespace {

struct FindingTexts {
    FindingKind kind;
    const char* oneKey;  // the detail fills its placeholder
    const char* manyKey; // null: there is one at most. The count fills the first, the detail the second
};

constexpr FindingTexts findingTexts[] = {
    {FindingKind::Unreadable, messageKey("1 unreadable value was written as null."),
        messageKey("%ld unreadable values were written as null.")},
    {FindingKind::NotANumberAsNull, messageKey("1 infinite value or not-a-number was written as null."),
        messageKey("%ld infinite values or not-a-numbers were written as null.")},
    {FindingKind::NotANumberAsText, messageKey("1 infinite value or not-a-number was written as a text."),
        messageKey("%ld infinite values or not-a-numbers were written as texts.")},
    {FindingKind::DigitsAsText, messageKey("1 number has too many digits and was written as a text."),
        messageKey("%ld numbers have too many digits and were written as texts.")},
    {FindingKind::DateAsText, messageKey("1 date that a sheet has no number for was written as a text."),
        messageKey("%ld dates that a sheet has no number for were written as texts.")},
    {FindingKind::EmptyText, messageKey("1 empty text cannot be told from null."),
        messageKey("%ld empty texts cannot be told from null.")},
    {FindingKind::TextCut, messageKey("1 text was cut after %@ characters."),
        messageKey("%ld texts were cut after %@ characters.")},
    {FindingKind::LineBreaks, messageKey("In 1 text, line breaks CR LF became LF."),
        messageKey("In %ld texts, line breaks CR LF became LF.")},
    {FindingKind::CharactersReplaced, messageKey("In 1 text, characters that the target does not take became U+FFFD."),
        messageKey("In %ld texts, characters that the target does not take became U+FFFD.")},
    {FindingKind::CharactersEscaped, messageKey("In 1 text, control characters were written as %@."),
        messageKey("In %ld texts, control characters were written as %@.")},
    {FindingKind::TextEncoded, messageKey("1 text with characters that XML does not take was written as base64."),
        messageKey("%ld texts with characters that XML does not take were written as base64.")},
    {FindingKind::FormulaGuarded, messageKey("1 text that looks like a formula got an apostrophe in front."),
        messageKey("%ld texts that look like formulas got an apostrophe in front.")},
    {FindingKind::BytesLeftOut, messageKey("Of 1 value only the number of its bytes was written."),
        messageKey("Of %ld values only the number of their bytes was written.")},
    {FindingKind::FilesLeftOut, messageKey("Of a cell with several files the first is written, 1 is left out."),
        messageKey("Of cells with several files the first is written, %ld are left out.")},
    {FindingKind::MinusZero, messageKey("1 negative zero was written as 0."),
        messageKey("%ld negative zeros were written as 0.")},
    {FindingKind::FractionRounded, messageKey("The server rounds the fraction of a second of 1 date to six digits."),
        messageKey("The server rounds the fraction of a second of %ld dates to six digits.")},
    {FindingKind::TooLong,
        messageKey("1 value is longer than the server takes unless it is configured for statements above 16 MB."),
        messageKey("%ld values are longer than the server takes unless it is configured for statements above 16 MB.")},
    {FindingKind::NameChanged, messageKey("The server cannot have this name; it is %@ there."), nullptr},
    {FindingKind::NullsAgainstRule, messageKey("1 row has null here, so the rule against null is left out."),
        messageKey("%ld rows have null here, so the rule against null is left out.")},
    {FindingKind::EmptyAgainstRule, messageKey("1 row has an empty text here, so the rule against it is left out."),
        messageKey("%ld rows have an empty text here, so the rule against it is left out.")},
    {FindingKind::DefaultLeftOut, messageKey("The default value %@ is left out."), nullptr},
    {FindingKind::CommentCut, messageKey("The description was cut."), nullptr},
    {FindingKind::NumberingLost, messageKey("The server will not number further rows."), nullptr},
    {FindingKind::RepeatedKeys, messageKey("1 row repeats a key of the index %@, which is not unique there."),
        messageKey("%ld rows repeat a key of the index %@, which is not unique there.")},
    {FindingKind::IndexLeftOut, messageKey("The server cannot have the index %@; it is left out."), nullptr},
    {FindingKind::IndexShortened,
        messageKey("The index %@ covers only the beginnings of texts there, and is not unique."), nullptr},
    {FindingKind::RelationUnchecked,
        messageKey("1 row breaks the relation %@, which the server does not check or have."),
        messageKey("%ld rows break the relation %@, which the server does not check or have.")},
    {FindingKind::RelationLeftOut, messageKey("The server cannot have the relation %@; it is left out."), nullptr},
    {FindingKind::CascadeLost, messageKey("The relation %@ does not pass on all changes there."), nullptr},
    {FindingKind::ObjectsLeftOut, messageKey("1 object is left out."), messageKey("%ld objects are left out.")},
    {FindingKind::ObjectsRefused, messageKey("1 object has a form that %@ does not take."),
        messageKey("%ld objects have a form that %@ does not take.")},
    {FindingKind::ValuesRefused, messageKey("1 value has a form that %@ does not take."),
        messageKey("%ld values have a form that %@ does not take.")},
    {FindingKind::TextsRefused, messageKey("1 text is longer than %@ takes it."),
        messageKey("%ld texts are longer than %@ takes them.")},
    {FindingKind::NumbersRefused, messageKey("1 number has a size or form that %@ does not take."),
        messageKey("%ld numbers have a size or form that %@ does not take.")},
    {FindingKind::DatesRefused, messageKey("1 date is outside of the years that %@ holds."),
        messageKey("%ld dates are outside of the years that %@ holds.")},
    {FindingKind::TextsTooLong, messageKey("1 text is too long for a cell, so the table fails."),
        messageKey("%ld texts are too long for a cell, so the table fails.")},
    {FindingKind::NumbersRounded, messageKey("1 number is rounded by %@."),
        messageKey("%ld numbers are rounded by %@.")},
    {FindingKind::NumbersParted, messageKey("1 number is parted by its decimal symbol."),
        messageKey("%ld numbers are parted by their decimal symbol.")},
    {FindingKind::BytesAsDigits, messageKey("1 value comes as hexadecimal digits instead of bytes."),
        messageKey("%ld values come as hexadecimal digits instead of bytes.")},
    {FindingKind::ValuesAsText, messageKey("1 value comes as a text."), messageKey("%ld values come as texts.")},
    {FindingKind::BackslashesDoubled, messageKey("In 1 text every backslash comes twice."),
        messageKey("In %ld texts every backslash comes twice.")},
    {FindingKind::ZerosLost, messageKey("1 text loses its characters U+0000."),
        messageKey("%ld texts lose their characters U+0000.")},
    {FindingKind::EmptyForNull, messageKey("1 null becomes an empty text."),
        messageKey("%ld nulls become empty texts.")},
    {FindingKind::SecondsLost, messageKey("1 date loses its seconds."), messageKey("%ld dates lose their seconds.")},
    {FindingKind::MillisecondsLost, messageKey("1 date loses its fraction of a second."),
        messageKey("%ld dates lose their fractions of a second.")},
    {FindingKind::TextsBreakXML, messageKey("1 text makes the XML not well-formed."),
        messageKey("%ld texts make the XML not well-formed.")},
    {FindingKind::NameBreaksXML, messageKey("The name makes the XML not well-formed."), nullptr},
    {FindingKind::CutAtZero,
        messageKey("Each text is written up to its first zero byte. This encoding has zero bytes in common letters, so "
                   "the output will be cut."),
        nullptr},
    {FindingKind::NotInEncoding, messageKey("1 letter is not in the encoding, so the table fails."),
        messageKey("%ld letters are not in the encoding, so the table fails.")},
    {FindingKind::EncodingNotSaid, messageKey("The XML does not say which encoding its letters are in."), nullptr},
    {FindingKind::NoType, messageKey("%@ has no type for this column, so the table is not created."), nullptr},
    {FindingKind::NameCut, messageKey("%@ cuts this name."), nullptr},
    {FindingKind::NameRefused, messageKey("%@ does not take this name, so the table is not created."), nullptr},
    {FindingKind::RowsTooWide, messageKey("The rows are too wide for %@, so the table is not created."), nullptr},
    {FindingKind::RelationBroken, messageKey("1 record refers to one that is not there, so the relation fails."),
        messageKey("%ld records refer to ones that are not there, so the relation fails.")},
    {FindingKind::RelationToNowhere, messageKey("The relation refers to a table that is not exported."), nullptr},
    {FindingKind::RelationEnforced, messageKey("The relation will be enforced, which the database does not do."),
        nullptr},
    {FindingKind::RelationSetsNull,
        messageKey("The relation will empty what refers to a changed record, where the database refuses the change."),
        nullptr},
};

std::string sentence(const ExportFinding& finding)
{
    const auto* texts = std::ranges::find(findingTexts, finding.kind, &FindingTexts::kind);
    if (texts == std::end(findingTexts)) return {};
    const bool isOne = finding.count == 1 || texts->manyKey == nullptr;
    return isOne ? localizedFormat(texts->oneKey, {finding.detail})
                 : localizedFormat(texts->manyKey, {finding.count, finding.detail});
}

} // namespace

void ExportFindings::add(
    FindingKind kind, std::string_view table, std::string_view column, std::size_t count, std::string_view detail)
{
    const auto isSame = [&](const ExportFinding& finding) {
        return finding.kind == kind && finding.column == column && finding.table == table && finding.detail == detail;
    };
    // Those of the table at hand are the last ones.
    const auto found = std::ranges::find_if(m_findings.rbegin(), m_findings.rend(), isSame);
    if (found != m_findings.rend())
        found->count += count;
    else
        m_findings.push_back({kind, std::string(table), std::string(column), std::string(detail), count});
}

std::string findingText(const ExportFinding& finding)
{
    if (finding.table.empty()) return sentence(finding);
    if (finding.column.empty()) return format("%@: %@", {finding.table, sentence(finding)});
    return format("%@.%@: %@", {finding.table, finding.column, sentence(finding)});
}

std::vector<std::string> findingLines(const std::vector<ExportFinding>& findings)
{
    constexpr std::size_t shownLines = 10;
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < std::min(findings.size(), shownLines); ++i)
        lines.push_back(findingText(findings[i]));
    if (findings.size() > shownLines) lines.push_back(localizedFormat("…and %d more.", {findings.size() - shownLines}));
    return lines;
}

Avoided avoidedByExact(const std::vector<ExportFinding>& findings)
{
    const auto stays = std::ranges::count_if(findings, [](const ExportFinding& finding) {
        return finding.kind == FindingKind::FilesLeftOut || finding.kind == FindingKind::RelationBroken;
    });
    if (stays == std::ssize(findings)) return Avoided::None;
    return stays == 0 ? Avoided::All : Avoided::Some;
}

} // namespace vellumo
