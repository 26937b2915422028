#include "model/TAdmMDBObject.h"

#include "text/FinderCompare.h"

namespace vellumo {

std::string infoText(const InfoValue& value)
{
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    return std::to_string(std::get<std::int64_t>(value));
}

int TAdmMDBObject::compareByName(const TAdmMDBObject& other) const { return finderCompare(m_name, other.m_name); }

std::map<std::string, InfoValue> TAdmMDBObject::getObjectValues() const
{
    const auto labels = getObjectLabels();
    auto values = infoValues();
    std::map<std::string, InfoValue> byLabel;
    if (labels.size() != values.size()) return byLabel;
    for (std::size_t i = 0; i < labels.size(); ++i)
        byLabel[labels[i]] = std::move(values[i]);
    return byLabel;
}

} // namespace vellumo
