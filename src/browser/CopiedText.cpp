#include "browser/CopiedText.h"

#include "browser/GridValue.h"

namespace vellumo {

void appendCopiedValue(std::string_view description, std::string& out)
{
    if (description != nonTextualDataText() && description != nullText()) {
        const auto start = out.size();
        out += description;
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
