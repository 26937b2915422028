// SPDX-License-Identifier: MIT
#include "export/sql/ExactLiterals.h"

#include "text/ByteScan.h"
#include "text/Format.h"
#include "text/QuotedText.h"
#include "text/UTF8.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace vellumo {

namespace {

constexpr auto isOther = [](auto byte) { return byte >= 0x80; };
constexpr auto isDelicate = [](auto byte) { return (byte < 0x20) | (byte == '\'') | (byte == '\\') | (byte == '$'); };

// Most of a script is ASCII: the length of the run of it at the start of `text`, which is written to `out`. In blocks
// of a fixed length, which are done in a few steps.
std::size_t writeASCII(std::string_view text, char* out)
{
    std::size_t done = 0;
    for (; done + 16 <= text.size() && !hasByte(text.substr(done, 16), isOther); done += 16) {
        ByteBlock<16> block;
        std::memcpy(&block, text.data() + done, 16);
        // Interleaved with zeros: of this pattern the compiler makes one instruction each.
        const ByteBlock<16> zeros{};
        const auto low = __builtin_shufflevector(block, zeros, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
        const auto high =
            __builtin_shufflevector(block, zeros, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
        std::memcpy(out + 2 * done, &low, 16);
        std::memcpy(out + 2 * done + 16, &high, 16);
    }
    for (; done < text.size() && static_cast<unsigned char>(text[done]) < 0x80; ++done) {
        out[2 * done] = text[done];
        out[2 * done + 1] = 0;
    }
    return done;
}

} // namespace

bool isPlainText(std::string_view bytes) { return !hasByte(bytes, isDelicate); }

// No character has more than two bytes there for each that it has in UTF-8.
void appendUTF16(TextBuffer& out, std::string_view text)
{
    char* const start = out.room(2 * text.size());
    char* end = start;
    const auto unit = [&](std::uint32_t value) {
        *end++ = static_cast<char>(value & 0xFF);
        *end++ = static_cast<char>(value >> 8);
    };
    while (!text.empty()) {
        const auto run = writeASCII(text, end);
        end += 2 * run;
        text.remove_prefix(run);
        if (text.empty()) break;
        const auto character = firstCharacter(text);
        text.remove_prefix(character.size());
        const auto code = firstCodePoint(character);
        if (code < 0x10000) {
            unit(code);
            continue;
        }
        unit(0xD800 + ((code - 0x10000) >> 10));
        unit(0xDC00 + (code & 0x3FF));
    }
    out.commit(static_cast<std::size_t>(end - start));
}

} // namespace vellumo

namespace vellumo::exactLiterals {

namespace {

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

// What each character becomes inside a literal; an empty entry stays as it is.
using Escapes = std::array<std::string_view, 256>;

void appendEscaped(TextBuffer& out, std::string_view text, const Escapes& escapes)
{
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto& escape = escapes[static_cast<unsigned char>(text[i])];
        if (escape.empty()) continue;
        out.append(text.substr(start, i - start), escape);
        start = i + 1;
    }
    out.append(text.substr(start));
}

constexpr Escapes makeEscapes(std::initializer_list<std::pair<char, std::string_view>> list)
{
    Escapes escapes{};
    for (const auto& [character, escape] : list)
        escapes[static_cast<unsigned char>(character)] = escape;
    return escapes;
}

constexpr auto isControlByte = [](auto byte) { return (byte < 0x20) & (byte != '\t'); };

bool isControl(char character) { return isControlByte(static_cast<std::uint8_t>(character)) != 0; }

bool hasControl(std::string_view text) { return hasByte(text, isControlByte); }

void appendQuoted(TextBuffer& out, std::string_view text)
{
    out += '\'';
    appendReplaced(text, '\'', "''", out);
    out += '\'';
}

void appendHex(TextBuffer& out, std::span<const std::byte> bytes)
{
    const auto length = 2 * bytes.size();
    toHex(out.room(length), length, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    out.commit(length);
}

// Calls `run` with each stretch of a text without control characters and `control` with each stretch of them, as long
// as there are any.
template <typename Run, typename Control> void splitAtControls(std::string_view text, Run run, Control control)
{
    while (!text.empty()) {
        const bool areControls = isControl(text.front());
        const auto end = std::ranges::find_if(text, [&](char c) { return isControl(c) != areControls; });
        const auto piece = text.substr(0, static_cast<std::size_t>(end - text.begin()));
        areControls ? control(piece) : run(piece);
        text.remove_prefix(piece.size());
    }
}

std::size_t controlRuns(std::string_view text)
{
    std::size_t count = 0;
    splitAtControls(
        text, [](std::string_view) {}, [&](std::string_view) { ++count; });
    return count;
}

// Servers limit how many operands an expression has; far below that a literal of the text's bytes does as well.
constexpr std::size_t mostControlRuns = 100;

// Codes in the parentheses of a call.
void appendCodes(TextBuffer& out, std::string_view controls)
{
    for (std::size_t i = 0; i < controls.size(); ++i)
        out.append(i == 0 ? "" : ",", std::to_string(static_cast<unsigned char>(controls[i])));
}

} // namespace

void mySQLText(TextBuffer& out, std::string_view text)
{
    static constexpr auto escapes =
        makeEscapes({{'\'', "''"}, {'\\', "\\\\"}, {'\r', "\\r"}, {'\n', "\\n"}, {'\0', "\\0"}, {'\x1A', "\\Z"}});
    out += '\'';
    appendEscaped(out, text, escapes);
    out += '\'';
}

// The plain form where it will do: a backslash is a character of its own there.
void postgreSQLText(TextBuffer& out, std::string_view text)
{
    static constexpr auto escapes = makeEscapes(
        {{'\'', "''"}, {'\\', "\\\\"}, {'\r', "\\r"}, {'\n', "\\n"}, {'\x1A', "\\x1a"}, {'\0', replacementCharacter}});
    if (!hasControl(text)) return appendQuoted(out, text);
    out += "E'";
    appendEscaped(out, text, escapes);
    out += '\'';
}

void sqliteText(TextBuffer& out, std::string_view text)
{
    const auto isUnsafe = [](char c) { return c == '\r' || c == '\0' || c == '\x1A'; };
    if (std::ranges::none_of(text, isUnsafe)) return appendQuoted(out, text);
    if (controlRuns(text) > mostControlRuns) {
        out += "CAST(";
        quotedHex(out, std::as_bytes(std::span(text)));
        out += " AS TEXT)";
        return;
    }
    std::string_view link;
    splitAtControls(
        text,
        [&](std::string_view run) {
            out += link;
            appendQuoted(out, run);
            link = "||";
        },
        [&](std::string_view controls) {
            out.append(link, "char(");
            appendCodes(out, controls);
            out += ')';
            link = "||";
        });
}

namespace {

// "$(" in a script begins a variable of the tool.
void appendNationalRun(TextBuffer& out, std::string_view run)
{
    for (bool isFirst = true; isFirst || !run.empty(); isFirst = false) {
        const auto found = run.find("$(");
        const auto length = found == run.npos ? run.size() : found + 1;
        out.append(isFirst ? "N" : "+N");
        appendQuoted(out, run.substr(0, length));
        run.remove_prefix(length);
    }
}

} // namespace

void sqlServerText(TextBuffer& out, std::string_view text)
{
    if (!hasControl(text) && text.find("$(") == text.npos) {
        out += 'N';
        return appendQuoted(out, text);
    }
    if (controlRuns(text) > mostControlRuns) {
        TextBuffer units;
        appendUTF16(units, text);
        out += "CAST(0x";
        appendHex(out, std::as_bytes(std::span(units.view())));
        out += " AS nvarchar(max))";
        return;
    }
    // Pieces that are added would otherwise be cut at 4000 characters.
    out += "CAST(N'' AS nvarchar(max))";
    splitAtControls(
        text,
        [&](std::string_view run) {
            out += '+';
            appendNationalRun(out, run);
        },
        [&](std::string_view controls) {
            for (const char control : controls)
                out.append("+NCHAR(", std::to_string(static_cast<unsigned char>(control)), ")");
        });
}

namespace {

// The first `count` characters, or all.
std::string_view firstCharacters(std::string_view text, std::size_t count)
{
    std::size_t end = 0;
    for (; end < text.size(); ++end)
        if ((static_cast<unsigned char>(text[end]) & 0xC0) != 0x80 && count-- == 0) break;
    return text.substr(0, end);
}

} // namespace

// A literal holds 4000 bytes at most, and a line of a script fewer than 2500 characters.
void oracleText(TextBuffer& out, std::string_view text)
{
    constexpr std::size_t mostCharacters = 1000;
    if (text.size() <= mostCharacters && !hasControl(text)) return appendQuoted(out, text);
    const bool isLong = firstCharacters(text, mostCharacters).size() < text.size();
    std::string_view link;
    splitAtControls(
        text,
        [&](std::string_view run) {
            for (; !run.empty(); link = "||\n") {
                const auto piece = firstCharacters(run, mostCharacters);
                out.append(link, isLong ? "TO_CLOB(" : "");
                appendQuoted(out, piece);
                out.append(isLong ? ")" : "");
                run.remove_prefix(piece.size());
            }
        },
        [&](std::string_view controls) {
            for (const char control : controls) {
                out.append(link, "CHR(", std::to_string(static_cast<unsigned char>(control)), ")");
                link = "||";
            }
        });
}

void quotedHex(TextBuffer& out, std::span<const std::byte> bytes)
{
    out += "x'";
    appendHex(out, bytes);
    out += '\'';
}

void escapedHex(TextBuffer& out, std::span<const std::byte> bytes)
{
    out += "'\\x";
    appendHex(out, bytes);
    out += '\'';
}

void calledHex(TextBuffer& out, std::span<const std::byte> bytes)
{
    out += "HEXTORAW('";
    appendHex(out, bytes);
    out += "')";
}

void hexadecimal(TextBuffer& out, std::span<const std::byte> bytes)
{
    out += "0x";
    appendHex(out, bytes);
}

} // namespace vellumo::exactLiterals
