// SPDX-License-Identifier: MIT
#include "model/TAdmMDBObject.h"

#include "text/FinderCompare.h"

namespace vellumo {

int TAdmMDBObject::compareByName(const TAdmMDBObject& other) const { return finderCompare(m_name, other.m_name); }

std::vector<std::string> TAdmMDBObject::getObjectLabels() const
{
    std::vector<std::string> labels;
    for (const auto& property : information())
        labels.push_back(infoLabel(property.id));
    return labels;
}

std::vector<std::string> TAdmMDBObject::getObjectValues() const
{
    std::vector<std::string> values;
    for (const auto& property : information())
        values.push_back(infoText(property.value));
    return values;
}

} // namespace vellumo
