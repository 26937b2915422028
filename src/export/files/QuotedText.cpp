// SPDX-License-Identifier: MIT
#include "export/files/QuotedText.h"

namespace vellumo {

void appendQuoted(std::string_view text, std::string& out)
{
    out += '"';
    appendReplaced(text, '"', "\"\"", out);
    out += '"';
}

void appendReplaced(std::string_view text, char what, std::string_view replacement, std::string& out)
{
    for (auto found = text.find(what); found != std::string_view::npos; found = text.find(what)) {
        out += text.substr(0, found);
        out += replacement;
        text.remove_prefix(found + 1);
    }
    out += text;
}

} // namespace vellumo
