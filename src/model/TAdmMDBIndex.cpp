#include "model/TAdmMDBIndex.h"

#include "text/Format.h"
#include "text/Messages.h"

namespace vellumo {

std::vector<std::string> TAdmMDBIndex::getObjectLabels() const
{
    return {localized("Name"), localized("Index keys"), localized("Primary key"), localized("Unique")};
}

std::vector<InfoValue> TAdmMDBIndex::infoValues() const
{
    std::string keys;
    for (const auto& key : m_keys) {
        if (!keys.empty()) keys += ", ";
        keys += format("%@ (%@)", {key.name, key.isAscending ? localized("Ascending") : localized("Descending")});
    }
    return {name(), keys, localized(m_isPrimaryKey ? "YES" : "NO"), localized(m_isUnique ? "YES" : "NO")};
}

} // namespace vellumo
