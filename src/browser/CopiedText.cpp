#include "browser/CopiedText.h"

namespace vellumo {

void appendCopiedValue(const GridValue& value, std::string& buffer, std::string& out)
{
    if (const auto text = valueText(value, buffer)) {
        const auto start = out.size();
        out += *text;
        for (auto i = out.find_first_of("\n\t", start); i != std::string::npos; i = out.find_first_of("\n\t", i))
            out[i] = ' ';
    }
    out += '\t';
}

void endCopiedRow(std::string& out)
{
    if (!out.empty()) out.back() = '\n';
}

} // namespace vellumo
