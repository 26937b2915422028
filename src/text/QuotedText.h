// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

// Texts as they are appended to an `Out`, which takes them by "+=": a std::string or a TextBuffer.
namespace vellumo {

// `text` with `replacement` in the place of every `what`.
template <typename Out> void appendReplaced(std::string_view text, char what, std::string_view replacement, Out& out)
{
    for (auto found = text.find(what); found != std::string_view::npos; found = text.find(what)) {
        out += text.substr(0, found);
        out += replacement;
        text.remove_prefix(found + 1);
    }
    out += text;
}

// `text` in quotes, those inside doubled.
template <typename Out> void appendQuoted(std::string_view text, Out& out)
{
    out += '"';
    appendReplaced(text, '"', "\"\"", out);
    out += '"';
}

} // namespace vellumo
