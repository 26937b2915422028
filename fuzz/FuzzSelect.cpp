// SPDX-License-Identifier: MIT
#include "fuzz/PageInput.h"
#include "model/SelectStatement.h"

// The text of a query, or of what a lookup chooses from.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vellumo;
    const std::string sql(reinterpret_cast<const char*>(data), size);
    const auto statement = parseSelect(sql);
    if (!statement) return 0;
    require(isSelect(sql) && !statement->columns.empty() && !statement->sources.empty());
    require(statement->sources.size() == 1 || statement->isLimited);
    // A name stands for itself, and once more where it is its own alias.
    std::size_t textSize = 0;
    for (const auto& column : statement->columns) {
        textSize += column.name.size();
        for (const auto& term : column.terms)
            textSize += term.qualifier.size() + term.text.size();
    }
    for (const auto& source : statement->sources)
        textSize += source.name.size() + source.alias.size();
    require(textSize <= 2 * size);
    return 0;
}
